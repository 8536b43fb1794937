#include "a2l/reader/block_rules.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "platform/input_file.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

using namespace kw::core;

/// A reader of texts that hold the optional parts of one block.
class PartsReader final : public BlockReader {
  public:
    explicit PartsReader(Console& console) : BlockReader(console, "a.a2l") {}

    std::string_view formatName() const override { return "parts"; }
    int parse(PhRoot&) override { return -1; }

    using BlockReader::start;
};

/// What the parts of a block are written to.
struct Notes {
    std::string text;
};

using NoteRule = Rule<PartsReader, Notes>;

int noteName(PartsReader& reader, Notes& notes) {
    notes.text += reader.readIdentifier().view();
    return reader.next();
}

int noteNumber(PartsReader& reader, Notes& notes, const NoteRule& rule) {
    notes.text += std::to_string(rule.value<int>());
    return reader.next();
}

int noteNameBlock(PartsReader& reader, Notes& notes, const NoteRule& rule) {
    return reader.readNameBlock(rule.keyword(), [&](std::string_view name) { notes.text += name; });
}

constexpr NoteRule kRules[] = {
    bare(ECU, noteName),
    bare(ROOT, noteNumber, 7),
    bare(identifier("odd"), noteNumber, 8),
    skipped(SYMBOL_LINK, 2),
    skippedWord(FORMAT),
    skippedNumbers(MATRIX_DIM),
    skippedNames(MAP_LIST),
    block(FUNCTION_LIST, noteNameBlock),
    block(SUB_GROUP, noteNameBlock),
    skippedNameBlock(REF_GROUP),
    skippedBlock(AXIS_DESCR),
};

/// What is noted of a text up to its last /end, messages in front.
std::string notesOf(std::string_view text, OtherBlocks others = OtherBlocks::Wrong) {
    CollectingConsole console;
    PartsReader reader(console);
    MemoryInputFile input(text);
    reader.start(input);
    Notes notes;
    const int kind = readOptionals(reader, kRules, notes, reader.next(), others);
    return console.out + notes.text + (kind == END ? "" : "!");
}

TEST(BlockRules, BareParts) {
    EXPECT_EQ(notesOf("ECU a ROOT ECU b /end"), "a7b");
    EXPECT_EQ(notesOf("odd ECU odd /end"), "8odd");
}

TEST(BlockRules, PartsThatNothingIsKeptOf) {
    EXPECT_EQ(notesOf("SYMBOL_LINK \"x\" 0 ROOT /end"), "7");
    EXPECT_EQ(notesOf("FORMAT %5.2 ROOT FORMAT \"%4.1\" ROOT /end"), "77");
    EXPECT_EQ(notesOf("MATRIX_DIM 1 2.5 3 ROOT MATRIX_DIM /end"), "7");
    EXPECT_EQ(notesOf("MAP_LIST a b ROOT MAP_LIST ROOT /end"), "77");
}

TEST(BlockRules, Blocks) {
    EXPECT_EQ(notesOf("/begin FUNCTION_LIST a b /end FUNCTION_LIST "
                      "/begin SUB_GROUP c /end SUB_GROUP /end"),
              "abc");
    EXPECT_EQ(notesOf("/begin REF_GROUP a b /end REF_GROUP ROOT /end"), "7");
    EXPECT_EQ(notesOf("/begin AXIS_DESCR /begin X 1 /end X ROOT /end AXIS_DESCR ROOT /end"), "7");
}

TEST(BlockRules, TheFormIsPartOfTheRule) {
    EXPECT_EQ(notesOf("/begin ECU a /end ECU /end"),
              "-: Error (a.a2l:1): Unexpected token 'ECU' found\n!");
    EXPECT_EQ(notesOf("SUB_GROUP a /end"),
              "-: Error (a.a2l:1): Unexpected token 'SUB_GROUP' found\n!");
}

TEST(BlockRules, WhatNoRuleNames) {
    EXPECT_EQ(notesOf("even /end"), "-: Error (a.a2l:1): Unexpected token 'token=303' found\n!");
    EXPECT_EQ(notesOf("/begin UNIT /end UNIT /end"),
              "-: Error (a.a2l:1): Unexpected token 'UNIT' found\n!");
    EXPECT_EQ(notesOf("/begin UNIT /end UNIT ROOT /end", OtherBlocks::Skipped), "7");
    EXPECT_EQ(notesOf("even /end", OtherBlocks::Skipped),
              "-: Error (a.a2l:1): Unexpected token 'token=303' found\n!");
}

TEST(BlockRules, ATableWithoutBlocksNamesTheBegin) {
    constexpr NoteRule kBareRules[] = {skipped(ROOT, 0)};
    CollectingConsole console;
    PartsReader reader(console);
    MemoryInputFile input("ROOT /begin UNIT");
    reader.start(input);
    Notes notes;
    EXPECT_EQ(readOptionals(reader, kBareRules, notes, reader.next(), OtherBlocks::Wrong),
              TOK_ERROR);
    EXPECT_EQ(console.out, "-: Error (a.a2l:1): Unexpected token '/begin' found\n");
}

TEST(BlockRules, BarePartsAlone) {
    CollectingConsole console;
    PartsReader reader(console);
    MemoryInputFile input("ROOT ECU a 5");
    reader.start(input);
    Notes notes;
    EXPECT_EQ(readBareOptionals(reader, kRules, notes, reader.next()), TOK_INTEGER);
    EXPECT_EQ(notes.text, "7a");
}

TEST(BlockRules, TheRestOfABlock) {
    CollectingConsole console;
    PartsReader reader(console);
    MemoryInputFile input("ROOT /end GROUP 5 /end UNIT");
    reader.start(input);
    Notes notes;
    EXPECT_EQ(readParts(reader, kRules, notes, GROUP, reader.next()), TOK_INTEGER);
    EXPECT_EQ(readParts(reader, kRules, notes, GROUP, reader.next()), TOK_ERROR);
    EXPECT_EQ(console.out, "-: Error (a.a2l:1): Keyword 'GROUP' expected after /end\n");
}

}  // namespace
}  // namespace quillmark
