#pragma once

#include "edges/edges.h"

namespace quillmark {

/// The calls as they are, with all that they need: src/edge_module has them.
extern const EdgeCalls kEdgeCalls;

}  // namespace quillmark
