#include "app/decompress_command.h"

#include <new>
#include <optional>
#include <string>
#include <utility>

#include "cfginclude/blob_codec.h"
#include "platform/console.h"
#include "platform/output_sink.h"

namespace quillmark {

namespace {

constexpr int kDone = 0;
constexpr int kRefused = 1;
constexpr int kFailed = -1;

int end(Console& console, std::string_view message, int status) {
    console.printLine(message);
    return status;
}

int expandFile(const std::string& inputName, const std::string& outputName, Console& console) {
    auto input = StandardInputFile::openBinary(inputName);
    if (input == nullptr) {
        return end(console, "ERROR: Cannot open input file: " + inputName, kRefused);
    }
    return expandInput(std::move(input), announcedSize(inputName), outputName, console);
}

}  // namespace

int expandInput(std::unique_ptr<InputFile> input, std::size_t expectedSize,
                const std::string& outputName, Console& console) {
    std::string document;
    const bool complete = readToEnd(*input, expectedSize, document);
    input.reset();  // the output may be the same file
    const std::optional<BlobDocument> parts = complete ? findBlob(document) : std::nullopt;
    if (!parts) {
        return end(console, "Error: File is corrupt or not a compressed file.", kFailed);
    }

    FileSink output(outputName);
    if (!output.isOpen()) {
        return end(console, "Error: Cannot open output file: " + outputName, kRefused);
    }
    expandBlob(*parts, output);
    output.finish();
    if (!output.ok()) {
        return end(console, "Error: File writing failed.", kFailed);
    }
    return end(console, "Decompressing was successful.", kDone);
}

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
        return expandFile(argv[kInputArgument], argv[kOutputArgument], console);
    } catch (const std::bad_alloc&) {
        // A file too large for the memory must not look like a crash.
        return end(console, "Error: File writing failed.", kFailed);
    }
}

}  // namespace quillmark
