#include "cfginclude/cfg_children.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "cfginclude/cfg_element.h"
#include "cfginclude/line_feeds.h"

namespace quillmark {
namespace {

/// The text of what `make` adds to a section at that level.
template <typename Make>
std::string textOf(Make make, bool indent = false, int depth = 0) {
    std::string text;
    StringSink sink(text);
    CfgChildren children(sink, indent, depth);
    make(children);
    children.finish();
    sink.finish();
    return text;
}

void countToTwo(CfgChildren& children) {
    children.add("first").addValue("n", "1");
    children.add("second").addValue("n", "2");
}

TEST(CfgChildren, AreWrittenOneBehindTheOther) {
    EXPECT_EQ(textOf(&countToTwo),
              "<first>\r\nn=1\r\n</first>\r\n<second>\r\nn=2\r\n</second>\r\n");
    EXPECT_EQ(textOf([](CfgChildren&) {}), "");
    EXPECT_EQ(textOf([](CfgChildren& children) { children.add("e"); }), "<e>\r\n</e>\r\n");
}

TEST(CfgChildren, AreIndented) {
    EXPECT_EQ(withLineFeeds(textOf(&countToTwo, true, 2)),
              "        <first>\n            n=1\n        </first>\n"
              "        <second>\n            n=2\n        </second>\n");
}

TEST(CfgChildren, MayHaveChildren) {
    const auto make = [](CfgChildren& children) {
        CfgChild& first = children.add("a");
        first.addValue("k", "v");
        first.addChildren(&countToTwo);
        children.add("b").addChildren(&countToTwo);
    };
    EXPECT_EQ(withLineFeeds(textOf(make, true, 1)),
              "    <a>\n        k=v\n        <first>\n            n=1\n        </first>\n"
              "        <second>\n            n=2\n        </second>\n    </a>\n"
              "    <b>\n        <first>\n            n=1\n        </first>\n"
              "        <second>\n            n=2\n        </second>\n    </b>\n");
}

// Whoever reads the file sees no difference between an element that was kept and one that was not.
TEST(CfgChildren, WriteValuesAsElementsDo) {
    const auto addAll = [](auto& element) {
        for (std::size_t size = 0; size < 1200; ++size) {
            const std::string text(size, static_cast<char>('a' + size % 26));
            element.addValue("k", text);
            element.addJoinedValue("joined", {text, "", "x", text});
        }
        element.addJoinedValue("none", {});
        element.addValue("", "");
        for (const std::int64_t value :
             {std::int64_t{0}, std::int64_t{-7}, std::int64_t{9}, std::int64_t{10},
              std::int64_t{65536}, std::numeric_limits<std::int64_t>::max(),
              std::numeric_limits<std::int64_t>::min()}) {
            element.addIntValue("integer", value);
        }
        element.addHexValue("hex", 0);
        for (unsigned bits = 0; bits < 32; ++bits) {
            for (const std::uint32_t value : {0x89ABCDEFU, 0xFEDCBA98U, 0x70654321U}) {
                element.addHexValue("hex", value >> bits);
            }
        }
        for (const double value : {0.0, -0.0, 1.0, -12.5, 1.0 / 3, 1e6, -1e-300, 1e300}) {
            element.addRealValue("real", value);
        }
    };
    for (const bool indent : {false, true}) {
        CfgElement element("e");
        addAll(element);
        std::string expected;
        StringSink sink(expected);
        element.write(sink, indent, 3);
        sink.finish();
        const std::string text =
            textOf([&](CfgChildren& children) { addAll(children.add("e")); }, indent, 3);
        EXPECT_TRUE(text == expected);
    }
}

}  // namespace
}  // namespace quillmark
