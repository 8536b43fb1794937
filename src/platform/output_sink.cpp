#include "platform/output_sink.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace quillmark {

namespace {

std::FILE* openFile(const std::string& name, const char* mode) {
    std::FILE* file = nullptr;
    do {
        errno = 0;
        file = std::fopen(name.c_str(), mode);
    } while (file == nullptr && errno == EINTR);
    return file;
}

// Whether the error state that `file` has just got is that of an interrupted call; it is cleared
// then, so that the call can be made again.
bool wasInterrupted(std::FILE* file) {
    if (errno != EINTR) {
        return false;
    }
    std::clearerr(file);
    return true;
}

// The number of bytes that a regular file announces, 0 for everything else.
std::size_t announcedSize(const std::string& name) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(name, error);
    return error ? 0 : static_cast<std::size_t>(size);
}

}  // namespace

OutputSink::OutputSink() : buffer_(new char[kBufferSize]) {}

void OutputSink::writeAcross(std::string_view bytes) {
    if (used_ > 0) {
        const std::size_t head = kBufferSize - used_;
        bytes.copy(buffer_.get() + used_, head);
        bytes.remove_prefix(head);
        drain({buffer_.get(), kBufferSize});
        used_ = 0;
    }
    const std::size_t whole = bytes.size() - bytes.size() % kBufferSize;
    if (whole > 0) {
        drain(bytes.substr(0, whole));
        bytes.remove_prefix(whole);
    }
    used_ = bytes.copy(buffer_.get(), bytes.size());
}

void OutputSink::finish() {
    if (finished_) {
        return;
    }
    finished_ = true;
    if (used_ > 0) {
        drain({buffer_.get(), used_});
        used_ = 0;
    }
    end();
}

FileSink::FileSink(const std::string& name)
    : file_(openFile(name, "wb")), opened_(file_ != nullptr) {
    if (!opened_) {
        fail();
        return;
    }
    // The sink's own buffer is enough; a second one would only hide write errors until the end.
    std::setvbuf(file_, nullptr, _IONBF, 0);
}

FileSink::~FileSink() {
    finish();
}

void FileSink::drain(std::string_view bytes) {
    while (ok() && !bytes.empty()) {
        errno = 0;
        bytes.remove_prefix(std::fwrite(bytes.data(), 1, bytes.size(), file_));
        if (!bytes.empty() && !wasInterrupted(file_)) {
            fail();
        }
    }
}

void FileSink::end() {
    if (file_ == nullptr) {
        return;
    }
    if (std::fclose(file_) != 0) {
        fail();
    }
    file_ = nullptr;
}

bool readWholeFile(const std::string& name, std::string& bytes) {
    constexpr std::size_t kSmallestStep = std::size_t{64} * 1024;

    bytes.clear();
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(name, "rb"), &std::fclose);
    if (file == nullptr) {
        return false;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);

    // One byte more than announced, so that the first read already meets the end of the file.
    const std::size_t announced = std::min(announcedSize(name), bytes.max_size() - 1);
    std::size_t room = std::max(announced + 1, kSmallestStep);
    std::size_t used = 0;
    bool atEnd = false;
    while (!atEnd) {
        bytes.resize(room);
        errno = 0;
        used += std::fread(bytes.data() + used, 1, room - used, file.get());
        atEnd = used < room && !wasInterrupted(file.get());
        if (used == room) {
            room += room / 2;
        }
    }
    bytes.resize(used);
    return true;
}

}  // namespace quillmark
