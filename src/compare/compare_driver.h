#pragma once

#include <string>

#include "compare/compare_report.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// Compares the acquisition settings of the modules of two descriptions, of which each must have
/// exactly one. Findings are appended to the report; header lines and, if verbose, every compared
/// pair go to the console. The paths are what messages call the descriptions. Returns 0 if the
/// modules could be compared, whatever was found.
int compareDescriptions(CompareReport& report, bool verbose, const std::string& oldPath,
                        const PhRoot& oldRoot, const std::string& newPath, const PhRoot& newRoot,
                        Console& console);

}  // namespace quillmark
