#pragma once

#include "source.h"

namespace quillmark::python {

/// compare().
void declareComparing(py::module_& module);

}  // namespace quillmark::python
