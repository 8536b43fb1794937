#include "library/finding_console.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillmark {
namespace {

struct SeverityWord {
    std::string_view word;
    Severity severity;
};

/// How lines begin that tell their severity by themselves.
constexpr SeverityWord kSeverityWords[] = {
    {"ERROR: ", Severity::Error},
    {"Error: ", Severity::Error},
    {"Warning: ", Severity::Warning},
};

/// Whole lines that say no more than that something is not done.
constexpr std::string_view kRefusals[] = {
    "Error reading file.",
    "No output file generated.",
};

}  // namespace

void FindingConsole::print(std::string_view text) {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        line_ += text.substr(0, end);
        text.remove_prefix(end + 1);
        takeLine(std::exchange(line_, {}), Severity::Note, false);
    }
    line_ += text;
}

void FindingConsole::printError(std::string_view line) {
    takeLine(line, Severity::Error, true);
}

void FindingConsole::printCaution(std::string_view line) {
    takeLine(line, Severity::Warning, true);
}

void FindingConsole::takeLine(std::string_view line, Severity severity, bool isForStandardError) {
    FindingData data;
    data.severity = severity;
    data.isForStandardError = isForStandardError;
    data.text = line;
    for (const SeverityWord& row : kSeverityWords) {
        if (line.starts_with(row.word)) {
            data.severity = row.severity;
            data.text = line.substr(row.word.size());
        }
    }
    if (std::find(std::begin(kRefusals), std::end(kRefusals), line) != std::end(kRefusals)) {
        data.severity = Severity::Error;
    }
    data.consoleText = line;
    data.consoleText += '\n';
    receiver_.take(std::move(data));
}

}  // namespace quillmark
