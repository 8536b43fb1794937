#pragma once

#include "library/diff_data.h"
#include "quillmark/description.h"

namespace quillmark {

/// Tells in which conversions and signals two descriptions differ, in the order of the old one.
/// What is added stands where the new one has it.
void diffModules(const Description& oldDescription, const Description& newDescription,
                 const DifferenceTaker& take);

}  // namespace quillmark
