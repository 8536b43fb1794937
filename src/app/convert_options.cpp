#include "app/convert_options.h"

#include <algorithm>
#include <cstddef>

#include "app/convert_command.h"
#include "app/options.h"

namespace quillmark {
namespace {

/// The request while it is being filled: the user files are still one text.
struct ConvertArguments : ConvertRequest {
    std::string userFileList;
};

// In the order of the usage text, in which -epk-file-prefix has always lacked the blank before its
// colon. A second -l is never refused: the last selection wins, so a script can append its own to a
// command line that it was handed.
constexpr OptionRow<ConvertArguments> kOptions[] = {
    {"-z", " : use zlib compression", &ConvertArguments::compress, Repetition::warns,
     "Warning: Using option -z more than once has no effect."},
    {"-i", " : use indentation in output file", &ConvertArguments::indent, Repetition::warns,
     "Warning: Using option -i more than once has no effect."},
    {"-n", " <station name> : set station name.", &ConvertArguments::stationName,
     Repetition::refused, "Error: Option -n cannot be used more than once.",
     "Error: Option -n has to be followed by another argument."},
    {"-p", " <prefix> : add name prefix.", &ConvertArguments::namePrefix, Repetition::refused,
     "Error: Option -p cannot be used more than once.",
     "Error: Option -p has to be followed by another argument."},
    {"-l", " <library> : select library (e.g. -l sigTrak=1.5.4)", &ConvertArguments::library,
     Repetition::replaces, "", "Error: Option -l has to be followed by another argument."},
    {"-userfiles", " <userfiles csl> : user files for zpki in a comma separated list",
     &ConvertArguments::userFileList, Repetition::refused,
     "Error: Option -userfiles cannot be used more than once",
     "Error: Option -userfiles has to be followed by another argument."},
    {"-zpki", " <name> : path and name of output zpki", &ConvertArguments::zpkiFile,
     Repetition::refused, "Error: Option -zpki cannot be used more than once",
     "Error: Option -zpki has to followed by another argument."},
    {"-epk-file-prefix", ": use EPK as user file name prefix for zpki generation",
     &ConvertArguments::epkFilePrefix, Repetition::warns,
     "Warning: Using option -epk-file-prefix more than once has no effect."},
};

void takePositional(ConvertArguments& values, std::string_view argument) {
    // By emptiness, not by position: an empty argument leaves its place to the next one.
    if (values.inputFile.empty()) {
        values.inputFile = argument;
    } else if (values.outputFile.empty()) {
        values.outputFile = argument;
    }
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

void printConvertOptions(Console& console) {
    printOptionLines(kOptions, console);
}

bool parseConvertOptions(std::span<const char* const> arguments, ConvertRequest& request,
                         Console& console) {
    ConvertArguments values;
    std::string_view mistake =
        readOptions(kOptions, arguments, values, console,
                    [&](std::string_view argument) { takePositional(values, argument); });
    if (mistake.empty()) {
        mistake = checkCombinations(values);
    }
    if (!mistake.empty()) {
        console.printLine(mistake);
        return false;
    }
    request = static_cast<const ConvertRequest&>(values);
    request.userFiles = splitUserFiles(values.userFileList);
    return true;
}

}  // namespace quillmark
