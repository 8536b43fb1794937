#include "cfginclude/cfg_element.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "cfginclude/include_format.h"
#include "platform/output_sink.h"

namespace quillmark {

namespace {

std::size_t blanksAt(bool indent, int depth) {
    constexpr std::size_t kBlanksPerLevel = 4;
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
    return *children_.emplace_back(std::make_unique<CfgElement>(name));
}

void CfgElement::attachChild(std::unique_ptr<CfgElement> element) {
    children_.push_back(std::move(element));
}

void CfgElement::addComment(std::string text) {
    comments_.push_back(std::move(text));
}

void CfgElement::addText(std::string text) {
    texts_.push_back(std::move(text));
}

void CfgElement::setSection(CfgSection section) {
    section_ = std::move(section);
}

void CfgElement::reset(std::string_view name) {
    name_ = name;
    linesSize_ = 0;
    lineEnds_.clear();
    comments_.clear();
    texts_.clear();
    children_.clear();
    section_ = nullptr;
}

/// Adds a line of so many bytes, which the caller fills, and its line break.
char* CfgElement::addLine(std::size_t length) {
    const std::size_t end = linesSize_ + length + kLineBreak.size();
    if (end > linesCapacity_) {
        growLines(end);
    }
    char* const line = lines_.get() + linesSize_;
    kLineBreak.copy(line + length, kLineBreak.size());
    linesSize_ = end;
    lineEnds_.push_back(end);
    return line;
}

void CfgElement::growLines(std::size_t wanted) {
    constexpr std::size_t kLeast = 256;  // enough for the values of nearly every element
    const std::size_t capacity = std::max({wanted, 2 * linesCapacity_, kLeast});
    // Not filled, unlike what a string or vector would give.
    std::unique_ptr<char[]> grown(new char[capacity]);
    std::copy_n(lines_.get(), linesSize_, grown.get());
    lines_ = std::move(grown);
    linesCapacity_ = capacity;
}

void CfgElement::writeLines(OutputSink& sink, bool indent, int depth) const {
    const std::string_view lines(lines_.get(), linesSize_);
    if (!indent) {
        sink.write(lines);
        return;
    }
    std::size_t begin = 0;
    for (const std::size_t end : lineEnds_) {
        sink.writeIndented(blanksAt(indent, depth), lines.substr(begin, end - begin));
        begin = end;
    }
}

void CfgElement::write(OutputSink& sink, bool indent, int depth) const {
    const std::size_t blanks = blanksAt(indent, depth);
    for (const std::string& comment : comments_) {
        sink.writeIndented(blanks, "#");
        sink.write(comment);
        sink.write(kLineBreak);
    }
    sink.writeIndented(blanks, "<");
    sink.write(name_);
    sink.write(">");
    sink.write(kLineBreak);
    writeLines(sink, indent, depth + 1);
    for (const std::unique_ptr<CfgElement>& child : children_) {
        child->write(sink, indent, depth + 1);
    }
    if (section_) {
        CfgChildren children(sink, indent, depth + 1);
        section_(children);
        children.finish();
    }
    for (const std::string& text : texts_) {
        sink.write(text);
        sink.write(kLineBreak);
    }
    sink.writeIndented(blanks, "</");
    sink.write(name_);
    sink.write(">");
    sink.write(kLineBreak);
}

CfgElement& CfgChildren::add(std::string_view name) {
    finish();
    child_.reset(name);
    holdsChild_ = true;
    return child_;
}

bool CfgChildren::areWanted() const {
    return sink_.ok();
}

void CfgChildren::finish() {
    if (holdsChild_) {
        child_.write(sink_, indent_, depth_);
        holdsChild_ = false;
    }
}

}  // namespace quillmark
