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

    /// As addValue with the concatenation of the parts, which spares the caller a temporary.
    void addJoinedValue(std::string_view key, std::initializer_list<std::string_view> parts);

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
    std::string_view name_;
    std::vector<std::string> lines_;
    std::vector<std::string> comments_;
    std::vector<std::string> texts_;
    std::vector<std::unique_ptr<CfgElement>> children_;
    CfgSection section_;
};

}  // namespace quillmark
