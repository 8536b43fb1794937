#include "app/usage.h"

#include <gtest/gtest.h>

#include "support/collecting_console.h"

namespace quillmark {
namespace {

TEST(Usage, TextAsShipped) {
    CollectingConsole console;
    printUsage(console);
    EXPECT_EQ(
        console.out,
        "Usage:\n"
        "\n"
        "  convert <input a2l file> <output include file> [options]\n"
        "      Converts an .a2l file to a .cfginclude file and creates optionally a zpki.\n"
        "      Options:\n"
        "          -z : use zlib compression\n"
        "          -i : use indentation in output file\n"
        "          -n <station name> : set station name.\n"
        "          -p <prefix> : add name prefix.\n"
        "          -l <library> : select library (e.g. -l sigTrak=1.5.4)\n"
        "          -userfiles <userfiles csl> : user files for zpki in a comma separated list\n"
        "          -zpki <name> : path and name of output zpki\n"
        "          -epk-file-prefix: use EPK as user file name prefix for zpki generation\n"
        "\n"
        "  decompress <input include file> <output include file>\n"
        "      Converts an compressed .cfginclude file to an uncompressed .cfginclude file.\n"
        "\n"
        "  compare <old a2l file> <new a2l file> [options]\n"
        "      Compares two .a2l files for compatibility.\n"
        "      Options:\n"
        "          -v : show compared values\n"
        "\n");
    EXPECT_EQ(console.err, "");
}

}  // namespace
}  // namespace quillmark
