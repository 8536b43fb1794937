#include <array>
#include <cstdlib>

// The others build on the first.
// clang-format off
#include <windows.h>
#include <lmcons.h>
#include <psapi.h>
// clang-format on

#include "support/system.h"

namespace quillmark {

void setVariable(const std::string& name, const std::string& value) {
    _putenv_s(name.c_str(), value.c_str());
}

void unsetVariable(const std::string& name) {
    _putenv_s(name.c_str(), "");
}

std::string systemLoginName() {
    std::array<char, UNLEN + 1> name{};
    DWORD size = UNLEN + 1;
    return GetUserNameA(name.data(), &size) == 0 ? "" : name.data();
}

bool becomeUnknownUser() {
    return false;
}

bool makePipe(const std::string&) {
    return false;
}

unsigned codePage() {
    return GetACP();
}

std::size_t peakMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PeakWorkingSetSize;
}

}  // namespace quillmark
