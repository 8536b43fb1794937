// From bytes to a model whose references are bound.

#include "a2l/resolution.h"
#include "a2l/tokens/lexer.h"
#include "bench/sample.h"
#include "platform/input_file.h"

namespace quillmark::bench {
namespace {

class Lexer final : public A2lLexer {
    void lexicalError(std::string_view) override {}
};

void lexing(benchmark::State& state) {
    Token token;
    for (auto _ : state) {
        MemoryInputFile input(sample());
        Lexer lexer;
        lexer.attach(input);
        std::int64_t kinds = 0;
        for (int kind = 0; kind != TOK_EOF; kind = lexer.nextToken(token)) {
            kinds += kind;
        }
        benchmark::DoNotOptimize(kinds);
    }
    countBytes(state, sample().size());
}
BENCHMARK(lexing)->Unit(benchmark::kMillisecond);

void reading(benchmark::State& state) {
    for (auto _ : state) {
        PhRoot root;
        if (!readSample(state, root)) {
            return;
        }
    }
    countBytes(state, sample().size());
}
BENCHMARK(reading)->Unit(benchmark::kMillisecond);

void resolution(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            PhRoot root;
            if (!readSample(state, root)) {
                return;
            }
            state.ResumeTiming();
            resolve(root);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    countBytes(state, sample().size());
}
// What it resolves is found while reading in most descriptions, so next to nothing is left of it:
// by time, it would go on reading for minutes.
BENCHMARK(resolution)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
}  // namespace quillmark::bench
