#include "a2ltool/source_lines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillmark::a2ltool {
namespace {

/// So much of a line is kept; nobody has written a longer one.
constexpr std::size_t kLongestLine = std::size_t{64} * 1024;

/// Walks an input line by line.
class LineReader {
  public:
    explicit LineReader(InputFile& input) : input_(input) {}

    /// Goes on to that line, which is none before the current one. False if the input ends first.
    bool goTo(std::int32_t line) {
        while (line_ < line && readLine()) {
            ++line_;
        }
        return line_ == line;
    }

    /// The current line without its end.
    const std::string& text() const { return text_; }

  private:
    bool fill() {
        if (rest_.empty()) {
            rest_ = {buffer_.data(), input_.read(buffer_.data(), buffer_.size())};
        }
        return !rest_.empty();
    }

    bool readLine() {
        if (!fill()) {
            return false;
        }
        text_.clear();
        while (fill()) {
            const std::size_t end = rest_.find('\n');
            const std::string_view part = rest_.substr(0, end);
            text_.append(part.substr(0, kLongestLine - text_.size()));
            rest_.remove_prefix(part.size());
            if (end != std::string_view::npos) {
                rest_.remove_prefix(1);
                break;
            }
        }
        if (text_.ends_with('\r')) {
            text_.pop_back();
        }
        return true;
    }

    InputFile& input_;
    std::array<char, 65536> buffer_;
    std::string_view rest_;
    std::string text_;
    std::int32_t line_ = 0;
};

}  // namespace

void fetchSourceLines(InputFile& input, std::vector<ReportedFinding>& findings) {
    std::vector<ReportedFinding*> inOrder;
    for (ReportedFinding& finding : findings) {
        if (finding.line > 0) {
            inOrder.push_back(&finding);
        }
    }
    std::stable_sort(inOrder.begin(), inOrder.end(),
                     [](const auto* a, const auto* b) { return a->line < b->line; });
    LineReader lines(input);
    for (ReportedFinding* finding : inOrder) {
        if (!lines.goTo(finding->line)) {
            return;
        }
        finding->sourceLine = lines.text();
    }
}

}  // namespace quillmark::a2ltool
