#include "a2l/tokens/lexer.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/input_file.h"

namespace quillmark {
namespace {

using namespace std::string_view_literals;

class RecordingLexer final : public A2lLexer {
  public:
    std::vector<std::string> messages;

  protected:
    void lexicalError(std::string_view message) override {
        messages.push_back(std::string(message) + "@" + std::to_string(lineNumber()));
    }
};

struct Mode {
    const KeywordTable* table = &kCoreKeywords;
    bool wordMode = false;
    bool extended = true;
    bool raw = false;
};

std::string quoted(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        char code[8];
        if (c >= ' ' && c <= '~') {
            result += c;
        } else {
            std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(c));
            result += code;
        }
    }
    return result + "'";
}

std::string real(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string serializeToken(RecordingLexer& lexer, int kind, const Token& token) {
    std::string result;
    switch (kind) {
        case TOK_INTEGER:
            result = "int " + std::to_string(token.intValue) + " " + quoted(token.text);
            break;
        case TOK_FLOAT:
            result = "float " + real(token.floatValue()) + " " + quoted(token.text);
            break;
        case TOK_STRING:
            result = "string " + quoted(token.text);
            break;
        case TOK_IDENT:
            result = "ident " + quoted(token.text);
            break;
        case TOK_EOF:
            result = "eof";
            break;
        case TOK_ERROR:
            result = "error";
            break;
        default:
            result = std::to_string(kind) + (token.text.empty() ? "" : " " + quoted(token.text));
    }
    EXPECT_TRUE(kind == TOK_INTEGER || token.intValue == 0);
    EXPECT_NE(token.text.data(), nullptr);
    return result + "@" + std::to_string(lexer.lineNumber());
}

constexpr std::size_t kBlockSizes[] = {1, 2, 3, 5, 7, 8, 64, A2lLexer::kDefaultBlockSize};

/// All tokens up to the end, one per line: kind, value, text, line; then the messages.
std::string serializeRest(RecordingLexer& lexer, bool wordMode) {
    std::string result;
    Token token;
    int kind = 0;
    while (kind != TOK_EOF) {
        token.intValue = 77;
        kind = lexer.nextToken(token, wordMode);
        if (!result.empty()) {
            result += '\n';
        }
        result += serializeToken(lexer, kind, token);
    }
    EXPECT_EQ(lexer.nextToken(token, wordMode), TOK_EOF);
    for (const std::string& message : lexer.messages) {
        result += '\n';
        result += message;
    }
    return result;
}

std::string serialize(std::string_view input, std::size_t blockSize, const Mode& mode) {
    RecordingLexer lexer;
    MemoryInputFile source(input);
    lexer.attach(source, blockSize);
    lexer.setKeywordTable(*mode.table);
    lexer.setExtendedIdentifiers(mode.extended);
    lexer.setRawIdentifiers(mode.raw);
    return serializeRest(lexer, mode.wordMode);
}

void expectTokens(std::string_view input, std::string_view expected, const Mode& mode = {}) {
    for (const std::size_t blockSize : kBlockSizes) {
        EXPECT_EQ(serialize(input, blockSize, mode), expected)
            << quoted(input) << " in blocks of " << blockSize;
    }
}

TEST(Lexer, EmptyInput) {
    expectTokens("", "eof@1");
    expectTokens(" \t\r\0"sv, "eof@1");
    expectTokens("\n\r\n\n", "eof@4");
    RecordingLexer lexer;
    Token token;
    EXPECT_EQ(lexer.nextToken(token), TOK_EOF);
    EXPECT_EQ(lexer.readChar(), -1);
    EXPECT_EQ(lexer.detectEncoding(), 5);
}

TEST(Lexer, BlanksAndLines) {
    expectTokens("a\tb\rc d\0e\nf"sv,
                 "ident 'a'@1\nident 'b'@1\nident 'c'@1\nident 'd'@1\nident 'e'@1\nident 'f'@2\n"
                 "eof@2");
    expectTokens("a\r\nb\r\n\r\nc\n", "ident 'a'@1\nident 'b'@2\nident 'c'@4\neof@5");
    // Vertical tab and form feed are no blanks.
    expectTokens("\v\f", "11@1\n12@1\neof@1");
}

TEST(Lexer, Keywords) {
    expectTokens("/begin MEASUREMENT\n/end MEASUREMENT",
                 "1 '/begin'@1\n134 'MEASUREMENT'@1\n2 '/end'@2\n134 'MEASUREMENT'@2\neof@2");
    expectTokens("/include /x begin Measurement MEASUREMENT_",
                 "122 '/include'@1\nident '/x'@1\nident 'begin'@1\nident 'Measurement'@1\n"
                 "ident 'MEASUREMENT_'@1\neof@1");
}

TEST(Lexer, KeywordsDependOnTheTable) {
    expectTokens("/begin DAQ UBYTE", "1 '/begin'@1\nident 'DAQ'@1\nident 'UBYTE'@1\neof@1");
    Mode mode;
    for (const KeywordTable* const table :
         {&kXcpKeywords, &kCcpKeywords, &kKwpKeywords, &kGmlanKeywords}) {
        mode.table = table;
        expectTokens("/begin /end", "1 '/begin'@1\n2 '/end'@1\neof@1", mode);
    }
    mode.table = &kXcpKeywords;
    expectTokens("DAQ UNIT_1PS MAX_BIT_RATE",
                 "2030 'DAQ'@1\nident 'UNIT_1PS'@1\n2274 'MAX_BIT_RATE'@1\neof@1", mode);
    mode.table = &kWordKeywords;
    expectTokens("/begin /end UBYTE", "ident '/begin'@1\nident '/end'@1\n1017 'UBYTE'@1\neof@1",
                 mode);
    mode.table = &kKwpKeywords;
    expectTokens("5Baud WuP", "ident '5Baud'@1\n4039 'WuP'@1\neof@1", mode);
}

TEST(Lexer, RawIdentifiersAreNoKeywords) {
    Mode mode;
    mode.raw = true;
    expectTokens("/begin UNIT", "ident '/begin'@1\nident 'UNIT'@1\neof@1", mode);
}

TEST(Lexer, CommentsVanish) {
    expectTokens("/* a */ b // a\nc", "ident 'b'@1\nident 'c'@2\neof@2");
    expectTokens("/* a\n\n*/b/* c */", "ident 'b/*'@3\nident 'c'@3\nident '*/'@3\neof@3");
    expectTokens("a /**/ b /***/ c /****/ d",
                 "ident 'a'@1\nident 'b'@1\nident 'c'@1\nident 'd'@1\neof@1");
    expectTokens("/*/ x */ y", "ident 'y'@1\neof@1");
    expectTokens("/*//*/ y", "ident 'y'@1\neof@1");
    expectTokens("/* /* */ y */", "ident 'y'@1\nident '*/'@1\neof@1");
    expectTokens("/* /a/ * / ** / **/ y", "ident 'y'@1\neof@1");
    expectTokens("/* \n *\n/ \n */ y", "ident 'y'@4\neof@4");
    expectTokens("/* \" */ y // \"\n// /*\nz", "ident 'y'@1\nident 'z'@3\neof@3");
    expectTokens("//\n//x\r\n y", "ident 'y'@3\neof@3");
    expectTokens("// a \\\nb", "ident 'b'@2\neof@2");
    expectTokens("/* \0 */ y"sv, "ident 'y'@1\neof@1");
}

TEST(Lexer, CommentAtTheEndOfTheFile) {
    expectTokens("a\n// b",
                 "ident 'a'@1\nerror@2\neof@2\nError: Unexpected EOF in Comment (Line 2)@2");
    expectTokens("//", "error@1\neof@1\nError: Unexpected EOF in Comment (Line 1)@1");
    expectTokens("\n/* b\n\nc", "error@4\neof@4\nError: Unexpected EOF in Comment (Line 2)@4");
    expectTokens("/*/", "error@1\neof@1\nError: Unexpected EOF in Comment (Line 1)@1");
    expectTokens("/*", "error@1\neof@1\nError: Unexpected EOF in Comment (Line 1)@1");
    expectTokens("/* *", "error@1\neof@1\nError: Unexpected EOF in Comment (Line 1)@1");
    expectTokens("/* b\n", "error@2\neof@2\nError: Unexpected EOF in Comment (Line 1)@2");
    expectTokens("// b\n", "eof@2");
    expectTokens("/* b */", "eof@1");
}

TEST(Lexer, SlashAlone) {
    expectTokens("/", "ident '/'@1\neof@1");
    expectTokens("/ begin", "ident '/'@1\nident 'begin'@1\neof@1");
    expectTokens("/\n/5 /\"x\"", "ident '/'@1\nident '/5'@2\nident '/'@2\nstring 'x'@2\neof@2");
}

TEST(Lexer, Identifiers) {
    expectTokens("Sig.x[3] a|b _ a-b+c/d f(x)*2",
                 "ident 'Sig.x[3]'@1\nident 'a|b'@1\nident '_'@1\nident 'a-b+c/d'@1\n"
                 "ident 'f(x)*2'@1\neof@1");
    expectTokens("*a */ **", "ident '*a'@1\nident '*/'@1\nident '**'@1\neof@1");
    expectTokens("a//b c/*d*/", "ident 'a//b'@1\nident 'c/*d*/'@1\neof@1");
    expectTokens("a\"b\"c", "ident 'a'@1\nstring 'b'@1\nident 'c'@1\neof@1");
    expectTokens("a,b a%b",
                 "ident 'a'@1\n44@1\nident 'b'@1\nident 'a'@1\n37@1\nident 'b'@1\neof@1");
}

TEST(Lexer, IdentifiersThatAreNotExtended) {
    Mode mode;
    mode.extended = false;
    expectTokens("a.b", "ident 'a'@1\n-1@1\nident 'b'@1\neof@1", mode);
    expectTokens("a[b]|+c", "ident 'a'@1\n91@1\nident 'b'@1\n93@1\n124@1\n43@1\nident 'c'@1\neof@1",
                 mode);
    expectTokens("a/b f(x)*", "ident 'a'@1\nident '/b'@1\nident 'f(x)*'@1\neof@1", mode);
    expectTokens("1ms.x", "ident '1ms'@1\n-1@1\nident 'x'@1\neof@1", mode);
    expectTokens("1ms-2", "ident '1ms'@1\nint -2 '-2'@1\neof@1", mode);
    mode.wordMode = true;
    expectTokens("%6-*.x[", "string '%6-*'@1\n-1@1\nstring 'x'@1\n91@1\neof@1", mode);
}

TEST(Lexer, LatinLettersInsideIdentifiers) {
    expectTokens("a\xC4\xD6\xDC\xE4\xF6\xFC\xDFz",
                 "ident 'a\\xC4\\xD6\\xDC\\xE4\\xF6\\xFC\\xDFz'@1\neof@1");
    // They begin no identifier, and no other letter is one.
    expectTokens(
        "\xC4"
        "a",
        "-60@1\nident 'a'@1\neof@1");
    expectTokens(
        "a\xE9"
        "b",
        "ident 'a'@1\n-23@1\nident 'b'@1\neof@1");
    // An umlaut in UTF-8.
    expectTokens("a\xC3\xA4", "ident 'a'@1\n-61@1\n-92@1\neof@1");
    expectTokens("1m\xFC", "ident '1m\\xFC'@1\neof@1");
    expectTokens("1\xFC", "int 1 '1'@1\n-4@1\neof@1");
}

TEST(Lexer, SingleCharacters) {
    expectTokens("+ # ( ) = ' % ~ \x7F \x80 \xFE",
                 "43@1\n35@1\n40@1\n41@1\n61@1\n39@1\n37@1\n126@1\n127@1\n-128@1\n-2@1\neof@1");
    // The numbers of keywords are not kept apart.
    expectTokens("\x01\x02", "1@1\n2@1\neof@1");
    expectTokens("+5", "43@1\nint 5 '5'@1\neof@1");
}

TEST(Lexer, NoByteFFReachesTheTokens) {
    expectTokens("\xFF", "eof@1");
    expectTokens(std::string(100, '\xFF'), "eof@1");
    expectTokens(
        "\xFF"
        "a\xFF\xFF"
        "b\xFF 1\xFF"
        "2 /\xFF* x *\xFF/ /\xFF"
        "begin",
        "ident 'ab'@1\nint 12 '12'@1\n1 '/begin'@1\neof@1");
    expectTokens(
        "\"a\xFF\\\xFFn\"\xFF\"b\" -\xFF"
        "5",
        "string 'a\\x0A\"b'@1\nint -5 '-5'@1\neof@1");
    expectTokens(
        "1.\xFF"
        "5e\xFF-\xFF"
        "1",
        "float 0.14999999999999999 '1.5e-1'@1\neof@1");
}

TEST(Lexer, DecimalIntegers) {
    expectTokens("0 7 -7 007 123456789 1234567890 -1234567890",
                 "int 0 '0'@1\nint 7 '7'@1\nint -7 '-7'@1\nint 7 '007'@1\n"
                 "int 123456789 '123456789'@1\nint 1234567890 '1234567890'@1\n"
                 "int -1234567890 '-1234567890'@1\neof@1");
    expectTokens("2147483647 2147483648 4294967295 4294967296 -2147483648 -2147483649",
                 "int 2147483647 '2147483647'@1\nint -2147483648 '2147483648'@1\n"
                 "int -1 '4294967295'@1\nint 0 '4294967296'@1\n"
                 "int -2147483648 '-2147483648'@1\nint 2147483647 '-2147483649'@1\neof@1");
    // Beyond 64 bits the value stays at the limit, of which the low 32 bits are kept.
    expectTokens(
        "9223372036854775807 9223372036854775808 -9223372036854775808 -9223372036854775809",
        "int -1 '9223372036854775807'@1\nint -1 '9223372036854775808'@1\n"
        "int 0 '-9223372036854775808'@1\nint 0 '-9223372036854775809'@1\neof@1");
    expectTokens("18446744073709551617", "int -1 '18446744073709551617'@1\neof@1");
    expectTokens("12\"a\"", "int 12 '12'@1\nstring 'a'@1\neof@1");
    expectTokens("12/*c*/3", "int 12 '12'@1\nint 3 '3'@1\neof@1");
    expectTokens("1-2(3)", "int 1 '1'@1\nint -2 '-2'@1\n40@1\nint 3 '3'@1\n41@1\neof@1");
}

TEST(Lexer, HexadecimalIntegers) {
    expectTokens("0x10 0X1f -0x10 0xFFFFFFFF 0x80000000 0x123456789",
                 "int 16 '0x10'@1\nint 31 '0X1f'@1\nint -16 '-0x10'@1\nint -1 '0xFFFFFFFF'@1\n"
                 "int -2147483648 '0x80000000'@1\nint 591751049 '0x123456789'@1\neof@1");
    expectTokens("0xFFFFFFFFFFFFFFFF 0x10000000000000000 -0x10000000000000000 -0xFFFFFFFFFFFFFFFF",
                 "int -1 '0xFFFFFFFFFFFFFFFF'@1\nint -1 '0x10000000000000000'@1\n"
                 "int -1 '-0x10000000000000000'@1\nint 1 '-0xFFFFFFFFFFFFFFFF'@1\neof@1");
    expectTokens("0x 0x+ -0x", "int 0 '0x'@1\nint 0 '0x'@1\n43@1\nint 0 '-0x'@1\neof@1");
    expectTokens("0x1.5", "int 1 '0x1'@1\nint 0 '.5'@1\neof@1");
    expectTokens("0x1-2", "int 1 '0x1'@1\nint -2 '-2'@1\neof@1");
    expectTokens("0xE+1", "int 14 '0xE'@1\n43@1\nint 1 '1'@1\neof@1");
}

TEST(Lexer, MalformedNumbersPutTheCharacterBack) {
    expectTokens("10x3", "-1@1\nident 'x3'@1\neof@1");
    expectTokens("00x3 1X -1x .0x1",
                 "-1@1\nident 'x3'@1\n-1@1\nident 'X'@1\n-1@1\nident 'x'@1\n"
                 "-1@1\nident 'x1'@1\neof@1");
    expectTokens("1.5e ", "-1@1\neof@1");
    expectTokens("1e\n2", "-1@1\nint 2 '2'@2\neof@2");
    expectTokens("1ex 1.5e+x 1e-- 2E",
                 "-1@1\nident 'x'@1\n-1@1\nident 'x'@1\n-1@1\n-1@1\n-1@1\neof@1");
    expectTokens("-.5", "-1@1\nint 0 '.5'@1\neof@1");
    expectTokens("--5", "-1@1\nint -5 '-5'@1\neof@1");
    expectTokens("- -a -", "-1@1\n-1@1\nident 'a'@1\n-1@1\neof@1");
    expectTokens(". .a ..", "-1@1\n-1@1\nident 'a'@1\n-1@1\n-1@1\neof@1");
    expectTokens("-\"a\"", "-1@1\nstring 'a'@1\neof@1");
    expectTokens("-/* */5", "-1@1\nint 5 '5'@1\neof@1");
}

TEST(Lexer, Reals) {
    expectTokens(
        "1. 1.5 -1.5 1e5 1E+2 1.e-2 0.0 -0.0",
        "float 1 '1.'@1\nfloat 1.5 '1.5'@1\nfloat -1.5 '-1.5'@1\nfloat 100000 '1e5'@1\n"
        "float 100 '1E+2'@1\nfloat 0.01 '1.e-2'@1\nfloat 0 '0.0'@1\nfloat -0 '-0.0'@1\neof@1");
    // A point in front makes an integer of the digits, and of that there is nothing left.
    expectTokens(".5", "int 0 '.5'@1\neof@1");
    expectTokens(
        ".5e1 .5. .5.5 .5.5e3",
        "float 5 '.5e1'@1\nfloat 0.5 '.5.'@1\nfloat 0.5 '.5.5'@1\nfloat 0.5 '.5.5e3'@1\neof@1");
    expectTokens("1..5 1.5.5",
                 "float 1 '1.'@1\nint 0 '.5'@1\nfloat 1.5 '1.5'@1\nint 0 '.5'@1\neof@1");
    expectTokens("1.5-2 1.5+", "float 1.5 '1.5'@1\nint -2 '-2'@1\nfloat 1.5 '1.5'@1\n43@1\neof@1");
}

TEST(Lexer, RealsOutOfRange) {
    expectTokens("1e999 -1e999 1e-999 -1e-999 0e999",
                 "float inf '1e999'@1\nfloat -inf '-1e999'@1\nfloat 0 '1e-999'@1\n"
                 "float -0 '-1e-999'@1\nfloat 0 '0e999'@1\neof@1");
    expectTokens(
        "1e99999999999999999999 1e-99999999999999999999",
        "float inf '1e99999999999999999999'@1\nfloat 0 '1e-99999999999999999999'@1\neof@1");
}

TEST(Lexer, RealsReadLikeTheCLibrary) {
    for (const char* const text :
         {"4.9e-324", "2.4e-324", "2.5e-324", "1e-320", "2.2250738585072011e-308",
          "1.7976931348623157e308", "1.7976931348623159e308", "0.1", "9007199254740993.0",
          "123456789012345678901234567890.5", "3.14159265358979323846",
          "1.00000000000000011102230246251565404236316680908203125", ".5.5", ".25e-3", "1.e10",
          "00012.50"}) {
        RecordingLexer lexer;
        MemoryInputFile source(text);
        lexer.attach(source);
        Token token;
        ASSERT_EQ(lexer.nextToken(token), TOK_FLOAT) << text;
        EXPECT_EQ(token.floatValue(), std::strtod(text, nullptr)) << text;
    }
}

TEST(Lexer, ShortRealsReadLikeTheCLibrary) {
    std::mt19937 random(1);
    const auto digits = [&random](std::size_t count) {
        std::string text;
        for (; count > 0; --count) {
            text += static_cast<char>('0' + random() % 10);
        }
        return text;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string text = (random() % 2 == 0 ? "-" : "") + digits(1 + random() % 12) + "." +
                                 digits(random() % 12);
        RecordingLexer lexer;
        MemoryInputFile source(text);
        lexer.attach(source);
        Token token;
        ASSERT_EQ(lexer.nextToken(token), TOK_FLOAT) << text;
        ASSERT_EQ(token.floatValue(), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(Lexer, NumbersThatGoOnAsIdentifiers) {
    expectTokens("1ms 0x1Fg 0xg 1.5ms 1e5x 1_ -5ms .5s 1.x 12345678901z 0x_",
                 "ident '1ms'@1\nident '0x1Fg'@1\nident '0xg'@1\nident '1.5ms'@1\nident '1e5x'@1\n"
                 "ident '1_'@1\nident '-5ms'@1\nident '.5s'@1\nident '1.x'@1\n"
                 "ident '12345678901z'@1\nident '0x_'@1\neof@1");
    // Fewer characters go on than in an identifier that begins with a letter.
    expectTokens("1a-.[]|b", "ident '1a-.[]|b'@1\neof@1");
    expectTokens("1a(b)", "ident '1a'@1\n40@1\nident 'b)'@1\neof@1");
    expectTokens("1a*b 1a/b 1a+b",
                 "ident '1a'@1\nident '*b'@1\nident '1a'@1\nident '/b'@1\nident '1a'@1\n43@1\n"
                 "ident 'b'@1\neof@1");
    expectTokens("1MEASUREMENT", "ident '1MEASUREMENT'@1\neof@1");
}

TEST(Lexer, LongNumbers) {
    const std::string digits(5000, '7');
    expectTokens(digits, "int -1 '" + digits + "'@1\neof@1");
    expectTokens("-" + digits, "int 0 '-" + digits + "'@1\neof@1");
    expectTokens("0x" + digits, "int -1 '0x" + digits + "'@1\neof@1");
    expectTokens(digits + ".5", "float inf '" + digits + ".5'@1\neof@1");
    expectTokens("0." + digits, "float 0.77777777777777779 '0." + digits + "'@1\neof@1");
    const std::string zeros(5000, '0');
    expectTokens(zeros + "42", "int 42 '" + zeros + "42'@1\neof@1");
    expectTokens("0x" + zeros + "42", "int 66 '0x" + zeros + "42'@1\neof@1");
}

TEST(Lexer, Strings) {
    expectTokens("\"\" \"a b\"", "string ''@1\nstring 'a b'@1\neof@1");
    expectTokens(R"("a""b" """" "x""")", "string 'a\"b'@1\nstring '\"'@1\nstring 'x\"'@1\neof@1");
    expectTokens(R"("a\nb\rc\td\\e\"f\qg\/")", "string 'a\\x0Ab\\x0Dc\\x09d\\e\"fqg/'@1\neof@1");
    expectTokens("\"a\nb\\\nc\r\n\"d", "string 'a\\x0Ab\\x0Ac\\x0D\\x0A'@4\nident 'd'@4\neof@4");
    expectTokens("\"a\"\n\"b\"", "string 'a'@1\nstring 'b'@2\neof@2");
    expectTokens(R"("a"b"c")", "string 'a'@1\nident 'b'@1\nstring 'c'@1\neof@1");
    expectTokens(R"("a" "b""c\\" "d")", "string 'a'@1\nstring 'b\"c\\'@1\nstring 'd'@1\neof@1");
    expectTokens("\"/* x */ // /end\"", "string '/* x */ // /end'@1\neof@1");
    expectTokens("\"\xE4\xC3\xA4\x01\"", "string '\\xE4\\xC3\\xA4\\x01'@1\neof@1");
    expectTokens("\"MEASUREMENT\"", "string 'MEASUREMENT'@1\neof@1");
    // The letters of escapes are taken as they come, whatever stands around them.
    expectTokens(
        R"("\\n\n\\" "\n\n" "\"\"" "n\\""r")",
        "string '\\n\\x0A\\'@1\nstring '\\x0A\\x0A'@1\nstring '\"\"'@1\nstring 'n\\\"r'@1\neof@1");
}

TEST(Lexer, UnclosedStrings) {
    expectTokens("\"a", "-1@1\neof@1\nUnexpected EOF in string@1");
    expectTokens("\"", "-1@1\neof@1\nUnexpected EOF in string@1");
    expectTokens("\"a\n\n", "-1@3\neof@3\nUnexpected EOF in string@3");
    expectTokens("\"a\\", "-1@1\neof@1\nUnexpected EOF in string@1");
    expectTokens("\"a\\\"", "-1@1\neof@1\nUnexpected EOF in string@1");
    expectTokens("\"a\"\"", "-1@1\neof@1\nUnexpected EOF in string@1");
    expectTokens("\"a\0\\"sv, "-1@1\neof@1\nUnexpected EOF in string@1");
}

TEST(Lexer, NulEndsTheTextOfAString) {
    expectTokens("\"a\0b\nc\" d"sv, "string 'a'@2\nident 'd'@2\neof@2");
    expectTokens("\"\0\" d"sv, "string ''@1\nident 'd'@1\neof@1");
    expectTokens("\"a\\\0b\" d"sv, "string 'a'@1\nident 'd'@1\neof@1");
    expectTokens("\"a\\nb\0c\\nd\"\"e\0\" d"sv, "string 'a\\x0Ab'@1\nident 'd'@1\neof@1");
    expectTokens("\"a\"\"\0c\" d"sv, "string 'a\"'@1\nident 'd'@1\neof@1");
    expectTokens("a\0b 1\0002"sv, "ident 'a'@1\nident 'b'@1\nint 1 '1'@1\nint 2 '2'@1\neof@1");
}

TEST(Lexer, WordMode) {
    Mode mode;
    mode.wordMode = true;
    expectTokens("%6.3 km-h a*b 5 -5 0x10 1.5e /begin \"q\"",
                 "string '%6.3'@1\nstring 'km-h'@1\nstring 'a*b'@1\nstring '5'@1\nstring '-5'@1\n"
                 "string '0x10'@1\nstring '1.5e'@1\n1 '/begin'@1\nstring 'q'@1\neof@1",
                 mode);
    expectTokens("km/h", "string 'km'@1\nident '/h'@1\neof@1", mode);
    expectTokens("a/*b*/ /*c*/ d", "string 'a'@1\nstring 'd'@1\neof@1", mode);
    expectTokens("MEASUREMENT NULL", "string 'MEASUREMENT'@1\nstring 'NULL'@1\neof@1", mode);
    expectTokens("a.[x]|\xC4\xDF(b)+c",
                 "string 'a.[x]|\\xC4\\xDF'@1\n40@1\nstring 'b'@1\n41@1\n43@1\nstring 'c'@1\neof@1",
                 mode);
    expectTokens(".5 *x _y -", "int 0 '.5'@1\nident '*x'@1\nstring '_y'@1\nstring '-'@1\neof@1",
                 mode);
    expectTokens(
        "\xC4"
        "a",
        "-60@1\nstring 'a'@1\neof@1", mode);
    mode.extended = false;
    expectTokens("a.b", "string 'a'@1\n-1@1\nstring 'b'@1\neof@1", mode);
}

TEST(Lexer, LongTokensAreReadWhole) {
    for (const std::size_t length :
         {std::size_t{1023}, std::size_t{1024}, std::size_t{1025}, std::size_t{5000}}) {
        const std::string name(length, 'n');
        std::string input = "a ";
        input += name;
        input += " \"";
        input += name;
        input += "\" b";
        std::string expected = "ident 'a'@1\nident '";
        expected += name;
        expected += "'@1\nstring '";
        expected += name;
        expected += "'@1\nident 'b'@1\neof@1";
        expectTokens(input, expected);
    }
}

TEST(Lexer, HugeTokensInSmallBlocks) {
    const std::string name(2000000, 'n');
    const std::string input = "x " + name + " \"" + name + "\\n\" /*" + name + "*/ y";
    for (const std::size_t blockSize :
         {std::size_t{1}, std::size_t{100}, A2lLexer::kDefaultBlockSize}) {
        RecordingLexer lexer;
        MemoryInputFile source(input);
        lexer.attach(source, blockSize);
        Token token;
        EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
        EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
        EXPECT_TRUE(token.text == name);
        EXPECT_EQ(lexer.nextToken(token), TOK_STRING);
        EXPECT_TRUE(token.text == name + "\n");
        EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
        EXPECT_EQ(token.text, "y");
        EXPECT_EQ(lexer.nextToken(token), TOK_EOF);
    }
}

/// The encoding, then all tokens.
void expectEncoding(std::string_view input, int encoding, std::string_view expected) {
    for (const std::size_t blockSize : kBlockSizes) {
        RecordingLexer lexer;
        MemoryInputFile source(input);
        lexer.attach(source, blockSize);
        EXPECT_EQ(lexer.detectEncoding(), encoding) << quoted(input);
        EXPECT_EQ(serializeRest(lexer, false), expected)
            << quoted(input) << " in blocks of " << blockSize;
    }
}

TEST(Lexer, EncodingMark) {
    expectEncoding("", 5, "eof@1");
    expectEncoding("ab", 5, "ident 'ab'@1\neof@1");
    expectEncoding("/begin", 5, "1 '/begin'@1\neof@1");
    expectEncoding("\n a", 5, "ident 'a'@2\neof@2");
    expectEncoding(
        "\xEF\xBB\xBF"
        "ab",
        6, "ident 'ab'@1\neof@1");
    expectEncoding("\xEF\xBB\xBF", 6, "eof@1");
}

TEST(Lexer, IncompleteEncodingMarkIsLost) {
    expectEncoding("\xEF", 5, "eof@1");
    expectEncoding("\xEF\xBB", 5, "eof@1");
    expectEncoding(
        "\xEF"
        "ab",
        5, "ident 'b'@1\neof@1");
    expectEncoding(
        "\xEF\xBB"
        "ab",
        5, "ident 'b'@1\neof@1");
    expectEncoding(
        "\xEF\xEF\xBB\xBF"
        "ab",
        5, "-69@1\n-65@1\nident 'ab'@1\neof@1");
    expectEncoding(
        "\xEF\n"
        "ab",
        5, "ident 'ab'@2\neof@2");
    expectEncoding(
        "\xEF\xBB\n"
        "ab",
        5, "ident 'ab'@2\neof@2");
    expectEncoding("\xBB\xBF", 5, "-69@1\n-65@1\neof@1");
}

TEST(Lexer, EncodingMarkIsSoughtInRawBytes) {
    expectEncoding(
        "\xFF"
        "ab",
        5, "ident 'ab'@1\neof@1");
    expectEncoding(
        "\xFF\xEF\xBB\xBF"
        "ab",
        5, "-17@1\n-69@1\n-65@1\nident 'ab'@1\neof@1");
    expectEncoding(
        "\xEF\xFF\xBB\xBF"
        "ab",
        5, "-69@1\n-65@1\nident 'ab'@1\neof@1");
    expectEncoding(
        "\xEF\xBB\xFF\xBF"
        "ab",
        5, "-65@1\nident 'ab'@1\neof@1");
}

TEST(Lexer, WithoutDetectionTheMarkIsThreeCharacters) {
    expectTokens(
        "\xEF\xBB\xBF"
        "ab",
        "-17@1\n-69@1\n-65@1\nident 'ab'@1\neof@1");
}

TEST(Lexer, ReadChar) {
    for (const std::size_t blockSize : kBlockSizes) {
        RecordingLexer lexer;
        MemoryInputFile source("ab \xFF\n\xE4z 7"sv);
        lexer.attach(source, blockSize);
        Token token;
        EXPECT_EQ(lexer.readChar(), 'a');
        EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
        EXPECT_EQ(token.text, "b");
        EXPECT_EQ(lexer.readChar(), ' ');
        EXPECT_EQ(lexer.readChar(), '\n');
        EXPECT_EQ(lexer.lineNumber(), 2);
        EXPECT_EQ(lexer.readChar(), 0xE4);
        EXPECT_EQ(lexer.readChar(), 'z');
        EXPECT_EQ(lexer.nextToken(token), TOK_INTEGER);
        EXPECT_EQ(lexer.readChar(), -1);
        EXPECT_EQ(lexer.readChar(), -1);
        EXPECT_EQ(lexer.nextToken(token), TOK_EOF);
    }
}

TEST(Lexer, TableCanChangeBetweenTokens) {
    RecordingLexer lexer;
    MemoryInputFile source("BYTE BYTE DAQ DAQ");
    lexer.attach(source);
    Token token;
    EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
    lexer.selectKeywordTable(1);
    EXPECT_EQ(lexer.nextToken(token), kw::word::BYTE);
    lexer.selectKeywordTable(3);
    EXPECT_EQ(lexer.nextToken(token), kw::xcp::DAQ);
    lexer.selectKeywordTable(99);
    EXPECT_EQ(&lexer.keywordTable(), &kXcpKeywords);
    lexer.selectKeywordTable(2);
    EXPECT_EQ(lexer.nextToken(token), kw::ccp::DAQ);
    lexer.selectKeywordTable(0);
    EXPECT_EQ(&lexer.keywordTable(), &kCoreKeywords);
}

TEST(Lexer, KeywordNames) {
    RecordingLexer lexer;
    EXPECT_EQ(lexer.keywordName(1), "/begin");
    EXPECT_EQ(lexer.keywordName('#'), "ASAP2_VERSION");
    EXPECT_EQ(lexer.keywordName(TOK_IDENT), "token=303");
    EXPECT_EQ(lexer.keywordName(1002), "token=1002");
    EXPECT_EQ(lexer.keywordName(-1), "token=-1");
    EXPECT_EQ(lexer.keywordName(0), "token=0");
    EXPECT_EQ(lexer.keywordName(std::numeric_limits<int>::min()), "token=-2147483648");
    lexer.setKeywordTable(kWordKeywords);
    EXPECT_EQ(lexer.keywordName(1002), "BYTE");
    EXPECT_EQ(lexer.keywordName(1), "token=1");
}

TEST(Lexer, CanBeAttachedAgain) {
    RecordingLexer lexer;
    Token token;
    MemoryInputFile first("a\nb c");
    lexer.attach(first);
    EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
    EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
    EXPECT_EQ(lexer.lineNumber(), 2);
    lexer.detach();
    EXPECT_EQ(lexer.nextToken(token), TOK_EOF);
    MemoryInputFile second("d");
    lexer.attach(second, 1);
    EXPECT_EQ(lexer.lineNumber(), 1);
    EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
    EXPECT_EQ(token.text, "d");
    EXPECT_EQ(lexer.nextToken(token), TOK_EOF);
}

TEST(Lexer, SourceMayDeliverLessThanABlock) {
    RecordingLexer lexer;
    MemoryInputFile source("alpha /* c */ \"be\"\"ta\" 12.5", 3);
    lexer.attach(source, 64);
    Token token;
    EXPECT_EQ(lexer.nextToken(token), TOK_IDENT);
    EXPECT_EQ(lexer.nextToken(token), TOK_STRING);
    EXPECT_EQ(token.text, "be\"ta");
    EXPECT_EQ(lexer.nextToken(token), TOK_FLOAT);
    EXPECT_EQ(token.floatValue(), 12.5);
    EXPECT_EQ(lexer.nextToken(token), TOK_EOF);
}

/// Every triple of the bytes that mean something, byte by byte, in pairs, and in one block.
TEST(Lexer, BlocksMakeNoDifference) {
    constexpr std::string_view kBytes =
        "a1.-/*\"\\n\n \0\xFF"
        "ex0_(%"sv;
    for (const bool wordMode : {false, true}) {
        Mode mode;
        mode.wordMode = wordMode;
        for (const char first : kBytes) {
            for (const char second : kBytes) {
                for (const char third : kBytes) {
                    const std::string input{'5', first, second, third, '"', '/'};
                    const std::string whole = serialize(input, 64, mode);
                    ASSERT_EQ(serialize(input, 1, mode), whole) << quoted(input);
                    ASSERT_EQ(serialize(input, 2, mode), whole) << quoted(input);
                }
            }
        }
    }
}

std::string columns(std::string_view input, std::size_t blockSize) {
    RecordingLexer lexer;
    MemoryInputFile source(input);
    lexer.attach(source, blockSize);
    lexer.detectEncoding();
    Token token;
    std::string result;
    while (lexer.nextToken(token) != TOK_EOF) {
        result += std::to_string(lexer.lineNumber()) + ":" + std::to_string(lexer.columnNumber());
        result += " ";
    }
    return result;
}

TEST(Lexer, ColumnsAreThoseOfTheFirstByte) {
    for (const std::size_t blockSize : kBlockSizes) {
        EXPECT_EQ(columns("a  bc\n 0x10 \"text\" x\r\n\r\n\td", blockSize),
                  "1:1 1:4 2:2 2:8 2:14 4:2 ")
            << blockSize;
        EXPECT_EQ(columns("/* over\n two */ a // rest\n  -1.5e3", blockSize), "2:9 3:3 ")
            << blockSize;
        EXPECT_EQ(columns("\xEF\xBB\xBF"
                          "a b",
                          blockSize),
                  "1:1 1:3 ")
            << blockSize;
        EXPECT_EQ(columns("  \"begun\nhere\" b", blockSize), "2:1 2:7 ") << blockSize;
    }
}

}  // namespace
}  // namespace quillmark
