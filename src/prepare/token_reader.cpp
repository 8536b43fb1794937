#include "prepare/token_reader.h"

#include <array>
#include <charconv>
#include <cstring>
#include <system_error>

#include "a2l/tokens/byte_classes.h"
#include "prepare/byte_search.h"

namespace quillmark::preparing {

namespace {

// The classes are those of the reader's lexer.
constexpr ByteClass kBlank = 1 << 0;
constexpr ByteClass kDigit = 1 << 1;
constexpr ByteClass kHexDigit = 1 << 2;
constexpr ByteClass kLetter = 1 << 3;
constexpr ByteClass kNameStart = 1 << 4;
constexpr ByteClass kName = 1 << 5;
constexpr ByteClass kNumberStart = 1 << 6;
/// Goes on in a name that began like a number.
constexpr ByteClass kNumberName = 1 << 7;
constexpr ByteClass kWordStart = 1 << 8;
constexpr ByteClass kWord = 1 << 9;

constexpr ByteClass kEveryName = kName | kNumberName | kWord;

constexpr ByteClassRow kByteClassRows[] = {
    {std::string_view(" \t\n\r\0", 5), kBlank},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_",
     kLetter | kNameStart | kEveryName | kWordStart},
    {"0123456789", kDigit | kHexDigit | kNumberStart | kEveryName | kWordStart},
    {"ABCDEFabcdef", kHexDigit},
    {"\xC4\xD6\xDC\xE4\xF6\xFC\xDF", kEveryName},  // umlauts and sharp s in Latin-1
    {".", kNumberStart},
    {"-", kNumberStart | kWordStart | kWord | kName | kNumberName},
    {"%", kWordStart | kWord},
    {"/", kNameStart | kName},
    {"*", kNameStart | kName | kWord},
    {"()+", kName},
    {".[]|", kName | kNumberName | kWord},
};

constexpr std::array<ByteClass, 256> kByteClasses = collectByteClasses(kByteClassRows);

/// An ASCII character that is neither blank nor control character.
bool isInk(char byte) {
    return static_cast<signed char>(byte) > ' ';
}

bool isOf(char byte, ByteClass byteClass) {
    return (kByteClasses[static_cast<unsigned char>(byte)] & byteClass) != 0;
}

TokenKind kindOfWord(std::string_view word) {
    if (word.front() == '/') {
        if (word == "/begin") {
            return TokenKind::Begin;
        }
        if (word == "/end") {
            return TokenKind::End;
        }
        if (word == "/include") {
            return TokenKind::Include;
        }
    }
    return TokenKind::Word;
}

/// A blank or control character, none of which belongs to any name.
bool isPlainEnd(char byte) {
    return static_cast<unsigned char>(byte) <= ' ';
}

/// The reader tells single bytes and keywords apart by their numbers, and these two have the
/// numbers of `/begin` and `/end`.
TokenKind kindOfByte(char byte) {
    return byte == '\x01' ? TokenKind::Begin : byte == '\x02' ? TokenKind::End : TokenKind::Mark;
}

}  // namespace

bool isNameByte(char byte) {
    return isOf(byte, kName | kDigit);
}

std::size_t TokenReader::skip(std::size_t from, std::uint16_t byteClass) const {
    while (from < text_.size() && isOf(text_[from], byteClass)) {
        ++from;
    }
    return from;
}

Token TokenReader::take(TokenKind kind, std::size_t end) {
    const Token token{kind, position_, end};
    position_ = end;
    return token;
}

/// Nearly always there is one space, or a line feed and the spaces of an indentation.
inline void TokenReader::skipBlanks() {
    std::size_t p = position_;
    if (p + 1 < text_.size()) {
        if (isInk(text_[p])) {
            return;
        }
        if (text_[p] == ' ' && isInk(text_[p + 1])) {
            position_ = p + 1;
            return;
        }
    }
    while (p < text_.size() && isOf(text_[p], kBlank)) {
        p = text_[p] == '\n' ? skipSpaces(text_, p + 1) : p + 1;
    }
    position_ = p;
}

/// False in front of a comment that does not end.
bool TokenReader::skipBlanksAndComments() {
    for (;;) {
        skipBlanks();
        if (position_ + 1 >= text_.size() || text_[position_] != '/' ||
            (text_[position_ + 1] != '*' && text_[position_ + 1] != '/')) {
            return true;
        }
        if (!skipComment()) {
            return false;
        }
    }
}

bool TokenReader::skipComment() {
    constexpr std::size_t kOpening = 2;
    const bool isBlock = text_[position_ + 1] == '*';
    const std::size_t end =
        isBlock ? text_.find("*/", position_ + kOpening) : text_.find('\n', position_ + kOpening);
    if (end == std::string_view::npos) {
        return false;
    }
    position_ = end + (isBlock ? 2 : 1);
    return true;
}

Token TokenReader::next() {
    if (!skipBlanksAndComments()) {
        return {TokenKind::OpenComment, position_, text_.size()};
    }
    if (position_ >= text_.size()) {
        return {TokenKind::EndOfText, text_.size(), text_.size()};
    }
    const char first = text_[position_];
    if (isOf(first, kNameStart)) {
        return readWord();
    }
    if (isOf(first, kNumberStart)) {
        return readNumber();
    }
    return first == '"' ? readText() : take(kindOfByte(first), position_ + 1);
}

Token TokenReader::nextWord() {
    if (skipBlanksAndComments() && position_ < text_.size() && isOf(text_[position_], kWordStart)) {
        return take(TokenKind::Text, skip(position_, kWord));
    }
    return next();
}

Token TokenReader::readWord() {
    const std::size_t plain = skipPlainName(text_, position_ + 1);
    const std::size_t end =
        plain < text_.size() && isPlainEnd(text_[plain]) ? plain : skip(plain, kName);
    return take(kindOfWord(text_.substr(position_, end - position_)), end);
}

Token TokenReader::readNumber() {
    const auto at = [this](std::size_t index) { return index < text_.size() ? text_[index] : ' '; };
    std::size_t p = position_;
    if (at(p) == '-' || at(p) == '.') {
        ++p;
        if (!isOf(at(p), kDigit)) {
            return take(TokenKind::Malformed, p);
        }
    }
    p = skip(p, kDigit);
    TokenKind kind = TokenKind::Integer;
    if (at(p) == 'x' || at(p) == 'X') {
        const std::string_view prefix = text_.substr(position_, p - position_);
        if (prefix != "0" && prefix != "-0") {
            return take(TokenKind::Malformed, p);
        }
        p = skip(p + 1, kHexDigit);
    } else {
        if (at(p) == '.') {
            kind = TokenKind::Real;
            p = skip(p + 1, kDigit);
        }
        if (at(p) == 'e' || at(p) == 'E') {
            kind = TokenKind::Real;
            ++p;
            if (at(p) == '+' || at(p) == '-') {
                ++p;
            }
            if (!isOf(at(p), kDigit)) {
                return take(TokenKind::Malformed, p);
            }
            p = skip(p, kDigit);
        }
    }
    return isOf(at(p), kLetter) ? take(TokenKind::Word, skip(p, kNumberName)) : take(kind, p);
}

Token TokenReader::readText() {
    std::size_t p = position_ + 1;
    for (;;) {
        // Few texts have a backslash, so it pays to look for the quote alone first.
        const std::size_t quote = text_.find('"', p);
        if (quote == std::string_view::npos) {
            return {TokenKind::OpenText, position_, text_.size()};
        }
        const std::size_t backslash = text_.substr(0, quote).find('\\', p);
        if (backslash != std::string_view::npos) {
            p = backslash + 2;
            continue;
        }
        p = quote + 1;
        if (p >= text_.size() || text_[p] != '"') {
            return take(TokenKind::Text, p);
        }
        ++p;
    }
}

std::optional<std::int64_t> integerOf(std::string_view text) {
    constexpr int kDecimal = 10;
    constexpr int kHexadecimal = 16;
    const bool negative = !text.empty() && text.front() == '-';
    text.remove_prefix(negative ? 1 : 0);
    const bool hexadecimal =
        text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    text.remove_prefix(hexadecimal ? 2 : 0);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value,
                                              hexadecimal ? kHexadecimal : kDecimal);
    if (text.empty() || end != text.data() + text.size() || error == std::errc::invalid_argument) {
        return std::nullopt;
    }
    constexpr std::uint64_t kMost = INT64_MAX;
    if (!hexadecimal && (error == std::errc::result_out_of_range || value > kMost)) {
        return negative ? INT64_MIN : INT64_MAX;
    }
    if (error == std::errc::result_out_of_range) {
        value = UINT64_MAX;
    }
    return static_cast<std::int64_t>(negative ? 0 - value : value);
}

}  // namespace quillmark::preparing
