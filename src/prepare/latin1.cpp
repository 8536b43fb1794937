#include "prepare/latin1.h"

#include <algorithm>

namespace quillmark::preparing {

namespace {

constexpr unsigned kContinuation = 0x80;
constexpr unsigned kContinuationMask = 0xC0;
constexpr unsigned kPayloadBits = 6;

/// How many bytes the character has that begins with this one; 1 for a byte that begins none.
std::size_t lengthOf(unsigned char first) {
    if (first >= 0xC2 && first < 0xE0) {
        return 2;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 3;
    }
    return first >= 0xF0 && first < 0xF5 ? 4 : 1;
}

}  // namespace

bool isAscii(std::string_view text) {
    unsigned char all = 0;
    for (const char byte : text) {
        all |= static_cast<unsigned char>(byte);
    }
    return all < kContinuation;
}

std::size_t appendAsLatin1(std::string_view utf8, std::string& latin1) {
    std::size_t lost = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto first = static_cast<unsigned char>(utf8[i]);
        std::size_t length = lengthOf(first);
        const std::string_view rest = utf8.substr(i + 1, length - 1);
        const bool isWhole =
            rest.size() + 1 == length && std::all_of(rest.begin(), rest.end(), [](char byte) {
                return (static_cast<unsigned char>(byte) & kContinuationMask) == kContinuation;
            });
        if (!isWhole || length == 1) {
            latin1 += utf8[i];
            ++i;
            continue;
        }
        if (length == 2 && first <= 0xC3) {
            latin1 += static_cast<char>((first & 3U) << kPayloadBits |
                                        (static_cast<unsigned char>(rest[0]) & 0x3FU));
        } else {
            latin1 += '?';
            ++lost;
        }
        i += length;
    }
    return lost;
}

}  // namespace quillmark::preparing
