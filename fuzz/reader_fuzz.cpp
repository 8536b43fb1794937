// The reader with resolution: every block parser, the messages with all traces, the model.
#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "fuzz/property.h"
#include "platform/input_file.h"
#include "support/dump.h"

namespace quillmark {
namespace {

struct Parsed {
    int status = 0;
    std::string messages;
    std::string model;
};

Parsed parse(std::string_view text, std::size_t chunkSize) {
    LimitedConsole console;
    const auto root = makePh<PhRoot>();
    Parsed result;
    {
        PhA2l reader(console, "ecu.a2l");
        reader.setVerbose(true);
        reader.setTraceDefaultValues(true);
        MemoryInputFile input(text, chunkSize);
        result.status = reader.parse(*root, input);
    }
    result.messages = std::move(console.out);
    if (result.status == 0) {
        resolve(*root);
    }
    result.model = dump(*root);
    if (result.status == 0) {
        resolve(*root);
        require(dump(*root) == result.model, "resolving twice changes nothing");
    }
    return result;
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillmark;
    const std::string_view text = textOf(data, size);
    const Parsed file = parse(text, 0);
    const Parsed pipe = parse(text, 3);
    require(file.status == 0 || file.status == -1, "a description is read or refused");
    require(file.status == 0 || file.messages.find("Error (") != std::string::npos,
            "what is refused gets a message");
    require(file.status == pipe.status && file.messages == pipe.messages,
            "messages do not depend on how bytes arrive");
    require(file.model == pipe.model, "parsing twice gives the same model");
    return 0;
}
