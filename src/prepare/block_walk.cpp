#include "prepare/block_walk.h"

#include <cstdlib>

#include "a2l/tokens/keyword_tables.h"

namespace quillmark::preparing {

namespace {

bool isCoreKeyword(std::string_view word) {
    return lookup(kCoreKeywords, word) != 0;
}

/// The value of a number, a real one truncated; its low 32 bits, as the reader has them.
std::int64_t truncated(std::string_view number) {
    if (const std::optional<std::int64_t> integer = integerOf(number)) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(*integer));
    }
    const double value = std::strtod(std::string(number).c_str(), nullptr);
    return value > -1 && value < INT32_MAX ? static_cast<std::int64_t>(value) : -1;
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

}  // namespace

void BlockWalk::walk(std::string_view text, const PartRule& rule) {
    text_ = text;
    reader_ = TokenReader(text);
    parameters_.clear();
    parts_.clear();
    names_.clear();
    oddities_.clear();
    edits_.clear();
    isBroken_ = false;
    keywords_ = &kCoreKeywords;
    reader_.next();  // /begin
    reader_.next();  // the keyword
    if (rule.inner != nullptr) {
        readParameters(rule.inner->parameters, &rule, true);
        readParts(*rule.inner, rule.keyword, true);
    }
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
    if (token.kind == TokenKind::Begin || token.kind == TokenKind::End ||
        token.kind == TokenKind::EndOfText || token.isOpen()) {
        breakAt(token);
    }
    return token;
}

Token BlockWalk::takeWord() {
    const Token token = reader_.nextWord();
    if (token.kind == TokenKind::Begin || token.kind == TokenKind::End ||
        token.kind == TokenKind::EndOfText) {
        breakAt(token);
    }
    return token;
}

/// Whether the reader takes a word for a name; of those that begin like a number it asks no more.
bool BlockWalk::isName(const Token& token) const {
    const std::string_view word = textOf(token);
    return token.kind == TokenKind::Word && (isDigit(word.front()) || !isCoreKeyword(word));
}

/// A parameter that has to be of some kind.
template <typename Predicate>
void BlockWalk::expect(Predicate predicate) {
    const Token token = take();
    if (!isBroken_ && !predicate(token)) {
        breakAt(token);
    }
}

template <typename Predicate>
void BlockWalk::takeIf(Predicate predicate) {
    if (const Token token = reader_.peek(); predicate(token)) {
        reader_.setPosition(token.end);
    }
}

/// A cycle and its unit, for which there are thirteen codes.
void BlockWalk::readCycle() {
    constexpr std::int64_t kUnits = 13;
    expect([](const Token& token) { return token.isNumber(); });
    expect([this](const Token& token) {
        const std::int64_t code = truncated(textOf(token));
        return token.isNumber() && code >= 0 && code < kUnits;
    });
}

template <typename Predicate>
void BlockWalk::takeWhile(Predicate predicate) {
    for (Token token = reader_.peek(); predicate(token); token = reader_.peek()) {
        reader_.setPosition(token.end);
    }
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
        const std::size_t begin = isOuter ? reader_.skipToToken() : 0;
        readParameter(parameter, rule);
        if (isOuter) {
            parameters_.push_back({TokenKind::Word, begin, reader_.position()});
        }
    }
}

void BlockWalk::readParameter(char parameter, const PartRule* rule) {
    const auto isInteger = [](const Token& token) { return token.kind == TokenKind::Integer; };
    const auto isNumber = [](const Token& token) { return token.isNumber(); };
    const auto isText = [](const Token& token) { return token.kind == TokenKind::Text; };
    switch (parameter) {
        case 'I':
            expect([&](const Token& token) { return isName(token); });
            break;
        case 'S':
            expect([&](const Token& token) { return isText(token) || textOf(token) == "NULL"; });
            break;
        case 'T':
            expect([&](const Token& token) {
                return isMeasurementType(textOf(token)) || textOf(token) == "FLOAT16_IEEE";
            });
            break;
        case 'w':
            takeWord();
            break;
        case 'W': {
            const Token token = takeWord();
            if (token.kind != TokenKind::Text) {
                breakAt(token);
            }
            break;
        }
        case 'n':
            takeIf(isNumber);
            break;
        case 'j':
            takeIf(isInteger);
            break;
        case 't':
            takeIf(isText);
            break;
        case 'N':
            expect([&](const Token& token) {
                return token.kind == TokenKind::Text || token.kind == TokenKind::Word;
            });
            break;
        case 'O':
            expect([&](const Token& token) {
                const std::string_view word = textOf(token);
                return word == "BYTE_ORDER_MSB_LAST" || word == "BYTE_ORDER_MSB_FIRST";
            });
            break;
        case 'c':
            readCycle();
            break;
        case 'i':
            readNames(rule);
            break;
        case 's':
            takeWhile(isText);
            break;
        case '#':
            takeWhile(isNumber);
            break;
        case 'z':
            takeWhile(isInteger);
            break;
        case 'k': {
            int left = 3;
            takeWhile([&](const Token& token) { return token.isNumber() && left-- > 0; });
            break;
        }
        case 'P':
        case 'Q':
            readEntries(parameter == 'P' ? 2 : 3);
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
            take();
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
void BlockWalk::readEntries(std::size_t perEntry) {
    const Token token = take();
    const std::int64_t count = integerOf(textOf(token)).value_or(0);
    for (std::int64_t i = 0; i < count && !isBroken_; ++i) {
        for (std::size_t j = 0; j < perEntry && !isBroken_; ++j) {
            take();
        }
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
        if (token.kind == TokenKind::EndOfText) {
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
    const std::string_view keyword = wordOf(reader_.next());
    const PartRule* rule = findPart(layout, Form::Block, keyword);
    if (rule != nullptr && rule->inner != nullptr) {
        readParameters(rule->inner->parameters, rule, false);
        if (!isBroken_) {
            readParts(*rule->inner, keyword, false);
        }
    } else {
        skipBlock(keyword);
    }
    if (rule != nullptr && isOuter) {
        parts_.push_back({rule, begin.begin, reader_.position()});
    }
    if (rule == nullptr && !layout.skipsUnknownBlocks && !isBroken_) {
        oddities_.push_back({begin.begin, reader_.position(), "block"});
        edits_.takeOut(text_, begin.begin, reader_.position());
    }
}

/// Whether the reader knows a word while it reads what is being read.
bool BlockWalk::isKeyword(std::string_view word) const {
    return lookup(*keywords_, word) != 0;
}

/// Reads over a block whose keyword was read last. To the reader all words that it does not know
/// are alike, and each of them closes what another one opened.
void BlockWalk::skipBlock(std::string_view keyword) {
    std::size_t depth = 1;
    while (depth > 0) {
        const Token token = reader_.next();
        if (token.kind == TokenKind::EndOfText || token.isOpen()) {
            breakAt(token);
            return;
        }
        depth += token.kind == TokenKind::Begin ? 1 : 0;
        depth -= token.kind == TokenKind::End ? 1 : 0;
    }
    const Token closing = reader_.next();
    if (wordOf(closing) != keyword && (isKeyword(keyword) || isKeyword(wordOf(closing)))) {
        breakAt(closing);
    }
}

/// What the reader takes a token for: a single byte for the keyword that has its number.
std::string_view BlockWalk::wordOf(const Token& token) const {
    const std::string_view text = textOf(token);
    return token.kind == TokenKind::Mark && text.size() == 1 && text[0] > 0
               ? keywordName(kCoreKeywords, text[0])
               : text;
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
/// list of names just that word, and the list goes on.
void BlockWalk::takeOutWords(const Layout& layout, const Token& first) {
    const bool isList = layout.parts.empty();
    reader_.setPosition(first.end);
    std::size_t end = first.end;
    if (isList) {
        readNames(nullptr);
    }
    for (Token token = reader_.peek(); !isList; token = reader_.peek()) {
        if (token.kind == TokenKind::Begin || token.kind == TokenKind::End ||
            token.kind == TokenKind::EndOfText || token.isOpen() ||
            (token.kind == TokenKind::Word &&
             findPart(layout, Form::Bare, textOf(token)) != nullptr)) {
            break;
        }
        end = token.end;
        reader_.setPosition(end);
    }
    oddities_.push_back({first.begin, end, "word"});
    edits_.takeOut(text_, first.begin, end);
}

}  // namespace quillmark::preparing
