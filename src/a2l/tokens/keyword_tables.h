#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/equal_texts.h"

namespace quillmark {

/// The ids of the keywords, one namespace per table, as in `kw::core::MEASUREMENT`. The constants
/// are spelled like the keywords themselves; BEGIN, END and INCLUDE stand for the words with a
/// slash. BEGIN and END have the same values in every table that has them. BYTE_ORDER_, BIG_ENDIAN_
/// and LITTLE_ENDIAN_ end in an underscore, since the C library has macros of those names.
namespace kw {

#define QM_KEYWORD_TABLE(space, table, capacity) namespace space {
#define QM_KEYWORD(constant, text, id) inline constexpr int constant = id;
#define QM_KEYWORD_AGAIN(constant, text, id) static_assert((constant) == (id));
#define QM_KEYWORD_TABLE_END }
#include "a2l/tokens/keyword_lists.inc"

}  // namespace kw

/// One row of a keyword table.
struct KeywordEntry {
    std::string_view text;
    std::int32_t id = -1;
};

/// One place of a table's index. A place without an entry is free.
struct KeywordSlot {
    std::uint32_t hash = 0;
    const KeywordEntry* entry = nullptr;
};

/// A short cut to the row of a text. Three of its bytes and its length tell a place, and a place
/// knows the one row that belongs there, if it is one. Most words of a description are names, and
/// nearly all of them are told from a keyword by an empty place, before anything is hashed.
struct KeywordHints {
    static constexpr std::uint16_t kNone = 0xFFFF;     ///< no keyword looks like this
    static constexpr std::uint16_t kSeveral = 0xFFFE;  ///< more than one; the index knows
    static constexpr int kPlaceBits = 11;

    /// Spreads the keywords over the places. It was searched for: with it, few keywords share a
    /// place, and none of the frequent. The program `search_keyword_spread` of the tests finds
    /// another.
    static constexpr std::uint32_t kSpread = 0x9F0F7229;

    /// `text` is not empty.
    static constexpr std::size_t placeOf(std::string_view text, std::uint32_t spread = kSpread) {
        const auto byte = [&](std::size_t at) -> std::uint32_t {
            return static_cast<unsigned char>(text[at]);
        };
        const std::size_t length = text.size();
        const std::uint32_t look = byte(0) | byte(length / 2) << 8U | byte(length - 1) << 16U |
                                   static_cast<std::uint32_t>(length) << 24U;
        return look * spread >> (32 - kPlaceBits);
    }

    std::array<std::uint16_t, std::size_t{1} << kPlaceBits> rows{};
};

/// The hints of a table without an index: each text has to be looked for.
inline constexpr KeywordHints kUnknownHints = [] {
    KeywordHints hints;
    hints.rows.fill(KeywordHints::kSeveral);
    return hints;
}();

/// A constant table of keywords, together with its index: open addressing, linear probing, filled
/// in table order, so that of two rows with the same text the first one is found. A table only
/// refers to its parts, which are constants of the program, and is itself one.
struct KeywordTable {
    /// A table without an index. It finds the same, row by row.
    explicit constexpr KeywordTable(std::span<const KeywordEntry> rows)
        : KeywordTable(rows, nullptr, 0, &kUnknownHints) {}

    /// A table whose index has one slot more than `capacityParameter`.
    constexpr KeywordTable(std::span<const KeywordEntry> rows, const KeywordSlot* index,
                           std::uint32_t capacityParameter, const KeywordHints* shortCuts)
        : entries(rows),
          slots(index),
          slotCount(capacityParameter + 1),
          capacity(capacityParameter),
          hints(shortCuts),
          begin(idIn(rows, "/begin")),
          end(idIn(rows, "/end")) {}

    std::span<const KeywordEntry> entries;
    const KeywordSlot* slots;
    std::uint32_t slotCount;
    std::uint32_t capacity;
    const KeywordHints* hints;

    /// The ids of the two words that are told without a search, as a sixth of all words are one of
    /// them; kNoId in a table that lacks them.
    int begin;
    int end;

    static constexpr int kNoId = -1;

  private:
    static constexpr int idIn(std::span<const KeywordEntry> rows, std::string_view text) {
        for (const KeywordEntry& row : rows) {
            if (row.text == text) {
                return row.id;
            }
        }
        return kNoId;
    }
};

/// A table in which nothing is found.
inline constexpr KeywordTable kNoKeywords{std::span<const KeywordEntry>()};

#define QM_KEYWORD_TABLE(space, table, capacity) extern const KeywordTable table;
#include "a2l/tokens/keyword_lists.inc"

/// The hash that the indexes are built with: every byte is added to twice the hash so far, and what
/// overflows 24 bits is added back at the low end.
constexpr std::uint32_t keywordHash(std::string_view text) {
    std::uint32_t hash = 0;
    for (const char c : text) {
        const std::uint32_t sum = static_cast<unsigned char>(c) + 2 * hash;
        hash = (sum >> 24) + (sum & 0xFFFFFF);
    }
    return hash;
}

/// The way through the index, for texts of which the hints do not know enough.
int lookupInIndex(const KeywordTable& table, std::string_view text, int otherwise);

/// The id of that keyword if it equals `text`, else `otherwise`. It is no part of lookupWord(),
/// which would have to save registers for comparing longer words.
int idOfRow(const KeywordEntry& entry, std::string_view text, int otherwise);

/// lookup() for a text that is not empty, in the fewest steps: what is not told by a look at a row
/// or two is left to the index.
inline int lookupWord(const KeywordTable& table, std::string_view text, int otherwise) {
    const std::uint16_t row = table.hints->rows[KeywordHints::placeOf(text)];
    if (row >= KeywordHints::kSeveral) {
        return row == KeywordHints::kNone ? otherwise : lookupInIndex(table, text, otherwise);
    }
    const KeywordEntry& entry = table.entries[row];
    if (text.size() > kLongestShortText) {
        return idOfRow(entry, text, otherwise);
    }
    const bool found = entry.text.size() == text.size() &&
                       equalShortTexts(entry.text.data(), text.data(), text.size());
    return found ? entry.id : otherwise;
}

/// The id of the keyword that equals `text` byte by byte, `otherwise` when there is none.
inline int lookup(const KeywordTable& table, std::string_view text, int otherwise = 0) {
    return text.empty() ? lookupInIndex(table, text, otherwise)
                        : lookupWord(table, text, otherwise);
}

/// The text of the first row with this id; empty when there is none.
std::string_view keywordName(const KeywordTable& table, int id);

/// The table that a context number stands for: 0 core, 1 enumeration words, 2 CCP, 3 XCP,
/// 4 KWP2000, 5 GMLAN. Null for any other number.
const KeywordTable* keywordTableOfContext(int context);

}  // namespace quillmark
