#pragma once

#include <string>

#include "compare/compare_report.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// Reads both descriptions, each into an empty model, and compares them as compareDescriptions()
/// does. Returns 0 if the modules could be compared, whatever was found.
int compareFiles(CompareReport& report, bool verbose, const std::string& oldPath, PhRoot& oldRoot,
                 const std::string& newPath, PhRoot& newRoot, Console& console);

}  // namespace quillmark
