#include "a2l/reader/word_row.h"

#include <optional>
#include <string_view>

#include <gtest/gtest.h>

#include "platform/input_file.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

/// A reader whose tokens stand alone.
class TokenReader final : public BlockReader {
  public:
    TokenReader(Console& console, InputFile& input) : BlockReader(console, "a.a2l") {
        start(input);
    }

    std::string_view formatName() const override { return "tokens"; }
    int parse(PhRoot&) override { return -1; }
};

enum class Colour { Red, Green, Blue };

constexpr WordRow<Colour> kColours[] = {
    {kw::core::ROOT, Colour::Red},
    {identifier("GREEN"), Colour::Green},
    {identifier("UNIT"), Colour::Blue},
};

/// What the word that `text` begins with means.
std::optional<Colour> colourOf(std::string_view text) {
    CollectingConsole console;
    MemoryInputFile input(text);
    TokenReader reader(console, input);
    const int kind = reader.next();
    return findWord(reader, kColours, kind);
}

TEST(WordRow, KeywordsAndIdentifiers) {
    EXPECT_EQ(colourOf("ROOT"), Colour::Red);
    EXPECT_EQ(colourOf("GREEN"), Colour::Green);
}

TEST(WordRow, OtherTokensMeanNothing) {
    EXPECT_EQ(colourOf("GREENISH"), std::nullopt);
    EXPECT_EQ(colourOf("\"GREEN\""), std::nullopt);
    EXPECT_EQ(colourOf("GROUP"), std::nullopt);
    EXPECT_EQ(colourOf("5"), std::nullopt);
    EXPECT_EQ(colourOf(""), std::nullopt);
}

TEST(WordRow, AKeywordOfTheTableIsNoIdentifier) {
    EXPECT_EQ(colourOf("UNIT"), std::nullopt);
}

TEST(BlockReader, TheLastTokenAsANumber) {
    CollectingConsole console;
    MemoryInputFile input("7 2.5 seven");
    TokenReader reader(console, input);
    EXPECT_EQ(reader.number(reader.next()).toInteger(), 7);
    EXPECT_EQ(reader.number(reader.next()).toReal(), 2.5);
    EXPECT_FALSE(reader.number(reader.next()).isPresent());
    EXPECT_EQ(console.out, "");
}

}  // namespace
}  // namespace quillmark
