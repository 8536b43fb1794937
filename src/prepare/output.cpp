#include "prepare/output.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/file_name.h"
#include "platform/file_stream.h"
#include "platform/replacement.h"
#include "platform/temporary_file.h"

namespace quillmark::preparing {

namespace {

constexpr std::string_view kStandardOutput = "-";
constexpr std::size_t kBufferSize = std::size_t{256} * 1024;
/// From so many bytes at once on they are written without being copied first.
constexpr std::size_t kUncopied = std::size_t{128} * 1024;

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

void FileOutput::put(std::string_view bytes) {
    isGood_ = isGood_ && writeTo(file_, bytes);
    length_ += bytes.size();
}

void FileOutput::flush() {
    put(buffer_);
    buffer_.clear();
}

void FileOutput::write(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > kBufferSize || bytes.size() >= kUncopied) {
        flush();
    }
    if (bytes.size() >= kUncopied) {
        put(bytes);
    } else {
        buffer_ += bytes;
    }
}

void FileOutput::replace(std::uint64_t position, std::string_view bytes) {
    flush();
    // A long, which std::fseek takes, ends at 2 GB on Windows, where the end may lie behind.
    std::fpos_t end{};
    isGood_ = isGood_ && std::fgetpos(file_, &end) == 0 &&
              std::fseek(file_, static_cast<long>(position), SEEK_SET) == 0 &&
              writeTo(file_, bytes) && std::fsetpos(file_, &end) == 0;
}

/// What is written next may be shorter than what it takes the place of. That goes at the end.
void FileOutput::restart() {
    buffer_.clear();
    length_ = 0;
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
    while (length_ > 0) {
        const auto wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(length_, block.size()));
        if (std::fread(block.data(), 1, wanted, file_) != wanted ||
            !writeTo(target, {block.data(), wanted})) {
            return false;
        }
        length_ -= wanted;
    }
    return true;
}

bool FileOutput::moveIntoPlace() {
    std::error_code error;
    const bool isClosed = std::fclose(std::exchange(file_, nullptr)) == 0;
    std::filesystem::resize_file(toPath(temporaryName_), length_, error);
    const bool isInPlace = isClosed && !error && putInPlace(temporaryName_, name_);
    if (isInPlace) {
        temporaryName_.clear();
    }
    return isInPlace;
}

}  // namespace quillmark::preparing
