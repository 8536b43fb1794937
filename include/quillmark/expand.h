#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillmark/bytes.h"
#include "quillmark/export.h"

namespace quillmark {

/// What became of an expansion.
enum class ExpandStatus : std::uint8_t {
    Done,
    NotOpened,        ///< the input cannot be opened
    NotCompressed,    ///< the input has no compressed section, or cannot be read to its end
    OutputNotOpened,  ///< the output cannot be opened
    NotWritten,       ///< the output could not be written completely, or no more was wanted
};

/// Hands an include file to the sink with its first compressed section expanded. A damaged section
/// gives what can be had of it.
QUILLMARK_API ExpandStatus expand(std::string_view includeFile, const ByteSink& sink);

/// Appends it to a text.
QUILLMARK_API ExpandStatus expand(std::string_view includeFile, std::string& text);

/// From file to file; both may be the same one.
QUILLMARK_API ExpandStatus expandFile(const std::string& inputFile, const std::string& outputFile);

}  // namespace quillmark
