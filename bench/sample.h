#pragma once

#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>

#include "a2l/ph_a2l.h"
#include "model/module_model.h"

namespace quillmark::bench {

/// Size of the descriptions that the benchmarks work on, in bytes. Told by --sample-mb, 4 MB
/// otherwise.
std::size_t sampleSize();

/// The realistic description of that size, made at the first call.
const std::string& sample();

/// Its include document, compressed or not, made at the first call.
const std::string& sampleDocument(bool compress);

/// Reads a description that is known to be in order; ends the benchmark with an error otherwise.
bool readSample(benchmark::State& state, PhRoot& root);

/// Lets the result show how many bytes of input a second were worked on.
void countBytes(benchmark::State& state, std::size_t bytesPerIteration);

}  // namespace quillmark::bench
