#pragma once

namespace quillmark {

/// Exit statuses of the program. `decompress` also ends with -1 (255 where a status has eight bits)
/// when its input holds no blob or its output could not be written completely.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;

}  // namespace quillmark
