#include "a2ltool/diff_command.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "a2ltool/color.h"
#include "a2ltool/difference.h"
#include "a2ltool/difference_output.h"
#include "a2ltool/module_diff.h"
#include "a2ltool/reading.h"
#include "a2ltool/result_file.h"
#include "quillmark/compare.h"

namespace quillmark::a2ltool {
namespace {

struct DiffOptions {
    std::string oldFile;
    std::string newFile;
    std::string format;
    std::string output = "-";
    std::string color;
    std::vector<std::string> ignored;
};

DifferenceKind kindOf(DifferenceLevel level) {
    switch (level) {
        case DifferenceLevel::CannotCompare:
            return DifferenceKind::Incomparable;
        case DifferenceLevel::Warning:
            return DifferenceKind::Name;
        case DifferenceLevel::Error:
            break;
    }
    return DifferenceKind::Setting;
}

std::optional<std::string> valueIfAny(std::string_view value) {
    return value.empty() ? std::nullopt : std::optional<std::string>(value);
}

/// What `compare` would find.
void diffSettings(const Description& oldDescription, const Description& newDescription,
                  const DifferenceHandler& tell) {
    const CompareResult result = compare(oldDescription, newDescription);
    for (const Difference& difference : result.differences()) {
        tell({kindOf(difference.level()),
              "setting",
              {},
              difference.what(),
              valueIfAny(difference.oldValue()),
              valueIfAny(difference.newValue()),
              difference.text()});
    }
}

ToolStatus tellDifferences(const Description& oldDescription, const Description& newDescription,
                           const DiffOptions& options) {
    const auto result = ResultFile::open(options.output);
    const auto formats = differenceFormats();
    const auto row = std::find_if(formats.begin(), formats.end(),
                                  [&](const auto& each) { return each.word == options.format; });
    const auto output = row->make({result->sink(), isColored(options.color, options.output),
                                   oldDescription.name(), newDescription.name()});
    ToolStatus status = ToolStatus::NothingFound;
    const DifferenceHandler tell = [&](const ModelDifference& difference) {
        const auto& ignored = options.ignored;
        const char* const word = differenceKinds()[static_cast<std::size_t>(difference.kind)].word;
        if (std::find(ignored.begin(), ignored.end(), word) == ignored.end()) {
            output->tell(difference);
            status = ToolStatus::Findings;
        }
    };
    diffSettings(oldDescription, newDescription, tell);
    diffSignals(oldDescription, newDescription, tell);
    output->end();
    return result->finish() ? status : ToolStatus::Trouble;
}

ToolStatus diff(const DiffOptions& options) {
    ReadOptions reading;
    reading.setKeepTexts(false);
    const Description* const oldDescription = readWhole(options.oldFile, reading);
    const Description* const newDescription = readWhole(options.newFile, reading);
    if (oldDescription == nullptr || newDescription == nullptr) {
        return ToolStatus::Trouble;
    }
    return tellDifferences(*oldDescription, *newDescription, options);
}

}  // namespace

CommandRun declareDiff(CommandOptions& options) {
    auto values = std::make_shared<DiffOptions>();
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
    for (const DifferenceKindRow& kind : differenceKinds()) {
        kinds.emplace_back(kind.word);
        help.append("\n").append(kind.word).append(": ").append(kind.help);
    }
    options.addChoices({"--ignore", "KIND", help}, values->ignored, kinds);
    declareColor(options, values->color);
    return [values] { return diff(*values); };
}

}  // namespace quillmark::a2ltool
