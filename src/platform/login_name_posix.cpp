#include <cerrno>
#include <cstddef>
#include <vector>

#include <pwd.h>
#include <unistd.h>

#include "platform/login_name.h"

namespace quillmark {
namespace {

// An entry of the user data rarely needs a kilobyte; one that needs more than this is broken.
constexpr std::size_t kFirstBufferBytes = 1024;
constexpr std::size_t kLargestBufferBytes = std::size_t{1} << 20;

}  // namespace

std::string loginName() {
    std::vector<char> buffer(kFirstBufferBytes);
    passwd entry{};
    passwd* found = nullptr;
    int error = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    while (error == EINTR || (error == ERANGE && buffer.size() < kLargestBufferBytes)) {
        if (error == ERANGE) {
            buffer.resize(buffer.size() * 2);
        }
        error = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    }
    if (error != 0 || found == nullptr || found->pw_name == nullptr) {
        return {};
    }
    return found->pw_name;
}

}  // namespace quillmark
