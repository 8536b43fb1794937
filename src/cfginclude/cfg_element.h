#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

class CfgChildren;
class OutputSink;

/// Makes the children of an element one by one while it is written. What it refers to outlives the
/// writing.
using CfgSection = std::function<void(CfgChildren& children)>;

/// One element of the include document: comments, key=value lines, child elements and raw text
/// lines, in this order.
///
/// The text form looks like XML but is none: no attributes, no declaration and no escaping. With
/// indentation an element reads
///
///     #a comment
///     <name>
///         key=value
///         <child>
///         </child>
///     a text, never indented
///     </name>
///
/// A large control unit has millions of signals, a table millions of rows, and one array in a
/// description can ask for more elements than any memory holds. Such children are never kept: they
/// are made by a section while the element is written, so that a few dozen elements live at a time.
/// Values are kept as the finished lines, one behind the other as they go to the file: with ten of
/// them in a signal, their bytes are what writing a document costs.
///
/// Element names are not copied; they must outlive the element, which is no burden for the string
/// literals that they are. Everything else is copied or moved in.
class CfgElement {
  public:
    explicit CfgElement(std::string_view name) : name_(name) {}
    CfgElement(const CfgElement&) = delete;
    CfgElement& operator=(const CfgElement&) = delete;

    // Values are appended in the order of the calls; a key may come again.

    /// Adds the text as it stands, whatever bytes it holds.
    void addValue(std::string_view key, std::string_view text) { addJoinedValue(key, {text}); }

    /// As addValue with the concatenation of the parts, which spares the caller a temporary. Keys
    /// are literals: with this in sight of the caller, copying one takes a move or two.
    void addJoinedValue(std::string_view key, std::initializer_list<std::string_view> parts) {
        std::size_t length = key.size() + 1;
        for (const std::string_view part : parts) {
            length += part.size();
        }
        char* at = addLine(length);
        at += key.copy(at, key.size());
        *at++ = '=';
        for (const std::string_view part : parts) {
            at += part.copy(at, part.size());
        }
    }

    /// Adds the text between two single quotes. Quotes inside are left alone.
    void addQuotedValue(std::string_view key, std::string_view text);

    /// Adds the integer in decimal.
    void addIntValue(std::string_view key, std::int64_t value);

    /// Adds the value as "0x" and lower-case digits without leading zeros.
    void addHexValue(std::string_view key, std::uint32_t value);

    /// Adds the value in general notation with six significant digits, like the %g of printf in
    /// the C locale ("0.1", "1.23457e+06", "inf", "nan"), but a negative zero as "0".
    void addRealValue(std::string_view key, double value);

    /// Appends a new, empty child.
    CfgElement& addChild(std::string_view name);

    /// Appends an element that was made on its own.
    void attachChild(std::unique_ptr<CfgElement> element);

    /// Adds a comment line, without the "#" that starts it in the file.
    void addComment(std::string text);

    /// Adds a raw text; move large ones in.
    void addText(std::string text);

    /// Gives the element children that are made while it is written, behind those that were added.
    void setSection(CfgSection section);

    [[nodiscard]] std::string_view name() const { return name_; }
    [[nodiscard]] std::size_t childCount() const { return children_.size(); }

    /// Writes the element with everything in it. `depth` is the level of indentation of its tags
    /// (four blanks each, none at all unless `indent`). A document nests only a few levels.
    void write(OutputSink& sink, bool indent, int depth) const;

  private:
    friend class CfgChildren;

    /// Becomes a new, empty element, which goes on with the memory of the old one.
    void reset(std::string_view name);
    char* addLine(std::size_t length);
    void growLines(std::size_t wanted);
    void writeLines(OutputSink& sink, bool indent, int depth) const;

    std::string_view name_;
    std::unique_ptr<char[]> lines_;  ///< each with its line break
    std::size_t linesSize_ = 0;
    std::size_t linesCapacity_ = 0;
    std::vector<std::size_t> lineEnds_;  ///< in lines_
    std::vector<std::string> comments_;
    std::vector<std::string> texts_;
    std::vector<std::unique_ptr<CfgElement>> children_;
    CfgSection section_;
};

/// Takes the children of a section while they are made, and writes each one when the next one
/// comes: only one is ever held.
class CfgChildren {
  public:
    /// Children are written at level `depth`; the sink outlives this object.
    CfgChildren(OutputSink& sink, bool indent, int depth)
        : sink_(sink), indent_(indent), depth_(depth) {}
    CfgChildren(const CfgChildren&) = delete;
    CfgChildren& operator=(const CfgChildren&) = delete;

    /// Appends a new, empty child. It lives until the next one is added.
    CfgElement& add(std::string_view name);

    /// False once the sink has failed, so that nothing more needs to be made.
    [[nodiscard]] bool areWanted() const;

    /// Writes the last child; to be called once, after everything was added.
    void finish();

  private:
    OutputSink& sink_;
    bool indent_;
    int depth_;
    bool holdsChild_ = false;
    CfgElement child_{std::string_view()};
};

}  // namespace quillmark
