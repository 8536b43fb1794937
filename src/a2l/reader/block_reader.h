#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

#include "a2l/reader/message_text.h"
#include "a2l/reader/ph_reader.h"
#include "a2l/tokens/keyword_tables.h"
#include "a2l/tokens/lexer.h"
#include "model/ph_object.h"
#include "model/ph_string.h"
#include "model/ph_value.h"

namespace quillmark {

/// What every block parser works with: tokens, their expectations, diagnostics, and the ways of
/// skipping. The rhythm of all blocks is the same. A parser is called after `/begin KEYWORD`, reads
/// the fixed parameters, then optional keywords and blocks up to `/end`, and returns the kind of
/// the first token after its `/end KEYWORD`.
///
/// The first error ends the parse: after it every further token is TOK_ERROR and no further message
/// is made, nothing traced and nothing kept. Parsers may therefore go straight on after a failed
/// expectation, as long as none of their loops waits for anything but tokens, and as long as all
/// that they put into the model passes keep() and its kin; a parser that failed returns TOK_ERROR
/// by itself.
class BlockReader : public PhReader, private A2lLexer {
  public:
    using PhReader::PhReader;

    // --- Tokens ----------------------------------------------------------------------------------

    /// Reads the next token and returns its kind; TOK_ERROR for ever once the parse has failed.
    int next() { return read(false); }

    /// The same in word mode, where an unquoted format or unit is one token.
    int nextWord() { return read(true); }

    /// The token read last. Its text is gone with the next one.
    const Token& token() const { return token_; }

    /// The line on which the token read last ended, beginning with 1.
    using A2lLexer::lineNumber;

    /// Whether the parse has failed; loops that count instead of waiting for a token ask this.
    bool failed() const { return failed_; }

    /// Reads `count` tokens of any kind, drops them, and returns the kind of the one after them.
    int drop(int count);

    /// The table in which words are looked up, and after which messages name tokens.
    void useKeywords(const KeywordTable& table) { setKeywordTable(table); }

    /// Name of a token kind in the current table: the keyword, or "token=" and the number.
    using A2lLexer::keywordName;

    // --- Expectations: read one token, report what is wrong with it ------------------------------

    /// A name, else the error "Identifier expected".
    PhString readIdentifier();

    /// Reads a name, which stays the current token; else the same error and false.
    bool expectIdentifier();

    /// A quoted text, else the error "String expected". A core block may write the empty text as
    /// NULL.
    PhString readString();

    /// The same for the long identifier of `block`, which gets it if long identifiers are kept.
    void readLongIdentifier(PhObject& block);

    /// The kind of a text that may be written as NULL: the bare identifier becomes an empty text.
    int nullAsEmptyString(int kind);

    /// A number in the kind in which it is written; for any other token the warning "Unexpected
    /// token '%s' found" and a missing number.
    PhNumber readNumberValue();

    /// The value of an integer token, 0 for any other token, which is dropped without a message.
    std::int32_t readInteger();

    /// Two integers; a negative first one counts as 0.
    void readIntPair(std::int32_t& first, std::int32_t& second);

    /// Takes an integer token into `value`; for any other kind of token the warning "Unexpected
    /// token '%s' found", and `value` stays as it was. Returns whether it was one.
    bool readIntegerOrWarn(std::int32_t& value);

    /// After `/end`: expects the block's own keyword and returns the kind of the token after it;
    /// for another token the error "Keyword '%s' expected after /end" with the keyword's name.
    int closeBlock(int keyword);

    /// The same where the message gives the block another name than the current table.
    int closeBlock(int keyword, std::string_view name);

    /// Names up to `/end`, each handed to `take(text)`, and the end of the block; anything else
    /// among them is an unexpected token.
    template <typename Take>
    int readNameBlock(int keyword, Take take) {
        int kind = next();
        for (; kind == TOK_IDENT; kind = next()) {
            take(token_.text);
        }
        return kind == kw::core::END ? closeBlock(keyword) : unexpectedToken(kind);
    }

    /// Names without a block: identifiers up to the first other token, whose kind is returned.
    template <typename Take>
    int readNames(Take take) {
        int kind = next();
        for (; kind == TOK_IDENT; kind = next()) {
            take(token_.text);
        }
        return kind;
    }

    // --- Keeping what was read -------------------------------------------------------------------

    /// Changes the model, unless the parse has failed meanwhile. The others do it through this one.
    template <typename Change>
    void commit(Change change) {
        if (!failed_) {
            change();
        }
    }

    /// Sets a field.
    template <typename Field, typename Value>
    void keep(Field& field, Value&& value) {
        commit([&] { field = std::forward<Value>(value); });
    }

    /// Adds to the end of a list of objects.
    template <typename T>
    void keepIn(PhObjectList<T>& list, PhHandle<T> object) {
        commit([&] { list.append(std::move(object)); });
    }

    /// Sets a property.
    void keepInteger(PhProperties& properties, std::string_view name, std::int32_t value) {
        commit([&] { properties.setInteger(name, value); });
    }
    void keepText(PhProperties& properties, std::string_view name, std::string_view text) {
        commit([&] { properties.setText(name, text); });
    }

    // --- Diagnostics -----------------------------------------------------------------------------

    /// Puts out one trace text, see PhReader; nothing once the parse has failed.
    void trace(std::string_view format, std::initializer_list<MessageArgument> arguments = {}) {
        if (!failed_) {
            PhReader::trace(format, arguments);
        }
    }

    /// An error with the lexer's current line. It neither counts nor ends anything by itself.
    void error(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

    /// A warning with the lexer's current line.
    void warning(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

    /// An error that ends the parse. Returns TOK_ERROR.
    int fail(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

    /// The error "Unexpected token '%s' found". Returns TOK_ERROR.
    int unexpectedToken(int kind);

    /// The warning of the same text.
    void unexpectedTokenWarning(int kind);

    // --- Skipping --------------------------------------------------------------------------------

    /// Skips a block whose `/begin keyword` has been read, nested blocks included.
    int skipBlock(int keyword);

  protected:
    /// Forgets what became of the last input, before the next one is looked for.
    void startOver();

    /// Reading starts at the beginning of `input`, which outlives the reading.
    void start(InputFile& input) { attach(input); }
    void finish() { detach(); }

    using A2lLexer::detectEncoding;

  private:
    int read(bool wordMode) {
        if (failed_) {
            return TOK_ERROR;
        }
        const int kind = nextToken(token_, wordMode);
        failed_ = kind == TOK_ERROR;
        return kind;
    }

    bool expectString();
    int endMissing(std::string_view name);
    void lexicalError(std::string_view message) override;

    Token token_;
    bool failed_ = false;
};

/// How an optional part of a block stands in the text.
enum class Form : std::uint8_t {
    Bare,   ///< KEYWORD and its parameters
    Block,  ///< /begin KEYWORD ... /end KEYWORD
};

/// One optional part of a block: which keyword, and what happens to it. `Reader` is the class whose
/// operations parse blocks, `Context` the thing that the surrounding block fills.
template <typename Reader, typename Context>
struct OptionalRule {
    /// Parses the part and returns the kind of the token after it.
    using Parse = int (Reader::*)(Context&);

    /// A block that no rule names is an unexpected token.
    static constexpr bool kSkipsUnknownBlocks = false;

    Form form;
    int keyword;
    Parse parse = nullptr;
    int dropped = 0;  ///< without `parse`: how many parameters of a bare keyword are dropped;
                      ///< a block without `parse` is skipped whole

    bool matches(Form foundForm, int kind, const Token&) const {
        return keyword == kind && form == foundForm;
    }
};

/// The rule for a part that begins with a token of that kind, or nullptr.
template <typename Rules>
auto findRule(const Rules& rules, Form form, int kind, const Token& token)
    -> decltype(std::data(rules)) {
    for (const auto& rule : rules) {
        if (rule.matches(form, kind, token)) {
            return &rule;
        }
    }
    return nullptr;
}

/// Does what `rule` says about a part whose keyword is of that kind. Returns the kind of the token
/// after it.
template <typename Reader, typename Rule, typename Context>
int applyRule(Reader& reader, const Rule& rule, Context& context, int kind) {
    if (rule.parse != nullptr) {
        return std::invoke(rule.parse, reader, context);
    }
    return rule.form == Form::Block ? reader.skipBlock(kind) : reader.drop(rule.dropped);
}

/// Reads optional parts, the first of whose tokens is `kind`, up to `/end`. `rules` is an array of
/// rules of one type. Returns the kind of that token, or TOK_ERROR after something that no rule
/// names.
template <typename Reader, typename Rules, typename Context>
int readOptionals(Reader& reader, const Rules& rules, Context& context, int kind) {
    using Rule = std::remove_cvref_t<decltype(*std::data(rules))>;
    const bool hasBlocks = Rule::kSkipsUnknownBlocks ||
                           std::any_of(std::begin(rules), std::end(rules),
                                       [](auto& rule) { return rule.form == Form::Block; });
    while (kind != kw::core::END) {
        Form form = Form::Bare;
        if (kind == kw::core::BEGIN && hasBlocks) {
            form = Form::Block;
            kind = reader.next();
        }
        if (const Rule* rule = findRule(rules, form, kind, reader.token())) {
            kind = applyRule(reader, *rule, context, kind);
        } else if (Rule::kSkipsUnknownBlocks && form == Form::Block) {
            kind = reader.skipBlock(kind);
        } else {
            return reader.unexpectedToken(kind);
        }
    }
    return kind;
}

/// Reads bare optional parts, the first of whose tokens is `kind`, up to the first token that no
/// rule names, whose kind is returned.
template <typename Reader, typename Rules, typename Context>
int readBareOptionals(Reader& reader, const Rules& rules, Context& context, int kind) {
    while (const auto* rule = findRule(rules, Form::Bare, kind, reader.token())) {
        kind = applyRule(reader, *rule, context, kind);
    }
    return kind;
}

}  // namespace quillmark
