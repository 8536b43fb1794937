#include "package/package_builder.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/file_tree.h"
#include "support/collecting_console.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

class PackageBuilder : public testing::Test {
  protected:
    PackageBuilder() {
        request.outputFile = dir.file("ecu.cfginclude");
        request.zpkiFile = dir.file("ecu.zpki");
        writeFile(request.outputFile, "document");
    }

    int generate(const std::string& prefix = "") {
        console.out.clear();
        return cGenerator({temp.path().string(), "20240307_140509"}, console)
            .generate(request, prefix, IncludeFileState::complete);
    }

    std::vector<std::string> entryNames() {
        std::vector<std::string> problems;
        std::vector<std::string> names;
        for (const golden::PackageEntry& entry :
             golden::readPackage(readFile(request.zpkiFile), problems)) {
            names.push_back(entry.name);
        }
        EXPECT_THAT(problems, IsEmpty());
        return names;
    }

    TempDir dir;
    TempDir temp;
    std::string tree = temp.file("20240307_140509");
    ConvertRequest request;
    CollectingConsole console;
};

TEST_F(PackageBuilder, SaysWhatItDoes) {
    writeFile(dir.file("n"), "user file");
    request.userFiles = {dir.file("n")};
    EXPECT_EQ(generate("P_"), 0);
    const std::string user = tree + "/userfiles/P_n";
    const std::string configuration = tree + "/deviceconf/sigtrak/ecu.cfginclude";
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Temporary directory " +
                  tree +
                  " created\n"
                  "Copying user files to target directory...\n"
                  "Database file " +
                  dir.file("n") + " copied to " + user +
                  "\n"
                  "Copying configuration file to target directory...\n"
                  "Configuration file " +
                  request.outputFile + " copied to " + configuration +
                  "\n"
                  "Creating archive file...\n"
                  "File " +
                  user + " added to archive " + request.zpkiFile +
                  "\n"
                  "File " +
                  configuration + " added to archive " + request.zpkiFile +
                  "\n"
                  "Cleaning up temporary files...\n"
                  "Temporary file " +
                  user +
                  " removed\n"
                  "Temporary file " +
                  configuration +
                  " removed\n"
                  "Finished successfully\n");
    EXPECT_THAT(entryNames(), ElementsAre("userfiles/P_n", "deviceconf/sigtrak/ecu.cfginclude"));
    EXPECT_TRUE(fs::is_empty(temp.path()));
    EXPECT_FALSE(fs::exists(request.outputFile));
}

TEST_F(PackageBuilder, ASecondPackageInTheSameSecond) {
    request.userFiles = {"missing"};
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("Generation of zpkc failed!\n"
                                      "ERROR: Database file \"missing\" does not exist!\n"));
    request.userFiles.clear();
    EXPECT_EQ(generate(), 1);
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Generation of zpkc failed!\n"
              "ERROR: No write permission in target temp directory!\n");
    EXPECT_TRUE(fs::exists(tree));
    EXPECT_EQ(readFile(request.outputFile), "document");
    EXPECT_FALSE(fs::exists(request.zpkiFile));
}

TEST_F(PackageBuilder, APlaceInAFileNameIsNoPlace) {
    request.userFiles = {"%1%2"};
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("ERROR: Database file \"%1%2\" does not exist!\n"));
}

TEST_F(PackageBuilder, AFailedArchiveLeavesEverythingElse) {
    request.zpkiFile = dir.file("missing/ecu.zpki");
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("Creating archive file...\n"
                                      "Generation of zpkc failed!\n"
                                      "ERROR: File could not be written\n"));
    EXPECT_EQ(readFile(tree + "/deviceconf/sigtrak/ecu.cfginclude"), "document");
    EXPECT_EQ(readFile(request.outputFile), "document");
}

TEST_F(PackageBuilder, PackageAndIncludeFileOfOneName) {
    request.zpkiFile = request.outputFile;
    EXPECT_EQ(generate(), 0);
    EXPECT_THAT(entryNames(), ElementsAre("deviceconf/sigtrak/ecu.cfginclude"));
    EXPECT_TRUE(fs::is_empty(temp.path()));
}

TEST_F(PackageBuilder, AnIncludeFileThatIsADevice) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows neither pipes nor devices are files";
    }
    // A pipe would never give back what was written into it; it is refused, not waited for.
    request.outputFile = dir.file("pipe");
    ASSERT_TRUE(makePipe(request.outputFile));
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("ERROR: Copying configuration file failed!\n"));
    fs::remove_all(tree);
    request.outputFile = "/dev/null";
    EXPECT_EQ(generate(), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

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

class BuildPackage : public PackageBuilder {
  protected:
    BuildPackage() { setTemporaryPath(temp.path().string()); }
    ~BuildPackage() override { setTemporaryPath(oldPath_); }

    static void setTemporaryPath(const std::string& path) {
        setVariable(kIsWindows ? "TMP" : "TMPDIR", path);
    }

    PhRoot model;
    CfgElement root{"r"};

  private:
    std::string oldPath_ = fs::temp_directory_path().string();
};

TEST_F(BuildPackage, WritesTheIncludeFileFirst) {
    request.indent = true;
    EXPECT_EQ(buildPackage(request, root, model, console), 0);
    std::vector<std::string> problems;
    const auto entries = golden::readPackage(readFile(request.zpkiFile), problems);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].content, "<r>\r\n</r>\r\n");
    EXPECT_FALSE(fs::exists(request.outputFile));
    EXPECT_TRUE(fs::is_empty(temp.path()));
}

TEST_F(BuildPackage, AnIncludeFileThatWasCutOffIsNotPacked) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "this system has no /dev/full";
    }
    EXPECT_EQ(storeIncludeFile("/dev/full", root, false, console), IncludeFileState::cutOff);
    EXPECT_EQ(cGenerator({temp.path().string(), "20240307_140509"}, console)
                  .generate(request, "", IncludeFileState::cutOff),
              1);
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Temporary directory " +
                  tree +
                  " created\n"
                  "Copying user files to target directory...\n"
                  "Copying configuration file to target directory...\n"
                  "Generation of zpkc failed!\n"
                  "ERROR: Copying configuration file failed!\n");
    EXPECT_EQ(readFile(request.outputFile), "document");
    EXPECT_FALSE(fs::exists(request.zpkiFile));
}

TEST_F(BuildPackage, AnIncludeFileThatCannotBeWrittenIsAllThatIsReported) {
    request.outputFile = dir.file("missing/ecu");
    EXPECT_EQ(buildPackage(request, root, model, console), 1);
    EXPECT_EQ(console.out, "ERROR: Cannot open output file: " + request.outputFile + "\n");
    EXPECT_TRUE(fs::is_empty(temp.path()));
}

TEST_F(BuildPackage, TheEnvironmentOfTheProcess) {
    const PackageEnvironment environment = currentPackageEnvironment();
    EXPECT_EQ(environment.tempDirectory, fs::canonical(temp.path()).generic_string());
    std::string pattern = environment.stagingName;
    std::ranges::replace_if(
        pattern, [](char c) { return c >= '0' && c <= '9'; }, '9');
    EXPECT_EQ(pattern, "99999999_999999");
    setTemporaryPath(temp.file("missing"));
    EXPECT_EQ(buildPackage(request, root, model, console), 1);
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Generation of zpkc failed!\n"
              "ERROR: Target does not exist!\n");
}

}  // namespace
}  // namespace quillmark
