#pragma once

#include <cstdio>

namespace quillmark {

/// Creates a file for reading and writing bytes that has no name for others and is gone when it is
/// closed. nullptr if none can be created.
std::FILE* openTemporaryFile();

}  // namespace quillmark
