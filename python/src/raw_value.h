#pragma once

#include <cstddef>
#include <string_view>

#include "quillmark/model.h"
#include "source.h"

namespace quillmark::python {

/// The raw value of a signal, or of one element of an array, from where it begins in the bytes. A
/// description that names no byte order means the little-endian one. Raises quillmark.Error for a
/// signal of which that cannot be told, ValueError for too few bytes.
///
/// For an array these are nested lists: values[i][j] is what an include file calls name[i][j].
py::object rawValue(const Signal& signal, std::string_view bytes);

}  // namespace quillmark::python
