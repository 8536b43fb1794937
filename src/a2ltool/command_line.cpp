#include "a2ltool/command_line.h"

#include <algorithm>
#include <cstdio>

#include <CLI/CLI.hpp>

#include "a2ltool/complaint.h"
#include "platform/program.h"
#include "platform/text.h"

namespace quillmark::a2ltool {
namespace {

constexpr const char* kExitStatuses =
    "Exit status: 0 nothing found, 1 findings, 2 trouble. A file named - is standard input or "
    "output.";

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// Help and version go to standard output, a mistake to standard error.
ToolStatus endOfParsing(const CLI::App& parser, const CLI::ParseError& end) {
    if (end.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
        complain(oneLine(end.what()));
        return ToolStatus::Trouble;
    }
    parser.exit(end);
    return std::fflush(stdout) == 0 ? ToolStatus::NothingFound : ToolStatus::Trouble;
}

template <typename Value>
CLI::Option* add(CLI::App& part, const OptionText& text, Value& value) {
    return part.add_option(text.names, value, text.help)->type_name(text.shown);
}

}  // namespace

void CommandOptions::addOperand(const OptionText& text, std::string& value) {
    add(part_, text, value);
}

void CommandOptions::addRequiredOperand(const OptionText& text, std::string& value) {
    add(part_, text, value)->required();
}

void CommandOptions::addRequiredOperands(const OptionText& text, std::vector<std::string>& values) {
    add(part_, text, values)->required();
}

void CommandOptions::addOption(const OptionText& text, std::string& value) {
    add(part_, text, value);
}

void CommandOptions::addOption(const OptionText& text, std::string& value, OptionCheck check) {
    add(part_, text, value)->check(check);
}

void CommandOptions::addOption(const OptionText& text, std::uint64_t& value) {
    add(part_, text, value);
}

void CommandOptions::addOption(const OptionText& text, std::vector<std::string>& values) {
    add(part_, text, values)->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void CommandOptions::addChoice(const OptionText& text, std::string& value,
                               const std::vector<std::string>& words) {
    add(part_, text, value)->check(CLI::IsMember(words));
}

void CommandOptions::addChoices(const OptionText& text, std::vector<std::string>& values,
                                const std::vector<std::string>& words) {
    add(part_, text, values)
        ->delimiter(',')
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(CLI::IsMember(words));
}

void CommandOptions::addFlag(const char* names, bool& value, const std::string& help) {
    part_.add_flag(names, value, help);
}

void CommandOptions::addFlag(const char* names, bool& value, const std::string& help,
                             const char* group) {
    part_.add_flag(names, value, help)->group(group);
}

CommandLine::CommandLine()
    : parser_(std::make_unique<CLI::App>(
          "Reads descriptions of control units (A2L) for people and pipelines.",
          std::string(kToolName))) {
    parser_->set_version_flag("--version", joined({kToolName, " (", kProgramTitle, ")"}),
                              "show the version and exit");
    parser_->set_help_flag("-h,--help", "show this help and exit");
    parser_->require_subcommand(0, 1);
    parser_->footer(kExitStatuses);
}

CommandLine::~CommandLine() = default;

CommandOptions CommandLine::addCommand(const char* word, const char* summary) {
    CLI::App& part = *parser_->add_subcommand(word, summary);
    part.footer(kExitStatuses);
    commands_.push_back(&part);
    return CommandOptions(part);
}

std::variant<std::size_t, ToolStatus> CommandLine::parse(int argumentCount,
                                                         const char* const* arguments) {
    try {
        parser_->parse(argumentCount, arguments);
    } catch (const CLI::ParseError& end) {
        return endOfParsing(*parser_, end);
    }
    const auto wanted = std::find_if(commands_.begin(), commands_.end(),
                                     [](const CLI::App* command) { return command->parsed(); });
    if (wanted == commands_.end()) {
        complain("a command is missing; --help lists them");
        return ToolStatus::Trouble;
    }
    return static_cast<std::size_t>(wanted - commands_.begin());
}

}  // namespace quillmark::a2ltool
