#include "cfginclude/cfg_element.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <limits>
#include <new>
#include <type_traits>

#include "cfginclude/include_format.h"
#include "platform/output_sink.h"

namespace quillmark {

// Where an element's lines go on that found no place behind the element. Followed by its bytes.
struct CfgElement::LineRun {
    LineRun* next;
    std::size_t bytes;
    std::size_t firstLine;

    char* begin() { return reinterpret_cast<char*>(this + 1); }
};

struct CfgElement::Extras {
    std::vector<std::string> comments;
    std::vector<std::string> texts;
    std::unique_ptr<const CfgSection> section;
    LineRun* firstRun = nullptr;
    LineRun* lastRun = nullptr;
};

namespace {

constexpr std::size_t kFirstChunk = std::size_t{64} * 1024;
constexpr std::size_t kLargestChunk = std::size_t{1024} * 1024;

// Room that a new element finds behind itself at least, enough for the values of nearly every one.
constexpr std::size_t kElementRoom = 512;

constexpr std::size_t kBlanksPerLevel = 4;

std::size_t blanksAt(bool indent, int depth) {
    return indent ? static_cast<std::size_t>(depth) * kBlanksPerLevel : 0;
}

std::string_view formatReal(double value, std::array<char, 32>& buffer) {
    constexpr int kSignificantDigits = 6;
    constexpr double kFirstWithExponent = 1e6;

    std::to_chars_result result{};
    if (std::trunc(value) == value && std::abs(value) < kFirstWithExponent) {
        // Most numbers are small whole ones, and an integer knows no negative zero.
        result = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                               static_cast<std::int32_t>(value));
    } else {
        result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                               std::chars_format::general, kSignificantDigits);
    }
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

}  // namespace

// The arena forgets elements without destroying them.
static_assert(std::is_trivially_destructible_v<CfgElement>);

CfgElement::CfgElement(CfgDocument& document, std::string_view name)
    : document_(&document),
      name_(name.data()),
      nameLength_(static_cast<std::uint32_t>(name.size())) {}

void CfgElement::addQuotedValue(std::string_view key, std::string_view text) {
    addJoinedValue(key, {"'", text, "'"});
}

void CfgElement::addIntValue(std::string_view key, std::int64_t value) {
    std::array<char, 24> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    addValue(key, {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

void CfgElement::addHexValue(std::string_view key, std::uint32_t value) {
    constexpr int kHexadecimal = 16;
    std::array<char, 16> buffer{'0', 'x'};
    const auto result =
        std::to_chars(buffer.data() + 2, buffer.data() + buffer.size(), value, kHexadecimal);
    addValue(key, {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

void CfgElement::addRealValue(std::string_view key, double value) {
    std::array<char, 32> buffer;
    addValue(key, formatReal(value, buffer));
}

CfgElement& CfgElement::addChild(std::string_view name) {
    CfgElement& child = document_->createElement(name);
    attachChild(child);
    return child;
}

void CfgElement::attachChild(CfgElement& element) {
    assert(element.document_ == document_ && !element.attached_ && &element != this);
    (lastChild_ == nullptr ? firstChild_ : lastChild_->nextSibling_) = &element;
    lastChild_ = &element;
    element.attached_ = true;
    ++childCount_;
}

void CfgElement::addComment(std::string text) {
    extras().comments.push_back(std::move(text));
}

void CfgElement::addText(std::string text) {
    extras().texts.push_back(std::move(text));
}

CfgElement::Extras& CfgElement::extras() {
    if (extras_ == nullptr) {
        extras_ = document_->extras_.emplace_back(std::make_unique<Extras>()).get();
    }
    return *extras_;
}

// Takes `size` more bytes behind `end`, if that is where the arena ends.
inline bool CfgDocument::extend(const char* end, std::size_t size) {
    if (end != cursor_ || size > room_) {
        return false;
    }
    cursor_ += size;
    room_ -= size;
    return true;
}

// Adds a line of so many bytes, which the caller fills, and its line break.
char* CfgElement::addLine(std::size_t length) {
    const std::size_t size = length + kLineBreak.size();
    char* line = reinterpret_cast<char*>(this + 1) + lineBytes_;
    const bool elsewhere = extras_ != nullptr && extras_->lastRun != nullptr;
    if (!elsewhere && document_->extend(line, size)) {
        if (lineBytes_ == 0) {
            firstLine_ = static_cast<std::uint32_t>(document_->lineLengths_.size());
        }
        lineBytes_ += static_cast<std::uint32_t>(size);
    } else {
        line = addLineElsewhere(size);
    }
    document_->lineLengths_.push_back(size);
    kLineBreak.copy(line + length, kLineBreak.size());
    return line;
}

// Lets the newest run of lines grow where it stands or, if something else has taken the place
// behind it, starts another one.
char* CfgElement::addLineElsewhere(std::size_t size) {
    Extras& rare = extras();
    if (LineRun* const run = rare.lastRun; run != nullptr) {
        char* const end = run->begin() + run->bytes;
        if (document_->extend(end, size)) {
            run->bytes += size;
            return end;
        }
    }
    const std::size_t runSize = sizeof(LineRun) + size;
    auto* const added = new (document_->allocate(runSize, runSize))
        LineRun{nullptr, size, document_->lineLengths_.size()};
    (rare.lastRun == nullptr ? rare.firstRun : rare.lastRun->next) = added;
    rare.lastRun = added;
    return added->begin();
}

void CfgElement::setSection(std::unique_ptr<const CfgSection> section) {
    extras().section = std::move(section);
}

// Comments, start tag, values: what stands before the children.
void CfgElement::writeHead(OutputSink& sink, bool indent, int depth) const {
    if (extras_ != nullptr) {
        for (const std::string& comment : extras_->comments) {
            sink.writeIndented(blanksAt(indent, depth), "#");
            sink.write(comment);
            sink.write(kLineBreak);
        }
    }
    sink.writeIndented(blanksAt(indent, depth), "<");
    sink.write(name());
    sink.write(">");
    sink.write(kLineBreak);

    writeLines(sink, {reinterpret_cast<const char*>(this + 1), lineBytes_}, firstLine_, indent,
               depth + 1);
    if (extras_ != nullptr) {
        for (LineRun* run = extras_->firstRun; run != nullptr; run = run->next) {
            writeLines(sink, {run->begin(), run->bytes}, run->firstLine, indent, depth + 1);
        }
    }
}

// Writes finished lines, the first of which is the document's line of that number.
void CfgElement::writeLines(OutputSink& sink, std::string_view lines, std::size_t firstLine,
                            bool indent, int depth) const {
    if (!indent) {
        sink.write(lines);
        return;
    }
    const std::size_t blanks = blanksAt(indent, depth);
    for (std::size_t line = firstLine; !lines.empty(); ++line) {
        const std::size_t length = document_->lineLengths_[line];
        sink.writeIndented(blanks, lines.substr(0, length));
        lines.remove_prefix(length);
    }
}

// The section's children, texts, end tag: what stands behind the children that were added.
void CfgElement::writeTail(OutputSink& sink, bool indent, int depth) const {
    if (extras_ != nullptr) {
        if (extras_->section != nullptr) {
            CfgChildren children(sink, indent, depth + 1);
            extras_->section->writeChildren(children);
            children.finish();
        }
        for (const std::string& text : extras_->texts) {
            sink.write(text);
            sink.write(kLineBreak);
        }
    }
    sink.writeIndented(blanksAt(indent, depth), "</");
    sink.write(name());
    sink.write(">");
    sink.write(kLineBreak);
}

void CfgElement::write(OutputSink& sink, bool indent, int depth) const {
    if (firstChild_ == nullptr) {
        writeHead(sink, indent, depth);
        writeTail(sink, indent, depth);
        return;
    }
    std::vector<const CfgElement*> open;
    const CfgElement* next = this;
    while (next != nullptr) {
        next->writeHead(sink, indent, depth);
        open.push_back(next);
        ++depth;
        next = next->firstChild_;
        while (next == nullptr && !open.empty()) {
            const CfgElement* const closed = open.back();
            open.pop_back();
            --depth;
            closed->writeTail(sink, indent, depth);
            // What stands beside the element we began with is not ours.
            next = open.empty() ? nullptr : closed->nextSibling_;
        }
    }
}

CfgChildren::CfgChildren(OutputSink& sink, bool indent, int depth)
    : sink_(sink), indent_(indent), depth_(depth), scratch_(std::make_unique<CfgDocument>()) {}

CfgChildren::~CfgChildren() = default;

CfgElement& CfgChildren::add(std::string_view name) {
    finish();
    CfgElement& child = scratch_->createElement(name);
    current_ = &child;
    return child;
}

bool CfgChildren::areWanted() const {
    return sink_.ok();
}

void CfgChildren::finish() {
    if (current_ != nullptr) {
        current_->write(sink_, indent_, depth_);
        current_ = nullptr;
        scratch_->clear();
    }
}

CfgDocument::CfgDocument() = default;

CfgDocument::~CfgDocument() = default;

CfgElement& CfgDocument::createElement(std::string_view name) {
    char* const place = allocate(sizeof(CfgElement), sizeof(CfgElement) + kElementRoom);
    return *new (place) CfgElement(*this, name);
}

void CfgDocument::clear() {
    lineLengths_.clear();
    extras_.clear();
    largeChunks_.clear();
    if (!chunks_.empty()) {
        chunks_.front() = std::move(chunks_.back());
        chunks_.resize(1);
        cursor_ = chunks_.front().bytes.get();
        room_ = chunks_.front().size;
        reservedBytes_ = room_;
    } else {
        reservedBytes_ = 0;
    }
}

// Returns `size` bytes, aligned for an element, in a chunk that had `wishedRoom` left. They are the
// last of the arena, so that they can grow, unless they are too many for an ordinary chunk.
char* CfgDocument::allocate(std::size_t size, std::size_t wishedRoom) {
    if (size > kLargestChunk / 4) {
        largeChunks_.push_back({std::unique_ptr<char[]>(new char[size]), size});
        reservedBytes_ += size;
        if (room_ > 0) {
            // Lines that stand last there are no longer the newest ones, and must not grow.
            ++cursor_;
            --room_;
        }
        return largeChunks_.back().bytes.get();
    }
    const std::size_t misaligned =
        (chunks_.empty() ? 0 : chunks_.back().size - room_) % alignof(CfgElement);
    const std::size_t padding = misaligned == 0 ? 0 : alignof(CfgElement) - misaligned;
    if (chunks_.empty() || room_ < padding + wishedRoom) {
        std::size_t chunk = chunks_.empty() ? kFirstChunk : chunks_.back().size * 2;
        while (chunk < wishedRoom) {
            chunk *= 2;
        }
        addChunk(chunk < kLargestChunk ? chunk : kLargestChunk);
    } else {
        cursor_ += padding;
        room_ -= padding;
    }
    char* const place = cursor_;
    cursor_ += size;
    room_ -= size;
    return place;
}

void CfgDocument::addChunk(std::size_t size) {
    chunks_.push_back({std::unique_ptr<char[]>(new char[size]), size});
    cursor_ = chunks_.back().bytes.get();
    room_ = size;
    reservedBytes_ += size;
}

}  // namespace quillmark
