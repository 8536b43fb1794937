#include "quillmark/finding.h"

#include <utility>

#include "library/finding_data.h"

namespace quillmark {

std::string_view textOf(Severity severity) noexcept {
    switch (severity) {
        case Severity::Note:
            return "note";
        case Severity::Warning:
            return "warning";
        case Severity::Error:
            return "error";
    }
    return {};
}

Finding::Finding(std::shared_ptr<const FindingData> data) noexcept : data_(std::move(data)) {}

Severity Finding::severity() const noexcept {
    return data_->severity;
}

std::string_view Finding::file() const noexcept {
    return data_->file;
}

std::int32_t Finding::line() const noexcept {
    return data_->line;
}

std::int32_t Finding::column() const noexcept {
    return data_->column;
}

std::string_view Finding::text() const noexcept {
    return data_->text;
}

std::string_view Finding::consoleText() const noexcept {
    return data_->consoleText;
}

bool Finding::isForStandardError() const noexcept {
    return data_->isForStandardError;
}

void FindingReceiver::take(FindingData data) {
    ++count_;
    Finding finding(std::make_shared<const FindingData>(std::move(data)));
    if (handler_) {
        handler_(finding);
    } else {
        list_.push_back(std::move(finding));
    }
}

}  // namespace quillmark
