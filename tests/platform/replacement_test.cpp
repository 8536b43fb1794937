#include "platform/replacement.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/refusals.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

TEST(Replacement, LeavesNamesWithoutLinksAlone) {
    const TempDir dir;
    writeFile(dir.file("file"), "");
    for (const std::string& name : {dir.file("file"), dir.file("missing"), dir.file("a//../file"),
                                    std::string("relative"), std::string()}) {
        EXPECT_EQ(withoutLinks(name), name);
    }
}

TEST(Replacement, FollowsLinksToWhatTheyPointTo) {
    if (kIsWindows) {
        GTEST_SKIP() << "not everybody may make links there";
    }
    const TempDir dir;
    fs::create_directory(dir.file("other"));
    writeFile(dir.file("other/file"), "");
    fs::create_symlink("file", dir.file("other/inner"));
    fs::create_symlink("other/inner", dir.file("outer"));
    EXPECT_EQ(withoutLinks(dir.file("outer")), dir.file("other/file"));
    fs::create_symlink(dir.file("other/file"), dir.file("absolute"));
    EXPECT_EQ(withoutLinks(dir.file("absolute")), dir.file("other/file"));
    fs::create_symlink("missing", dir.file("other/nowhere"));
    EXPECT_EQ(withoutLinks(dir.file("other/nowhere")), dir.file("other/missing"));
    fs::create_symlink("circle", dir.file("circle"));
    EXPECT_EQ(withoutLinks(dir.file("circle")), dir.file("circle"));
}

TEST(Replacement, KnowsWhatNoFileReplaces) {
    const TempDir dir;
    writeFile(dir.file("file"), "");
    EXPECT_FALSE(isNoPlainFile(dir.file("file")));
    EXPECT_FALSE(isNoPlainFile(dir.file("missing")));
    EXPECT_TRUE(isNoPlainFile(dir.path().string()));
    if (makePipe(dir.file("pipe"))) {
        EXPECT_TRUE(isNoPlainFile(dir.file("pipe")));
    }
}

TEST(Replacement, TakesThePlaceOfAFile) {
    const TempDir dir;
    const std::string name = dir.file("file");
    writeFile(name, "old");
    const std::string part = createPart(name);
    ASSERT_NE(part, "");
    EXPECT_EQ(fs::path(part).parent_path(), dir.path());
    EXPECT_NE(createPart(name), part);
    writeFile(part, "new");
    EXPECT_TRUE(putInPlace(part, name));
    EXPECT_EQ(readFile(name), "new");
    EXPECT_FALSE(fs::exists(part));
    EXPECT_FALSE(putInPlace(part, name));
    EXPECT_EQ(readFile(name), "new");
}

TEST(Replacement, NeedsADirectory) {
    const TempDir dir;
    EXPECT_EQ(createPart(dir.file("missing/file")), "");
    removePart(dir.file("missing/file"));
}

TEST(Replacement, LeavesAFileThatMayNotBeWritten) {
    const TempDir dir;
    const std::string name = dir.file("file");
    writeFile(name, "old");
    EXPECT_FALSE(isWriteProtected(name));
    EXPECT_FALSE(isWriteProtected(dir.file("missing")));
    fs::permissions(dir.path(), fs::perms::all);
    fs::permissions(name, fs::perms::owner_read);
    const OrdinaryUser user;
    if (!user.isOrdinary()) {
        GTEST_SKIP() << "nothing is refused to the superuser";
    }
    EXPECT_TRUE(isWriteProtected(name));
    EXPECT_EQ(createPart(name), "");
    EXPECT_NE(createPart(dir.file("missing")), "");
}

}  // namespace
}  // namespace quillmark
