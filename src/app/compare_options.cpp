#include "app/compare_options.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "app/usage.h"

namespace quillmark {
namespace {

/// Returns the message of the first mistake, or an empty text.
std::string_view readArguments(std::span<const char* const> arguments, CompareRequest& request) {
    const std::array files = {&request.oldFile, &request.newFile};
    std::size_t fileCount = 0;
    for (const std::string_view argument : arguments) {
        if (argument == "-v") {
            if (request.verbose) {
                // Fatal, in spite of its first word.
                return "Warning: Option -v cannot be used more than once.";
            }
            request.verbose = true;
        } else if (fileCount < files.size()) {
            *files[fileCount] = argument;
            ++fileCount;
        }
    }
    if (request.oldFile.empty()) {
        return "Error: no valid file 1 specified.";
    }
    if (request.newFile.empty()) {
        return "Error: no valid file 2 specified.";
    }
    return {};
}

}  // namespace

bool parseCompareOptions(std::span<const char* const> arguments, CompareRequest& request,
                         Console& console) {
    const std::string_view mistake = readArguments(arguments, request);
    if (!mistake.empty()) {
        console.printLine(mistake);
        printUsage(console);
        return false;
    }
    return true;
}

}  // namespace quillmark
