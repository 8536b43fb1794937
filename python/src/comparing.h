#pragma once

#include "source.h"

namespace quillmark::python {

/// compare() and diff().
void declareComparing(py::module_& module);

}  // namespace quillmark::python
