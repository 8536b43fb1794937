#pragma once

#include "a2ltool/palette.h"
#include "a2ltool/report_format.h"
#include "platform/output_sink.h"

namespace quillmark::a2ltool {

/// For people, and for editors that know a compiler's messages: `file:line:column: error: text`,
/// the line of the description with a caret below the place, and the remedy. The last line about a
/// description tells whether it converts.
class TextReport final : public ReportFormat {
  public:
    TextReport(OutputSink& sink, bool colored) : sink_(sink), palette_(colored) {}

    void tell(const FileReport& report) override;

  private:
    void tellFinding(const FileReport& report, const ReportedFinding& finding);
    void showSource(const ReportedFinding& finding);
    void tellVerdict(const FileReport& report);
    void startNote(const FileReport& report);

    OutputSink& sink_;
    Palette palette_;
};

}  // namespace quillmark::a2ltool
