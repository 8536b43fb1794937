#pragma once

#include "a2ltool/report_format.h"
#include "platform/output_sink.h"

namespace quillmark::a2ltool {

/// Commands of which a server with GitHub's workflow commands makes annotations. They have no way
/// to say that all is well, so nothing is printed then.
class GithubReport final : public ReportFormat {
  public:
    explicit GithubReport(OutputSink& sink) : sink_(sink) {}

    void tell(const FileReport& report) override;

  private:
    void tellFinding(const FileReport& report, const ReportedFinding& finding);

    OutputSink& sink_;
};

}  // namespace quillmark::a2ltool
