#include <cstddef>

#include <windows.h>

#include "platform/copy_file.h"

namespace quillmark {
namespace {

/// Command-line texts arrive in the local code page. Empty if the text is not valid in it.
std::wstring toWide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    const int wideSize =
        MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), wideSize);
    return wide;
}

}  // namespace

bool copyFile(const std::string& source, const std::string& target) {
    constexpr BOOL kFailIfExists = FALSE;
    const std::wstring wideSource = toWide(source);
    const std::wstring wideTarget = toWide(target);
    return !wideSource.empty() && !wideTarget.empty() &&
           CopyFileW(wideSource.c_str(), wideTarget.c_str(), kFailIfExists) != 0;
}

}  // namespace quillmark
