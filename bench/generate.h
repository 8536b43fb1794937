#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/output_sink.h"

namespace quillmark::bench {

/// Names of the mixes, in the order in which reports list them. Each stresses another part of the
/// program; `realistic` has of everything what descriptions of engine controllers have.
std::vector<std::string_view> mixNames();

/// Writes a description of one XCP module that `convert` takes without a finding. The same mix and
/// size give the same bytes on every machine. From 10 MB on the result is within a few percent of
/// `size` bytes; below that it may exceed it by one group of ten thousand names. The sink is not
/// finished. Returns false when there is no such mix.
[[nodiscard]] bool generateDescription(std::string_view mix, std::uint64_t size, OutputSink& sink);

/// The same as a text; empty when there is no such mix.
std::string generatedDescription(std::string_view mix, std::uint64_t size);

}  // namespace quillmark::bench
