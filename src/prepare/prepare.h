#pragma once

#include "prepare/line_map.h"
#include "prepare/output.h"
#include "prepare/rewriter.h"
#include "prepare/source_text.h"

namespace quillmark::preparing {

/// Prepares a description that can be read twice. Neither the output nor the map is finished. False
/// after an error, which the report has.
[[nodiscard]] bool prepareText(const SourceFiles& files, const RewriteOptions& options,
                               Report& report, Output& output, LineMap* map);

}  // namespace quillmark::preparing
