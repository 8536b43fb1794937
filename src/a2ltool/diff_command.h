#pragma once

#include "a2ltool/command_run.h"

namespace quillmark::a2ltool {

/// `diff OLD NEW`: tells in what two descriptions differ.
CommandRun declareDiff(CLI::App& options);

}  // namespace quillmark::a2ltool
