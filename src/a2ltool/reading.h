#pragma once

#include <optional>
#include <string>

#include "quillmark/description.h"

namespace quillmark::a2ltool {

/// Reads a description that a command needs as a whole. What is wrong with it is told on standard
/// error, one line for each finding; nothing if it can't be read to its end without an error.
std::optional<Description> readWhole(const std::string& name, const ReadOptions& options);

}  // namespace quillmark::a2ltool
