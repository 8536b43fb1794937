#include "a2l/reader/message_text.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(MessageText, TakesItsArgumentsInOrder) {
    EXPECT_EQ(MessageText("plain").view(), "plain");
    EXPECT_EQ(MessageText("%s: %d, %s", {"a", -7, "b"}).view(), "a: -7, b");
}

TEST(MessageText, LonePercentSignAtTheEndStandsForItself) {
    EXPECT_EQ(MessageText("full to 9%", {1}).view(), "full to 9%");
    EXPECT_EQ(MessageText("full to %d%", {9, 1}).view(), "full to 9%");
    EXPECT_EQ(MessageText("%", {1}).view(), "%");
    EXPECT_EQ(MessageText("%").view(), "%");
}

TEST(MessageText, IsCutAtItsCapacity) {
    const std::string longer(600, 'x');
    EXPECT_EQ(MessageText("%s\n", {std::string_view(longer)}).view(),
              longer.substr(0, MessageText::kCapacity));
}

}  // namespace
}  // namespace quillmark
