#include "a2ltool/json_command.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "a2ltool/description_json.h"
#include "a2ltool/reading.h"
#include "a2ltool/result_file.h"

namespace quillmark::a2ltool {
namespace {

constexpr const char* kParts = "Parts (all of them if none is named)";

struct JsonOptions {
    std::string file;
    std::string output = "-";
    bool lines = false;
    bool texts = false;
    std::deque<bool> sections;  ///< whether each of jsonSections() was named
};

/// Which sections are to be written: those that were named, or all.
std::vector<bool> wantedSections(const JsonOptions& options) {
    std::vector<bool> wanted(options.sections.begin(), options.sections.end());
    if (std::find(wanted.begin(), wanted.end(), true) == wanted.end()) {
        wanted.assign(wanted.size(), true);
    }
    return wanted;
}

ToolStatus writeJson(const JsonOptions& options) {
    const Description* const description =
        readWhole(options.file, ReadOptions().setKeepTexts(options.texts));
    if (description == nullptr) {
        return ToolStatus::Trouble;
    }
    const auto result = ResultFile::open(options.output);
    DescriptionJson json(
        result->sink(),
        options.lines ? DescriptionJson::Form::Lines : DescriptionJson::Form::Document,
        wantedSections(options));
    json.write(*description);
    return result->finish() ? ToolStatus::NothingFound : ToolStatus::Trouble;
}

}  // namespace

CommandRun declareJson(CommandOptions& options) {
    auto values = std::make_shared<JsonOptions>();
    options.addRequiredOperand({"file", "FILE", "a description; - is standard input"},
                               values->file);
    options.addOption({"-o,--output", "FILE", "where to write; - is standard output"},
                      values->output);
    options.addFlag("--lines", values->lines, "one object per line, not one document");
    options.addFlag("--texts", values->texts, "long identifiers too, which take memory");
    for (const JsonSection& section : jsonSections()) {
        bool& isNamed = values->sections.emplace_back(false);
        options.addFlag(section.option, isNamed, std::string("only ") + section.help, kParts);
    }
    return [values] { return writeJson(*values); };
}

}  // namespace quillmark::a2ltool
