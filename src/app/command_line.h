#pragma once

#include <span>
#include <string>

#include "app/conversion_driver.h"
#include "cfginclude/convert_request.h"
#include "compare/compare_report.h"
#include "platform/console.h"

namespace quillmark {

/// The work behind the commands, handed in so that tests can watch what is asked of it.
struct CommandDrivers {
    /// Converts one description.
    ConversionOutcome (*convert)(const ConvertRequest& request, Console& console);

    /// Is handed the whole argument vector and prints the usage text through `usage` if it is
    /// incomplete. Returns the exit status.
    int (*decompress)(int argumentCount, const char* const* arguments, Console& console,
                      void (*usage)(Console& console));

    /// Appends its findings to the report. Returns 0 if the two descriptions could be compared.
    int (*compare)(CompareReport& report, bool verbose, const std::string& oldFile,
                   const std::string& newFile, Console& console);
};

/// Runs the program on the argument vector, whose first element is the program's own name: prints
/// the banner, runs the command that the next one names and prints the footer. Returns the exit
/// status of the process.
int runCommandLine(std::span<const char* const> arguments, const CommandDrivers& drivers,
                   Console& console);

}  // namespace quillmark
