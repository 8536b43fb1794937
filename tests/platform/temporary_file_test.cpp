#include "platform/temporary_file.h"

#include <array>
#include <string_view>

#include <gtest/gtest.h>

#include "support/system.h"
#include "support/temporary_path.h"

namespace quillmark {
namespace {

TEST(TemporaryFile, GivesBackWhatWasWritten) {
    std::FILE* const file = openTemporaryFile();
    ASSERT_NE(file, nullptr);
    constexpr std::string_view kBytes = "a\r\n\x1A b";
    EXPECT_EQ(std::fwrite(kBytes.data(), 1, kBytes.size(), file), kBytes.size());
    std::rewind(file);
    std::array<char, 64> buffer{};
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file);
    EXPECT_EQ(std::string_view(buffer.data(), count), kBytes);
    std::fclose(file);
}

TEST(TemporaryFile, IsNowhereElseThanInItsDirectory) {
    if (kIsWindows) {
        GTEST_SKIP() << "there the directory is looked for when it is used";
    }
    const TemporaryPath asBefore;
    setVariable("TMPDIR", "/missing/directory");
    EXPECT_EQ(openTemporaryFile(), nullptr);
}

}  // namespace
}  // namespace quillmark
