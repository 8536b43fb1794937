#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/finding.h"
#include "source.h"

namespace quillmark::python {

/// A finding as Python has it, whichever part of the library told it.
struct PlainFinding {
    Severity severity = Severity::Note;
    std::string file;
    std::int32_t line = 0;    ///< from 1; 0 where there is none
    std::int32_t column = 0;  ///< in bytes from 1; 0 where nobody knows
    std::string text;
};
using PlainFindings = std::vector<PlainFinding>;

PlainFindings plainFindings(const Findings& findings);

/// Raises quillmark.Error.
[[noreturn]] void raiseError(std::string_view message, const PlainFindings& findings = {});

/// Raises it with the text of the first error among the findings, or with the message where there
/// is none.
[[noreturn]] void raiseFirstError(const PlainFindings& findings, std::string_view message);

py::tuple pythonFindings(const PlainFindings& findings);

void declareFinding(py::module_& module);

}  // namespace quillmark::python
