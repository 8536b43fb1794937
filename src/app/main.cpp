#include <span>

#include "app/command_line.h"
#include "app/conversion_driver.h"
#include "cfginclude/decompress.h"
#include "platform/console.h"

namespace {

int compareNothing(quillmark::CompareReport&, bool, const std::string&, const std::string&,
                   quillmark::Console&) {
    return 1;
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    using namespace quillmark;
    StandardConsole console;
    const CommandDrivers drivers{convertCommand, decompressCommand, compareNothing};
    return runCommandLine(
        std::span<const char* const>(arguments, static_cast<std::size_t>(argumentCount)), drivers,
        console);
}
