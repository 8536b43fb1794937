#include "app/conversion_driver.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(ZpkiNameFor, ReplacesTheSuffix) {
    EXPECT_EQ(zpkiNameFor("station.cfginclude"), "station.zpki");
    EXPECT_EQ(zpkiNameFor("a.b.c"), "a.b.zpki");
    EXPECT_EQ(zpkiNameFor("a..c"), "a..zpki");
    EXPECT_EQ(zpkiNameFor(".hidden"), ".zpki");
}

TEST(ZpkiNameFor, KeepsTheDirectories) {
    EXPECT_EQ(zpkiNameFor("out/station.cfginclude"), "out/station.zpki");
    EXPECT_EQ(zpkiNameFor("/v1.2/./st.x"), "/v1.2/./st.zpki");
}

TEST(ZpkiNameFor, NoSuffixNoName) {
    EXPECT_EQ(zpkiNameFor(""), "");
    EXPECT_EQ(zpkiNameFor("station"), "");
    EXPECT_EQ(zpkiNameFor("station."), "");
    EXPECT_EQ(zpkiNameFor("a.b."), "");
    EXPECT_EQ(zpkiNameFor("v1.2/station"), "");
    EXPECT_EQ(zpkiNameFor("v1.2/"), "");
    EXPECT_EQ(zpkiNameFor(".."), "");
}

TEST(ZpkiNameFor, BytesTravelUnchanged) {
    EXPECT_EQ(zpkiNameFor("\xff\xe4 x/st\xfc.y"), "\xff\xe4 x/st\xfc.zpki");
}

}  // namespace
}  // namespace quillmark
