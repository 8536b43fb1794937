#include "cfginclude/include_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace quillmark {
namespace {

constexpr int kSignificantDigits = 6;

/// The digits of a real between 0.0001 and a million, which takes no exponent, or nullptr where
/// they are not certain. The real is scaled to a number of six digits before its point: that is
/// exact but for its last bits, so that only what lies half-way between two of them could be
/// rounded wrongly.
char* putPlainReal(char* begin, double value) {
    constexpr double kLeast = 1e-4;
    constexpr std::array<double, 10> kPowers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    constexpr double kSixDigits = 1e5;
    constexpr double kSevenDigits = 1e6;
    constexpr double kUncertain = 1e-6;

    const double magnitude = std::abs(value);
    if (!(magnitude >= kLeast && magnitude < kSevenDigits)) {
        return nullptr;
    }
    std::size_t decimals = 0;
    while (decimals + 1 < kPowers.size() && magnitude * kPowers[decimals] < kSixDigits) {
        ++decimals;
    }
    const double scaled = magnitude * kPowers[decimals];
    auto digits = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - digits;
    if (std::abs(rest - 0.5) < kUncertain) {
        return nullptr;
    }
    digits += rest > 0.5 ? 1 : 0;
    if (digits < kSixDigits || digits >= kSevenDigits) {
        return nullptr;
    }
    while (decimals > 0 && digits % 10 == 0) {
        digits /= 10;
        --decimals;
    }
    const auto power = static_cast<std::uint32_t>(kPowers[decimals]);
    char* at = begin;
    if (value < 0) {
        *at++ = '-';
    }
    at = std::to_chars(at, at + kSignificantDigits, digits / power).ptr;
    if (decimals > 0) {
        *at = '.';
        std::uint32_t fraction = digits % power;
        for (std::size_t place = decimals; place > 0; --place) {
            at[place] = static_cast<char>('0' + fraction % 10);
            fraction /= 10;
        }
        at += decimals + 1;
    }
    return at;
}

}  // namespace

char* putReal(char* begin, char* end, double value) {
    constexpr double kFirstWithExponent = 1e6;
    if (std::trunc(value) == value && std::abs(value) < kFirstWithExponent) {
        // Most numbers are small whole ones, and an integer knows no negative zero.
        return std::to_chars(begin, end, static_cast<std::int32_t>(value)).ptr;
    }
    if (char* const plainEnd = putPlainReal(begin, value)) {
        return plainEnd;
    }
    return std::to_chars(begin, end, value, std::chars_format::general, kSignificantDigits).ptr;
}

}  // namespace quillmark
