#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "a2l/tokens/keyword_tables.h"
#include "prepare/grammar.h"
#include "prepare/text_edits.h"
#include "prepare/token_reader.h"

namespace quillmark::preparing {

/// A part that was found in a block: from its keyword (or `/begin`) to its last token.
struct FoundPart {
    const PartRule* rule;
    std::size_t begin;
    std::size_t end;
};

/// A name in one of the lists of a block.
struct ListedName {
    Token token;
    const PartRule* list;  ///< the part that the list is or stands in
};

/// Something in a block that the reader would refuse.
struct Oddity {
    std::size_t begin;
    std::size_t end;
    std::string_view what;  ///< "block" or "word", taken out; empty for what had to stay
};

/// What a block of a module is made of, as the reader would read it.
class BlockWalk {
  public:
    /// Takes apart `text`, from `/begin` to its keyword behind `/end`, which is known to be whole.
    /// What was found before is forgotten.
    void walk(std::string_view text, const PartRule& rule);

    /// The same for a text that goes on behind the block, and whose keyword ends at `keywordEnd`.
    /// False if the block may not be whole, or if it has what is to be mended, which walk() is for.
    [[nodiscard]] bool walkAhead(std::string_view text, const PartRule& rule,
                                 std::size_t keywordEnd);

    [[nodiscard]] std::string_view text() const { return text_; }
    [[nodiscard]] std::string_view textOf(const Token& token) const {
        return text_.substr(token.begin, token.end - token.begin);
    }
    [[nodiscard]] std::string_view textOf(const FoundPart& part) const {
        return text_.substr(part.begin, part.end - part.begin);
    }

    // Its parameters and optional parts, not those of blocks within.

    [[nodiscard]] const std::vector<FoundPart>& parts() const { return parts_; }
    [[nodiscard]] std::size_t parameterCount() const { return parameterEnds_.size(); }

    /// Where a parameter begins and ends. There has to be one.
    [[nodiscard]] std::size_t parameterBegin(std::size_t index) const;
    [[nodiscard]] std::size_t parameterEnd(std::size_t index) const {
        return parameterEnds_[index];
    }

    /// A parameter as text; empty if the block ended before it.
    [[nodiscard]] std::string_view parameter(std::size_t index) const;

    /// The names in lists, those of blocks within too.
    [[nodiscard]] const std::vector<ListedName>& names() const { return names_; }

    /// What the reader would refuse, in the order of the text.
    [[nodiscard]] const std::vector<Oddity>& oddities() const { return oddities_; }

    /// What is to be changed so that the reader does not.
    TextEdits& edits() { return edits_; }

    /// A part as it is after these changes.
    std::string editedText(const FoundPart& part);

    /// Whether the reader would refuse something that nobody can mend.
    [[nodiscard]] bool isBroken() const { return isBroken_; }

  private:
    /// Whether a token is one that may stand somewhere.
    using Fits = bool (*)(const BlockWalk& walk, const Token& token);
    struct ParameterRow;

    void start(std::string_view text, const PartRule& rule, std::size_t keywordEnd);
    void readParts(const Layout& layout, std::string_view keyword, bool isOuter);
    void readParameters(std::string_view parameters, const PartRule* rule, bool isOuter);
    static const ParameterRow* findParameter(char parameter);
    void readParameter(char parameter, const PartRule* rule);
    void readContents(const Layout& layout, bool isOuter);
    void readInterface();
    void readNames(const PartRule* rule);
    void readEntries(std::string_view entry);
    void readModes();
    void readAssignment();
    void readTargets();
    void readCycle();
    void readBlock(const Layout& layout, const Token& begin, bool isOuter);
    void readBare(const Layout& layout, const Token& token, bool isOuter);
    void skipBlock(int kind);
    void skipInterface();
    void takeOutWords(const Layout& layout, const Token& first);
    [[nodiscard]] bool mayFollow(const Layout& layout, const Token& token) const;

    [[nodiscard]] int kindOf(const Token& token) const;
    [[nodiscard]] std::string_view wordOf(const Token& token) const;
    [[nodiscard]] bool isName(const Token& token) const;
    Token take();
    Token takeWord();
    void expect(Fits fits);
    void takeWhile(Fits fits, std::size_t most);
    void takePairs(std::string_view keyword);
    void breakAt(const Token& token);

    std::string_view text_;
    TokenReader reader_{{}};
    const KeywordTable* keywords_ = nullptr;
    std::size_t keywordEnd_ = 0;
    std::vector<std::size_t> parameterEnds_;
    std::vector<FoundPart> parts_;
    std::vector<ListedName> names_;
    std::vector<Oddity> oddities_;
    TextEdits edits_;
    bool isBroken_ = false;
};

}  // namespace quillmark::preparing
