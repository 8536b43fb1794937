#include "platform/directories.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "platform/file_name.h"
#include "support/local_names.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVariable = kIsWindows ? "TMP" : "TMPDIR";

/// Puts the variable back as it was.
class TemporaryDirectory : public testing::Test {
  protected:
    ~TemporaryDirectory() override {
        if (!old.empty()) {
            setVariable(kVariable, old);
        }
    }

    std::string old = temporaryDirectory();
    TempDir dir;
};

TEST_F(TemporaryDirectory, IsTheOneThatTheSystemNames) {
    setVariable(kVariable, dir.path().string());
    EXPECT_EQ(temporaryDirectory(), toName(dir.path()));
    EXPECT_EQ(temporaryDirectory().find('\\'), std::string::npos);
}

TEST_F(TemporaryDirectory, IsNamedByItsBytes) {
    for (const std::string& name : localNames()) {
        fs::create_directory(toPath(dir.file(name)));
        setVariable(kVariable, dir.file(name));
        EXPECT_EQ(temporaryDirectory(), toName(dir.path()) + "/" + name);
    }
}

TEST_F(TemporaryDirectory, HasNoClosingSlash) {
    fs::create_directory(dir.file("a"));
    fs::create_directory(dir.file("b"));
    setVariable(kVariable, dir.file("a/"));
    EXPECT_EQ(temporaryDirectory(), toName(dir.path()) + "/a");
    setVariable(kVariable, dir.file("a//../b/."));
    EXPECT_EQ(temporaryDirectory(), toName(dir.path()) + "/b");
    if (!kIsWindows) {
        setVariable(kVariable, "/");
        EXPECT_EQ(temporaryDirectory(), "/");
    }
}

TEST_F(TemporaryDirectory, IsAbsolute) {
    if (kIsWindows) {
        GTEST_SKIP() << "only absolute directories can be named there";
    }
    const fs::path start = fs::current_path();
    fs::current_path(dir.path());
    fs::create_directory("relative");
    setVariable(kVariable, "relative");
    EXPECT_EQ(temporaryDirectory(), dir.file("relative"));
    fs::current_path(start);
    setVariable(kVariable, "");
    EXPECT_EQ(temporaryDirectory(), fs::canonical("/tmp").string());
    unsetVariable(kVariable);
    EXPECT_EQ(temporaryDirectory(), fs::canonical("/tmp").string());
}

TEST_F(TemporaryDirectory, HasNoLinksOnItsWay) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows links are for users with a privilege";
    }
    fs::create_directories(dir.file("real/inner"));
    fs::create_directory_symlink("real", dir.file("link"));
    setVariable(kVariable, dir.file("link/inner"));
    EXPECT_EQ(temporaryDirectory(), dir.file("real/inner"));
    setVariable(kVariable, dir.file("link"));
    EXPECT_EQ(temporaryDirectory(), dir.file("real"));
}

TEST_F(TemporaryDirectory, MustExist) {
    if (kIsWindows) {
        GTEST_SKIP() << "there it is looked for when it is used";
    }
    setVariable(kVariable, dir.file("missing"));
    EXPECT_EQ(temporaryDirectory(), "");
    fs::create_directory_symlink("nowhere", dir.file("dangling"));
    setVariable(kVariable, dir.file("dangling"));
    EXPECT_EQ(temporaryDirectory(), "");
}

TEST(PrivateDirectory, IsTheUsersAlone) {
    const TempDir dir;
    const std::string name = dir.file("private");
    EXPECT_TRUE(createPrivateDirectory(name));
    EXPECT_TRUE(fs::is_directory(name));
    if (!kIsWindows) {
        EXPECT_EQ(fs::status(name).permissions(), fs::perms::owner_all);
    }
    EXPECT_FALSE(createPrivateDirectory(name));
    writeFile(dir.file("file"), "kept");
    EXPECT_FALSE(createPrivateDirectory(dir.file("file")));
    EXPECT_FALSE(createPrivateDirectory(dir.file("missing/private")));
    EXPECT_FALSE(createPrivateDirectory(""));
    for (const std::string& localName : localNames()) {
        EXPECT_TRUE(createPrivateDirectory(dir.file(localName)));
        EXPECT_TRUE(fs::is_directory(toPath(dir.file(localName))));
    }
}

}  // namespace
}  // namespace quillmark
