#include "package/staging.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "package/error_texts.h"
#include "support/collecting_console.h"
#include "support/refusals.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;

class Staging : public testing::Test {
  protected:
    int createTree() { return staging.createStagingTree(dir.path().string(), "20240307_140509"); }

    std::vector<std::string> entryNames() {
        std::vector<std::string> names;
        for (const StagedFile& file : staging.stagedFiles()) {
            EXPECT_EQ(file.path, tree + "/" + file.entryName);
            names.push_back(file.entryName);
        }
        return names;
    }

    TempDir dir;
    TempDir source;
    std::string tree = dir.file("20240307_140509");
    CollectingConsole console;
    cZpkcCommon staging{console};
};

TEST_F(Staging, TreeOfDirectories) {
    EXPECT_EQ(createTree(), kPackageOk);
    EXPECT_EQ(console.out, "Temporary directory " + tree + " created\n");
    for (const char* directory :
         {"descriptionfiles", "userfiles", "deviceconf/sigtrak", "deviceconf/vistrel"}) {
        EXPECT_TRUE(fs::is_directory(tree + "/" + directory)) << directory;
    }
    if (!kIsWindows) {  // where the user's own temporary directory is closed to others
        EXPECT_EQ(fs::status(tree).permissions(), fs::perms::owner_all);
    }
    console.out.clear();
    EXPECT_EQ(staging.cleanUp(), kPackageOk);
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_EQ(console.out, "");
}

TEST_F(Staging, TheBaseDirectoryMustExist) {
    writeFile(source.file("file"), "");
    for (const std::string& base : {std::string(), source.file("missing"), source.file("file")}) {
        EXPECT_EQ(staging.createStagingTree(base, "x"), kBaseDirectoryMissing) << base;
    }
    EXPECT_EQ(staging.createStagingTree(source.path().string(), "no/such"), kStagingNotCreated);
    EXPECT_EQ(console.out, "");
}

TEST_F(Staging, TheNameMustBeFree) {
    EXPECT_EQ(createTree(), kPackageOk);
    console.out.clear();
    cZpkcCommon second(console);
    EXPECT_EQ(second.createStagingTree(dir.path().string(), "20240307_140509"), kStagingNotCreated);
    writeFile(dir.file("file"), "kept");
    EXPECT_EQ(second.createStagingTree(dir.path().string(), "file"), kStagingNotCreated);
    EXPECT_EQ(readFile(dir.file("file")), "kept");
    EXPECT_EQ(console.out, "");
}

TEST_F(Staging, UserFilesBehindTheirPrefix) {
    fs::create_directory(source.file("sub.d"));
    writeFile(source.file("sub.d/%2 n"), std::string("\0\xff\r\n", 4));
    writeFile(source.file("\xb1"), "");
    ASSERT_EQ(createTree(), kPackageOk);
    console.out.clear();
    EXPECT_EQ(staging.copyUserFiles({source.file("sub.d/%2 n"), source.file("\xb1")}, "AB_"),
              kPackageOk);
    EXPECT_THAT(entryNames(), ElementsAre("userfiles/AB_%2 n", "userfiles/AB_\xb1"));
    EXPECT_EQ(readFile(tree + "/userfiles/AB_%2 n"), std::string("\0\xff\r\n", 4));
    EXPECT_EQ(console.out, "Database file " + source.file("sub.d/%2 n") + " copied to " + tree +
                               "/userfiles/AB_%2 n\nDatabase file " + source.file("\xb1") +
                               " copied to " + tree + "/userfiles/AB_\xb1\n");
}

TEST_F(Staging, ASecondFileOfTheSameNameWins) {
    fs::create_directory(source.file("sub"));
    writeFile(source.file("n"), "the first one");
    writeFile(source.file("m"), "m");
    writeFile(source.file("sub/n"), "second");
    ASSERT_EQ(createTree(), kPackageOk);
    EXPECT_EQ(staging.copyUserFiles({source.file("n"), source.file("m"), source.file("sub/n")}, ""),
              kPackageOk);
    EXPECT_THAT(entryNames(), ElementsAre("userfiles/n", "userfiles/m"));
    EXPECT_EQ(readFile(tree + "/userfiles/n"), "second");
    console.out.clear();
    EXPECT_EQ(staging.cleanUp(), kPackageOk);
    EXPECT_EQ(console.out, "Temporary file " + tree + "/userfiles/n removed\nTemporary file " +
                               tree + "/userfiles/m removed\n");
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST_F(Staging, CopiesKeepPermissionsAndTimeOfModification) {
    const std::string file = source.file("n");
    const fs::perms readOnly = fs::perms::owner_read | fs::perms::group_read;
    writeFile(file, "x");
    fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours(24 * 400));
    fs::permissions(file, readOnly);
    const fs::perms permissions = fs::status(file).permissions();
    EXPECT_TRUE(kIsWindows || permissions == readOnly);
    ASSERT_EQ(createTree(), kPackageOk);
    EXPECT_EQ(staging.copyUserFiles({file}, ""), kPackageOk);
    EXPECT_EQ(staging.copyConfigurationFile(file, true), kPackageOk);
    for (const StagedFile& staged : staging.stagedFiles()) {
        EXPECT_EQ(fs::status(staged.path).permissions(), permissions);
        EXPECT_EQ(fs::last_write_time(staged.path), fs::last_write_time(file));
    }
    EXPECT_EQ(staging.cleanUp(), kPackageOk);
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST_F(Staging, AReadOnlyFileGivesWayToAnotherOfItsName) {
    fs::create_directory(source.file("sub"));
    writeFile(source.file("n"), "the first one");
    writeFile(source.file("sub/n"), "second");
    for (const char* name : {"n", "sub/n"}) {
        fs::permissions(source.file(name),
                        fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    }
    fs::permissions(dir.path(), fs::perms::all);
    const OrdinaryUser user;
    if (!user.isOrdinary()) {
        GTEST_SKIP() << "nothing is refused to the superuser";
    }
    ASSERT_EQ(createTree(), kPackageOk);
    EXPECT_EQ(staging.copyUserFiles({source.file("n"), source.file("sub/n")}, ""), kPackageOk);
    EXPECT_THAT(entryNames(), ElementsAre("userfiles/n"));
    EXPECT_EQ(readFile(tree + "/userfiles/n"), "second");
    EXPECT_EQ(staging.cleanUp(), kPackageOk);
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST_F(Staging, UserFilesThatCannotBeCopied) {
    struct Row {
        std::string file;
        int code;
    };
    writeFile(source.file("n"), "");
    ASSERT_EQ(createTree(), kPackageOk);
    for (const Row& row : {Row{"", kUserFileMissing}, Row{source.file("missing"), kUserFileMissing},
                           Row{source.file("n/"), kUserFileMissing},
                           Row{source.path().string(), kCopyingUserFileFailed},
                           Row{source.path().string() + "/", kCopyingUserFileFailed},
                           Row{source.path().string() + "/..", kCopyingUserFileFailed}}) {
        EXPECT_EQ(staging.copyUserFiles({source.file("n"), row.file, "later"}, ""), row.code)
            << row.file;
        EXPECT_EQ(staging.failedFile(), row.file);
        EXPECT_THAT(entryNames(), ElementsAre("userfiles/n"));
    }
    EXPECT_EQ(staging.copyUserFiles({source.file("n")}, std::string(255, 'p')),
              kCopyingUserFileFailed);
}

TEST_F(Staging, UserFilesOfLinuxThatCannotBeCopied) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows links are for users with a privilege, and there is no /proc";
    }
    fs::create_symlink("nowhere", source.file("dangling"));
    ASSERT_EQ(createTree(), kPackageOk);
    EXPECT_EQ(staging.copyUserFiles({source.file("dangling")}, ""), kUserFileMissing);
    EXPECT_EQ(staging.copyUserFiles({"/proc/self/mem"}, ""), kCopyingUserFileFailed);
}

TEST_F(Staging, ConfigurationFileByEitherName) {
    writeFile(source.file("ecu.cfginclude"), "x");
    ASSERT_EQ(createTree(), kPackageOk);
    console.out.clear();
    EXPECT_EQ(staging.copyConfigurationFile(source.file("ecu.cfginclude"), true), kPackageOk);
    EXPECT_EQ(staging.copyConfigurationFile(source.file("ecu.cfginclude"), false), kPackageOk);
    EXPECT_THAT(entryNames(),
                ElementsAre("deviceconf/sigtrak/ecu.cfginclude", "deviceconf/sigtrak/sigtrak.cfg"));
    EXPECT_EQ(readFile(tree + "/deviceconf/sigtrak/sigtrak.cfg"), "x");
    EXPECT_EQ(console.out, "Configuration file " + source.file("ecu.cfginclude") + " copied to " +
                               tree + "/deviceconf/sigtrak/ecu.cfginclude\nConfiguration file " +
                               source.file("ecu.cfginclude") + " copied to " + tree +
                               "/deviceconf/sigtrak/sigtrak.cfg\n");
}

TEST_F(Staging, ConfigurationFileThatCannotBeCopied) {
    writeFile(source.file("ecu"), "x");
    ASSERT_EQ(createTree(), kPackageOk);
    EXPECT_EQ(staging.copyConfigurationFile(source.file("missing"), true),
              kConfigurationFileMissing);
    EXPECT_EQ(staging.copyConfigurationFile(source.path().string(), true),
              kCopyingConfigurationFileFailed);
    if (!kIsWindows) {
        EXPECT_EQ(staging.copyConfigurationFile("/dev/zero", true),
                  kCopyingConfigurationFileFailed);
    }
    fs::remove(tree + "/deviceconf/sigtrak");
    EXPECT_EQ(staging.copyConfigurationFile(source.file("ecu"), true), kSigtrakMissing);
    fs::remove_all(tree + "/deviceconf");
    EXPECT_EQ(staging.copyConfigurationFile(source.file("ecu"), true), kDeviceConfMissing);
    EXPECT_THAT(entryNames(), IsEmpty());
}

TEST_F(Staging, ATreeThatWasTakenAway) {
    writeFile(source.file("n"), "x");
    ASSERT_EQ(createTree(), kPackageOk);
    ASSERT_EQ(staging.copyUserFiles({source.file("n")}, ""), kPackageOk);
    fs::remove_all(tree);
    EXPECT_EQ(staging.copyUserFiles({source.file("n")}, ""), kCopyingUserFileFailed);
    EXPECT_EQ(staging.copyConfigurationFile(source.file("n"), true), kDeviceConfMissing);
    EXPECT_EQ(staging.cleanUp(), kPackageOk);  // nothing is left to be removed
}

TEST_F(Staging, ATemporaryDirectoryWithoutRights) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows a directory marked as read-only takes new files";
    }
    fs::permissions(dir.path(), fs::perms::owner_read | fs::perms::owner_exec);
    const OrdinaryUser user;
    if (user.isOrdinary()) {
        EXPECT_EQ(createTree(), kStagingNotCreated);
    }
}

TEST_F(Staging, ForeignFilesAreNotRemoved) {
    ASSERT_EQ(createTree(), kPackageOk);
    writeFile(tree + "/userfiles/foreign", "kept");
    EXPECT_EQ(staging.cleanUp(), kRemovingDirectoryFailed);
    EXPECT_EQ(readFile(tree + "/userfiles/foreign"), "kept");
}

}  // namespace
}  // namespace quillmark
