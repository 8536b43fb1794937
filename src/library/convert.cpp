#include "quillmark/convert.h"

#include <optional>
#include <utility>

#include "cfginclude/convert_request.h"
#include "cfginclude/include_document.h"
#include "library/caller_sink.h"
#include "library/finding_console.h"
#include "library/finding_data.h"
#include "library/package_output.h"
#include "library/verb_access.h"
#include "library/view_access.h"
#include "platform/login_name.h"

namespace quillmark {

struct ConvertOptionsData {
    ConvertRequest request;
    std::string versionFile{kVersionFileName};
    std::optional<std::string> versions;
    std::optional<GenerationTime> time;
    std::optional<std::string> user;
    FindingHandler findingHandler;
};

struct ConvertResultData {
    ConvertStatus status = ConvertStatus::Done;
    Findings findings;
};

namespace {

DocumentOrigin originOf(const ConvertOptionsData& options) {
    return {options.time ? *options.time : currentGenerationTime(),
            options.user ? *options.user : loginName()};
}

LibrarySelection libraryOf(const ConvertOptionsData& options, Console& console) {
    return options.versions ? selectLibraryOf(options.request.library, *options.versions, console)
                            : selectLibrary(options.request.library, options.versionFile, console);
}

/// What is to be done with a document once it is known.
struct Work {
    const ConvertRequest& request;
    const PhRoot& model;
    Console& console;
};

/// Builds the document and hands it to `store(work, root)`, which tells what became of it.
template <typename Store>
ConvertStatus run(const Description& description, const ConvertOptionsData& options,
                  ConvertRequest request, Console& console, Store store) {
    if (!description.isComplete()) {
        console.printLine("Error reading file.");
        return ConvertStatus::NoOutput;
    }
    const DescriptionData& data = *ViewAccess::data(description);
    request.inputFile = data.name;
    const DocumentOrigin origin = originOf(options);
    const LibrarySelection library = libraryOf(options, console);
    IncludeDocument document;
    switch (buildIncludeDocument(request, data.root, origin, library, document, console)) {
        case DocumentStatus::Built:
            break;
        case DocumentStatus::NoOutput:
            return ConvertStatus::NoOutput;
        case DocumentStatus::Refused:
            return ConvertStatus::Refused;
    }
    return store(Work{request, data.root, console}, *document.root);
}

template <typename Store>
ConvertResult runVerb(const Description& description, const ConvertOptionsData& options,
                      ConvertRequest request, Store store) {
    auto result = std::make_shared<ConvertResultData>();
    FindingReceiver receiver(options.findingHandler, result->findings);
    FindingConsole console(receiver);
    result->status = run(description, options, std::move(request), console, store);
    return ConvertResult(std::move(result));
}

ConvertStatus statusOf(IncludeFileState state) {
    switch (state) {
        case IncludeFileState::NotOpened:
            return ConvertStatus::OutputNotOpened;
        case IncludeFileState::CutOff:
            return ConvertStatus::CutOff;
        case IncludeFileState::Complete:
            break;
    }
    return ConvertStatus::Done;
}

}  // namespace

ConvertOptions::ConvertOptions() : data_(std::make_unique<ConvertOptionsData>()) {}
ConvertOptions::ConvertOptions(const ConvertOptions& other)
    : data_(std::make_unique<ConvertOptionsData>(*other.data_)) {}
ConvertOptions::ConvertOptions(ConvertOptions&& other) noexcept = default;
ConvertOptions::~ConvertOptions() = default;

ConvertOptions& ConvertOptions::operator=(ConvertOptions other) noexcept {
    data_.swap(other.data_);
    return *this;
}

ConvertOptions& ConvertOptions::setStationName(std::string name) {
    data_->request.stationName = std::move(name);
    return *this;
}

ConvertOptions& ConvertOptions::setNamePrefix(std::string prefix) {
    data_->request.namePrefix = std::move(prefix);
    return *this;
}

ConvertOptions& ConvertOptions::setCompress(bool compress) {
    data_->request.compress = compress;
    return *this;
}

ConvertOptions& ConvertOptions::setIndent(bool indent) {
    data_->request.indent = indent;
    return *this;
}

ConvertOptions& ConvertOptions::setLibrary(std::string selection) {
    data_->request.library = std::move(selection);
    return *this;
}

ConvertOptions& ConvertOptions::setVersionFile(std::string path) {
    data_->versionFile = std::move(path);
    return *this;
}

ConvertOptions& ConvertOptions::setVersions(std::string content) {
    data_->versions = std::move(content);
    return *this;
}

ConvertOptions& ConvertOptions::setTime(std::int64_t secondsSinceEpoch, std::int32_t utcOffset) {
    data_->time = generationTimeAt(secondsSinceEpoch, utcOffset);
    return *this;
}

ConvertOptions& ConvertOptions::setUser(std::string name) {
    data_->user = std::move(name);
    return *this;
}

ConvertOptions& ConvertOptions::setUserFiles(std::vector<std::string> files) {
    data_->request.userFiles = std::move(files);
    return *this;
}

ConvertOptions& ConvertOptions::setEpkFilePrefix(bool prefix) {
    data_->request.epkFilePrefix = prefix;
    return *this;
}

ConvertOptions& ConvertOptions::setFindingHandler(FindingHandler handler) {
    data_->findingHandler = std::move(handler);
    return *this;
}

ConvertResult::ConvertResult(std::shared_ptr<const ConvertResultData> data) noexcept
    : data_(std::move(data)) {}

ConvertStatus ConvertResult::status() const noexcept {
    return data_->status;
}

const Findings& ConvertResult::findings() const& noexcept {
    return data_->findings;
}

Findings ConvertResult::findings() && {
    return data_->findings;
}

ConvertResult convert(const Description& description, const ConvertOptions& options,
                      const ByteSink& sink) {
    const ConvertOptionsData& data = VerbAccess::data(options);
    return runVerb(description, data, data.request, [&](const Work& work, const CfgElement& root) {
        CallerSink output(sink);
        root.write(output, work.request.indent, 0);
        output.finish();
        return output.ok() ? ConvertStatus::Done : ConvertStatus::CutOff;
    });
}

ConvertResult convert(const Description& description, const ConvertOptions& options,
                      std::string& text) {
    return convert(description, options, [&](std::string_view bytes) {
        text += bytes;
        return true;
    });
}

ConvertResult checkConversion(const Description& description, const ConvertOptions& options) {
    const ConvertOptionsData& data = VerbAccess::data(options);
    ConvertRequest request = data.request;
    request.compress = false;  // compressed sections are made with the document, not behind it
    return runVerb(description, data, std::move(request),
                   [](const Work&, const CfgElement&) { return ConvertStatus::Done; });
}

ConvertResult convertToFile(const Description& description, const ConvertOptions& options,
                            const std::string& outputFile) {
    const ConvertOptionsData& data = VerbAccess::data(options);
    return runVerb(description, data, data.request, [&](const Work& work, const CfgElement& root) {
        return statusOf(storeIncludeFile(outputFile, root, work.request.indent, work.console));
    });
}

ConvertResult convertToPackage(const Description& description, const ConvertOptions& options,
                               const std::string& outputFile, const std::string& packageFile) {
    const ConvertOptionsData& data = VerbAccess::data(options);
    ConvertRequest request = data.request;
    request.outputFile = outputFile;
    request.zpkiFile = packageFile;
    return runVerb(
        description, data, std::move(request), [](const Work& work, const CfgElement& root) {
            const IncludeFileState includeFile =
                storeIncludeFile(work.request.outputFile, root, work.request.indent, work.console);
            if (includeFile == IncludeFileState::NotOpened) {
                return statusOf(includeFile);
            }
            const int status = buildPackage(work.request, includeFile, work.model, work.console);
            return status == 0 ? ConvertStatus::Done : ConvertStatus::NotPacked;
        });
}

}  // namespace quillmark
