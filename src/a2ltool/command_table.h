#pragma once

#include <span>

#include "a2ltool/command_line.h"
#include "a2ltool/command_run.h"

namespace quillmark::a2ltool {

/// A command: its word on the command line, what the help says about it, and how its options are
/// declared. `declare` is given the command's own part of the command line; what it returns owns
/// the variables into which the options are read.
struct CommandRow {
    const char* word;
    const char* summary;
    CommandRun (*declare)(CommandOptions& options);
};

/// All commands, in the order of the help.
std::span<const CommandRow> commandTable();

}  // namespace quillmark::a2ltool
