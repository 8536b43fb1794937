#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillmark::preparing {

/// What a token is, as the reader of descriptions takes it.
enum class TokenKind : std::uint8_t {
    Word,       ///< an identifier or a keyword, also one that begins like a number (`1ms`)
    Integer,    ///< decimal or hexadecimal; `.5` counts as well
    Real,       ///< with a point behind a digit, an exponent, or both
    Text,       ///< in quotes, which belong to it
    Mark,       ///< a single character that starts no other token
    Begin,      ///< `/begin`
    End,        ///< `/end`
    Include,    ///< `/include`
    Malformed,  ///< the front of a number that is none, up to what is wrong with it
    EndOfText,
    OpenComment,  ///< a comment begins here and does not end
    OpenText,     ///< a text in quotes begins here and does not end
};

/// Whether a name may begin with it.
constexpr bool isLetter(char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_';
}

/// One token: the bytes [begin, end) of the text that is read.
struct Token {
    TokenKind kind = TokenKind::EndOfText;
    std::size_t begin = 0;
    std::size_t end = 0;

    [[nodiscard]] bool isNumber() const {
        return kind == TokenKind::Integer || kind == TokenKind::Real;
    }

    /// Whether the bytes ended before the token did.
    [[nodiscard]] bool isOpen() const {
        return kind == TokenKind::OpenComment || kind == TokenKind::OpenText;
    }
};

/// Finds the tokens of bytes in memory, without changing or copying one of them. The lexer of the
/// reader makes values of them and forgets where they stood; whoever copies a description needs
/// the reverse.
class TokenReader {
  public:
    explicit TokenReader(std::string_view text, std::size_t position = 0)
        : text_(text), position_(position) {}

    /// The next token behind blanks and comments. At an open comment or text the position stays in
    /// front of it.
    Token next();

    /// The same in word mode, where an unquoted format or unit is one token.
    Token nextWord();

    /// Goes to where the next token begins, or to the comment that has no end.
    std::size_t skipToToken();

    /// The token that next() will give.
    [[nodiscard]] Token peek() const {
        TokenReader ahead = *this;
        return ahead.next();
    }

    [[nodiscard]] std::string_view textOf(const Token& token) const {
        return text_.substr(token.begin, token.end - token.begin);
    }

    [[nodiscard]] std::string_view text() const { return text_; }

    [[nodiscard]] std::size_t position() const { return position_; }
    void setPosition(std::size_t position) { position_ = position; }

  private:
    bool skipUsualBlanks();
    void skipBlanks();
    bool skipBlanksAndComments();
    bool skipComment();
    Token nextUnusual();
    Token readWord();
    Token readNumber();
    Token readText();
    Token take(TokenKind kind, std::size_t end);
    [[nodiscard]] std::size_t skip(std::size_t from, std::uint16_t byteClass) const;

    std::string_view text_;
    std::size_t position_;
};

/// Whether a byte may stand within a name or a number.
bool isNameByte(char byte);

/// The value of an integer token, beyond 64 bits the nearest limit; nothing for any other text.
std::optional<std::int64_t> integerOf(std::string_view text);

}  // namespace quillmark::preparing
