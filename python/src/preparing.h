#pragma once

#include "source.h"

namespace quillmark::python {

/// The native side of prepare().
void declarePreparing(py::module_& module);

}  // namespace quillmark::python
