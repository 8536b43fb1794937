#include "cfginclude/generation_time.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "platform/time_zone.h"

namespace quillmark {

GenerationTime currentGenerationTime() {
    const std::int64_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    return generationTimeAt(now, utcOffsetAt(now));
}

GenerationTime generationTimeAt(std::int64_t secondsSinceEpoch, std::int32_t utcOffset) {
    using std::chrono::floor;
    const std::chrono::sys_seconds local(std::chrono::seconds(secondsSinceEpoch + utcOffset));
    const auto midnight = floor<std::chrono::days>(local);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(local - midnight);
    const std::chrono::hh_mm_ss offset(std::chrono::seconds(std::abs(utcOffset)));

    std::array<char, 64> stamp{};
    const int length = std::snprintf(
        stamp.data(), stamp.size(), "%04d-%02u-%02uT%02d:%02d:%02d%c%02d:%02d",
        static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
        utcOffset > 0 ? '+' : '-', static_cast<int>(offset.hours().count()),
        static_cast<int>(offset.minutes().count()));
    return {secondsSinceEpoch, std::string(stamp.data(), static_cast<std::size_t>(length))};
}

}  // namespace quillmark
