#pragma once

#include "source.h"

namespace quillmark::python {

/// The signals of all modules as columns: a dict of NumPy arrays, or of pairs of them. Numbers that
/// may be absent are (values, mask), texts of which there are few are (codes, categories), -1 being
/// none.
py::dict signalColumns(const SourcePointer& source);

}  // namespace quillmark::python
