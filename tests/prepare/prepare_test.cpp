// Files: what is replaced when, and what stays.

#include "quillmark/prepare.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <zlib.h>

#include "preparing.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

using preparing::moduleOf;

std::string gzip(const std::string& text) {
    constexpr int kGzipWindow = 15 + 16;
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, kGzipWindow, 8, Z_DEFAULT_STRATEGY);
    std::string packed(text.size() + 1000, '\0');
    std::string input = text;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    return packed;
}

/// More than is read at once.
std::string longContent() {
    std::string text;
    while (text.size() < std::size_t{1024} * 1024) {
        text += "/begin UNIT u" + std::to_string(text.size()) + " \"\" \"m\" DERIVED /end UNIT\n";
    }
    return text;
}

class PrepareFiles : public testing::Test {
  protected:
    PrepareResult run(const std::string& text, const PrepareOptions& options) {
        writeFile(directory_.file("in.a2l"), text);
        return prepare(directory_.file("in.a2l"), options, [this](const PrepareFinding& finding) {
            findings_ += std::string(finding.text) + "\n";
        });
    }

    /// How many files there are besides the description.
    [[nodiscard]] std::ptrdiff_t otherFiles() const {
        const std::filesystem::directory_iterator files(directory_.path());
        return std::distance(begin(files), end(files)) - 1;
    }

    TempDir directory_;
    std::string findings_;
};

TEST_F(PrepareFiles, AreReplacedWhenAllIsThere) {
    const std::string out = directory_.file("out.a2l");
    writeFile(out, "old");
    EXPECT_EQ(run(moduleOf(""), PrepareOptions().setOutput(out)), PrepareResult::Ready);
    EXPECT_EQ(readFile(out), moduleOf(""));
    EXPECT_EQ(otherFiles(), 1);
}

/// What is written before anything is found may be known better afterwards.
TEST_F(PrepareFiles, ShrinkByWhatIsFoundLate) {
    const std::string out = directory_.file("out.a2l");
    const std::string map = directory_.file("map");
    std::string names;
    for (int i = 0; i < 100000; ++i) {
        names += " a.b";
    }
    const auto description = [](const std::string& group, const std::string& types) {
        return "/begin PROJECT P \"\" /begin MODULE M \"\"\n/begin GROUP G \"\" /begin "
               "REF_MEASUREMENT x" +
               group + " /end REF_MEASUREMENT /end GROUP" + types + "\n/end MODULE /end PROJECT\n";
    };
    EXPECT_EQ(
        run(description(names,
                        "\n/begin TYPEDEF_STRUCTURE S \"\" 4 /begin STRUCTURE_COMPONENT b T 0 "
                        "ADDRESS_TYPE PBYTE /end STRUCTURE_COMPONENT /end TYPEDEF_STRUCTURE"
                        "\n/begin INSTANCE a \"\" S 0 /end INSTANCE"),
            PrepareOptions().setOutput(out).setMap(map)),
        PrepareResult::WithLoss);
    EXPECT_EQ(readFile(out), description("", ""));
    const std::string in = directory_.file("in.a2l");
    EXPECT_EQ(readFile(map), "1\t2\t" + in + "\t1\n3\t1\t" + in + "\t5\n");
}

TEST_F(PrepareFiles, StayAfterAnError) {
    const std::string out = directory_.file("out.a2l");
    writeFile(out, "old");
    EXPECT_EQ(run("/begin PROJECT P \"\"", PrepareOptions().setOutput(out)), PrepareResult::Failed);
    EXPECT_EQ(readFile(out), "old");
    EXPECT_EQ(otherFiles(), 1);
}

TEST_F(PrepareFiles, MayBePipes) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows no pipe has the name of a file";
    }
    const std::string pipe = directory_.file("pipe");
    const std::string out = directory_.file("out.a2l");
    const std::string units = longContent();
    ASSERT_TRUE(makePipe(pipe));
    std::thread writer([&] { writeFile(pipe, moduleOf("\na\n" + units)); });
    // To ask the reader is to read all of it in between.
    PrepareOptions options;
    options.setOutput(out).setReader([](const ByteSource& description) {
        std::array<char, 65536> block;
        while (description(block.data(), block.size()) > 0) {
        }
        return false;
    });
    EXPECT_EQ(prepare(pipe, options, {}), PrepareResult::WithLoss);
    writer.join();
    EXPECT_EQ(readFile(out), moduleOf("\n" + units));
}

TEST_F(PrepareFiles, ObeyOptionsThatWereMovedAway) {
    PrepareOptions options;
    const PrepareOptions kept = std::move(options);
    options = kept;
    options.setOutput(directory_.file("out.a2l"));
    EXPECT_EQ(run(moduleOf(""), options), PrepareResult::Ready);
    EXPECT_EQ(otherFiles(), 1);
}

TEST_F(PrepareFiles, CanBeReplacedByThemselves) {
    const std::string in = directory_.file("in.a2l");
    EXPECT_EQ(run(moduleOf("\njunk"), PrepareOptions().setOutput(in)), PrepareResult::WithLoss);
    EXPECT_EQ(readFile(in), moduleOf(""));
}

TEST_F(PrepareFiles, AreMadeWhereLinksLead) {
    const std::string link = directory_.file("link.a2l");
    std::error_code error;
    std::filesystem::create_symlink("target.a2l", link, error);
    if (error) {
        GTEST_SKIP() << "on Windows links are for users with a privilege";
    }
    for (int i = 0; i < 2; ++i) {  // the first time the link leads nowhere
        EXPECT_EQ(run(moduleOf(""), PrepareOptions().setOutput(link)), PrepareResult::Ready);
        EXPECT_EQ(readFile(directory_.file("target.a2l")), moduleOf(""));
        EXPECT_TRUE(std::filesystem::is_symlink(link));
    }
    EXPECT_EQ(otherFiles(), 2);
}

TEST_F(PrepareFiles, AreNotMadeWithoutAName) {
    EXPECT_EQ(run(moduleOf("junk"), PrepareOptions()), PrepareResult::WithLoss);
    EXPECT_EQ(otherFiles(), 0);
}

TEST_F(PrepareFiles, MayBePacked) {
    const std::string out = directory_.file("out.a2l");
    EXPECT_EQ(run(gzip(moduleOf("")), PrepareOptions().setOutput(out)), PrepareResult::Ready);
    EXPECT_EQ(readFile(out), moduleOf(""));
    EXPECT_EQ(findings_, "unpacked (gzip)\n");
    EXPECT_EQ(run(gzip(moduleOf("")) + gzip(moduleOf("")), PrepareOptions().setOutput(out)),
              PrepareResult::Ready);
    EXPECT_EQ(readFile(out), moduleOf("") + moduleOf(""));
    const std::string whole = gzip(moduleOf(""));
    EXPECT_EQ(run(whole.substr(0, whole.size() - 9), PrepareOptions().setOutput(out)),
              PrepareResult::Failed);
}

TEST_F(PrepareFiles, ThatCannotBeReadOrWrittenAreErrors) {
    EXPECT_EQ(prepare(directory_.file("none"), PrepareOptions(), {}), PrepareResult::Failed);
    EXPECT_EQ(run(moduleOf(""), PrepareOptions().setOutput(directory_.file("no/out.a2l"))),
              PrepareResult::Failed);
}

TEST_F(PrepareFiles, CanBeTraced) {
    const std::string out = directory_.file("out.a2l");
    const std::string map = directory_.file("map");
    writeFile(directory_.file("unit.inc"), "/begin UNIT u \"\" \"m\" DERIVED /end UNIT\n");
    EXPECT_EQ(run(moduleOf("/include \"unit.inc\""), PrepareOptions().setOutput(out).setMap(map)),
              PrepareResult::Ready);
    const std::string in = directory_.file("in.a2l");
    EXPECT_EQ(readFile(map), "1\t3\t" + in + "\t1\n4\t1\t" + directory_.file("unit.inc") +
                                 "\t1\n5\t3\t" + in + "\t4\n");
}

TEST_F(PrepareFiles, StayAsTheyAreIfTheReaderTakesThem) {
    const std::string out = directory_.file("out.a2l");
    const std::string odd = moduleOf("/begin UNHEARD /end OTHER");
    std::string read;
    PrepareOptions options;
    options.setOutput(out).setReader([&read](const ByteSource& description) {
        char bytes[1000];
        read.assign(bytes, description(bytes, sizeof bytes));
        return true;
    });
    EXPECT_EQ(run(odd, options), PrepareResult::Ready);
    EXPECT_EQ(readFile(out), odd);
    EXPECT_EQ(read, odd);
    EXPECT_EQ(findings_, "");
}

TEST_F(PrepareFiles, AreMendedIfTheReaderRefusesThem) {
    const std::string out = directory_.file("out.a2l");
    int asked = 0;
    PrepareOptions options;
    options.setOutput(out).setReader([&asked](const ByteSource&) {
        ++asked;
        return false;
    });
    EXPECT_EQ(run(moduleOf("\na\nb"), options), PrepareResult::WithLoss);
    EXPECT_EQ(readFile(out), moduleOf(""));
    EXPECT_EQ(asked, 1);
}

TEST_F(PrepareFiles, WithIncludesAreNotShownToTheReader) {
    PrepareOptions options;
    options.setReader([](const ByteSource&) { return true; });
    EXPECT_EQ(run(moduleOf("/include none"), options), PrepareResult::Failed);
}

TEST_F(PrepareFiles, MayBeInMemory) {
    writeFile(directory_.file("unit.inc"), "/begin UNIT u \"\" \"m\" DERIVED /end UNIT");
    const std::string name = directory_.file("in.a2l");
    const std::string description = moduleOf("/include \"unit.inc\"");
    std::string text = "old";
    EXPECT_EQ(prepareMemory(description, name, PrepareOptions(), text, {}), PrepareResult::Ready);
    EXPECT_EQ(text, moduleOf("/begin UNIT u \"\" \"m\" DERIVED /end UNIT\n"));

    std::string untouched = "old";
    const std::string out = directory_.file("out.a2l");
    EXPECT_EQ(prepareMemory(description, name, PrepareOptions().setOutput(out), untouched, {}),
              PrepareResult::Ready);
    EXPECT_EQ(readFile(out), text);
    EXPECT_EQ(untouched, "old");

    std::string file;
    EXPECT_EQ(prepareMemory(moduleOf("/include none"), name, PrepareOptions(), text,
                            [&file](const PrepareFinding& finding) { file = finding.file; }),
              PrepareResult::Failed);
    EXPECT_EQ(text, "");
    EXPECT_EQ(file, name);
}

TEST_F(PrepareFiles, OfOptionsCanBeCopied) {
    PrepareOptions options;
    options.setSeparator("_");
    const PrepareOptions copy = options;
    options = copy;
    EXPECT_EQ(run(moduleOf(""), copy), PrepareResult::Ready);
}

}  // namespace
}  // namespace quillmark
