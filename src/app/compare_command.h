#pragma once

#include "app/compare_options.h"
#include "platform/console.h"

namespace quillmark {

/// Runs `compare`: reads both descriptions, compares them and prints what was found. Returns
/// whether they could be compared, whatever was found.
bool compareCommand(const CompareRequest& request, Console& console);

}  // namespace quillmark
