#include "cfginclude/blob_codec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "cfginclude/cfg_element.h"
#include "platform/output_sink.h"
#include "support/system.h"

namespace quillmark {
namespace {

std::string randomBytes(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

// Text that looks like a section: compressible, with matches at all distances.
std::string sectionText(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < size) {
        text += "<signal>\r\nname=sig_" + std::to_string(random() % 5000) + "\r\nmta=0x" +
                std::to_string(random() % 100000) + "\r\n</signal>\r\n";
    }
    text.resize(size);
    return text;
}

// What one call after the other on the whole input gives, by zlib alone.
std::string deflatedAtOnce(std::string_view input) {
    z_stream stream{};
    deflateInit(&stream, -1);
    std::string copy(input);
    stream.next_in = reinterpret_cast<Bytef*>(copy.data());
    stream.avail_in = static_cast<uInt>(copy.size());
    std::string output;
    std::array<char, 16384> work{};
    do {
        stream.next_out = reinterpret_cast<Bytef*>(work.data());
        stream.avail_out = static_cast<uInt>(work.size());
        deflate(&stream, Z_FINISH);
        output.append(work.data(), work.size() - stream.avail_out);
    } while (stream.avail_out == 0);
    deflateEnd(&stream);
    return output;
}

std::string inflatedAtOnce(std::string_view input) {
    z_stream stream{};
    inflateInit(&stream);
    std::string copy(input);
    stream.next_in = reinterpret_cast<Bytef*>(copy.data());
    stream.avail_in = static_cast<uInt>(copy.size());
    std::string output;
    std::array<char, 16384> work{};
    do {
        stream.next_out = reinterpret_cast<Bytef*>(work.data());
        stream.avail_out = static_cast<uInt>(work.size());
        inflate(&stream, Z_FINISH);
        output.append(work.data(), work.size() - stream.avail_out);
    } while (stream.avail_out == 0);
    inflateEnd(&stream);
    return output;
}

std::string compressed(std::string_view input) {
    std::string output;
    EXPECT_EQ(compressBuffer(input, output), 0);
    return output;
}

std::string uncompressed(std::string_view input) {
    std::string output;
    EXPECT_EQ(uncompressBuffer(input, output), 0);
    return output;
}

std::string encoded(std::string_view input, std::string_view lineBreak = "\r\n") {
    std::string output = "old";
    base64Encode(input, output, lineBreak);
    return output;
}

std::string decoded(std::string_view input) {
    std::string output = "old";
    const std::size_t size = base64Decode(input, output);
    EXPECT_EQ(size, output.size());
    return output;
}

std::string blobAround(std::string_view base64) {
    CfgElement blob("blob");
    blob.addIntValue("size", 0);
    blob.addChild("blobdata").addText(std::string(base64));
    std::string text;
    StringSink sink(text);
    blob.write(sink, false, 0);
    sink.finish();
    return text;
}

std::string expanded(std::string_view document) {
    std::string text;
    StringSink sink(text);
    EXPECT_TRUE(expandBlob(document, sink));
    sink.finish();
    return text;
}

bool hasBlob(std::string_view document) {
    std::string text;
    StringSink sink(text);
    const bool found = expandBlob(document, sink);
    sink.finish();
    EXPECT_TRUE(found || text.empty());
    return found;
}

TEST(Base64Value, KnowsTheAlphabetAndNothingElse) {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const std::size_t at = kAlphabet.find(character);
        EXPECT_EQ(base64Value(character), at == std::string_view::npos ? 0 : at) << code;
    }
}

TEST(Base64Encode, FollowsTheStandard) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {std::string("\xff\xfe\0", 3), "//4A"},
    };
    for (const auto& [bytes, text] : rows) {
        std::string output = "old";
        EXPECT_EQ(base64Encode(bytes, output, "\r\n"), static_cast<std::int64_t>(text.size()));
        EXPECT_EQ(output, text);
        EXPECT_EQ(decoded(text), bytes);
    }
}

TEST(Base64Encode, BreaksTheLineAfterEvery76Characters) {
    const std::string line(76, 'A');
    std::string output;
    EXPECT_EQ(base64Encode(std::string(56, '\0'), output, "\r\n"), 76);
    EXPECT_EQ(output, std::string(75, 'A') + "=");
    EXPECT_EQ(base64Encode(std::string(57, '\0'), output, "\r\n"), 76);
    EXPECT_EQ(output, line + "\r\n");
    EXPECT_EQ(base64Encode(std::string(58, '\0'), output, "\r\n"), 80);
    EXPECT_EQ(output, line + "\r\nAA==");
    EXPECT_EQ(base64Encode(std::string(114, '\0'), output, "|"), 152);
    EXPECT_EQ(output, line + "|" + line + "|");
    EXPECT_EQ(base64Encode(std::string(113, '\0'), output, ""), 152);
    EXPECT_EQ(output, line + std::string(75, 'A') + "=");
}

TEST(Base64Decode, IgnoresAnIncompleteLastGroup) {
    EXPECT_EQ(decoded("QQ=="), "A");
    EXPECT_EQ(decoded("QQ"), "");
    EXPECT_EQ(decoded("QUJD"), "ABC");
    EXPECT_EQ(decoded("QUJDR"), "ABC");
    EXPECT_EQ(decoded("QUJDRE"), "ABC");
    EXPECT_EQ(decoded("QUJDREU"), "ABC");
    EXPECT_EQ(decoded(""), "");
}

TEST(Base64Decode, TakesBytesOffForPaddingAtTheVeryEnd) {
    EXPECT_EQ(decoded("QUI="), "AB");
    EXPECT_EQ(decoded("QUJD="), "AB");
    EXPECT_EQ(decoded("QUJD=="), "A");
    EXPECT_EQ(decoded("QUJD===="), std::string("ABC\0", 4));
    EXPECT_EQ(decoded("="), "");
    EXPECT_EQ(decoded("=="), "");
    EXPECT_EQ(decoded("QUI=QUJD"), std::string("AB\0ABC", 6));
}

TEST(Base64Decode, TakesForeignCharactersForZero) {
    EXPECT_EQ(decoded("QQ\r\n"), decoded("QQAA"));
    EXPECT_EQ(decoded("----"), std::string(3, '\0'));
}

TEST(CompressBuffer, AppendsAZlibStream) {
    std::string output = "before";
    EXPECT_EQ(compressBuffer("abc", output), 0);
    EXPECT_EQ(output, "before" + deflatedAtOnce("abc"));
    EXPECT_EQ(compressed(""), std::string("\x78\x9c\x03\x00\x00\x00\x00\x01", 8));
}

TEST(CompressBuffer, GivesTheStreamOfOneCallAtOnce) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{16384}, std::size_t{65536},
                                   std::size_t{262144}, std::size_t{3000001}}) {
        for (const std::string& input : {sectionText(size, 3), randomBytes(size, 4)}) {
            EXPECT_TRUE(compressed(input) == deflatedAtOnce(input)) << size;
        }
    }
}

TEST(DeflateSink, GivesTheSameStreamForAnyPieces) {
    const std::string input = sectionText(1500000, 5) + randomBytes(300000, 6) +
                              sectionText(200000, 5) + std::string(400000, 'x');
    const std::string expected = deflatedAtOnce(input);
    std::mt19937 random(7);
    for (const std::size_t longest : {std::size_t{50}, std::size_t{20000}, std::size_t{500000}}) {
        std::string output;
        StringSink bytes(output);
        DeflateSink sink(bytes);
        for (std::size_t at = 0; at < input.size();) {
            const std::string_view piece =
                std::string_view(input).substr(at, 1 + random() % longest);
            sink.write(piece);
            at += piece.size();
        }
        sink.finish();
        bytes.finish();
        EXPECT_EQ(sink.status(), 0);
        EXPECT_TRUE(sink.ok());
        EXPECT_TRUE(output == expected) << longest;
    }
}

TEST(UncompressBuffer, AppendsWhatWasCompressed) {
    std::string output = "before";
    EXPECT_EQ(uncompressBuffer(deflatedAtOnce("abc"), output), 0);
    EXPECT_EQ(output, "beforeabc");
    for (const std::size_t size : {std::size_t{0}, std::size_t{16383}, std::size_t{16384},
                                   std::size_t{16385}, std::size_t{32768}, std::size_t{1000000}}) {
        const std::string text = sectionText(size, 8);
        EXPECT_TRUE(uncompressed(compressed(text)) == text) << size;
    }
}

TEST(UncompressBuffer, GivesWhatStandsBeforeTheDamage) {
    const std::string text = sectionText(60000, 9);
    const std::string stream = compressed(text);
    EXPECT_EQ(uncompressed(""), "");
    EXPECT_EQ(uncompressed("no zlib stream"), "");
    EXPECT_TRUE(uncompressed(stream + "behind the end") == text);
    EXPECT_TRUE(uncompressed(std::string_view(stream).substr(0, stream.size() - 4)) == text);
    std::mt19937 random(10);
    for (int i = 0; i < 300; ++i) {
        std::string damaged = stream.substr(0, random() % (stream.size() + 1));
        for (std::size_t n = random() % 3; n > 0 && !damaged.empty(); --n) {
            char& byte = damaged[random() % damaged.size()];
            byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << random() % 8));
        }
        ASSERT_TRUE(uncompressed(damaged) == inflatedAtOnce(damaged)) << i;
    }
}

TEST(ExpandBlob, PutsTheTextInPlaceOfTheBlob) {
    const std::string text = "<signals>\r\n</signals>\r\n";
    const std::string document = "<a>\r\n    " + blobAround(encoded(compressed(text))) + "</a>\r\n";
    EXPECT_EQ(expanded(document), "<a>\r\n    <signals>\r\n</signals>\r\n</a>\r\n");
}

TEST(ExpandBlob, RestoresEveryLength) {
    for (std::size_t size = 0; size <= 300; ++size) {
        for (const std::string& text : {randomBytes(size, static_cast<std::uint32_t>(size)),
                                        sectionText(size, static_cast<std::uint32_t>(size))}) {
            const std::string document = blobAround(encoded(compressed(text)));
            ASSERT_EQ(expanded("before" + document + "after"), "before" + text + "after") << size;
        }
    }
}

TEST(ExpandBlob, RestoresStreamsWithEveryPadding) {
    std::array<bool, 3> seen{};
    for (std::size_t size = 1; size < 40; ++size) {
        const std::string text = randomBytes(size, 11);
        const std::string stream = compressed(text);
        seen[stream.size() % 3] = true;
        EXPECT_EQ(expanded(blobAround(encoded(stream))), text);
    }
    EXPECT_TRUE(seen[0] && seen[1] && seen[2]);
}

TEST(ExpandBlob, ReadsAStreamOf57BytesWithItsEmptyLine) {
    const std::string text = randomBytes(46, 12);
    const std::string stream = compressed(text);
    ASSERT_EQ(stream.size(), 57U);
    std::string base64;
    EXPECT_EQ(base64Encode(stream, base64, "\r\n"), 76);
    const std::string document = blobAround(base64);
    EXPECT_NE(document.find("\r\n\r\n</blobdata>"), std::string::npos);
    EXPECT_EQ(expanded(document), text);
}

TEST(ExpandBlob, RestoresALargeSection) {
    const std::string text = sectionText(5000000, 13);
    EXPECT_TRUE(expanded("x" + blobAround(encoded(compressed(text))) + "y") == "x" + text + "y");
}

TEST(ExpandBlob, KeepsTheRestByteForByte) {
    const std::string blob =
        "<blob>junk<blobdata>" + encoded(compressed("text")) + "</blobdata>junk</blob>";
    EXPECT_EQ(expanded(blob), "text");
    EXPECT_EQ(expanded("\t \n" + blob + "\r\n\r\n\n\r next\r\n"), "\t \ntext next\r\n");
    EXPECT_EQ(expanded(blob + "\r\n"), "text");
    EXPECT_EQ(expanded(blob + " \r\n"), "text \r\n");
    const std::string zeros("a\0b", 3);
    EXPECT_EQ(expanded(zeros + blob + zeros), zeros + "text" + zeros);
}

TEST(ExpandBlob, ExpandsTheFirstBlobOnly) {
    const std::string blob = blobAround(encoded(compressed("text\n")));
    EXPECT_EQ(expanded(blob + blob), "text\n" + blob);
}

TEST(ExpandBlob, SkipsEverythingButBase64Characters) {
    std::string spaced;
    for (const char character : encoded(compressed("some text"))) {
        spaced += std::string("=\t \r\n.-_\xff") + character;
    }
    EXPECT_EQ(expanded("<blob><blobdata>" + spaced + "</blobdata></blob>"), "some text");
}

TEST(ExpandBlob, WritesWhatADamagedBlobStillHolds) {
    const std::string text = sectionText(100000, 14);
    const std::string base64 = encoded(compressed(text));
    std::mt19937 random(15);
    for (int i = 0; i < 100; ++i) {
        std::string damaged = base64.substr(0, random() % base64.size());
        if (!damaged.empty()) {
            damaged[random() % damaged.size()] = 'A';
        }
        std::string filtered;
        for (const char character : damaged) {
            if (character != '\r' && character != '\n' && character != '=') {
                filtered += character;
            }
        }
        const std::string expected = "x" + inflatedAtOnce(decoded(filtered)) + "y";
        ASSERT_TRUE(expanded("x" + blobAround(damaged) + "y") == expected) << i;
    }
    EXPECT_EQ(expanded("x<blob><blobdata></blobdata></blob>y"), "xy");
    EXPECT_EQ(expanded("x<blob><blobdata>not zlib at all</blobdata></blob>y"), "xy");
}

TEST(ExpandBlob, WantsTheFourTagsInTheirOrder) {
    EXPECT_FALSE(hasBlob(""));
    EXPECT_FALSE(hasBlob("<sigtrak_include>\r\n</sigtrak_include>\r\n"));
    EXPECT_FALSE(hasBlob("<BLOB><blobdata></blobdata></blob>"));
    EXPECT_FALSE(hasBlob("<blobdata></blobdata></blob>"));
    EXPECT_FALSE(hasBlob("<blob></blobdata></blob>"));
    EXPECT_FALSE(hasBlob("<blob><blobdata></blob>"));
    EXPECT_FALSE(hasBlob("<blob><blobdata></blobdata>"));
    EXPECT_FALSE(hasBlob("<blob></blobdata><blobdata></blob>"));
    EXPECT_FALSE(hasBlob("<blob><blobdata></blob></blobdata>"));
    EXPECT_FALSE(hasBlob("</blob><blob><blobdata></blobdata></blob>"));
    EXPECT_FALSE(hasBlob("<blobdata><blob><blobdata></blobdata></blob>"));
    EXPECT_TRUE(hasBlob("<blob><blobdata></blobdata></blob>"));
    EXPECT_TRUE(hasBlob("<blob><blob><blobdata><blobdata></blobdata></blob></blobdata><blob>"));
}

// Gives out a number of blocks.
struct ScarceMemory {
    int blocks = 0;
    int given = 0;
    int returned = 0;

    operator ZlibMemory() { return {&take, &giveBack, this}; }

  private:
    static void* take(void* context, unsigned count, unsigned size) {
        auto& memory = *static_cast<ScarceMemory*>(context);
        if (memory.given == memory.blocks) {
            return nullptr;
        }
        ++memory.given;
        return std::calloc(count, size);
    }
    static void giveBack(void* context, void* block) {
        ++static_cast<ScarceMemory*>(context)->returned;
        std::free(block);
    }
};

TEST(ExpandBlob, TellsWantOfMemoryFromADamagedBlob) {
    const std::string document = blobAround(encoded(compressed(sectionText(300000, 5))));
    const std::optional<BlobDocument> parts = findBlob(document);
    ASSERT_TRUE(parts);
    ScarceMemory memory;
    bool done = false;
    for (; !done && memory.blocks < 10; ++memory.blocks) {
        memory.given = 0;
        memory.returned = 0;
        std::string text;
        StringSink sink(text);
        try {
            expandBlob(*parts, sink, memory);
            done = true;
        } catch (const std::bad_alloc&) {
        }
        EXPECT_EQ(memory.given, memory.returned);
    }
    EXPECT_TRUE(done);
    EXPECT_GT(memory.blocks, 2);  // the state of the stream, and its window
}

TEST(DeflateSink, TellsThatItHasNoMemory) {
    ScarceMemory memory;
    for (; memory.blocks < 3; ++memory.blocks) {
        memory.given = 0;
        std::string stream;
        StringSink bytes(stream);
        DeflateSink deflate(bytes, memory);
        deflate.write("text");
        deflate.finish();
        bytes.finish();
        EXPECT_FALSE(deflate.ok());
        EXPECT_NE(deflate.status(), 0);
        EXPECT_EQ(stream, "");
    }
    EXPECT_EQ(memory.returned, 3);
}

// Takes everything and keeps the number of bytes.
class CountingSink final : public OutputSink {
  public:
    std::size_t count = 0;

  protected:
    void drain(std::string_view bytes) override { count += bytes.size(); }
};

TEST(ExpandBlob, HoldsNothingOfTheText) {
    constexpr std::size_t kSize = std::size_t{128} * 1024 * 1024;
    constexpr std::size_t kEnough = std::size_t{32} * 1024 * 1024;
    std::string base64;
    Base64Sink encode(base64, "\r\n");
    DeflateSink deflate(encode);
    const std::string zeros(OutputSink::kBufferSize, '0');
    for (std::size_t i = 0; i < kSize; i += zeros.size()) {
        deflate.write(zeros);
    }
    deflate.finish();
    encode.finish();
    const std::string document = blobAround(base64);

    const std::size_t before = peakMemory();
    CountingSink sink;
    ASSERT_TRUE(expandBlob(document, sink));
    sink.finish();
    EXPECT_EQ(sink.count, kSize);
    EXPECT_LT(peakMemory() - before, kEnough);
}

}  // namespace
}  // namespace quillmark
