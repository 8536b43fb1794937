#pragma once

namespace quillmark::a2ltool {

/// How a run ends, as its exit status. A run on several inputs ends with the highest of theirs.
enum class ToolStatus : int {
    NothingFound = 0,
    Findings = 1,
    Trouble =
        2,  ///< wrong command line, an input that can't be read, an output that can't be written
};

}  // namespace quillmark::a2ltool
