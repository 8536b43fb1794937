#pragma once

#include <cstdio>
#include <string>

namespace quillmark {

/// Opens a stream on the named file, once more whenever a signal interrupts that. The name is a
/// byte string handed to the operating system unchanged (see file_name.h). In a mode with "t"
/// Windows takes Ctrl-Z for the end of the file and a carriage return before a line feed away; no
/// other system does. nullptr when the file cannot be opened.
std::FILE* openStream(const std::string& name, const char* mode);

/// Creates a file. False when there is something of that name, which stays as it is, or none can be
/// created.
bool createEmptyFile(const std::string& name);

/// Makes standard input or output take every byte as it is, as a file does that was opened with
/// "b". Windows has other ways; nothing may have been read or written before.
void makeBinary(std::FILE* stream);

/// Whether a read or write that came short, before which errno was 0, was only interrupted by a
/// signal. The stream is ready to go on then.
bool wasInterrupted(std::FILE* stream);

}  // namespace quillmark
