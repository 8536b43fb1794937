#pragma once

#include <vector>

#include "a2ltool/file_report.h"
#include "platform/input_file.h"

namespace quillmark::a2ltool {

/// Gives findings the lines of the description in which they stand, reading `input` once from its
/// beginning. Findings without a line, and lines that the input does not have, stay without.
void fetchSourceLines(InputFile& input, std::vector<ReportedFinding>& findings);

}  // namespace quillmark::a2ltool
