#pragma once

#include <cstddef>
#include <string>

namespace quillmark {

/// What a test asks of the operating system beyond the standard library. A test that cannot exist
/// on Windows skips itself there and says why.
#ifdef _WIN32
inline constexpr bool kIsWindows = true;
#else
inline constexpr bool kIsWindows = false;
#endif

/// Sets or removes a variable of the environment of this process.
void setVariable(const std::string& name, const std::string& value);
void unsetVariable(const std::string& name);

/// Login name of the real user, as the system has it; empty if it has none.
std::string systemLoginName();

/// Makes the process a user whom the system does not know; false if that cannot be, which it takes
/// the superuser for.
bool becomeUnknownUser();

/// Makes a named pipe; false if that cannot be, as on Windows.
bool makePipe(const std::string& name);

/// The code page whose text the names of files are on Windows; kAnyBytes elsewhere.
inline constexpr unsigned kAnyBytes = 0;
unsigned codePage();

/// The most memory that this process has held at any time [bytes].
std::size_t peakMemory();

}  // namespace quillmark
