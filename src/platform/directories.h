#pragma once

#include <string>

namespace quillmark {

/// The directory for temporary files, absolute, without symbolic links on its way and without a
/// closing slash unless it is a root. The system's own variables of the environment name it:
/// `TMPDIR`, else "/tmp"; on Windows `TMP`, `TEMP` and what else the system looks at. Empty if
/// there is none, or if its name cannot be told.
std::string temporaryDirectory();

/// Creates a directory that nobody but the user of this process may look into; on Windows, where
/// that is the matter of the directory around it, who may look into that one. False also if there
/// is something of that name.
bool createPrivateDirectory(const std::string& name);

}  // namespace quillmark
