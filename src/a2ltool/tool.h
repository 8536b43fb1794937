#pragma once

#include <string_view>

namespace quillmark::a2ltool {

/// The program's name, as it signs its messages.
inline constexpr std::string_view kToolName = "quillmark-a2l";

/// Runs the program on the arguments of its process and returns the exit status. What is wrong with
/// them is told in one line on standard error.
int runTool(int argumentCount, const char* const* arguments);

/// Puts "quillmark-a2l: " and the text on standard error, as one line.
void complain(std::string_view text);

}  // namespace quillmark::a2ltool
