#pragma once

#include <cstdio>
#include <string>

namespace quillmark {

/// Opens a stream on the named file, once more whenever a signal interrupts that. The name is a
/// byte string handed to the operating system unchanged. nullptr when the file cannot be opened.
std::FILE* openStream(const std::string& name, const char* mode);

/// Whether a read or write that came short, before which errno was 0, was only interrupted by a
/// signal. The stream is ready to go on then.
bool wasInterrupted(std::FILE* stream);

}  // namespace quillmark
