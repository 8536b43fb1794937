#pragma once

#include "source.h"

namespace quillmark::python {

/// What the commands of the program do: convert, decompress and compare.
void declareVerbs(py::module_& module);

}  // namespace quillmark::python
