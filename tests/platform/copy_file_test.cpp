#include "platform/copy_file.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/local_names.h"
#include "support/refusals.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

class CopyFile : public testing::Test {
  protected:
    TempDir dir;
    std::string source = dir.file("source");
    std::string target = dir.file("target");
};

TEST_F(CopyFile, ContentOfAnySize) {
    // Around the size of a copy's buffer, and bytes of every value.
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{262143}, std::size_t{262144},
          std::size_t{262145}, std::size_t{1000003}}) {
        std::string content(size, '\0');
        for (std::size_t i = 0; i < size; ++i) {
            content[i] = static_cast<char>(i * 7 + i / 256);
        }
        writeFile(source, content);
        EXPECT_TRUE(copyFile(source, target)) << size;
        EXPECT_TRUE(readFile(target) == content) << size;
    }
}

TEST_F(CopyFile, ReplacesALongerTarget) {
    writeFile(source, "new");
    writeFile(target, "something longer");
    EXPECT_TRUE(copyFile(source, target));
    EXPECT_EQ(readFile(target), "new");
}

TEST_F(CopyFile, KeepsPermissionsAndTimeOfModification) {
    using std::filesystem::perms;
    const std::filesystem::file_time_type time =
        std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 400);
    // Of these Windows knows whether a file may be written; the system tells what it made of them.
    for (const perms permissions : {perms::owner_read | perms::group_read,
                                    perms::owner_all | perms::group_read | perms::others_exec}) {
        writeFile(source, "x");
        std::filesystem::last_write_time(source, time);
        std::filesystem::permissions(source, permissions);
        const perms before = std::filesystem::status(source).permissions();
        EXPECT_TRUE(kIsWindows || before == permissions);
        EXPECT_TRUE(copyFile(source, target));
        EXPECT_EQ(std::filesystem::status(target).permissions(), before);
        EXPECT_EQ(std::filesystem::last_write_time(target),
                  std::filesystem::last_write_time(source));
        for (const std::string& name : {source, target}) {
            std::filesystem::permissions(name, perms::owner_all);
            std::filesystem::remove(name);
        }
    }
}

TEST_F(CopyFile, WhatOthersLetUsReadCanBeReadInTheCopy) {
    using std::filesystem::perms;
    writeFile(source, "x");
    std::filesystem::permissions(source, perms::group_read | perms::others_read);
    std::filesystem::permissions(dir.path(), perms::all);
    const OrdinaryUser user;
    if (!user.isOrdinary() || !copyFile(source, target)) {
        GTEST_SKIP() << "only the superuser can make a file for somebody else";
    }
    EXPECT_EQ(readFile(target), "x");
}

TEST_F(CopyFile, AMissingSourceLeavesTheTarget) {
    writeFile(target, "kept");
    EXPECT_FALSE(copyFile(source, target));
    EXPECT_EQ(readFile(target), "kept");
    EXPECT_FALSE(copyFile("", target));
}

TEST_F(CopyFile, ADirectoryIsNoFile) {
    EXPECT_FALSE(copyFile(dir.path().string(), target));
    EXPECT_FALSE(std::filesystem::exists(target));
    writeFile(source, "x");
    EXPECT_FALSE(copyFile(source, dir.path().string()));
}

TEST_F(CopyFile, TheTargetCannotBeMade) {
    writeFile(source, "x");
    EXPECT_FALSE(copyFile(source, dir.file("missing/target")));
    EXPECT_FALSE(copyFile(source, ""));
}

TEST_F(CopyFile, OntoItselfChangesNothing) {
    writeFile(source, "kept");
    EXPECT_FALSE(copyFile(source, source));
    EXPECT_EQ(readFile(source), "kept");
}

TEST_F(CopyFile, OntoItselfThroughALinkChangesNothing) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows links are for users with a privilege";
    }
    writeFile(source, "kept");
    std::filesystem::create_symlink(source, target);
    EXPECT_FALSE(copyFile(source, target));
    EXPECT_EQ(readFile(source), "kept");
}

TEST_F(CopyFile, AFullDiskIsNoticed) {
    if (std::filesystem::exists("/dev/full")) {
        writeFile(source, "x");
        EXPECT_FALSE(copyFile(source, "/dev/full"));
    }
}

TEST_F(CopyFile, ADeviceWithoutEndIsRefused) {
    if (std::filesystem::exists("/dev/zero")) {
        EXPECT_FALSE(copyFile("/dev/zero", target));
        EXPECT_FALSE(std::filesystem::exists(target));
        EXPECT_TRUE(copyFile("/dev/null", target));
        EXPECT_EQ(readFile(target), "");
        EXPECT_TRUE(std::filesystem::exists(target));
    }
}

TEST_F(CopyFile, NamesAreBytes) {
    std::vector<std::string> names = localNames();
    if (!kIsWindows) {
        names.emplace_back("\xe4 \xff'\"");
    }
    for (const std::string& name : names) {
        writeFile(dir.file(name), "x");
        EXPECT_TRUE(copyFile(dir.file(name), dir.file("copy of " + name)));
        EXPECT_EQ(readFile(dir.file("copy of " + name)), "x");
    }
}

TEST_F(CopyFile, ATargetThatCannotBeOpenedStaysAsItWas) {
    writeFile(source, "new");
    writeFile(target, "old");
    std::filesystem::permissions(target, std::filesystem::perms::owner_read);
    {
        const OrdinaryUser user;
        if (!user.isOrdinary()) {
            GTEST_SKIP() << "nothing is refused to the superuser";
        }
        EXPECT_FALSE(copyFile(source, target));
    }
    EXPECT_EQ(readFile(target), "old");
}

}  // namespace
}  // namespace quillmark
