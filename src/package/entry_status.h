#pragma once

#include <cstdio>

struct archive_entry;

namespace quillmark {

/// Puts what the system knows of an open file (size, time of modification, permissions) into the
/// entry that stands for it. False if the system does not tell.
bool copyStatus(std::FILE* file, archive_entry* entry);

}  // namespace quillmark
