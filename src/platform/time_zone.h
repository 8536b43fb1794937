#pragma once

#include <cstdint>

namespace quillmark {

/// How far local time is ahead of UTC at an instant [s], by the time zone that the system has for
/// the user: on Windows the one of its settings, whatever the variable `TZ` says.
std::int32_t utcOffsetAt(std::int64_t secondsSinceEpoch);

}  // namespace quillmark
