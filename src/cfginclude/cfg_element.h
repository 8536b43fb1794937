#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

class CfgDocument;
class CfgSection;
class OutputSink;

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
/// A document of a large control unit holds millions of elements with some ten values each, so an
/// element is a small record in its document's arena, its values are kept as the finished lines,
/// one behind the other as they go to the file, and only what few elements have (comments, texts)
/// is allocated separately.
///
/// Lifetime: elements belong to their CfgDocument and live until it is cleared or destroyed,
/// attached or not. Element names are not copied; they must outlive the document, which is no
/// burden for the string literals that they are. Everything else is copied or moved in.
class CfgElement {
  public:
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

    /// Appends an element that has no parent yet (CfgDocument::createElement) and is no ancestor of
    /// this one. Both must be of the same document.
    void attachChild(CfgElement& element);

    /// Adds a comment line, without the "#" that starts it in the file.
    void addComment(std::string text);

    /// Adds a raw text; move large ones in.
    void addText(std::string text);

    /// Gives the element children that are made while it is written, behind those that were added.
    void setSection(std::unique_ptr<const CfgSection> section);

    [[nodiscard]] std::string_view name() const { return {name_, nameLength_}; }
    [[nodiscard]] std::size_t childCount() const { return childCount_; }

    /// Writes the element with everything in it. `depth` is the level of indentation of its tags
    /// (four blanks each, none at all unless `indent`). Nesting costs heap, not stack.
    void write(OutputSink& sink, bool indent, int depth) const;

  private:
    friend class CfgDocument;
    struct LineRun;
    struct Extras;

    CfgElement(CfgDocument& document, std::string_view name);

    void writeHead(OutputSink& sink, bool indent, int depth) const;
    void writeTail(OutputSink& sink, bool indent, int depth) const;
    void writeLines(OutputSink& sink, std::string_view lines, std::size_t firstLine, bool indent,
                    int depth) const;

    char* addLine(std::size_t length);
    char* addLineElsewhere(std::size_t size);
    Extras& extras();

    CfgDocument* document_;
    const char* name_;
    CfgElement* firstChild_ = nullptr;
    CfgElement* lastChild_ = nullptr;
    CfgElement* nextSibling_ = nullptr;
    Extras* extras_ = nullptr;
    std::uint32_t nameLength_;
    std::uint32_t childCount_ = 0;
    // Length of the lines that follow this record in the arena, and the number of the first one.
    std::uint32_t lineBytes_ = 0;
    std::uint32_t firstLine_ = 0;
    bool attached_ = false;
};

/// Takes the children of a section while they are made, and writes each one when the next one
/// comes: only one is ever held.
class CfgChildren {
  public:
    /// Children are written at level `depth`; the sink outlives this object.
    CfgChildren(OutputSink& sink, bool indent, int depth);
    CfgChildren(const CfgChildren&) = delete;
    CfgChildren& operator=(const CfgChildren&) = delete;
    ~CfgChildren();

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
    std::unique_ptr<CfgDocument> scratch_;
    const CfgElement* current_ = nullptr;
};

/// The source of children that are too many to be kept: a large control unit has millions of
/// signals, and one array in a description can ask for more elements than any memory holds.
class CfgSection {
  public:
    CfgSection() = default;
    CfgSection(const CfgSection&) = delete;
    CfgSection& operator=(const CfgSection&) = delete;
    virtual ~CfgSection() = default;

    /// Makes the children one by one. Called whenever the section's element is written.
    virtual void writeChildren(CfgChildren& children) const = 0;
};

/// Owner of the elements of one include document, or of one part of it that is written and dropped
/// on its own.
class CfgDocument {
  public:
    CfgDocument();
    CfgDocument(const CfgDocument&) = delete;
    CfgDocument& operator=(const CfgDocument&) = delete;
    ~CfgDocument();

    /// Makes an element without a parent: the root, or one to be attached later. The name must
    /// outlive the document.
    CfgElement& createElement(std::string_view name);

    /// Drops all elements and keeps some memory for the next ones.
    void clear();

    /// Bytes that the arena has taken from the heap.
    [[nodiscard]] std::size_t reservedBytes() const { return reservedBytes_; }

  private:
    friend class CfgElement;

    struct Chunk {
        std::unique_ptr<char[]> bytes;
        std::size_t size;
    };

    char* allocate(std::size_t size, std::size_t wishedRoom);
    bool extend(const char* end, std::size_t size);
    void addChunk(std::size_t size);

    std::vector<Chunk> chunks_;
    std::vector<Chunk> largeChunks_;
    std::vector<std::unique_ptr<CfgElement::Extras>> extras_;
    std::vector<std::size_t> lineLengths_;  ///< of all elements, in the order of the calls
    char* cursor_ = nullptr;
    std::size_t room_ = 0;
    std::size_t reservedBytes_ = 0;
};

}  // namespace quillmark
