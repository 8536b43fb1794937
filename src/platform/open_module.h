#pragma once

#include <string>

namespace quillmark {

/// Opens a shared module of this program and returns the address of what it shows under `symbol`.
/// The module is looked for by its name where the run path of the program says, and stays open as
/// long as the process lives. nullptr when it cannot be opened or shows no such thing; `trouble`
/// tells why then, in the words of the system.
void* openModule(const char* name, const char* symbol, std::string& trouble);

}  // namespace quillmark
