#include "a2ltool/tool.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "a2ltool/command_table.h"
#include "a2ltool/complaint.h"
#include "a2ltool/tool_status.h"
#include "platform/program.h"
#include "platform/text.h"

namespace quillmark::a2ltool {
namespace {

constexpr const char* kExitStatuses =
    "Exit status: 0 nothing found, 1 findings, 2 trouble. A file named - is standard input or "
    "output.";

/// The part of the command line that belongs to a command, and its work.
struct DeclaredCommand {
    CLI::App* part;
    CommandRun run;
};

std::vector<DeclaredCommand> declareCommands(CLI::App& commandLine) {
    std::vector<DeclaredCommand> commands;
    for (const CommandRow& row : commandTable()) {
        CLI::App* const part = commandLine.add_subcommand(row.word, row.summary);
        part->footer(kExitStatuses);
        commands.push_back({part, row.declare(*part)});
    }
    return commands;
}

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// Help and version go to standard output, a mistake to standard error.
ToolStatus endOfParsing(const CLI::App& commandLine, const CLI::ParseError& end) {
    if (end.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
        complain(oneLine(end.what()));
        return ToolStatus::Trouble;
    }
    commandLine.exit(end);
    return std::fflush(stdout) == 0 ? ToolStatus::NothingFound : ToolStatus::Trouble;
}

}  // namespace

int runTool(int argumentCount, const char* const* arguments) {
    CLI::App commandLine("Reads descriptions of control units (A2L) for people and pipelines.",
                         std::string(kToolName));
    commandLine.set_version_flag("--version", joined({kToolName, " (", kProgramTitle, ")"}),
                                 "show the version and exit");
    commandLine.set_help_flag("-h,--help", "show this help and exit");
    commandLine.require_subcommand(0, 1);
    commandLine.footer(kExitStatuses);
    const std::vector<DeclaredCommand> commands = declareCommands(commandLine);
    try {
        commandLine.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& end) {
        return static_cast<int>(endOfParsing(commandLine, end));
    }
    const auto wanted = std::find_if(commands.begin(), commands.end(),
                                     [](const auto& command) { return command.part->parsed(); });
    if (wanted == commands.end()) {
        complain("a command is missing; --help lists them");
        return static_cast<int>(ToolStatus::Trouble);
    }
    return static_cast<int>(wanted->run());
}

}  // namespace quillmark::a2ltool
