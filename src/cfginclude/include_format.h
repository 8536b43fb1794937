#pragma once

#include <string_view>

namespace quillmark {

/// Ends every line of an include file.
inline constexpr std::string_view kLineBreak = "\r\n";

}  // namespace quillmark
