#pragma once

#include <span>
#include <string>

#include "platform/console.h"

namespace quillmark {

/// What a run of `compare` is asked to do.
struct CompareRequest {
    std::string oldFile;
    std::string newFile;
    /// Print every pair of values that is compared.
    bool verbose = false;
};

/// Reads the arguments that follow the word `compare` into the request, which must be empty.
/// Returns false for the first mistake, after printing its message, which the usage text should
/// follow; the request is then not to be used.
bool parseCompareOptions(std::span<const char* const> arguments, CompareRequest& request,
                         Console& console);

/// Prints what the usage text says of the options.
void printCompareOptions(Console& console);

}  // namespace quillmark
