#include "prepare/output.h"

#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace quillmark::preparing {
namespace {

/// More than is ever kept in memory.
const std::string kLong(1'000'000, 'a');

void writeAnew(FileOutput& output) {
    output.write(kLong);
    output.restart();
    output.write("first");
    output.replace(0, "F");
    output.write(" and last");
}

TEST(FileOutput, HoldsNothingOfWhatWasForgotten) {
    const TempDir directory;
    const std::string name = directory.file("out.a2l");
    FileOutput output(name);
    writeAnew(output);
    EXPECT_TRUE(output.finish());
    EXPECT_EQ(readFile(name), "First and last");
}

TEST(FileOutput, SendsNothingOfWhatWasForgotten) {
    FileOutput output("-");
    writeAnew(output);
    testing::internal::CaptureStdout();
    const bool isFinished = output.finish();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "First and last");
    EXPECT_TRUE(isFinished);
}

}  // namespace
}  // namespace quillmark::preparing
