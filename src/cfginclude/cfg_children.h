#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string_view>

#include "cfginclude/include_format.h"
#include "platform/output_sink.h"

namespace quillmark {

class CfgChildren;

/// A child of a section, on its way to the file: what is added is written at once, each line with
/// its blanks, straight into the sink's buffer. A description makes ten lines for each of its
/// signals, and their bytes are what writing a document costs. Values come before children.
class CfgChild {
  public:
    CfgChild(const CfgChild&) = delete;
    CfgChild& operator=(const CfgChild&) = delete;

    // As those of CfgElement. Keys are literals: with these in sight of the caller, copying one
    // takes a move or two.

    void addValue(std::string_view key, std::string_view text) {
        if (text.size() > kLongestText) {
            addLongValue(key, {text});
            return;
        }
        endLine(append(startLine(key), text));
    }

    void addJoinedValue(std::string_view key, std::initializer_list<std::string_view> parts) {
        std::size_t size = 0;
        for (const std::string_view part : parts) {
            size += part.size();
        }
        if (size > kLongestText) {
            addLongValue(key, parts);
            return;
        }
        char* at = startLine(key);
        for (const std::string_view part : parts) {
            at = append(at, part);
        }
        endLine(at);
    }

    void addIntValue(std::string_view key, std::int64_t value) {
        char* const at = startLine(key);
        endLine(std::to_chars(at, at + kLongestText, value).ptr);
    }

    void addHexValue(std::string_view key, std::uint32_t value) {
        constexpr int kHexadecimal = 16;
        char* const at = append(startLine(key), "0x");
        endLine(std::to_chars(at, at + kLongestText, value, kHexadecimal).ptr);
    }

    void addRealValue(std::string_view key, double value);

    /// Has `make(children)` add the children of this one.
    template <typename Make>
    void addChildren(Make make);

  private:
    friend class CfgChildren;

    /// Of a text that is put together in the sink's room, with a key and its blanks.
    static constexpr std::size_t kLongestText = 512;
    static constexpr std::size_t kMostBlanks = 32;
    static constexpr std::size_t kLongestKey = 64;
    static_assert(kMostBlanks + kLongestKey + kLongestText + 16 <= OutputSink::kRoom);

    CfgChild(OutputSink& sink, bool indent, int depth);

    /// std::memcpy(), which few texts of this kind are worth a call of.
    static char* append(char* at, std::string_view text) {
        const char* const from = text.data();
        const std::size_t size = text.size();
        const auto copyEnds = [&](auto word) {
            decltype(word) last = 0;
            std::memcpy(&word, from, sizeof word);
            std::memcpy(&last, from + size - sizeof word, sizeof word);
            std::memcpy(at, &word, sizeof word);
            std::memcpy(at + size - sizeof word, &last, sizeof word);
        };
        if (size > 2 * sizeof(std::uint64_t)) {
            std::memcpy(at, from, size);
        } else if (size >= sizeof(std::uint64_t)) {
            copyEnds(std::uint64_t{});
        } else if (size >= sizeof(std::uint32_t)) {
            copyEnds(std::uint32_t{});
        } else if (size >= sizeof(std::uint16_t)) {
            copyEnds(std::uint16_t{});
        } else if (size == 1) {
            *at = *from;
        }
        return at + size;
    }

    /// The blanks of a line at a level of indentation. As many as there may be are written; what
    /// comes behind goes over those that are too many.
    char* startLine(std::size_t blanks) {
        char* const at = sink_.room();
        std::memset(at, ' ', kMostBlanks);
        return at + blanks;
    }
    char* startLine(std::string_view key) {
        char* const at = startLine(valueBlanks_);
        std::memcpy(at, key.data(), key.size());
        at[key.size()] = '=';
        return at + key.size() + 1;
    }
    void endLine(char* at) {
        std::memcpy(at, kLineBreak.data(), kLineBreak.size());
        sink_.written(at + kLineBreak.size());
    }
    void writeTag(std::string_view opening, std::string_view name) {
        endLine(append(append(append(startLine(tagBlanks_), opening), name), ">"));
    }
    void addLongValue(std::string_view key, std::initializer_list<std::string_view> parts);

    OutputSink& sink_;
    std::size_t tagBlanks_;
    std::size_t valueBlanks_;
    bool indent_;
    int depth_;
    std::string_view name_;
};

/// Takes the children of a section while they are made: each is written until the next one comes.
class CfgChildren {
  public:
    /// Children are written at level `depth`, at most six levels of them below each other; the sink
    /// outlives this object.
    CfgChildren(OutputSink& sink, bool indent, int depth) : child_(sink, indent, depth) {}
    CfgChildren(const CfgChildren&) = delete;
    CfgChildren& operator=(const CfgChildren&) = delete;

    /// Appends a child, to which things may be added until the next one comes. Names are literals.
    CfgChild& add(std::string_view name) {
        finish();
        child_.name_ = name;
        child_.writeTag("<", name);
        return child_;
    }

    /// False once the sink has failed, so that nothing more needs to be made.
    [[nodiscard]] bool areWanted() const { return child_.sink_.ok(); }

    /// Ends the last child; to be called once, after everything was added.
    void finish() {
        if (!child_.name_.empty()) {
            child_.writeTag("</", child_.name_);
            child_.name_ = {};
        }
    }

  private:
    CfgChild child_;
};

template <typename Make>
void CfgChild::addChildren(Make make) {
    CfgChildren children(sink_, indent_, depth_ + 1);
    make(children);
    children.finish();
}

}  // namespace quillmark
