#include <ctime>

#include "platform/time_zone.h"

namespace quillmark {

std::int32_t utcOffsetAt(std::int64_t secondsSinceEpoch) {
    const std::time_t instant = secondsSinceEpoch;
    std::tm local{};
    tzset();
    return localtime_r(&instant, &local) == nullptr ? 0
                                                    : static_cast<std::int32_t>(local.tm_gmtoff);
}

}  // namespace quillmark
