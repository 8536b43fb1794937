// How reading goes on behind an error, when more than the first one is asked for.

#include "a2l/recovery.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

constexpr std::int32_t kAll = 1000000;

/// The errors of a text, such as "2: String expected\n", and "stopped\n" if not all of it was
/// looked at.
std::string errorsOf(std::string_view text, std::int32_t limit = kAll) {
    CollectingConsole console;
    PhRoot root;
    PhA2l reader(console, "a.a2l");
    reader.setErrorLimit(limit);
    MemoryInputFile input(text);
    const int status = reader.parse(root, input);
    EXPECT_EQ(status, console.out.find("Error") == std::string::npos ? 0 : -1);
    std::string errors;
    std::string_view rest = console.out;
    constexpr std::string_view kBegin = "Error (a.a2l:";
    for (std::size_t at = rest.find(kBegin); at != std::string_view::npos; at = rest.find(kBegin)) {
        rest.remove_prefix(at + kBegin.size());
        const std::size_t end = rest.find('\n');
        std::string line(rest.substr(0, end));
        line.erase(line.find(')'), 1);
        errors += line + '\n';
    }
    return reader.reachedEnd() ? errors : errors + "stopped\n";
}

std::string errorsOfModule(std::string_view content, std::int32_t limit = kAll) {
    return errorsOf(moduleText(content), limit);
}

TEST(Recovery, FindsTheErrorsOfEachBlock) {
    EXPECT_EQ(errorsOfModule("/begin UNIT 1 /end UNIT\n"
                             "/begin UNIT u 1 /end UNIT\n"
                             "/begin UNIT v \"\" \"\" DERIVED /end UNIT\n"
                             "/begin GROUP 5 /end GROUP"),
              "1: Identifier expected\n2: String expected\n4: Identifier expected\n");
}

TEST(Recovery, GoesNoFurtherThanTheLimit) {
    const std::string_view content =
        "/begin UNIT 1 /end UNIT\n/begin UNIT 1 /end UNIT\n/begin UNIT 1";
    EXPECT_EQ(errorsOfModule(content, 1), "1: Identifier expected\nstopped\n");
    EXPECT_EQ(errorsOfModule(content, 2),
              "1: Identifier expected\n2: Identifier expected\nstopped\n");
}

TEST(Recovery, SeesTheEndOfABlockAtWhichItFailed) {
    EXPECT_EQ(
        errorsOfModule("/begin UNIT /end UNIT\n/begin UNIT u /end UNIT\n/begin UNIT 3 /end UNIT"),
        "1: Identifier expected\n2: String expected\n3: Identifier expected\n");
}

TEST(Recovery, PassesOverTheRestOfABlockWithAllThatIsInIt) {
    EXPECT_EQ(errorsOfModule("/begin MEASUREMENT m 5 /begin IF_DATA XCP nonsense /end IF_DATA\n"
                             "/begin FUNCTION_LIST 1 /end FUNCTION_LIST /end MEASUREMENT\n"
                             "/begin UNIT 1 /end UNIT"),
              "1: String expected\n3: Identifier expected\n");
}

TEST(Recovery, GoesOnWithTheNextBlockWhereAnEndIsMissing) {
    EXPECT_EQ(errorsOfModule("/begin UNIT 1\n/begin UNIT 2\n/begin COMPU_METHOD 3"),
              "1: Identifier expected\n2: Identifier expected\n3: Identifier expected\n");
}

TEST(Recovery, GoesOnWithTheNextBlockWhereAnEndHasAnotherName) {
    EXPECT_EQ(errorsOfModule("/begin MOD_PAR \"\" /end UNIT\n/begin UNIT 2 /end UNIT"),
              "1: Keyword 'MOD_PAR' expected after /end\n2: Identifier expected\n");
    EXPECT_EQ(errorsOfModule("/begin AXIS_PTS /end UNIT\n/begin UNIT 2 /end UNIT"),
              "1: Keyword 'AXIS_PTS' expected after /end (IGN)\n2: Identifier expected\n");
}

TEST(Recovery, PassesOverBlocksThatNobodyKnows) {
    EXPECT_EQ(
        errorsOfModule("/begin NEW_ONE a /begin INNER 1 /end INNER /end NEW_ONE\n"
                       "/begin NEW_ONE b /begin IF_DATA XCP nonsense /end IF_DATA /end NEW_ONE\n"
                       "nonsense\n"
                       "/begin UNIT 4 /end UNIT"),
        "1: Unexpected token 'token=303' found\n2: Unexpected token 'token=303' found\n"
        "3: Unexpected token 'token=303' found\n4: Identifier expected\n");
}

TEST(Recovery, GoesOnBehindInterfaceBlocks) {
    EXPECT_EQ(errorsOfModule("/begin IF_DATA XCP nonsense /begin DAQ 1 /end DAQ /end IF_DATA\n"
                             "/begin IF_DATA ASAP1B_CCP nonsense\n"
                             "/begin IF_DATA XCP nonsense /end IF_DATA\n"
                             "/begin UNIT 4 /end UNIT"),
              "1: Unexpected token 'token=303' found\n2: Unexpected token 'token=303' found\n"
              "3: Unexpected token 'token=303' found\n4: Identifier expected\n");
}

TEST(Recovery, ReadsTheNextModule) {
    EXPECT_EQ(errorsOf("/begin PROJECT P \"\"\n/begin MODULE M \"\" /begin UNIT 1\n/end MODULE\n"
                       "/begin MODULE N \"\" /begin UNIT 1 /end UNIT\n/end MODULE\n/end PROJECT"),
              "2: Identifier expected\n4: Identifier expected\n");
}

TEST(Recovery, StopsWhereItFindsNoPlaceToGoOn) {
    EXPECT_EQ(errorsOfModule("/begin UNIT 1 /end UNIT\n/end GROUP\n/begin UNIT 3 /end UNIT"),
              "1: Identifier expected\n2: Keyword 'MODULE' expected after /end\nstopped\n");
    EXPECT_EQ(errorsOf("/begin PROJECT P 1 /begin MODULE M \"\" /end MODULE /end PROJECT"),
              "1: String expected\nstopped\n");
    EXPECT_EQ(errorsOf("/begin PROJECT P \"\" /begin MODULE M \"\" /begin UNIT 1 more"),
              "1: Identifier expected\nstopped\n");
}

TEST(Recovery, HasSeenAllOfATextThatIsCutOff) {
    EXPECT_EQ(errorsOf("/begin PROJECT P \"\" /begin MODULE M \"\" /begin UNIT 1"),
              "1: Identifier expected\n");
    EXPECT_EQ(errorsOf("/begin PROJECT P \"\" /begin MODULE M \"\""),
              "1: Unexpected token 'token=304' found\n");
    EXPECT_EQ(errorsOf("/begin PROJECT P \"\" /begin MODULE M \"\" /begin UNIT u \"\" \"\"\n/* x"),
              "2: Error: Unexpected EOF in Comment (Line 2)\n");
}

TEST(Recovery, NeedsNoErrors) {
    EXPECT_EQ(errorsOfModule("/begin UNIT u \"\" \"\" DERIVED /end UNIT"), "");
    EXPECT_EQ(errorsOfModule("/begin UNIT u \"\" \"\" DERIVED /end UNIT", 1), "");
}

}  // namespace
}  // namespace quillmark
