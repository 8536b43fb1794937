#pragma once

#include "a2l/core_reader.h"
#include "model/module_model.h"

namespace quillmark {

/// Looks for the place behind the block of a module in which the parse has failed: behind the
/// block's end; where that is missing, the next block that only a module has, or the end of the
/// module. `blocks` are the rules of a module.
///
/// Returns the kind of the first token there, with which the module goes on; TOK_ERROR where there
/// is no such place, or no more errors are wanted. The parse stays failed then.
int resumeInModule(CoreReader& reader, Rules<CoreReader, PhGroup> blocks);

}  // namespace quillmark
