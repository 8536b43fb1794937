#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillmark {

/// Of the texts that equalShortTexts() takes.
inline constexpr std::size_t kLongestShortText = 2 * sizeof(std::uint64_t);

/// left == right, for words of one length, up to kLongestShortText bytes. Both ends are compared,
/// each in one piece; the pieces overlap where the texts are shorter.
inline bool equalShortTexts(const char* left, const char* right, std::size_t size) {
    const auto equalEnds = [&]<typename Piece>(Piece) {
        const auto equalAt = [&](std::size_t at) {
            Piece one = 0;
            Piece other = 0;
            std::memcpy(&one, left + at, sizeof one);
            std::memcpy(&other, right + at, sizeof other);
            return one == other;
        };
        return equalAt(0) && equalAt(size - sizeof(Piece));
    };
    if (size >= sizeof(std::uint64_t)) {
        return equalEnds(std::uint64_t{});
    }
    if (size >= sizeof(std::uint32_t)) {
        return equalEnds(std::uint32_t{});
    }
    if (size >= sizeof(std::uint16_t)) {
        return equalEnds(std::uint16_t{});
    }
    return size == 0 || *left == *right;
}

/// left == right, for names: most are short, and calling memcmp() would take longer than comparing
/// them.
inline bool equalTexts(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    return left.size() > kLongestShortText
               ? std::memcmp(left.data(), right.data(), left.size()) == 0
               : equalShortTexts(left.data(), right.data(), left.size());
}

}  // namespace quillmark
