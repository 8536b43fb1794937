#include "app/compare_options.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace quillmark {
namespace {

constexpr OptionRow<CompareRequest> kCompareOptions[] = {
    // Refused, in spite of its first word.
    {{.word = "-v",
      .usage = " : show compared values",
      .summary = "show every compared pair of values",
      .manual = "Show every pair of values that is compared, the old value before the new one.",
      .repetition = Repetition::Refused,
      .repeatedText = "Warning: Option -v cannot be used more than once."},
     &CompareRequest::verbose},
};

/// Returns the message of the first mistake, or an empty text.
std::string_view readArguments(std::span<const char* const> arguments, CompareRequest& request,
                               Console& console) {
    const std::array files = {&request.oldFile, &request.newFile};
    std::size_t fileCount = 0;
    const std::string_view mistake =
        readOptions(kCompareOptions, arguments, request, console, [&](std::string_view argument) {
            if (fileCount < files.size()) {
                *files[fileCount++] = argument;
            }
        });
    if (!mistake.empty()) {
        return mistake;
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

std::vector<Option> compareOptions() {
    return optionsOf(kCompareOptions);
}

bool parseCompareOptions(std::span<const char* const> arguments, CompareRequest& request,
                         Console& console) {
    const std::string_view mistake = readArguments(arguments, request, console);
    if (!mistake.empty()) {
        console.printLine(mistake);
        return false;
    }
    return true;
}

}  // namespace quillmark
