#include "prepare/text_edits.h"

#include <algorithm>
#include <utility>

namespace quillmark::preparing {

namespace {

bool isSpace(char byte) {
    return byte == ' ' || byte == '\t';
}

bool isLineEnd(char byte) {
    return byte == '\n' || byte == '\r';
}

}  // namespace

void TextEdits::takeOut(std::string_view text, std::size_t from, std::size_t to, bool beginsLine) {
    std::size_t begin = from;
    while (begin > 0 && isSpace(text[begin - 1])) {
        --begin;
    }
    std::size_t end = to;
    while (end < text.size() && isSpace(text[end])) {
        ++end;
    }
    const bool isFirst = begin > 0 ? isLineEnd(text[begin - 1]) : beginsLine;
    const bool isLast = end < text.size() && isLineEnd(text[end]);
    if (begin > 0 && isFirst && isLast) {
        // The line feed before goes, the one behind stays.
        --begin;
        if (begin > 0 && text[begin] == '\n' && text[begin - 1] == '\r') {
            --begin;
        }
        replace(begin, end, {});
    } else if (isFirst) {
        replace(from, end, {});
    } else {
        // What stands right behind the words must not run together with what is before them.
        const bool runsOn = end == to && to < text.size() && !isLineEnd(text[to]);
        replace(begin, to, runsOn ? " " : "");
    }
}

const std::vector<TextEdit>& TextEdits::sorted() {
    if (edits_.size() < 2) {
        return edits_;
    }
    std::stable_sort(edits_.begin(), edits_.end(), [](const TextEdit& a, const TextEdit& b) {
        return a.from != b.from ? a.from < b.from : a.to > b.to;
    });
    std::vector<TextEdit> apart;
    std::size_t reached = 0;
    for (TextEdit& edit : edits_) {
        if (edit.from < reached && edit.to <= reached) {
            continue;
        }
        edit.from = std::max(edit.from, reached);
        reached = edit.to;
        apart.push_back(std::move(edit));
    }
    edits_ = std::move(apart);
    return edits_;
}

std::string TextEdits::apply(std::string_view text) {
    std::string changed;
    std::size_t copied = 0;
    for (const TextEdit& edit : sorted()) {
        changed += text.substr(copied, edit.from - copied);
        changed += edit.text;
        copied = edit.to;
    }
    changed += text.substr(copied);
    return changed;
}

}  // namespace quillmark::preparing
