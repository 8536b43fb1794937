#pragma once

#include <string>

#include "a2ltool/file_report.h"
#include "quillmark/description.h"
#include "quillmark/finding.h"

namespace quillmark::a2ltool {

/// All that is to be told about a description, however far it could be read: what was found then,
/// and what `convert` would say besides. Findings less severe than `least` are left out, and lines
/// of the description are not in the report yet. `name` is what the report calls the file.
FileReport checkDescription(const Description& description, const std::string& name,
                            Severity least);

}  // namespace quillmark::a2ltool
