#include "a2l/keyword_tables.h"

#include <cstring>

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

/// A text of 64 bytes or more has no bit to stand for it, which ends the compilation here.
constexpr KeywordLengths collectLengths(std::span<const KeywordEntry> entries) {
    KeywordLengths lengths;
    for (const KeywordEntry& entry : entries) {
        const std::uint64_t bit = std::uint64_t{1} << entry.text.size();
        lengths.byFirst[static_cast<unsigned char>(entry.text.front())] |= bit;
        lengths.byLast[static_cast<unsigned char>(entry.text.back())] |= bit;
    }
    return lengths;
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

constexpr KeywordLengths kCoreLengths = collectLengths(kCoreEntries);
constexpr KeywordLengths kWordLengths = collectLengths(kWordEntries);
constexpr KeywordLengths kXcpLengths = collectLengths(kXcpEntries);
constexpr KeywordLengths kCcpLengths = collectLengths(kCcpEntries);
constexpr KeywordLengths kKwpLengths = collectLengths(kKwpEntries);
constexpr KeywordLengths kGmlanLengths = collectLengths(kGmlanEntries);

/// False when no keyword has this length together with these two bytes.
bool mayBeKeyword(const KeywordLengths& lengths, std::string_view text) {
    if (text.empty() || text.size() >= 64) {
        return false;
    }
    const std::uint64_t possible = lengths.byFirst[static_cast<unsigned char>(text.front())] &
                                   lengths.byLast[static_cast<unsigned char>(text.back())];
    return (possible >> text.size() & 1U) != 0;
}

bool sameText(std::string_view left, std::string_view right) {
    return left.size() == right.size() && std::memcmp(left.data(), right.data(), left.size()) == 0;
}

int lookupRowByRow(const KeywordTable& table, std::string_view text) {
    for (const KeywordEntry& entry : table.entries) {
        if (entry.text == text) {
            return entry.id;
        }
    }
    return 0;
}

}  // namespace

constinit const KeywordTable kCoreKeywords(kCoreEntries, kCoreIndex.data(), kCoreCapacity,
                                           &kCoreLengths);
constinit const KeywordTable kWordKeywords(kWordEntries, kWordIndex.data(), kWordCapacity,
                                           &kWordLengths);
constinit const KeywordTable kXcpKeywords(kXcpEntries, kXcpIndex.data(), kXcpCapacity,
                                          &kXcpLengths);
constinit const KeywordTable kCcpKeywords(kCcpEntries, kCcpIndex.data(), kCcpCapacity,
                                          &kCcpLengths);
constinit const KeywordTable kKwpKeywords(kKwpEntries, kKwpIndex.data(), kKwpCapacity,
                                          &kKwpLengths);
constinit const KeywordTable kGmlanKeywords(kGmlanEntries, kGmlanIndex.data(), kGmlanCapacity,
                                            &kGmlanLengths);

int lookup(const KeywordTable& table, std::string_view text) {
    if (table.slots == nullptr) {
        return lookupRowByRow(table, text);
    }
    if (!mayBeKeyword(*table.lengths, text)) {
        return 0;
    }
    const std::uint32_t hash = keywordHash(text);
    std::uint32_t place = table.placeOf(hash);
    while (const KeywordEntry* const entry = table.slots[place].entry) {
        if (table.slots[place].hash == hash && sameText(entry->text, text)) {
            return entry->id;
        }
        ++place;
        if (place == table.slotCount) {
            place = 0;
        }
    }
    return 0;
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
