#include <span>

#include "app/command_line.h"
#include "app/conversion_driver.h"
#include "cfginclude/decompress.h"
#include "compare/compare_driver.h"
#include "platform/console.h"

int main(int argumentCount, char* arguments[]) {
    using namespace quillmark;
    StandardConsole console;
    const CommandDrivers drivers{convertCommand, decompressCommand, compareFiles};
    return runCommandLine(
        std::span<const char* const>(arguments, static_cast<std::size_t>(argumentCount)), drivers,
        console);
}
