#include "platform/output_sink.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/faulty_file.h"
#include "support/refusals.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string patternOf(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        text[i] = static_cast<char>(i * 7 + i / 251);
    }
    return text;
}

// Records how the bytes arrived.
class RecordingSink final : public OutputSink {
  public:
    std::string text;
    std::vector<std::size_t> drained;
    int ends = 0;

  protected:
    void drain(std::string_view bytes) override {
        drained.push_back(bytes.size());
        text += bytes;
    }
    void end() override { ++ends; }
};

TEST(OutputSink, KeepsTheOrderOfPiecesOfAnySize) {
    const std::string expected = patternOf(5 * OutputSink::kBufferSize + 1234);
    for (const std::size_t piece :
         {std::size_t{1000}, std::size_t{4097}, OutputSink::kBufferSize - 1,
          OutputSink::kBufferSize, OutputSink::kBufferSize + 1, expected.size()}) {
        RecordingSink sink;
        for (std::size_t at = 0; at < expected.size(); at += piece) {
            sink.write(std::string_view(expected).substr(at, piece));
        }
        sink.finish();
        EXPECT_TRUE(sink.text == expected) << piece;
        EXPECT_TRUE(sink.ok());
    }
}

TEST(OutputSink, IndentsByAnyNumberOfBlanksAtAnyPlace) {
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{3}, std::size_t{100}, OutputSink::kBufferSize + 5}) {
        std::string expected = patternOf(OutputSink::kBufferSize - 2500);
        RecordingSink sink;
        sink.write(expected);
        for (std::size_t blanks = 0; blanks <= 100; ++blanks) {
            const std::string bytes = patternOf(length);
            sink.writeIndented(blanks, bytes);
            expected += std::string(blanks, ' ') + bytes;
        }
        sink.finish();
        EXPECT_TRUE(sink.text == expected) << length;
    }
}

TEST(OutputSink, LetsPiecesBePutTogetherInPlace) {
    std::string expected;
    RecordingSink sink;
    for (std::size_t size = 0; expected.size() < 3 * OutputSink::kBufferSize;
         size = (size + 13) % (OutputSink::kRoom + 1)) {
        const std::string piece = patternOf(size);
        sink.written(std::copy(piece.begin(), piece.end(), sink.room()));
        sink.write("+");
        expected += piece + '+';
    }
    sink.finish();
    EXPECT_TRUE(sink.text == expected);
    for (std::size_t i = 0; i + 1 < sink.drained.size(); ++i) {
        EXPECT_EQ(sink.drained[i], OutputSink::kBufferSize);
    }
}

TEST(OutputSink, HandsOnWholeBuffersUntilTheEnd) {
    const std::string piece = patternOf(OutputSink::kBufferSize - 7);
    const std::string longPiece = patternOf(3 * OutputSink::kBufferSize);
    RecordingSink sink;
    for (int i = 0; i < 5; ++i) {
        sink.write(piece);
        sink.write("abc");
        sink.write(longPiece);
    }
    sink.finish();
    ASSERT_GT(sink.drained.size(), 2U);
    for (std::size_t i = 0; i + 1 < sink.drained.size(); ++i) {
        EXPECT_GT(sink.drained[i], 0U);
        EXPECT_EQ(sink.drained[i] % OutputSink::kBufferSize, 0U);
    }
}

TEST(OutputSink, FinishesOnce) {
    RecordingSink sink;
    sink.write("a");
    sink.write(std::string_view());
    sink.finish();
    sink.finish();
    EXPECT_EQ(sink.text, "a");
    EXPECT_EQ(sink.ends, 1);
    EXPECT_EQ(sink.drained.size(), 1U);
}

TEST(StringSink, AppendsToTheStringOfTheCaller) {
    std::string text = "before ";
    StringSink sink(text);
    sink.write("after");
    sink.finish();
    EXPECT_EQ(text, "before after");
}

TEST(FileSink, ReplacesAnExistingFile) {
    const TempDir directory;
    const std::string name = directory.file("out.bin");
    writeFile(name, "a longer text that was there before");
    {
        FileSink sink(name);
        ASSERT_TRUE(sink.isOpen());
        sink.write("a\r\nb");
        sink.finish();
        EXPECT_TRUE(sink.ok());
    }
    EXPECT_EQ(readFile(name), "a\r\nb");
}

TEST(FileSink, FinishesItself) {
    const TempDir directory;
    const std::string expected = patternOf(2 * OutputSink::kBufferSize + 17);
    { FileSink(directory.file("out.bin")).write(expected); }
    EXPECT_TRUE(readFile(directory.file("out.bin")) == expected);
}

TEST(FileSink, RemembersThatItCouldNotOpen) {
    const TempDir directory;
    for (const std::string& name :
         {directory.file("missing/out.bin"), directory.path().string(), std::string()}) {
        FileSink sink(name);
        EXPECT_FALSE(sink.isOpen());
        sink.write(patternOf(OutputSink::kBufferSize + 1));
        sink.finish();
        EXPECT_FALSE(sink.ok());
    }
}

TEST(FileSink, RemembersThatTheDeviceIsFull) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "this system has no /dev/full";
    }
    FileSink sink("/dev/full");
    ASSERT_TRUE(sink.isOpen());
    sink.write("x");
    sink.finish();
    EXPECT_FALSE(sink.ok());
}

TEST(FileSink, TakesUpInterruptedWrites) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    const std::string expected = patternOf(3 * OutputSink::kBufferSize + 5);
    FaultyFile file({{0, EINTR}, {1000, EINTR}, {OutputSink::kBufferSize, EINTR}});
    {
        FileSink sink(file.open("wb"));
        sink.write(expected);
        sink.finish();
        EXPECT_TRUE(sink.ok());
    }
    EXPECT_TRUE(file.content() == expected);
}

TEST(FileSink, DropsWhatComesAfterAFailure) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    const std::string bytes = patternOf(2 * OutputSink::kBufferSize);
    FaultyFile file({{1000, ENOSPC}});
    FileSink sink(file.open("wb"));
    sink.write(bytes);
    EXPECT_FALSE(sink.ok());
    sink.write(bytes);
    sink.finish();
    EXPECT_FALSE(sink.ok());
    EXPECT_TRUE(file.content() == bytes.substr(0, 1000));
    EXPECT_TRUE(file.isClosed());
}

TEST(FileSink, RemembersThatClosingFailed) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    FaultyFile file({}, {}, EIO);
    FileSink sink(file.open("wb"));
    sink.write("x");
    EXPECT_TRUE(sink.ok());
    sink.finish();
    EXPECT_FALSE(sink.ok());
    EXPECT_EQ(file.content(), "x");
}

TEST(FileSink, AFileThatCannotBeOpenedStaysAsItWas) {
    if (!TooManyFiles::kIsPossible) {
        GTEST_SKIP() << TooManyFiles::kWhyNot;
    }
    const TempDir directory;
    const std::string name = directory.file("out.bin");
    writeFile(name, "old");
    {
        const TooManyFiles refusal;
        FileSink sink(name);
        EXPECT_FALSE(sink.isOpen());
        sink.write("new");
    }
    EXPECT_EQ(readFile(name), "old");
}

TEST(FileSink, AFileThatMayNotBeWrittenStaysAsItWas) {
    const TempDir directory;
    const std::string name = directory.file("out.bin");
    writeFile(name, "old");
    std::filesystem::permissions(name, std::filesystem::perms::owner_read);
    {
        const OrdinaryUser user;
        if (!user.isOrdinary()) {
            GTEST_SKIP() << "nothing is refused to the superuser";
        }
        FileSink sink(name);
        EXPECT_FALSE(sink.isOpen());
        sink.write("new");
    }
    EXPECT_EQ(readFile(name), "old");
}

}  // namespace
}  // namespace quillmark
