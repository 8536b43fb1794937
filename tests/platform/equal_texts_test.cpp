#include "platform/equal_texts.h"

#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(EqualTexts, SeesEachByte) {
    for (std::size_t size = 0; size <= 70; ++size) {
        const std::string text(size, 'x');
        EXPECT_TRUE(equalTexts(text, std::string(text))) << size;
        EXPECT_FALSE(equalTexts(text, text + "x")) << size;
        EXPECT_FALSE(equalTexts(text + "x", text)) << size;
        for (std::size_t at = 0; at < size; ++at) {
            std::string other = text;
            other[at] = 'y';
            EXPECT_FALSE(equalTexts(text, other)) << size << " " << at;
        }
    }
    EXPECT_TRUE(equalTexts({}, ""));
}

}  // namespace
}  // namespace quillmark
