#include <ctime>
#include <mutex>

#include "platform/time_zone.h"

namespace quillmark {

std::int32_t utcOffsetAt(std::int64_t secondsSinceEpoch) {
    // What TZ says belongs to the whole process, and whether two threads may read it anew at the
    // same time is up to the C library.
    static std::mutex timeZone;
    const std::lock_guard lock(timeZone);
    const std::time_t instant = secondsSinceEpoch;
    std::tm local{};
    tzset();
    return localtime_r(&instant, &local) == nullptr ? 0
                                                    : static_cast<std::int32_t>(local.tm_gmtoff);
}

}  // namespace quillmark
