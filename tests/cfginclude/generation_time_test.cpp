#include "cfginclude/generation_time.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr std::int64_t kInstant = 1496318709;  // 2017-06-01T12:05:09 UTC

TEST(GenerationTime, StampIsLocalTimeWithItsOffset) {
    struct Row {
        std::int32_t offset;
        std::string_view stamp;
    };
    constexpr Row kRows[] = {
        {0, "2017-06-01T12:05:09-00:00"},      {3600, "2017-06-01T13:05:09+01:00"},
        {7200, "2017-06-01T14:05:09+02:00"},   {20700, "2017-06-01T17:50:09+05:45"},
        {-12600, "2017-06-01T08:35:09-03:30"}, {-1800, "2017-06-01T11:35:09-00:30"},
        {50400, "2017-06-02T02:05:09+14:00"},  {-43200, "2017-06-01T00:05:09-12:00"},
    };
    for (const Row& row : kRows) {
        const GenerationTime time = generationTimeAt(kInstant, row.offset);
        EXPECT_EQ(time.localStamp, row.stamp);
        EXPECT_EQ(time.secondsSinceEpoch, kInstant);
    }
}

TEST(GenerationTime, NumbersAreFilledWithZeros) {
    EXPECT_EQ(generationTimeAt(0, 0).localStamp, "1970-01-01T00:00:00-00:00");
}

// Not std::time(), which may lag behind by a tick of the system.
std::int64_t secondsNow() {
    return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

TEST(GenerationTime, CurrentTimeIsNow) {
    const std::int64_t before = secondsNow();
    const GenerationTime time = currentGenerationTime();
    EXPECT_GE(time.secondsSinceEpoch, before);
    EXPECT_LE(time.secondsSinceEpoch, secondsNow());

    // Stamp and seconds tell the same instant.
    ASSERT_EQ(time.localStamp.size(), 25U);
    const std::string offset = time.localStamp.substr(19);
    const int minutes = std::stoi(offset.substr(1, 2)) * 60 + std::stoi(offset.substr(4));
    const std::int32_t seconds = (offset[0] == '+' ? 60 : -60) * minutes;
    EXPECT_EQ(generationTimeAt(time.secondsSinceEpoch, seconds).localStamp, time.localStamp);
}

}  // namespace
}  // namespace quillmark
