#pragma once

#include <string_view>

#include "a2l/core_reader.h"
#include "model/module_model.h"

namespace quillmark {

class InputFile;

/// Reader of A2L descriptions (ASAM MCD-2 MC): what opens a file and reads its projects. The blocks
/// are functions, one for each, named after its keyword: see core_blocks.h. Names that are not
/// defined yet when something refers to them are left as placeholders; resolve() binds them
/// afterwards.
class PhA2l final : public CoreReader {
  public:
    using CoreReader::CoreReader;

    std::string_view formatName() const override { return "ASAP2"; }
    int parse(PhRoot& root) override;

    /// Reads an input that is already open, under the reader's file name.
    int parse(PhRoot& root, InputFile& input);

    /// Whether the last parse has looked at the whole text: up to its end, and at all that follows
    /// an error but the rest of the block in which that stood.
    bool reachedEnd() const { return reachedEnd_; }

    /// Debugging aid: traces every token of the file, one line each. -1 without a file name, -2
    /// when the file cannot be opened, else 0.
    int print_tokens();

  private:
    int parseProjects(PhRoot& root, InputFile& input);

    bool reachedEnd_ = false;
};

}  // namespace quillmark
