#include "a2l/keyword_tables.h"

// The tables and their indexes are built by the compiler: start-up costs nothing, and nothing can
// change them. The rows come from the same lists as the constants of the header.
namespace quillmark {
namespace {

#define QM_KEYWORD(constant, text, id) KeywordEntry{text, id},
#define QM_KEYWORD_AGAIN(constant, text, id) KeywordEntry{text, id},

constexpr KeywordEntry kCoreEntries[] = {
#include "a2l/core_keywords.inc"
};
constexpr KeywordEntry kWordEntries[] = {
#include "a2l/word_keywords.inc"
};
constexpr KeywordEntry kXcpEntries[] = {
#include "a2l/xcp_keywords.inc"
};
constexpr KeywordEntry kCcpEntries[] = {
#include "a2l/ccp_keywords.inc"
};
constexpr KeywordEntry kKwpEntries[] = {
#include "a2l/kwp_keywords.inc"
};
constexpr KeywordEntry kGmlanEntries[] = {
#include "a2l/gmlan_keywords.inc"
};

#undef QM_KEYWORD
#undef QM_KEYWORD_AGAIN

static_assert(std::size(kCoreEntries) == 195);
static_assert(std::size(kWordEntries) == 46);
static_assert(std::size(kXcpEntries) == 389);
static_assert(std::size(kCcpEntries) == 55);
static_assert(std::size(kKwpEntries) == 31);
static_assert(std::size(kGmlanEntries) == 47);

template <std::uint32_t kCapacity>
constexpr auto buildIndex(std::span<const KeywordEntry> entries) {
    std::array<KeywordSlot, kCapacity + 1> slots{};
    for (const KeywordEntry& entry : entries) {
        const std::uint32_t hash = keywordHash(entry.text);
        std::size_t place = hash % slots.size();
        while (slots[place].entry != nullptr) {
            place = (place + 1) % slots.size();
        }
        slots[place] = KeywordSlot{hash, &entry};
    }
    return slots;
}

constexpr KeywordHints collectHints(std::span<const KeywordEntry> entries) {
    KeywordHints hints;
    hints.rows.fill(KeywordHints::kNone);
    for (std::size_t row = 0; row < entries.size(); ++row) {
        std::uint16_t& hint = hints.rows[KeywordHints::placeOf(entries[row].text)];
        hint =
            hint == KeywordHints::kNone ? static_cast<std::uint16_t>(row) : KeywordHints::kSeveral;
    }
    return hints;
}

constexpr std::uint32_t kCoreCapacity = 400;
constexpr std::uint32_t kWordCapacity = 100;
constexpr std::uint32_t kXcpCapacity = 400;
constexpr std::uint32_t kCcpCapacity = 200;
constexpr std::uint32_t kKwpCapacity = 100;
constexpr std::uint32_t kGmlanCapacity = 100;

constexpr auto kCoreIndex = buildIndex<kCoreCapacity>(kCoreEntries);
constexpr auto kWordIndex = buildIndex<kWordCapacity>(kWordEntries);
constexpr auto kXcpIndex = buildIndex<kXcpCapacity>(kXcpEntries);
constexpr auto kCcpIndex = buildIndex<kCcpCapacity>(kCcpEntries);
constexpr auto kKwpIndex = buildIndex<kKwpCapacity>(kKwpEntries);
constexpr auto kGmlanIndex = buildIndex<kGmlanCapacity>(kGmlanEntries);

constexpr KeywordHints kCoreHints = collectHints(kCoreEntries);
constexpr KeywordHints kWordHints = collectHints(kWordEntries);
constexpr KeywordHints kXcpHints = collectHints(kXcpEntries);
constexpr KeywordHints kCcpHints = collectHints(kCcpEntries);
constexpr KeywordHints kKwpHints = collectHints(kKwpEntries);
constexpr KeywordHints kGmlanHints = collectHints(kGmlanEntries);

const KeywordEntry* rowByRow(const KeywordTable& table, std::string_view text) {
    for (const KeywordEntry& entry : table.entries) {
        if (entry.text == text) {
            return &entry;
        }
    }
    return nullptr;
}

const KeywordEntry* throughIndex(const KeywordTable& table, std::string_view text) {
    const std::uint32_t hash = keywordHash(text);
    std::uint32_t place = hash % table.slotCount;
    while (const KeywordEntry* const entry = table.slots[place].entry) {
        if (table.slots[place].hash == hash && entry->text == text) {
            return entry;
        }
        ++place;
        if (place == table.slotCount) {
            place = 0;
        }
    }
    return nullptr;
}

const KeywordEntry* findEntry(const KeywordTable& table, std::string_view text) {
    if (table.hints == nullptr) {
        return rowByRow(table, text);
    }
    const std::uint16_t row =
        text.empty() ? KeywordHints::kNone : table.hints->rows[KeywordHints::placeOf(text)];
    if (row == KeywordHints::kSeveral) {
        return throughIndex(table, text);
    }
    const bool found = row != KeywordHints::kNone && table.entries[row].text == text;
    return found ? &table.entries[row] : nullptr;
}

}  // namespace

constinit const KeywordTable kCoreKeywords(kCoreEntries, kCoreIndex.data(), kCoreCapacity,
                                           &kCoreHints);
constinit const KeywordTable kWordKeywords(kWordEntries, kWordIndex.data(), kWordCapacity,
                                           &kWordHints);
constinit const KeywordTable kXcpKeywords(kXcpEntries, kXcpIndex.data(), kXcpCapacity, &kXcpHints);
constinit const KeywordTable kCcpKeywords(kCcpEntries, kCcpIndex.data(), kCcpCapacity, &kCcpHints);
constinit const KeywordTable kKwpKeywords(kKwpEntries, kKwpIndex.data(), kKwpCapacity, &kKwpHints);
constinit const KeywordTable kGmlanKeywords(kGmlanEntries, kGmlanIndex.data(), kGmlanCapacity,
                                            &kGmlanHints);

int lookup(const KeywordTable& table, std::string_view text, int otherwise) {
    const KeywordEntry* const entry = findEntry(table, text);
    return entry == nullptr ? otherwise : entry->id;
}

std::string_view keywordName(const KeywordTable& table, int id) {
    for (const KeywordEntry& entry : table.entries) {
        if (entry.id == id) {
            return entry.text;
        }
    }
    return {};
}

const KeywordTable* keywordTableOfContext(int context) {
    static constexpr std::array kTables = {&kCoreKeywords, &kWordKeywords, &kCcpKeywords,
                                           &kXcpKeywords,  &kKwpKeywords,  &kGmlanKeywords};
    if (context < 0 || static_cast<std::size_t>(context) >= kTables.size()) {
        return nullptr;
    }
    return kTables[static_cast<std::size_t>(context)];
}

}  // namespace quillmark
