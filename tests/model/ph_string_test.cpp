#include "model/ph_string.h"

#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(PhString, NullReadsAsNoText) {
    const PhString null;
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(null.length(), 0U);
    EXPECT_EQ(null.hash(), 0U);
    EXPECT_EQ(null.text(), nullptr);
    EXPECT_EQ(null.view(), "");
}

TEST(PhString, EmptyIsNotNull) {
    const PhString empty("");
    EXPECT_FALSE(empty.isNull());
    EXPECT_EQ(empty.length(), 0U);
    EXPECT_EQ(empty.hash(), 0U);
    EXPECT_STREQ(empty.text(), "");
    EXPECT_NE(empty, PhString());
}

TEST(PhString, TextIsZeroTerminated) {
    const std::string longer = "Speed of the engine";
    const PhString text(std::string_view(longer).substr(0, 5));
    EXPECT_STREQ(text.text(), "Speed");
    EXPECT_EQ(text.length(), 5U);
    EXPECT_EQ(text.view(), "Speed");
}

TEST(PhString, LongestTextIsAsTold) {
    EXPECT_EQ(PhString::kLongest, 4294967231U);
}

TEST(PhString, CopiesShareTheBuffer) {
    const PhString first("Speed");
    const PhString second = first;
    EXPECT_EQ(second.text(), first.text());
    PhString third("other");
    third = second;
    EXPECT_EQ(third.text(), first.text());
    EXPECT_NE(PhString("Speed").text(), first.text());
}

TEST(PhString, OutlivesItsFirstHolder) {
    std::optional<PhString> first(std::in_place, "Speed");
    const PhString second = *first;
    first.reset();
    EXPECT_STREQ(second.text(), "Speed");
}

TEST(PhString, MovingLeavesNull) {
    PhString first("Speed");
    const PhString second = std::move(first);
    EXPECT_EQ(second.view(), "Speed");
    EXPECT_TRUE(first.isNull());  // NOLINT(bugprone-use-after-move)
}

TEST(PhString, AssignmentToItselfKeepsTheText) {
    PhString text("Speed");
    const PhString& alias = text;
    text = alias;
    EXPECT_EQ(text.view(), "Speed");
}

TEST(PhString, EmptyTextsSurviveEveryHolder) {
    for (int i = 0; i < 3; ++i) {
        PhString first("");
        const PhString second = first;
        first = PhString();
        EXPECT_STREQ(second.text(), "");
    }
}

TEST(PhString, HashDoublesAndAddsWithWrapAround) {
    EXPECT_EQ(PhString("a").hash(), 97U);
    EXPECT_EQ(PhString("ab").hash(), 2U * 97U + 98U);
    EXPECT_EQ(PhString("ab").hash(), PhString("`d").hash());
    // 97 * (2^40 - 1), of which 32 bits are left.
    EXPECT_EQ(PhString(std::string(40, 'a')).hash(), 0U - 97U);
    EXPECT_EQ(PhString("\xE4").hash(), 0xE4U);
}

TEST(PhString, ComparesByBytes) {
    EXPECT_EQ(PhString("Speed"), PhString("Speed"));
    EXPECT_LT(PhString("Speed"), PhString("Speed1"));
    EXPECT_LT(PhString("Speed"), PhString("speed"));
    EXPECT_LT(PhString("z"), PhString("\xE4"));
    EXPECT_LT(PhString(""), PhString("a"));
}

TEST(PhString, NullIsGreaterThanAnyText) {
    const PhString null;
    EXPECT_GT(null, PhString(""));
    EXPECT_GT(null, PhString("\xFF\xFF"));
    EXPECT_LT(PhString("\xFF\xFF"), null);
    EXPECT_EQ(null, PhString());
}

TEST(PhString, JoinsPrefixAndText) {
    EXPECT_STREQ(PhString("TAB::", "Gear").text(), "TAB::Gear");
    EXPECT_STREQ(PhString("TAB::", "").text(), "TAB::");
    EXPECT_STREQ(PhString("", "Gear").text(), "Gear");
    EXPECT_FALSE(PhString("", "").isNull());
}

}  // namespace
}  // namespace quillmark
