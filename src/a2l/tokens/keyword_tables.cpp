#include "a2l/tokens/keyword_tables.h"

// The tables and their indexes are built by the compiler: start-up costs nothing, and nothing can
// change them. The rows come from the same lists as the constants of the header.
namespace quillmark {
namespace {

// clang-format off
#define QM_KEYWORD_TABLE(space, table, capacity) \
    namespace space {                            \
    constexpr KeywordEntry kRows[] = {
#define QM_KEYWORD(constant, text, id) KeywordEntry{text, id},
#define QM_KEYWORD_AGAIN(constant, text, id) KeywordEntry{text, id},
#define QM_KEYWORD_TABLE_END \
    };                       \
    }
#include "a2l/tokens/keyword_lists.inc"
// clang-format on

template <std::uint32_t Capacity>
constexpr auto buildIndex(std::span<const KeywordEntry> entries) {
    std::array<KeywordSlot, Capacity + 1> slots{};
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

/// A table with its index. Its places are more than its rows, so that a search ends at a free one.
template <const auto& Rows, std::uint32_t Capacity>
struct Indexed {
    static_assert(std::size(Rows) <= Capacity);

    static constexpr auto kIndex = buildIndex<Capacity>(Rows);
    static constexpr KeywordHints kHints = collectHints(Rows);
    static constexpr KeywordTable kTable{Rows, kIndex.data(), Capacity, &kHints};
};

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

}  // namespace

#define QM_KEYWORD_TABLE(space, table, capacity) \
    constinit const KeywordTable table = Indexed<space::kRows, capacity>::kTable;
#include "a2l/tokens/keyword_lists.inc"

int lookupInIndex(const KeywordTable& table, std::string_view text, int otherwise) {
    const KeywordEntry* const entry =
        table.slots == nullptr ? rowByRow(table, text) : throughIndex(table, text);
    return entry == nullptr ? otherwise : entry->id;
}

int idOfRow(const KeywordEntry& entry, std::string_view text, int otherwise) {
    return entry.text == text ? entry.id : otherwise;
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
