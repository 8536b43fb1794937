#include "a2ltool/text_report.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>

#include "a2ltool/message_table.h"
#include "a2ltool/utf8.h"

namespace quillmark::a2ltool {
namespace {

/// Longer lines of a description are shown around the place, so many characters of them.
constexpr std::size_t kShownCharacters = 100;
constexpr std::size_t kShownBefore = 70;

/// A line of a description as a terminal can show it, and how many characters of it stand before
/// the place.
struct ShownLine {
    std::string text;
    std::size_t before = 0;
};

void write(OutputSink& sink, std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts) {
        sink.write(text);
    }
}

/// The control characters behind ASCII, to which terminals listen, too: U+0080 to U+009F.
bool isLaterControl(std::string_view utf8) {
    return utf8.substr(0, 1) == "\xC2" && utf8.size() > 1 &&
           static_cast<unsigned char>(utf8[1]) < 0xA0;
}

/// The text with blanks for tabs and question marks for other control characters, so that each
/// takes one column.
std::string printable(std::string_view utf8) {
    std::string text;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const bool isLater = isLaterControl(utf8.substr(i));
        i += isLater ? 1 : 0;
        if (byte == '\t') {
            text += ' ';
        } else if (byte < ' ' || byte == 0x7F || isLater) {
            text += '?';
        } else {
            text += static_cast<char>(byte);
        }
    }
    return text;
}

/// Where the character of that number begins.
std::size_t offsetOf(std::string_view utf8, std::size_t character) {
    std::size_t offset = 0;
    for (; offset < utf8.size(); ++offset) {
        if (countCharacters(utf8.substr(offset, 1)) == 1 && character-- == 0) {
            break;
        }
    }
    return offset;
}

ShownLine shownLine(const ReportedFinding& finding) {
    const std::string_view line = finding.sourceLine;
    const auto bytesBefore =
        std::min(static_cast<std::size_t>(std::max(finding.column - 1, 0)), line.size());
    // Whether it is UTF-8 is to be said of the whole line.
    const bool utf8 = isUtf8(line);
    const auto before = utf8 ? countCharacters(line.substr(0, bytesBefore)) : bytesBefore;
    ShownLine shown{printable(toUtf8(line)), before};
    const std::size_t skipped = before > kShownBefore ? before - kShownBefore : 0;
    shown.text.erase(0, offsetOf(shown.text, skipped));
    shown.text.erase(offsetOf(shown.text, kShownCharacters));
    shown.before -= skipped;
    return shown;
}

}  // namespace

void TextReport::tell(const FileReport& report) {
    for (const ReportedFinding& finding : report.findings) {
        tellFinding(report, finding);
    }
    tellVerdict(report);
}

void TextReport::tellFinding(const FileReport& report, const ReportedFinding& finding) {
    write(sink_, {palette_.strong(), report.file, ":"});
    for (const std::int32_t number : {finding.line, finding.column}) {
        if (number > 0) {
            write(sink_, {std::to_string(number), ":"});
        }
    }
    const bool isError = finding.severity == Severity::Error;
    write(sink_, {palette_.plain(), " ", isError ? palette_.error() : palette_.warning(),
                  textOf(finding.severity), ":", palette_.plain(), " ", finding.text, "\n"});
    if (!finding.sourceLine.empty()) {
        showSource(finding);
    }
    if (finding.message != nullptr) {
        write(sink_, {"      = ", finding.message->remedy, "\n"});
    }
}

void TextReport::showSource(const ReportedFinding& finding) {
    constexpr std::size_t kNumberWidth = 5;
    const std::string number = std::to_string(finding.line);
    const ShownLine shown = shownLine(finding);
    sink_.writeIndented(kNumberWidth - std::min(kNumberWidth, number.size()), number);
    write(sink_, {" | ", shown.text, "\n"});
    if (finding.column > 0) {
        sink_.writeIndented(std::max(kNumberWidth, number.size()), " | ");
        sink_.writeIndented(shown.before, palette_.good());
        write(sink_, {"^", palette_.plain(), "\n"});
    }
}

void TextReport::startNote(const FileReport& report) {
    write(sink_, {palette_.strong(), report.file, ":", palette_.plain(), " ", palette_.note(),
                  "note:", palette_.plain(), " "});
}

void TextReport::tellVerdict(const FileReport& report) {
    if (!report.opened) {
        return;
    }
    if (!report.reachedEnd) {
        startNote(report);
        sink_.write("reading stopped there; what follows was not looked at\n");
    }
    startNote(report);
    if (!report.convertible) {
        sink_.write("does not convert\n");
        return;
    }
    if (report.stations.empty()) {
        sink_.write("converts to a file without stations: no module has CCP or XCP\n");
        return;
    }
    std::string_view separator = "converts: ";
    for (const ReportedStation& station : report.stations) {
        write(sink_, {separator, station.module, " with ", textOf(station.protocol)});
        separator = ", ";
    }
    sink_.write("\n");
}

}  // namespace quillmark::a2ltool
