#pragma once

#include <functional>
#include <span>

#include "a2ltool/tool_status.h"

namespace CLI {
class App;
}

namespace quillmark::a2ltool {

/// The work of a command, to be called once its options have been read.
using CommandRun = std::function<ToolStatus()>;

/// A command: its word on the command line, what the help says about it, and how its options are
/// declared. `declare` is given the command's own part of the command line; what it returns owns
/// the variables into which the options are read.
struct CommandRow {
    const char* word;
    const char* summary;
    CommandRun (*declare)(CLI::App& options);
};

/// All commands, in the order of the help.
std::span<const CommandRow> commandTable();

}  // namespace quillmark::a2ltool
