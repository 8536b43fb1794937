#include "a2ltool/description_check.h"

#include <cstdint>
#include <string_view>

#include "a2ltool/message_table.h"
#include "quillmark/convert.h"

namespace quillmark::a2ltool {
namespace {

ReportedFinding reported(Severity severity, std::int32_t line, std::int32_t column,
                         std::string_view text) {
    return {severity, line, column, std::string(text), findMessage(severity, text), {}};
}

/// Whether a finding is about the description. What follows from one for the output file is told by
/// the verdict.
bool isWanted(const Finding& finding, Severity least) {
    constexpr std::string_view kNoOutput = "No output file generated.";
    return finding.severity() >= least && finding.text() != kNoOutput;
}

void addFindings(const Findings& findings, Severity least, FileReport& report) {
    for (const Finding& finding : findings) {
        if (isWanted(finding, least)) {
            report.findings.push_back(
                reported(finding.severity(), finding.line(), finding.column(), finding.text()));
        }
    }
}

/// What `convert` would say once it has read the description. The selection of a library is no
/// matter of the description, so the version file is one that allows everything.
void checkOutput(const Description& description, Severity least, FileReport& report) {
    const ConvertResult result =
        checkConversion(description, ConvertOptions().setVersions("<versions/>"));
    addFindings(result.findings(), least, report);
    report.convertible = result.isDone();
    if (!report.convertible) {
        return;
    }
    for (const Project& project : description.projects()) {
        for (const Module& module : project.modules()) {
            if (module.stationProtocol() != ProtocolKind::Undefined) {
                report.stations.push_back({std::string(module.name()), module.stationProtocol()});
            }
        }
    }
}

}  // namespace

FileReport checkDescription(const Description& description, const std::string& name,
                            Severity least) {
    FileReport report;
    report.file = name;
    report.reachedEnd = description.reachedEnd();
    report.convertible = description.isComplete();
    if (description.status() == ReadStatus::NotOpened) {
        report.opened = false;
        report.findings.push_back(reported(Severity::Error, 0, 0, "cannot be opened"));
        return report;
    }
    addFindings(description.findings(), least, report);
    if (description.isComplete()) {
        checkOutput(description, least, report);
    }
    return report;
}

}  // namespace quillmark::a2ltool
