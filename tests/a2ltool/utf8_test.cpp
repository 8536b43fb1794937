#include "a2ltool/utf8.h"

#include <string>

#include <gtest/gtest.h>

namespace quillmark::a2ltool {
namespace {

TEST(Utf8, KnowsWellFormedTexts) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("plain"));
    EXPECT_TRUE(isUtf8("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"));
    EXPECT_TRUE(isUtf8(std::string("\0a", 2)));
}

TEST(Utf8, KnowsWhatIsNone) {
    EXPECT_FALSE(isUtf8("\xE4"));              // Latin-1
    EXPECT_FALSE(isUtf8("\xE4rger"));          // the same before other letters
    EXPECT_FALSE(isUtf8("\xC3"));              // cut off
    EXPECT_FALSE(isUtf8("a\xE2\x82"));         // cut off behind two bytes
    EXPECT_FALSE(isUtf8("\xC0\x80"));          // longer than it need be
    EXPECT_FALSE(isUtf8("\xED\xA0\x80"));      // half of a pair of UTF-16
    EXPECT_FALSE(isUtf8("\xF4\x90\x80\x80"));  // behind the last character
}

TEST(Utf8, TakesAllElseAsLatin1) {
    EXPECT_EQ(toUtf8("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(toUtf8("\xB0"
                     "C"),
              "\xC2\xB0"
              "C");
    EXPECT_EQ(toUtf8("\xE4\xFF"), "\xC3\xA4\xC3\xBF");
}

TEST(Utf8, CountsCharacters) {
    EXPECT_EQ(countCharacters(""), 0U);
    EXPECT_EQ(countCharacters("a\xC3\xA4\xE2\x82\xAC"), 3U);
}

}  // namespace
}  // namespace quillmark::a2ltool
