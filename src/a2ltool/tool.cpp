#include "a2ltool/tool.h"

#include <cstddef>
#include <variant>
#include <vector>

#include "a2ltool/command_line.h"
#include "a2ltool/command_table.h"

namespace quillmark::a2ltool {

int runTool(int argumentCount, const char* const* arguments) {
    CommandLine commandLine;
    std::vector<CommandRun> runs;
    for (const CommandRow& row : commandTable()) {
        CommandOptions options = commandLine.addCommand(row.word, row.summary);
        runs.push_back(row.declare(options));
    }
    const auto parsed = commandLine.parse(argumentCount, arguments);
    const auto* const command = std::get_if<std::size_t>(&parsed);
    const ToolStatus status = command == nullptr ? std::get<ToolStatus>(parsed) : runs[*command]();
    return static_cast<int>(status);
}

}  // namespace quillmark::a2ltool
