#include "a2ltool/sarif_report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "a2ltool/message_table.h"
#include "a2ltool/utf8.h"
#include "platform/file_name.h"
#include "quillmark/version.h"

namespace quillmark::a2ltool {
namespace {

/// A file name as a reference of RFC 3986: relative as it was given, or with the scheme `file`.
std::string uriOf(std::string_view file) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    const std::string path = toUriPath(file);
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char byte : path) {
        if (kPlain.find(byte) != std::string_view::npos) {
            uri += byte;
            continue;
        }
        std::array<char, 4> code{};
        std::snprintf(code.data(), code.size(), "%%%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(byte)));
        uri += code.data();
    }
    return uri;
}

/// The column in characters, which is how the standard counts; 0 if it is not known.
std::int64_t characterColumn(const ReportedFinding& finding) {
    const std::string_view line = finding.sourceLine;
    const auto before = static_cast<std::size_t>(std::max(finding.column - 1, 0));
    if (finding.column == 0 || before > line.size() || !isUtf8(line)) {
        return finding.column;
    }
    return static_cast<std::int64_t>(countCharacters(line.substr(0, before))) + 1;
}

}  // namespace

SarifReport::SarifReport(OutputSink& sink) : json_(sink) {
    json_.startObject();
    json_.textMember("$schema",
                     "https://docs.oasis-open.org/sarif/sarif/v2.1.0/os/schemas/"
                     "sarif-schema-2.1.0.json");
    json_.textMember("version", "2.1.0");
    json_.startArray("runs");
    json_.startObject();
    describeTool();
    json_.textMember("columnKind", "unicodeCodePoints");
    json_.startArray("results");
}

void SarifReport::describeTool() {
    json_.startObject("tool");
    json_.startObject("driver");
    json_.textMember("name", "quillmark-a2l");
    json_.textMember("fullName", productName());
    json_.textMember("version", productVersion());
    json_.startArray("rules");
    for (const MessageRow& row : messageTable()) {
        json_.startObject();
        json_.textMember("id", row.id);
        json_.startObject("shortDescription");
        json_.textMember("text", row.text);
        json_.endObject();
        json_.startObject("fullDescription");
        json_.textMember("text", row.remedy);
        json_.endObject();
        json_.startObject("help");
        json_.textMember("text", row.remedy);
        json_.endObject();
        json_.startObject("defaultConfiguration");
        json_.textMember("level", textOf(row.severity));
        json_.endObject();
        json_.endObject();
    }
    json_.endArray();
    json_.endObject();
    json_.endObject();
}

void SarifReport::tell(const FileReport& report) {
    allOpened_ = allOpened_ && report.opened;
    for (const ReportedFinding& finding : report.findings) {
        tellFinding(report, finding);
    }
}

void SarifReport::tellFinding(const FileReport& report, const ReportedFinding& finding) {
    json_.startObject();
    if (finding.message != nullptr) {
        json_.textMember("ruleId", finding.message->id);
        json_.integerMember("ruleIndex", finding.message - messageTable().data());
    }
    json_.textMember("level", textOf(finding.severity));
    json_.startObject("message");
    json_.textMember("text", finding.text);
    json_.endObject();
    json_.startArray("locations");
    tellPlace(report, finding);
    json_.endArray();
    json_.endObject();
}

void SarifReport::tellPlace(const FileReport& report, const ReportedFinding& finding) {
    json_.startObject();
    json_.startObject("physicalLocation");
    json_.startObject("artifactLocation");
    json_.textMember("uri", uriOf(report.file));
    json_.endObject();
    if (finding.line > 0) {
        json_.startObject("region");
        json_.integerMember("startLine", finding.line);
        if (const std::int64_t column = characterColumn(finding); column > 0) {
            json_.integerMember("startColumn", column);
        }
        json_.endObject();
    }
    json_.endObject();
    json_.endObject();
}

void SarifReport::end() {
    json_.endArray();
    json_.startArray("invocations");
    json_.startObject();
    json_.booleanMember("executionSuccessful", allOpened_);
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.endArray();
    json_.endObject();
    json_.endDocument();
}

}  // namespace quillmark::a2ltool
