#pragma once

#include "a2ltool/command_line.h"
#include "a2ltool/command_run.h"

namespace quillmark::a2ltool {

/// `prepare`: a description that the reader takes, made of one that it may refuse.
CommandRun declarePrepare(CommandOptions& options);

}  // namespace quillmark::a2ltool
