#include "prepare/latin1.h"

#include <gtest/gtest.h>

namespace quillmark::preparing {
namespace {

std::string latin1Of(std::string_view utf8, std::size_t lost = 0) {
    std::string text;
    EXPECT_EQ(appendAsLatin1(utf8, text), lost);
    return text;
}

TEST(Latin1, TurnsCharactersIntoBytes) {
    EXPECT_EQ(latin1Of("plain"), "plain");
    EXPECT_EQ(latin1Of("\xC3\xBC \xC2\xB0"), "\xFC \xB0");
}

TEST(Latin1, LosesWhatItLacks) {
    EXPECT_EQ(latin1Of("\xE2\x82\xAC\xC4\x80\xF0\x9F\x98\x80.", 3), "???.");
}

TEST(Latin1, KeepsBytesThatAreNoUtf8) {
    EXPECT_EQ(latin1Of("\xE4"), "\xE4");
    EXPECT_EQ(latin1Of("\xC3 \xC3"), "\xC3 \xC3");
    EXPECT_EQ(latin1Of("\x80\xBF\xFF\xC0\x80"), "\x80\xBF\xFF\xC0\x80");
}

TEST(Latin1, KnowsAscii) {
    EXPECT_TRUE(isAscii("plain"));
    EXPECT_TRUE(isAscii(""));
    EXPECT_FALSE(isAscii("a\x80"));
}

}  // namespace
}  // namespace quillmark::preparing
