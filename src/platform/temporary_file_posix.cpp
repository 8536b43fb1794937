#include <string>

#include <stdlib.h>
#include <unistd.h>

#include "platform/directories.h"
#include "platform/temporary_file.h"

namespace quillmark {

std::FILE* openTemporaryFile() {
    const std::string directory = temporaryDirectory();
    if (directory.empty()) {
        return nullptr;
    }
    std::string name = directory + "/quillmark-XXXXXX";
    const int descriptor = mkstemp(name.data());
    if (descriptor < 0) {
        return nullptr;
    }
    unlink(name.c_str());
    std::FILE* const file = fdopen(descriptor, "wb+");
    if (file == nullptr) {
        close(descriptor);
    }
    return file;
}

}  // namespace quillmark
