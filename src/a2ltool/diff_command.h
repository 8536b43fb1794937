#pragma once

#include "a2ltool/command_line.h"
#include "a2ltool/command_run.h"

namespace quillmark::a2ltool {

/// `diff OLD NEW`: tells in what two descriptions differ.
CommandRun declareDiff(CommandOptions& options);

}  // namespace quillmark::a2ltool
