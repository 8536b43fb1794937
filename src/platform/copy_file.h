#pragma once

#include <string>

namespace quillmark {

/// Copies one file over another, which is created or replaced. Returns true when the target holds
/// the whole content; it has the source's permissions and time of modification then, too, as far as
/// its file system can keep them. False if the source cannot be read or is a directory, the target
/// cannot be written, or both are the same file (which stays as it is); a target that was opened
/// keeps what had been written when the copy broke off. False, too, for a device that yields bytes,
/// since those like /dev/zero never end. Names are bytes in the system's own encoding.
bool copyFile(const std::string& source, const std::string& target);

}  // namespace quillmark
