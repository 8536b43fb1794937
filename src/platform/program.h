#pragma once

#include <string_view>

namespace quillmark {

/// Name and version of this program, as it introduces itself on the console and signs what it
/// generates.
inline constexpr std::string_view kProgramTitle = "VELTRA Quillmark 1.43";

}  // namespace quillmark
