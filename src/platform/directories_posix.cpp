#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>

#include "platform/directories.h"
#include "platform/file_name.h"

namespace quillmark {

std::string temporaryDirectory() {
    const char* const given = std::getenv("TMPDIR");
    const std::filesystem::path directory = given == nullptr || *given == '\0' ? "/tmp" : given;
    std::error_code error;
    const std::filesystem::path real =
        std::filesystem::canonical(directory.lexically_normal(), error);
    return error ? std::string() : toName(real);
}

bool createPrivateDirectory(const std::string& name) {
    return mkdir(name.c_str(), S_IRWXU) == 0;
}

}  // namespace quillmark
