#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "quillmark/model.h"

namespace quillmark {

/// Whether two conversions make the same of all values: coefficients, table, formula and unit
/// alike.
bool sameConversion(const Conversion& a, const Conversion& b);

/// The first row that two tables do not have in common; nothing if their rows are the same.
std::optional<std::size_t> firstDifferentRow(const Conversion& a, const Conversion& b);

/// What a conversion does, in short, such as "LINEAR 0.5 0" or "TAB_INTP, 12 rows", of which one
/// row may be shown.
std::string shownConversion(const Conversion& conversion, std::optional<std::size_t> row);

/// The name of a conversion, and whether nothing defines it.
std::string shownName(const Conversion& conversion);

}  // namespace quillmark
