#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>

#include "platform/directories.h"
#include "platform/file_name.h"

namespace quillmark {

std::string temporaryDirectory() {
    const char* const given = std::getenv("TMPDIR");
    std::error_code error;
    const std::filesystem::path directory =
        std::filesystem::absolute(given == nullptr || *given == '\0' ? "/tmp" : given, error)
            .lexically_normal();
    return toName(directory.has_filename() ? directory : directory.parent_path());
}

bool createPrivateDirectory(const std::string& name) {
    return mkdir(name.c_str(), S_IRWXU) == 0;
}

}  // namespace quillmark
