#include "app/convert_options.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "app/conversion_driver.h"
#include "app/usage.h"

namespace quillmark {
namespace {

/// The request while it is being filled: the user files are still one text.
struct ConvertArguments : ConvertRequest {
    std::string userFileList;
};

enum class OptionKind { text, flag };

/// One option word. A text option takes the very next argument, whatever it looks like; `target`
/// or `flag` is the field it fills.
struct OptionRow {
    std::string_view word;
    OptionKind kind;
    std::string ConvertArguments::*target;
    bool ConvertArguments::*flag;
    /// Text option: refusal while the field is not empty; none if empty. Flag: warning.
    std::string_view duplicateText;
    std::string_view missingText;
};

// A second -l is never refused: the last selection wins, so a script can append its own to a
// command line that it was handed.
constexpr OptionRow kOptions[] = {
    {"-n", OptionKind::text, &ConvertArguments::stationName, nullptr,
     "Error: Option -n cannot be used more than once.",
     "Error: Option -n has to be followed by another argument."},
    {"-p", OptionKind::text, &ConvertArguments::namePrefix, nullptr,
     "Error: Option -p cannot be used more than once.",
     "Error: Option -p has to be followed by another argument."},
    {"-l", OptionKind::text, &ConvertArguments::library, nullptr, "",
     "Error: Option -l has to be followed by another argument."},
    {"-z", OptionKind::flag, nullptr, &ConvertArguments::compress,
     "Warning: Using option -z more than once has no effect.", ""},
    {"-epk-file-prefix", OptionKind::flag, nullptr, &ConvertArguments::epkFilePrefix,
     "Warning: Using option -epk-file-prefix more than once has no effect.", ""},
    {"-zpki", OptionKind::text, &ConvertArguments::zpkiFile, nullptr,
     "Error: Option -zpki cannot be used more than once",
     "Error: Option -zpki has to followed by another argument."},
    {"-userfiles", OptionKind::text, &ConvertArguments::userFileList, nullptr,
     "Error: Option -userfiles cannot be used more than once",
     "Error: Option -userfiles has to be followed by another argument."},
    {"-i", OptionKind::flag, nullptr, &ConvertArguments::indent,
     "Warning: Using option -i more than once has no effect.", ""},
};

void takePositional(ConvertArguments& values, std::string_view argument) {
    // By emptiness, not by position: an empty argument leaves its place to the next one.
    if (values.inputFile.empty()) {
        values.inputFile = argument;
    } else if (values.outputFile.empty()) {
        values.outputFile = argument;
    }
}

/// Returns the message of the first mistake, or an empty text.
std::string_view readArguments(std::span<const char* const> arguments, ConvertArguments& values,
                               Console& console) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        const auto* const row = std::ranges::find(kOptions, argument, &OptionRow::word);
        if (row == std::end(kOptions)) {
            takePositional(values, argument);
            continue;
        }
        if (row->kind == OptionKind::flag) {
            if (values.*(row->flag)) {
                console.printLine(row->duplicateText);
            }
            values.*(row->flag) = true;
            continue;
        }
        std::string& target = values.*(row->target);
        if (!target.empty() && !row->duplicateText.empty()) {
            return row->duplicateText;
        }
        if (i + 1 == arguments.size()) {
            return row->missingText;
        }
        ++i;
        target = arguments[i];
    }
    return {};
}

/// Checks what only the whole command line tells, and derives the package's name where user files
/// ask for a package without naming it. Returns the message of the first mistake, or an empty text.
std::string_view checkCombinations(ConvertArguments& values) {
    if (values.inputFile.empty()) {
        return "Error: no valid input file specified.";
    }
    if (values.outputFile.empty()) {
        return "Error: no valid output file specified.";
    }
    if (values.zpkiFile.empty() && !values.userFileList.empty()) {
        values.zpkiFile = zpkiNameFor(values.outputFile);
        if (values.zpkiFile.empty()) {
            return "Error: can not create zpki without proper file name";
        }
    }
    if (values.epkFilePrefix && values.userFileList.empty()) {
        return "Error: EPK prefix for user files can only be used with userfiles option";
    }
    return {};
}

}  // namespace

std::vector<std::string> splitUserFiles(std::string_view list) {
    std::vector<std::string> items;
    std::size_t position = 0;
    while (position < list.size()) {
        const std::size_t end = std::min(list.find(',', position), list.size());
        items.emplace_back(list.substr(position, end - position));
        position = end + 1;
    }
    return items;
}

bool parseConvertOptions(std::span<const char* const> arguments, ConvertRequest& request,
                         Console& console) {
    ConvertArguments values;
    std::string_view mistake = readArguments(arguments, values, console);
    if (mistake.empty()) {
        mistake = checkCombinations(values);
    }
    if (!mistake.empty()) {
        console.printLine(mistake);
        printUsage(console);
        return false;
    }
    request = static_cast<const ConvertRequest&>(values);
    request.userFiles = splitUserFiles(values.userFileList);
    return true;
}

}  // namespace quillmark
