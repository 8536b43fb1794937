#include "package/package_builder.h"

#include <QDateTime>
#include <QTimeZone>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "model/setting_names.h"
#include "package/archive.h"
#include "package/error_texts.h"
#include "platform/directories.h"
#include "platform/file_name.h"
#include "platform/time_zone.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

constexpr int kNoCompression = 0;

/// The first module of the first project, or nullptr.
const PhGroup* firstModule(const PhRoot& model) {
    if (model.documents.empty() || model.documents.at(0).documents.empty()) {
        return nullptr;
    }
    return &model.documents.at(0).documents.at(0);
}

bool mayStandInPrefix(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c == '-';
}

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

int cGenerator::generate(const ConvertRequest& request, std::string_view userFilePrefix,
                         IncludeFileState includeFile) {
    const int code = runSteps(request, userFilePrefix, includeFile);
    if (code != kPackageOk) {
        announce(kGenerationFailed);
        console_.printLine("ERROR: " + filledText(errorText(code), {staging_.failedFile()}));
        return 1;
    }
    announce(kFinished);
    return 0;
}

int cGenerator::runSteps(const ConvertRequest& request, std::string_view userFilePrefix,
                         IncludeFileState includeFile) {
    announce(kPreparingDirectories);
    int code = staging_.createStagingTree(environment_.tempDirectory, environment_.stagingName);
    if (code != kPackageOk) {
        return code;
    }
    announce(kCopyingUserFiles);
    code = staging_.copyUserFiles(request.userFiles, userFilePrefix);
    if (code != kPackageOk) {
        return code;
    }
    announce(kCopyingConfigurationFile);
    code = stageIncludeFile(request.outputFile, includeFile);
    if (code != kPackageOk) {
        return code;
    }
    announce(kCreatingArchive);
    code = createArchive(request.zpkiFile, staging_.stagedFiles(), kNoCompression);
    if (code != kPackageOk) {
        return code;
    }
    for (const StagedFile& file : staging_.stagedFiles()) {
        console_.printLine(
            filledText("File %1 added to archive %2", {file.path, request.zpkiFile}));
    }
    announce(kCleaningUp);
    code = staging_.cleanUp();
    if (code != kPackageOk) {
        return code;
    }
    removePackedFile(request.outputFile, request.zpkiFile);
    return kPackageOk;
}

int cGenerator::stageIncludeFile(const std::string& file, IncludeFileState state) {
    // A logger would take what is missing in it for what was never asked for.
    return state == IncludeFileState::complete ? staging_.copyConfigurationFile(file, true)
                                               : kCopyingConfigurationFileFailed;
}

void cGenerator::announce(int step) {
    console_.printLine(progressText(step));
}

std::string userFilePrefix(const PhRoot& model) {
    const PhGroup* const module = firstModule(model);
    if (module == nullptr || !module->properties) {
        return {};
    }
    const PhValue* const epk = module->properties->find(setting::kEpk);
    if (epk == nullptr) {
        return {};
    }
    std::string prefix(epk->text().view());
    std::replace_if(
        prefix.begin(), prefix.end(), [](char c) { return !mayStandInPrefix(c); }, '_');
    return prefix;
}

int buildPackage(const ConvertRequest& request, const CfgElement& root, const PhRoot& model,
                 Console& console) {
    const IncludeFileState includeFile =
        storeIncludeFile(request.outputFile, root, request.indent, console);
    if (includeFile == IncludeFileState::notOpened) {
        return 1;
    }
    const std::string prefix = request.epkFilePrefix ? userFilePrefix(model) : std::string();
    return cGenerator(currentPackageEnvironment(), console).generate(request, prefix, includeFile);
}

}  // namespace quillmark
