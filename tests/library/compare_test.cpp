#include "quillmark/compare.h"

#include <string>

#include <gtest/gtest.h>

#include "library/example.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string withCanId(const std::string& id) {
    return "ASAP2_VERSION 1 60 /begin PROJECT P \"\" /begin MODULE M \"\" /begin IF_DATA XCP\n"
           "/begin XCP_ON_CAN 0x100 CAN_ID_MASTER " +
           id +
           " CAN_ID_SLAVE 2 BAUDRATE 500000 /end XCP_ON_CAN\n/end IF_DATA /end MODULE "
           "/end PROJECT\n";
}

std::string shown(const CompareResult& result) {
    std::string text;
    for (const Difference& difference : result.differences()) {
        text += std::string(textOf(difference.level())) + ": " + std::string(difference.what()) +
                ": " + std::string(difference.oldValue()) + " -> " +
                std::string(difference.newValue()) + "\n";
    }
    return text;
}

TEST(Compare, DifferencesAreData) {
    const CompareResult result = compare(described(withCanId("1")), described(withCanId("3")));
    EXPECT_TRUE(result.isComparable());
    ASSERT_EQ(result.differences().size(), 1U) << shown(result);
    const Difference difference = result.differences()[0];
    EXPECT_EQ(difference.level(), DifferenceLevel::Error);
    EXPECT_EQ(difference.oldValue(), "1");
    EXPECT_EQ(difference.newValue(), "3");
    EXPECT_EQ(difference.text(), std::string(difference.what()) + " values are not equal");
    EXPECT_EQ(difference.consoleText(), "Error: " + std::string(difference.text()) + "\n");
}

TEST(Compare, NotesTellWhatIsCompared) {
    std::string notes;
    const Description description = described(withCanId("1"));
    for (const Finding& finding :
         compare(description, description, CompareOptions().setVerbose(true)).findings()) {
        EXPECT_EQ(finding.severity(), Severity::Note);
        notes += finding.consoleText();
    }
    EXPECT_TRUE(notes.starts_with("comparing modules: \n    P:M in file in.a2l\n")) << notes;
    EXPECT_NE(notes.find(" = 1 # 1\n"), std::string::npos) << notes;
}

TEST(Compare, WhatCannotBeCompared) {
    const Description good = described(withCanId("1"));
    const CompareResult result = compare(good, described("mistake"));
    EXPECT_FALSE(result.isComparable());
    ASSERT_EQ(result.differences().size(), 1U);
    EXPECT_EQ(result.differences()[0].level(), DifferenceLevel::CannotCompare);
    EXPECT_EQ(result.differences()[0].consoleText(),
              "Cannot compare modules: Reading of file 2 failed: 'in.a2l'\n");
}

TEST(Compare, NamesAreWarnings) {
    std::string other = withCanId("1");
    other.replace(other.find("PROJECT P"), 9, "PROJECT Q");
    EXPECT_EQ(shown(compare(described(withCanId("1")), described(other))),
              "warning: project name: P -> Q\n");
}

class CompareFiles : public testing::Test {
  protected:
    TempDir directory_;
    std::string old_ = directory_.file("old.a2l");
    std::string new_ = directory_.file("new.a2l");
};

TEST_F(CompareFiles, ReadsBoth) {
    writeFile(old_, withCanId("1"));
    writeFile(new_, withCanId("3"));
    const CompareResult result = compareFiles(old_, new_);
    EXPECT_TRUE(result.isComparable());
    EXPECT_EQ(result.differences().size(), 1U);
    EXPECT_EQ(result.findings().size(), 4U);
}

TEST_F(CompareFiles, TheNewOneIsNotReadWithoutTheOldOne) {
    writeFile(new_, "mistake");
    const CompareResult missing = compareFiles(old_, new_);
    EXPECT_FALSE(missing.isComparable());
    EXPECT_EQ(missing.differences()[0].text(), "Reading of file 1 failed: '" + old_ + "'");
    EXPECT_TRUE(missing.findings().empty());
    writeFile(old_, withCanId("1"));
    const CompareResult broken = compareFiles(old_, new_);
    ASSERT_EQ(broken.findings().size(), 1U);
    EXPECT_EQ(broken.findings()[0].file(), new_);
    EXPECT_EQ(broken.differences()[0].text(), "Reading of file 2 failed: '" + new_ + "'");
}

}  // namespace
}  // namespace quillmark
