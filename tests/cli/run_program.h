#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

#include "cli/command_file.h"

namespace quillmark::golden {

/// How and with what output a program ended.
struct RunResult {
    /// The exit status in decimal, or "signal 11", or "timeout".
    std::string exit;
    std::string out;
    std::string err;
};

/// What a program gets, and what it may take.
struct RunConditions {
    std::chrono::steady_clock::time_point time;         ///< when it has to be at its end
    std::uint64_t memory = 0;                           ///< bytes of address space; 0 for no limit
    std::filesystem::path standardInput = "/dev/null";  ///< a file
};

/// Runs a program in a directory and waits for its end. `scratch` is a directory for the two output
/// files.
RunResult runProgram(const std::filesystem::path& program, const Arguments& arguments,
                     const std::filesystem::path& workDir, const std::filesystem::path& scratch,
                     const RunConditions& conditions);

/// Starts a process that writes a content into a named pipe as soon as somebody reads from it, and
/// its last byte again and again if it is to be without end. Returns its id for stopProcess.
int feedPipe(const std::filesystem::path& pipe, const std::string& content, bool withoutEnd);

/// Ends a process that feedPipe started and waits for it.
void stopProcess(int process);

}  // namespace quillmark::golden
