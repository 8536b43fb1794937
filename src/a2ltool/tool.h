#pragma once

namespace quillmark::a2ltool {

/// Runs the program on the arguments of its process and returns the exit status. What is wrong with
/// them is told in one line on standard error.
int runTool(int argumentCount, const char* const* arguments);

}  // namespace quillmark::a2ltool
