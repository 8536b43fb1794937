#include "a2ltool/json_report.h"

#include "a2ltool/message_table.h"
#include "quillmark/version.h"

namespace quillmark::a2ltool {

JsonReport::JsonReport(OutputSink& sink) : json_(sink) {
    json_.startObject();
    json_.textMember("generator", productName());
    json_.startArray("files");
}

void JsonReport::tell(const FileReport& report) {
    json_.startObject();
    json_.textMember("file", report.file);
    json_.booleanMember("opened", report.opened);
    json_.booleanMember("reachedEnd", report.reachedEnd);
    json_.booleanMember("convertible", report.convertible);
    json_.startArray("stations");
    for (const ReportedStation& station : report.stations) {
        json_.startObject();
        json_.textMember("module", station.module);
        json_.textMember("protocol", textOf(station.protocol));
        json_.endObject();
    }
    json_.endArray();
    json_.startArray("findings");
    for (const ReportedFinding& finding : report.findings) {
        tellFinding(finding);
    }
    json_.endArray();
    json_.endObject();
}

void JsonReport::tellFinding(const ReportedFinding& finding) {
    json_.startObject();
    json_.textMember("severity", textOf(finding.severity));
    if (finding.line > 0) {
        json_.integerMember("line", finding.line);
    }
    if (finding.column > 0) {
        json_.integerMember("column", finding.column);
    }
    json_.textMember("text", finding.text);
    if (finding.message != nullptr) {
        json_.textMember("id", finding.message->id);
        json_.textMember("remedy", finding.message->remedy);
    }
    json_.endObject();
}

void JsonReport::end() {
    json_.endArray();
    json_.endObject();
    json_.endDocument();
}

}  // namespace quillmark::a2ltool
