#include "app/compare_command.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

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

class CompareCommand : public testing::Test {
  protected:
    bool run(bool verbose = false) {
        console.out.clear();
        return compareCommand({oldPath, newPath, verbose}, console);
    }
    /// The lines of the report that tell why nothing is compared, each with 0 for its level.
    std::string failures() const {
        constexpr std::string_view kLabel = "Cannot compare modules: ";
        std::string lines;
        for (std::size_t at = console.out.find(kLabel); at != std::string::npos;
             at = console.out.find(kLabel, at + 1)) {
            const std::size_t text = at + kLabel.size();
            lines += "0 " + console.out.substr(text, console.out.find('\n', text) + 1 - text);
        }
        return lines;
    }
    void write(const std::string& oldText, const std::string& newText) {
        writeFile(oldPath, oldText);
        writeFile(newPath, newText);
    }

    TempDir dir;
    std::string oldPath = dir.file("old.a2l");
    std::string newPath = dir.file("new.a2l");
    CollectingConsole console;
};

TEST_F(CompareCommand, OldFileMissingAndTheNewOneIsNotRead) {
    writeFile(newPath, "nonsense");
    EXPECT_FALSE(run());
    EXPECT_EQ(failures(), "0 Reading of file 1 failed: '" + oldPath + "'\n");
    EXPECT_EQ(console.out.find(newPath), std::string::npos);
}

TEST_F(CompareCommand, NewFileMissing) {
    writeFile(oldPath, project("P", module("M")));
    EXPECT_FALSE(run());
    EXPECT_EQ(failures(), "0 Reading of file 2 failed: '" + newPath + "'\n");
}

TEST_F(CompareCommand, EmptyAndBrokenFiles) {
    const std::string good = project("P", module("M"));
    for (const std::string bad : {"", "\n\n", "ASAP2_VERSION 1 60 /begin PROJECT",
                                  "ASAP2_VERSION 1 60 /begin PROJECT P \"\" /end MODULE", "\xff"}) {
        write(bad, good);
        EXPECT_FALSE(run()) << bad;
        EXPECT_EQ(failures(), "0 Reading of file 1 failed: '" + oldPath + "'\n") << bad;
        EXPECT_NE(console.out.find("-: Error (" + oldPath + ":"), std::string::npos) << console.out;
        write(good, bad);
        EXPECT_FALSE(run()) << bad;
        EXPECT_EQ(failures(), "0 Reading of file 2 failed: '" + newPath + "'\n") << bad;
        EXPECT_NE(console.out.find("-: Error (" + newPath + ":"), std::string::npos) << console.out;
    }
}

TEST_F(CompareCommand, NoModules) {
    // Only a version: a description without a project.
    write("ASAP2_VERSION 1 60", project("P", ""));
    EXPECT_FALSE(run());
    EXPECT_EQ(failures(), "0 no module found in file '" + oldPath +
                              "'\n0 no module found in file '" + newPath + "'\n");
}

TEST_F(CompareCommand, MissingModulesComeBeforeSpareOnes) {
    write(project("P", module("A") + module("B")), project("P", ""));
    EXPECT_FALSE(run());
    EXPECT_EQ(failures(),
              "0 no module found in file '" + newPath +
                  "'\n0 more than one module in one file is currently not supported: '" + oldPath +
                  "'\n");
}

TEST_F(CompareCommand, TooManyModules) {
    const std::string two = project("P", module("A") + module("B"));
    write(two, two);
    EXPECT_FALSE(run());
    EXPECT_EQ(failures(),
              "0 more than one module in one file is currently not supported: '" + oldPath +
                  "'\n0 more than one module in one file is currently not supported: '" + newPath +
                  "'\n");
    write(project("P", module("A")), two);
    EXPECT_FALSE(run());
    EXPECT_EQ(failures(),
              "0 more than one module in one file is currently not supported: '" + newPath + "'\n");
}

TEST_F(CompareCommand, ModulesWithoutProtocol) {
    write(project("P", module("M")), project("P", module("M")));
    EXPECT_FALSE(run());
    EXPECT_EQ(console.out, "comparing modules: \n    P:M in file " + oldPath +
                               "\n    P:M in file " + newPath +
                               "\nCOMPARE MODULE \"M\" with \"M\"\n"
                               "Cannot compare modules: unsupported protocol type: Undefined\n");
}

std::string xcpModule(const std::string& name, const std::string& canId) {
    return "/begin MODULE " + name +
           " \"\" /begin IF_DATA XCP /begin XCP_ON_CAN 256 CAN_ID_MASTER " + canId +
           " CAN_ID_SLAVE 2 BAUDRATE 1 /end XCP_ON_CAN /end IF_DATA /end MODULE ";
}

TEST_F(CompareCommand, FindingsDoNotDecideTheResult) {
    write(project("P", xcpModule("M", "1")), project("P", xcpModule("N", "3")));
    EXPECT_TRUE(run());
    EXPECT_NE(console.out.find("\nWarning: module names do not match: M != N\nError: "),
              std::string::npos)
        << console.out;
    EXPECT_EQ(console.out.find(" # "), std::string::npos);
    EXPECT_TRUE(run(true));
    EXPECT_NE(console.out.find(" = 1 # 3\n"), std::string::npos) << console.out;
}

TEST_F(CompareCommand, NothingFound) {
    write(project("P", xcpModule("M", "1")), project("P", xcpModule("M", "1")));
    EXPECT_TRUE(run());
    EXPECT_TRUE(console.out.ends_with("with \"M\"\nNo Errors.\n")) << console.out;
}

}  // namespace
}  // namespace quillmark
