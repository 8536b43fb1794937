#include "package/staging.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "package/error_texts.h"
#include "platform/copy_file.h"
#include "platform/directories.h"
#include "platform/file_name.h"
#include "platform/text.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUserFiles = "userfiles";
constexpr std::string_view kDeviceConf = "deviceconf";
constexpr std::string_view kSigtrak = "deviceconf/sigtrak";

bool isDirectory(const std::string& path) {
    std::error_code error;
    return fs::is_directory(toPath(path), error);
}

/// Whether files inside a directory can be reached, which takes the right to search it.
bool canEnter(const std::string& directory) {
    return isDirectory(directory + "/.");
}

/// A slash behind the name of a file makes it one of a directory, which does not exist then; not
/// every system says so.
bool exists(const std::string& name) {
    const fs::path path = toPath(name);
    std::error_code error;
    return path.has_filename() ? fs::exists(path, error) : fs::is_directory(path, error);
}

/// False also if there is something of that name.
bool createDirectory(const std::string& path) {
    std::error_code error;
    return fs::create_directory(toPath(path), error);
}

/// Removes a file, even a copy that may not be written to.
bool removeFile(const std::string& name) {
    const fs::path path = toPath(name);
    std::error_code error;
    fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, error);
    fs::remove(path, error);
    return !error;
}

bool removeDirectory(const std::string& path) {
    std::error_code error;
    fs::remove(toPath(path), error);
    return !error;
}

std::string fileNameOf(const std::string& path) {
    return toName(toPath(path).filename());
}

std::string pathIn(std::string_view directory, std::string_view name) {
    return joined({directory, "/", name});
}

}  // namespace

int cZpkcCommon::createStagingTree(const std::string& baseDir, const std::string& name) {
    if (!isDirectory(baseDir)) {
        return kBaseDirectoryMissing;
    }
    std::error_code error;
    const fs::path base = fs::absolute(toPath(baseDir), error);
    if (error) {
        return kBaseDirectoryMissing;
    }
    stagingDir_ = toName(base / name);
    if (!createPrivateDirectory(stagingDir_)) {
        return kStagingNotCreated;
    }
    if (const int code = createSubdirectories(); code != kPackageOk) {
        return code;
    }
    report("Temporary directory %1 created", {stagingDir_});
    return kPackageOk;
}

int cZpkcCommon::createSubdirectories() const {
    struct Step {
        bool (*perform)(const std::string& path);
        std::string_view directory;
        PackageError code;
    };
    constexpr std::array kSteps = {
        Step{&canEnter, "", kStagingNotEntered},
        Step{&createDirectory, "descriptionfiles", kDescriptionFilesNotCreated},
        Step{&createDirectory, kUserFiles, kUserFilesNotCreated},
        Step{&createDirectory, kDeviceConf, kDeviceConfNotCreated},
        Step{&canEnter, kDeviceConf, kDeviceConfNotEntered},
        Step{&createDirectory, kSigtrak, kSigtrakNotCreated},
        Step{&createDirectory, "deviceconf/vistrel", kVistrelNotCreated},
        Step{&canEnter, "", kDeviceConfNotLeft},
    };
    for (const Step& step : kSteps) {
        if (!step.perform(pathOf(step.directory))) {
            return step.code;
        }
    }
    return kPackageOk;
}

int cZpkcCommon::copyUserFiles(const std::vector<std::string>& files, std::string_view prefix) {
    for (const std::string& file : files) {
        failedFile_ = file;
        if (!exists(file)) {
            return kUserFileMissing;
        }
        const std::string entryName = pathIn(kUserFiles, joined({prefix, fileNameOf(file)}));
        if (!stage(file, entryName)) {
            return kCopyingUserFileFailed;
        }
        report("Database file %1 copied to %2", {file, pathOf(entryName)});
    }
    failedFile_.clear();
    return kPackageOk;
}

int cZpkcCommon::copyConfigurationFile(const std::string& file, bool keepName) {
    if (!canEnter(pathOf(kDeviceConf))) {
        return kDeviceConfMissing;
    }
    if (!canEnter(pathOf(kSigtrak))) {
        return kSigtrakMissing;
    }
    if (!exists(file)) {
        return kConfigurationFileMissing;
    }
    const std::string entryName = pathIn(kSigtrak, keepName ? fileNameOf(file) : "sigtrak.cfg");
    // Whoever wrote the document into a pipe would wait for it to come out there forever.
    std::error_code error;
    if (fs::is_fifo(toPath(file), error) || !stage(file, entryName)) {
        return kCopyingConfigurationFileFailed;
    }
    report("Configuration file %1 copied to %2", {file, pathOf(entryName)});
    return kPackageOk;
}

int cZpkcCommon::cleanUp() {
    for (const StagedFile& file : staged_) {
        if (!removeFile(file.path)) {
            return kRemovingStagedFileFailed;
        }
        report("Temporary file %1 removed", {file.path});
    }
    staged_.clear();
    entryNames_.clear();
    constexpr std::array<std::string_view, 6> kInnermostFirst = {
        "descriptionfiles", kUserFiles, kSigtrak, "deviceconf/vistrel", kDeviceConf, ""};
    for (const std::string_view directory : kInnermostFirst) {
        if (!removeDirectory(pathOf(directory))) {
            return kRemovingDirectoryFailed;
        }
    }
    return kPackageOk;
}

bool cZpkcCommon::stage(const std::string& file, const std::string& entryName) {
    const bool replacesAnother = isStaged(entryName);
    if (replacesAnother) {
        // As it may not be written to, it could stand in the way.
        removeFile(pathOf(entryName));
    }
    if (!copyFile(file, pathOf(entryName))) {
        return false;
    }
    if (!replacesAnother) {
        staged_.push_back({pathOf(entryName), entryName});
        entryNames_.insert(entryName);
    }
    return true;
}

bool cZpkcCommon::isStaged(const std::string& entryName) const {
    if (entryNames_.contains(entryName)) {
        return true;
    }
    // Where capitals and small letters are the same, two names may be those of one file.
    const fs::path path = toPath(pathOf(entryName));
    std::error_code error;
    return fs::exists(path, error) && std::ranges::any_of(staged_, [&](const StagedFile& other) {
               return fs::equivalent(toPath(other.path), path, error);
           });
}

void cZpkcCommon::report(std::string_view text, std::initializer_list<std::string_view> arguments) {
    console_.printLine(filledText(text, arguments));
}

std::string cZpkcCommon::pathOf(std::string_view entryName) const {
    return entryName.empty() ? stagingDir_ : pathIn(stagingDir_, entryName);
}

}  // namespace quillmark
