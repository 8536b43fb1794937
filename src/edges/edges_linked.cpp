#include "edges/edge_calls.h"

namespace quillmark {

const EdgeCalls& edges() {
    return kEdgeCalls;
}

}  // namespace quillmark
