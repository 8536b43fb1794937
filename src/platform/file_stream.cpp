#include "platform/file_stream.h"

#include <cerrno>

namespace quillmark {

bool wasInterrupted(std::FILE* stream) {
    if (std::ferror(stream) == 0 || errno != EINTR) {
        return false;
    }
    std::clearerr(stream);
    return true;
}

}  // namespace quillmark
