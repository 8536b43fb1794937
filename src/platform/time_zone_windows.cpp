#include <windows.h>

#include "platform/time_zone.h"

namespace quillmark {
namespace {

// File times count from 1601 on.
constexpr std::int64_t kEpochInFileTime = 11'644'473'600;  // [s]
constexpr std::int64_t kTicksPerSecond = 10'000'000;

FILETIME fileTimeOf(std::int64_t secondsSinceEpoch) {
    const auto ticks =
        static_cast<std::uint64_t>((secondsSinceEpoch + kEpochInFileTime) * kTicksPerSecond);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
}

std::int64_t secondsOf(const FILETIME& time) {
    const std::uint64_t ticks =
        static_cast<std::uint64_t>(time.dwHighDateTime) << 32U | time.dwLowDateTime;
    return static_cast<std::int64_t>(ticks) / kTicksPerSecond - kEpochInFileTime;
}

}  // namespace

std::int32_t utcOffsetAt(std::int64_t secondsSinceEpoch) {
    const FILETIME instant = fileTimeOf(secondsSinceEpoch);
    SYSTEMTIME utc{};
    SYSTEMTIME local{};
    FILETIME localAsUtc{};
    if (FileTimeToSystemTime(&instant, &utc) == FALSE ||
        SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) == FALSE ||
        SystemTimeToFileTime(&local, &localAsUtc) == FALSE) {
        return 0;
    }
    return static_cast<std::int32_t>(secondsOf(localAsUtc) - secondsSinceEpoch);
}

}  // namespace quillmark
