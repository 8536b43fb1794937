#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillmark {

/// The ids of the keywords, one namespace per table, as in `kw::core::MEASUREMENT`. The constants
/// are spelled like the keywords themselves; BEGIN, END and INCLUDE stand for the words with a
/// slash. BEGIN and END have the same values in every table that has them. BYTE_ORDER_, BIG_ENDIAN_
/// and LITTLE_ENDIAN_ end in an underscore, since the C library has macros of those names.
namespace kw {

#define QM_KEYWORD(constant, text, id) inline constexpr int constant = id;
#define QM_KEYWORD_AGAIN(constant, text, id) static_assert((constant) == (id));

/// Blocks and keywords of the description file itself: 1 to 279.
namespace core {
#include "a2l/core_keywords.inc"
}

/// Words of enumerated parameters (data types, byte orders ...): 1001 to 1046.
namespace word {
#include "a2l/word_keywords.inc"
}

/// XCP interface blocks: 2001 to 2386 and 3341 to 3343.
namespace xcp {
#include "a2l/xcp_keywords.inc"
}

/// CCP interface blocks: 3001 to 3053.
namespace ccp {
#include "a2l/ccp_keywords.inc"
}

/// KWP2000 interface blocks: 4001 to 4039.
namespace kwp {
#include "a2l/kwp_keywords.inc"
}

/// GMLAN interface blocks: 5001 to 5045.
namespace gmlan {
#include "a2l/gmlan_keywords.inc"
}

#undef QM_KEYWORD
#undef QM_KEYWORD_AGAIN

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

/// Which lengths texts have that begin, or end, with a given byte: bit n of an element stands for
/// length n. Most words of a description are names, and nearly all of them are told from a keyword
/// by these two looks, before anything is hashed.
struct KeywordLengths {
    std::array<std::uint64_t, 256> byFirst{};
    std::array<std::uint64_t, 256> byLast{};
};

/// A constant table of keywords, together with its index: open addressing, linear probing, filled
/// in table order, so that of two rows with the same text the first one is found. A table only
/// refers to its parts, which are constants of the program, and is itself one.
struct KeywordTable {
    /// A table without an index. It finds the same, row by row.
    explicit constexpr KeywordTable(std::span<const KeywordEntry> rows) : entries(rows) {}

    /// A table whose index has one slot more than `capacityParameter`, which is below 2^16.
    constexpr KeywordTable(std::span<const KeywordEntry> rows, const KeywordSlot* index,
                           std::uint32_t capacityParameter, const KeywordLengths* textLengths)
        : entries(rows),
          slots(index),
          slotCount(capacityParameter + 1),
          slotCountInverse(~std::uint64_t{0} / (capacityParameter + 1) + 1),
          capacity(capacityParameter),
          lengths(textLengths) {}

    /// A hash modulo `slotCount`, without a division: the multiplication leaves the fraction of the
    /// quotient, in units of 2^-64, and that times the divisor is the remainder.
    constexpr std::uint32_t placeOf(std::uint32_t hash) const {
        const std::uint64_t fraction = slotCountInverse * hash;
        // Of the product of 64 by 16 bits, what is above bit 63.
        return static_cast<std::uint32_t>(
            ((fraction >> 32U) * slotCount + ((fraction & 0xFFFFFFFFU) * slotCount >> 32U)) >> 32U);
    }

    std::span<const KeywordEntry> entries;
    const KeywordSlot* slots = nullptr;
    std::uint32_t slotCount = 0;
    std::uint64_t slotCountInverse = 0;
    std::uint32_t capacity = 0;
    const KeywordLengths* lengths = nullptr;
};

extern const KeywordTable kCoreKeywords;
extern const KeywordTable kWordKeywords;
extern const KeywordTable kXcpKeywords;
extern const KeywordTable kCcpKeywords;
extern const KeywordTable kKwpKeywords;
extern const KeywordTable kGmlanKeywords;

/// The hash that the indexes are built with: every byte is added to twice the hash so far, and what
/// overflows 24 bits is added back at the low end.
constexpr std::uint32_t keywordHash(std::string_view text) {
    // The first 16 bytes can't overflow 24 bits: 255 * (2^16 - 1) < 2^24.
    constexpr std::size_t kWithoutOverflow = 16;
    std::uint32_t hash = 0;
    std::size_t i = 0;
    for (; i < text.size() && i < kWithoutOverflow; ++i) {
        hash = static_cast<unsigned char>(text[i]) + 2 * hash;
    }
    for (; i < text.size(); ++i) {
        const std::uint32_t sum = static_cast<unsigned char>(text[i]) + 2 * hash;
        hash = (sum >> 24) + (sum & 0xFFFFFF);
    }
    return hash;
}

/// The id of the keyword that equals `text` byte by byte, 0 when there is none.
int lookup(const KeywordTable& table, std::string_view text);

/// The text of the first row with this id; empty when there is none.
std::string_view keywordName(const KeywordTable& table, int id);

/// The table that a context number stands for: 0 core, 1 enumeration words, 2 CCP, 3 XCP,
/// 4 KWP2000, 5 GMLAN. Null for any other number.
const KeywordTable* keywordTableOfContext(int context);

}  // namespace quillmark
