#include "a2l/reader/block_reader.h"

#include <algorithm>

namespace quillmark {

int BlockReader::drop(int count) {
    for (int i = 0; i < count; ++i) {
        next();
    }
    return next();
}

PhString BlockReader::readIdentifier() {
    return expectIdentifier() ? PhString(token_.text) : PhString();
}

bool BlockReader::expectIdentifier() {
    const bool isIdentifier = next() == TOK_IDENT;
    if (!isIdentifier) {
        fail("Identifier expected");
    }
    return isIdentifier;
}

PhString BlockReader::readString() {
    return expectString() ? PhString(token_.text) : PhString();
}

void BlockReader::readLongIdentifierOf(PhObject& block) {
    if (expectString() && parts().longIdentifiers) {
        block.setLongIdentifier(PhString(token_.text));
    }
}

bool BlockReader::expectString() {
    const bool isString = nullAsEmptyString(next()) == TOK_STRING;
    if (!isString) {
        fail("String expected");
    }
    return isString;
}

int BlockReader::nullAsEmptyString(int kind) {
    if (kind == TOK_IDENT && token_.text == "NULL") {
        token_.text = {};
        return TOK_STRING;
    }
    return kind;
}

PhNumber BlockReader::readNumberValue() {
    const int kind = next();
    const PhNumber value = number(kind);
    if (!value.isPresent()) {
        unexpectedTokenWarning(kind);
    }
    return value;
}

std::int32_t BlockReader::readInteger() {
    next();
    return token_.intValue;
}

void BlockReader::readIntPair(std::int32_t& first, std::int32_t& second) {
    first = std::max(readInteger(), 0);
    second = readInteger();
}

bool BlockReader::expectIntegerOrWarn() {
    const int kind = next();
    if (kind != TOK_INTEGER) {
        unexpectedTokenWarning(kind);
    }
    return kind == TOK_INTEGER;
}

int BlockReader::closeBlock(int keyword) {
    return next() == keyword ? next() : endMissing(keyword);
}

int BlockReader::closeBlock(int keyword, std::string_view name) {
    return next() == keyword ? next() : endMissing(name);
}

int BlockReader::endMissing(std::string_view name) {
    return fail("Keyword '%s' expected after /end", {name});
}

void BlockReader::error(std::string_view format, std::initializer_list<MessageArgument> arguments) {
    if (!failed()) {
        ++errors_;
        report(true, place(), MessageText(format, arguments).view());
    }
}

void BlockReader::warning(std::string_view format,
                          std::initializer_list<MessageArgument> arguments) {
    if (!failed()) {
        report(false, place(), MessageText(format, arguments).view());
    }
}

int BlockReader::fail(std::string_view format, std::initializer_list<MessageArgument> arguments) {
    error(format, arguments);
    state_ = State::Failed;
    return TOK_ERROR;
}

int BlockReader::unexpectedToken(int kind) {
    return fail("Unexpected token '%s' found", {keywordName(kind)});
}

void BlockReader::unexpectedTokenWarning(int kind) {
    warning("Unexpected token '%s' found", {keywordName(kind)});
}

int BlockReader::skipBlock(int keyword) {
    int depth = 0;
    for (;;) {
        const int kind = next();
        if (kind == TOK_EOF || kind == TOK_ERROR) {
            return kind;
        }
        if (kind == kw::core::BEGIN) {
            ++depth;
        } else if (kind == kw::core::END && depth-- == 0) {
            break;
        }
    }
    return next() == keyword
               ? next()
               : fail("Keyword '%s' expected after /end (IGN)", {keywordName(keyword)});
}

void BlockReader::startOver() {
    state_ = State::Reading;
    errors_ = 0;
    goneOn_ = false;
    passedOver_ = false;
    resetLineNumber();
}

int BlockReader::readBesides() {
    if (state_ == State::Repeating) {
        state_ = State::Reading;
        return repeatedKind_;
    }
    return TOK_ERROR;
}

bool BlockReader::goOn() {
    if (errors_ >= errorLimit_) {
        return false;
    }
    state_ = State::Reading;
    goneOn_ = true;
    useKeywords(kCoreKeywords);
    return true;
}

int BlockReader::giveUp(bool anythingFollows) {
    state_ = State::Failed;
    passedOver_ = anythingFollows;
    return TOK_ERROR;
}

bool BlockReader::endFollows() {
    return errorLimit_ > 1 && !passedOver_ && nextToken(token_) == TOK_EOF;
}

void BlockReader::lexicalError(std::string_view message) {
    error("%s", {message});
}

}  // namespace quillmark
