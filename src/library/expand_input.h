#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/input_file.h"
#include "quillmark/expand.h"

namespace quillmark {

/// Expands an input that could be opened, of which it expects so many bytes, into a file. An input
/// that cannot be read to its end is no compressed include file, whatever came before.
///
/// The input may be the same file: it is read completely, and found to hold a blob, before the
/// output is touched.
ExpandStatus expandInput(std::unique_ptr<InputFile> input, std::size_t expectedSize,
                         const std::string& outputName);

}  // namespace quillmark
