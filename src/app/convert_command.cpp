#include "app/convert_command.h"

#include <cstddef>

#include "app/print_finding.h"
#include "platform/file_name.h"
#include "platform/text.h"
#include "quillmark/convert.h"

namespace quillmark {
namespace {

ConvertOptions optionsOf(const ConvertRequest& request) {
    ConvertOptions options;
    options.setStationName(request.stationName).setNamePrefix(request.namePrefix);
    options.setCompress(request.compress).setIndent(request.indent).setLibrary(request.library);
    options.setUserFiles(request.userFiles).setEpkFilePrefix(request.epkFilePrefix);
    return options;
}

ConversionOutcome outcomeOf(ConvertStatus status) {
    switch (status) {
        case ConvertStatus::Done:
        case ConvertStatus::CutOff:  // has always been taken for done
            return ConversionOutcome::Done;
        case ConvertStatus::Refused:
            return ConversionOutcome::Refused;
        case ConvertStatus::NoOutput:
        case ConvertStatus::OutputNotOpened:
        case ConvertStatus::NotPacked:
            break;
    }
    return ConversionOutcome::Failed;
}

}  // namespace

ConversionOutcome convertCommand(const ConvertRequest& request, Description& description,
                                 Console& console) {
    const FindingHandler print = [&](const Finding& finding) { printFinding(finding, console); };
    // Of the rest the include file shows nothing.
    ReadOptions reading;
    reading.setKeepTexts(false).setKeepArrays(false).setKeepMembers(false);
    reading.setKeepLimits(false).setKeepFormats(false);
    reading.setFindingHandler(print);
    description = Description::readFile(request.inputFile, reading);
    const ConvertOptions options = optionsOf(request).setFindingHandler(print);
    const bool wantsPackage = !request.userFiles.empty() || !request.zpkiFile.empty();
    const ConvertResult result =
        wantsPackage ? convertToPackage(description, options, request.outputFile, request.zpkiFile)
                     : convertToFile(description, options, request.outputFile);
    return outcomeOf(result.status());
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
