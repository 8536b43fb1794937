#pragma once

#include <string_view>

#include "quillmark/finding.h"
#include "source.h"

namespace quillmark::python {

/// Raises quillmark.Error.
[[noreturn]] void raiseError(std::string_view message, const Findings& findings = {});

/// Raises it with the text of the first error among the findings, or with the message where there
/// is none.
[[noreturn]] void raiseFirstError(const Findings& findings, std::string_view message);

py::tuple pythonFindings(const Findings& findings);

void declareFinding(py::module_& module);

}  // namespace quillmark::python
