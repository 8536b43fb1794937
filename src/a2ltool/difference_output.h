#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "platform/output_sink.h"
#include "quillmark/diff.h"

namespace quillmark::a2ltool {

/// A way of telling differences.
class DifferenceOutput {
  public:
    DifferenceOutput() = default;
    DifferenceOutput(const DifferenceOutput&) = delete;
    DifferenceOutput& operator=(const DifferenceOutput&) = delete;
    virtual ~DifferenceOutput() = default;

    virtual void tell(const ModelDifference& difference) = 0;

    /// Called once, behind the last difference.
    virtual void end() {}
};

/// What an output is made of. The sink outlives it.
struct DifferenceOutputSetting {
    OutputSink& sink;
    bool colored;
    std::string_view oldFile;
    std::string_view newFile;
};

struct DifferenceFormatRow {
    const char* word;
    std::unique_ptr<DifferenceOutput> (*make)(const DifferenceOutputSetting& setting);
};

/// All formats; the first one is the default.
std::span<const DifferenceFormatRow> differenceFormats();

}  // namespace quillmark::a2ltool
