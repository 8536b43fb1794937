#include "cfginclude/cfg_element.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cfginclude/cfg_children.h"
#include "cfginclude/line_feeds.h"
#include "platform/output_sink.h"

namespace quillmark {
namespace {

enum class Indent { kOff, kOn };

std::string exactTextOf(const CfgElement& element, Indent indent = Indent::kOff, int depth = 0) {
    std::string text;
    StringSink sink(text);
    element.write(sink, indent == Indent::kOn, depth);
    sink.finish();
    return text;
}

std::string textOf(const CfgElement& element, Indent indent = Indent::kOff, int depth = 0) {
    return withLineFeeds(exactTextOf(element, indent, depth));
}

std::string realText(double value) {
    CfgElement element("r");
    element.addRealValue("v", value);
    const std::string text = textOf(element);
    return text.substr(6, text.size() - 6 - 6);
}

TEST(CfgElementWriter, WritesAnEmptyElementAsTwoTags) {
    EXPECT_EQ(exactTextOf(CfgElement("settings")), "<settings>\r\n</settings>\r\n");
}

TEST(CfgElementWriter, WritesCommentsTagValuesChildrenTextsTag) {
    CfgElement root("root");
    root.addText("text 1");
    root.addChild("first").addValue("k", "v");
    root.addValue("a", "1");
    root.addComment("comment 1");
    root.addChild("second");
    root.addValue("a", "2");
    root.addComment(" comment 2");
    root.addText("");
    EXPECT_EQ(textOf(root),
              "#comment 1\n"
              "# comment 2\n"
              "<root>\n"
              "a=1\n"
              "a=2\n"
              "<first>\n"
              "k=v\n"
              "</first>\n"
              "<second>\n"
              "</second>\n"
              "text 1\n"
              "\n"
              "</root>\n");
}

TEST(CfgElementWriter, IndentsEverythingButTexts) {
    CfgElement root("sigtrak_include");
    root.addComment("head");
    root.addValue("cfg_generated_on", "0");
    CfgElement& engines = root.addChild("settings").addChild("signalengines");
    engines.addComment("inner");
    engines.addValue("k", "v");
    engines.addText("raw\nraw");
    EXPECT_EQ(textOf(root, Indent::kOn),
              "#head\n"
              "<sigtrak_include>\n"
              "    cfg_generated_on=0\n"
              "    <settings>\n"
              "        #inner\n"
              "        <signalengines>\n"
              "            k=v\n"
              "raw\nraw\n"
              "        </signalengines>\n"
              "    </settings>\n"
              "</sigtrak_include>\n");
    EXPECT_EQ(textOf(root),
              "#head\n<sigtrak_include>\ncfg_generated_on=0\n<settings>\n#inner\n"
              "<signalengines>\nk=v\nraw\nraw\n</signalengines>\n</settings>\n"
              "</sigtrak_include>\n");
}

TEST(CfgElementWriter, StartsAtTheDepthItIsTold) {
    CfgElement element("e");
    element.addValue("k", "v");
    EXPECT_EQ(textOf(element, Indent::kOn, 10), std::string(40, ' ') + "<e>\n" +
                                                    std::string(44, ' ') + "k=v\n" +
                                                    std::string(40, ' ') + "</e>\n");
    EXPECT_EQ(textOf(element, Indent::kOff, 10), "<e>\nk=v\n</e>\n");
}

TEST(CfgElementWriter, EscapesNothing) {
    CfgElement element("e");
    const std::string odd = "a=b<c>'\"&\r\n#\x01\xff end";
    element.addValue("k", odd);
    element.addQuotedValue("q", "O'Neill");
    element.addQuotedValue("empty", "");
    element.addValue("", "");
    EXPECT_EQ(exactTextOf(element),
              "<e>\r\nk=" + odd + "\r\nq='O'Neill'\r\nempty=''\r\n=\r\n</e>\r\n");
    EXPECT_EQ(exactTextOf(element, Indent::kOn),
              "<e>\r\n    k=" + odd + "\r\n    q='O'Neill'\r\n    empty=''\r\n    =\r\n</e>\r\n");
}

TEST(CfgElementWriter, WritesOnlyTheElementItIsAskedFor) {
    CfgElement root("root");
    CfgElement& first = root.addChild("first");
    root.addChild("second");
    EXPECT_EQ(textOf(first), "<first>\n</first>\n");
}

TEST(CfgElementWriter, SectionChildrenComeBehindThoseThatWereAdded) {
    CfgElement root("root");
    root.setSection([](CfgChildren& children) { children.add("made").addValue("n", "1"); });
    root.addValue("k", "v");
    root.addText("t");
    root.addChild("kept");
    EXPECT_EQ(textOf(root), "<root>\nk=v\n<kept>\n</kept>\n<made>\nn=1\n</made>\nt\n</root>\n");
    EXPECT_EQ(textOf(root, Indent::kOn, 1),
              "    <root>\n        k=v\n        <kept>\n        </kept>\n        <made>\n"
              "            n=1\n        </made>\nt\n    </root>\n");
}

TEST(CfgElementValues, JoinsParts) {
    CfgElement element("e");
    element.addJoinedValue("name", {"prefix.", "signal", "", "[0]"});
    element.addJoinedValue("none", {});
    EXPECT_EQ(textOf(element), "<e>\nname=prefix.signal[0]\nnone=\n</e>\n");
}

TEST(CfgElementValues, WritesIntegersInDecimal) {
    CfgElement element("e");
    for (const std::int64_t value :
         {std::int64_t{0}, std::int64_t{-2147483648}, std::numeric_limits<std::int64_t>::max(),
          std::numeric_limits<std::int64_t>::min()}) {
        element.addIntValue("v", value);
    }
    EXPECT_EQ(textOf(element),
              "<e>\nv=0\nv=-2147483648\nv=9223372036854775807\nv=-9223372036854775808\n</e>\n");
}

TEST(CfgElementValues, WritesHexadecimalInLowerCaseWithoutLeadingZeros) {
    CfgElement element("e");
    for (const std::uint32_t value : {0U, 0x1000U, 0xABCDEFU, 0xFFFFFFFFU}) {
        element.addHexValue("mta", value);
    }
    EXPECT_EQ(textOf(element), "<e>\nmta=0x0\nmta=0x1000\nmta=0xabcdef\nmta=0xffffffff\n</e>\n");
}

TEST(CfgElementValues, WritesRealsWithSixSignificantDigits) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<std::pair<double, std::string>> rows = {
        {0.0, "0"},
        {-0.0, "0"},
        {1.0, "1"},
        {-7.0, "-7"},
        {0.1, "0.1"},
        {-0.5, "-0.5"},
        {1.0 / 3.0, "0.333333"},
        {123456.0, "123456"},
        {999999.0, "999999"},
        {999999.5, "1e+06"},
        {-999999.0, "-999999"},
        {1e6, "1e+06"},
        {1234567.0, "1.23457e+06"},
        {-1234567.0, "-1.23457e+06"},
        {0.0001, "0.0001"},
        {0.00001, "1e-05"},
        {1e100, "1e+100"},
        {4.9e-324, "4.94066e-324"},
        {kInfinity, "inf"},
        {-kInfinity, "-inf"},
        {kNan, "nan"},
        {-kNan, "-nan"},
    };
    for (const auto& [value, expected] : rows) {
        EXPECT_EQ(realText(value), expected);
    }
}

TEST(CfgElementValues, WritesRealsAsPrintfDoes) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponents(-30.0, 30.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::pow(10.0, exponents(random)) * (i % 2 == 0 ? 1.0 : -1.0);
        char expected[64];
        std::snprintf(expected, sizeof expected, "%g", value);
        ASSERT_EQ(realText(value), expected);
    }
}

TEST(CfgElementValues, WritesRealsOfFewDigitsAsPrintfDoes) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> exponents(-5.0, 7.0);
    for (int i = 0; i < 60000; ++i) {
        // As they are, of a few decimals, half-way between two of them, and the next but that.
        double value = std::pow(10.0, exponents(random)) * (i % 2 == 0 ? 1.0 : -1.0);
        if (i % 4 != 0) {
            const double scale = std::pow(10.0, static_cast<double>(random() % 10));
            value = std::round(value * scale) / scale;
        }
        if (i % 8 == 1) {
            std::array<char, 64> six{};
            std::snprintf(six.data(), six.size(), "%.5e", value);
            value = std::strtod(six.data(), nullptr);
            value += 5 * std::pow(10.0, std::floor(std::log10(std::abs(value))) - 6);
        }
        if (i % 16 == 1) {
            value = std::nextafter(value, 0.0);
        }
        std::array<char, 64> expected{};
        std::snprintf(expected.data(), expected.size(), "%g", value);
        ASSERT_EQ(realText(value), value == 0 ? "0" : expected.data());
    }
}

TEST(CfgElementTree, CountsAndAttachesChildren) {
    CfgElement root("root");
    auto owned = std::make_unique<CfgElement>("free");
    CfgElement& free = *owned;
    EXPECT_EQ(root.childCount(), 0U);
    free.addChild("inner");
    root.addChild("first");
    root.attachChild(std::move(owned));
    free.addValue("late", "1");
    EXPECT_EQ(root.childCount(), 2U);
    EXPECT_EQ(root.name(), "root");
    EXPECT_EQ(textOf(root),
              "<root>\n<first>\n</first>\n<free>\nlate=1\n<inner>\n</inner>\n</free>\n</root>\n");
}

TEST(CfgElementTree, KeepsTheOrderOfValuesAddedInTurn) {
    CfgElement root("root");
    CfgElement& left = root.addChild("left");
    CfgElement& right = root.addChild("right");
    std::string leftLines;
    std::string rightLines;
    std::string indentedLeftLines;
    std::string indentedRightLines;
    std::mt19937 random(2);
    for (int i = 0; i < 3000; ++i) {
        const std::string value(random() % (i % 100 == 0 ? 400000 : 300), 'x');
        const bool toLeft = random() % 3 == 0;
        (toLeft ? left : right).addValue("k", value);
        (toLeft ? leftLines : rightLines) += "k=" + value + "\n";
        (toLeft ? indentedLeftLines : indentedRightLines) += "        k=" + value + "\n";
    }
    EXPECT_TRUE(textOf(root) == "<root>\n<left>\n" + leftLines + "</left>\n<right>\n" + rightLines +
                                    "</right>\n</root>\n");
    EXPECT_TRUE(textOf(root, Indent::kOn) == "<root>\n    <left>\n" + indentedLeftLines +
                                                 "    </left>\n    <right>\n" + indentedRightLines +
                                                 "    </right>\n</root>\n");
}

TEST(CfgElementTree, KeepsLinesApartFromALongOneOfAnother) {
    CfgElement root("root");
    CfgElement& left = root.addChild("left");
    CfgElement& right = root.addChild("right");
    const std::string longText(300000, 'x');
    left.addValue("long", longText);
    right.addValue("a", "1");
    left.addValue("long", longText);
    right.addValue("b", "22");
    EXPECT_TRUE(textOf(right, Indent::kOn) == "<right>\n    a=1\n    b=22\n</right>\n");
    EXPECT_TRUE(textOf(left, Indent::kOn) ==
                "<left>\n    long=" + longText + "\n    long=" + longText + "\n</left>\n");
}

TEST(CfgElementTree, TakesValuesOfAnyLength) {
    CfgElement element("e");
    std::string expected = "<e>\n";
    for (const int length :
         {0, 124, 125, 126, 127, 128, 16380, 16381, 16382, 262000, 262144, 1048576, 5000000, 3}) {
        const std::string value(static_cast<std::size_t>(length), 'x');
        element.addValue("k", value);
        expected += "k=" + value + "\n";
    }
    EXPECT_TRUE(textOf(element) == expected + "</e>\n");
}

}  // namespace
}  // namespace quillmark
