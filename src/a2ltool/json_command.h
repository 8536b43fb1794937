#pragma once

#include "a2ltool/command_line.h"
#include "a2ltool/command_run.h"

namespace quillmark::a2ltool {

/// `json FILE`: writes a description as JSON.
CommandRun declareJson(CommandOptions& options);

}  // namespace quillmark::a2ltool
