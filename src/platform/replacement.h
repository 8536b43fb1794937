#pragma once

#include <string>

namespace quillmark {

// How a file comes into being: it is written beside the one whose place it takes once it is
// complete.

/// The file that a name leads to: what a symbolic link points to, whether that is there or not.
std::string withoutLinks(const std::string& name);

/// Whether a name is that of something in whose place no file can be put: a device, a pipe, a
/// directory.
bool isNoPlainFile(const std::string& name);

/// Whether a file is there that may not be written.
bool isWriteProtected(const std::string& name);

/// Creates a file beside the named one and returns its name; an empty one if that is impossible, or
/// if the named file is write-protected: a directory that takes new files would let another one
/// take its place.
std::string createPart(const std::string& name);

/// Removes such a file, if it is there.
void removePart(const std::string& part);

/// Puts a file in the place of another one, which hands on who may read and write it. False if that
/// is impossible; both stay then.
bool putInPlace(const std::string& part, const std::string& name);

}  // namespace quillmark
