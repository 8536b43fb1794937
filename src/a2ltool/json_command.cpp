#include "a2ltool/json_command.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

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
    std::vector<CLI::Option*> sections;  ///< for each of jsonSections()
};

/// Which sections are to be written: those that were named, or all.
std::vector<bool> wantedSections(const JsonOptions& options) {
    std::vector<bool> wanted;
    for (const CLI::Option* option : options.sections) {
        wanted.push_back(option->count() > 0);
    }
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

CommandRun declareJson(CLI::App& options) {
    auto values = std::make_shared<JsonOptions>();
    options.add_option("file", values->file, "a description; - is standard input")
        ->type_name("FILE")
        ->required();
    options.add_option("-o,--output", values->output, "where to write; - is standard output")
        ->type_name("FILE");
    options.add_flag("--lines", values->lines, "one object per line, not one document");
    options.add_flag("--texts", values->texts, "long identifiers too, which take memory");
    for (const JsonSection& section : jsonSections()) {
        const std::string help = std::string("only ") + section.help;
        values->sections.push_back(options.add_flag(section.option, help)->group(kParts));
    }
    return [values] { return writeJson(*values); };
}

}  // namespace quillmark::a2ltool
