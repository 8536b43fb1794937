#include "prepare/report.h"

#include <algorithm>
#include <utility>

#include "prepare/byte_search.h"

namespace quillmark::preparing {

std::uint32_t Report::fileNumber(const std::string& name) {
    const auto known = std::find(files_.begin(), files_.end(), name);
    const auto number = static_cast<std::uint32_t>(known - files_.begin());
    if (known == files_.end()) {
        files_.push_back(name);
    }
    return number;
}

std::string Report::textOf(Place place) const {
    return fileName(place.file) + ":" + std::to_string(place.line);
}

bool Report::endTrial() {
    isTrial_ = false;
    return !std::exchange(hasFailed_, false);
}

void Report::forgetReader() {
    giveUpTrial();
    if (!isTrial_) {
        reads_ = nullptr;
    }
}

/// Whether the reader refuses the description. Nobody asks it about one that has other bytes by
/// now.
bool Report::isRefused() {
    if (isTrial_) {
        return true;
    }
    if (const auto reads = std::exchange(reads_, nullptr); reads && !hasFailed()) {
        isReadable_ = reads();
    }
    return !isReadable_;
}

void Report::note(Place place, std::string_view text) {
    forgetReader();
    tell(PrepareFinding::Kind::Change, fileName(place.file), place.line, text);
}

void Report::change(Place place, std::string_view text) {
    if (!isRefused()) {
        return;
    }
    tell(PrepareFinding::Kind::Change, fileName(place.file), place.line, text);
}

void Report::loss(Place place, std::string_view text) {
    if (!isRefused()) {
        return;
    }
    tell(PrepareFinding::Kind::Loss, fileName(place.file), place.line, text);
}

void Report::error(Place place, std::string_view text) {
    if (!isRefused()) {
        return;
    }
    tell(PrepareFinding::Kind::Error, fileName(place.file), place.line, text);
}

void Report::error(std::string_view file, std::string_view text) {
    tell(PrepareFinding::Kind::Error, file, 0, text);
}

void Report::tell(PrepareFinding::Kind kind, std::string_view file, std::uint32_t line,
                  std::string_view text) {
    giveUpTrial();
    if (hasFailed_) {
        return;
    }
    hasFailed_ = kind == PrepareFinding::Kind::Error;
    hasLosses_ |= kind == PrepareFinding::Kind::Loss;
    hasChanges_ |= kind == PrepareFinding::Kind::Change;
    if (!tell_) {
        return;
    }
    if (findLineEnd(text) == std::string_view::npos) {
        tell_({kind, file, line, text});
        return;
    }
    // What is cited of a description may go over several of its lines.
    std::string inOneLine(text);
    std::replace(inOneLine.begin(), inOneLine.end(), '\r', ' ');
    std::replace(inOneLine.begin(), inOneLine.end(), '\n', ' ');
    tell_({kind, file, line, inOneLine});
}

}  // namespace quillmark::preparing
