#pragma once

#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillmark {

/// Ends every line of an include file.
inline constexpr std::string_view kLineBreak = "\r\n";

/// How many blanks begin a line at that level, if lines are indented at all.
inline std::size_t blanksAt(bool indent, int depth) {
    constexpr std::size_t kBlanksPerLevel = 4;
    return indent ? static_cast<std::size_t>(depth) * kBlanksPerLevel : 0;
}

/// Writes an unsigned integer in lower-case hexadecimal digits without leading zeros, and returns
/// the end of it; 8 bytes are enough and all written. The digits are worked on together, each in a
/// byte of its own.
inline char* putHexadecimal(char* begin, std::uint32_t value) {
    constexpr std::uint64_t kEach = 0x0101010101010101U;
    constexpr std::size_t kBitsPerDigit = 4;
    std::uint64_t digits = value;
    digits = (digits << 16U | digits) & 0x0000FFFF0000FFFFU;
    digits = (digits << 8U | digits) & 0x00FF00FF00FF00FFU;
    digits = (digits << 4U | digits) & 0x0F0F0F0F0F0F0F0FU;
    const std::uint64_t letters = (digits + 6 * kEach) >> 4U & kEach;
    digits += '0' * kEach + ('a' - '9' - 1) * letters;

    const std::size_t count =
        (static_cast<std::size_t>(std::bit_width(value | 1U)) + kBitsPerDigit - 1) / kBitsPerDigit;
    digits <<= CHAR_BIT * (sizeof digits - count);
    for (std::size_t at = 0; at < sizeof digits; ++at) {
        begin[at] = static_cast<char>(digits >> (CHAR_BIT * (sizeof digits - 1 - at)));
    }
    return begin + count;
}

/// Writes a real in general notation with six significant digits, like the %g of printf in the C
/// locale ("0.1", "1.23457e+06", "inf", "nan"), but a negative zero as "0". Returns the end of it;
/// 32 bytes are enough.
char* putReal(char* begin, char* end, double value);

}  // namespace quillmark
