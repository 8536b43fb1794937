#include "prepare/output.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/file_name.h"
#include "platform/file_stream.h"
#include "platform/temporary_file.h"

namespace quillmark::preparing {

namespace {

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

/// The file that a name leads to, also where it is a link. Empty for what is no regular file and
/// cannot be replaced by one.
std::string replaceable(const std::string& name) {
    std::error_code error;
    const std::filesystem::path path = toPath(name);
    const auto kind = std::filesystem::status(path, error).type();
    if (name == "-" || (kind != std::filesystem::file_type::not_found &&
                        kind != std::filesystem::file_type::regular)) {
        return {};
    }
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    return error ? name : toName(target);
}

/// Creates a file beside another one, under a name that nothing has yet.
std::string createBeside(const std::string& name) {
    constexpr int kMostTries = 1000;
    for (int i = 0; i < kMostTries; ++i) {
        std::string candidate = name + ".part" + std::to_string(i);
        if (createEmptyFile(candidate)) {
            return candidate;
        }
        std::error_code error;
        if (!std::filesystem::exists(toPath(candidate), error)) {
            return {};
        }
    }
    return {};
}

}  // namespace

FileOutput::FileOutput(std::string name) : name_(std::move(name)) {
    const std::string target = replaceable(name_);
    if (target.empty()) {
        file_ = openTemporaryFile();
    } else {
        name_ = target;
        temporaryName_ = createBeside(target);
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
        std::error_code error;
        std::filesystem::remove(toPath(temporaryName_), error);
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
    const bool isStandardOutput = name_ == "-";
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

/// The new file is as open to others as the old one was.
bool FileOutput::moveIntoPlace() {
    if (std::fclose(std::exchange(file_, nullptr)) != 0) {
        return false;
    }
    std::error_code error;
    const auto old = std::filesystem::status(toPath(name_), error);
    if (std::filesystem::exists(old)) {
        std::filesystem::permissions(toPath(temporaryName_), old.permissions(), error);
    }
    std::filesystem::rename(toPath(temporaryName_), toPath(name_), error);
    if (!error) {
        temporaryName_.clear();
    }
    return !error;
}

}  // namespace quillmark::preparing
