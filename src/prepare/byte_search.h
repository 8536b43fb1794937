#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__) || defined(_M_X64)
#define QM_PREPARE_HAS_SSE2
#include <emmintrin.h>
#endif

namespace quillmark::preparing {

/// Where the next byte stands with which something can begin that is not read over: a text, a
/// comment, `/begin`, `/end`, `/include`, or one of the bytes 1 and 2 that the reader takes for two
/// of these. Nowhere: npos.
inline std::size_t findMark(std::string_view text, std::size_t from) {
#ifdef QM_PREPARE_HAS_SSE2
    constexpr std::size_t kStep = 16;
    const __m128i quotes = _mm_set1_epi8('"');
    const __m128i slashes = _mm_set1_epi8('/');
    const __m128i ones = _mm_set1_epi8(1);
    for (; from + kStep <= text.size(); from += kStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + from));
        // 1 and 2, less 1, are the bytes that are not above 1.
        const __m128i lowered = _mm_sub_epi8(bytes, ones);
        const __m128i codes = _mm_cmpeq_epi8(_mm_min_epu8(lowered, ones), lowered);
        const auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(
            codes, _mm_or_si128(_mm_cmpeq_epi8(bytes, quotes), _mm_cmpeq_epi8(bytes, slashes)))));
        if (found != 0) {
            return from + static_cast<std::size_t>(std::countr_zero(found));
        }
    }
#endif
    for (; from < text.size(); ++from) {
        if (text[from] == '"' || text[from] == '/' || text[from] == '\1' || text[from] == '\2') {
            return from;
        }
    }
    return std::string_view::npos;
}

/// Where the next quote or backslash stands. Nowhere: npos.
inline std::size_t findQuoteOrBackslash(std::string_view text, std::size_t from) {
#ifdef QM_PREPARE_HAS_SSE2
    constexpr std::size_t kStep = 16;
    const __m128i quotes = _mm_set1_epi8('"');
    const __m128i backslashes = _mm_set1_epi8('\\');
    for (; from + kStep <= text.size(); from += kStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + from));
        const auto found = static_cast<unsigned>(_mm_movemask_epi8(
            _mm_or_si128(_mm_cmpeq_epi8(bytes, quotes), _mm_cmpeq_epi8(bytes, backslashes))));
        if (found != 0) {
            return from + static_cast<std::size_t>(std::countr_zero(found));
        }
    }
#endif
    return text.find_first_of("\"\\", from);
}

/// Where the first line of a text ends. Nowhere: npos.
inline std::size_t findLineEnd(std::string_view text) {
    return std::min(text.find('\n'), text.find('\r'));
}

/// Whether a text may speak of instances, blobs or included files, of which all has to be known
/// before the first byte can be written. It looks for the first two letters of these words all at
/// once.
inline bool mentionsInstances(std::string_view text) {
    constexpr std::string_view kWords[] = {"INSTANCE", "BLOB", "/include"};
    const auto isAt = [&](std::size_t at) {
        for (const std::string_view word : kWords) {
            if (text.substr(at, word.size()) == word) {
                return true;
            }
        }
        return false;
    };
    std::size_t from = 0;
#ifdef QM_PREPARE_HAS_SSE2
    constexpr std::size_t kStep = 16;
    const auto pairs = [](__m128i first, __m128i second, std::string_view word) {
        return _mm_and_si128(_mm_cmpeq_epi8(first, _mm_set1_epi8(word[0])),
                             _mm_cmpeq_epi8(second, _mm_set1_epi8(word[1])));
    };
    for (; from + kStep < text.size(); from += kStep) {
        const char* const at = text.data() + from;
        const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 1));
        auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(
            pairs(first, second, kWords[0]),
            _mm_or_si128(pairs(first, second, kWords[1]), pairs(first, second, kWords[2])))));
        for (; found != 0; found &= found - 1) {
            if (isAt(from + static_cast<std::size_t>(std::countr_zero(found)))) {
                return true;
            }
        }
    }
#endif
    for (; from < text.size(); ++from) {
        if (isAt(from)) {
            return true;
        }
    }
    return false;
}

/// How many line feeds there are.
inline std::size_t countLineFeeds(std::string_view text) {
    std::size_t count = 0;
    std::size_t from = 0;
#ifdef QM_PREPARE_HAS_SSE2
    constexpr std::size_t kStep = 16;
    constexpr std::size_t kMostSteps = 255;  // what a byte can count
    const __m128i feeds = _mm_set1_epi8('\n');
    const auto isFeed = [&feeds, &text](std::size_t at) {
        return _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at)),
                              feeds);
    };
    while (from + 2 * kStep <= text.size()) {
        const std::size_t steps = std::min(kMostSteps, (text.size() - from) / (2 * kStep));
        __m128i found = _mm_setzero_si128();
        __m128i others = _mm_setzero_si128();
        for (const std::size_t end = from + steps * 2 * kStep; from < end; from += 2 * kStep) {
            found = _mm_sub_epi8(found, isFeed(from));
            others = _mm_sub_epi8(others, isFeed(from + kStep));
        }
        const __m128i sums = _mm_add_epi64(_mm_sad_epu8(found, _mm_setzero_si128()),
                                           _mm_sad_epu8(others, _mm_setzero_si128()));
        constexpr int kUpperHalf = 4;
        count += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                 static_cast<std::size_t>(_mm_extract_epi16(sums, kUpperHalf));
    }
#endif
    for (; from < text.size(); ++from) {
        count += text[from] == '\n' ? 1U : 0U;
    }
    return count;
}

/// Goes on as long as there are ASCII letters, digits and underscores, of which names are mostly
/// made; may stop before they end.
inline std::size_t skipPlainName(std::string_view text, std::size_t from) {
#ifdef QM_PREPARE_HAS_SSE2
    constexpr std::size_t kStep = 16;
    constexpr unsigned kAll = 0xFFFF;
    // Comparisons are signed: each range is moved to begin at the least value, -128.
    const auto within = [](__m128i values, char first, char last) {
        const __m128i moved = _mm_add_epi8(values, _mm_set1_epi8(static_cast<char>(-128 - first)));
        return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(-127 + (last - first))));
    };
    for (; from + kStep <= text.size(); from += kStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + from));
        const __m128i lowerCase = _mm_or_si128(bytes, _mm_set1_epi8('a' - 'A'));
        const __m128i plain =
            _mm_or_si128(_mm_or_si128(within(lowerCase, 'a', 'z'), within(bytes, '0', '9')),
                         _mm_cmpeq_epi8(bytes, _mm_set1_epi8('_')));
        const unsigned others = static_cast<unsigned>(_mm_movemask_epi8(plain)) ^ kAll;
        if (others != 0) {
            return from + static_cast<std::size_t>(std::countr_zero(others));
        }
    }
#endif
    return from;
}

/// Goes on as long as there are spaces, up to eight; may stop before they end.
inline std::size_t skipSpaces(std::string_view text, std::size_t from) {
    constexpr std::uint64_t kEightSpaces = 0x2020202020202020U;
    constexpr int kBitsPerByte = 8;
    std::uint64_t bytes = 0;
    if constexpr (std::endian::native == std::endian::little) {
        if (from + sizeof bytes <= text.size()) {
            std::memcpy(&bytes, text.data() + from, sizeof bytes);
            from += static_cast<std::size_t>(std::countr_zero(bytes ^ kEightSpaces) / kBitsPerByte);
        }
    }
    return from;
}

}  // namespace quillmark::preparing
