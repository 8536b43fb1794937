#pragma once

#include <functional>
#include <span>
#include <string>

#include "app/compare_options.h"
#include "app/convert_command.h"
#include "cfginclude/convert_request.h"
#include "platform/console.h"

namespace quillmark {

/// The work behind the commands, handed in so that main() can keep what they work on, and tests can
/// watch what is asked of it.
struct CommandDrivers {
    /// Converts one description.
    std::function<ConversionOutcome(const ConvertRequest& request, Console& console)> convert;

    /// Is handed the whole argument vector and prints the usage text through `usage` if it is
    /// incomplete. Returns the exit status.
    std::function<int(int argumentCount, const char* const* arguments, Console& console,
                      void (*usage)(Console& console))>
        decompress;

    /// Compares two descriptions and prints what was found. Returns whether they could be compared.
    std::function<bool(const CompareRequest& request, Console& console)> compare;
};

/// Runs the program on the argument vector, whose first element is the program's own name: prints
/// the banner, runs the command that the next one names and prints the footer. Returns the exit
/// status of the process.
int runCommandLine(std::span<const char* const> arguments, const CommandDrivers& drivers,
                   Console& console);

}  // namespace quillmark
