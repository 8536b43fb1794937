#include "library/package_output.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cli/file_tree.h"
#include "support/collecting_console.h"
#include "support/temp_dir.h"
#include "support/temporary_path.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

TEST(UserFilePrefix, EveryOtherByteGivesWay) {
    PhRoot model;
    EXPECT_EQ(userFilePrefix(model), "");
    model.documents.append(makePh<PhGroup>(PhDocumentKind::Project, nullptr));
    EXPECT_EQ(userFilePrefix(model), "");
    PhGroup& project = model.documents.at(0);
    for (int i = 0; i < 2; ++i) {
        project.documents.append(makePh<PhGroup>(PhDocumentKind::Module, &project));
    }
    EXPECT_EQ(userFilePrefix(model), "");
    project.documents.at(1).obtainProperties().setText("mod_par/epk", "second");
    EXPECT_EQ(userFilePrefix(model), "");
    PhProperties& properties = project.documents.at(0).obtainProperties();
    properties.setInteger("mod_par/addr_epk", 1);
    EXPECT_EQ(userFilePrefix(model), "");
    properties.setText("mod_par/epk", "AB 12/x");
    EXPECT_EQ(userFilePrefix(model), "AB_12_x");
    properties.setText("mod_par/epk", "azAZ09_-@[`{/:.\xc3\xbc\r\n");
    EXPECT_EQ(userFilePrefix(model), "azAZ09_-___________");
}

class BuildPackage : public testing::Test {
  protected:
    BuildPackage() {
        request.outputFile = dir.file("ecu.cfginclude");
        request.zpkiFile = dir.file("ecu.zpki");
        writeFile(request.outputFile, "<r>");
    }

    TempDir dir;
    TemporaryPath temporaryPath;
    ConvertRequest request;
    PhRoot model;
    CollectingConsole console;
};

TEST_F(BuildPackage, PutsTheIncludeFileIntoIt) {
    EXPECT_EQ(buildPackage(request, IncludeFileState::Complete, model, console), 0);
    std::vector<std::string> problems;
    const auto entries = golden::readPackage(readFile(request.zpkiFile), problems);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].content, "<r>");
    EXPECT_FALSE(fs::exists(request.outputFile));
}

TEST_F(BuildPackage, HandsTheUserFilesOn) {
    model.documents.append(makePh<PhGroup>(PhDocumentKind::Project, nullptr));
    auto module = makePh<PhGroup>(PhDocumentKind::Module, &model.documents.at(0));
    module->obtainProperties().setText("mod_par/epk", "E 1");
    model.documents.at(0).documents.append(std::move(module));
    request.epkFilePrefix = true;
    request.userFiles = {dir.file("notes")};
    writeFile(request.userFiles[0], "text");
    EXPECT_EQ(buildPackage(request, IncludeFileState::Complete, model, console), 0);
    std::vector<std::string> problems;
    const auto entries = golden::readPackage(readFile(request.zpkiFile), problems);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].name, "userfiles/E_1notes");
}

TEST_F(BuildPackage, AnIncludeFileThatWasCutOffIsNotPacked) {
    EXPECT_EQ(buildPackage(request, IncludeFileState::CutOff, model, console), 1);
    EXPECT_TRUE(console.out.ends_with("ERROR: Copying configuration file failed!\n"))
        << console.out;
    EXPECT_FALSE(fs::exists(request.zpkiFile));
}

}  // namespace
}  // namespace quillmark
