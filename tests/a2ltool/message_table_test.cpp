#include "a2ltool/message_table.h"

#include <set>
#include <string_view>

#include <gtest/gtest.h>

namespace quillmark::a2ltool {
namespace {

std::string_view idOf(Severity severity, std::string_view text) {
    const MessageRow* const row = findMessage(severity, text);
    return row == nullptr ? "none" : row->id;
}

TEST(MessageTable, FindsMessagesByTheirText) {
    EXPECT_EQ(idOf(Severity::Error, "String expected"), "text-expected");
    EXPECT_EQ(idOf(Severity::Error, "String expected (Unit)"), "unit-expected");
    EXPECT_EQ(idOf(Severity::Error, "Unexpected token 'token=303' found"), "unexpected-token");
    EXPECT_EQ(idOf(Severity::Warning, "Array-size mismatch (-5)."), "array-size");
    EXPECT_EQ(idOf(Severity::Error, "something new"), "none");
}

TEST(MessageTable, TellsErrorsFromWarnings) {
    EXPECT_EQ(idOf(Severity::Warning, "Unexpected token 'token=303' found"),
              "unexpected-parameter");
    EXPECT_EQ(idOf(Severity::Warning, "String expected"), "none");
}

TEST(MessageTable, TakesTheClosestOfSeveralPatterns) {
    EXPECT_EQ(idOf(Severity::Error, "Keyword 'IF_DATA' expected after /end"),
              "wrong-end-of-interface");
    EXPECT_EQ(idOf(Severity::Error, "Keyword 'IF_DATA' expected after /end (IGN)"),
              "wrong-end-of-skipped-block");
    EXPECT_EQ(idOf(Severity::Error, "Keyword 'UNIT' expected after /end"), "wrong-end");
}

TEST(MessageTable, NamesEachMessageOnce) {
    std::set<std::string_view> ids;
    for (const MessageRow& row : messageTable()) {
        EXPECT_TRUE(ids.insert(row.id).second) << row.id;
        EXPECT_EQ(idOf(row.severity, row.text), row.id);
        EXPECT_FALSE(row.remedy.empty());
    }
}

}  // namespace
}  // namespace quillmark::a2ltool
