#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#define QM_HAS_SSE2
#include <emmintrin.h>
#endif

namespace quillmark {

// The lexer's short cuts through runs of bytes, a handful of them at a time. They read up to
// kLookAhead bytes from where they stand, and may stop before a run ends; only what the table of
// byte classes says counts.

inline constexpr std::size_t kLookAhead = 16;

/// How many of the eight bytes at a position are spaces, up to the first that is none.
inline std::size_t leadingSpaces(const char* position) {
    constexpr std::uint64_t kEightSpaces = 0x2020202020202020U;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, position, sizeof bytes);
    const std::uint64_t others = bytes ^ kEightSpaces;
    constexpr int kBitsPerByte = 8;
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(others)
                                                                : std::countl_zero(others);
    return static_cast<std::size_t>(bits / kBitsPerByte);
}

#ifdef QM_HAS_SSE2

/// Skips bytes as long as `isPlain(sixteen bytes)` sets all bits of them.
template <typename IsPlain>
char* skipPlainBytes(char* position, IsPlain isPlain) {
    constexpr unsigned kAll = 0xFFFF;
    for (;;) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(position));
        const unsigned others = static_cast<unsigned>(_mm_movemask_epi8(isPlain(bytes))) ^ kAll;
        if (others != 0) {
            return position + std::countr_zero(others);
        }
        position += sizeof bytes;
    }
}

/// Skips the ASCII letters, digits and underscores that names are mostly made of.
inline char* skipPlainNameBytes(char* position) {
    return skipPlainBytes(position, [](__m128i bytes) {
        // Comparisons are signed: each range is moved to begin at the least value, -128.
        const auto within = [](__m128i values, char first, char last) {
            const __m128i moved =
                _mm_add_epi8(values, _mm_set1_epi8(static_cast<char>(-128 - first)));
            return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(-127 + (last - first))));
        };
        const __m128i lowerCase = _mm_or_si128(bytes, _mm_set1_epi8('a' - 'A'));
        return _mm_or_si128(_mm_or_si128(within(lowerCase, 'a', 'z'), within(bytes, '0', '9')),
                            _mm_cmpeq_epi8(bytes, _mm_set1_epi8('_')));
    });
}

/// Skips the printable ASCII characters besides quote and backslash that texts are mostly made of.
inline char* skipPlainTextBytes(char* position) {
    return skipPlainBytes(position, [](__m128i bytes) {
        const __m128i special = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')),
                                             _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\')));
        // Bytes from 0x80 on count as negative.
        return _mm_andnot_si128(special, _mm_cmpgt_epi8(bytes, _mm_set1_epi8(' ' - 1)));
    });
}

#else

inline char* skipPlainNameBytes(char* position) {
    return position;
}

inline char* skipPlainTextBytes(char* position) {
    return position;
}

#endif

}  // namespace quillmark
