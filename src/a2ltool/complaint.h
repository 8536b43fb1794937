#pragma once

#include <string_view>

namespace quillmark::a2ltool {

/// The program's name, as it signs its messages.
inline constexpr std::string_view kToolName = "quillmark-a2l";

/// Puts "quillmark-a2l: " and the text on standard error, as one line.
void complain(std::string_view text);

/// Puts a line on standard error.
void printError(std::string_view line);

}  // namespace quillmark::a2ltool
