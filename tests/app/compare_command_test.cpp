#include "app/compare_command.h"

#include <gtest/gtest.h>

#include "compare/report_text.h"
#include "support/collecting_console.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string module(const std::string& name) {
    return "/begin MODULE " + name + " \"\" /end MODULE ";
}

std::string project(const std::string& name, const std::string& modules) {
    return "ASAP2_VERSION 1 60 /begin PROJECT " + name + " \"\" " + modules + "/end PROJECT\n";
}

class CompareFiles : public testing::Test {
  protected:
    int run() {
        report.clear();
        console.out.clear();
        PhRoot oldRoot;
        PhRoot newRoot;
        return compareFiles(report, false, oldPath, oldRoot, newPath, newRoot, console);
    }
    void write(const std::string& oldText, const std::string& newText) {
        writeFile(oldPath, oldText);
        writeFile(newPath, newText);
    }

    TempDir dir;
    std::string oldPath = dir.file("old.a2l");
    std::string newPath = dir.file("new.a2l");
    CollectingConsole console;
    CompareReport report;
};

TEST_F(CompareFiles, OldFileMissingAndTheNewOneIsNotRead) {
    writeFile(newPath, "nonsense");
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(reportText(report), "0 Reading of file 1 failed: '" + oldPath + "'\n");
    EXPECT_EQ(console.out.find(newPath), std::string::npos);
}

TEST_F(CompareFiles, NewFileMissing) {
    writeFile(oldPath, project("P", module("M")));
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(reportText(report), "0 Reading of file 2 failed: '" + newPath + "'\n");
}

TEST_F(CompareFiles, EmptyAndBrokenFiles) {
    const std::string good = project("P", module("M"));
    for (const std::string bad : {"", "\n\n", "ASAP2_VERSION 1 60 /begin PROJECT",
                                  "ASAP2_VERSION 1 60 /begin PROJECT P \"\" /end MODULE", "\xff"}) {
        write(bad, good);
        EXPECT_EQ(run(), 1) << bad;
        EXPECT_EQ(reportText(report), "0 Reading of file 1 failed: '" + oldPath + "'\n") << bad;
        EXPECT_NE(console.out.find("-: Error (" + oldPath + ":"), std::string::npos) << console.out;
        write(good, bad);
        EXPECT_EQ(run(), 1) << bad;
        EXPECT_EQ(reportText(report), "0 Reading of file 2 failed: '" + newPath + "'\n") << bad;
        EXPECT_NE(console.out.find("-: Error (" + newPath + ":"), std::string::npos) << console.out;
    }
}

TEST_F(CompareFiles, NoModules) {
    // Only a version: a description without a project.
    write("ASAP2_VERSION 1 60", project("P", ""));
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(reportText(report), "0 no module found in file '" + oldPath +
                                      "'\n0 no module found in file '" + newPath + "'\n");
    EXPECT_EQ(console.out, "");
}

TEST_F(CompareFiles, MissingModulesComeBeforeSpareOnes) {
    write(project("P", module("A") + module("B")), project("P", ""));
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(reportText(report),
              "0 no module found in file '" + newPath +
                  "'\n0 more than one module in one file is currently not supported: '" + oldPath +
                  "'\n");
}

TEST_F(CompareFiles, TooManyModules) {
    const std::string two = project("P", module("A") + module("B"));
    write(two, two);
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(reportText(report),
              "0 more than one module in one file is currently not supported: '" + oldPath +
                  "'\n0 more than one module in one file is currently not supported: '" + newPath +
                  "'\n");
    write(project("P", module("A")), two);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(reportText(report),
              "0 more than one module in one file is currently not supported: '" + newPath + "'\n");
}

TEST_F(CompareFiles, ModulesWithoutProtocol) {
    write(project("P", module("M")), project("P", module("M")));
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(console.out, "comparing modules: \n    P:M in file " + oldPath +
                               "\n    P:M in file " + newPath +
                               "\nCOMPARE MODULE \"M\" with \"M\"\n");
    EXPECT_EQ(reportText(report), "0 unsupported protocol type: Undefined\n");
}

}  // namespace
}  // namespace quillmark
