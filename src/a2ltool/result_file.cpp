#include "a2ltool/result_file.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>

#include "a2ltool/complaint.h"
#include "platform/file_name.h"
#include "platform/file_stream.h"

namespace quillmark::a2ltool {
namespace {

namespace fs = std::filesystem;

constexpr int kAttempts = 100;
constexpr const char* kPartPrefix = ".quillmark-a2l-part-";

/// The file behind a name: a symbolic link stays one, what it points to is replaced.
std::string withoutLinks(const std::string& name) {
    std::error_code error;
    const fs::path path = toPath(name);
    if (!fs::is_symlink(path, error)) {
        return name;
    }
    const fs::path target = fs::weakly_canonical(path, error);
    return error ? name : toName(target);
}

/// Creates a file beside the named one and returns its name, an empty one if that is impossible.
/// Its name is a short one, as the other may be as long as names can be.
std::string createPart(const std::string& name) {
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

/// Whether there is something of that name that can't be replaced by a file.
bool isNoPlainFile(const std::string& name) {
    std::error_code error;
    const fs::file_status status = fs::status(toPath(name), error);
    return fs::exists(status) && !fs::is_regular_file(status);
}

/// A file that is replaced hands on who may read and write it.
void copyPermissions(const std::string& from, const std::string& to) {
    std::error_code error;
    const fs::file_status status = fs::status(toPath(from), error);
    if (fs::exists(status)) {
        fs::permissions(toPath(to), status.permissions(), error);
    }
}

}  // namespace

std::unique_ptr<ResultFile> ResultFile::open(const std::string& name) {
    if (name == "-") {
        return std::make_unique<ResultFile>(std::make_unique<FileSink>(stdout), "", "");
    }
    const std::string file = withoutLinks(name);
    if (isNoPlainFile(file)) {
        return std::make_unique<ResultFile>(std::make_unique<FileSink>(file), "", file);
    }
    const std::string part = createPart(file);
    return std::make_unique<ResultFile>(
        std::make_unique<FileSink>(part.empty() ? nullptr : openStream(part, "wb")), part, file);
}

ResultFile::~ResultFile() {
    if (!partName_.empty()) {
        sink_->finish();
        std::error_code ignored;
        fs::remove(toPath(partName_), ignored);
    }
}

bool ResultFile::finish() {
    sink_->finish();
    if (sink_->ok() && takeName()) {
        return true;
    }
    complain("cannot write " + (name_.empty() ? "standard output" : name_));
    return false;
}

bool ResultFile::takeName() {
    if (partName_.empty()) {
        return true;
    }
    copyPermissions(name_, partName_);
    std::error_code error;
    fs::rename(toPath(partName_), toPath(name_), error);
    if (!error) {
        partName_.clear();
    }
    return !error;
}

}  // namespace quillmark::a2ltool
