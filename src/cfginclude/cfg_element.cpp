#include "cfginclude/cfg_element.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <limits>
#include <new>
#include <type_traits>

#include "platform/output_sink.h"

namespace quillmark {

// Where an element's values go on that found no place behind the element. Followed by its bytes.
struct CfgElement::ValueRun {
    ValueRun* next;
    std::size_t bytes;

    char* begin() { return reinterpret_cast<char*>(this + 1); }
};

struct CfgElement::Extras {
    std::vector<std::string> comments;
    std::vector<std::string> texts;
    std::unique_ptr<const CfgSection> section;
    ValueRun* firstRun = nullptr;
    ValueRun* lastRun = nullptr;
};

namespace {

constexpr std::size_t kFirstChunk = std::size_t{64} * 1024;
constexpr std::size_t kLargestChunk = std::size_t{1024} * 1024;

// Room that a new element finds behind itself at least, enough for the values of nearly every one.
constexpr std::size_t kElementRoom = 512;

constexpr int kBlanksPerLevel = 4;

// A packed line is its length, seven bits per byte with the low ones first and the top bit set in
// all but the last, and then its bytes.
constexpr unsigned kLengthBits = 7;
constexpr std::size_t kLengthMore = std::size_t{1} << kLengthBits;

std::size_t packedLengthSize(std::size_t length) {
    std::size_t size = 1;
    for (; length >= kLengthMore; length >>= kLengthBits) {
        ++size;
    }
    return size;
}

char* packLength(char* at, std::size_t length) {
    for (; length >= kLengthMore; length >>= kLengthBits) {
        *at++ = static_cast<char>(length | kLengthMore);
    }
    *at++ = static_cast<char>(length);
    return at;
}

std::size_t unpackLength(const char*& at) {
    std::size_t length = 0;
    for (unsigned shift = 0;; shift += kLengthBits) {
        const std::size_t byte = static_cast<unsigned char>(*at++);
        length |= (byte & (kLengthMore - 1)) << shift;
        if (byte < kLengthMore) {
            return length;
        }
    }
}

char* copyTo(char* at, std::string_view text) {
    return at + text.copy(at, text.size());
}

void writeIndent(OutputSink& sink, bool indent, int depth) {
    static constexpr std::string_view kBlanks = "                                ";
    if (!indent) {
        return;
    }
    std::size_t blanks = static_cast<std::size_t>(depth) * kBlanksPerLevel;
    for (; blanks > kBlanks.size(); blanks -= kBlanks.size()) {
        sink.write(kBlanks);
    }
    sink.write(kBlanks.substr(0, blanks));
}

void writePackedLines(OutputSink& sink, std::string_view packed, bool indent, int depth,
                      std::string_view lineBreak) {
    const char* at = packed.data();
    const char* const end = at + packed.size();
    while (at != end) {
        const std::size_t length = unpackLength(at);
        writeIndent(sink, indent, depth);
        sink.write({at, length});
        sink.write(lineBreak);
        at += length;
    }
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

void CfgElement::addValue(std::string_view key, std::string_view text) {
    copyTo(startLine(key, text.size()), text);
}

void CfgElement::addJoinedValue(std::string_view key,
                                std::initializer_list<std::string_view> parts) {
    std::size_t length = 0;
    for (const std::string_view part : parts) {
        length += part.size();
    }
    char* at = startLine(key, length);
    for (const std::string_view part : parts) {
        at = copyTo(at, part);
    }
}

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

// Adds a line with the key and space for a text, which the caller must fill. Returns the space.
char* CfgElement::startLine(std::string_view key, std::size_t textLength) {
    const std::size_t length = key.size() + 1 + textLength;
    char* at = packLength(appendBytes(packedLengthSize(length) + length), length);
    at = copyTo(at, key);
    *at++ = '=';
    return at;
}

// Lets the newest run of values grow where it stands or, if something else has taken the place
// behind it, starts another one.
char* CfgElement::appendBytes(std::size_t size) {
    ValueRun* const run = extras_ == nullptr ? nullptr : extras_->lastRun;
    if (run == nullptr) {
        char* const end = reinterpret_cast<char*>(this + 1) + valueBytes_;
        if (document_->extend(end, size)) {
            valueBytes_ += static_cast<std::uint32_t>(size);
            return end;
        }
    } else if (char* const end = run->begin() + run->bytes; document_->extend(end, size)) {
        run->bytes += size;
        return end;
    }

    const std::size_t runSize = sizeof(ValueRun) + size;
    auto* const added = new (document_->allocate(runSize, runSize)) ValueRun{nullptr, size};
    Extras& rare = extras();
    (rare.lastRun == nullptr ? rare.firstRun : rare.lastRun->next) = added;
    rare.lastRun = added;
    return added->begin();
}

void CfgElement::setSection(std::unique_ptr<const CfgSection> section) {
    extras().section = std::move(section);
}

// Comments, start tag, values: what stands before the children.
void CfgElement::writeHead(OutputSink& sink, bool indent, int depth,
                           std::string_view lineBreak) const {
    if (extras_ != nullptr) {
        for (const std::string& comment : extras_->comments) {
            writeIndent(sink, indent, depth);
            sink.write("#");
            sink.write(comment);
            sink.write(lineBreak);
        }
    }
    writeIndent(sink, indent, depth);
    sink.write("<");
    sink.write(name());
    sink.write(">");
    sink.write(lineBreak);

    writePackedLines(sink, {reinterpret_cast<const char*>(this + 1), valueBytes_}, indent,
                     depth + 1, lineBreak);
    if (extras_ != nullptr) {
        for (ValueRun* run = extras_->firstRun; run != nullptr; run = run->next) {
            writePackedLines(sink, {run->begin(), run->bytes}, indent, depth + 1, lineBreak);
        }
    }
}

// The section's children, texts, end tag: what stands behind the children that were added.
void CfgElement::writeTail(OutputSink& sink, bool indent, int depth,
                           std::string_view lineBreak) const {
    if (extras_ != nullptr) {
        if (extras_->section != nullptr) {
            CfgChildren children(sink, indent, depth + 1, lineBreak);
            extras_->section->writeChildren(children);
            children.finish();
        }
        for (const std::string& text : extras_->texts) {
            sink.write(text);
            sink.write(lineBreak);
        }
    }
    writeIndent(sink, indent, depth);
    sink.write("</");
    sink.write(name());
    sink.write(">");
    sink.write(lineBreak);
}

void CfgElement::write(OutputSink& sink, bool indent, int depth, std::string_view lineBreak) const {
    if (firstChild_ == nullptr) {
        writeHead(sink, indent, depth, lineBreak);
        writeTail(sink, indent, depth, lineBreak);
        return;
    }
    std::vector<const CfgElement*> open;
    const CfgElement* next = this;
    while (next != nullptr) {
        next->writeHead(sink, indent, depth, lineBreak);
        open.push_back(next);
        ++depth;
        next = next->firstChild_;
        while (next == nullptr && !open.empty()) {
            const CfgElement* const closed = open.back();
            open.pop_back();
            --depth;
            closed->writeTail(sink, indent, depth, lineBreak);
            // What stands beside the element we began with is not ours.
            next = open.empty() ? nullptr : closed->nextSibling_;
        }
    }
}

CfgChildren::CfgChildren(OutputSink& sink, bool indent, int depth, std::string_view lineBreak)
    : sink_(sink),
      indent_(indent),
      depth_(depth),
      lineBreak_(lineBreak),
      scratch_(std::make_unique<CfgDocument>()) {}

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
        current_->write(sink_, indent_, depth_, lineBreak_);
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

// Takes `size` more bytes behind `end`, if that is where the arena ends.
bool CfgDocument::extend(const char* end, std::size_t size) {
    if (end != cursor_ || size > room_) {
        return false;
    }
    cursor_ += size;
    room_ -= size;
    return true;
}

void CfgDocument::addChunk(std::size_t size) {
    chunks_.push_back({std::unique_ptr<char[]>(new char[size]), size});
    cursor_ = chunks_.back().bytes.get();
    room_ = size;
    reservedBytes_ += size;
}

}  // namespace quillmark
