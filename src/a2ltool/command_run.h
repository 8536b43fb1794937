#pragma once

#include <functional>

#include "a2ltool/tool_status.h"

namespace quillmark::a2ltool {

/// The work of a command, to be called once its options have been read.
using CommandRun = std::function<ToolStatus()>;

}  // namespace quillmark::a2ltool
