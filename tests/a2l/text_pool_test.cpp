#include "a2l/text_pool.h"

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(TextPool, EqualShortTextsAreOne) {
    TextPool pool;
    const PhString first = pool.share("off");
    EXPECT_EQ(first.view(), "off");
    EXPECT_EQ(pool.share(std::string("off")).text(), first.text());
    EXPECT_NE(pool.share("on").text(), first.text());
    EXPECT_EQ(pool.share("").view(), "");
    EXPECT_FALSE(pool.share("").isNull());
}

TEST(TextPool, SharesUpTo64Bytes) {
    TextPool pool;
    const std::string shared(64, 'x');
    const std::string own(65, 'x');
    EXPECT_EQ(pool.share(shared).text(), pool.share(shared).text());
    const PhString first = pool.share(own);
    const PhString second = pool.share(own);
    EXPECT_EQ(first.view(), own);
    EXPECT_NE(first.text(), second.text());
}

TEST(TextPool, GrowsWithoutForgetting) {
    constexpr int kTexts = 2000;
    TextPool pool;
    std::vector<PhString> texts;
    for (int i = 0; i < kTexts; ++i) {
        texts.push_back(pool.share("text " + std::to_string(i)));
    }
    for (int i = 0; i < kTexts; ++i) {
        const std::string text = "text " + std::to_string(i);
        const PhString& first = texts[static_cast<std::size_t>(i)];
        EXPECT_EQ(first.view(), text);
        EXPECT_EQ(pool.share(text).text(), first.text());
    }
}

}  // namespace
}  // namespace quillmark
