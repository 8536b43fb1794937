#include "platform/input_file.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "support/faulty_file.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string readAll(InputFile& input, std::size_t block) {
    std::string all;
    std::string buffer(block, '\0');
    while (const std::size_t count = input.read(buffer.data(), block)) {
        all.append(buffer, 0, count);
    }
    return all;
}

std::string patternOf(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        text[i] = static_cast<char>(i * 7 + i / 251);
    }
    return text;
}

class InputFileTest : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return directory.file(name); }

    TempDir directory;
};

TEST_F(InputFileTest, EveryByteComesAsItStands) {
    std::string bytes;
    for (int i = 0; i < 70000; ++i) {
        bytes += static_cast<char>(i % 256);
    }
    if (kIsWindows) {
        std::erase(bytes, '\x1a');  // there it ends a text
    }
    writeFile(path("all"), bytes);
    for (const std::size_t block : {std::size_t{1}, std::size_t{4096}, std::size_t{262144}}) {
        const auto input = StandardInputFile::open(path("all"));
        ASSERT_NE(input, nullptr);
        EXPECT_EQ(readAll(*input, block), bytes) << block;
    }
}

TEST_F(InputFileTest, NameIsABytestring) {
    const std::string name = path(
        "K\xE4"
        "fig \xC3\xA4.a2l");
    writeFile(name, "x");
    const auto input = StandardInputFile::open(name);
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(readAll(*input, 16), "x");
}

TEST_F(InputFileTest, MissingFileGivesNull) {
    EXPECT_EQ(StandardInputFile::open(path("missing")), nullptr);
    EXPECT_EQ(StandardInputFile::open(""), nullptr);
}

TEST_F(InputFileTest, DirectoryOpensAndIsEmpty) {
    const auto input = StandardInputFile::open(directory.path().string());
    if (kIsWindows) {
        EXPECT_EQ(input, nullptr);
        return;
    }
    ASSERT_NE(input, nullptr);
    char byte = 0;
    EXPECT_EQ(input->read(&byte, 1), 0U);
    EXPECT_EQ(input->read(&byte, 1), 0U);
}

TEST_F(InputFileTest, PipeIsReadToItsEnd) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows no pipe has the name of a file";
    }
    const std::string name = path("pipe");
    ASSERT_TRUE(makePipe(name));
    const std::string bytes(200000, 'p');
    std::thread writer([&] { writeFile(name, bytes); });
    const auto input = StandardInputFile::open(name);
    std::string all;
    if (input != nullptr) {
        all = readAll(*input, 65536);
    }
    writer.join();
    EXPECT_EQ(all, bytes);
}

TEST(StandardInputFile, TakesUpInterruptedReads) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    const std::string expected = patternOf(5000);
    FaultyFile file({{0, EINTR}, {17, EINTR}, {4096, EINTR}, {5000, EINTR}}, expected);
    {
        StandardInputFile input(file.open("rb"));
        EXPECT_TRUE(readAll(input, 1000) == expected);
        EXPECT_FALSE(input.failed());
    }
    EXPECT_TRUE(file.isClosed());
}

TEST(StandardInputFile, EndsWhereItCannotBeReadAnyFurther) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    const std::string content = patternOf(5000);
    FaultyFile file({{4321, EIO}}, content);
    StandardInputFile input(file.open("rb"));
    EXPECT_TRUE(readAll(input, 1000) == content.substr(0, 4321));
    char byte = 0;
    EXPECT_EQ(input.read(&byte, 1), 0U);
    EXPECT_TRUE(input.failed());
}

TEST(MemoryInputFile, HandsOutChunks) {
    MemoryInputFile whole("abcdefg");
    char buffer[8] = {};
    EXPECT_EQ(whole.read(buffer, sizeof buffer), 7U);
    EXPECT_EQ(whole.read(buffer, sizeof buffer), 0U);

    MemoryInputFile chunked("abcdefg", 3);
    EXPECT_EQ(chunked.read(buffer, sizeof buffer), 3U);
    EXPECT_EQ(chunked.read(buffer, 2), 2U);
    EXPECT_EQ(chunked.read(buffer, sizeof buffer), 2U);
    EXPECT_EQ(chunked.read(buffer, sizeof buffer), 0U);

    MemoryInputFile empty("");
    EXPECT_EQ(empty.read(buffer, sizeof buffer), 0U);
}

TEST(ReadToEnd, NeedsNoGoodGuessOfTheSize) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{65535}, std::size_t{65536},
                                   std::size_t{65537}, std::size_t{300000}}) {
        const std::string expected = patternOf(size);
        for (const std::size_t guess : {std::size_t{0}, size, size + 1, 2 * size}) {
            MemoryInputFile input(expected, 7777);
            std::string bytes = "old";
            EXPECT_TRUE(readToEnd(input, guess, bytes));
            EXPECT_TRUE(bytes == expected) << size << " " << guess;
        }
    }
}

TEST(ReadToEnd, TellsOfAnErrorAndKeepsWhatCameBefore) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    FaultyFile file({{100, EINTR}, {70000, EIO}}, patternOf(90000));
    StandardInputFile input(file.open("rb"));
    std::string bytes;
    EXPECT_FALSE(readToEnd(input, 90000, bytes));
    EXPECT_TRUE(bytes == patternOf(70000));
}

TEST(ReadWholeFile, ReadsEveryByte) {
    const TempDir directory;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{65535},
                                   std::size_t{65536}, std::size_t{65537}, std::size_t{300000}}) {
        const std::string expected = patternOf(size);
        writeFile(directory.file("in.bin"), expected);
        std::string bytes = "old";
        ASSERT_TRUE(readWholeFile(directory.file("in.bin"), bytes));
        EXPECT_TRUE(bytes == expected) << size;
    }
}

TEST(ReadWholeFile, ReportsAMissingFile) {
    const TempDir directory;
    std::string bytes = "old";
    EXPECT_FALSE(readWholeFile(directory.file("missing"), bytes));
    EXPECT_EQ(bytes, "");
}

TEST(ReadWholeFile, CannotReadADirectory) {
    const TempDir directory;
    std::string bytes = "old";
    EXPECT_FALSE(readWholeFile(directory.path().string(), bytes));
    EXPECT_EQ(bytes, "");
}

TEST(ReadWholeFile, ReadsAPipeToItsEnd) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows no pipe has the name of a file";
    }
    const TempDir directory;
    const std::string name = directory.file("fifo");
    ASSERT_TRUE(makePipe(name));
    const std::string expected = patternOf(200000);
    std::thread writer([&] { writeFile(name, expected); });
    std::string bytes;
    EXPECT_TRUE(readWholeFile(name, bytes));
    writer.join();
    EXPECT_TRUE(bytes == expected);
}

}  // namespace
}  // namespace quillmark
