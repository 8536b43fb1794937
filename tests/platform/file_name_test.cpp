#include "platform/file_name.h"

#include <cstddef>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/local_names.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

TEST(FileName, BytesInBytesOut) {
    EXPECT_EQ(toName(toPath("")), "");
    EXPECT_EQ(toName(toPath("a/b.c")), "a/b.c");
    for (const std::string& name : localNames()) {
        EXPECT_EQ(toName(toPath(name)), name);
        EXPECT_EQ(toName(toPath("directory/" + name).filename()), name);
        EXPECT_EQ(toName(toPath(name + "/file").parent_path()), name);
    }
}

TEST(FileName, IsThatOfTheFile) {
    const TempDir dir;
    for (const std::string& name : localNames()) {
        writeFile(dir.file(name), "x");
        EXPECT_TRUE(std::filesystem::is_regular_file(toPath(dir.file(name)))) << name;
    }
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path())) {
        EXPECT_TRUE(std::filesystem::exists(toPath(dir.file(toName(entry.path().filename())))));
        ++count;
    }
    EXPECT_EQ(count, localNames().size());
}

TEST(FileName, AsPathOfAUri) {
    EXPECT_EQ(toUriPath("a/b c.a2l"), "a/b c.a2l");
    EXPECT_EQ(toUriPath(""), "");
#ifdef _WIN32
    EXPECT_EQ(toUriPath("a\\b.a2l"), "a/b.a2l");
    EXPECT_EQ(toUriPath("C:\\a\\b.a2l"), "/C:/a/b.a2l");
#else
    EXPECT_EQ(toUriPath("/a\\b\xFF"), "/a\\b\xFF");
#endif
}

TEST(FileName, SlashesPartIt) {
    // What is a backslash in a name here parts directories there.
    EXPECT_EQ(toName(toPath("a\\b")), kIsWindows ? "a/b" : "a\\b");
}

TEST(FileName, CharactersThatTheCodePageLacks) {
    if (!kIsWindows) {
        GTEST_SKIP() << "names are bytes here";
    }
    EXPECT_EQ(toName(std::filesystem::path(u"\u0101\u0905")), "");
    EXPECT_EQ(toName(std::filesystem::path(u"a\U0001F600")), "");
}

TEST(FileName, BytesThatAreNoText) {
    if (codePage() != 932) {
        GTEST_SKIP() << "every byte is a character here";
    }
    EXPECT_TRUE(toPath("a\x95").empty());  // half a character
}

TEST(FileName, TheLastPart) {
    EXPECT_EQ(startOfLastPart("", "/"), 0U);
    EXPECT_EQ(startOfLastPart("name", "/"), 0U);
    EXPECT_EQ(startOfLastPart("a/b/name", "/"), 4U);
    EXPECT_EQ(startOfLastPart("a/", "/"), 2U);
    EXPECT_EQ(startOfLastPart("a/b\\name", "/"), 2U);
    EXPECT_EQ(startOfLastPart("a/b\\name", "/\\"), 4U);
    EXPECT_EQ(startOfLastPart("a\\b/name", "/\\"), 4U);
    EXPECT_EQ(startOfLastPart("dir.d\\name", kDirectorySeparators), kIsWindows ? 6U : 0U);
}

TEST(FileName, HalfACharacterIsNoSeparator) {
    // A character of two bytes, of which the second is that of a backslash.
    const bool isOneCharacter = codePage() == 932;
    EXPECT_EQ(startOfLastPart("\x95\x5c.a2l", "/\\"), isOneCharacter ? 0U : 2U);
    EXPECT_EQ(startOfLastPart("d\\\x95\x5c.a2l", "/\\"), isOneCharacter ? 2U : 4U);
    EXPECT_EQ(startOfLastPart("\x95\x5c\\x", "/\\"), 3U);
    EXPECT_EQ(startOfLastPart("d/\x95", "/\\"), 2U);
}

}  // namespace
}  // namespace quillmark
