#include "platform/utf16_text.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

/// What comes of bytes that arrive in pieces of that size.
std::string decoded(std::string_view bytes, bool highByteFirst, std::size_t piece) {
    Utf16Decoder decoder(highByteFirst);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
        decoder.decode(bytes.substr(i, piece), text);
    }
    decoder.finish(text);
    return text;
}

TEST(Utf16Decoder, KnowsBothOrdersInPiecesOfAnySize) {
    using namespace std::string_view_literals;
    constexpr std::string_view kLow = "a\0\xFC\0\xAC\x20\x3D\xD8\x00\xDE"sv;
    constexpr std::string_view kHigh = "\0a\0\xFC\x20\xAC\xD8\x3D\xDE\x00"sv;
    constexpr std::string_view kText = "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80";
    for (std::size_t piece = 1; piece <= kLow.size(); ++piece) {
        EXPECT_EQ(decoded(kLow, false, piece), kText) << piece;
        EXPECT_EQ(decoded(kHigh, true, piece), kText) << piece;
    }
}

TEST(Utf16Decoder, PutsAMarkForWhatIsNoText) {
    using namespace std::string_view_literals;
    constexpr std::string_view kMark = "\xEF\xBF\xBD";
    EXPECT_EQ(decoded("\x00\xDE"
                      "a\0"sv,
                      false, 64),
              std::string(kMark) + "a");
    EXPECT_EQ(decoded("a\0b"sv, false, 64), "a" + std::string(kMark));
    EXPECT_EQ(decoded("\x3D\xD8"sv, false, 64), kMark);
}

}  // namespace
}  // namespace quillmark
