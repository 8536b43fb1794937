#include <windows.h>

#include "platform/copy_file.h"
#include "platform/file_name.h"

namespace quillmark {

bool copyFile(const std::string& source, const std::string& target) {
    constexpr BOOL kFailIfExists = FALSE;
    return CopyFileW(toPath(source).c_str(), toPath(target).c_str(), kFailIfExists) != FALSE;
}

}  // namespace quillmark
