#include "quillmark/expand.h"

#include <optional>
#include <utility>

#include "cfginclude/blob_codec.h"
#include "library/caller_sink.h"
#include "library/expand_input.h"
#include "platform/output_sink.h"

namespace quillmark {

ExpandStatus expand(std::string_view includeFile, const ByteSink& sink) {
    const std::optional<BlobDocument> parts = findBlob(includeFile);
    if (!parts) {
        return ExpandStatus::NotCompressed;
    }
    CallerSink output(sink);
    expandBlob(*parts, output);
    output.finish();
    return output.ok() ? ExpandStatus::Done : ExpandStatus::NotWritten;
}

ExpandStatus expand(std::string_view includeFile, std::string& text) {
    return expand(includeFile, [&](std::string_view bytes) {
        text += bytes;
        return true;
    });
}

ExpandStatus expandFile(const std::string& inputFile, const std::string& outputFile) {
    auto input = StandardInputFile::openBinary(inputFile);
    if (input == nullptr) {
        return ExpandStatus::NotOpened;
    }
    return expandInput(std::move(input), announcedSize(inputFile), outputFile);
}

ExpandStatus expandInput(std::unique_ptr<InputFile> input, std::size_t expectedSize,
                         const std::string& outputName) {
    std::string document;
    const bool complete = readToEnd(*input, expectedSize, document);
    input.reset();  // the output may be the same file
    const std::optional<BlobDocument> parts = complete ? findBlob(document) : std::nullopt;
    if (!parts) {
        return ExpandStatus::NotCompressed;
    }
    FileSink output(outputName);
    if (!output.isOpen()) {
        return ExpandStatus::OutputNotOpened;
    }
    expandBlob(*parts, output);
    output.finish();
    return output.ok() ? ExpandStatus::Done : ExpandStatus::NotWritten;
}

}  // namespace quillmark
