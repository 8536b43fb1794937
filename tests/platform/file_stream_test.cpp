#include "platform/file_stream.h"

#include <cstdio>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "platform/file_name.h"
#include "platform/input_file.h"
#include "support/local_names.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

class FileStream : public testing::Test {
  protected:
    TempDir dir;
};

TEST_F(FileStream, IsOpenedByTheBytesOfItsName) {
    for (const std::string& name : localNames()) {
        std::FILE* stream = openStream(dir.file(name), "wb");
        ASSERT_NE(stream, nullptr) << name;
        std::fputs("x\n", stream);
        std::fclose(stream);
        EXPECT_EQ(readFile(dir.file(name)), "x\n") << name;
        stream = openStream(dir.file(name), "r+b");
        ASSERT_NE(stream, nullptr) << name;
        std::fclose(stream);
    }
    EXPECT_EQ(openStream(dir.file("missing"), "rb"), nullptr);
    EXPECT_EQ(openStream("", "rb"), nullptr);
}

TEST_F(FileStream, NothingIsLostToANewFile) {
    EXPECT_TRUE(createEmptyFile(dir.file("new")));
    EXPECT_TRUE(std::filesystem::is_empty(dir.file("new")));
    EXPECT_FALSE(createEmptyFile(dir.file("new")));
    EXPECT_FALSE(createEmptyFile(dir.file("missing/new")));
    EXPECT_FALSE(createEmptyFile(dir.path().string()));
    EXPECT_FALSE(createEmptyFile(""));
    for (const std::string& name : localNames()) {
        writeFile(dir.file(name), "kept");
        EXPECT_FALSE(createEmptyFile(dir.file(name))) << name;
        EXPECT_EQ(readFile(dir.file(name)), "kept") << name;
        EXPECT_TRUE(createEmptyFile(dir.file(name + ".new"))) << name;
        EXPECT_TRUE(std::filesystem::exists(toPath(dir.file(name + ".new")))) << name;
    }
}

/// What a description's reader gets of a file with these bytes.
std::string readAsText(const std::string& name, const std::string& bytes) {
    writeFile(name, bytes);
    const auto input = StandardInputFile::open(name);
    std::string text;
    EXPECT_TRUE(readToEnd(*input, bytes.size(), text));
    return text;
}

TEST_F(FileStream, TextIsWhatTheSystemTakesForIt) {
    struct Row {
        std::string bytes;
        std::string onWindows;
    };
    const std::string large(300000, 'x');
    for (const Row& row : {
             Row{"", ""},
             Row{"a\nb\r\nc\n", "a\nb\nc\n"},
             Row{"\"a\r\nb\"\r\n", "\"a\nb\"\n"},
             Row{"a\rb\r\r\nc\r", "a\rb\r\nc\r"},
             Row{"a\x1a"
                 "b\n",
                 "a"},
             Row{"\x1a", ""},
             Row{large + "\r\n\r\n\xff" + large + "\x1a" + large, large + "\n\n\xff" + large},
         }) {
        const std::string text = readAsText(dir.file("text"), row.bytes);
        EXPECT_TRUE(text == (kIsWindows ? row.onWindows : row.bytes)) << row.bytes.substr(0, 20);
    }
}

TEST_F(FileStream, LineEndsAcrossTheBlocksOfAReader) {
    // Wherever a block ends, half a line end must not be lost or counted twice.
    std::string bytes;
    std::string lines;
    for (int i = 0; i < 100000; ++i) {
        const std::string line(static_cast<std::size_t>(i % 7), 'x');
        bytes += line + "\r\n";
        lines += line + "\n";
    }
    EXPECT_TRUE(readAsText(dir.file("text"), bytes) == (kIsWindows ? lines : bytes));
}

TEST_F(FileStream, OtherFilesComeAsTheyAre) {
    const std::string bytes = "a\r\nb\x1a\r\nc";
    writeFile(dir.file("binary"), bytes);
    std::string read;
    EXPECT_TRUE(readWholeFile(dir.file("binary"), read));
    EXPECT_EQ(read, bytes);
}

}  // namespace
}  // namespace quillmark
