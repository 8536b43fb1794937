#include "a2ltool/source_lines.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/input_file.h"

namespace quillmark::a2ltool {
namespace {

/// The lines of a text that findings on these lines get, which arrives in pieces of that size.
std::vector<std::string> linesOf(std::string_view text, std::initializer_list<std::int32_t> numbers,
                                 std::size_t pieceSize = 0) {
    std::vector<ReportedFinding> findings;
    for (const std::int32_t number : numbers) {
        findings.emplace_back().line = number;
    }
    MemoryInputFile input(text, pieceSize);
    fetchSourceLines(input, findings);
    std::vector<std::string> lines;
    for (const ReportedFinding& finding : findings) {
        lines.push_back(finding.sourceLine);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(SourceLines, AreThoseOfTheFindings) {
    constexpr std::string_view kText = "one\ntwo\r\n\nfour";
    EXPECT_EQ(linesOf(kText, {1, 2, 3, 4}), (Lines{"one", "two", "", "four"}));
    EXPECT_EQ(linesOf(kText, {2, 4}, 1), (Lines{"two", "four"}));
}

TEST(SourceLines, MayBeAskedForInAnyOrderAndTwice) {
    EXPECT_EQ(linesOf("one\ntwo\nthree\n", {3, 1, 3}), (Lines{"three", "one", "three"}));
}

TEST(SourceLines, AreEmptyWhereThereAreNone) {
    EXPECT_EQ(linesOf("one\n", {0, 1, 2, 3}), (Lines{"", "one", "", ""}));
    EXPECT_EQ(linesOf("", {1}), (Lines{""}));
}

TEST(SourceLines, AreCutWhereTheyHaveNoEnd) {
    constexpr std::size_t kKept = 65536;
    const std::string longLine(3 * kKept, 'x');
    EXPECT_EQ(linesOf(longLine + "\nnext", {1, 2}, 1000), (Lines{std::string(kKept, 'x'), "next"}));
}

}  // namespace
}  // namespace quillmark::a2ltool
