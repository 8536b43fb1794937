#include "platform/input_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace quillmark {

std::unique_ptr<StandardInputFile> StandardInputFile::open(const std::string& name) {
    std::FILE* const stream = std::fopen(name.c_str(), "rt");
    if (stream == nullptr) {
        return nullptr;
    }
    // Callers read in large blocks, so a buffer in between would only copy every byte once more.
    std::setvbuf(stream, nullptr, _IONBF, 0);
    return std::unique_ptr<StandardInputFile>(new StandardInputFile(stream));
}

StandardInputFile::~StandardInputFile() {
    std::fclose(stream_);
}

std::size_t StandardInputFile::read(char* buffer, std::size_t size) {
    while (!atEnd_) {
        errno = 0;
        const std::size_t count = std::fread(buffer, 1, size, stream_);
        const bool interrupted = std::ferror(stream_) != 0 && errno == EINTR;
        if (interrupted) {
            std::clearerr(stream_);
        } else {
            atEnd_ = count < size;
        }
        if (count > 0) {
            return count;
        }
    }
    return 0;
}

MemoryInputFile::MemoryInputFile(std::string_view bytes, std::size_t chunkSize)
    : rest_(bytes), chunkSize_(chunkSize) {}

std::size_t MemoryInputFile::read(char* buffer, std::size_t size) {
    const std::size_t limit = chunkSize_ == 0 ? size : std::min(size, chunkSize_);
    const std::size_t count = std::min(limit, rest_.size());
    if (count > 0) {
        std::memcpy(buffer, rest_.data(), count);
        rest_.remove_prefix(count);
    }
    return count;
}

}  // namespace quillmark
