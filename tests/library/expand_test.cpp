#include "quillmark/expand.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "cfginclude/blob_codec.h"
#include "library/expand_input.h"
#include "support/faulty_file.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string packed(std::string_view text) {
    std::string stream;
    EXPECT_EQ(compressBuffer(text, stream), 0);
    std::string base64;
    base64Encode(stream, base64, "\r\n");
    return "<a>\r\n    <blob>\r\nsize=1\r\n<blobdata>\r\n" + base64 +
           "\r\n</blobdata>\r\n    </blob>\r\n</a>\r\n";
}

TEST(Expand, InMemory) {
    std::string text;
    EXPECT_EQ(expand(packed("text\r\n"), text), ExpandStatus::Done);
    EXPECT_EQ(text, "<a>\r\n    text\r\n</a>\r\n");
    EXPECT_EQ(expand("<a></a>", text), ExpandStatus::NotCompressed);
    EXPECT_EQ(expand(packed("text"), [](std::string_view) { return false; }),
              ExpandStatus::NotWritten);
}

TEST(Expand, FromFileToFile) {
    const TempDir directory;
    const std::string in = directory.file("in");
    const std::string out = directory.file("out");
    EXPECT_EQ(expandFile(in, out), ExpandStatus::NotOpened);
    writeFile(in, "no blob");
    EXPECT_EQ(expandFile(in, out), ExpandStatus::NotCompressed);
    EXPECT_FALSE(std::filesystem::exists(out));
    writeFile(in, packed("text\r\n"));
    EXPECT_EQ(expandFile(in, directory.file("no/out")), ExpandStatus::OutputNotOpened);
    EXPECT_EQ(expandFile(in, out), ExpandStatus::Done);
    EXPECT_EQ(readFile(out), "<a>\r\n    text\r\n</a>\r\n");
    EXPECT_EQ(expandFile(in, in), ExpandStatus::Done);
    EXPECT_EQ(readFile(in), readFile(out));
}

TEST(Expand, DoesNotTakeWhatCouldNotBeReadForTheEnd) {
    if (!FaultyFile::kIsPossible) {
        GTEST_SKIP() << FaultyFile::kWhyNot;
    }
    const TempDir directory;
    const std::string out = directory.file("out");
    const std::string document = packed(std::string(200000, 'x'));
    writeFile(out, "kept");
    for (const std::size_t position : {document.size() / 2, document.size()}) {
        FaultyFile file({{position, EIO}}, document);
        EXPECT_EQ(expandInput(std::make_unique<StandardInputFile>(file.open("rb")), 0, out),
                  ExpandStatus::NotCompressed);
        EXPECT_EQ(readFile(out), "kept");
        EXPECT_TRUE(file.isClosed());
    }
}

}  // namespace
}  // namespace quillmark
