#include "cfginclude/version_file.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "edges/edges.h"
#include "edges/version_elements.h"
#include "platform/console.h"

namespace quillmark {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n";

bool isWhiteSpace(char c) {
    return kWhiteSpace.find(c) != std::string_view::npos;
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isPlainName(std::string_view name) {
    return !name.empty() && isLetter(name.front()) &&
           std::ranges::all_of(name, [](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
}

/// Whether the bytes are characters that stand for themselves wherever a text may be.
bool isPlainText(std::string_view text) {
    return std::ranges::all_of(text, [](char c) {
        return isWhiteSpace(c) || (c > ' ' && c <= '~' && c != '&' && c != '<' && c != '>');
    });
}

/// Takes a document apart that is written plainly, and then steps through it as version_elements.h
/// wants it. What it accepts is well-formed.
class PlainSteps {
  public:
    using Text = std::string;

    /// False when the document is anything but plain. `document` outlives this object.
    bool take(std::string_view document);

    bool atEnd() const { return next_ == steps_.size(); }
    XmlStep next() { return steps_[next_++].kind; }
    bool isNamed(std::string_view name) const { return steps_[next_ - 1].bytes == name; }
    void addText(std::string& text) const { text += steps_[next_ - 1].bytes; }

    static std::string utf8(std::string text) { return text; }
    static std::string folded(std::string_view text);

  private:
    struct Step {
        XmlStep kind;
        std::string_view bytes;  ///< the name of the element, or the text
    };

    bool takeText(std::string_view& rest);
    bool takeComment(std::string_view& rest);
    bool takeTag(std::string_view& rest);
    bool takeEndTag(std::string_view name);

    std::vector<Step> steps_;
    std::vector<std::string_view> open_;
    std::size_t next_ = 0;
};

bool PlainSteps::take(std::string_view document) {
    for (const std::string_view declaration :
         {R"(<?xml version="1.0" encoding="UTF-8"?>)", R"(<?xml version="1.0" encoding="utf-8"?>)",
          R"(<?xml version="1.0"?>)"}) {
        if (document.starts_with(declaration)) {
            document.remove_prefix(declaration.size());
            break;
        }
    }
    while (!document.empty()) {
        const bool taken = document.front() != '<'        ? takeText(document)
                           : document.starts_with("<!--") ? takeComment(document)
                                                          : takeTag(document);
        if (!taken) {
            return false;
        }
    }
    return open_.empty() && !steps_.empty();
}

bool PlainSteps::takeText(std::string_view& rest) {
    const std::string_view text = rest.substr(0, rest.find('<'));
    rest.remove_prefix(text.size());
    if (open_.empty()) {
        return std::ranges::all_of(text, &isWhiteSpace);
    }
    steps_.push_back({XmlStep::Text, text});
    return isPlainText(text);
}

bool PlainSteps::takeComment(std::string_view& rest) {
    constexpr std::string_view kBegin = "<!--";
    constexpr std::string_view kEnd = "-->";
    rest.remove_prefix(kBegin.size());
    const std::string_view comment = rest.substr(0, rest.find("--"));
    rest.remove_prefix(comment.size());
    if (!rest.starts_with(kEnd)) {
        return false;
    }
    rest.remove_prefix(kEnd.size());
    return isPlainText(comment);
}

bool PlainSteps::takeTag(std::string_view& rest) {
    const std::size_t end = rest.find('>');
    if (end == std::string_view::npos) {
        return false;
    }
    std::string_view name = rest.substr(1, end - 1);
    rest.remove_prefix(end + 1);
    if (name.starts_with('/')) {
        return takeEndTag(name.substr(1));
    }
    const bool isEmpty = name.ends_with('/');
    name.remove_suffix(isEmpty ? 1 : 0);
    const bool isSecondRoot = open_.empty() && !steps_.empty();
    if (isSecondRoot || !isPlainName(name)) {
        return false;
    }
    steps_.push_back({XmlStep::StartElement, name});
    open_.push_back(name);
    return !isEmpty || takeEndTag(name);
}

bool PlainSteps::takeEndTag(std::string_view name) {
    if (open_.empty() || open_.back() != name) {
        return false;
    }
    open_.pop_back();
    steps_.push_back({XmlStep::EndElement, name});
    return true;
}

std::string PlainSteps::folded(std::string_view text) {
    std::string result;
    for (std::size_t begin = text.find_first_not_of(kWhiteSpace); begin != std::string_view::npos;
         begin = text.find_first_not_of(kWhiteSpace, begin)) {
        const std::size_t end = std::min(text.find_first_of(kWhiteSpace, begin), text.size());
        if (!result.empty()) {
            result += ' ';
        }
        result += text.substr(begin, end - begin);
        begin = end;
    }
    return result;
}

}  // namespace

bool parsePlainVersionFile(std::string_view bytes, VersionInfo& info) {
    PlainSteps plain;
    if (!plain.take(bytes)) {
        return false;
    }
    info = {};
    readVersionElements(plain, info);
    return true;
}

bool parseVersionFile(std::string_view bytes, VersionInfo& info, Console& console) {
    if (parsePlainVersionFile(bytes, info)) {
        return true;
    }
    info = {};
    const EdgeCalls& calls = edges();
    if (!calls.trouble.empty()) {
        console.printError(calls.trouble);
    }
    return calls.parseVersionXml(bytes, info);
}

}  // namespace quillmark
