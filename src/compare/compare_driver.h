#pragma once

#include <string>

#include "compare/compare_report.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// Reads both descriptions and compares the acquisition settings of their modules, of which each
/// must have exactly one. Findings are appended to the report; header lines and, if verbose, every
/// compared pair go to the console. Returns 0 if the modules could be compared, whatever was found.
int compareFiles(CompareReport& report, bool verbose, const std::string& oldPath,
                 const std::string& newPath, Console& console);

/// The same for two descriptions that have been read; the paths are what messages call them.
int compareDescriptions(CompareReport& report, bool verbose, const std::string& oldPath,
                        const PhRoot& oldRoot, const std::string& newPath, const PhRoot& newRoot,
                        Console& console);

}  // namespace quillmark
