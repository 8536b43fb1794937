#include "a2ltool/utf8.h"

#include <algorithm>

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

namespace quillmark::a2ltool {
namespace {

/// What the validation would copy the text to.
struct Nowhere {
    void Put(char) {}
};

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
    if (std::all_of(bytes.begin(), bytes.end(), &isAscii)) {
        return true;
    }
    rapidjson::MemoryStream in(bytes.data(), bytes.size());
    Nowhere out;
    while (in.Tell() < bytes.size()) {
        if (!rapidjson::UTF8<>::Validate(in, out)) {
            return false;
        }
    }
    // A last character that is cut off would have been completed by zero bytes.
    return in.Tell() == bytes.size();
}

std::string toUtf8(std::string_view bytes) {
    if (isUtf8(bytes)) {
        return std::string(bytes);
    }
    std::string text;
    for (const char byte : bytes) {
        if (isAscii(byte)) {
            text += byte;
        } else {
            const auto code = static_cast<unsigned char>(byte);
            text += static_cast<char>(0xC0U | code >> 6U);
            text += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
    return text;
}

std::size_t countCharacters(std::string_view utf8) {
    return utf8.size() -
           static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), &isContinuation));
}

}  // namespace quillmark::a2ltool
