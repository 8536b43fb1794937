#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmark::preparing {

/// Appends a text in UTF-8 as ISO 8859-1. Bytes that are no UTF-8 are taken for ISO 8859-1 already;
/// what that lacks becomes `?`. Returns how many characters that were.
std::size_t appendAsLatin1(std::string_view utf8, std::string& latin1);

/// Whether all bytes are ASCII.
bool isAscii(std::string_view text);

}  // namespace quillmark::preparing
