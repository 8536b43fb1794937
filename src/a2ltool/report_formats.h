#pragma once

#include <memory>
#include <span>

#include "a2ltool/report_format.h"
#include "platform/output_sink.h"

namespace quillmark::a2ltool {

/// A format's word on the command line, and how it is made. The sink outlives the format; `colored`
/// is for those that people read.
struct ReportFormatRow {
    const char* word;
    std::unique_ptr<ReportFormat> (*make)(OutputSink& sink, bool colored);
};

/// All formats; the first one is the default.
std::span<const ReportFormatRow> reportFormats();

}  // namespace quillmark::a2ltool
