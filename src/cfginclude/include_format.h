#pragma once

#include <cstddef>
#include <string_view>

namespace quillmark {

/// Ends every line of an include file.
inline constexpr std::string_view kLineBreak = "\r\n";

/// How many blanks begin a line at that level, if lines are indented at all.
inline std::size_t blanksAt(bool indent, int depth) {
    constexpr std::size_t kBlanksPerLevel = 4;
    return indent ? static_cast<std::size_t>(depth) * kBlanksPerLevel : 0;
}

/// Writes a real in general notation with six significant digits, like the %g of printf in the C
/// locale ("0.1", "1.23457e+06", "inf", "nan"), but a negative zero as "0". Returns the end of it;
/// 32 bytes are enough.
char* putReal(char* begin, char* end, double value);

}  // namespace quillmark
