#include "quillmark/description.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "library/example.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string shown(const Finding& finding) {
    return std::string(textOf(finding.severity())) + " " + std::string(finding.file()) + ":" +
           std::to_string(finding.line()) + ":" + std::to_string(finding.column()) + " " +
           std::string(finding.text()) + "|" + std::string(finding.consoleText());
}

TEST(Description, IsReadFromMemory) {
    const Description description = described(moduleWith(""));
    EXPECT_EQ(description.status(), ReadStatus::Complete);
    EXPECT_TRUE(description.reachedEnd());
    EXPECT_EQ(description.name(), "in.a2l");
    EXPECT_TRUE(description.findings().empty());
    EXPECT_FALSE(description.hasUtf8Mark());
    ASSERT_EQ(description.projects().size(), 1U);
    EXPECT_EQ(firstModule(description).name(), "M");
}

TEST(Description, IsReadFromAFile) {
    const TempDir directory;
    writeFile(directory.file("a.a2l"), "\xEF\xBB\xBF" + moduleWith(""));
    const Description description = Description::readFile(directory.file("a.a2l"));
    EXPECT_TRUE(description.isComplete());
    EXPECT_EQ(description.name(), directory.file("a.a2l"));
    EXPECT_TRUE(description.hasUtf8Mark());
}

TEST(Description, IsReadFromAStreamInSmallPieces) {
    const std::string text =
        moduleWith("/begin MEASUREMENT s \"\" UBYTE C 0 0 0 1 /end MEASUREMENT\n");
    std::size_t position = 0;
    const Description description = Description::readStream(
        [&](char* buffer, std::size_t size) {
            const std::size_t count = text.copy(buffer, std::min<std::size_t>(size, 7), position);
            position += count;
            return count;
        },
        "pipe");
    EXPECT_TRUE(description.isComplete());
    EXPECT_EQ(firstModule(description).signals().size(), 1U);
}

TEST(Description, AMissingFileIsNoFinding) {
    const Description description = Description::readFile("/nowhere/at/all.a2l");
    EXPECT_EQ(description.status(), ReadStatus::NotOpened);
    EXPECT_FALSE(description.reachedEnd());
    EXPECT_TRUE(description.findings().empty());
    EXPECT_TRUE(description.projects().empty());
}

TEST(Description, AnEmptyOneHasNothing) {
    Description description;
    EXPECT_EQ(description.status(), ReadStatus::NotOpened);
    EXPECT_EQ(description.name(), "");
    EXPECT_TRUE(description.findings().empty());
    EXPECT_TRUE(description.projects().empty());
    const Description moved = std::move(description);
    EXPECT_TRUE(moved.projects().empty());
}

TEST(Description, FindingsTellTheirPlace) {
    const Description description =
        described(moduleWith("/begin MEASUREMENT s \"\"\n  UBYTE C 0 0 0 1 ECU_ADDRESS here\n/end "
                             "MEASUREMENT mistake\n"));
    EXPECT_EQ(description.status(), ReadStatus::Failed);
    EXPECT_FALSE(description.reachedEnd());
    ASSERT_EQ(description.findings().size(), 2U);
    EXPECT_EQ(shown(description.findings()[0]),
              "warning in.a2l:5:31 Unexpected token 'token=303' found|"
              "-: Warning (in.a2l:5): Unexpected token 'token=303' found\n");
    EXPECT_EQ(shown(description.findings()[1]),
              "error in.a2l:6:18 Unexpected token 'token=303' found|"
              "-: Error (in.a2l:6): Unexpected token 'token=303' found\n");
    EXPECT_FALSE(description.findings()[0].isForStandardError());
    EXPECT_EQ(firstModule(description).signals().size(), 1U) << "what came before can be walked";
}

// The console cuts its lines; the text of a finding is whole as far as messages go.
TEST(Description, ALongConsoleLineIsCutAsTheProgramCutsIt) {
    const std::string name(600, 'n');
    const Description description = Description::readMemory("mistake", name);
    ASSERT_EQ(description.findings().size(), 1U);
    EXPECT_EQ(description.findings()[0].file(), name);
    EXPECT_EQ(description.findings()[0].consoleText(), "-: " + ("Error (" + name).substr(0, 499));
}

TEST(Description, AHandlerIsToldInsteadOfTheList) {
    std::vector<Finding> told;
    ReadOptions options;
    options.setFindingHandler([&](const Finding& finding) { told.push_back(finding); });
    const Description description = described("mistake", options);
    EXPECT_TRUE(description.findings().empty());
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].severity(), Severity::Error);
}

TEST(Description, FindingsOutliveTheirDescription) {
    Findings findings;
    {
        const Description description = described("mistake");
        findings = description.findings();
    }
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].file(), "in.a2l");
}

TEST(Description, OptionsAreCopied) {
    ReadOptions options;
    options.setKeepSignals(false);
    ReadOptions copy = options;
    copy.setKeepSignals(true).setKeepTexts(false);
    options = copy;
    const Description description = described(
        moduleWith("/begin MEASUREMENT s \"long\" UBYTE C 0 0 0 1 /end MEASUREMENT\n"), options);
    ASSERT_EQ(firstModule(description).signals().size(), 1U);
    EXPECT_EQ(firstModule(description).signals()[0].longIdentifier(), "");
}

TEST(Description, ArraysNeedNotBeKept) {
    const auto characteristic = [](const std::string& name, const std::string& type) {
        return "/begin CHARACTERISTIC " + name + " \"\" " + type +
               " 0x10 R 0 C 0 1 /end CHARACTERISTIC\n";
    };
    const std::string content =
        moduleWith(characteristic("curve", "CURVE") + characteristic("value", "VALUE") +
                   characteristic("map", "MAP") + characteristic("text", "ASCII") +
                   characteristic("block", "VAL_BLK") + characteristic("cube", "CUBE_5") +
                   "/begin MEASUREMENT s \"\" UBYTE C 0 0 0 1 /end MEASUREMENT\n");
    const auto namesOf = [](const Description& description) {
        std::string names;
        for (const Signal& signal : firstModule(description).signals()) {
            names.append(signal.name()).append(" ");
        }
        return names;
    };
    ReadOptions options;
    EXPECT_EQ(namesOf(described(content, options)), "curve value map text block cube s ");
    options.setKeepArrays(false);
    const Description description = described(content, options);
    EXPECT_EQ(namesOf(description), "value text s ");
    EXPECT_EQ(firstModule(description).signals()[0].conversion()->name(), "C");
}

TEST(Description, WhatIsWrongWithArraysIsToldAllTheSame) {
    ReadOptions options;
    options.setKeepArrays(false);
    const Description description = described(
        moduleWith("/begin CHARACTERISTIC c \"\" CURVE x R 0 C 0 1 /end CHARACTERISTIC\n"),
        options);
    ASSERT_EQ(description.findings().size(), 1U);
    EXPECT_EQ(description.findings()[0].text(), "Unexpected token 'token=303' found");
}

TEST(Description, MembersNeedNotBeKept) {
    const std::string group = moduleWith(
        "/begin GROUP g \"\" /begin REF_MEASUREMENT s /end REF_MEASUREMENT /end GROUP\n");
    ReadOptions options;
    EXPECT_EQ(firstModule(described(group, options)).groups()[0].signals().size(), 1U);
    options.setKeepMembers(false);
    const Description description = described(group, options);
    ASSERT_EQ(firstModule(description).groups().size(), 1U);
    EXPECT_TRUE(firstModule(description).groups()[0].signals().empty());
}

TEST(Description, LimitsNeedNotBeKept) {
    const std::string signal =
        moduleWith("/begin MEASUREMENT s \"\" UBYTE C 0 0 1.5 250 /end MEASUREMENT\n");
    ReadOptions options;
    EXPECT_EQ(firstModule(described(signal, options)).signals()[0].lowerLimit().real(), 1.5);
    options.setKeepLimits(false);
    const Description description = described(signal, options);
    EXPECT_FALSE(firstModule(description).signals()[0].lowerLimit().isPresent());
    EXPECT_FALSE(firstModule(description).signals()[0].upperLimit().isPresent());
}

TEST(Description, FormatsNeedNotBeKept) {
    const std::string blocks = moduleWith(
        "/begin MEASUREMENT s \"\" UBYTE C 0 0 0 1 FORMAT \"%5.1\" /end MEASUREMENT\n"
        "/begin COMPU_METHOD C \"\" FORM \"%8.3\" \"\" /begin FORMULA \"X1\" /end FORMULA\n"
        "/end COMPU_METHOD\n");
    ReadOptions options;
    EXPECT_EQ(firstModule(described(blocks, options)).signals()[0].displayFormat(), "%5.1");
    options.setKeepFormats(false);
    const Description description = described(blocks, options);
    ASSERT_TRUE(description.isComplete());
    EXPECT_EQ(firstModule(description).signals()[0].displayFormat(), "");
    EXPECT_EQ(firstModule(description).signals()[0].upperLimit().integer(), 1);
    EXPECT_EQ(firstModule(description).conversions()[0].displayFormat(), "");
    EXPECT_EQ(firstModule(description).conversions()[0].formula(), "");
}

TEST(Description, SignalsNeedNotBeKept) {
    ReadOptions options;
    options.setKeepSignals(false);
    const Description description = described(
        moduleWith("/begin MEASUREMENT s \"\" UBYTE C 0 0 0 1 /end MEASUREMENT\n"), options);
    EXPECT_TRUE(firstModule(description).signals().empty());
    EXPECT_EQ(firstModule(description).protocols().size(), 1U);
}

}  // namespace
}  // namespace quillmark
