#include "platform/input_file.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

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

void writeFile(const std::string& name, const std::string& bytes) {
    std::FILE* const stream = std::fopen(name.c_str(), "wb");
    ASSERT_NE(stream, nullptr);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fclose(stream);
}

class InputFileTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "/quillmark_input_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        directory = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(directory); }

    std::string path(const std::string& name) const { return directory + "/" + name; }

    std::string directory;
};

TEST_F(InputFileTest, EveryByteComesAsItStands) {
    std::string bytes;
    for (int i = 0; i < 70000; ++i) {
        bytes += static_cast<char>(i % 256);
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
    const auto input = StandardInputFile::open(directory);
    ASSERT_NE(input, nullptr);
    char byte = 0;
    EXPECT_EQ(input->read(&byte, 1), 0U);
    EXPECT_EQ(input->read(&byte, 1), 0U);
}

TEST_F(InputFileTest, PipeIsReadToItsEnd) {
    const std::string name = path("pipe");
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
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

}  // namespace
}  // namespace quillmark
