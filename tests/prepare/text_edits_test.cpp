#include "prepare/text_edits.h"

#include <gtest/gtest.h>

namespace quillmark::preparing {
namespace {

std::string without(std::string_view text, std::string_view word) {
    TextEdits edits;
    const std::size_t from = text.find(word);
    edits.takeOut(text, from, from + word.size());
    return edits.apply(text);
}

TEST(TextEdits, TakesWordsOutWithTheBlanksBeforeThem) {
    EXPECT_EQ(without("a  X b", "X"), "a b");
    EXPECT_EQ(without("a X", "X"), "a");
    EXPECT_EQ(without("a X*b", "X"), "a *b");
    EXPECT_EQ(without("X b", "X"), "b");
    EXPECT_EQ(without("\"a\"X\"b\"", "X"), "\"a\" \"b\"");
}

TEST(TextEdits, TakesLinesOutThatWordsFill) {
    EXPECT_EQ(without("a\n  X\nb", "X"), "a\nb");
    EXPECT_EQ(without("a\r\n  X \r\nb", "X"), "a\r\nb");
    EXPECT_EQ(without("a\n  X b\n", "X"), "a\n  b\n");
    EXPECT_EQ(without("a X\nb", "X"), "a\nb");
}

TEST(TextEdits, BringsChangesIntoOrder) {
    TextEdits edits;
    edits.replace(4, 5, "E");
    edits.replace(0, 3, "abc");
    edits.replace(1, 2, "lost");
    EXPECT_EQ(edits.apply("xxx-x-"), "abc-E-");
}

TEST(TextEdits, TakesNeighboursOut) {
    const std::string_view text = "a X\n/begin Y /end Y Z 1 b";
    TextEdits edits;
    edits.takeOut(text, 2, 3);
    edits.takeOut(text, 4, 19);
    edits.takeOut(text, 20, 23);
    EXPECT_EQ(edits.apply(text), "a\n b");
}

}  // namespace
}  // namespace quillmark::preparing
