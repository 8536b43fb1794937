#include "prepare/description_scanner.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/compiler.h"
#include "prepare/byte_search.h"
#include "prepare/grammar.h"

namespace quillmark::preparing {

namespace {

/// Bytes of a block that is not kept are given away in pieces of this size.
constexpr std::size_t kDiscardSize = std::size_t{128} * 1024;

constexpr std::string_view kInterface = "IF_DATA";

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r' || byte == '\0';
}

std::size_t behindBlanks(std::string_view text, std::size_t from) {
    while (from < text.size() && isBlank(text[from])) {
        ++from;
    }
    return from;
}

// Where something ends that is plain and lies in a text as a whole; npos if it does not.

std::size_t endBehind(std::string_view text, std::string_view closing, std::size_t from) {
    const std::size_t found = text.find(closing, from);
    return found == std::string_view::npos ? found : found + closing.size();
}

/// A text in quotes without any other quote or backslash.
std::size_t endOfPlainText(std::string_view text, std::size_t begin) {
    const std::size_t end = findQuoteOrBackslash(text, begin + 1);
    const bool isPlain = end != std::string_view::npos && end + 1 < text.size() &&
                         text[end] == '"' && text[end + 1] != '"';
    return isPlain ? end + 1 : std::string_view::npos;
}

/// A word of letters, digits and underscores.
std::size_t endOfPlainWord(std::string_view text, std::size_t begin) {
    if (begin >= text.size() || !isLetter(text[begin])) {
        return std::string_view::npos;
    }
    std::size_t end = begin;
    while (end < text.size() && (isLetter(text[end]) || (text[end] >= '0' && text[end] <= '9'))) {
        ++end;
    }
    return end < text.size() && !isNameByte(text[end]) ? end : std::string_view::npos;
}

bool startsWord(std::string_view text, std::size_t from, std::string_view word) {
    return text.size() - from > word.size() && text.substr(from, word.size()) == word &&
           !isNameByte(text[from + word.size()]);
}

/// Where a word goes on with what should have been a word or a comment of its own, as in
/// `MEASUREMENT/begin`. A keyword has no slash. npos if it does not.
std::size_t runTogetherAt(std::string_view word) {
    const std::size_t slash = word.find('/', 1);
    if (slash == std::string_view::npos) {
        return slash;
    }
    const std::string_view rest = word.substr(slash);
    for (const std::string_view start : {"/begin", "/end", "/include"}) {
        if (rest == start) {
            return slash;
        }
    }
    const std::string_view opening = rest.substr(0, 2);
    return opening == "/*" || opening == "//" ? slash : std::string_view::npos;
}

}  // namespace

Part DescriptionScanner::refuse(const Token& token, std::string_view text) {
    report_.error(source_.placeOf(token.begin), text);
    return {};
}

/// The token behind a position. Files that are included there are put in before it.
Token DescriptionScanner::tokenAt(std::size_t position) {
    const Token token = TokenReader(source_.view(), position).next();
    const bool isUsual = token.end < source_.view().size() && token.kind != TokenKind::Include;
    return isUsual && !report_.hasFailed() ? token : unusualTokenAt(position);
}

/// The same for a token that may go on behind the window, or asks for a file.
QM_OUT_OF_LINE Token DescriptionScanner::unusualTokenAt(std::size_t position) {
    for (;;) {
        const Token token = TokenReader(source_.view(), position).next();
        if (token.end == source_.view().size() && source_.more()) {
            continue;
        }
        const bool goesOn = token.isOpen()                     ? closeOpen(token)
                            : token.kind == TokenKind::Include ? include(token)
                                                               : false;
        if (goesOn) {
            continue;
        }
        if (report_.hasFailed()) {
            return {TokenKind::EndOfText, position, position};
        }
        return token;
    }
}

/// The reader wants a line feed behind the last comment, too. Returns whether that was all.
bool DescriptionScanner::closeOpen(const Token& token) {
    const std::string_view text = source_.view();
    const Place place = source_.placeOf(token.begin);
    if (report_.hasFailed()) {
        return false;
    }
    if (token.kind == TokenKind::OpenText) {
        report_.error(place, "the text that begins here has no end");
        return false;
    }
    if (text[token.begin + 1] == '*') {
        report_.error(place, "the comment that begins here has no end");
        return false;
    }
    if (options_.tells) {
        report_.change(place, "put a line feed behind the comment at the end");
    }
    source_.insert(text.size(), "\n");
    return true;
}

/// Returns whether reading can go on in front of what has been put in.
bool DescriptionScanner::include(const Token& token) {
    report_.forgetReader();
    if (report_.hasFailed()) {
        return false;
    }
    std::size_t from = token.end;
    std::size_t to = from;
    const auto isWhole = [&] {
        const std::string_view text = source_.view();
        from = behindBlanks(text, token.end);
        const bool isQuoted = from < text.size() && text[from] == '"';
        to = from + (isQuoted ? 1 : 0);
        while (to < text.size() && (isQuoted ? text[to] != '"' : !isBlank(text[to]))) {
            ++to;
        }
        to += isQuoted ? 1 : 0;
        return to < text.size();
    };
    while (!isWhole() && source_.more()) {
    }
    to = std::min(to, source_.view().size());
    std::string name(source_.view().substr(from, to - from));
    if (!name.empty() && name.front() == '"') {
        name = name.substr(1, std::max<std::size_t>(name.size(), 2) - 2);
    }
    const Place place = source_.placeOf(token.begin);
    const SourceText::IncludeResult result = source_.include(token.begin, to, name);
    if (result == SourceText::IncludeResult::Included && options_.tells) {
        report_.note(place, "put in the file " + name);
    }
    if (result == SourceText::IncludeResult::Missing) {
        const std::string text = "there is no file " + source_.chainTo(name);
        if (!options_.skipsMissing) {
            report_.error(place, text);
        } else {
            source_.erase(token.begin, to);
            if (options_.tells) {
                report_.loss(place, text);
            }
        }
    }
    return !report_.hasFailed();
}

/// Puts a blank between a keyword and what stands right behind it.
void DescriptionScanner::partWords(Token& token) {
    const std::string_view word = textOf(token);
    const std::size_t at =
        token.kind == TokenKind::Word ? runTogetherAt(word) : std::string_view::npos;
    if (at == std::string_view::npos) {
        return;
    }
    token.end = token.begin + at;
    if (options_.tells) {
        report_.change(
            source_.placeOf(token.begin),
            "put a blank into '" + std::string(word.substr(0, at)) + "' and what follows");
    }
    source_.insert(token.end, " ");
}

Part DescriptionScanner::next() {
    const Token token = tokenAt(0);
    switch (token.kind) {
        case TokenKind::EndOfText:
            return endDescription(token);
        case TokenKind::Begin:
            isEmpty_ = false;
            return beginOpened(token);
        case TokenKind::End:
            isEmpty_ = false;
            return endLevel(token);
        default:
            return beginOrdinary(token);
    }
}

Part DescriptionScanner::endDescription(const Token& token) {
    if (report_.hasFailed()) {
        return {};
    }
    if (isEmpty_) {
        return refuse(token, "there is no description");
    }
    if (level_ == Level::File) {
        return {Part::Kind::EndOfDescription, level_, token.begin, token.begin, {}, {}};
    }
    return refuse(token, std::string("the description ends inside the ") +
                             (level_ == Level::Module ? "MODULE" : "PROJECT") + " that begins in " +
                             report_.textOf(levelBegin_));
}

Part DescriptionScanner::beginOrdinary(const Token& token) {
    // To the reader a stray # is the keyword with its number.
    const std::string_view word = textOf(token) == "#" ? "ASAP2_VERSION" : textOf(token);
    if (level_ == Level::File && word == "A2ML_VERSION") {
        return beginOtherVersion(token);
    }
    isEmpty_ = false;
    if (level_ == Level::File && word == "ASAP2_VERSION") {
        return beginVersion(token);
    }
    return {Part::Kind::Stray, level_, token.begin, token.end, std::string(word), {}};
}

/// To the reader any two tokens are the version's numbers.
Part DescriptionScanner::beginVersion(const Token& keyword) {
    const Token major = tokenAt(keyword.end);
    const Token minor = tokenAt(major.end);
    if (report_.hasFailed()) {
        return {};
    }
    return {Part::Kind::Version, level_, keyword.begin, minor.end, "ASAP2_VERSION", {}};
}

/// A version that the reader does not know, with its numbers. It makes no description.
Part DescriptionScanner::beginOtherVersion(const Token& keyword) {
    constexpr int kNumbers = 2;
    std::size_t end = keyword.end;
    for (int i = 0; i < kNumbers; ++i) {
        if (const Token number = tokenAt(end); number.isNumber()) {
            end = number.end;
        }
    }
    if (report_.hasFailed()) {
        return {};
    }
    return {Part::Kind::Version, level_, keyword.begin, end, "A2ML_VERSION", {}};
}

Part DescriptionScanner::beginOpened(const Token& begin) {
    const Token token = tokenAt(begin.end);
    if (token.kind != TokenKind::Word) {
        return report_.hasFailed() ? Part{} : refuse(token, "a keyword is missing behind /begin");
    }
    const std::string_view keyword = textOf(token);
    if (level_ == Level::File && keyword == "PROJECT") {
        return beginProject(begin, token);
    }
    if (level_ == Level::Project && keyword == "MODULE") {
        return beginModule(begin, token);
    }
    return {Part::Kind::Block, level_, begin.begin, token.end, std::string(keyword), {}};
}

/// The name of a project and its text are texts or names, as one likes.
Part DescriptionScanner::beginProject(const Token& begin, const Token& keyword) {
    const Token name = tokenAt(keyword.end);
    const Token text = tokenAt(name.end);
    for (const Token& token : {name, text}) {
        if (token.kind != TokenKind::Text && !isName(token)) {
            return report_.hasFailed() ? Part{} : refuse(token, "a name or its text is missing");
        }
    }
    return open(Part::Kind::ProjectBegin, begin, text, std::string(textOf(name)));
}

Part DescriptionScanner::beginModule(const Token& begin, const Token& keyword) {
    const Token name = tokenAt(keyword.end);
    const Token text = tokenAt(name.end);
    const bool isText = text.kind == TokenKind::Text || textOf(text) == "NULL";
    if (!isName(name) || !isText) {
        return report_.hasFailed() ? Part{}
                                   : refuse(isText ? name : text, "a name or its text is missing");
    }
    return open(Part::Kind::ModuleBegin, begin, text, std::string(textOf(name)));
}

/// Goes into a project or module.
Part DescriptionScanner::open(Part::Kind kind, const Token& begin, const Token& last,
                              std::string name) {
    level_ = kind == Part::Kind::ModuleBegin ? Level::Module : Level::Project;
    levelBegin_ = source_.placeOf(begin.begin);
    return {kind, level_, begin.begin, last.end, {}, std::move(name)};
}

bool DescriptionScanner::isName(const Token& token) const {
    return token.kind == TokenKind::Word && isNameWord(textOf(token));
}

Part DescriptionScanner::endLevel(const Token& end) {
    Token token = tokenAt(end.end);
    partWords(token);
    const std::string keyword(textOf(token));
    if (level_ == Level::Module && keyword == "MODULE") {
        level_ = Level::Project;
        return {Part::Kind::ModuleEnd, level_, end.begin, token.end, keyword, {}};
    }
    if (level_ == Level::Project && keyword == "PROJECT") {
        level_ = Level::File;
        return {Part::Kind::ProjectEnd, level_, end.begin, token.end, keyword, {}};
    }
    if (report_.hasFailed()) {
        return {};
    }
    return refuse(end, "/end " + keyword + " where nothing of that kind is open");
}

/// Goes over the plain texts, comments and blocks of a block. Stays in front of its end, and of all
/// that is to be looked at more closely.
void DescriptionScanner::skipInside(std::size_t& position, std::size_t& depth) const {
    const std::string_view text = source_.view();
    for (;;) {
        const std::size_t mark = findMark(text, position);
        std::size_t end = std::string_view::npos;
        if (mark == std::string_view::npos) {
            return;
        }
        if (text[mark] == '"') {
            end = endOfPlainText(text, mark);
        } else if (text[mark] != '/' || (mark > 0 && isNameByte(text[mark - 1]))) {
            return;
        } else if (text.substr(mark, 2) == "/*") {
            end = endBehind(text, "*/", mark + 2);
        } else if (text.substr(mark, 2) == "//") {
            end = endBehind(text, "\n", mark + 2);
        } else if (startsWord(text, mark, "/begin")) {
            // What interfaces hold has rules of its own.
            const std::size_t word = behindBlanks(text, mark + 6);
            if (text.size() - word <= kInterface.size() || !isLetter(text[word]) ||
                text.substr(word, kInterface.size()) == kInterface) {
                return;
            }
            ++depth;
            end = word;
        } else if (depth > 1 && startsWord(text, mark, "/end")) {
            end = endOfPlainWord(text, behindBlanks(text, mark + 4));
            depth -= end == std::string_view::npos ? 0 : 1;
        }
        if (end == std::string_view::npos) {
            return;
        }
        position = end;
    }
}

/// Goes to the next token that may open or close something, and false if there is none in the
/// window. Everything else is read over without being taken apart.
bool DescriptionScanner::skipToMark(std::size_t& position) const {
    const std::string_view text = source_.view();
    const std::size_t found = findMark(text, position);
    const std::size_t end = found == std::string_view::npos ? text.size() : found;
    std::size_t start = end;
    if (end == text.size() || text[end] == '/') {
        while (start > position && isNameByte(text[start - 1])) {
            --start;
        }
    }
    position = start;
    return found != std::string_view::npos;
}

/// Reads up to the end of the block whose keyword was read last.
bool DescriptionScanner::readBlock(Part& part, bool keeps) {
    std::optional<Place> begin;  // only when asked for, or when its bytes go
    std::size_t position = part.end;
    std::size_t depth = 1;
    if (part.keyword == "IF_DATA") {
        skipUnknownInterface(position);
    }
    while (depth > 0) {
        if (!keeps && position > kDiscardSize) {
            if (!begin) {
                begin = source_.placeOf(part.begin);
            }
            source_.discard(position);
            position = 0;
        }
        if (!keeps && part.keyword != "A2ML") {
            skipInside(position, depth);
        }
        if (skipToMark(position)) {
            if (!readBlockItem(position, depth, part)) {
                return false;
            }
        } else if (!source_.more()) {
            const Place start = begin ? *begin : source_.placeOf(part.begin);
            report_.error(source_.placeOf(source_.view().size()),
                          "the description ends inside the " + part.keyword + " that begins in " +
                              report_.textOf(start));
            return false;
        }
    }
    part.begin = keeps ? part.begin : position;
    part.end = position;
    return true;
}

/// Reads a token of a block, of a `/end` also the keyword behind it. False after an error.
bool DescriptionScanner::readBlockItem(std::size_t& position, std::size_t& depth, Part& part) {
    // The interface language has no blocks and includes of its own files, which nobody misses.
    const bool isA2ml = part.keyword == "A2ML";
    const Token token = isA2ml ? rawTokenAt(position) : tokenAt(position);
    position = token.end;
    if (token.kind == TokenKind::Begin && !isA2ml) {
        ++depth;
        skipInterface(position, part);
    } else if (token.kind == TokenKind::End) {
        Token closing = tokenAt(token.end);
        partWords(closing);
        --depth;
        const bool isWord = closing.kind != TokenKind::Begin && closing.kind != TokenKind::End;
        position = isWord || depth == 0 ? closing.end : token.end;
        if (depth == 0 && textOf(closing) != part.keyword && !report_.hasFailed()) {
            refuse(token, "/end " + std::string(textOf(closing)) + " where /end " + part.keyword +
                              " should stand");
        }
    }
    return !report_.hasFailed();
}

/// Goes to the end of an interface block that begins behind a position, if there is one.
void DescriptionScanner::skipInterface(std::size_t& position, const Part& part) {
    const PartRule* rule = findModuleBlock(part.keyword);
    const Token keyword = tokenAt(position);
    if (rule != nullptr && rule->inner != nullptr && textOf(keyword) == "IF_DATA") {
        position = keyword.end;
        skipUnknownInterface(position);
    }
}

/// The block of an interface that the reader does not know ends with the first `/end IF_DATA`,
/// whatever is open in it. Stays in front of that.
void DescriptionScanner::skipUnknownInterface(std::size_t& position) {
    Token token = tokenAt(position);
    if (token.kind == TokenKind::Word && findInterface(textOf(token)) != nullptr) {
        return;
    }
    while (token.kind != TokenKind::EndOfText) {
        if (token.kind == TokenKind::End && textOf(tokenAt(token.end)).substr(0, 7) == "IF_DATA") {
            return;
        }
        position = token.end;
        token = tokenAt(position);
    }
}

/// The token behind a position, whatever it is.
Token DescriptionScanner::rawTokenAt(std::size_t position) {
    for (;;) {
        const Token token = TokenReader(source_.view(), position).next();
        if ((token.end == source_.view().size() && source_.more()) ||
            (token.isOpen() && closeOpen(token))) {
            continue;
        }
        return token;
    }
}

}  // namespace quillmark::preparing
