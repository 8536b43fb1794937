#pragma once

#include <string>

namespace quillmark {

/// The name under which the user of this process logged in, in the system's own bytes. It comes
/// from the operating system's user data for the real user; no environment variable changes it.
/// Empty if the system knows no name.
std::string loginName();

}  // namespace quillmark
