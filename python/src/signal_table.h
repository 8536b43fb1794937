#pragma once

#include "source.h"

namespace quillmark::python {

/// The signals of all modules as columns: a dict of NumPy arrays, or of pairs of them. Numbers that
/// may be absent are (values, mask), texts of which there are few are (codes, categories), -1 being
/// none.
py::dict signalColumns(const SourcePointer& source);

/// The same as a stream of one record batch, in a capsule as the Arrow PyCapsule interface has it:
/// numbers are nullable, texts of which there are few a dictionary.
py::capsule signalStream(const SourcePointer& source);

}  // namespace quillmark::python
