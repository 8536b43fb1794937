#pragma once

#include <functional>

#include "a2ltool/tool_status.h"

namespace CLI {
class App;
}

namespace quillmark::a2ltool {

/// The work of a command, to be called once its options have been read.
using CommandRun = std::function<ToolStatus()>;

}  // namespace quillmark::a2ltool
