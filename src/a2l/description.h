#pragma once

#include <string>

#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// Reads a description file into the model, which is empty before, and binds its references. Long
/// identifiers, which no command shows, are not kept. Errors and warnings go to the console.
/// Returns whether the file could be read; when it could not, the model holds a part of it.
bool readDescription(const std::string& fileName, PhRoot& model, Console& console);

}  // namespace quillmark
