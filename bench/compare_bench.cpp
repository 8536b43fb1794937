// Comparing two models, without reading them.

#include "a2l/resolution.h"
#include "bench/sample.h"
#include "compare/compare_driver.h"
#include "support/collecting_console.h"

namespace quillmark::bench {
namespace {

void comparing(benchmark::State& state) {
    PhRoot oldRoot;
    PhRoot newRoot;
    if (!readSample(state, oldRoot) || !readSample(state, newRoot)) {
        return;
    }
    resolve(oldRoot);
    resolve(newRoot);
    for (auto _ : state) {
        CompareReport report;
        CollectingConsole console;
        compareDescriptions(report, false, "old.a2l", oldRoot, "new.a2l", newRoot, console);
        benchmark::DoNotOptimize(report);
    }
}
BENCHMARK(comparing)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quillmark::bench
