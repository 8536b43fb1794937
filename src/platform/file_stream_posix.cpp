#include <cerrno>

#include "platform/file_stream.h"

namespace quillmark {

std::FILE* openStream(const std::string& name, const char* mode) {
    std::FILE* stream = nullptr;
    do {
        errno = 0;
        stream = std::fopen(name.c_str(), mode);
    } while (stream == nullptr && errno == EINTR);
    return stream;
}

bool createEmptyFile(const std::string& name) {
    std::FILE* const stream = openStream(name, "wbx");
    return stream != nullptr && std::fclose(stream) == 0;
}

void makeBinary(std::FILE*) {}

}  // namespace quillmark
