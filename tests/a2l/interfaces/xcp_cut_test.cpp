// One description with every block and keyword of XCP, cut off at every place.

#include <algorithm>

#include <gtest/gtest.h>

#include "a2l/every_block.h"
#include "a2l/parsing.h"

namespace quillmark {
namespace {

TEST(XcpCut, TheWholeTextIsRight) {
    const Parsed parsed = parseText(kEveryXcpBlock);
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console, "");
}

/// What is left of the text can only fail: the project is not closed. The failure is told once, in
/// the last line; before it only warnings may stand.
void expectOneError(std::string_view text) {
    const Parsed parsed = parseText(text);
    EXPECT_EQ(parsed.status, -1) << text;
    std::size_t errors = 0;
    std::string_view rest = parsed.console;
    std::string_view line;
    while (!rest.empty()) {
        line = rest.substr(0, rest.find('\n') + 1);
        rest.remove_prefix(line.size());
        errors += line.starts_with("-: Error (a.a2l:") ? 1U : 0U;
        EXPECT_TRUE(line.starts_with("-: Error (a.a2l:") || line.starts_with("-: Warning (a.a2l:"))
            << parsed.console;
    }
    // A text or a comment that is cut off is told as such, and a text by its reader too.
    const bool cutText = parsed.console.find("Unexpected EOF in string") != std::string::npos;
    EXPECT_EQ(errors, cutText ? 2U : 1U) << parsed.console << "\n" << text;
    EXPECT_TRUE(line.starts_with("-: Error")) << parsed.console;
}

TEST(XcpCut, AtEveryByte) {
    constexpr std::string_view kStart = "/begin PROJECT P \"\" ";
    for (std::size_t length = kStart.size(); length < kEveryXcpBlock.size(); ++length) {
        expectOneError(kEveryXcpBlock.substr(0, length));
    }
}

/// Without one of its words a text may be right or wrong, but its reading ends.
TEST(XcpCut, WithoutEachOfItsWords) {
    std::size_t start = 0;
    while (start < kEveryXcpBlock.size()) {
        const std::size_t end =
            std::min(kEveryXcpBlock.find_first_of(" \n", start), kEveryXcpBlock.size());
        const std::string text =
            std::string(kEveryXcpBlock.substr(0, start)) + std::string(kEveryXcpBlock.substr(end));
        const Parsed parsed = parseText(text);
        EXPECT_EQ(parsed.status, parsed.console.find("Error (") == std::string::npos ? 0 : -1)
            << text;
        start = end + 1;
    }
}

}  // namespace
}  // namespace quillmark
