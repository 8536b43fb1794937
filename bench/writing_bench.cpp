// From the model to the text of the include document, and back from its compressed form.

#include "a2l/resolution.h"
#include "bench/sample.h"
#include "cfginclude/blob_codec.h"
#include "cfginclude/include_document.h"
#include "support/collecting_console.h"

namespace quillmark::bench {
namespace {

/// Counts what is written and drops it.
class CountingSink final : public OutputSink {
  public:
    std::size_t size() const { return size_; }

  protected:
    void drain(std::string_view bytes) override { size_ += bytes.size(); }

  private:
    std::size_t size_ = 0;
};

/// The document's sections are made while they are written: this is building and writing at once.
void writeDocument(benchmark::State& state, bool indent, bool compress) {
    PhRoot root;
    if (!readSample(state, root)) {
        return;
    }
    resolve(root);
    CollectingConsole console;
    ConvertRequest request;
    request.inputFile = "sample.a2l";
    request.compress = compress;
    for (auto _ : state) {
        IncludeDocument document;
        if (buildIncludeDocument(request, root, {}, document, console) != DocumentStatus::Built) {
            state.SkipWithError("sigtrakVersions.xml must lie in the current directory");
            return;
        }
        CountingSink sink;
        document.root->write(sink, indent, 0);
        sink.finish();
        benchmark::DoNotOptimize(sink.size());
    }
    countBytes(state, sample().size());
}

void writingPlain(benchmark::State& state) {
    writeDocument(state, false, false);
}
BENCHMARK(writingPlain)->Unit(benchmark::kMillisecond);

void writingIndented(benchmark::State& state) {
    writeDocument(state, true, false);
}
BENCHMARK(writingIndented)->Unit(benchmark::kMillisecond);

void writingCompressed(benchmark::State& state) {
    writeDocument(state, false, true);
}
BENCHMARK(writingCompressed)->Unit(benchmark::kMillisecond);

void deflateAndBase64(benchmark::State& state) {
    const std::string& document = sampleDocument(false);
    for (auto _ : state) {
        std::string text;
        Base64Sink base64(text, "\r\n");
        DeflateSink deflate(base64);
        deflate.write(document);
        deflate.finish();
        base64.finish();
        benchmark::DoNotOptimize(text);
    }
    countBytes(state, document.size());
}
BENCHMARK(deflateAndBase64)->Unit(benchmark::kMillisecond);

void decompressing(benchmark::State& state) {
    const std::string& document = sampleDocument(true);
    std::size_t size = 0;
    for (auto _ : state) {
        CountingSink sink;
        if (!expandBlob(document, sink)) {
            state.SkipWithError("the sample has no blob");
            return;
        }
        sink.finish();
        size = sink.size();
    }
    countBytes(state, size);
}
BENCHMARK(decompressing)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark::bench
