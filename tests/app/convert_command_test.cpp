#include "app/convert_command.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <gtest/gtest.h>

#include "support/collecting_console.h"
#include "support/system.h"
#include "support/temp_dir.h"
#include "support/temporary_path.h"

namespace quillmark {
namespace {

TEST(ZpkiNameFor, ReplacesTheSuffix) {
    EXPECT_EQ(zpkiNameFor("station.cfginclude"), "station.zpki");
    EXPECT_EQ(zpkiNameFor("a.b.c"), "a.b.zpki");
    EXPECT_EQ(zpkiNameFor("a..c"), "a..zpki");
    EXPECT_EQ(zpkiNameFor(".hidden"), ".zpki");
}

TEST(ZpkiNameFor, KeepsTheDirectories) {
    EXPECT_EQ(zpkiNameFor("out/station.cfginclude"), "out/station.zpki");
    EXPECT_EQ(zpkiNameFor("/v1.2/./st.x"), "/v1.2/./st.zpki");
}

TEST(ZpkiNameFor, NoSuffixNoName) {
    EXPECT_EQ(zpkiNameFor(""), "");
    EXPECT_EQ(zpkiNameFor("station"), "");
    EXPECT_EQ(zpkiNameFor("station."), "");
    EXPECT_EQ(zpkiNameFor("a.b."), "");
    EXPECT_EQ(zpkiNameFor("v1.2/station"), "");
    EXPECT_EQ(zpkiNameFor("v1.2/"), "");
    EXPECT_EQ(zpkiNameFor(".."), "");
}

TEST(ZpkiNameFor, BytesTravelUnchanged) {
    EXPECT_EQ(zpkiNameFor("\xff\xe4 x/st\xfc.y"), "\xff\xe4 x/st\xfc.zpki");
}

TEST(ZpkiNameFor, ABackslashPartsDirectoriesOnWindowsOnly) {
    EXPECT_EQ(zpkiNameFor("v1.2\\station"), kIsWindows ? "" : "v1.zpki");
    EXPECT_EQ(zpkiNameFor("out\\station.x"), "out\\station.zpki");
    EXPECT_EQ(zpkiNameFor("v1.2\\st.x/y"), "");
}

TEST(ZpkiNameFor, HalfACharacterIsNoBackslash) {
    // In code page 932 the first two bytes behind the dot are one character.
    const bool isOneCharacter = !kIsWindows || codePage() == 932;
    EXPECT_EQ(zpkiNameFor("v1.\x95\x5cx"), isOneCharacter ? "v1.zpki" : "");
}

// --- convertCommand ---------------------------------------------------------------------------

constexpr std::string_view kDescription =
    "/begin PROJECT P \"\" /begin MODULE M \"\"\n"
    "/begin MOD_PAR \"\" EPK \"V1\" ADDR_EPK 1 /end MOD_PAR\n"
    "/begin IF_DATA XCP /end IF_DATA\n"
    "/begin MEASUREMENT s \"\" UBYTE C 0 0 0 1 /end MEASUREMENT\n"
    "/begin COMPU_METHOD C \"\" LINEAR \"%1\" \"V\" COEFFS_LINEAR 2 3 /end COMPU_METHOD\n"
    "/end MODULE /end PROJECT\n";
constexpr std::string_view kTopVersion = "Latest sigTrak version: 2023.4.2\n";

/// A directory with a version file, a description and an older output file.
class ConvertCommand : public testing::Test {
  protected:
    ConvertCommand() {
        std::filesystem::current_path(directory_.path());
        writeFile("sigtrakVersions.xml", "<v><TopVersion>2023.4.2</TopVersion></v>");
        writeFile("in.a2l", kDescription);
        writeFile("out.x", "kept");
        request_.inputFile = "in.a2l";
        request_.outputFile = "out.x";
    }
    ~ConvertCommand() override {
        std::error_code ignored;
        std::filesystem::current_path(oldDirectory_, ignored);
    }

    std::filesystem::path oldDirectory_ = std::filesystem::current_path();
    TempDir directory_;
    ConvertRequest request_;
    Description description_;
    CollectingConsole console_;
};

TEST_F(ConvertCommand, WritesTheDocument) {
    request_.indent = true;
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Done);
    EXPECT_EQ(console_.out, kTopVersion);
    EXPECT_EQ(console_.err, "");
    const std::string text = readFile("out.x");
    EXPECT_TRUE(text.starts_with("#in.a2l created by: VELTRA Quillmark 1.43\r\n"));
    // The conversion comes behind the signal that names it.
    EXPECT_NE(text.find("                        <signal>\r\n"
                        "                            name=s\r\n"
                        "                            unit=V\r\n"
                        "                            compumethod=C\r\n"),
              std::string::npos);
}

TEST_F(ConvertCommand, InputThatCannotBeOpenedLeavesTheOutputAlone) {
    request_.inputFile = "missing.a2l";
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Failed);
    EXPECT_EQ(console_.out, "Error reading file.\n");
    EXPECT_EQ(console_.err, "");
    EXPECT_EQ(readFile("out.x"), "kept");
}

TEST_F(ConvertCommand, MistakeInTheInputLeavesTheOutputAlone) {
    writeFile("in.a2l", "ASAP2_VERSION 1 60\nmistake");
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Failed);
    EXPECT_EQ(console_.out,
              "-: Error (in.a2l:2): Unexpected token 'token=303' found\nError reading file.\n");
    EXPECT_EQ(readFile("out.x"), "kept");
}

TEST_F(ConvertCommand, OutputThatCannotBeOpenedIsReported) {
    request_.outputFile = "no/such/out.x";
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Failed);
    EXPECT_EQ(console_.out,
              std::string(kTopVersion) + "ERROR: Cannot open output file: no/such/out.x\n");
}

TEST_F(ConvertCommand, RefusedLibraryLeavesTheOutputAlone) {
    request_.library = "otherLib=1.5.4";
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Refused);
    EXPECT_EQ(console_.err, "Library software name not recognized.\n");
    EXPECT_EQ(readFile("out.x"), "kept");
}

TEST_F(ConvertCommand, WithoutVersionFileTheOutputIsLeftAlone) {
    std::filesystem::remove("sigtrakVersions.xml");
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Failed);
    EXPECT_EQ(console_.out, "Error: Configuration file not found!\nNo output file generated.\n");
    EXPECT_EQ(readFile("out.x"), "kept");
}

TEST_F(ConvertCommand, ModuleWithoutVersionLeavesTheOutputAlone) {
    writeFile("in.a2l",
              "/begin PROJECT P \"\" /begin MODULE M \"\" /begin IF_DATA XCP /end IF_DATA\n"
              "/end MODULE /end PROJECT\n");
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Failed);
    EXPECT_EQ(console_.out, std::string(kTopVersion) +
                                "ERROR: missing version\nERROR: missing epk address\n"
                                "No output file generated.\n");
    EXPECT_EQ(readFile("out.x"), "kept");
}

TEST_F(ConvertCommand, PackageTakesTheIncludeFileAway) {
    const TemporaryPath temporaryPath;
    request_.zpkiFile = "out.zpki";
    request_.outputFile = "new.x";
    EXPECT_EQ(convertCommand(request_, description_, console_), ConversionOutcome::Done);
    EXPECT_TRUE(std::filesystem::exists("out.zpki"));
    EXPECT_FALSE(std::filesystem::exists("new.x"));
}

}  // namespace
}  // namespace quillmark
