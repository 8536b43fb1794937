#pragma once

#include <string>
#include <string_view>

#include "cfginclude/convert_request.h"
#include "platform/console.h"
#include "quillmark/description.h"

namespace quillmark {

/// What became of a run of `convert`.
enum class ConversionOutcome {
    /// The output was written.
    Done,
    /// Something went wrong and has been reported on standard output.
    Failed,
    /// The library selection was refused on standard error: the program ends at once, without its
    /// footer.
    Refused,
};

/// Runs `convert`: reads the description into `description`, makes the include file and writes it
/// to the output file, or into a package when one is asked for. An existing output file is only
/// touched once the whole document is known.
ConversionOutcome convertCommand(const ConvertRequest& request, Description& description,
                                 Console& console);

/// The name of the package that belongs to an output file: the suffix of its file part (the text
/// behind the last dot) gives way to "zpki". Empty if the file part has no suffix. Directories keep
/// their dots.
std::string zpkiNameFor(std::string_view outputFile);

}  // namespace quillmark
