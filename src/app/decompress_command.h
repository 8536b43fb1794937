#pragma once

namespace quillmark {

class Console;

/// The `decompress` command: rewrites an include file with its first blob expanded. Takes the whole
/// argument vector of the program; the names of input and output file are arguments 2 and 3, later
/// ones are ignored. `printUsage` prints the usage text of the program.
///
/// Both names may be those of the same file: the input is read completely, and found to hold a
/// blob, before the output is touched.
///
/// Returns the exit status: 0, 1 (arguments, a file that cannot be opened) or -1 (the input is no
/// compressed include file, or writing failed, for want of memory as well).
int decompressCommand(int argc, const char* const* argv, Console& console,
                      void (*printUsage)(Console&));

}  // namespace quillmark
