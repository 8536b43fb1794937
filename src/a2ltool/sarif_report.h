#pragma once

#include "a2ltool/json_writer.h"
#include "a2ltool/report_format.h"

namespace quillmark::a2ltool {

/// A SARIF 2.1.0 log (Static Analysis Results Interchange Format, an OASIS standard) of one run,
/// whose rules are the table of messages.
class SarifReport final : public ReportFormat {
  public:
    explicit SarifReport(OutputSink& sink);

    void tell(const FileReport& report) override;
    void end() override;

  private:
    void describeTool();
    void tellFinding(const FileReport& report, const ReportedFinding& finding);
    void tellPlace(const FileReport& report, const ReportedFinding& finding);

    JsonWriter json_;
    bool allOpened_ = true;
};

}  // namespace quillmark::a2ltool
