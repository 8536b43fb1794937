#include "prepare/part_writer.h"

#include <algorithm>

#include "prepare/latin1.h"

namespace quillmark::preparing {

namespace {

/// So many bytes are worth a write of their own.
constexpr std::size_t kWorthWriting = std::size_t{128} * 1024;

}  // namespace

/// Parts that stay as they are lie one behind the other, so that they can be written together.
void PartWriter::pass(const Part& part) {
    if (map_ != nullptr || latin1_) {
        copy(0, part.end);
        discard(part);
        return;
    }
    written_ += part.end;
    last_ = part.end > 0 ? source_.view()[part.end - 1] : last_;
    source_.passOn(part.end);
    if (source_.passed().size() >= kWorthWriting) {
        writePassed();
    }
}

void PartWriter::writePassed() {
    if (!source_.passed().empty()) {
        output_.write(source_.passed());
        source_.forgetPassed();
    }
}

void PartWriter::writeEdited(const Part& part, TextEdits& edits) {
    if (edits.empty()) {
        pass(part);
        return;
    }
    std::size_t copied = 0;
    for (const TextEdit& edit : edits.sorted()) {
        copy(copied, part.begin + edit.from);
        make(edit.text, edit.text.empty() ? Place{} : placeIn(part, edit.from));
        copied = part.begin + edit.to;
    }
    copy(copied, part.end);
    discard(part);
}

void PartWriter::takeOut(const Part& part) {
    fetchRestOfLine(part.end);
    TextEdits edits;
    edits.takeOut(source_.view(), part.begin, part.end, last_ == '\n' || last_ == '\r');
    const TextEdit& edit = edits.sorted().front();
    copy(0, edit.from);
    make(edit.text, source_.placeOf(part.begin));
    source_.discard(edit.to);
}

/// Makes sure that the window shows whether anything stands behind a position in its line.
void PartWriter::fetchRestOfLine(std::size_t position) {
    do {
        const std::string_view text = source_.view();
        while (position < text.size() && (text[position] == ' ' || text[position] == '\t')) {
            ++position;
        }
        if (position < text.size()) {
            return;
        }
    } while (source_.more());
}

std::string PartWriter::indentation(const Part& part) const {
    const std::string_view before = source_.view().substr(0, part.begin);
    const std::size_t feed = before.rfind('\n');
    if (feed == std::string_view::npos) {
        return "\n";
    }
    const std::string_view blanks = before.substr(feed + 1);
    const bool isBlank = blanks.find_first_not_of(" \t") == std::string_view::npos;
    std::string text = feed > 0 && before[feed - 1] == '\r' ? "\r\n" : "\n";
    return isBlank ? text.append(blanks) : text;
}

void PartWriter::copy(std::size_t from, std::size_t to) {
    if (map_ == nullptr && !latin1_) {
        write(source_.view().substr(from, to - from));
        return;
    }
    while (from < to) {
        const std::size_t end = std::min(to, source_.fileEnd(from));
        const std::string_view bytes = source_.view().substr(from, end - from);
        const Place place = source_.placeOf(from);
        if (map_ != nullptr) {
            map_->addCopied(bytes, place);
        }
        put(bytes, place);
        from = end;
    }
}

void PartWriter::make(std::string_view bytes, Place place) {
    if (map_ != nullptr) {
        map_->addMade(bytes, place);
    }
    put(bytes, place);
}

void PartWriter::putMark(std::string_view mark) {
    write(mark);
    last_ = '\n';
}

void PartWriter::put(std::string_view bytes, Place place) {
    if (!latin1_ || isAscii(bytes)) {
        write(bytes);
        return;
    }
    converted_.clear();
    const std::size_t lost = appendAsLatin1(bytes, converted_);
    if (lost > 0) {
        report_.loss(place, std::to_string(lost) + (lost == 1 ? " character" : " characters") +
                                " from here on that ISO 8859-1 lacks became ?");
    }
    write(converted_);
}

void PartWriter::write(std::string_view bytes) {
    writePassed();
    if (!bytes.empty()) {
        output_.write(bytes);
        written_ += bytes.size();
        last_ = bytes.back();
    }
}

}  // namespace quillmark::preparing
