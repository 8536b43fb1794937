#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmark::a2ltool {

/// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// The text as UTF-8. Descriptions tell their encoding only by a mark that few of them carry: bytes
/// that are no UTF-8 are taken as Latin-1, in which old descriptions are written.
std::string toUtf8(std::string_view bytes);

/// How many characters (code points) a text in UTF-8 has.
std::size_t countCharacters(std::string_view utf8);

}  // namespace quillmark::a2ltool
