#include <cstdlib>

#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/system.h"

namespace quillmark {

void setVariable(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void unsetVariable(const std::string& name) {
    unsetenv(name.c_str());
}

std::string systemLoginName() {
    const passwd* const entry = getpwuid(getuid());
    return entry == nullptr ? "" : entry->pw_name;
}

bool becomeUnknownUser() {
    constexpr uid_t kNobodysId = 1876543210;  // no distribution gives this number to anybody
    return setuid(kNobodysId) == 0;
}

bool makePipe(const std::string& name) {
    return mkfifo(name.c_str(), 0600) == 0;
}

unsigned codePage() {
    return kAnyBytes;
}

std::size_t peakMemory() {
    constexpr std::size_t kKibibyte = 1024;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * kKibibyte;
}

}  // namespace quillmark
