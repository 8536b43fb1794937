#include "prepare/line_map.h"

#include <algorithm>

namespace quillmark::preparing {

void LineMap::add(std::string_view bytes, Place place, bool isCopied) {
    if (bytes.empty()) {
        return;
    }
    const auto feeds = static_cast<std::uint64_t>(std::count(bytes.begin(), bytes.end(), '\n'));
    const bool endsInFeed = bytes.back() == '\n';
    // A line that only begins behind the last byte belongs to what comes next.
    const std::uint64_t starts = (atLineStart_ ? 1 : 0) + feeds - (endsInFeed ? 1 : 0);
    if (!atLineStart_) {
        ++line_;
        place.line += isCopied ? 1 : 0;
    }
    addLines(starts, place, isCopied);
    line_ += starts;
    atLineStart_ = endsInFeed;
    line_ -= atLineStart_ ? 0 : 1;
}

void LineMap::addLines(std::uint64_t count, Place place, bool isCopied) {
    if (count == 0) {
        return;
    }
    if (!isCopied) {
        for (std::uint64_t i = 0; i < count; ++i) {
            rows_.push_back({line_ + i, 1, place, false});
        }
        return;
    }
    if (!rows_.empty()) {
        Row& last = rows_.back();
        if (last.isCopied && last.line + last.count == line_ && last.place.file == place.file &&
            last.place.line + last.count == place.line) {
            last.count += count;
            return;
        }
    }
    rows_.push_back({line_, count, place, true});
}

std::string LineMap::text(const Report& report) const {
    std::string text;
    for (const Row& row : rows_) {
        text += std::to_string(row.line) + '\t' + std::to_string(row.count) + '\t' +
                report.fileName(row.place.file) + '\t' + std::to_string(row.place.line) + '\n';
    }
    return text;
}

}  // namespace quillmark::preparing
