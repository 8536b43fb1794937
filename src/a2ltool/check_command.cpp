#include "a2ltool/check_command.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "a2ltool/color.h"
#include "a2ltool/description_check.h"
#include "a2ltool/file_report.h"
#include "a2ltool/input.h"
#include "a2ltool/report_formats.h"
#include "a2ltool/result_file.h"
#include "a2ltool/source_lines.h"
#include "quillmark/description.h"

namespace quillmark::a2ltool {
namespace {

struct CheckOptions {
    std::vector<std::string> files;
    std::string format;
    std::string output = "-";
    std::string color;
    bool all = false;
    bool errorsOnly = false;
};

FileReport checkFile(const std::string& name, const CheckOptions& options) {
    Input input(name);
    ReadOptions reading;
    reading.setKeepTexts(false);
    if (options.all) {
        reading.setErrorLimit(std::numeric_limits<std::size_t>::max());
    }
    const Description description = input.read(reading, true);
    FileReport report = checkDescription(description, input.shownName(),
                                         options.errorsOnly ? Severity::Error : Severity::Warning);
    if (const auto text = input.text(); text != nullptr) {
        fetchSourceLines(*text, report.findings);
    }
    return report;
}

ToolStatus statusOf(const FileReport& report) {
    if (!report.opened) {
        return ToolStatus::Trouble;
    }
    return report.findings.empty() ? ToolStatus::NothingFound : ToolStatus::Findings;
}

ToolStatus check(const CheckOptions& options) {
    const auto result = ResultFile::open(options.output);
    const auto formats = reportFormats();
    const auto row = std::find_if(formats.begin(), formats.end(),
                                  [&](const auto& each) { return each.word == options.format; });
    const auto format = row->make(result->sink(), isColored(options.color, options.output));
    ToolStatus status = ToolStatus::NothingFound;
    for (const std::string& file : options.files) {
        const FileReport report = checkFile(file, options);
        format->tell(report);
        status = std::max(status, statusOf(report));
    }
    format->end();
    return result->finish() ? status : ToolStatus::Trouble;
}

}  // namespace

CommandRun declareCheck(CommandOptions& options) {
    auto values = std::make_shared<CheckOptions>();
    options.addRequiredOperands({"files", "FILE", "descriptions; - is standard input"},
                                values->files);
    std::vector<std::string> words;
    for (const ReportFormatRow& format : reportFormats()) {
        words.emplace_back(format.word);
    }
    values->format = words.front();
    options.addChoice({"--format", "FORMAT", "text, json, sarif or github"}, values->format, words);
    options.addOption({"-o,--output", "FILE", "where to write; - is standard output"},
                      values->output);
    options.addFlag("--all", values->all, "go on behind a block in which an error stands");
    options.addFlag("--errors-only", values->errorsOnly, "pass over warnings");
    declareColor(options, values->color);
    return [values] { return check(*values); };
}

}  // namespace quillmark::a2ltool
