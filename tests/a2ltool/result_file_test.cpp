#include "a2ltool/result_file.h"

#include <filesystem>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark::a2ltool {
namespace {

namespace fs = std::filesystem;

class ResultFileTest : public testing::Test {
  protected:
    /// How many files lie in the directory.
    std::ptrdiff_t fileCount() const {
        return std::distance(fs::directory_iterator(directory_.path()), fs::directory_iterator());
    }

    TempDir directory_;
    std::string name_ = directory_.file("result");
};

TEST_F(ResultFileTest, TakesItsNameWhenItIsComplete) {
    const auto result = ResultFile::open(name_);
    result->sink().write("new");
    EXPECT_FALSE(fs::exists(name_));
    EXPECT_TRUE(result->finish());
    EXPECT_EQ(readFile(name_), "new");
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ResultFileTest, ReplacesAFileWhenItIsComplete) {
    writeFile(name_, "old");
    const auto result = ResultFile::open(name_);
    result->sink().write("new");
    EXPECT_EQ(readFile(name_), "old");
    EXPECT_TRUE(result->finish());
    EXPECT_EQ(readFile(name_), "new");
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ResultFileTest, MayHaveTheLongestName) {
    if (kIsWindows) {
        GTEST_SKIP() << "the whole path is limited there";
    }
    const std::string name = directory_.file(std::string(255, 'n'));
    const auto result = ResultFile::open(name);
    result->sink().write("new");
    EXPECT_TRUE(result->finish());
    EXPECT_EQ(readFile(name), "new");
}

TEST_F(ResultFileTest, LeavesNothingBehindIfItIsNeverFinished) {
    writeFile(name_, "old");
    ResultFile::open(name_)->sink().write("new");
    EXPECT_EQ(readFile(name_), "old");
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ResultFileTest, KeepsThePermissionsOfWhatItReplaces) {
    if (kIsWindows) {
        GTEST_SKIP() << "a file has no permissions of a group there";
    }
    writeFile(name_, "old");
    constexpr auto kPermissions = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(name_, kPermissions);
    EXPECT_TRUE(ResultFile::open(name_)->finish());
    EXPECT_EQ(fs::status(name_).permissions(), kPermissions);
}

TEST_F(ResultFileTest, ReplacesWhatALinkPointsTo) {
    if (kIsWindows) {
        GTEST_SKIP() << "not everybody may make links there";
    }
    const std::string link = directory_.file("link");
    fs::create_symlink("result", link);
    for (const char* content : {"old", "new"}) {  // at first the link leads nowhere
        const auto result = ResultFile::open(link);
        result->sink().write(content);
        EXPECT_TRUE(result->finish());
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_EQ(readFile(name_), content);
    }
}

TEST_F(ResultFileTest, FailsWithoutADirectory) {
    const auto result = ResultFile::open(directory_.file("nowhere/result"));
    result->sink().write("new");
    EXPECT_FALSE(result->finish());
}

TEST_F(ResultFileTest, FailsOnAFullDevice) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "no device that is always full here";
    }
    const auto result = ResultFile::open("/dev/full");
    result->sink().write("new");
    EXPECT_FALSE(result->finish());
    EXPECT_TRUE(fs::exists("/dev/full"));
}

}  // namespace
}  // namespace quillmark::a2ltool
