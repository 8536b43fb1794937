#pragma once

#include "platform/console.h"

namespace quillmark {

/// Prints the usage text. Every path that shows it comes here.
void printUsage(Console& console);

}  // namespace quillmark
