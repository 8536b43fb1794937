#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
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
    bool failed() const { return state_ == State::Failed; }

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

    /// The same for the long identifier of `block`, which gets it if long identifiers are kept, and
    /// the line of its name, which is the token before.
    template <typename Block>
    void readLongIdentifier(Block& block) {
        if constexpr (requires { block.line; }) {
            commit([&] { block.line = lineNumber(); });
        }
        readLongIdentifierOf(block);
    }

    /// The kind of a text that may be written as NULL: the bare identifier becomes an empty text.
    int nullAsEmptyString(int kind);

    /// The last token, which is of kind `kind`, as a number in the kind in which it is written; a
    /// missing number for any other token.
    PhNumber number(int kind) const {
        switch (kind) {
            case TOK_INTEGER:
                return PhNumber::integer(token_.intValue);
            case TOK_FLOAT:
                return PhNumber::real(token_.floatValue());
            default:
                return {};
        }
    }

    /// A number in the kind in which it is written; for any other token the warning "Unexpected
    /// token '%s' found" and a missing number.
    PhNumber readNumberValue();

    /// The value of an integer token, 0 for any other token, which is dropped without a message.
    std::int32_t readInteger();

    /// Two integers; a negative first one counts as 0.
    void readIntPair(std::int32_t& first, std::int32_t& second);

    /// Takes an integer token into `value`; for any other kind of token the warning "Unexpected
    /// token '%s' found", and `value` stays as it was. Returns whether it was one.
    template <typename Value>
    bool readIntegerOrWarn(Value& value) {
        const bool isInteger = expectIntegerOrWarn();
        if (isInteger) {
            value = token_.intValue;
        }
        return isInteger;
    }

    /// After `/end`: expects the block's own keyword and returns the kind of the token after it;
    /// for another token the error "Keyword '%s' expected after /end" with the keyword's name.
    int closeBlock(int keyword);

    /// The same where the message gives the block another name than the current table.
    int closeBlock(int keyword, std::string_view name);

    /// The error of closeBlock(), for who closes a block in another way. Returns TOK_ERROR.
    int endMissing(int keyword) { return endMissing(keywordName(keyword)); }

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
        if (!failed()) {
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
        if (!failed()) {
            PhReader::trace(format, arguments);
        }
    }

    /// Traces what block is read when the reader is verbose: a text, or one with a name for "%s".
    void traceBlock(std::string_view text) {
        if (verbose()) {
            trace(text);
        }
    }
    void traceBlock(std::string_view format, const PhString& name) {
        if (verbose()) {
            trace(format, {name.view()});
        }
    }

    /// An error with the lexer's current line. It counts, but ends nothing by itself.
    void error(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

    /// A warning with the lexer's current line.
    void warning(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

    /// An error that ends the parse. Returns TOK_ERROR.
    int fail(std::string_view format, std::initializer_list<MessageArgument> arguments = {});

    /// The error "Unexpected token '%s' found". Returns TOK_ERROR.
    int unexpectedToken(int kind);

    /// The warning of the same text.
    void unexpectedTokenWarning(int kind);

    // --- Going on behind an error ----------------------------------------------------------------

    /// With how many errors a parse ends. At first it is the first one; with more, reading goes on
    /// behind the block of a module in which an error stood, where that is possible, though the
    /// parse has failed all the same.
    void setErrorLimit(std::int32_t limit) { errorLimit_ = limit; }

    /// Makes a failed parse go on with the next token, unless the limit of errors is reached.
    /// Returns whether it does.
    bool goOn();

    /// Ends a parse that has gone on: there is no place behind the error. `anythingFollows` tells
    /// whether text was passed over in search of it. Returns TOK_ERROR.
    int giveUp(bool anythingFollows);

    /// Lets the next token be the last one again, which was of kind `kind`.
    void repeat(int kind) {
        state_ = State::Repeating;
        repeatedKind_ = kind;
    }

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

    /// Whether the parse has gone on behind an error.
    bool hasGoneOn() const { return goneOn_; }

    /// Whether more than one error was asked for, and nothing but the end follows the last error.
    bool endFollows();

  private:
    int read(bool wordMode) {
        if (state_ != State::Reading) {
            return readBesides();
        }
        const int kind = nextToken(token_, wordMode);
        if (kind == TOK_ERROR) {
            state_ = State::Failed;
        }
        return kind;
    }
    int readBesides();

    TextPlace place() const { return {lineNumber(), columnNumber()}; }
    void readLongIdentifierOf(PhObject& block);
    bool expectString();
    bool expectIntegerOrWarn();
    int endMissing(std::string_view name);
    void lexicalError(std::string_view message) override;

    enum class State : std::uint8_t {
        Reading,
        Repeating,  ///< the next token is the last one again
        Failed,
    };

    Token token_;
    State state_ = State::Reading;
    int repeatedKind_ = TOK_EOF;
    std::int32_t errorLimit_ = 1;
    std::int32_t errors_ = 0;
    bool goneOn_ = false;
    bool passedOver_ = false;
};

}  // namespace quillmark
