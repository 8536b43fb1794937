#include "prepare/output.h"

#include <array>
#include <cerrno>
#include <utility>

#include "platform/file_stream.h"
#include "platform/replacement.h"
#include "platform/temporary_file.h"

namespace quillmark::preparing {

namespace {

constexpr std::string_view kStandardOutput = "-";
constexpr std::size_t kBufferSize = std::size_t{256} * 1024;

/// Writes all bytes, whatever interrupts that.
bool writeTo(std::FILE* file, std::string_view bytes) {
    while (!bytes.empty()) {
        errno = 0;
        bytes.remove_prefix(std::fwrite(bytes.data(), 1, bytes.size(), file));
        if (!bytes.empty() && !wasInterrupted(file)) {
            return false;
        }
    }
    return true;
}

}  // namespace

FileOutput::FileOutput(std::string name) : name_(std::move(name)) {
    if (name_ != kStandardOutput) {
        name_ = withoutLinks(name_);
    }
    if (name_ == kStandardOutput || isNoPlainFile(name_)) {
        file_ = openTemporaryFile();
    } else {
        temporaryName_ = createPart(name_);
        file_ = temporaryName_.empty() ? nullptr : openStream(temporaryName_, "wb+");
    }
    if (file_ != nullptr) {
        std::setvbuf(file_, nullptr, _IONBF, 0);
        buffer_.reserve(kBufferSize);
    }
}

FileOutput::~FileOutput() {
    if (file_ != nullptr) {
        std::fclose(file_);
    }
    if (!temporaryName_.empty()) {
        removePart(temporaryName_);
    }
}

void FileOutput::flush() {
    isGood_ = isGood_ && writeTo(file_, buffer_);
    buffer_.clear();
}

void FileOutput::write(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > kBufferSize) {
        flush();
    }
    if (bytes.size() > kBufferSize) {
        isGood_ = isGood_ && writeTo(file_, bytes);
    } else {
        buffer_ += bytes;
    }
}

void FileOutput::replace(std::uint64_t position, std::string_view bytes) {
    flush();
    isGood_ = isGood_ && std::fseek(file_, static_cast<long>(position), SEEK_SET) == 0 &&
              writeTo(file_, bytes) && std::fseek(file_, 0, SEEK_END) == 0;
}

/// What is written next is never shorter than what it takes the place of.
void FileOutput::restart() {
    buffer_.clear();
    std::rewind(file_);
}

bool FileOutput::finish() {
    flush();
    if (!isGood_) {
        return false;
    }
    if (!temporaryName_.empty()) {
        return moveIntoPlace();
    }
    const bool isStandardOutput = name_ == kStandardOutput;
    if (isStandardOutput) {
        makeBinary(stdout);
    }
    std::FILE* const target = isStandardOutput ? stdout : openStream(name_, "wb");
    if (target == nullptr) {
        return false;
    }
    const bool isCopied = copyTo(target);
    const bool isWritten = isStandardOutput ? std::fflush(stdout) == 0 : std::fclose(target) == 0;
    return isCopied && isWritten;
}

bool FileOutput::copyTo(std::FILE* target) {
    std::array<char, 65536> block;
    std::rewind(file_);
    for (;;) {
        const std::size_t count = std::fread(block.data(), 1, block.size(), file_);
        if (count == 0) {
            return std::ferror(file_) == 0;
        }
        if (!writeTo(target, {block.data(), count})) {
            return false;
        }
    }
}

bool FileOutput::moveIntoPlace() {
    const bool isInPlace =
        std::fclose(std::exchange(file_, nullptr)) == 0 && putInPlace(temporaryName_, name_);
    if (isInPlace) {
        temporaryName_.clear();
    }
    return isInPlace;
}

}  // namespace quillmark::preparing
