#pragma once

#include <string_view>

#include "quillmark/export.h"

namespace quillmark {

/// Name and version of the library that is running, "VELTRA Quillmark 1.43": what the files that it
/// makes are signed with.
QUILLMARK_API std::string_view productName() noexcept;

/// The version alone, "1.43".
QUILLMARK_API std::string_view productVersion() noexcept;

}  // namespace quillmark
