#include "app/convert_command.h"

#include <cstddef>

#include "a2l/description.h"
#include "cfginclude/include_document.h"
#include "library/package_output.h"
#include "platform/file_name.h"
#include "platform/text.h"

namespace quillmark {

ConversionOutcome convertCommand(const ConvertRequest& request, PhRoot& model, Console& console) {
    if (!readDescription(request.inputFile, model, console)) {
        console.printLine("Error reading file.");
        return ConversionOutcome::Failed;
    }
    IncludeDocument document;
    switch (buildIncludeDocument(request, model, currentOrigin(), document, console)) {
        case DocumentStatus::Built:
            break;
        case DocumentStatus::NoOutput:
            return ConversionOutcome::Failed;
        case DocumentStatus::Refused:
            return ConversionOutcome::Refused;
    }
    const bool wantsPackage = !request.userFiles.empty() || !request.zpkiFile.empty();
    const int status = wantsPackage ? buildPackage(request, *document.root, model, console)
                                    : writeIncludeFile(request.outputFile, *document.root,
                                                       request.indent, console);
    return status == 0 ? ConversionOutcome::Done : ConversionOutcome::Failed;
}

std::string zpkiNameFor(std::string_view outputFile) {
    const std::size_t fileStart = startOfLastPart(outputFile, kDirectorySeparators);
    const std::size_t dot = outputFile.rfind('.');
    if (dot == std::string_view::npos || dot < fileStart || dot + 1 == outputFile.size()) {
        return {};
    }
    return joined({outputFile.substr(0, dot), ".zpki"});
}

}  // namespace quillmark
