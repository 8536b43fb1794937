#include "app/decompress_command.h"

#include <new>
#include <string>
#include <string_view>

#include "platform/console.h"
#include "quillmark/expand.h"

namespace quillmark {

namespace {

constexpr int kDone = 0;
constexpr int kRefused = 1;
constexpr int kFailed = -1;

int end(Console& console, std::string_view message, int status) {
    console.printLine(message);
    return status;
}

int expandAndReport(const std::string& inputName, const std::string& outputName, Console& console) {
    switch (expandFile(inputName, outputName)) {
        case ExpandStatus::Done:
            return end(console, "Decompressing was successful.", kDone);
        case ExpandStatus::NotOpened:
            return end(console, "ERROR: Cannot open input file: " + inputName, kRefused);
        case ExpandStatus::NotCompressed:
            return end(console, "Error: File is corrupt or not a compressed file.", kFailed);
        case ExpandStatus::OutputNotOpened:
            return end(console, "Error: Cannot open output file: " + outputName, kRefused);
        case ExpandStatus::NotWritten:
            break;
    }
    return end(console, "Error: File writing failed.", kFailed);
}

}  // namespace

int decompressCommand(int argc, const char* const* argv, Console& console,
                      void (*printUsage)(Console&)) {
    constexpr int kInputArgument = 2;
    constexpr int kOutputArgument = 3;

    if (argc <= kOutputArgument) {
        console.printLine(argc <= kInputArgument ? "Error: no valid input file specified."
                                                 : "Error: no valid output file specified.");
        printUsage(console);
        return kRefused;
    }
    try {
        return expandAndReport(argv[kInputArgument], argv[kOutputArgument], console);
    } catch (const std::bad_alloc&) {
        // A file too large for the memory must not look like a crash.
        return end(console, "Error: File writing failed.", kFailed);
    }
}

}  // namespace quillmark
