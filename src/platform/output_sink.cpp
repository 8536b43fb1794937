#include "platform/output_sink.h"

#include <cerrno>
#include <cstring>

#include "platform/file_stream.h"

namespace quillmark {

OutputSink::OutputSink()
    : buffer_(new char[kBufferSize + kRoom]),
      at_(buffer_.get()),
      full_(buffer_.get() + kBufferSize) {}

void OutputSink::writeAcross(std::string_view bytes) {
    if (at_ != buffer_.get()) {
        bytes.remove_prefix(bytes.copy(at_, left()));
        drain({buffer_.get(), kBufferSize});
    }
    const std::size_t whole = bytes.size() - bytes.size() % kBufferSize;
    if (whole > 0) {
        drain(bytes.substr(0, whole));
        bytes.remove_prefix(whole);
    }
    at_ = buffer_.get() + bytes.copy(buffer_.get(), bytes.size());
}

void OutputSink::drainWholeBuffer() {
    drain({buffer_.get(), kBufferSize});
    at_ -= kBufferSize;
    std::memcpy(buffer_.get(), full_, static_cast<std::size_t>(at_ - buffer_.get()));
}

void OutputSink::finish() {
    if (finished_) {
        return;
    }
    finished_ = true;
    if (at_ != buffer_.get()) {
        drain({buffer_.get(), static_cast<std::size_t>(at_ - buffer_.get())});
        at_ = buffer_.get();
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
