#include "app/usage.h"

#include <gtest/gtest.h>

#include "cli/file_tree.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

TEST(Usage, TextAsRecorded) {
    CollectingConsole console;
    printUsage(console);
    EXPECT_EQ(console.out, golden::readBytes(QUILLMARK_RECORDED_USAGE));
    EXPECT_EQ(console.err, "");
}

}  // namespace
}  // namespace quillmark
