#include "a2l/tokens/lexer.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "a2l/tokens/byte_classes.h"
#include "a2l/tokens/byte_scan.h"
#include "platform/compiler.h"
#include "platform/input_file.h"

namespace quillmark {
namespace {

constexpr ByteClass kBlank = 1 << 0;
constexpr ByteClass kDigit = 1 << 1;
constexpr ByteClass kHexDigit = 1 << 2;
/// Behind the digits of a number: makes the whole an identifier.
constexpr ByteClass kLetter = 1 << 3;
constexpr ByteClass kIdentifierStart = 1 << 4;
constexpr ByteClass kIdentifier = 1 << 5;
constexpr ByteClass kIdentifierExtended = 1 << 6;
constexpr ByteClass kNumberStart = 1 << 7;
/// Goes on in an identifier that began like a number.
constexpr ByteClass kNumberName = 1 << 8;
constexpr ByteClass kNumberNameExtended = 1 << 9;
constexpr ByteClass kWordStart = 1 << 10;
constexpr ByteClass kWord = 1 << 11;
constexpr ByteClass kWordExtended = 1 << 12;
/// Needs a look inside a string.
constexpr ByteClass kStringStop = 1 << 13;
/// Behind a few digits: more than a short decimal integer, or not known yet.
constexpr ByteClass kNumberGoesOn = 1 << 14;

constexpr char kSentinel = '\xFF';
/// Behind the last byte that was fetched: as many as are ever looked at together, all sentinels.
constexpr std::size_t kBehindEnd = kLookAhead;
constexpr int kEndOfFile = -1;

constexpr ByteClass kEveryName =
    kIdentifier | kIdentifierExtended | kNumberName | kNumberNameExtended | kWord | kWordExtended;

constexpr ByteClassRow kByteClassRows[] = {
    {std::string_view(" \t\n\r\0", 5), kBlank},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_",
     kLetter | kIdentifierStart | kEveryName | kWordStart | kNumberGoesOn},
    {"0123456789", kDigit | kHexDigit | kNumberStart | kEveryName | kWordStart | kNumberGoesOn},
    {"ABCDEFabcdef", kHexDigit},
    {"\xC4\xD6\xDC\xE4\xF6\xFC\xDF", kEveryName},  // umlauts and sharp s in Latin-1
    {".", kNumberStart | kNumberGoesOn},
    {"-", kNumberStart | kWordStart | kWord | kWordExtended},
    {"%", kWordStart | kWord | kWordExtended},
    {"/", kIdentifierStart},
    {"*", kIdentifierStart | kIdentifier | kIdentifierExtended | kWord | kWordExtended},
    {"()", kIdentifier | kIdentifierExtended},
    {"/+", kIdentifierExtended},
    {"-", kIdentifierExtended | kNumberNameExtended},
    {".[]|", kIdentifierExtended | kNumberNameExtended | kWordExtended},
    {std::string_view("\"\\\n\0\xFF", 5), kStringStop},
    {"\xFF", kNumberGoesOn},
};

constexpr std::array<ByteClass, 256> kByteClasses = collectByteClasses(kByteClassRows);

inline ByteClass classOf(char byte) {
    return kByteClasses[static_cast<unsigned char>(byte)];
}

/// A blank or control character, none of which belongs to any name or number.
inline bool isPlainEnd(char byte) {
    return static_cast<unsigned char>(byte) <= ' ';
}

inline bool isOf(int character, ByteClass byteClass) {
    return character >= 0 && (kByteClasses[static_cast<std::size_t>(character)] & byteClass) != 0;
}

std::uint32_t countLines(const char* begin, const char* end) {
    std::uint32_t lines = 0;
    std::string_view rest(begin, static_cast<std::size_t>(end - begin));
    for (std::size_t feed = 0; (feed = rest.find('\n')) != std::string_view::npos; ++lines) {
        rest.remove_prefix(feed + 1);
    }
    return lines;
}

std::int32_t lowBits(std::uint64_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

/// A decimal text as the C library's atol() takes it: what lies outside 64 bits becomes the nearest
/// limit, and a text that begins with a point is 0.
std::int32_t decimalValue(std::string_view text) {
    std::int64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        value = text.front() == '-' ? INT64_MIN : INT64_MAX;
    }
    return lowBits(static_cast<std::uint64_t>(value));
}

/// A hexadecimal text, with or without sign, as the C library's strtoul() takes it: digits beyond
/// 64 bits set all bits, whatever the sign; no digits are 0.
std::int32_t hexadecimalValue(std::string_view text) {
    const bool negative = text.front() == '-';
    text.remove_prefix(negative ? 3 : 2);
    std::uint64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (result.ec == std::errc::result_out_of_range) {
        return lowBits(UINT64_MAX);
    }
    return lowBits(negative ? 0 - value : value);
}

/// The value of a real of few digits and without exponent ("-12.5"), as most are. Numerator and
/// denominator are exact then, so that their quotient is the nearest real, as from_chars() gives
/// it.
std::optional<double> shortReal(std::string_view text) {
    constexpr std::size_t kMostDigits = 15;
    constexpr std::array<double, kMostDigits + 1> kPowers = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = text.front() == '-';
    text.remove_prefix(negative ? 1 : 0);
    if (text.size() > kMostDigits + 1) {
        return std::nullopt;
    }
    std::int64_t digits = 0;
    std::size_t decimals = text.size();  // counted from the point on, once there is one
    for (std::size_t at = 0; at < text.size(); ++at) {
        if ((classOf(text[at]) & kDigit) != 0) {
            digits = digits * 10 + (text[at] - '0');
        } else if (text[at] == '.' && at > 0 && decimals == text.size()) {
            decimals = text.size() - at - 1;
        } else {
            return std::nullopt;
        }
    }
    if (decimals == text.size()) {
        return std::nullopt;
    }
    const double value = static_cast<double>(digits) / kPowers[decimals];
    return negative ? -value : value;
}

/// The number that the text begins with (".5.5" is 0.5). Too large a number is infinite, too small
/// a one is what strtod() makes of it, since from_chars() gives no value then.
double realValue(std::string_view text) {
    if (const std::optional<double> value = shortReal(text)) {
        return *value;
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return std::strtod(std::string(text).c_str(), nullptr);
    }
    return value;
}

/// What a backslash or a quote makes of the character behind it, or NUL when that is read like any
/// other character of the string.
char unescaped(int character) {
    switch (character) {
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case '"':
        case '\\':
            return static_cast<char>(character);
        default:
            return '\0';
    }
}

/// Where the line begins in which a position lies, or the front of the buffer.
const char* startOfLine(const char* front, const char* position) {
    const std::string_view before(front, static_cast<std::size_t>(position - front));
    return front + (before.rfind('\n') + 1);
}

}  // namespace

double Token::floatValue() const {
    return realValue(text);
}

A2lLexer::A2lLexer() : buffer_(std::make_unique<char[]>(kBehindEnd)), capacity_(kBehindEnd) {
    resetBuffer();
}

A2lLexer::~A2lLexer() = default;

void A2lLexer::attach(InputFile& source, std::size_t blockSize) {
    source_ = &source;
    blockSize_ = std::max<std::size_t>(blockSize, 1);
    // The slack takes the unfinished token of an ordinary file, so that the buffer need not grow.
    const std::size_t needed = blockSize_ + blockSize_ / 8 + kBehindEnd;
    if (capacity_ < needed) {
        buffer_ = std::make_unique_for_overwrite<char[]>(needed);
        capacity_ = needed;
    }
    resetBuffer();
    resetLineNumber();
}

void A2lLexer::detach() {
    source_ = nullptr;
    resetBuffer();
}

void A2lLexer::resetBuffer() {
    tokenStart_ = buffer_.get();
    cursor_ = tokenStart_;
    end_ = tokenStart_;
    droppedOfLine_ = 0;
    closeBuffer();
}

/// Puts the sentinels behind end_.
void A2lLexer::closeBuffer() {
    std::memset(end_, static_cast<unsigned char>(kSentinel), kBehindEnd);
}

/// Notes how much of a line is lost with the bytes before a position.
void A2lLexer::dropBytesBefore(const char* kept) {
    const char* const start = startOfLine(buffer_.get(), kept);
    if (start != buffer_.get()) {
        droppedOfLine_ = 0;
    }
    droppedOfLine_ += static_cast<std::size_t>(kept - start);
}

int A2lLexer::columnNumber() const {
    const char* const start = startOfLine(buffer_.get(), cursor_);
    if (tokenStart_ < start) {
        return 1;
    }
    const std::size_t dropped = start == buffer_.get() ? droppedOfLine_ : 0;
    return static_cast<int>(dropped + static_cast<std::size_t>(tokenStart_ - start) + 1);
}

/// Makes sure that a whole block fits behind end_. The bytes from tokenStart_ on are kept.
void A2lLexer::makeRoom() {
    const std::size_t used = static_cast<std::size_t>(end_ - buffer_.get());
    if (used + blockSize_ + kBehindEnd <= capacity_) {
        return;
    }
    dropBytesBefore(tokenStart_);
    const std::size_t kept = static_cast<std::size_t>(end_ - tokenStart_);
    if (kept + blockSize_ + kBehindEnd <= capacity_) {
        std::memmove(buffer_.get(), tokenStart_, kept);
    } else {
        // Doubling keeps the copying of a huge token linear in its length.
        const std::size_t larger = std::max(2 * capacity_, kept + blockSize_ + kBehindEnd);
        auto grown = std::make_unique_for_overwrite<char[]>(larger);
        std::memcpy(grown.get(), tokenStart_, kept);
        buffer_ = std::move(grown);
        capacity_ = larger;
    }
    tokenStart_ = buffer_.get();
    end_ = tokenStart_ + kept;
}

/// Appends the next block that holds anything besides 0xFF. False at the end of the file.
bool A2lLexer::readBlock() {
    char* stop = end_;
    while (stop == end_) {
        const std::size_t count = source_->read(end_, blockSize_);
        if (count == 0) {
            break;
        }
        stop = end_ + count;
        if (void* const skipped = std::memchr(end_, 0xFF, count)) {
            stop = std::remove(static_cast<char*>(skipped), stop, kSentinel);
        }
    }
    const bool any = stop != end_;
    end_ = stop;
    closeBuffer();
    return any;
}

/// Fetches more bytes for a position that has met the sentinel, and moves the position along with
/// the unfinished token. False at the end of the file; the position then stands on the sentinel.
bool A2lLexer::refill(char*& position) {
    if (source_ == nullptr) {
        return false;
    }
    const std::ptrdiff_t offset = position - tokenStart_;
    if (tokenStart_ == end_) {
        dropBytesBefore(end_);
        tokenStart_ = buffer_.get();
        end_ = tokenStart_;
    } else {
        makeRoom();
    }
    position = tokenStart_ + offset;
    return readBlock();
}

/// The byte at a position, fetched if need be, or -1 at the end of the file.
inline int A2lLexer::peek(char*& position) {
    if (*position == kSentinel && !refill(position)) {
        return kEndOfFile;
    }
    return static_cast<unsigned char>(*position);
}

inline void A2lLexer::takeWhile(char*& position, ByteClass byteClass) {
    char* p = position;
    do {
        while ((classOf(*p) & byteClass) != 0) {
            ++p;
        }
    } while (*p == kSentinel && refill(p));
    position = p;
}

inline std::string_view A2lLexer::textUpTo(const char* position) const {
    return {tokenStart_, static_cast<std::size_t>(position - tokenStart_)};
}

int A2lLexer::detectEncoding() {
    char mark = 0;
    if (source_ == nullptr || source_->read(&mark, 1) == 0) {
        return 5;
    }
    if (mark != '\xEF') {
        if (mark != kSentinel) {
            makeRoom();
            *end_++ = mark;
            closeBuffer();
        }
        return 5;
    }
    for (const char expected : {'\xBB', '\xBF'}) {
        if (source_->read(&mark, 1) == 0) {
            return 5;
        }
        if (mark != expected) {
            lineNumber_ += mark == '\n' ? 1 : 0;
            return 5;
        }
    }
    return 6;
}

int A2lLexer::readChar() {
    tokenStart_ = cursor_;
    const int character = peek(cursor_);
    if (character != kEndOfFile) {
        ++cursor_;
        lineNumber_ += character == '\n' ? 1 : 0;
    }
    return character;
}

void A2lLexer::selectKeywordTable(int context) {
    if (const KeywordTable* const table = keywordTableOfContext(context)) {
        setKeywordTable(*table);
    }
}

std::string_view A2lLexer::keywordName(int kind) {
    const std::string_view name = quillmark::keywordName(*keywordTable_, kind);
    if (!name.empty()) {
        return name;
    }
    constexpr std::string_view kPrefix = "token=";
    char* const digits = std::copy(kPrefix.begin(), kPrefix.end(), nameText_.data());
    char* const end = std::to_chars(digits, nameText_.data() + nameText_.size(), kind).ptr;
    return {nameText_.data(), static_cast<std::size_t>(end - nameText_.data())};
}

/// Skips what nearly always stands before a token: one space, or a line end and the spaces of an
/// indentation.
inline void A2lLexer::skipUsualBlanks() {
    char* p = cursor_;
    if (*p == ' ') {
        ++p;
    } else {
        if (*p == '\r') {
            ++p;
        }
        if (*p == '\n') {
            ++lineNumber_;
            p = indentation_.skip(p + 1);
        }
    }
    cursor_ = p;
}

/// Looks the word up that ends at a position.
inline int A2lLexer::identifier(Token& token, char* end) {
    cursor_ = end;
    token.text = textUpTo(end);
    return lookupWord(*lookupTable_, token.text, TOK_IDENT);
}

/// Reads what begins with a letter. Most names are plain to their end and not long; all others are
/// left to the long way.
inline int A2lLexer::readName(Token& token) {
    char* const p = cursor_ + leadingNameBytes(cursor_);
    return isPlainEnd(*p) ? identifier(token, p) : readIdentifier(token, p);
}

inline int A2lLexer::blockWord(Token& token, char* end, int keyword) {
    cursor_ = end;
    token.text = textUpTo(end);
    return keyword == KeywordTable::kNoId ? TOK_IDENT : keyword;
}

/// Reads what begins with a slash: nearly always `/begin` or `/end`.
inline int A2lLexer::readSlash(Token& token) {
    constexpr std::string_view kBegin = "/begin";
    constexpr std::string_view kEnd = "/end";
    char* const slash = cursor_;
    const auto isHere = [slash](std::string_view word) {
        return std::memcmp(slash, word.data(), word.size()) == 0 && isPlainEnd(slash[word.size()]);
    };
    if (isHere(kBegin)) {
        return blockWord(token, slash + kBegin.size(), lookupTable_->begin);
    }
    if (isHere(kEnd)) {
        return blockWord(token, slash + kEnd.size(), lookupTable_->end);
    }
    return readUnusualToken(token, false);
}

int A2lLexer::nextToken(Token& token, bool wordMode) {
    token.intValue = 0;
    skipUsualBlanks();
    tokenStart_ = cursor_;
    const char first = *cursor_;
    const ByteClass classes = classOf(first);
    if (wordMode) {
        return readUnusualToken(token, true);
    }
    if ((classes & kLetter) != 0) {
        return readName(token);
    }
    if ((classes & kNumberStart) != 0) {
        return readNumber(token);
    }
    if (first == '/') {
        return readSlash(token);
    }
    return first == '"' ? readString(token) : readUnusualToken(token, false);
}

// The long ways are kept out of the quick ones, which then need no registers to be saved.

/// Reads a token with whatever may stand before it.
QM_OUT_OF_LINE int A2lLexer::readUnusualToken(Token& token, bool wordMode) {
    token.text = "";
    const int end = skipToToken();
    return end != 0 ? end : readToken(token, wordMode);
}

/// Reads the token of any kind that begins at the cursor.
int A2lLexer::readToken(Token& token, bool wordMode) {
    const char first = *cursor_;
    const ByteClass classes = classOf(first);
    if (wordMode && (classes & kWordStart) != 0) {
        return readWord(token);
    }
    if ((classes & kIdentifierStart) != 0) {
        return readIdentifier(token, cursor_ + 1);
    }
    if ((classes & kNumberStart) != 0) {
        return readNumber(token);
    }
    if (first == '"') {
        return readString(token);
    }
    ++cursor_;
    return static_cast<signed char>(first);
}

void A2lLexer::skipBlanks() {
    char* p = skipPlainBlanks(cursor_, lineNumber_);
    while ((classOf(*p) & kBlank) != 0) {
        lineNumber_ += *p == '\n' ? 1 : 0;
        ++p;
    }
    cursor_ = p;
}

/// Skips blanks and comments. Returns 0 when the cursor stands on the first byte of a token, else
/// the token that is to be returned at once.
int A2lLexer::skipToToken() {
    for (;;) {
        skipBlanks();
        tokenStart_ = cursor_;
        if (*cursor_ == kSentinel) {
            if (!refill(cursor_)) {
                return TOK_EOF;
            }
            continue;
        }
        if (*cursor_ != '/') {
            return 0;
        }
        char* p = cursor_ + 1;
        const int next = peek(p);
        if (next != '*' && next != '/') {
            cursor_ = tokenStart_;
            return 0;
        }
        cursor_ = p + 1;
        const int beginLine = lineNumber();
        if (!(next == '*' ? skipBlockComment() : skipLineComment())) {
            return commentError(beginLine);
        }
    }
}

int A2lLexer::commentError(int beginLine) {
    lexicalError("Error: Unexpected EOF in Comment (Line " + std::to_string(beginLine) + ")");
    return TOK_ERROR;
}

/// Reads on behind the star and slash that end a comment. Looking for the slash first is quick for
/// prose and for banners made of stars alike. False at the end of the file.
bool A2lLexer::skipBlockComment() {
    // Only a star behind the opening counts, so the bytes that may be looked back at begin here.
    tokenStart_ = cursor_;
    for (;;) {
        char* const from = cursor_;
        void* const found = std::memchr(from, '/', static_cast<std::size_t>(end_ - from));
        if (found != nullptr) {
            char* const slash = static_cast<char*>(found);
            lineNumber_ += countLines(from, slash);
            cursor_ = slash + 1;
            if (slash != tokenStart_ && slash[-1] == '*') {
                return true;
            }
            continue;
        }
        lineNumber_ += countLines(from, end_);
        // The slash of a star at the end of this block may open the next one.
        tokenStart_ = tokenStart_ == end_ ? end_ : end_ - 1;
        cursor_ = end_;
        if (!refill(cursor_)) {
            return false;
        }
    }
}

/// Reads on behind the line feed. False when the file ends first, even if the line is complete in
/// all but its line feed.
bool A2lLexer::skipLineComment() {
    for (;;) {
        void* const found = std::memchr(cursor_, '\n', static_cast<std::size_t>(end_ - cursor_));
        if (found != nullptr) {
            ++lineNumber_;
            cursor_ = static_cast<char*>(found) + 1;
            return true;
        }
        tokenStart_ = end_;
        cursor_ = end_;
        if (!refill(cursor_)) {
            return false;
        }
    }
}

QM_OUT_OF_LINE int A2lLexer::readWord(Token& token) {
    char* p = cursor_ + 1;
    takeWhile(p, extendedIdentifiers_ ? kWordExtended : kWord);
    cursor_ = p;
    token.text = textUpTo(p);
    return TOK_STRING;
}

/// Reads on in an identifier at a position up to which all belongs to it.
QM_OUT_OF_LINE int A2lLexer::readIdentifier(Token& token, char* position) {
    char* p = skipPlainNameBytes(position);
    if (!isPlainEnd(*p)) {
        takeWhile(p, extendedIdentifiers_ ? kIdentifierExtended : kIdentifier);
    }
    return identifier(token, p);
}

/// The token of a number that ends at a position.
inline int A2lLexer::numberUpTo(char* end, Token& token, int kind) {
    cursor_ = end;
    token.text = textUpTo(end);
    return kind;
}

/// Most numbers are short and lie within one block; all others are left to the long way.
int A2lLexer::readNumber(Token& token) {
    char* const start = cursor_;
    if (*start >= '0' && isPlainEnd(start[1])) {
        // A single digit, as half of them are: what else begins a number, comes before '0'.
        token.intValue = *start - '0';
        return numberUpTo(start + 1, token, TOK_INTEGER);
    }
    if (*start == '0' && start[1] == 'x') {
        return readHexadecimal(token, start + 2);
    }
    const bool negative = *start == '-';
    char* const digits = start + (negative ? 1 : 0);
    const std::size_t count = leadingDigits(digits);
    char* const p = digits + count;
    if (*p == '.' && count != 0) {
        return readFraction(token, p + 1);
    }
    if (count == 0 || count > kDigitsTogether || (classOf(*p) & kNumberGoesOn) != 0) {
        return readLongNumber(token);
    }
    const auto value = static_cast<std::int32_t>(decimalDigits(digits, count));
    token.intValue = negative ? -value : value;
    return numberUpTo(p, token, TOK_INTEGER);
}

/// The same for a number in hexadecimal digits, which begin at a position behind its "0x".
inline int A2lLexer::readHexadecimal(Token& token, char* digits) {
    const std::size_t count = leadingHexDigits(digits);
    char* const p = digits + count;
    if (count == 0 || count > kDigitsTogether || (classOf(*p) & kNumberGoesOn) != 0) {
        return readLongNumber(token);
    }
    token.intValue = lowBits(hexadecimalDigits(digits, count));
    return numberUpTo(p, token, TOK_INTEGER);
}

/// The same for a real without exponent, at a position behind its point.
inline int A2lLexer::readFraction(Token& token, char* digits) {
    char* const p = digits + leadingDigits(digits);
    return (classOf(*p) & kNumberGoesOn) != 0 ? readLongNumber(token)
                                              : numberUpTo(p, token, TOK_FLOAT);
}

QM_OUT_OF_LINE int A2lLexer::readLongNumber(Token& token) {
    char* p = cursor_;
    if (*p == '-' || *p == '.') {
        ++p;
        if (!isOf(peek(p), kDigit)) {
            return malformed(token, p);
        }
    }
    takeWhile(p, kDigit);
    const int behindDigits = peek(p);
    const bool hexadecimal = behindDigits == 'x' || behindDigits == 'X';
    bool real = false;
    if (hexadecimal) {
        const std::string_view prefix = textUpTo(p);
        if (prefix != "0" && prefix != "-0") {
            return malformed(token, p);
        }
        ++p;
        takeWhile(p, kHexDigit);
    } else if (!takeRealRest(p, real)) {
        return malformed(token, p);
    }
    if (isOf(peek(p), kLetter)) {
        takeWhile(p, extendedIdentifiers_ ? kNumberNameExtended : kNumberName);
        cursor_ = p;
        token.text = textUpTo(p);
        return TOK_IDENT;
    }
    if (real) {
        return numberUpTo(p, token, TOK_FLOAT);
    }
    const std::string_view text = textUpTo(p);
    token.intValue = hexadecimal ? hexadecimalValue(text) : decimalValue(text);
    return numberUpTo(p, token, TOK_INTEGER);
}

/// Takes the fraction and the exponent that may stand behind digits, and tells whether there was
/// one. False when an exponent has no digits; the position is then that of the wrong character.
bool A2lLexer::takeRealRest(char*& position, bool& real) {
    if (peek(position) == '.') {
        real = true;
        ++position;
        takeWhile(position, kDigit);
    }
    const int mark = peek(position);
    if (mark != 'e' && mark != 'E') {
        return true;
    }
    real = true;
    ++position;
    const int sign = peek(position);
    if (sign == '+' || sign == '-') {
        ++position;
    }
    if (!isOf(peek(position), kDigit)) {
        return false;
    }
    takeWhile(position, kDigit);
    return true;
}

int A2lLexer::malformed(Token& token, char* position) {
    cursor_ = position;
    token.text = "";
    return TOK_MALFORMED;
}

/// Most texts lie within one block and are plain up to their quote; all others are left to the long
/// way.
int A2lLexer::readString(Token& token) {
    char* const text = cursor_ + 1;
    char* const end = skipPlainTextBytes(text);
    if (*end != '"' || end[1] == '"' || end[1] == kSentinel) {
        return readStringWithEscapes(token);
    }
    tokenStart_ = text;
    cursor_ = end + 1;
    token.text = textUpTo(end);
    return TOK_STRING;
}

/// Reads a text in quotes. As every escape is longer than what it stands for, the text is put
/// together in place: its finished part lies at the front of the token, and behind that, from
/// `run` on, the bytes which are yet to be moved up to it.
QM_OUT_OF_LINE int A2lLexer::readStringWithEscapes(Token& token) {
    ++cursor_;
    tokenStart_ = cursor_;
    char* p = cursor_;
    std::size_t length = 0;
    std::size_t run = 0;
    std::size_t textEnd = std::string_view::npos;
    const auto closeRun = [&] {
        const std::size_t count = static_cast<std::size_t>(p - tokenStart_) - run;
        if (length != run) {
            std::memmove(tokenStart_ + length, tokenStart_ + run, count);
        }
        length += count;
    };
    for (;;) {
        p = skipPlainTextBytes(p);
        while ((classOf(*p) & kStringStop) == 0) {
            ++p;
        }
        const char stop = *p;
        if (stop == '\n') {
            ++lineNumber_;
            ++p;
        } else if (stop == '\0') {
            // Texts go on as C strings, so this is where this one ends.
            textEnd = std::min(textEnd, length + static_cast<std::size_t>(p - tokenStart_) - run);
            ++p;
        } else if (stop == '"' || stop == '\\') {
            closeRun();
            ++p;
            const int next = peek(p);
            if (stop == '"' && next != '"') {
                cursor_ = p;
                token.text = std::string_view(tokenStart_, length).substr(0, textEnd);
                return TOK_STRING;
            }
            run = static_cast<std::size_t>(p - tokenStart_);
            // Any other character stands for itself; line feed, NUL and the end are met again
            // above.
            if (const char plain = unescaped(next); plain != '\0') {
                *p = plain;
                ++p;
            }
        } else if (!refill(p)) {
            lexicalError("Unexpected EOF in string");
            return malformed(token, p);
        }
    }
}

}  // namespace quillmark
