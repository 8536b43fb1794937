#pragma once

#include <string>

#include "quillmark/description.h"

namespace quillmark::a2ltool {

/// Reads a description that a command needs as a whole. What is wrong with it is told on standard
/// error, one line for each finding; nullptr if it can't be read to its end without an error.
///
/// What was read is left to the system, which takes all memory back at once at the end of the
/// process, to spare the time of taking millions of objects apart one by one.
const Description* readWhole(const std::string& name, const ReadOptions& options);

}  // namespace quillmark::a2ltool
