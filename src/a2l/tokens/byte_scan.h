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

/// How many digits are worked on together.
inline constexpr std::size_t kDigitsTogether = 8;

namespace byte_scan {

/// The eight bytes at a position, of which the first `count` (1 to 8) stay, as a number whose
/// highest byte is the last of them, with bytes 0 below.
inline std::uint64_t firstBytes(const char* position, std::size_t count) {
    constexpr std::size_t kBytes = sizeof(std::uint64_t);
    constexpr std::size_t kBitsPerByte = 8;
    std::uint64_t bytes = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&bytes, position, kBytes);
    } else {
        for (std::size_t at = kBytes; at-- > 0;) {
            bytes = bytes << kBitsPerByte | static_cast<unsigned char>(position[at]);
        }
    }
    return bytes << (kBitsPerByte * (kBytes - count));
}

}  // namespace byte_scan

/// The value of 1 to 8 decimal digits. All are worked on at once: neighbours become numbers of two
/// digits, these of four, those of eight.
inline std::uint32_t decimalDigits(const char* digits, std::size_t count) {
    std::uint64_t value = byte_scan::firstBytes(digits, count) & 0x0F0F0F0F0F0F0F0FU;
    value = (value * (10 << 8 | 1)) >> 8U & 0x00FF00FF00FF00FFU;
    value = (value * (100U << 16U | 1U)) >> 16U & 0x0000FFFF0000FFFFU;
    return static_cast<std::uint32_t>((value * (std::uint64_t{10000} << 32U | 1U)) >> 32U);
}

/// The same for hexadecimal digits.
inline std::uint32_t hexadecimalDigits(const char* digits, std::size_t count) {
    std::uint64_t value = byte_scan::firstBytes(digits, count);
    // The low bits of 'A' to 'F' and 'a' to 'f', which have bit 6, are 1 to 6.
    value = (value & 0x0F0F0F0F0F0F0F0FU) + 9 * (value >> 6U & 0x0101010101010101U);
    value = (value << 4U | value >> 8U) & 0x00FF00FF00FF00FFU;
    value = (value << 8U | value >> 16U) & 0x0000FFFF0000FFFFU;
    return static_cast<std::uint32_t>(value << 16U | value >> 32U);
}

#ifdef QM_HAS_SSE2

namespace byte_scan {

/// The bytes from `first` to `last`. Comparisons are signed: the range is moved to end at the
/// highest value, 127.
inline __m128i within(__m128i bytes, char first, char last) {
    const __m128i moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(127 - last)));
    return _mm_cmpgt_epi8(moved, _mm_set1_epi8(static_cast<char>(126 - (last - first))));
}

inline __m128i load(const char* position) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(position));
}

/// How many bytes come before the first that is not set; 16 if all are.
inline std::size_t countSet(__m128i bytes) {
    // The upper half of the mask is not set, either. Said once more, the compiler knows it, too.
    constexpr unsigned kBehindLast = 1U << sizeof(__m128i);
    const auto set = static_cast<unsigned>(_mm_movemask_epi8(bytes));
    return static_cast<unsigned>(std::countr_zero(~set | kBehindLast));
}

/// The ASCII letters, digits and underscores that names are mostly made of.
inline __m128i plainNameBytes(__m128i bytes) {
    const __m128i lowerCase = _mm_or_si128(bytes, _mm_set1_epi8('a' - 'A'));
    return _mm_or_si128(_mm_or_si128(within(lowerCase, 'a', 'z'), within(bytes, '0', '9')),
                        _mm_cmpeq_epi8(bytes, _mm_set1_epi8('_')));
}

}  // namespace byte_scan

/// Skips bytes as long as `isPlain(sixteen bytes)` sets all bits of them.
template <typename IsPlain>
char* skipPlainBytes(char* position, IsPlain isPlain) {
    std::size_t count = 0;
    do {
        count = byte_scan::countSet(isPlain(byte_scan::load(position)));
        position += count;
    } while (count == sizeof(__m128i));
    return position;
}

/// How many ASCII letters, digits and underscores stand there; 16 for more.
inline std::size_t leadingNameBytes(const char* position) {
    return byte_scan::countSet(byte_scan::plainNameBytes(byte_scan::load(position)));
}

/// Skips the ASCII letters, digits and underscores that names are mostly made of.
inline char* skipPlainNameBytes(char* position) {
    return skipPlainBytes(position, byte_scan::plainNameBytes);
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

/// Which of the next kLookAhead bytes are spaces: bit 0 tells of the first one.
inline std::uint32_t spacesAhead(const char* position) {
    return static_cast<std::uint32_t>(
        _mm_movemask_epi8(_mm_cmpeq_epi8(byte_scan::load(position), _mm_set1_epi8(' '))));
}

/// Skips the spaces, tabs and line ends that stand between tokens, and adds the line feeds among
/// them to `lines`.
inline char* skipPlainBlanks(char* position, std::uint32_t& lines) {
    for (;;) {
        const __m128i bytes = byte_scan::load(position);
        const auto are = [bytes](char byte) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte)); };
        const __m128i feeds = are('\n');
        const __m128i blanks =
            _mm_or_si128(_mm_or_si128(are(' '), feeds), _mm_or_si128(are('\r'), are('\t')));
        const std::size_t count = byte_scan::countSet(blanks);
        // Few runs hold more than one.
        for (unsigned left = static_cast<unsigned>(_mm_movemask_epi8(feeds)) & ((1U << count) - 1);
             left != 0; left &= left - 1) {
            ++lines;
        }
        position += count;
        if (count != sizeof bytes) {
            return position;
        }
    }
}

/// How many decimal digits stand there; 16 for more.
inline std::size_t leadingDigits(const char* position) {
    return byte_scan::countSet(byte_scan::within(byte_scan::load(position), '0', '9'));
}

/// How many hexadecimal digits stand there; 16 for more.
inline std::size_t leadingHexDigits(const char* position) {
    const __m128i bytes = byte_scan::load(position);
    const __m128i lowerCase = _mm_or_si128(bytes, _mm_set1_epi8('a' - 'A'));
    return byte_scan::countSet(
        _mm_or_si128(byte_scan::within(lowerCase, 'a', 'f'), byte_scan::within(bytes, '0', '9')));
}

#else

inline std::uint32_t spacesAhead(const char* position) {
    std::uint32_t spaces = 0;
    for (std::size_t at = 0; at < kLookAhead; ++at) {
        spaces |= static_cast<std::uint32_t>(position[at] == ' ') << at;
    }
    return spaces;
}

inline char* skipPlainBlanks(char* position, std::uint32_t&) {
    return position;
}

inline std::size_t leadingDigits(const char* position) {
    std::size_t count = 0;
    while (count < kLookAhead && position[count] >= '0' && position[count] <= '9') {
        ++count;
    }
    return count;
}

inline std::size_t leadingHexDigits(const char* position) {
    const auto isHexDigit = [](char byte) {
        const int lowerCase = byte | ('a' - 'A');
        return (byte >= '0' && byte <= '9') || (lowerCase >= 'a' && lowerCase <= 'f');
    };
    std::size_t count = 0;
    while (count < kLookAhead && isHexDigit(position[count])) {
        ++count;
    }
    return count;
}

inline std::size_t leadingNameBytes(const char*) {
    return 0;
}

inline char* skipPlainNameBytes(char* position) {
    return position;
}

inline char* skipPlainTextBytes(char* position) {
    return position;
}

#endif

/// The blanks that a line begins with, taken for as many as those of the line before, as most are.
/// That saves waiting, not work: where the next word begins is known before the bytes are, and the
/// processor reads on from there while it still compares them. Waiting for their number in front of
/// every line took a twelfth of a conversion's time.
class Indentation {
  public:
    /// Skips the spaces at a position, up to kLookAhead of them.
    char* skip(char* position) {
        const std::uint32_t spaces = spacesAhead(position);
        const std::uint32_t run = spaces ^ (spaces + 1);  // up to the first that is none
        if (run != run_) {
            run_ = run;
            width_ = static_cast<std::size_t>(std::bit_width(run) - 1);
        }
        return position + width_;
    }

  private:
    std::uint32_t run_ = 1;
    std::size_t width_ = 0;
};

}  // namespace quillmark
