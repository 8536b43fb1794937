#include "app/command_line.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/usage.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

using testing::ElementsAre;

const std::string kBanner = "VELTRA Quillmark 1.43\n";
const std::string kHyphens = std::string(82, '-') + "\n\n";
const std::string kDone = "\nDone.\n" + kHyphens;
const std::string kError = "\nError.\n" + kHyphens;

/// What the fakes were asked, and what they are to answer. Drivers are plain functions, so this
/// cannot live in the fixture.
struct Fake {
    int calls = 0;
    ConvertRequest convertRequest;
    ConversionOutcome convertOutcome = ConversionOutcome::Done;

    std::vector<std::string> decompressArguments;
    int decompressStatus = 0;

    CompareRequest compareRequest;
    bool comparable = true;
};
Fake* fake = nullptr;

const CommandDrivers kFakeDrivers = {
    [](const ConvertRequest& request, Console& console) {
        ++fake->calls;
        fake->convertRequest = request;
        console.printLine("converting");
        return fake->convertOutcome;
    },
    [](int argumentCount, const char* const* arguments, Console& console, void (*usage)(Console&)) {
        ++fake->calls;
        fake->decompressArguments.assign(arguments, arguments + argumentCount);
        console.printLine("decompressing");
        usage(console);
        return fake->decompressStatus;
    },
    [](const CompareRequest& request, Console& console) {
        ++fake->calls;
        fake->compareRequest = request;
        console.printLine("comparing");
        return fake->comparable;
    },
};

class CommandLine : public testing::Test {
  protected:
    CommandLine() {
        fake = &answers;
        CollectingConsole usageConsole;
        printUsage(usageConsole);
        usage = usageConsole.out;
    }
    ~CommandLine() override { fake = nullptr; }

    int run(std::vector<const char*> arguments) {
        console.out.clear();
        arguments.insert(arguments.begin(), "quillmark");
        return runCommandLine(arguments, kFakeDrivers, console);
    }

    Fake answers;
    std::string usage;
    CollectingConsole console;
};

TEST_F(CommandLine, NoCommand) {
    EXPECT_EQ(run({}), 1);
    EXPECT_EQ(console.out, kBanner + usage);
    console.out.clear();
    EXPECT_EQ(runCommandLine({}, kFakeDrivers, console), 1);
    EXPECT_EQ(console.out, kBanner + usage);
    EXPECT_EQ(answers.calls, 0);
}

TEST_F(CommandLine, UnknownCommand) {
    for (const char* word : {"CONVERT", "Convert", "conver", "convert ", "", "-v", "--help"}) {
        EXPECT_EQ(run({word, "a", "b"}), 1) << word;
        EXPECT_EQ(console.out, kBanner + usage) << word;
    }
    EXPECT_EQ(answers.calls, 0);
}

TEST_F(CommandLine, ConvertHandsOverTheWholeRequest) {
    EXPECT_EQ(run({"convert", "in.a2l", "out.cfginclude", "-n", "ECU", "-p", "P.", "-z", "-i", "-l",
                   "sigTrak=1.5.4", "-userfiles", "a,,b,", "-epk-file-prefix"}),
              0);
    EXPECT_EQ(console.out, kBanner + "converting\n" + kDone);
    const ConvertRequest& request = answers.convertRequest;
    EXPECT_EQ(request.inputFile, "in.a2l");
    EXPECT_EQ(request.stationName, "ECU");
    EXPECT_EQ(request.zpkiFile, "out.zpki");
    EXPECT_EQ(request.namePrefix, "P.");
    EXPECT_EQ(request.outputFile, "out.cfginclude");
    EXPECT_TRUE(request.compress);
    EXPECT_TRUE(request.indent);
    EXPECT_EQ(request.library, "sigTrak=1.5.4");
    EXPECT_TRUE(request.epkFilePrefix);
    EXPECT_THAT(request.userFiles, ElementsAre("a", "", "b"));
}

TEST_F(CommandLine, ConvertFails) {
    answers.convertOutcome = ConversionOutcome::Failed;
    EXPECT_EQ(run({"convert", "a", "b"}), 1);
    EXPECT_EQ(console.out, kBanner + "converting\n" + kError);
}

TEST_F(CommandLine, ConvertRefusedEndsWithoutFooter) {
    answers.convertOutcome = ConversionOutcome::Refused;
    EXPECT_EQ(run({"convert", "a", "b"}), 1);
    EXPECT_EQ(console.out, kBanner + "converting\n");
}

TEST_F(CommandLine, ConvertWithAMistake) {
    EXPECT_EQ(run({"convert", "a"}), 1);
    EXPECT_EQ(console.out, kBanner + "Error: no valid output file specified.\n" + usage + kError);
    EXPECT_EQ(answers.calls, 0);
}

TEST_F(CommandLine, ConvertWithAWarningCanSucceed) {
    EXPECT_EQ(run({"convert", "a", "b", "-z", "-z"}), 0);
    EXPECT_EQ(console.out, kBanner + "Warning: Using option -z more than once has no effect.\n" +
                               "converting\n" + kDone);
}

TEST_F(CommandLine, DecompressGetsTheWholeVector) {
    EXPECT_EQ(run({"decompress", "a", "b", "c"}), 0);
    EXPECT_THAT(answers.decompressArguments, ElementsAre("quillmark", "decompress", "a", "b", "c"));
    EXPECT_EQ(console.out, kBanner + "decompressing\n" + usage + kDone);
}

TEST_F(CommandLine, DecompressStatusIsHandedOn) {
    for (const int status : {1, -1}) {
        answers.decompressStatus = status;
        EXPECT_EQ(run({"decompress"}), status);
        EXPECT_EQ(console.out, kBanner + "decompressing\n" + usage + kError);
    }
}

TEST_F(CommandLine, CompareHandsOverTheWholeRequest) {
    EXPECT_EQ(run({"compare", "old", "new"}), 0);
    EXPECT_FALSE(answers.compareRequest.verbose);
    EXPECT_EQ(answers.compareRequest.oldFile, "old");
    EXPECT_EQ(answers.compareRequest.newFile, "new");
    EXPECT_EQ(console.out, kBanner + "comparing\n" + kDone);
    EXPECT_EQ(run({"compare", "-v", "old", "new"}), 0);
    EXPECT_TRUE(answers.compareRequest.verbose);
}

TEST_F(CommandLine, CompareFails) {
    answers.comparable = false;
    EXPECT_EQ(run({"compare", "old", "new"}), 1);
    EXPECT_EQ(console.out, kBanner + "comparing\n" + kError);
}

TEST_F(CommandLine, CompareWithAMistake) {
    EXPECT_EQ(run({"compare", "a", "b", "-v", "-v"}), 1);
    EXPECT_EQ(console.out,
              kBanner + "Warning: Option -v cannot be used more than once.\n" + usage + kError);
    EXPECT_EQ(run({"compare", "a"}), 1);
    EXPECT_EQ(console.out, kBanner + "Error: no valid file 2 specified.\n" + usage + kError);
    EXPECT_EQ(answers.calls, 0);
}

}  // namespace
}  // namespace quillmark
