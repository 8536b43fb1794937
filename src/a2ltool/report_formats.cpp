#include "a2ltool/report_formats.h"

#include "a2ltool/github_report.h"
#include "a2ltool/json_report.h"
#include "a2ltool/sarif_report.h"
#include "a2ltool/text_report.h"

namespace quillmark::a2ltool {

std::span<const ReportFormatRow> reportFormats() {
    static constexpr ReportFormatRow kFormats[] = {
        {"text",
         [](OutputSink& sink, bool colored) -> std::unique_ptr<ReportFormat> {
             return std::make_unique<TextReport>(sink, colored);
         }},
        {"json",
         [](OutputSink& sink, bool) -> std::unique_ptr<ReportFormat> {
             return std::make_unique<JsonReport>(sink);
         }},
        {"sarif",
         [](OutputSink& sink, bool) -> std::unique_ptr<ReportFormat> {
             return std::make_unique<SarifReport>(sink);
         }},
        {"github",
         [](OutputSink& sink, bool) -> std::unique_ptr<ReportFormat> {
             return std::make_unique<GithubReport>(sink);
         }},
    };
    return kFormats;
}

}  // namespace quillmark::a2ltool
