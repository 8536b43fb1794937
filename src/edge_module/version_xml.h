#pragma once

#include <string_view>

#include "edges/version_info.h"

namespace quillmark {

/// Reads the content of a version file, in any form that XML has. Returns false when it is not
/// well-formed to its end; `info`, which is empty before, is of no use then.
[[nodiscard]] bool parseVersionXml(std::string_view bytes, VersionInfo& info);

}  // namespace quillmark
