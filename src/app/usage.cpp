#include "app/usage.h"

#include <string_view>

namespace quillmark {
namespace {

// "an compressed" and the missing blank before the colon of -epk-file-prefix are part of the text
// that users and their scripts know.
constexpr std::string_view kUsageLines[] = {
    "Usage:",
    "",
    "  convert <input a2l file> <output include file> [options]",
    "      Converts an .a2l file to a .cfginclude file and creates optionally a zpki.",
    "      Options:",
    "          -z : use zlib compression",
    "          -i : use indentation in output file",
    "          -n <station name> : set station name.",
    "          -p <prefix> : add name prefix.",
    "          -l <library> : select library (e.g. -l sigTrak=1.5.4)",
    "          -userfiles <userfiles csl> : user files for zpki in a comma separated list",
    "          -zpki <name> : path and name of output zpki",
    "          -epk-file-prefix: use EPK as user file name prefix for zpki generation",
    "",
    "  decompress <input include file> <output include file>",
    "      Converts an compressed .cfginclude file to an uncompressed .cfginclude file.",
    "",
    "  compare <old a2l file> <new a2l file> [options]",
    "      Compares two .a2l files for compatibility.",
    "      Options:",
    "          -v : show compared values",
    "",
};

}  // namespace

void printUsage(Console& console) {
    for (const std::string_view line : kUsageLines) {
        console.printLine(line);
    }
}

}  // namespace quillmark
