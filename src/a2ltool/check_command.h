#pragma once

#include "a2ltool/command_line.h"
#include "a2ltool/command_run.h"

namespace quillmark::a2ltool {

/// `check FILE...`: tells what `convert` would say about descriptions.
CommandRun declareCheck(CommandOptions& options);

}  // namespace quillmark::a2ltool
