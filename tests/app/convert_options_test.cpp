#include "app/convert_options.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/collecting_console.h"

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ConvertOptions : public testing::Test {
  protected:
    bool parse(const std::vector<const char*>& arguments) {
        request = {};
        console.out.clear();
        return parseConvertOptions(arguments, request, console);
    }

    void expectRefused(const std::vector<const char*>& arguments, const std::string& message) {
        EXPECT_FALSE(parse(arguments));
        EXPECT_EQ(console.out, message + "\n");
        EXPECT_EQ(console.err, "");
    }

    ConvertRequest request;
    CollectingConsole console;
};

TEST_F(ConvertOptions, TwoFilesAndNothingElse) {
    ASSERT_TRUE(parse({"in.a2l", "out.cfginclude"}));
    EXPECT_EQ(request.inputFile, "in.a2l");
    EXPECT_EQ(request.outputFile, "out.cfginclude");
    EXPECT_EQ(request.stationName, "");
    EXPECT_EQ(request.zpkiFile, "");
    EXPECT_EQ(request.namePrefix, "");
    EXPECT_EQ(request.library, "");
    EXPECT_FALSE(request.compress);
    EXPECT_FALSE(request.indent);
    EXPECT_FALSE(request.epkFilePrefix);
    EXPECT_THAT(request.userFiles, IsEmpty());
    EXPECT_EQ(console.out, "");
}

TEST_F(ConvertOptions, EveryOptionInAnyPlace) {
    ASSERT_TRUE(
        parse({"-n", "ECU", "-z", "in.a2l", "-p", "P_", "-l", "sigTrak=1.5.4", "-epk-file-prefix",
               "out.x", "-zpki", "pack.zpki", "-userfiles", "u1,u2", "-i"}));
    EXPECT_EQ(request.inputFile, "in.a2l");
    EXPECT_EQ(request.outputFile, "out.x");
    EXPECT_EQ(request.stationName, "ECU");
    EXPECT_EQ(request.zpkiFile, "pack.zpki");
    EXPECT_EQ(request.namePrefix, "P_");
    EXPECT_EQ(request.library, "sigTrak=1.5.4");
    EXPECT_TRUE(request.compress);
    EXPECT_TRUE(request.indent);
    EXPECT_TRUE(request.epkFilePrefix);
    EXPECT_THAT(request.userFiles, ElementsAre("u1", "u2"));
    EXPECT_EQ(console.out, "");
}

TEST_F(ConvertOptions, FilesAreMissing) {
    expectRefused({}, "Error: no valid input file specified.");
    expectRefused({"-z"}, "Error: no valid input file specified.");
    expectRefused({"in"}, "Error: no valid output file specified.");
    expectRefused({"in", ""}, "Error: no valid output file specified.");
}

TEST_F(ConvertOptions, AThirdFileIsIgnored) {
    ASSERT_TRUE(parse({"in", "out", "third"}));
    EXPECT_EQ(request.inputFile, "in");
    EXPECT_EQ(request.outputFile, "out");
    EXPECT_EQ(console.out, "");
}

TEST_F(ConvertOptions, AnUnknownWordIsAFile) {
    ASSERT_TRUE(parse({"-x", "a", "b"}));
    EXPECT_EQ(request.inputFile, "-x");
    EXPECT_EQ(request.outputFile, "a");
    ASSERT_TRUE(parse({"-Z", "-zz"}));
    EXPECT_EQ(request.inputFile, "-Z");
    EXPECT_EQ(request.outputFile, "-zz");
}

TEST_F(ConvertOptions, AnEmptyArgumentLeavesItsPlaceToTheNext) {
    ASSERT_TRUE(parse({"", "in", "", "out"}));
    EXPECT_EQ(request.inputFile, "in");
    EXPECT_EQ(request.outputFile, "out");
}

TEST_F(ConvertOptions, TheLastLibraryWins) {
    ASSERT_TRUE(parse({"in", "out", "-l", "sigTrak=1.5.4", "-l", "sigTrak=1.6.0"}));
    EXPECT_EQ(request.library, "sigTrak=1.6.0");
    ASSERT_TRUE(parse({"in", "out", "-l", "sigTrak=1.5.4", "-l", ""}));
    EXPECT_EQ(request.library, "");
    EXPECT_EQ(console.out, "");
}

TEST_F(ConvertOptions, AValueIsMissing) {
    expectRefused({"in", "out", "-n"}, "Error: Option -n has to be followed by another argument.");
    expectRefused({"in", "out", "-p"}, "Error: Option -p has to be followed by another argument.");
    expectRefused({"in", "out", "-l"}, "Error: Option -l has to be followed by another argument.");
    expectRefused({"in", "out", "-zpki"},
                  "Error: Option -zpki has to followed by another argument.");
    expectRefused({"in", "out", "-userfiles"},
                  "Error: Option -userfiles has to be followed by another argument.");
    expectRefused({"in", "out", "-l", "x", "-l"},
                  "Error: Option -l has to be followed by another argument.");
}

TEST_F(ConvertOptions, AValueIsGivenTwice) {
    expectRefused({"-n", "a", "-n", "b"}, "Error: Option -n cannot be used more than once.");
    expectRefused({"-p", "a", "-p", "b"}, "Error: Option -p cannot be used more than once.");
    expectRefused({"-zpki", "a", "-zpki", "b"},
                  "Error: Option -zpki cannot be used more than once");
    expectRefused({"-userfiles", "a", "-userfiles", "b"},
                  "Error: Option -userfiles cannot be used more than once");
}

TEST_F(ConvertOptions, RepetitionIsSeenBeforeAMissingValue) {
    expectRefused({"-n", "a", "-n"}, "Error: Option -n cannot be used more than once.");
}

TEST_F(ConvertOptions, AnEmptyValueDoesNotCount) {
    ASSERT_TRUE(parse({"in", "out", "-n", "", "-n", "b", "-p", "", "-p", "c", "-zpki", "", "-zpki",
                       "d", "-userfiles", "", "-userfiles", "e"}));
    EXPECT_EQ(request.stationName, "b");
    EXPECT_EQ(request.namePrefix, "c");
    EXPECT_EQ(request.zpkiFile, "d");
    EXPECT_THAT(request.userFiles, ElementsAre("e"));
}

TEST_F(ConvertOptions, TheNextArgumentIsTheValueWhateverItLooksLike) {
    ASSERT_TRUE(parse({"in", "out", "-n", "-z"}));
    EXPECT_EQ(request.stationName, "-z");
    EXPECT_FALSE(request.compress);
    ASSERT_TRUE(parse({"in", "out", "-n", "-n", "-p", "-n"}));
    EXPECT_EQ(request.stationName, "-n");
    EXPECT_EQ(request.namePrefix, "-n");
}

TEST_F(ConvertOptions, ARepeatedFlagWarnsAndGoesOn) {
    const std::string z = "Warning: Using option -z more than once has no effect.\n";
    const std::string i = "Warning: Using option -i more than once has no effect.\n";
    const std::string epk =
        "Warning: Using option -epk-file-prefix more than once has no effect.\n";
    ASSERT_TRUE(parse({"in", "out", "-z", "-z"}));
    EXPECT_TRUE(request.compress);
    EXPECT_EQ(console.out, z);
    ASSERT_TRUE(parse({"-i", "-z", "-z", "-i", "-z", "in", "out"}));
    EXPECT_TRUE(request.indent);
    EXPECT_EQ(console.out, z + i + z);
    ASSERT_TRUE(parse({"in", "out.x", "-epk-file-prefix", "-epk-file-prefix", "-userfiles", "u"}));
    EXPECT_TRUE(request.epkFilePrefix);
    EXPECT_EQ(console.out, epk);
}

TEST_F(ConvertOptions, AWarningComesBeforeTheMistakeBehindIt) {
    EXPECT_FALSE(parse({"-z", "-z", "-n"}));
    EXPECT_EQ(console.out,
              "Warning: Using option -z more than once has no effect.\n"
              "Error: Option -n has to be followed by another argument.\n");
}

TEST_F(ConvertOptions, TheFirstMistakeEndsTheReading) {
    EXPECT_FALSE(parse({"-n", "a", "-n", "b", "-z", "-z"}));
    EXPECT_EQ(console.out, "Error: Option -n cannot be used more than once.\n");
}

TEST_F(ConvertOptions, UserFilesNameThePackage) {
    ASSERT_TRUE(parse({"in", "out/station.cfginclude", "-userfiles", "notes.txt"}));
    EXPECT_EQ(request.zpkiFile, "out/station.zpki");
    ASSERT_TRUE(parse({"in", "out", "-userfiles", "notes.txt", "-zpki", "mine"}));
    EXPECT_EQ(request.zpkiFile, "mine");
    ASSERT_TRUE(parse({"in", "out", "-zpki", "mine"}));
    EXPECT_EQ(request.zpkiFile, "mine");
    EXPECT_THAT(request.userFiles, IsEmpty());
}

TEST_F(ConvertOptions, UserFilesNeedANameForThePackage) {
    expectRefused({"in", "out", "-userfiles", "a"},
                  "Error: can not create zpki without proper file name");
    expectRefused({"in", "out", "-userfiles", "a", "-epk-file-prefix"},
                  "Error: can not create zpki without proper file name");
}

TEST_F(ConvertOptions, TheEpkPrefixNeedsUserFiles) {
    const std::string message =
        "Error: EPK prefix for user files can only be used with userfiles option";
    expectRefused({"in", "out.x", "-epk-file-prefix"}, message);
    expectRefused({"in", "out.x", "-epk-file-prefix", "-userfiles", ""}, message);
    expectRefused({"in", "out.x", "-epk-file-prefix", "-zpki", "mine"}, message);
}

TEST_F(ConvertOptions, TheFilesAreCheckedFirst) {
    expectRefused({"in", "-epk-file-prefix"}, "Error: no valid output file specified.");
    expectRefused({"-userfiles", "a"}, "Error: no valid input file specified.");
}

TEST(SplitUserFiles, KeepsEmptyItemsButTheLast) {
    EXPECT_THAT(splitUserFiles(""), IsEmpty());
    EXPECT_THAT(splitUserFiles("a"), ElementsAre("a"));
    EXPECT_THAT(splitUserFiles("a,b"), ElementsAre("a", "b"));
    EXPECT_THAT(splitUserFiles("a,,b,"), ElementsAre("a", "", "b"));
    EXPECT_THAT(splitUserFiles(",a"), ElementsAre("", "a"));
    EXPECT_THAT(splitUserFiles(","), ElementsAre(""));
    EXPECT_THAT(splitUserFiles("a,,"), ElementsAre("a", ""));
    EXPECT_THAT(splitUserFiles(" a , b "), ElementsAre(" a ", " b "));
}

}  // namespace
}  // namespace quillmark
