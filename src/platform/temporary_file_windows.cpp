#include <array>

#include <windows.h>

#include "platform/directories.h"
#include "platform/file_name.h"
#include "platform/temporary_file.h"

namespace quillmark {

std::FILE* openTemporaryFile() {
    const std::wstring directory = toPath(temporaryDirectory()).wstring();
    std::array<wchar_t, MAX_PATH> name{};
    if (directory.empty() || GetTempFileNameW(directory.c_str(), L"qm", 0, name.data()) == 0) {
        return nullptr;
    }
    // The file goes when it is closed.
    return _wfopen(name.data(), L"wb+D");
}

}  // namespace quillmark
