#include "app/convert_options.h"

#include <algorithm>
#include <cstddef>

#include "app/convert_command.h"

namespace quillmark {
namespace {

/// The request while it is being filled: the user files are still one text.
struct ConvertArguments : ConvertRequest {
    std::string userFileList;
};

// In the order of the usage text, in which -epk-file-prefix has always lacked the blank before its
// colon. A second -l is never refused: the last selection wins, so a script can append its own to a
// command line that it was handed.
constexpr OptionRow<ConvertArguments> kConvertOptions[] = {
    {{.word = "-z",
      .usage = " : use zlib compression",
      .summary = "pack conversions and signals into a compressed blob",
      .manual = "Pack the conversions and signals into a compressed blob.",
      .repetition = Repetition::Warns,
      .repeatedText = "Warning: Using option -z more than once has no effect."},
     &ConvertArguments::compress},

    {{.word = "-i",
      .usage = " : use indentation in output file",
      .summary = "indent the include file",
      .manual = "Indent the include file.",
      .repetition = Repetition::Warns,
      .repeatedText = "Warning: Using option -i more than once has no effect."},
     &ConvertArguments::indent},

    {{.word = "-n",
      .usage = " <station name> : set station name.",
      .summary = "name of the station",
      .manual = "Name of the station; by default made from the names of project and module.",
      .argument = "station",
      .repetition = Repetition::Refused,
      .repeatedText = "Error: Option -n cannot be used more than once.",
      .missingText = "Error: Option -n has to be followed by another argument."},
     &ConvertArguments::stationName},

    {{.word = "-p",
      .usage = " <prefix> : add name prefix.",
      .summary = "put before every name",
      .manual = "Put\n.Ar prefix\nbefore every signal and conversion name.",
      .argument = "prefix",
      .repetition = Repetition::Refused,
      .repeatedText = "Error: Option -p cannot be used more than once.",
      .missingText = "Error: Option -p has to be followed by another argument."},
     &ConvertArguments::namePrefix},

    {{.word = "-l",
      .usage = " <library> : select library (e.g. -l sigTrak=1.5.4)",
      .summary = "logger library",
      .manual = "The logger library for which to write: a version such as\n"
                ".Li sigTrak=1.5.4 ,\n"
                "or a range such as\n"
                ".Li sigTrak+2017.06.0-2021.9.0 .\n"
                "Of several the last one counts.\n"
                "By default the oldest library is written for.",
      .argument = "library",
      .offer = Offer::Libraries,
      .repetition = Repetition::Replaces,
      .missingText = "Error: Option -l has to be followed by another argument."},
     &ConvertArguments::library},

    {{.word = "-userfiles",
      .usage = " <userfiles csl> : user files for zpki in a comma separated list",
      .summary = "files to pack, separated by commas",
      .manual = "Pack these files, separated by commas, with the include file.",
      .argument = "list",
      .offer = Offer::FileList,
      .repetition = Repetition::Refused,
      .repeatedText = "Error: Option -userfiles cannot be used more than once",
      .missingText = "Error: Option -userfiles has to be followed by another argument."},
     &ConvertArguments::userFileList},

    {{.word = "-zpki",
      .usage = " <name> : path and name of output zpki",
      .summary = "name of the package",
      .manual = "Path and name of the package; by default the output file's name with the\n"
                "extension\n"
                ".Pa .zpki .",
      .argument = "name",
      .offer = Offer::Packages,
      .repetition = Repetition::Refused,
      .repeatedText = "Error: Option -zpki cannot be used more than once",
      .missingText = "Error: Option -zpki has to followed by another argument."},
     &ConvertArguments::zpkiFile},

    {{.word = "-epk-file-prefix",
      .usage = ": use EPK as user file name prefix for zpki generation",
      .summary = "put the EPK before the names of user files",
      .manual = "Put the unit's EPK before the names of the user files.\n"
                "Needs\n"
                ".Fl userfiles .",
      .repetition = Repetition::Warns,
      .repeatedText = "Warning: Using option -epk-file-prefix more than once has no effect."},
     &ConvertArguments::epkFilePrefix},
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

std::vector<Option> convertOptions() {
    return optionsOf(kConvertOptions);
}

bool parseConvertOptions(std::span<const char* const> arguments, ConvertRequest& request,
                         Console& console) {
    ConvertArguments values;
    std::string_view mistake =
        readOptions(kConvertOptions, arguments, values, console,
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
