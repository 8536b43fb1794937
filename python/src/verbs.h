#pragma once

#include "source.h"

namespace quillmark::python {

/// convert(), and the native side of decompress().
void declareVerbs(py::module_& module);

}  // namespace quillmark::python
