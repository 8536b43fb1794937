#include "cfginclude/cfg_element.h"

#include <array>
#include <charconv>
#include <utility>

#include "cfginclude/cfg_children.h"
#include "cfginclude/include_format.h"
#include "platform/output_sink.h"

namespace quillmark {

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
    const char* const end = putReal(buffer.data(), buffer.data() + buffer.size(), value);
    addValue(key, {buffer.data(), static_cast<std::size_t>(end - buffer.data())});
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

void CfgElement::addJoinedValue(std::string_view key,
                                std::initializer_list<std::string_view> parts) {
    std::string& line = lines_.emplace_back(key);
    line += '=';
    for (const std::string_view part : parts) {
        line += part;
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
    for (const std::string& line : lines_) {
        sink.writeIndented(blanksAt(indent, depth + 1), line);
        sink.write(kLineBreak);
    }
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

}  // namespace quillmark
