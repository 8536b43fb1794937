#include <array>
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
    // The models of a large description are millions of objects. They are left to the system, which
    // takes all memory back at once, to spare the time of taking them apart one by one.
    static auto& models = *new std::array<PhRoot, 2>;
    const CommandDrivers drivers{
        [](const ConvertRequest& request, Console& to) {
            return convertCommand(request, models[0], to);
        },
        decompressCommand,
        [](CompareReport& report, bool verbose, const std::string& oldFile,
           const std::string& newFile, Console& to) {
            return compareFiles(report, verbose, oldFile, models[0], newFile, models[1], to);
        },
    };
    return runCommandLine(
        std::span<const char* const>(arguments, static_cast<std::size_t>(argumentCount)), drivers,
        console);
}
