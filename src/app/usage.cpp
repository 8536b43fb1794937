#include "app/usage.h"

#include <string_view>
#include <vector>

#include "app/compare_options.h"
#include "app/convert_options.h"
#include "app/options.h"
#include "platform/text.h"

namespace quillmark {
namespace {

/// What the usage text says of one command.
struct CommandUsage {
    std::string_view synopsis;
    std::string_view purpose;
    std::vector<Option> (*options)();
};

// "an compressed" is part of the text that users and their scripts know.
constexpr CommandUsage kCommandUsages[] = {
    {"convert <input a2l file> <output include file> [options]",
     "Converts an .a2l file to a .cfginclude file and creates optionally a zpki.", &convertOptions},
    {"decompress <input include file> <output include file>",
     "Converts an compressed .cfginclude file to an uncompressed .cfginclude file.", nullptr},
    {"compare <old a2l file> <new a2l file> [options]",
     "Compares two .a2l files for compatibility.", &compareOptions},
};

void printOptions(const std::vector<Option>& options, Console& console) {
    console.printLine("      Options:");
    for (const Option& option : options) {
        console.printLine(joined({"          ", option.word, option.usage}));
    }
}

}  // namespace

void printUsage(Console& console) {
    console.printLine("Usage:");
    console.printLine("");
    for (const CommandUsage& command : kCommandUsages) {
        console.printLine(joined({"  ", command.synopsis}));
        console.printLine(joined({"      ", command.purpose}));
        if (command.options != nullptr) {
            printOptions(command.options(), console);
        }
        console.printLine("");
    }
}

}  // namespace quillmark
