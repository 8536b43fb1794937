#include "app/conversion_driver.h"

#include <cstddef>

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "cfginclude/include_document.h"
#include "package/package_builder.h"
#include "platform/file_name.h"

namespace quillmark {
namespace {

/// Reads a description into the model; false when it cannot be read, which has been reported.
bool readDescription(const std::string& fileName, PhRoot& model, Console& console) {
    PhA2l reader(console, fileName);
    reader.setKeepLongIdentifiers(false);
    if (reader.parse(model) != 0) {
        console.printLine("Error reading file.");
        return false;
    }
    resolve(model);
    return true;
}

}  // namespace

ConversionOutcome convertCommand(const ConvertRequest& request, PhRoot& model, Console& console) {
    if (!readDescription(request.inputFile, model, console)) {
        return ConversionOutcome::failed;
    }
    IncludeDocument document;
    switch (buildIncludeDocument(request, model, currentOrigin(), document, console)) {
        case DocumentStatus::Built:
            break;
        case DocumentStatus::NoOutput:
            return ConversionOutcome::failed;
        case DocumentStatus::Refused:
            return ConversionOutcome::refused;
    }
    const bool wantsPackage = !request.userFiles.empty() || !request.zpkiFile.empty();
    const int status = wantsPackage ? buildPackage(request, *document.root, model, console)
                                    : writeIncludeFile(request.outputFile, *document.root,
                                                       request.indent, console);
    return status == 0 ? ConversionOutcome::done : ConversionOutcome::failed;
}

std::string zpkiNameFor(std::string_view outputFile) {
    const std::size_t fileStart = startOfLastPart(outputFile, kDirectorySeparators);
    const std::size_t dot = outputFile.rfind('.');
    if (dot == std::string_view::npos || dot < fileStart || dot + 1 == outputFile.size()) {
        return {};
    }
    return std::string(outputFile.substr(0, dot)) + ".zpki";
}

}  // namespace quillmark
