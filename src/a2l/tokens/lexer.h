#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "a2l/tokens/byte_scan.h"
#include "a2l/tokens/keyword_tables.h"

namespace quillmark {

class InputFile;

/// What nextToken() returns besides keyword ids (see keyword_tables.h) and single characters.
///
/// A character that starts no other token is returned as its value as a signed byte: `+` is 43, a
/// byte 0xE9 is -23. These values and the keyword ids share one space of numbers, and nothing keeps
/// them apart: a stray `#` reads like the keyword whose id is 35.
enum TokenKind : int {
    /// A number is malformed (`10x3`, `1.5e`, `--5`), or the file ended inside a string, which has
    /// then been reported. The character that made the number malformed is read again.
    TOK_MALFORMED = -1,
    /// Digits, or `0x` and hexadecimal digits, with or without `-`. A point and digits alone
    /// (`.5`) count as well, with the value 0.
    TOK_INTEGER = 300,
    /// A number with a point behind a digit (`1.`, `.5.5`), an exponent (`1e5`), or both.
    TOK_FLOAT = 301,
    /// A text in quotes, without them and with its escapes replaced; or a word read in word mode.
    TOK_STRING = 302,
    /// A word that is no keyword of the current table, also one that begins like a number (`1ms`).
    TOK_IDENT = 303,
    /// The end of the file, however often it is asked for.
    TOK_EOF = 304,
    /// Something was reported that ends the parse. Callers pass it up and say nothing more.
    TOK_ERROR = 305,
};

/// One token, owned by the caller and used again for the next one. Whatever the kind of the token
/// leaves unset is 0 and "".
struct Token {
    /// Of TOK_FLOAT. It is read from the text at each call, as few ask for it.
    double floatValue() const;

    /// Of TOK_INTEGER: the low 32 bits of the value, which itself is kept to 64 bits.
    std::int32_t intValue = 0;
    /// Of numbers, strings, identifiers and keywords. A view into the lexer's buffer, valid until
    /// the next token is read.
    std::string_view text = "";
};

/// Turns the bytes of a description file into tokens, one at a time, and counts lines. The A2L
/// reader derives from it: it is the state that all block parsers share.
///
/// Bytes are read in blocks into one buffer that always ends in bytes 0xFF. As such bytes of the
/// file have no meaning and are taken out when a block arrives, 0xFF inside a scanning loop means
/// just one thing, "fetch more"; no loop has to compare positions. A token that is not finished at
/// the end of a block is moved to the front of the buffer, which grows only when one token fills
/// it, so tokens of any length are read and their texts need no storage of their own.
class A2lLexer {
  public:
    static constexpr std::size_t kDefaultBlockSize = std::size_t{64} * 1024;

    A2lLexer();
    A2lLexer(const A2lLexer&) = delete;
    A2lLexer& operator=(const A2lLexer&) = delete;
    virtual ~A2lLexer();

    /// Reads from `source` from now on, `blockSize` bytes at a time, beginning with line 1. The
    /// source has to outlive the reading. The current table and the two switches stay as they are.
    void attach(InputFile& source, std::size_t blockSize = kDefaultBlockSize);

    /// Forgets the source. What is left in the buffer is dropped; tokens are TOK_EOF.
    void detach();

    /// Looks for a UTF-8 mark; to be called between attach() and the first token. Returns 6 when
    /// the file begins with EF BB BF, else 5. A first byte other than EF is left to be read again;
    /// of an incomplete mark the bytes up to the first wrong one are lost.
    int detectEncoding();

    /// Reads the next token and returns its kind. In word mode a token that begins with a letter, a
    /// digit, `_`, `-` or `%` is a word for its own sake: TOK_STRING, whatever it reads like. For
    /// places where a format or a unit may stand without quotes.
    int nextToken(Token& token, bool wordMode = false);

    /// The next byte of the file as 0 to 254, or -1 at its end.
    int readChar();

    /// The line on which the last token ended, beginning with 1.
    int lineNumber() const { return static_cast<int>(lineNumber_); }
    void resetLineNumber() { lineNumber_ = 1; }

    /// Where in that line the last token begins, in bytes, counted from 1: of a text its first
    /// character, and 1 for what began on an earlier line. Bytes 0xFF and a UTF-8 mark are not
    /// counted. Takes as long as the line is.
    int columnNumber() const;

    /// The table that keywords are looked up in and named from, at first that of the core words.
    /// Whoever sets another one sets the core table back before anybody else reads a token.
    const KeywordTable& keywordTable() const { return *keywordTable_; }
    void setKeywordTable(const KeywordTable& table) {
        keywordTable_ = &table;
        lookupTable_ = rawIdentifiers_ ? &kNoKeywords : &table;
    }

    /// Sets the table by its context number, see keywordTableOfContext(). An unknown number
    /// changes nothing.
    void selectKeywordTable(int context);

    /// The keyword of the current table that a token kind stands for, or "token=" and the number.
    /// Valid until the next call.
    std::string_view keywordName(int kind);

    /// Whether identifiers may contain `-`, `.`, `/`, `+`, `[`, `]` and `|` too. At first they may.
    void setExtendedIdentifiers(bool extended) { extendedIdentifiers_ = extended; }

    /// Whether words are left alone instead of being looked up as keywords. At first they are not.
    void setRawIdentifiers(bool raw) {
        rawIdentifiers_ = raw;
        setKeywordTable(*keywordTable_);
    }

  protected:
    /// Is told of a file that ends inside a comment or a string, while lineNumber() is its last
    /// line. The token that follows from it is TOK_ERROR or TOK_MALFORMED.
    virtual void lexicalError(std::string_view message) = 0;

  private:
    void resetBuffer();
    void closeBuffer();
    void dropBytesBefore(const char* kept);
    void makeRoom();
    bool readBlock();
    bool refill(char*& position);
    int peek(char*& position);
    void takeWhile(char*& position, std::uint16_t byteClass);
    std::string_view textUpTo(const char* position) const;

    void skipUsualBlanks();
    void skipBlanks();
    int readUnusualToken(Token& token, bool wordMode);
    int readToken(Token& token, bool wordMode);
    int skipToToken();
    int commentError(int beginLine);
    bool skipBlockComment();
    bool skipLineComment();
    int readWord(Token& token);
    int readName(Token& token);
    int readIdentifier(Token& token, char* position);
    int identifier(Token& token, char* end);
    int readSlash(Token& token);
    int blockWord(Token& token, char* end, int keyword);
    int readNumber(Token& token);
    int readHexadecimal(Token& token, char* digits);
    int readFraction(Token& token, char* digits);
    int numberUpTo(char* end, Token& token, int kind);
    int readLongNumber(Token& token);
    bool takeRealRest(char*& position, bool& real);
    int malformed(Token& token, char* position);
    int readString(Token& token);
    int readStringWithEscapes(Token& token);

    const KeywordTable* keywordTable_ = &kCoreKeywords;
    /// Where words are looked up: the same table, or one without any.
    const KeywordTable* lookupTable_ = &kCoreKeywords;
    InputFile* source_ = nullptr;
    std::size_t blockSize_ = kDefaultBlockSize;

    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_ = 0;
    /// The first byte of the unfinished token: everything before it may be overwritten.
    char* tokenStart_ = nullptr;
    /// The next byte to be read.
    char* cursor_ = nullptr;
    /// The first byte 0xFF behind the last byte that was fetched.
    char* end_ = nullptr;

    std::uint32_t lineNumber_ = 1;
    Indentation indentation_;  ///< of the last line that was begun
    /// Bytes of the line at the front of the buffer that are no longer in it.
    std::size_t droppedOfLine_ = 0;
    bool extendedIdentifiers_ = true;
    bool rawIdentifiers_ = false;
    std::array<char, 24> nameText_{};
};

}  // namespace quillmark
