#include "platform/output_sink.h"

#include <cerrno>
#include <cstring>

#include "platform/file_stream.h"

namespace quillmark {

OutputSink::OutputSink() : buffer_(new char[kBufferSize + kRoom]) {}

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

void OutputSink::drainWholeBuffer() {
    drain({buffer_.get(), kBufferSize});
    used_ -= kBufferSize;
    std::memcpy(buffer_.get(), buffer_.get() + kBufferSize, used_);
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

FileSink::FileSink(const std::string& name) : FileSink(openStream(name, "wb")) {}

FileSink::FileSink(std::FILE* stream) : file_(stream), opened_(stream != nullptr) {
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

}  // namespace quillmark
