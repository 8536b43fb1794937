#pragma once

#include <string>

#include "quillmark/model.h"

namespace quillmark::a2ltool {

/// Whether two conversions make the same of all values: coefficients, table and unit alike.
/// Formulas as texts are not kept and so not compared.
bool sameConversion(const Conversion& a, const Conversion& b);

/// What a conversion does, in short, such as "LINEAR 0.5 0" or "TAB_INTP, 12 rows".
std::string shownConversion(const Conversion& conversion);

}  // namespace quillmark::a2ltool
