#include <cstddef>
#include <span>

#include "app/command_line.h"
#include "app/compare_command.h"
#include "app/convert_command.h"
#include "app/decompress_command.h"
#include "platform/console.h"
#include "platform/output_signals.h"

int main(int argumentCount, char* arguments[]) {
    using namespace quillmark;
    turnOutputSignalsIntoErrors();
    StandardConsole console;
    // A large description is millions of objects. They are left to the system, which takes all
    // memory back at once, to spare the time of taking them apart one by one.
    static auto& description = *new Description;
    const CommandDrivers drivers{
        [](const ConvertRequest& request, Console& to) {
            return convertCommand(request, description, to);
        },
        decompressCommand,
        compareCommand,
    };
    return runCommandLine(
        std::span<const char* const>(arguments, static_cast<std::size_t>(argumentCount)), drivers,
        console);
}
