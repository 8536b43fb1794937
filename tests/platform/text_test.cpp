#include "platform/text.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(Joined, OneBehindTheOther) {
    EXPECT_EQ(joined({}), "");
    EXPECT_EQ(joined({"a"}), "a");
    EXPECT_EQ(joined({"a", "", "b c", "\n"}), "ab c\n");
}

}  // namespace
}  // namespace quillmark
