#include "prepare/token_reader.h"

#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "a2l/tokens/lexer.h"
#include "platform/input_file.h"

namespace quillmark::preparing {
namespace {

class QuietLexer final : public A2lLexer {
    void lexicalError(std::string_view) override {}
};

TokenKind kindOf(int kind) {
    switch (kind) {
        case TOK_INTEGER:
            return TokenKind::Integer;
        case TOK_FLOAT:
            return TokenKind::Real;
        case TOK_STRING:
            return TokenKind::Text;
        case TOK_EOF:
            return TokenKind::EndOfText;
        case kw::core::BEGIN:
            return TokenKind::Begin;
        case kw::core::END:
            return TokenKind::End;
        case kw::core::INCLUDE:
            return TokenKind::Include;
        default:
            return kind == TOK_IDENT || kind > 255 ? TokenKind::Word : TokenKind::Mark;
    }
}

/// Whether a token could be the one that the lexer gave. A single byte may have the number of a
/// keyword.
bool agree(const Token& token, std::string_view text, int kind) {
    if (kind == TOK_ERROR || kind == TOK_MALFORMED) {
        return token.isOpen() || token.kind == TokenKind::Malformed;
    }
    if (token.kind == TokenKind::Mark && text.size() == 1) {
        return kind == static_cast<signed char>(text[0]);
    }
    return token.kind == kindOf(kind) || (token.kind == TokenKind::Word && kind < TOK_INTEGER);
}

/// Pieces of tokens, one right behind the other or with blanks between.
std::string randomText(std::mt19937& random, std::string_view blanks) {
    static constexpr std::string_view kPieces[] = {
        "/begin", "/end", " ",   "\n",  "\"", "\"\"", "\\\"", "\\",  "/*", "*/",   "//",
        "name",   "a.b",  "[2]", "0x1", "0X", "1.5",  "1e",   "e+3", "-",  ".",    "5",
        "/",      "*",    "(",   "+",   "%",  "#",    "|",    "_",   "ms", "\xC4", "\x01",
        "\x02",   ";",    "x",   "9",   "\t", "1ms",  "/x",   "{",   "0",  "\r\n", "/include",
    };
    std::uniform_int_distribution<std::size_t> count(1, 14);
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    std::string text;
    for (std::size_t i = count(random); i > 0; --i) {
        text += kPieces[piece(random)];
        text += blanks;
    }
    return text;
}

void expectTokensOfTheLexer(const std::string& text) {
    MemoryInputFile input(text);
    QuietLexer lexer;
    lexer.attach(input);
    TokenReader reader(text);
    for (;;) {
        quillmark::Token theirs;
        const int kind = lexer.nextToken(theirs);
        const Token ours = reader.next();
        ASSERT_TRUE(agree(ours, reader.textOf(ours), kind)) << text << " at " << ours.begin;
        if (kind == TOK_EOF || kind == TOK_ERROR || ours.isOpen()) {
            break;
        }
    }
}

TEST(TokenReader, FindsTheTokensOfTheLexer) {
    std::mt19937 random(20261122);
    for (int i = 0; i < 20000; ++i) {
        expectTokensOfTheLexer(randomText(random, ""));
    }
}

TEST(TokenReader, FindsTheSameFarFromTheEndOfTheText) {
    const std::string farEnd(200, ' ');
    std::mt19937 random(20261123);
    for (int i = 0; i < 5000; ++i) {
        for (const char* const blanks : {"", " ", "\n", "\r\n   ", "\n                      "}) {
            expectTokensOfTheLexer(randomText(random, blanks) + farEnd);
        }
    }
}

TEST(TokenReader, TakesLongTokensAsAWhole) {
    for (const std::size_t length : {15U, 16U, 17U, 31U, 32U, 33U, 100U}) {
        for (const char first : {'a', '7', '0'}) {
            const std::string token = first + std::string(length - 1, first == 'a' ? 'b' : '4');
            for (const std::string& text :
                 {token, "0x" + token, "-" + token, token + "." + token, "\"" + token + "\""}) {
                expectTokensOfTheLexer("\n    " + text + " next" + std::string(200, ' '));
            }
        }
    }
}

TEST(TokenReader, TellsWhereTokensStand) {
    TokenReader reader("  /begin X /* no */ \"a \"\" b\"9");
    const Token begin = reader.next();
    EXPECT_EQ(begin.begin, 2U);
    EXPECT_EQ(begin.end, 8U);
    EXPECT_EQ(reader.textOf(reader.next()), "X");
    EXPECT_EQ(reader.textOf(reader.next()), "\"a \"\" b\"");
    EXPECT_EQ(reader.textOf(reader.peek()), "9");
    EXPECT_EQ(reader.textOf(reader.next()), "9");
    EXPECT_EQ(reader.next().kind, TokenKind::EndOfText);
}

TEST(TokenReader, StaysInFrontOfWhatHasNoEnd) {
    TokenReader comment(" /* a");
    EXPECT_EQ(comment.next().kind, TokenKind::OpenComment);
    EXPECT_EQ(comment.position(), 1U);
    TokenReader text(" \"a\\\"");
    EXPECT_EQ(text.next().kind, TokenKind::OpenText);
    EXPECT_EQ(text.position(), 1U);
}

TEST(TokenReader, TakesWordsInWordMode) {
    TokenReader reader("%8.3 km/h \"x\"");
    EXPECT_EQ(reader.textOf(reader.nextWord()), "%8.3");
    EXPECT_EQ(reader.textOf(reader.nextWord()), "km");
    EXPECT_EQ(reader.textOf(reader.next()), "/h");
    EXPECT_EQ(reader.textOf(reader.nextWord()), "\"x\"");
}

TEST(IntegerOf, KnowsBothNotationsAndTheirLimits) {
    EXPECT_EQ(integerOf("12"), 12);
    EXPECT_EQ(integerOf("-0x10"), -16);
    EXPECT_EQ(integerOf("0XFFFFFFFF"), 4294967295);
    EXPECT_EQ(integerOf("99999999999999999999"), INT64_MAX);
    EXPECT_EQ(integerOf("-99999999999999999999"), INT64_MIN);
    EXPECT_EQ(integerOf("0xFFFFFFFFFFFFFFFFFF"), -1);
    for (const char* const text : {"", "-", "0x", "1.5", "a", "1a"}) {
        EXPECT_EQ(integerOf(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace quillmark::preparing
