#pragma once

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillmark {

/// What is behind a stream of the C library: bytes that can be read or that were written, and calls
/// that fail on the way. It has to outlive the stream.
class FaultyFile {
  public:
#ifdef _WIN32
    static constexpr bool kIsPossible = false;
#else
    static constexpr bool kIsPossible = true;
#endif
    static constexpr std::string_view kWhyNot = "only the C library of Linux has such streams";

    struct Fault {
        std::size_t at;  ///< number of bytes that pass before it
        int error;       ///< what errno says then; an interruption (EINTR) happens once
    };

    /// The faults in the order of their places.
    explicit FaultyFile(std::vector<Fault> faults, std::string content = {}, int closeError = 0)
        : faults_(std::move(faults)), content_(std::move(content)), closeError_(closeError) {}

    std::FILE* open([[maybe_unused]] const char* mode) {
#ifdef _WIN32
        return nullptr;
#else
        return fopencookie(this, mode, {&readFrom, &writeTo, nullptr, &closeIt});
#endif
    }

    const std::string& content() const {
        return content_;
    }
    bool isClosed() const {
        return closed_;
    }

  private:
    /// How many of `size` bytes pass from `position` on; if not all, errno says why.
    std::size_t passing(std::size_t position, std::size_t size) {
        if (faults_.empty() || position + size <= faults_.front().at) {
            return size;
        }
        const std::size_t count = faults_.front().at - position;
        errno = faults_.front().error;
        if (errno == EINTR) {
            faults_.erase(faults_.begin());
        }
        return count;
    }

    static ssize_t readFrom(void* cookie, char* buffer, std::size_t size) {
        auto& file = *static_cast<FaultyFile*>(cookie);
        const bool failsNow = !file.faults_.empty() && file.faults_.front().at == file.position_;
        if (failsNow) {
            file.passing(file.position_, 1);
            return -1;
        }
        // A read that meets a fault hands out what came before; the next one fails.
        if (!file.faults_.empty()) {
            size = std::min(size, file.faults_.front().at - file.position_);
        }
        const std::size_t count = file.content_.copy(buffer, size, file.position_);
        file.position_ += count;
        return static_cast<ssize_t>(count);
    }

    static ssize_t writeTo(void* cookie, const char* bytes, std::size_t size) {
        auto& file = *static_cast<FaultyFile*>(cookie);
        const std::size_t count = file.passing(file.content_.size(), size);
        file.content_.append(bytes, count);
        return static_cast<ssize_t>(count);
    }

    static int closeIt(void* cookie) {
        auto& file = *static_cast<FaultyFile*>(cookie);
        file.closed_ = true;
        errno = file.closeError_;
        return file.closeError_ == 0 ? 0 : -1;
    }

    std::vector<Fault> faults_;
    std::string content_;
    int closeError_;
    std::size_t position_ = 0;
    bool closed_ = false;
};

}  // namespace quillmark
