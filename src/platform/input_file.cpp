#include "platform/input_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "platform/file_name.h"
#include "platform/file_stream.h"

namespace quillmark {

std::unique_ptr<StandardInputFile> StandardInputFile::open(const std::string& name) {
    std::FILE* const stream = openStream(name, "rt");
    return stream == nullptr ? nullptr : std::make_unique<StandardInputFile>(stream);
}

std::unique_ptr<StandardInputFile> StandardInputFile::openBinary(const std::string& name) {
    std::FILE* const stream = openStream(name, "rb");
    return stream == nullptr ? nullptr : std::make_unique<StandardInputFile>(stream);
}

StandardInputFile::StandardInputFile(std::FILE* stream) : stream_(stream) {
    // Callers read in large blocks, so a buffer in between would only copy every byte once more.
    std::setvbuf(stream, nullptr, _IONBF, 0);
}

StandardInputFile::~StandardInputFile() {
    std::fclose(stream_);
}

std::size_t StandardInputFile::read(char* buffer, std::size_t size) {
    while (!atEnd_) {
        errno = 0;
        const std::size_t count = std::fread(buffer, 1, size, stream_);
        atEnd_ = count < size && !wasInterrupted(stream_);
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

std::size_t announcedSize(const std::string& name) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(toPath(name), error);
    return error ? 0 : static_cast<std::size_t>(size);
}

bool readToEnd(InputFile& input, std::size_t expectedSize, std::string& bytes) {
    constexpr std::size_t kSmallestStep = std::size_t{64} * 1024;

    // One byte more than expected, so that the first read already meets the end of the file.
    std::size_t room = std::max(std::min(expectedSize, bytes.max_size() - 1) + 1, kSmallestStep);
    std::size_t used = 0;
    std::size_t count = 0;
    do {
        if (used == room) {
            room += room / 2;
        }
        bytes.resize(room);
        count = input.read(bytes.data() + used, room - used);
        used += count;
    } while (count > 0);
    bytes.resize(used);
    return !input.failed();
}

bool readWholeFile(const std::string& name, std::string& bytes) {
    bytes.clear();
    const auto input = StandardInputFile::openBinary(name);
    return input != nullptr && readToEnd(*input, announcedSize(name), bytes);
}

}  // namespace quillmark
