#include "bench/sample.h"

#include <charconv>
#include <string_view>

#include "a2l/resolution.h"
#include "bench/generate.h"
#include "cfginclude/include_document.h"
#include "platform/input_file.h"

namespace quillmark::bench {
namespace {

constexpr std::size_t kMegabyte = 1'000'000;
std::size_t chosenSize = 4 * kMegabyte;

/// Findings would be counted as work of the stage that is measured; there are none.
class NoConsole final : public Console {
  public:
    void print(std::string_view) override {}
    void printError(std::string_view) override {}
    void flush() override {}
};

bool read(PhRoot& root) {
    NoConsole console;
    PhA2l reader(console, "sample.a2l");
    MemoryInputFile input(sample());
    return reader.parse(root, input) == 0;
}

std::string makeDocument(bool compress) {
    PhRoot root;
    NoConsole console;
    IncludeDocument document;
    ConvertRequest request;
    request.inputFile = "sample.a2l";
    request.compress = compress;
    std::string text;
    if (read(root) && resolve(root) == 0 &&
        buildIncludeDocument(request, root, {}, document, console) == DocumentStatus::Built) {
        StringSink sink(text);
        document.root->write(sink, false, 0);
        sink.finish();
    }
    return text;
}

}  // namespace

std::size_t sampleSize() {
    return chosenSize;
}

const std::string& sample() {
    static const std::string text = generatedDescription("realistic", chosenSize);
    return text;
}

const std::string& sampleDocument(bool compress) {
    static const std::string plain = makeDocument(false);
    static const std::string packed = makeDocument(true);
    return compress ? packed : plain;
}

bool readSample(benchmark::State& state, PhRoot& root) {
    if (read(root)) {
        return true;
    }
    state.SkipWithError("the sample cannot be read");
    return false;
}

void countBytes(benchmark::State& state, std::size_t bytesPerIteration) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(bytesPerIteration));
}

}  // namespace quillmark::bench

int main(int argumentCount, char* arguments[]) {
    constexpr std::string_view kFlag = "--sample-mb=";
    int kept = 1;
    for (int i = 1; i < argumentCount; ++i) {
        const std::string_view argument = arguments[i];
        if (argument.substr(0, kFlag.size()) == kFlag) {
            std::size_t megabytes = 0;
            std::from_chars(argument.data() + kFlag.size(), argument.data() + argument.size(),
                            megabytes);
            quillmark::bench::chosenSize = megabytes == 0 ? quillmark::bench::chosenSize
                                                          : megabytes * quillmark::bench::kMegabyte;
        } else {
            arguments[kept++] = arguments[i];
        }
    }
    arguments[kept] = nullptr;
    benchmark::Initialize(&kept, arguments);
    if (benchmark::ReportUnrecognizedArguments(kept, arguments)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
