#include "app/command_line.h"

#include <string_view>

#include "app/compare_options.h"
#include "app/convert_options.h"
#include "app/exit_status.h"
#include "app/usage.h"
#include "platform/program.h"

namespace quillmark {
namespace {

constexpr std::string_view kFooterRule =
    "----------------------------------------------------------------------------------";
static_assert(kFooterRule.size() == 82);

/// How a command ended.
struct CommandResult {
    int status = kExitSuccess;
    bool footer = true;
};

/// Ends a command whose arguments were wrong, which has been told.
CommandResult refuse(Console& console) {
    printUsage(console);
    return {kExitFailure};
}

CommandResult runConvert(std::span<const char* const> arguments, const CommandDrivers& drivers,
                         Console& console) {
    ConvertRequest request;
    if (!parseConvertOptions(arguments.subspan(2), request, console)) {
        return refuse(console);
    }
    switch (drivers.convert(request, console)) {
        case ConversionOutcome::Done:
            return {kExitSuccess};
        case ConversionOutcome::Failed:
            break;
        case ConversionOutcome::Refused:
            return {kExitFailure, false};
    }
    return {kExitFailure};
}

CommandResult runDecompress(std::span<const char* const> arguments, const CommandDrivers& drivers,
                            Console& console) {
    return {drivers.decompress(static_cast<int>(arguments.size()), arguments.data(), console,
                               &printUsage)};
}

CommandResult runCompare(std::span<const char* const> arguments, const CommandDrivers& drivers,
                         Console& console) {
    CompareRequest request;
    if (!parseCompareOptions(arguments.subspan(2), request, console)) {
        return refuse(console);
    }
    // The findings are the result of the comparison; only one that could not be made has failed.
    return {drivers.compare(request, console) ? kExitSuccess : kExitFailure};
}

struct CommandRow {
    std::string_view word;
    CommandResult (*run)(std::span<const char* const> arguments, const CommandDrivers& drivers,
                         Console& console);
};

constexpr CommandRow kCommands[] = {
    {"convert", &runConvert},
    {"decompress", &runDecompress},
    {"compare", &runCompare},
};

void printFooter(int status, Console& console) {
    console.printLine("");
    console.printLine(status == kExitSuccess ? "Done." : "Error.");
    console.printLine(kFooterRule);
    console.printLine("");
}

}  // namespace

int runCommandLine(std::span<const char* const> arguments, const CommandDrivers& drivers,
                   Console& console) {
    console.printLine(kProgramTitle);
    if (arguments.size() >= 2) {
        const std::string_view word = arguments[1];
        for (const CommandRow& command : kCommands) {
            if (command.word == word) {
                const CommandResult result = command.run(arguments, drivers, console);
                if (result.footer) {
                    printFooter(result.status, console);
                }
                return result.status;
            }
        }
    }
    printUsage(console);
    return kExitFailure;
}

}  // namespace quillmark
