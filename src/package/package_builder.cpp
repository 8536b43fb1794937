#include "package/package_builder.h"

#include <QDateTime>
#include <QTimeZone>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "package/archive.h"
#include "package/error_texts.h"
#include "platform/directories.h"
#include "platform/file_name.h"
#include "platform/time_zone.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

constexpr int kNoCompression = 0;

/// Deletes the include file whose content is in the package now. If both have the same name, the
/// package has already taken its place; and what is no file (a device) is not ours to delete.
void removePackedFile(const std::string& includeFile, const std::string& package) {
    std::error_code error;
    const fs::path path = toPath(includeFile);
    if (fs::equivalent(path, toPath(package), error) || !fs::is_regular_file(path, error)) {
        return;
    }
    fs::remove(path, error);
}

}  // namespace

PackageEnvironment currentPackageEnvironment() {
    const std::int64_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const QString name = QDateTime::fromSecsSinceEpoch(now, QTimeZone(utcOffsetAt(now)))
                             .toString(QStringLiteral("yyyyMMdd_hhmmss"));
    return {temporaryDirectory(), name.toStdString()};
}

cGenerator::cGenerator(PackageEnvironment environment, Console& console)
    : environment_(std::move(environment)), console_(console), staging_(console) {}

int cGenerator::generate(const PackageOrder& order) {
    const int code = runSteps(order);
    if (code != kPackageOk) {
        announce(kGenerationFailed);
        console_.printLine("ERROR: " + filledText(errorText(code), {staging_.failedFile()}));
        return 1;
    }
    announce(kFinished);
    return 0;
}

int cGenerator::runSteps(const PackageOrder& order) {
    announce(kPreparingDirectories);
    int code = staging_.createStagingTree(environment_.tempDirectory, environment_.stagingName);
    if (code != kPackageOk) {
        return code;
    }
    announce(kCopyingUserFiles);
    code = staging_.copyUserFiles(order.userFiles, order.userFilePrefix);
    if (code != kPackageOk) {
        return code;
    }
    announce(kCopyingConfigurationFile);
    code = stageIncludeFile(order);
    if (code != kPackageOk) {
        return code;
    }
    announce(kCreatingArchive);
    code = createArchive(order.packageFile, staging_.stagedFiles(), kNoCompression);
    if (code != kPackageOk) {
        return code;
    }
    for (const StagedFile& file : staging_.stagedFiles()) {
        console_.printLine(
            filledText("File %1 added to archive %2", {file.path, order.packageFile}));
    }
    announce(kCleaningUp);
    code = staging_.cleanUp();
    if (code != kPackageOk) {
        return code;
    }
    removePackedFile(order.includeFile, order.packageFile);
    return kPackageOk;
}

int cGenerator::stageIncludeFile(const PackageOrder& order) {
    return order.includeFileIsComplete ? staging_.copyConfigurationFile(order.includeFile, true)
                                       : kCopyingConfigurationFileFailed;
}

void cGenerator::announce(int step) {
    console_.printLine(progressText(step));
}

int generatePackage(const PackageOrder& order, Console& console) {
    return cGenerator(currentPackageEnvironment(), console).generate(order);
}

}  // namespace quillmark
