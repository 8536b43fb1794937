#include "app/decompress_command.h"

#include <filesystem>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "cfginclude/blob_codec.h"
#include "support/collecting_console.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

void printStandIn(Console& console) {
    console.printLine("(usage)");
}

std::string packed(std::string_view text) {
    std::string stream;
    EXPECT_EQ(compressBuffer(text, stream), 0);
    std::string base64;
    base64Encode(stream, base64, "\r\n");
    return "<a>\r\n    <blob>\r\nsize=1\r\n<blobdata>\r\n" + base64 +
           "\r\n</blobdata>\r\n    </blob>\r\n</a>\r\n";
}

class Decompress : public testing::Test {
  protected:
    int run(std::vector<std::string> names) {
        names.insert(names.begin(), {"quillmark", "decompress"});
        std::vector<const char*> argv;
        argv.reserve(names.size() + 1);
        for (const std::string& name : names) {
            argv.push_back(name.c_str());
        }
        argv.push_back(nullptr);
        return decompressCommand(static_cast<int>(names.size()), argv.data(), console_,
                                 &printStandIn);
    }

    TempDir directory_;
    std::string in_ = directory_.file("in.cfginclude");
    std::string out_ = directory_.file("out.cfginclude");
    CollectingConsole console_;
};

TEST_F(Decompress, WantsTwoNames) {
    EXPECT_EQ(run({}), 1);
    EXPECT_EQ(console_.out, "Error: no valid input file specified.\n(usage)\n");
    console_.out.clear();
    EXPECT_EQ(run({in_}), 1);
    EXPECT_EQ(console_.out, "Error: no valid output file specified.\n(usage)\n");
}

TEST_F(Decompress, WritesTheExpandedDocument) {
    writeFile(in_, packed("<signals>\r\n</signals>\r\n"));
    writeFile(out_, std::string(10000, 'x'));
    EXPECT_EQ(run({in_, out_, "ignored"}), 0);
    EXPECT_EQ(console_.out, "Decompressing was successful.\n");
    EXPECT_EQ(console_.err, "");
    EXPECT_EQ(readFile(out_), "<a>\r\n    <signals>\r\n</signals>\r\n</a>\r\n");
}

TEST_F(Decompress, ReportsAnInputThatCannotBeOpened) {
    EXPECT_EQ(run({in_, out_}), 1);
    EXPECT_EQ(console_.out, "ERROR: Cannot open input file: " + in_ + "\n");
    EXPECT_FALSE(std::filesystem::exists(out_));
    console_.out.clear();
    EXPECT_EQ(run({"", out_}), 1);
    EXPECT_EQ(console_.out, "ERROR: Cannot open input file: \n");
}

TEST_F(Decompress, TakesAPlainIncludeFileForCorrupt) {
    for (const std::string_view content :
         {"", "<sigtrak_include>\r\n</sigtrak_include>\r\n", "<blob>\r\n</blob>\r\n",
          "<blobdata></blobdata><blob></blob>"}) {
        writeFile(in_, content);
        console_.out.clear();
        EXPECT_EQ(run({in_, out_}), -1);
        EXPECT_EQ(console_.out, "Error: File is corrupt or not a compressed file.\n");
        EXPECT_FALSE(std::filesystem::exists(out_));
    }
}

TEST_F(Decompress, TakesADirectoryForCorrupt) {
    if (kIsWindows) {
        GTEST_SKIP() << "Windows opens no directory as a file";
    }
    EXPECT_EQ(run({directory_.path().string(), out_}), -1);
    EXPECT_EQ(console_.out, "Error: File is corrupt or not a compressed file.\n");
}

TEST_F(Decompress, LeavesTheOutputAloneWhenTheInputIsCorrupt) {
    writeFile(in_, "no blob");
    writeFile(out_, "kept");
    EXPECT_EQ(run({in_, out_}), -1);
    EXPECT_EQ(readFile(out_), "kept");
}

TEST_F(Decompress, ReportsAnOutputThatCannotBeOpened) {
    writeFile(in_, packed("text"));
    const std::string name = directory_.file("missing/out.cfginclude");
    EXPECT_EQ(run({in_, name}), 1);
    EXPECT_EQ(console_.out, "Error: Cannot open output file: " + name + "\n");
}

TEST_F(Decompress, ReportsAnOutputThatCannotBeWritten) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "this system has no /dev/full";
    }
    writeFile(in_, packed("text"));
    EXPECT_EQ(run({in_, "/dev/full"}), -1);
    EXPECT_EQ(console_.out, "Error: File writing failed.\n");
    console_.out.clear();
    writeFile(in_, packed(std::string(5000000, 'x')));
    EXPECT_EQ(run({in_, "/dev/full"}), -1);
    EXPECT_EQ(console_.out, "Error: File writing failed.\n");
}

TEST_F(Decompress, MayReplaceItsInput) {
    writeFile(in_, packed("text\r\n"));
    EXPECT_EQ(run({in_, in_}), 0);
    EXPECT_EQ(readFile(in_), "<a>\r\n    text\r\n</a>\r\n");
}

TEST_F(Decompress, KeepsWhatADamagedBlobHolds) {
    writeFile(in_, "a<blob><blobdata>no stream</blobdata></blob>\r\nb");
    EXPECT_EQ(run({in_, out_}), 0);
    EXPECT_EQ(console_.out, "Decompressing was successful.\n");
    EXPECT_EQ(readFile(out_), "ab");
}

// Stands for memory that runs out: the first text finds none.
class ExhaustedConsole final : public Console {
  public:
    std::string out;

    void print(std::string_view text) override {
        if (!failed_) {
            failed_ = true;
            throw std::bad_alloc();
        }
        out += text;
    }
    void printError(std::string_view) override {}
    void flush() override {}

  private:
    bool failed_ = false;
};

TEST_F(Decompress, ReportsThatMemoryRanOut) {
    ExhaustedConsole console;
    const char* const argv[] = {"quillmark", "decompress", in_.c_str(), out_.c_str(), nullptr};
    EXPECT_EQ(decompressCommand(4, argv, console, &printStandIn), -1);
    EXPECT_EQ(console.out, "Error: File writing failed.\n");
}

}  // namespace
}  // namespace quillmark
