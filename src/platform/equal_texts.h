#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillmark {

/// Of the texts that equalShortTexts() takes.
inline constexpr std::size_t kLongestShortText = 2 * sizeof(std::uint64_t);

/// Whether both texts have the same bytes at both ends, each as long as a Piece. The ends overlap
/// where the texts are shorter than two of them.
template <typename Piece>
bool equalEnds(const char* left, const char* right, std::size_t size) {
    const auto equalAt = [left, right](std::size_t at) {
        Piece one = 0;
        Piece other = 0;
        std::memcpy(&one, left + at, sizeof one);
        std::memcpy(&other, right + at, sizeof other);
        return one == other;
    };
    return equalAt(0) && equalAt(size - sizeof(Piece));
}

/// left == right, for words of one length, up to kLongestShortText bytes.
inline bool equalShortTexts(const char* left, const char* right, std::size_t size) {
    if (size >= sizeof(std::uint64_t)) {
        return equalEnds<std::uint64_t>(left, right, size);
    }
    if (size >= sizeof(std::uint32_t)) {
        return equalEnds<std::uint32_t>(left, right, size);
    }
    if (size >= sizeof(std::uint16_t)) {
        return equalEnds<std::uint16_t>(left, right, size);
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
