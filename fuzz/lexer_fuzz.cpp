// The lexer. The first byte of the input chooses how the rest is read: bits 0 to 2 are the context
// number of the keyword table (7: alternating), 0x08 leaves keywords alone, 0x10 takes the short
// identifiers, 0x20 reads every second token in word mode. '@' stands for none of it.
#include <algorithm>
#include <cstdint>

#include "a2l/tokens/lexer.h"
#include "fuzz/property.h"
#include "platform/input_file.h"

namespace quillmark {
namespace {

constexpr unsigned kTableMask = 0x07;
constexpr unsigned kAlternatingTables = 7;
constexpr unsigned kRawIdentifiers = 0x08;
constexpr unsigned kShortIdentifiers = 0x10;
constexpr unsigned kWordMode = 0x20;
constexpr std::size_t kContexts = 6;

class Lexer final : public A2lLexer {
  public:
    std::size_t errorCount = 0;

  private:
    void lexicalError(std::string_view message) override {
        require(!message.empty(), "an error has a text");
        ++errorCount;
    }
};

/// One way to read the same bytes.
struct Reading {
    Reading(std::string_view text, std::size_t chunkSize, std::size_t blockSize, unsigned settings)
        : input(text, chunkSize) {
        lexer.setRawIdentifiers((settings & kRawIdentifiers) != 0);
        lexer.setExtendedIdentifiers((settings & kShortIdentifiers) == 0);
        lexer.selectKeywordTable(static_cast<int>(settings & kTableMask));
        lexer.attach(input, blockSize);
        encoding = lexer.detectEncoding();
    }

    void next(bool wordMode) { kind = lexer.nextToken(token, wordMode); }

    MemoryInputFile input;
    Lexer lexer;
    Token token;
    int encoding = 0;
    int kind = 0;
};

bool isSame(Reading& left, Reading& right) {
    return left.kind == right.kind && left.token.intValue == right.token.intValue &&
           left.token.text == right.token.text &&
           left.lexer.lineNumber() == right.lexer.lineNumber() &&
           left.lexer.errorCount == right.lexer.errorCount &&
           left.lexer.keywordName(left.kind) == right.lexer.keywordName(right.kind);
}

void readAll(std::string_view text, unsigned settings) {
    Reading file(text, 0, A2lLexer::kDefaultBlockSize, settings);
    Reading pipe(text, 3, 16, settings);
    Reading bytewise(text, 1, 1, settings);
    require(file.encoding == pipe.encoding && file.encoding == bytewise.encoding,
            "the encoding mark does not depend on how bytes arrive");
    const auto lines = static_cast<int>(1 + std::count(text.begin(), text.end(), '\n'));
    for (std::size_t count = 0;; ++count) {
        require(count <= text.size() + 1, "every token takes a byte");
        const int oldLine = file.lexer.lineNumber();
        for (Reading* reading : {&file, &pipe, &bytewise}) {
            if ((settings & kTableMask) == kAlternatingTables) {
                reading->lexer.selectKeywordTable(static_cast<int>(count % kContexts));
            }
            reading->next((settings & kWordMode) != 0 && count % 2 != 0);
        }
        require(isSame(file, pipe) && isSame(file, bytewise),
                "tokens do not depend on how bytes arrive");
        require(file.lexer.lineNumber() >= oldLine && file.lexer.lineNumber() <= lines,
                "lines are counted");
        if (file.kind == TOK_EOF) {
            break;
        }
    }
    file.next(false);
    require(file.kind == TOK_EOF, "the end stays the end");
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0) {
        quillmark::readAll(quillmark::textOf(data + 1, size - 1), data[0]);
    }
    return 0;
}
