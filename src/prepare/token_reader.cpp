#include "prepare/token_reader.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <system_error>

#include "a2l/tokens/byte_classes.h"
#include "a2l/tokens/byte_scan.h"
#include "platform/compiler.h"
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

// The quick way: most tokens are short, of the plainest bytes, and stand behind one space or a line
// end and an indentation. All else is left to the long way.

/// As many bytes have to follow, so that all that the quick way looks at lies in the text.
constexpr std::size_t kUsualSize = 5 * kLookAhead;

inline const char* behindUsualBlanks(const char* text) {
    if (*text == ' ') {
        return text + 1;
    }
    text += *text == '\r' ? 1 : 0;
    return *text == '\n' ? text + 1 + std::countr_one(spacesAhead(text + 1)) : text;
}

struct UsualToken {
    TokenKind kind = TokenKind::Mark;
    std::size_t length = 0;  ///< 0 for a token that needs a closer look
};

inline UsualToken usualToken(TokenKind kind, const char* text, std::size_t length) {
    return {kind, isPlainEnd(text[length]) ? length : 0};
}

inline UsualToken usualNumber(const char* text) {
    constexpr std::size_t kPrefix = 2;
    if (*text != '-' && isPlainEnd(text[1])) {
        return {TokenKind::Integer, 1};
    }
    if (text[0] == '0' && text[1] == 'x') {
        return usualToken(TokenKind::Integer, text, kPrefix + leadingHexDigits(text + kPrefix));
    }
    const std::size_t sign = *text == '-' ? 1 : 0;
    const std::size_t digits = leadingDigits(text + sign);
    if (digits == 0) {
        return {};
    }
    const std::size_t point = sign + digits;
    return text[point] == '.'
               ? usualToken(TokenKind::Real, text, point + 1 + leadingDigits(text + point + 1))
               : usualToken(TokenKind::Integer, text, point);
}

inline UsualToken usualSlash(const char* text) {
    constexpr std::string_view kBegin = "/begin";
    constexpr std::string_view kEnd = "/end";
    if (std::memcmp(text, kBegin.data(), kBegin.size()) == 0) {
        return usualToken(TokenKind::Begin, text, kBegin.size());
    }
    return std::memcmp(text, kEnd.data(), kEnd.size()) == 0
               ? usualToken(TokenKind::End, text, kEnd.size())
               : UsualToken{};
}

inline UsualToken usualToken(const char* text) {
    if (isLetter(*text)) {
        return usualToken(TokenKind::Word, text, leadingNameBytes(text));
    }
    if (isOf(*text, kDigit) || *text == '-') {
        return usualNumber(text);
    }
    return *text == '/' ? usualSlash(text) : UsualToken{};
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

void TokenReader::skipBlanks() {
    std::size_t p = position_;
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

/// False if what follows is too near the end of the text for the quick way.
inline bool TokenReader::skipUsualBlanks() {
    if (text_.size() < position_ + kUsualSize) {
        return false;
    }
    const char* const text = text_.data();
    position_ = static_cast<std::size_t>(behindUsualBlanks(text + position_) - text);
    return true;
}

std::size_t TokenReader::skipToToken() {
    if (!skipUsualBlanks() || isPlainEnd(text_[position_]) || text_[position_] == '/') {
        skipBlanksAndComments();
    }
    return position_;
}

Token TokenReader::next() {
    if (skipUsualBlanks()) {
        const char* const token = text_.data() + position_;
        if (const UsualToken usual = usualToken(token); usual.length != 0) {
            return take(usual.kind, position_ + usual.length);
        }
        if (*token == '"') {
            return readText();
        }
    }
    return nextUnusual();
}

QM_OUT_OF_LINE Token TokenReader::nextUnusual() {
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
        p = findQuoteOrBackslash(text_, p);
        if (p >= text_.size()) {
            return {TokenKind::OpenText, position_, text_.size()};
        }
        if (text_[p] == '\\') {
            p += 2;
            continue;
        }
        ++p;
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
