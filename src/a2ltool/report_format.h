#pragma once

#include "a2ltool/file_report.h"

namespace quillmark::a2ltool {

/// A way of telling what was found in descriptions. Nothing is kept from one file to the next.
class ReportFormat {
  public:
    ReportFormat() = default;
    ReportFormat(const ReportFormat&) = delete;
    ReportFormat& operator=(const ReportFormat&) = delete;
    virtual ~ReportFormat() = default;

    /// Tells about one description.
    virtual void tell(const FileReport& report) = 0;

    /// Called once, behind the last description.
    virtual void end() {}
};

}  // namespace quillmark::a2ltool
