#pragma once

#include <string>

#include "a2ltool/command_line.h"

namespace quillmark::a2ltool {

/// Declares --color=auto|always|never, which is kept in `when`, and is "auto" at first.
void declareColor(CommandOptions& options, std::string& when);

/// Whether text for standard output (`output` is "-") or for a file is to be coloured. By itself
/// only what a terminal shows is, unless the environment has NO_COLOR or a terminal of type "dumb".
bool isColored(const std::string& when, const std::string& output);

}  // namespace quillmark::a2ltool
