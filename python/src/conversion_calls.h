#pragma once

#include "conversion_function.h"
#include "source.h"

namespace quillmark::python {

/// The function of a conversion. Raises quillmark.Error for one that cannot be calculated.
const ConversionFunction& functionOf(const Held<Conversion>& conversion);

/// The physical value of a number, or those of a NumPy array.
py::object physicalValue(const ConversionFunction& function, const py::object& raw);

/// The raw value of a number or text, or those of a NumPy array.
py::object rawValueOf(const ConversionFunction& function, const py::object& physical);

}  // namespace quillmark::python
