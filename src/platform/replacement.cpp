#include "platform/replacement.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>

#include "platform/file_name.h"
#include "platform/file_stream.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

/// A short name, as that of the complete file may be as long as names can be.
constexpr const char* kPartPrefix = ".quillmark-part-";

}  // namespace

std::string withoutLinks(const std::string& name) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    fs::path path = toPath(name);
    if (!fs::is_symlink(path, error)) {
        return name;
    }
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return toName(path);
}

bool isNoPlainFile(const std::string& name) {
    std::error_code error;
    const fs::file_status status = fs::status(toPath(name), error);
    return fs::exists(status) && !fs::is_regular_file(status);
}

bool isWriteProtected(const std::string& name) {
    std::error_code error;
    if (!fs::exists(toPath(name), error)) {
        return false;
    }
    std::FILE* const stream = openStream(name, "r+b");
    return stream == nullptr || std::fclose(stream) != 0;
}

std::string createPart(const std::string& name) {
    if (isWriteProtected(name)) {
        return {};
    }
    constexpr int kAttempts = 100;
    const std::string directory = name.substr(0, startOfLastPart(name, kDirectorySeparators));
    std::random_device random;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::string part = directory + kPartPrefix + std::to_string(random());
        if (createEmptyFile(part)) {
            return part;
        }
    }
    return {};
}

void removePart(const std::string& part) {
    std::error_code ignored;
    fs::remove(toPath(part), ignored);
}

bool putInPlace(const std::string& part, const std::string& name) {
    std::error_code error;
    const fs::file_status old = fs::status(toPath(name), error);
    if (fs::exists(old)) {
        fs::permissions(toPath(part), old.permissions(), error);
    }
    fs::rename(toPath(part), toPath(name), error);
    return !error;
}

}  // namespace quillmark
