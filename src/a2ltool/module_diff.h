#pragma once

#include "a2ltool/difference.h"
#include "quillmark/description.h"

namespace quillmark::a2ltool {

/// Tells in which signals and conversions two descriptions differ, in the order of the old one; of
/// several modules those of one name are compared. What is added stands where the new one has it.
void diffSignals(const Description& oldDescription, const Description& newDescription,
                 const DifferenceHandler& tell);

}  // namespace quillmark::a2ltool
