#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillmark {

/// left == right, for names and words: of a few bytes, so that calling memcmp() would take longer
/// than comparing them.
inline bool equalTexts(std::string_view left, std::string_view right) {
    const std::size_t size = left.size();
    if (size != right.size()) {
        return false;
    }
    const auto difference = [&]<typename Word>(Word, std::size_t at) -> Word {
        Word one = 0;
        Word other = 0;
        std::memcpy(&one, left.data() + at, sizeof one);
        std::memcpy(&other, right.data() + at, sizeof other);
        return one ^ other;
    };
    // The last word overlaps the one before it rather than being compared byte by byte.
    const auto inWords = [&]<typename Word>(Word word) {
        const std::size_t last = size - sizeof word;
        Word differences = difference(word, last);
        for (std::size_t at = 0; at < last; at += sizeof word) {
            differences |= difference(word, at);
        }
        return differences == 0;
    };
    if (size >= sizeof(std::uint64_t)) {
        return inWords(std::uint64_t{});
    }
    if (size >= sizeof(std::uint32_t)) {
        return inWords(std::uint32_t{});
    }
    return size == 0 || inWords(std::uint8_t{});
}

}  // namespace quillmark
