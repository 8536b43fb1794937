#include <string_view>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "platform/file_name.h"
#include "platform/file_stream.h"

namespace quillmark {

std::FILE* openStream(const std::string& name, const char* mode) {
    const std::string_view bytes = mode;
    const std::wstring wideMode(bytes.begin(), bytes.end());
    return _wfopen(toPath(name).c_str(), wideMode.c_str());
}

bool createEmptyFile(const std::string& name) {
    // Not by the C library, whose older versions take no notice of its exclusive mode.
    const HANDLE file = CreateFileW(toPath(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file) != FALSE;
}

void makeBinary(std::FILE* stream) {
    _setmode(_fileno(stream), _O_BINARY);
}

}  // namespace quillmark
