#pragma once

#include "a2ltool/json_writer.h"
#include "a2ltool/report_format.h"

namespace quillmark::a2ltool {

/// One JSON document about all descriptions; docs/check.schema.json tells its form.
class JsonReport final : public ReportFormat {
  public:
    explicit JsonReport(OutputSink& sink);

    void tell(const FileReport& report) override;
    void end() override;

  private:
    void tellFinding(const ReportedFinding& finding);

    JsonWriter json_;
};

}  // namespace quillmark::a2ltool
