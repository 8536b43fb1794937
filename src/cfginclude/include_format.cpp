#include "cfginclude/include_format.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace quillmark {

char* putReal(char* begin, char* end, double value) {
    constexpr int kSignificantDigits = 6;
    constexpr double kFirstWithExponent = 1e6;
    if (std::trunc(value) == value && std::abs(value) < kFirstWithExponent) {
        // Most numbers are small whole ones, and an integer knows no negative zero.
        return std::to_chars(begin, end, static_cast<std::int32_t>(value)).ptr;
    }
    return std::to_chars(begin, end, value, std::chars_format::general, kSignificantDigits).ptr;
}

}  // namespace quillmark
