#include "a2l/ph_a2l.h"

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "a2l/every_block.h"
#include "a2l/parsing.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

TEST(PhA2l, MissingFileAndMissingName) {
    CollectingConsole console;
    PhRoot root;
    EXPECT_EQ(PhA2l(console, "/nowhere/at/all.a2l").parse(root), -2);
    EXPECT_EQ(PhA2l(console, std::nullopt).parse(root), -1);
    EXPECT_EQ(PhA2l(console, "/nowhere/at/all.a2l").print_tokens(), -2);
    EXPECT_EQ(PhA2l(console, std::nullopt).print_tokens(), -1);
    EXPECT_EQ(PhA2l(console, "x").formatName(), "ASAP2");
}

TEST(PhA2l, OnlyAVersionIsAnEmptyDescription) {
    for (const char* text : {"ASAP2_VERSION 1 60", "ASAP2_VERSION 1", "ASAP2_VERSION",
                             "ASAP2_VERSION x \"y\"\n", "ASAP2_VERSION 1 60 ASAP2_VERSION 1 61"}) {
        const Parsed parsed = parseText(text);
        EXPECT_EQ(parsed.status, 0) << text;
        EXPECT_EQ(parsed.console, "") << text;
        EXPECT_EQ(parsed.model, "root textEncoding=5\n") << text;
    }
}

TEST(PhA2l, TextWithoutAnyTokenFails) {
    for (const char* text : {"", " \n", "/* only */ // comments\n", "\xEF\xBB\xBF"}) {
        const Parsed parsed = parseText(text);
        EXPECT_EQ(parsed.status, -1) << text;
        EXPECT_NE(parsed.console.find("Unexpected token 'token=304' found\n"), std::string::npos)
            << text;
    }
}

TEST(PhA2l, OtherTopLevelTextFails) {
    EXPECT_EQ(parseText("A2ML_VERSION 1 31").console,
              "-: Error (a.a2l:1): Unexpected token 'token=303' found\n");
    EXPECT_EQ(parseText("ASAP2_VERSION 1 60 7").console,
              "-: Error (a.a2l:1): Unexpected token 'token=300' found\n");
    EXPECT_EQ(parseText("/begin MODULE").console,
              "-: Error (a.a2l:1): Unexpected token 'MODULE' found\n");
}

TEST(PhA2l, AStrayHashReadsLikeTheVersionKeyword) {
    EXPECT_EQ(parseText("# 1 60").status, 0);
}

TEST(PhA2l, LongIdentifiersAreCheckedEvenWhereTheyAreNotKept) {
    const ReaderSwitches dropping{.parts = {.longIdentifiers = false}};
    const std::string blocks =
        "/begin MEASUREMENT m \"text\" UBYTE c 0 0 0 1 /end MEASUREMENT "
        "/begin GROUP g NULL /end GROUP ";
    const Parsed parsed = parseModule(blocks, dropping);
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.model.find("longIdentifier"), std::string::npos);
    EXPECT_NE(parsed.model.find("signal m signalKind=Measurement"), std::string::npos);
    EXPECT_EQ(parseModule("/begin GROUP g 5", dropping).console,
              "-: Error (a.a2l:1): String expected\n");
}

TEST(PhA2l, MembersAreCheckedEvenWhereTheyAreNotKept) {
    const ReaderSwitches dropping{.parts = {.members = false}};
    const Parsed all = parseText(kEveryCoreBlock);
    const Parsed parsed = parseText(kEveryCoreBlock, dropping);
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console, all.console);
    for (const std::string_view line :
         {"virtualMembers Array", "        signals Speed", "        functions Few"}) {
        EXPECT_NE(all.model.find(line), std::string::npos) << all.model;
        EXPECT_EQ(parsed.model.find(line), std::string::npos) << parsed.model;
    }
    for (const std::string_view begin :
         {"/begin GROUP g \"\" /begin REF_MEASUREMENT a ",
          "/begin FUNCTION f \"\" /begin SUB_FUNCTION a ",
          "/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 /begin VIRTUAL a "}) {
        EXPECT_EQ(parseModule(std::string(begin) + "5", dropping).console,
                  "-: Error (a.a2l:1): Unexpected token 'token=300' found\n");
    }
}

TEST(PhA2l, SignalsAreCheckedEvenWhereTheyAreNotKept) {
    const ReaderSwitches dropping{.parts = {.signals = false}};
    for (const std::string_view text : {kEveryCoreBlock, kEveryCcpBlock, kEveryXcpBlock}) {
        // Where the file ends in the midst of it, and where one of its words is another one.
        constexpr std::size_t kStep = 50;
        for (std::size_t at = text.find(' '); at != std::string_view::npos;
             at = text.find(' ', at + kStep)) {
            const std::string cut(text.substr(0, at));
            const std::string other = cut + " 7 " + std::string(text.substr(at));
            for (const std::string& damaged : {cut, other}) {
                const Parsed all = parseText(damaged);
                const Parsed parsed = parseText(damaged, dropping);
                ASSERT_EQ(parsed.status, all.status) << damaged;
                ASSERT_EQ(parsed.console, all.console) << damaged;
            }
        }
    }
    const Parsed parsed = parseText(kEveryCoreBlock, dropping);
    for (const std::string_view line :
         {"\n      signal ", "\n      conversion ", "\n      unit ", "\n      recordLayout ",
          "\n      function ", "\n      frame "}) {
        EXPECT_EQ(parsed.model.find(line), std::string::npos) << parsed.model;
    }
    EXPECT_NE(parsed.model.find("epk"), std::string::npos) << parsed.model;
}

TEST(PhA2l, SeveralProjectsAreReadOneAfterAnother) {
    EXPECT_EQ(
        parseText("/begin PROJECT A \"\" /end PROJECT ASAP2_VERSION 1 6 /begin PROJECT B \"\" "
                  "/end PROJECT")
            .model,
        "root textEncoding=5\n  project A longIdentifier=\"\"\n  project B "
        "longIdentifier=\"\"\n");
}

TEST(PhA2l, ByteOrderMarkIsKeptAsEncoding) {
    EXPECT_EQ(parseText("\xEF\xBB\xBF"
                        "ASAP2_VERSION 1 60")
                  .model,
              "root textEncoding=6\n");
}

TEST(PhA2l, UnclosedCommentAndString) {
    EXPECT_EQ(parseText("/begin PROJECT P \"\"\n/* never\nclosed").console,
              "-: Error (a.a2l:3): Error: Unexpected EOF in Comment (Line 2)\n");
    EXPECT_EQ(parseText("/begin PROJECT P \"text\nand\n").console,
              "-: Error (a.a2l:3): Unexpected EOF in string\n"
              "-: Error (a.a2l:3): String expected\n");
}

TEST(PhA2l, AnErrorInADroppedParameterIsPassedUpSilently) {
    EXPECT_EQ(parseText("ASAP2_VERSION 1 /*").console,
              "-: Error (a.a2l:1): Error: Unexpected EOF in Comment (Line 1)\n");
    EXPECT_EQ(messages("/begin CHARACTERISTIC c \"\" VALUE 0 RL /*"),
              "Error 3: Error: Unexpected EOF in Comment (Line 1)\n");
}

TEST(PhA2l, MessageAndLineAreEachCutAt499Bytes) {
    const std::string name(600, 'n');
    const Parsed parsed = parseModule("/begin COMPU_METHOD " + name +
                                      " \"\" RAT_FUNC \"\" \"\" COEFFS 1 0 0 0 0 1 /end "
                                      "COMPU_METHOD");
    const std::string line =
        "Warning (a.a2l:1): Unable to compute inverse function in conversion '" + name;
    EXPECT_EQ(parsed.console, "-: " + line.substr(0, 499));
}

TEST(PhA2l, NestingCostsNoStack) {
    std::string nested;
    for (int i = 0; i < 200000; ++i) {
        nested += "/begin A ";
    }
    for (int i = 0; i < 200000; ++i) {
        nested += "/end A ";
    }
    EXPECT_EQ(messages("/begin AXIS_PTS " + nested + "/end AXIS_PTS"), "");
}

/// Keeps what had reached the reader of the output whenever something was made visible.
class WatchedConsole final : public Console {
  public:
    void print(std::string_view text) override { waiting += text; }
    void printError(std::string_view) override {}
    void flush() override { seen.push_back(std::exchange(waiting, "")); }

    std::vector<std::string> seen;
    std::string waiting;
};

TEST(PhA2l, AMessageIsSeenAtOnce) {
    WatchedConsole console;
    PhRoot root;
    PhA2l reader(console, "a.a2l");
    MemoryInputFile input(
        "/begin PROJECT P \"\" /begin MODULE M \"\" /begin MOD_COMMON \"\" "
        "BYTE_ORDER X\nBYTE_ORDER UBYTE /end X");
    EXPECT_EQ(reader.parse(root, input), -1);
    const std::vector<std::string> expected = {
        "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n",
        "-: Warning (a.a2l:2): Unexpected token 'UBYTE' found\n",
        "-: Error (a.a2l:2): Keyword 'MOD_COMMON' expected after /end\n"};
    EXPECT_EQ(console.seen, expected);
    EXPECT_EQ(console.waiting, "");
}

class RecordingLogger final : public PhLogger {
  public:
    void message(std::string_view text) override { record += "message " + std::string(text); }
    void warning(const char* format, std::string_view fileName, std::int32_t lineNumber,
                 std::string_view message) override {
        add("warning", format, fileName, lineNumber, message);
    }
    void error(const char* format, std::string_view fileName, std::int32_t lineNumber,
               std::string_view message) override {
        add("error", format, fileName, lineNumber, message);
    }

    std::string record;

  private:
    void add(std::string_view level, const char* format, std::string_view fileName,
             std::int32_t lineNumber, std::string_view message) {
        record += std::string(level) + "|" + format + "|" + std::string(fileName) + "|" +
                  std::to_string(lineNumber) + "|" + std::string(message) + "|" +
                  std::to_string(line()) + "\n";
    }
};

TEST(PhA2l, ALoggerGetsWhatTheConsoleWouldShow) {
    CollectingConsole console;
    RecordingLogger logger;
    PhRoot root;
    PhA2l reader(console, "a.a2l");
    reader.setLogger(&logger);
    reader.setVerbose(true);
    MemoryInputFile input(
        "/begin PROJECT P \"\"\n/begin MODULE M \"\" /begin MOD_COMMON \"\" BYTE_ORDER X\n/end X");
    EXPECT_EQ(reader.parse(root, input), -1);
    EXPECT_EQ(console.out, "");
    EXPECT_EQ(
        logger.record,
        "message Parse PROJECT 'P'\n"
        "message Parse MODULE 'M'\n"
        "message Parse MOD_COMMON ''\n"
        "warning|File '%s', Line %d: %s\n|a.a2l|2|Unexpected token 'token=303' found|2\n"
        "error|File '%s', Line %d: %s\n|a.a2l|3|Keyword 'MOD_COMMON' expected after /end|3\n");
}

TEST(PhA2l, VerboseTracesEveryBlock) {
    const Parsed parsed = parseText(
        "/begin PROJECT P \"\" /begin HEADER \"h\" /end HEADER /begin MODULE M \"\" /begin A2ML "
        "/end A2ML "
        "/begin MOD_PAR \"p\" /end MOD_PAR /begin UNIT u \"\" \"\" DERIVED /end UNIT /begin "
        "RECORD_LAYOUT "
        "r /end RECORD_LAYOUT /begin COMPU_METHOD c \"\" IDENTICAL \"\" \"\" /end COMPU_METHOD "
        "/begin "
        "COMPU_TAB t \"\" TAB_INTP 0 /end COMPU_TAB /begin COMPU_VTAB v \"\" TAB_VERB 0 /end "
        "COMPU_VTAB "
        "/begin COMPU_VTAB_RANGE w \"\" 0 /end COMPU_VTAB_RANGE /begin MEASUREMENT m \"\" UBYTE c "
        "0 0 0 0 "
        "/end MEASUREMENT /begin CHARACTERISTIC k \"\" VALUE 0 r 0 c 0 0 /end CHARACTERISTIC "
        "/begin "
        "GROUP g \"\" /end GROUP /begin FUNCTION f \"\" /end FUNCTION /begin FRAME a \"\" 0 0 /end "
        "FRAME "
        "/begin USER_RIGHTS l /end USER_RIGHTS /begin IF_DATA Z /end IF_DATA /end MODULE /end "
        "PROJECT",
        {.verbose = true});
    EXPECT_EQ(parsed.console,
              "-: Parse PROJECT 'P'\n-: Parse HEADER 'h'\n-: Parse MODULE 'M'\n-:   Parse A2ML \n"
              "-:   Parse MOD_PAR 'p'\n-: Parse UNIT 'u'\n-: Parse RECORD_LAYOUT\n"
              "-: Parse COMPU_METHOD 'c'\n-: Parse COMPU_TAB 't'\n-: Parse COMPU_VTAB 'v'\n"
              "-: Parse COMPU_VTAB_RANGE 'w'\n-: Parse MEASUREMENT 'm'\n"
              "-: Parse CHARACTERISTIC 'k'\n-: Parse GROUP 'g'\n-: Parse FUNCTION 'f'\n"
              "-: Parse FRAME 'a'\n-: Parse USER_RIGHTS\n-:   Parse unknown IF_DATA 'Z'\n");
}

TEST(PhA2l, AUnitIsTracedBeforeItsDisplayTextIsJudged) {
    EXPECT_EQ(parseModule("/begin UNIT u \"\" 5", {.verbose = true}).console,
              "-: Parse PROJECT 'P'\n-: Parse MODULE 'Ecu'\n-: Parse UNIT 'u'\n"
              "-: Error (a.a2l:1): String expected\n");
}

TEST(PhA2l, PrintTokensTracesOneLineEach) {
    const TempDir directory;
    const std::string name = directory.file("t.a2l");
    std::ofstream(name, std::ios::binary)
        << "ASAP2_VERSION 1 -0x10 1.5 \"a\" name $ 10x3 /end // cut off";
    CollectingConsole console;
    EXPECT_EQ(PhA2l(console, name).print_tokens(), 0);
    EXPECT_EQ(
        console.out,
        "-: print_tokens ()\n-: [ASAP2_VERSION]\n-: 1\n-: -16\n-: 1.500000\n-: \"a\"\n-: 'name'\n"
        "-: t=36\n-: t=-1\n-: 'x3'\n-: [/end]\n"
        "-: Error (" +
            name + ":1): Error: Unexpected EOF in Comment (Line 1)\n-: t=305\n-: EOF\n");
}

TEST(PhA2l, PrintTokensTracesTheEnd) {
    const TempDir directory;
    const std::string name = directory.file("t.a2l");
    std::ofstream(name, std::ios::binary) << "2 ";
    CollectingConsole console;
    EXPECT_EQ(PhA2l(console, name).print_tokens(), 0);
    EXPECT_EQ(console.out, "-: print_tokens ()\n-: 2\n-: EOF\n");
}

TEST(PhA2l, ParsesAgainFromTheStart) {
    CollectingConsole console;
    PhA2l reader(console, "a.a2l");
    const std::string text = moduleText("\n/begin MEASUREMENT m \"\" BYTE");
    for (int i = 0; i < 2; ++i) {
        PhRoot root;
        MemoryInputFile input(text);
        EXPECT_EQ(reader.parse(root, input), -1);
        EXPECT_EQ(reader.errorCount(), 1);
    }
    EXPECT_EQ(console.out,
              "-: Error (a.a2l:2): Unexpected token 'BYTE' found\n"
              "-: Error (a.a2l:2): Unexpected token 'BYTE' found\n");
}

TEST(PhA2l, AParseThatCannotStartLeavesNothingOfTheLastOne) {
    CollectingConsole console;
    PhA2l reader(console, "/nowhere/at/all.a2l");
    for (const int status : {-2, -1}) {
        PhRoot root;
        const std::string text = moduleText(
            "\n/begin MOD_COMMON \"\" BYTE_ORDER MSB_LAST /end MOD_COMMON\n/begin MEASUREMENT 5");
        MemoryInputFile input(text);
        EXPECT_EQ(reader.parse(root, input), -1);
        EXPECT_EQ(reader.lineNumber(), 3);
        EXPECT_EQ(reader.errorCount(), 1);
        EXPECT_EQ(reader.moduleByteOrder(), PhByteOrder::LittleEndian);
        EXPECT_EQ(reader.parse(root), status);
        EXPECT_EQ(reader.lineNumber(), 1);
        EXPECT_EQ(reader.errorCount(), 0);
        EXPECT_EQ(reader.moduleByteOrder(), PhByteOrder::Undefined);
        reader.setFileName(std::nullopt);
    }
}

TEST(PhA2l, AnErrorBehindAMeasurementCounts) {
    CollectingConsole console;
    PhA2l reader(console, "a.a2l");
    PhRoot root;
    const std::string text =
        moduleText("/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 /end MEASUREMENT /*");
    MemoryInputFile input(text);
    EXPECT_EQ(reader.parse(root, input), -1);
    EXPECT_EQ(reader.errorCount(), 1);
    EXPECT_EQ(root.documents.at(0).documents.at(0).signals.count(), 1U);
}

TEST(PhA2l, TokensCanBePrintedAfterAFailedParse) {
    const TempDir directory;
    const std::string name = directory.file("t.a2l");
    std::ofstream(name, std::ios::binary) << "5";
    CollectingConsole console;
    PhA2l reader(console, name);
    PhRoot root;
    EXPECT_EQ(reader.parse(root), -1);
    console.out.clear();
    EXPECT_EQ(reader.print_tokens(), 0);
    EXPECT_EQ(console.out, "-: print_tokens ()\n-: 5\n-: EOF\n");
}

TEST(PhA2l, AByteOrderOutlivesItsModuleButNotTheParse) {
    CollectingConsole console;
    PhA2l reader(console, "a.a2l");
    PhRoot root;
    MemoryInputFile first(
        "/begin PROJECT P \"\" /begin MODULE A \"\" /begin MOD_COMMON \"\" BYTE_ORDER MSB_LAST "
        "/end "
        "MOD_COMMON /end MODULE /begin MODULE B \"\" /begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 "
        "/end "
        "MEASUREMENT /end MODULE /end PROJECT");
    EXPECT_EQ(reader.parse(root, first), 0);
    EXPECT_NE(dump(root).find("byteOrder=LittleEndian"), std::string::npos);
    MemoryInputFile second("ASAP2_VERSION 1 60");
    EXPECT_EQ(reader.parse(root, second), 0);
    EXPECT_EQ(reader.moduleByteOrder(), PhByteOrder::Undefined);
}

}  // namespace
}  // namespace quillmark
