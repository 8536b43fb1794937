#include "platform/console.h"

#include <gtest/gtest.h>

#include "support/collecting_console.h"

namespace quillmark {
namespace {

TEST(Console, PrintLineEndsTheLine) {
    CollectingConsole console;
    console.print("-: ");
    console.printLine("text");
    EXPECT_EQ(console.out, "-: text\n");
    EXPECT_EQ(console.err, "");
}

TEST(Console, ErrorsGoToTheOtherStream) {
    CollectingConsole console;
    console.printError("refused");
    EXPECT_EQ(console.out, "");
    EXPECT_EQ(console.err, "refused\n");
}

}  // namespace
}  // namespace quillmark
