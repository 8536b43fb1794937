#include "a2ltool/github_report.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "a2ltool/message_table.h"

namespace quillmark::a2ltool {
namespace {

constexpr std::string_view kEscapedInTexts = "%\r\n";
constexpr std::string_view kEscapedInProperties = "%\r\n:,";

/// What would end a text or a property is written as a percent sign and two digits.
std::string escaped(std::string_view text, std::string_view special) {
    std::string result;
    for (const char byte : text) {
        if (special.find(byte) == std::string_view::npos) {
            result += byte;
            continue;
        }
        std::array<char, 4> code{};
        std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned>(byte));
        result += code.data();
    }
    return result;
}

}  // namespace

void GithubReport::tell(const FileReport& report) {
    for (const ReportedFinding& finding : report.findings) {
        tellFinding(report, finding);
    }
}

void GithubReport::tellFinding(const FileReport& report, const ReportedFinding& finding) {
    std::string line = "::";
    line.append(textOf(finding.severity)).append(" file=");
    line.append(escaped(report.file, kEscapedInProperties));
    if (finding.line > 0) {
        line.append(",line=").append(std::to_string(finding.line));
    }
    if (finding.column > 0) {
        line.append(",col=").append(std::to_string(finding.column));
    }
    line.append("::").append(escaped(finding.text, kEscapedInTexts));
    if (finding.message != nullptr) {
        line.append("%0A").append(escaped(finding.message->remedy, kEscapedInTexts));
    }
    line += '\n';
    sink_.write(line);
}

}  // namespace quillmark::a2ltool
