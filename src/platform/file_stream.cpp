#include "platform/file_stream.h"

#include <cerrno>

namespace quillmark {

std::FILE* openStream(const std::string& name, const char* mode) {
    std::FILE* stream = nullptr;
    do {
        errno = 0;
        stream = std::fopen(name.c_str(), mode);
    } while (stream == nullptr && errno == EINTR);
    return stream;
}

bool wasInterrupted(std::FILE* stream) {
    if (std::ferror(stream) == 0 || errno != EINTR) {
        return false;
    }
    std::clearerr(stream);
    return true;
}

}  // namespace quillmark
