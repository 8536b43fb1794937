#pragma once

#include <span>
#include <string>
#include <vector>

#include "app/options.h"
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

/// The options, in the order of the usage text.
std::vector<Option> compareOptions();

}  // namespace quillmark
