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
        order.includeFile = dir.file("ecu.cfginclude");
        order.packageFile = dir.file("ecu.zpki");
        writeFile(order.includeFile, "document");
    }

    int generate(const std::string& prefix = "") {
        console.out.clear();
        order.userFilePrefix = prefix;
        return cGenerator({temp.path().string(), "20240307_140509"}, console).generate(order);
    }

    std::vector<std::string> entryNames() {
        std::vector<std::string> problems;
        std::vector<std::string> names;
        for (const golden::PackageEntry& entry :
             golden::readPackage(readFile(order.packageFile), problems)) {
            names.push_back(entry.name);
        }
        EXPECT_THAT(problems, IsEmpty());
        return names;
    }

    TempDir dir;
    TempDir temp;
    std::string tree = temp.file("20240307_140509");
    PackageOrder order;
    CollectingConsole console;
};

TEST_F(PackageBuilder, SaysWhatItDoes) {
    writeFile(dir.file("n"), "user file");
    order.userFiles = {dir.file("n")};
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
                  order.includeFile + " copied to " + configuration +
                  "\n"
                  "Creating archive file...\n"
                  "File " +
                  user + " added to archive " + order.packageFile +
                  "\n"
                  "File " +
                  configuration + " added to archive " + order.packageFile +
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
    EXPECT_FALSE(fs::exists(order.includeFile));
}

TEST_F(PackageBuilder, ASecondPackageInTheSameSecond) {
    order.userFiles = {"missing"};
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("Generation of zpkc failed!\n"
                                      "ERROR: Database file \"missing\" does not exist!\n"));
    order.userFiles.clear();
    EXPECT_EQ(generate(), 1);
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Generation of zpkc failed!\n"
              "ERROR: No write permission in target temp directory!\n");
    EXPECT_TRUE(fs::exists(tree));
    EXPECT_EQ(readFile(order.includeFile), "document");
    EXPECT_FALSE(fs::exists(order.packageFile));
}

TEST_F(PackageBuilder, APlaceInAFileNameIsNoPlace) {
    order.userFiles = {"%1%2"};
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("ERROR: Database file \"%1%2\" does not exist!\n"));
}

TEST_F(PackageBuilder, AFailedArchiveLeavesEverythingElse) {
    order.packageFile = dir.file("missing/ecu.zpki");
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("Creating archive file...\n"
                                      "Generation of zpkc failed!\n"
                                      "ERROR: File could not be written\n"));
    EXPECT_EQ(readFile(tree + "/deviceconf/sigtrak/ecu.cfginclude"), "document");
    EXPECT_EQ(readFile(order.includeFile), "document");
}

TEST_F(PackageBuilder, PackageAndIncludeFileOfOneName) {
    order.packageFile = order.includeFile;
    EXPECT_EQ(generate(), 0);
    EXPECT_THAT(entryNames(), ElementsAre("deviceconf/sigtrak/ecu.cfginclude"));
    EXPECT_TRUE(fs::is_empty(temp.path()));
}

TEST_F(PackageBuilder, AnIncludeFileThatIsADevice) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows neither pipes nor devices are files";
    }
    // A pipe would never give back what was written into it; it is refused, not waited for.
    order.includeFile = dir.file("pipe");
    ASSERT_TRUE(makePipe(order.includeFile));
    EXPECT_EQ(generate(), 1);
    EXPECT_THAT(console.out, EndsWith("ERROR: Copying configuration file failed!\n"));
    fs::remove_all(tree);
    order.includeFile = "/dev/null";
    EXPECT_EQ(generate(), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(PackageBuilder, AnIncludeFileThatWasCutOffIsNotPacked) {
    order.includeFileIsComplete = false;
    EXPECT_EQ(generate(), 1);
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Temporary directory " +
                  tree +
                  " created\n"
                  "Copying user files to target directory...\n"
                  "Copying configuration file to target directory...\n"
                  "Generation of zpkc failed!\n"
                  "ERROR: Copying configuration file failed!\n");
    EXPECT_EQ(readFile(order.includeFile), "document");
    EXPECT_FALSE(fs::exists(order.packageFile));
}

class PackageOfThisProcess : public PackageBuilder {
  protected:
    PackageOfThisProcess() { setTemporaryPath(temp.path().string()); }
    ~PackageOfThisProcess() override { setTemporaryPath(oldPath_); }

    static void setTemporaryPath(const std::string& path) {
        setVariable(kIsWindows ? "TMP" : "TMPDIR", path);
    }

  private:
    std::string oldPath_ = fs::temp_directory_path().string();
};

TEST_F(PackageOfThisProcess, IsStagedWhereTemporaryFilesAre) {
    const PackageEnvironment environment = currentPackageEnvironment();
    EXPECT_EQ(environment.tempDirectory, fs::canonical(temp.path()).generic_string());
    std::string pattern = environment.stagingName;
    std::ranges::replace_if(
        pattern, [](char c) { return c >= '0' && c <= '9'; }, '9');
    EXPECT_EQ(pattern, "99999999_999999");
    EXPECT_EQ(generatePackage(order, console), 0);
    EXPECT_THAT(entryNames(), ElementsAre("deviceconf/sigtrak/ecu.cfginclude"));
    EXPECT_TRUE(fs::is_empty(temp.path()));
    console.out.clear();
    setTemporaryPath(temp.file("missing"));
    EXPECT_EQ(generatePackage(order, console), 1);
    EXPECT_EQ(console.out,
              "Preparing structure of target directory...\n"
              "Generation of zpkc failed!\n"
              "ERROR: Target does not exist!\n");
}

}  // namespace
}  // namespace quillmark
