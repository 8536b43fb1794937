#include <array>

#include <windows.h>

#include "platform/login_name.h"

namespace quillmark {
namespace {

// The longest name the system hands out (256 bytes) and its closing NUL.
constexpr DWORD kNameBufferBytes = 257;

}  // namespace

std::string loginName() {
    std::array<char, kNameBufferBytes> buffer{};
    DWORD size = kNameBufferBytes;
    if (GetUserNameA(buffer.data(), &size) == 0) {
        return {};
    }
    return buffer.data();
}

}  // namespace quillmark
