#pragma once

#include "source.h"

namespace quillmark::python {

/// Projects, modules, signals, conversions and what else a description holds.
void declareModelClasses(py::module_& module);

/// How a control unit is reached and measured.
void declareProtocolClasses(py::module_& module);

}  // namespace quillmark::python
