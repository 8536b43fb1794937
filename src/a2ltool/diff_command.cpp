#include "a2ltool/diff_command.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "a2ltool/color.h"
#include "a2ltool/difference_kinds.h"
#include "a2ltool/difference_output.h"
#include "a2ltool/reading.h"
#include "a2ltool/result_file.h"
#include "quillmark/diff.h"

namespace quillmark::a2ltool {
namespace {

struct DiffCall {
    std::string oldFile;
    std::string newFile;
    std::string format;
    std::string output = "-";
    std::string color;
    std::vector<std::string> ignored;
};

DiffOptions diffOptions(const std::vector<std::string>& ignored) {
    DiffOptions options;
    for (const DifferenceKindRow& row : differenceKinds()) {
        options.setIgnored(
            row.kind, std::find(ignored.begin(), ignored.end(), textOf(row.kind)) != ignored.end());
    }
    return options;
}

ToolStatus tellDifferences(const Description& oldDescription, const Description& newDescription,
                           const DiffCall& call) {
    const auto result = ResultFile::open(call.output);
    const auto formats = differenceFormats();
    const auto row = std::find_if(formats.begin(), formats.end(),
                                  [&](const auto& each) { return each.word == call.format; });
    const auto output = row->make({result->sink(), isColored(call.color, call.output),
                                   oldDescription.name(), newDescription.name()});
    const DiffResult differences =
        diff(oldDescription, newDescription,
             diffOptions(call.ignored).setHandler([&output](const ModelDifference& difference) {
                 output->tell(difference);
             }));
    output->end();
    if (!result->finish()) {
        return ToolStatus::Trouble;
    }
    return differences.count() > 0 ? ToolStatus::Findings : ToolStatus::NothingFound;
}

ToolStatus runDiff(const DiffCall& call) {
    ReadOptions reading;
    reading.setKeepTexts(false).setKeepMembers(false).setKeepLimits(false);
    const Description* const oldDescription = readWhole(call.oldFile, reading);
    const Description* const newDescription = readWhole(call.newFile, reading);
    if (oldDescription == nullptr || newDescription == nullptr) {
        return ToolStatus::Trouble;
    }
    return tellDifferences(*oldDescription, *newDescription, call);
}

}  // namespace

CommandRun declareDiff(CommandOptions& options) {
    auto values = std::make_shared<DiffCall>();
    options.addRequiredOperand({"old", "FILE", "the old description; - is standard input"},
                               values->oldFile);
    options.addRequiredOperand({"new", "FILE", "the new description"}, values->newFile);
    std::vector<std::string> formats;
    for (const DifferenceFormatRow& format : differenceFormats()) {
        formats.emplace_back(format.word);
    }
    values->format = formats.front();
    options.addChoice({"--format", "FORMAT", "text or json"}, values->format, formats);
    options.addOption({"-o,--output", "FILE", "where to write; - is standard output"},
                      values->output);
    std::vector<std::string> kinds;
    std::string help = "pass over differences of these kinds, separated by commas:";
    for (const DifferenceKindRow& row : differenceKinds()) {
        const std::string_view word = textOf(row.kind);
        kinds.emplace_back(word);
        help.append("\n").append(word).append(": ").append(row.help);
    }
    options.addChoices({"--ignore", "KIND", help}, values->ignored, kinds);
    declareColor(options, values->color);
    return [values] { return runDiff(*values); };
}

}  // namespace quillmark::a2ltool
