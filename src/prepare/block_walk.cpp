#include "prepare/block_walk.h"

#include <cstdlib>
#include <limits>

#include "a2l/tokens/lexer.h"

namespace quillmark::preparing {

namespace {

constexpr std::size_t kAny = std::numeric_limits<std::size_t>::max();

/// The low 32 bits of an integer, as the reader has them.
std::int32_t integerValue(std::string_view number) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(integerOf(number).value_or(0)));
}

/// The value of a number, a real one truncated; -1 for what is beyond 31 bits.
std::int64_t truncated(const Token& token, std::string_view number) {
    if (token.kind == TokenKind::Integer) {
        return integerValue(number);
    }
    const double value = std::strtod(std::string(number).c_str(), nullptr);
    return value > -1 && value < INT32_MAX ? static_cast<std::int64_t>(value) : -1;
}

/// What opens or ends something. Files are put in before a block is taken apart.
bool isNoParameter(const Token& token) {
    return token.kind == TokenKind::Begin || token.kind == TokenKind::End ||
           token.kind == TokenKind::Include || token.kind == TokenKind::EndOfText || token.isOpen();
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

}  // namespace

void BlockWalk::walk(std::string_view text, const PartRule& rule) {
    TokenReader head(text);
    head.next();  // /begin
    start(text, rule, head.next().end);
    if (!isBroken_ && reader_.skipToToken() < text.size()) {
        breakAt(reader_.peek());
    }
}

bool BlockWalk::walkAhead(std::string_view text, const PartRule& rule, std::size_t keywordEnd) {
    start(text, rule, keywordEnd);
    const std::size_t end = reader_.position();
    // What ends with the text may go on behind it.
    if (isBroken_ || !oddities_.empty() || end == text.size()) {
        return false;
    }
    text_ = text.substr(0, end);
    return true;
}

void BlockWalk::start(std::string_view text, const PartRule& rule, std::size_t keywordEnd) {
    text_ = text;
    reader_ = TokenReader(text, keywordEnd);
    keywordEnd_ = keywordEnd;
    parameterEnds_.clear();
    parts_.clear();
    names_.clear();
    oddities_.clear();
    edits_.clear();
    isBroken_ = false;
    keywords_ = &kCoreKeywords;
    readParameters(rule.inner->parameters, &rule, true);
    readParts(*rule.inner, rule.keyword, true);
}

std::size_t BlockWalk::parameterBegin(std::size_t index) const {
    return TokenReader(text_, index == 0 ? keywordEnd_ : parameterEnds_[index - 1]).skipToToken();
}

std::string_view BlockWalk::parameter(std::size_t index) const {
    if (index >= parameterEnds_.size()) {
        return {};
    }
    const std::size_t begin = parameterBegin(index);
    return begin < parameterEnds_[index] ? text_.substr(begin, parameterEnds_[index] - begin)
                                         : std::string_view();
}

std::string BlockWalk::editedText(const FoundPart& part) {
    TextEdits own;
    for (const TextEdit& edit : edits_.sorted()) {
        if (edit.from >= part.begin && edit.to <= part.end) {
            own.replace(edit.from - part.begin, edit.to - part.begin, edit.text);
        }
    }
    return own.apply(textOf(part));
}

void BlockWalk::breakAt(const Token& token) {
    if (!isBroken_) {
        isBroken_ = true;
        oddities_.push_back({token.begin, token.end, {}});
    }
}

/// A parameter of any kind.
Token BlockWalk::take() {
    const Token token = reader_.next();
    if (isNoParameter(token)) {
        breakAt(token);
    }
    return token;
}

Token BlockWalk::takeWord() {
    const Token token = reader_.nextWord();
    if (isNoParameter(token)) {
        breakAt(token);
    }
    return token;
}

/// Whether the reader takes a word for a name; of those that begin like a number it asks no more.
bool BlockWalk::isName(const Token& token) const {
    return token.kind == TokenKind::Word && kindOf(token) == TOK_IDENT;
}

/// The next token, which has to be such a one.
void BlockWalk::expect(Fits fits) {
    const Token token = take();
    if (!isBroken_ && !fits(*this, token)) {
        breakAt(token);
    }
}

/// Takes up to so many tokens, as long as they are such ones.
void BlockWalk::takeWhile(Fits fits, std::size_t most) {
    for (Token token = reader_.peek(); most > 0 && fits(*this, token); token = reader_.peek()) {
        reader_.setPosition(token.end);
        --most;
    }
}

/// A cycle and its unit, for which there are thirteen codes.
void BlockWalk::readCycle() {
    constexpr std::int64_t kUnits = 13;
    expect([](const BlockWalk&, const Token& token) { return token.isNumber(); });
    expect([](const BlockWalk& walk, const Token& token) {
        const std::int64_t code = truncated(token, walk.textOf(token));
        return token.isNumber() && code >= 0 && code < kUnits;
    });
}

/// A keyword with one parameter, as often as it follows.
void BlockWalk::takePairs(std::string_view keyword) {
    for (Token token = reader_.peek(); !isBroken_ && textOf(token) == keyword;
         token = reader_.peek()) {
        reader_.setPosition(token.end);
        take();
    }
}

void BlockWalk::readParameters(std::string_view parameters, const PartRule* rule, bool isOuter) {
    for (const char parameter : parameters) {
        if (isBroken_) {
            return;
        }
        if (parameter == '.') {
            take();
        } else {
            readParameter(parameter, rule);
        }
        if (isOuter) {
            parameterEnds_.push_back(reader_.position());
        }
    }
}

/// A parameter that is one token, or any number of such ones.
struct BlockWalk::ParameterRow {
    char parameter;
    Fits fits;
    std::size_t most = 1;
    bool mayBeMissing = false;
};

const BlockWalk::ParameterRow* BlockWalk::findParameter(char parameter) {
    static constexpr auto kIsName = [](const BlockWalk& walk, const Token& token) {
        return walk.isName(token);
    };
    static constexpr auto kIsText = [](const BlockWalk&, const Token& token) {
        return token.kind == TokenKind::Text;
    };
    static constexpr auto kIsNumber = [](const BlockWalk&, const Token& token) {
        return token.isNumber();
    };
    static constexpr auto kIsInteger = [](const BlockWalk&, const Token& token) {
        return token.kind == TokenKind::Integer;
    };
    static constexpr auto kIsTextOrNull = [](const BlockWalk& walk, const Token& token) {
        return token.kind == TokenKind::Text || walk.textOf(token) == "NULL";
    };
    static constexpr auto kIsNameOrText = [](const BlockWalk& walk, const Token& token) {
        return token.kind == TokenKind::Text || walk.isName(token);
    };
    static constexpr auto kIsTextOrNumber = [](const BlockWalk&, const Token& token) {
        return token.kind == TokenKind::Text || token.isNumber();
    };
    static constexpr auto kIsType = [](const BlockWalk& walk, const Token& token) {
        const std::string_view word = walk.textOf(token);
        return isMeasurementType(word) || word == "FLOAT16_IEEE";
    };
    static constexpr auto kIsByteOrder = [](const BlockWalk& walk, const Token& token) {
        const std::string_view word = walk.textOf(token);
        return word == "BYTE_ORDER_MSB_LAST" || word == "BYTE_ORDER_MSB_FIRST";
    };
    constexpr std::size_t kThree = 3;
    static constexpr ParameterRow kRows[] = {
        {'I', kIsName},
        {'N', kIsNameOrText},
        {'S', kIsTextOrNull},
        {'X', kIsText},
        {'M', kIsTextOrNumber},
        {'F', kIsNumber},
        {'Z', kIsInteger},
        {'T', kIsType},
        {'O', kIsByteOrder},
        {'s', kIsText, kAny, true},
        {'#', kIsNumber, kAny, true},
        {'z', kIsInteger, kAny, true},
        {'k', kIsNumber, kThree, true},
        {'n', kIsNumber, 1, true},
        {'j', kIsInteger, 1, true},
        {'t', kIsText, 1, true},
    };
    for (const ParameterRow& row : kRows) {
        if (row.parameter == parameter) {
            return &row;
        }
    }
    return nullptr;
}

void BlockWalk::readParameter(char parameter, const PartRule* rule) {
    if (const ParameterRow* row = findParameter(parameter)) {
        if (row->mayBeMissing) {
            takeWhile(row->fits, row->most);
        } else {
            expect(row->fits);
        }
        return;
    }
    switch (parameter) {
        case '.':
            take();
            break;
        case 'w':
            takeWord();
            break;
        case 'W':
            if (const Token token = takeWord(); token.kind != TokenKind::Text) {
                breakAt(token);
            }
            break;
        case 'c':
            readCycle();
            break;
        case 'i':
            readNames(rule);
            break;
        case 'P':
            readEntries("FF");
            break;
        case 'V':
            readEntries("FX");
            break;
        case 'Q':
            readEntries("FFX");
            break;
        case 'R':
            takePairs("RASTER");
            break;
        case 'E':
            takePairs("EVENT");
            break;
        case 'C':
            readModes();
            break;
        case 'a':
            readAssignment();
            break;
        case 'G':
            readTargets();
            break;
        case 'D':
            readInterface();
            break;
        default:
            break;
    }
}

void BlockWalk::readNames(const PartRule* rule) {
    for (Token token = reader_.peek(); isName(token); token = reader_.peek()) {
        reader_.setPosition(token.end);
        names_.push_back({token, rule});
    }
}

/// A number, and so many times the parameters of one entry.
void BlockWalk::readEntries(std::string_view entry) {
    const Token token = take();
    if (token.kind != TokenKind::Integer) {
        breakAt(token);
    }
    const std::int32_t count = integerValue(textOf(token));
    for (std::int32_t i = 0; i < count && !isBroken_; ++i) {
        readParameters(entry, nullptr, false);
    }
}

/// FIXED and a value; or VARIABLE, and then INITIAL_VALUE and a value if it is there.
void BlockWalk::readAssignment() {
    const Token token = take();
    if (textOf(token) == "FIXED") {
        take();
        return;
    }
    const Token next = reader_.peek();
    if (textOf(next) == "INITIAL_VALUE") {
        take();
        take();
    }
}

void BlockWalk::readModes() {
    const PartRule& rule =
        *findPart(*findPart(*findInterface("XCP"), Form::Block, "PROTOCOL_LAYER")->inner,
                  Form::Block, "COMMUNICATION_MODE_SUPPORTED");
    for (Token token = reader_.peek(); !isBroken_; token = reader_.peek()) {
        const PartRule* mode = findPart(*rule.inner, Form::Bare, textOf(token));
        if (mode == nullptr) {
            return;
        }
        reader_.setPosition(token.end);
        readParameters(mode->parameters, mode, false);
    }
}

void BlockWalk::readTargets() {
    constexpr int kMostTargets = 2;
    for (int i = 0; i < kMostTargets; ++i) {
        const Token token = reader_.peek();
        if (token.kind != TokenKind::Word || textOf(token).substr(0, 4) != "TGT_") {
            return;
        }
        take();
        take();
    }
}

void BlockWalk::readInterface() {
    const Token name = reader_.peek();
    const Layout* layout = name.kind == TokenKind::Word ? findInterface(textOf(name)) : nullptr;
    if (layout == nullptr) {
        skipInterface();
        return;
    }
    take();
    keywords_ = textOf(name) == "ASAP1B_CCP"     ? &kCcpKeywords
                : textOf(name) == "ASAP1B_GMLAN" ? &kGmlanKeywords
                                                 : &kXcpKeywords;
    readParameters(layout->parameters, nullptr, false);
    readContents(*layout, false);
    keywords_ = &kCoreKeywords;
}

/// Goes to the `/end IF_DATA` of an interface that the reader does not know, and stays in front.
void BlockWalk::skipInterface() {
    for (;;) {
        const Token token = reader_.peek();
        if (token.kind == TokenKind::EndOfText || token.kind == TokenKind::Include ||
            token.isOpen()) {
            breakAt(token);
            return;
        }
        if (token.kind == TokenKind::End) {
            TokenReader ahead(text_, token.end);
            if (textOf(ahead.next()) == "IF_DATA") {
                return;
            }
        }
        reader_.setPosition(token.end);
    }
}

/// Optional parts and the end of a block.
void BlockWalk::readParts(const Layout& layout, std::string_view keyword, bool isOuter) {
    readContents(layout, isOuter);
    if (isBroken_) {
        return;
    }
    const Token end = reader_.next();
    const Token closing = reader_.next();
    if (wordOf(closing) != keyword) {
        breakAt(end);
    }
}

/// Optional parts, up to the `/end` behind them.
void BlockWalk::readContents(const Layout& layout, bool isOuter) {
    while (!isBroken_) {
        const Token token = reader_.peek();
        if (token.kind == TokenKind::End) {
            return;
        }
        if (token.kind == TokenKind::EndOfText || token.isOpen()) {
            breakAt(token);
        } else if (token.kind == TokenKind::Begin) {
            readBlock(layout, token, isOuter);
        } else {
            readBare(layout, token, isOuter);
        }
    }
}

void BlockWalk::readBlock(const Layout& layout, const Token& begin, bool isOuter) {
    reader_.setPosition(begin.end);
    const Token token = reader_.next();
    const std::string_view keyword = wordOf(token);
    const PartRule* rule = findPart(layout, Form::Block, keyword);
    if (rule != nullptr && rule->inner != nullptr) {
        readParameters(rule->inner->parameters, rule, false);
        if (!isBroken_) {
            readParts(*rule->inner, keyword, false);
        }
    } else {
        skipBlock(kindOf(token));
    }
    if (rule != nullptr && isOuter) {
        parts_.push_back({rule, begin.begin, reader_.position()});
    }
    if (rule == nullptr && !layout.skipsUnknownBlocks && !isBroken_) {
        oddities_.push_back({begin.begin, reader_.position(), "block"});
        edits_.takeOut(text_, begin.begin, reader_.position());
    }
}

/// Reads over a block whose keyword was read last, and is of that kind. To the reader all words
/// that it does not know are alike, and each of them closes what another one opened.
void BlockWalk::skipBlock(int kind) {
    std::size_t depth = 1;
    while (depth > 0) {
        const Token token = reader_.next();
        if (token.kind == TokenKind::EndOfText || token.kind == TokenKind::Include ||
            token.isOpen()) {
            breakAt(token);
            return;
        }
        depth += token.kind == TokenKind::Begin ? 1 : 0;
        depth -= token.kind == TokenKind::End ? 1 : 0;
    }
    const Token closing = reader_.next();
    if (kindOf(closing) != kind) {
        breakAt(closing);
    }
}

/// The number that the reader knows a token by while it reads what is being read.
int BlockWalk::kindOf(const Token& token) const {
    const std::string_view text = textOf(token);
    switch (token.kind) {
        case TokenKind::Word:
            // What begins like a number is not looked up.
            return isDigit(text.front()) ? TOK_IDENT : lookup(*keywords_, text, TOK_IDENT);
        case TokenKind::Integer:
            return TOK_INTEGER;
        case TokenKind::Real:
            return TOK_FLOAT;
        case TokenKind::Text:
            return TOK_STRING;
        case TokenKind::Mark:
            return static_cast<signed char>(text.front());
        case TokenKind::Begin:
            return kw::core::BEGIN;
        case TokenKind::End:
            return kw::core::END;
        case TokenKind::Include:
            return lookup(*keywords_, text, TOK_IDENT);
        case TokenKind::EndOfText:
            return TOK_EOF;
        default:
            return TOK_MALFORMED;
    }
}

/// What the reader takes a token for: a single byte for the keyword that has its number.
std::string_view BlockWalk::wordOf(const Token& token) const {
    return token.kind == TokenKind::Mark ? keywordName(*keywords_, kindOf(token)) : textOf(token);
}

void BlockWalk::readBare(const Layout& layout, const Token& token, bool isOuter) {
    const PartRule* rule = token.kind == TokenKind::Word || token.kind == TokenKind::Mark
                               ? findPart(layout, Form::Bare, wordOf(token))
                               : nullptr;
    if (rule == nullptr) {
        takeOutWords(layout, token);
        return;
    }
    reader_.setPosition(token.end);
    readParameters(rule->parameters, rule, false);
    if (isOuter) {
        parts_.push_back({rule, token.begin, reader_.position()});
    }
}

/// Takes out what begins with a word that may not stand there: up to the next one that may. In a
/// list just that word, and the list goes on.
void BlockWalk::takeOutWords(const Layout& layout, const Token& first) {
    reader_.setPosition(first.end);
    std::size_t end = first.end;
    const bool isList = !layout.parameters.empty() && layout.parts.empty() &&
                        (layout.parameters.back() == 'i' || layout.parameters.back() == 's');
    if (isList) {
        readParameter(layout.parameters.back(), nullptr);
    }
    for (Token token = reader_.peek(); !isList && !mayFollow(layout, token);
         token = reader_.peek()) {
        end = token.end;
        reader_.setPosition(end);
    }
    oddities_.push_back({first.begin, end, "word"});
    edits_.takeOut(text_, first.begin, end);
}

/// Whether something begins with a token that is no more part of an unknown word.
bool BlockWalk::mayFollow(const Layout& layout, const Token& token) const {
    return isNoParameter(token) || (token.kind == TokenKind::Word &&
                                    findPart(layout, Form::Bare, textOf(token)) != nullptr);
}

}  // namespace quillmark::preparing
