#include "platform/copy_file_posix.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/copy_file.h"

namespace quillmark {
namespace {

constexpr std::size_t kCopyBufferBytes = std::size_t{256} * 1024;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kPermissionBits = 0777;  // an owner's rights are not for copies by others

/// An open file that is closed with its owner.
class OpenFile {
  public:
    OpenFile(const std::string& path, int flags, const CopyCalls& calls) : calls_(calls) {
        do {
            descriptor_ = open(path.c_str(), flags | O_CLOEXEC, kNewFileMode);
        } while (descriptor_ < 0 && errno == EINTR);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { closeNow(); }

    int descriptor() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

    /// Some file systems tell only here that a write has failed.
    bool closeNow() {
        if (!isOpen()) {
            return true;
        }
        const int result = calls_.close(descriptor_);
        descriptor_ = -1;
        return result == 0;
    }

  private:
    const CopyCalls& calls_;
    int descriptor_ = -1;
};

bool writeAll(const CopyCalls& calls, int descriptor, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = calls.write(descriptor, data, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copyContent(const CopyCalls& calls, int source, int target) {
    std::vector<char> buffer(kCopyBufferBytes);
    while (true) {
        const ssize_t count = calls.read(source, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count == 0;
        }
        if (!writeAll(calls, target, buffer.data(), static_cast<std::size_t>(count))) {
            return false;
        }
    }
}

bool isDevice(const struct stat& status) {
    return S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode);
}

/// A copy looks like its source, as far as the target's file system can tell.
void keepAttributes(const struct stat& source, int target) {
    mode_t permissions = source.st_mode & kPermissionBits;
    if (source.st_uid != geteuid()) {
        // The copy is ours, and what others let us read we must be able to read there, too.
        permissions |= S_IRUSR;
    }
    fchmod(target, permissions);
    const std::array<timespec, 2> times = {timespec{0, UTIME_OMIT}, source.st_mtim};
    futimens(target, times.data());
}

/// Takes one byte from the file if there is any.
bool isAtEnd(int descriptor) {
    char byte = 0;
    return read(descriptor, &byte, 1) == 0;
}

}  // namespace

bool copyFile(const std::string& source, const std::string& target) {
    return copyFile(source, target, {&read, &write, &close});
}

bool copyFile(const std::string& source, const std::string& target, const CopyCalls& calls) {
    const OpenFile input(source, O_RDONLY, calls);
    struct stat inputStatus {};
    if (!input.isOpen() || fstat(input.descriptor(), &inputStatus) != 0 ||
        S_ISDIR(inputStatus.st_mode)) {
        return false;
    }
    if (isDevice(inputStatus) && !isAtEnd(input.descriptor())) {
        return false;
    }
    // Opening the target empties it, which must not happen to the source.
    struct stat targetStatus {};
    if (stat(target.c_str(), &targetStatus) == 0 && targetStatus.st_dev == inputStatus.st_dev &&
        targetStatus.st_ino == inputStatus.st_ino) {
        return false;
    }
    OpenFile output(target, O_WRONLY | O_CREAT | O_TRUNC, calls);
    if (!output.isOpen() || !copyContent(calls, input.descriptor(), output.descriptor())) {
        return false;
    }
    if (S_ISREG(inputStatus.st_mode)) {
        keepAttributes(inputStatus, output.descriptor());
    }
    return output.closeNow();
}

}  // namespace quillmark
