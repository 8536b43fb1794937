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

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

/// The words behind the program's name. What follows "--" is no option, though it may begin with a
/// hyphen; what follows "--option=" is not its value.
std::vector<std::string> wordsOf(int argumentCount, const char* const* arguments) {
    std::vector<std::string> words;
    bool optionsEnded = false;
    for (int i = 1; i < argumentCount; ++i) {
        const std::string word = arguments[i];
        if (optionsEnded) {
            words.push_back(word.size() > 1 && word.starts_with('-') ? "./" + word : word);
        } else if (word == "--") {
            optionsEnded = true;
        } else if (word.starts_with("--") && word.find('=') == word.size() - 1) {
            words.insert(words.end(), {word.substr(0, word.size() - 1), ""});
        } else {
            words.push_back(word);
        }
    }
    return words;
}

std::string shownExtra(const CLI::App& parser) {
    const std::string extra = parser.remaining(true).front();
    if (extra.starts_with('-')) {
        return "unknown option " + quoted(extra);
    }
    const bool hasCommand = !parser.get_subcommands().empty();
    return (hasCommand ? "unexpected argument " : "unknown command ") + quoted(extra);
}

std::string shownMissing(const CLI::App& command) {
    const auto missing = command.get_options(
        [](const CLI::Option* option) { return option->get_required() && option->count() == 0; });
    return "missing argument: " + missing.front()->get_name();
}

/// What is wrong with a command line, in one line. CLI11 words it otherwise in each of its
/// versions, so it only tells what kind of mistake it is.
std::string shownMistake(const CLI::App& parser, const std::vector<std::string>& words,
                         const CLI::ParseError& mistake) {
    switch (static_cast<CLI::ExitCodes>(mistake.get_exit_code())) {
        case CLI::ExitCodes::ExtrasError:
            return shownExtra(parser);
        case CLI::ExitCodes::RequiredError:
            return shownMissing(*parser.get_subcommands().front());
        case CLI::ExitCodes::ArgumentMismatch:
            // Options take whatever follows, so it is the last word that nothing follows.
            return words.back() + " needs a value";
        default:
            // What the checks of the options say.
            return mistake.what();
    }
}

/// Help and version go to standard output, a mistake to standard error.
ToolStatus endOfParsing(const CLI::App& parser, const std::vector<std::string>& words,
                        const CLI::ParseError& end) {
    if (end.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
        complain(shownMistake(parser, words, end));
        return ToolStatus::Trouble;
    }
    parser.exit(end);
    if (std::fflush(stdout) != 0) {
        complain("cannot write standard output");
        return ToolStatus::Trouble;
    }
    return ToolStatus::NothingFound;
}

/// Makes an option take these words only, which its help lists.
CLI::Validator oneOf(const std::vector<std::string>& words) {
    const auto check = [words](const std::string& word) {
        const bool isKnown = std::find(words.begin(), words.end(), word) != words.end();
        return isKnown ? "" : quoted(word) + " is none of " + CLI::detail::join(words, ", ");
    };
    return {check, "{" + CLI::detail::join(words, ",") + "}"};
}

std::string checkNumber(const std::string& text) {
    constexpr std::size_t kMostDigits = 18;
    const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                          text.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? "" : quoted(text) + " is no number, or too large";
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
    add(part_, text, value)->check(checkNumber);
}

void CommandOptions::addOption(const OptionText& text, std::vector<std::string>& values) {
    add(part_, text, values)->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void CommandOptions::addChoice(const OptionText& text, std::string& value,
                               const std::vector<std::string>& words) {
    add(part_, text, value)->check(oneOf(words));
}

void CommandOptions::addChoices(const OptionText& text, std::vector<std::string>& values,
                                const std::vector<std::string>& words) {
    add(part_, text, values)
        ->delimiter(',')
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(oneOf(words));
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
    // The completions look for the names of these groups.
    parser_->option_defaults()->group("Options")->multi_option_policy(
        CLI::MultiOptionPolicy::TakeLast);
}

CommandLine::~CommandLine() = default;

CommandOptions CommandLine::addCommand(const char* word, const char* summary) {
    CLI::App& part = *parser_->add_subcommand(word, summary);
    part.group("Commands");
    part.footer(kExitStatuses);
    commands_.push_back(&part);
    return CommandOptions(part);
}

std::variant<std::size_t, ToolStatus> CommandLine::parse(int argumentCount,
                                                         const char* const* arguments) {
    const std::vector<std::string> words = wordsOf(argumentCount, arguments);
    try {
        parser_->parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ParseError& end) {
        return endOfParsing(*parser_, words, end);
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
