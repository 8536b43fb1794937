#include "edges/edge_calls.h"

/// What edges() looks for in the module. Everything else in it is hidden.
extern "C" [[gnu::visibility("default")]] const quillmark::EdgeCalls* quillmark_edge_calls() {
    return &quillmark::kEdgeCalls;
}
