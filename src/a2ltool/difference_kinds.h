#pragma once

#include <span>

#include "quillmark/diff.h"

namespace quillmark::a2ltool {

/// A kind of differences, which `textOf` names in the output and behind --ignore, and what it
/// means.
struct DifferenceKindRow {
    DiffKind kind;
    const char* help;
};

/// All kinds.
std::span<const DifferenceKindRow> differenceKinds();

}  // namespace quillmark::a2ltool
