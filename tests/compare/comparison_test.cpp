#include "compare/comparison.h"

#include <limits>

#include <gtest/gtest.h>

#include "compare/report_text.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

class Primitives : public testing::Test {
  protected:
    std::string findings() {
        const std::string text = reportText(report);
        report.clear();
        return text;
    }
    std::string shown() { return std::exchange(console.out, {}); }

    CompareReport report;
    CollectingConsole console;
    Comparison quiet{report, false, console};
    Comparison verbose{report, true, console};
};

PhHandle<PhValue> integer(std::int64_t value) {
    return PhValue::ofInteger(value);
}

PhHandle<PhValue> real(double value) {
    return PhValue::ofNumber(PhNumber::real(value));
}

TEST_F(Primitives, OnlyADifferenceIsAFinding) {
    compareInt(quiet, PairLabel("a"), 1, 1);
    EXPECT_EQ(findings(), "");
    compareInt(quiet, PairLabel("a"), 1, 2);
    EXPECT_EQ(findings(), "1 a values are not equal\n");
    compareBool(quiet, PairLabel("b"), true, true);
    EXPECT_EQ(findings(), "");
    compareBool(quiet, PairLabel("b"), true, false);
    EXPECT_EQ(findings(), "1 b values are not equal\n");
    compareText(quiet, PairLabel("c", "texts differ"), "x", "x");
    EXPECT_EQ(findings(), "");
    compareText(quiet, PairLabel("c", "texts differ"), "x", "X");
    EXPECT_EQ(findings(), "1 texts differ\n");
    EXPECT_EQ(shown(), "");
}

TEST_F(Primitives, VerboseShowsOldThenNew) {
    compareInt(verbose, PairLabel("a"), -7, 12);
    EXPECT_EQ(shown(), "  a = -7 # 12\n");
    compareBool(verbose, PairLabel("b"), true, false);
    EXPECT_EQ(shown(), "  b = true # false\n");
    compareInt(verbose, PairLabel("a"), 1, 0);
    EXPECT_EQ(shown(), "  a = 1 # 0\n");
    compareText(verbose, PairLabel("c", "texts differ"), "", "x y");
    EXPECT_EQ(shown(), "  c =  # x y\n");
    compareValue(verbose, PairLabel("d"), nullptr, integer(3).get());
    EXPECT_EQ(shown(), "  d = NULL # 3\n");
    EXPECT_EQ(findings(),
              "1 a values are not equal\n1 b values are not equal\n1 a values are not equal\n"
              "1 texts differ\n1 d values are not equal\n");
}

TEST_F(Primitives, EqualValuesAreShownToo) {
    compareInt(verbose, PairLabel("a"), 5, 5);
    compareValue(verbose, PairLabel("d"), nullptr, nullptr);
    EXPECT_EQ(shown(), "  a = 5 # 5\n  d = NULL # NULL\n");
    EXPECT_EQ(findings(), "");
}

TEST_F(Primitives, ValuesAreEqualWithinTheirKind) {
    const auto text = PhValue::ofText("5");
    const auto nan = real(std::numeric_limits<double>::quiet_NaN());
    const auto differ = [&](const PhHandle<PhValue>& left, const PhHandle<PhValue>& right) {
        compareValue(quiet, PairLabel("d"), left.get(), right.get());
        return findings() == "1 d values are not equal\n";
    };
    EXPECT_FALSE(differ(integer(5), integer(5)));
    EXPECT_TRUE(differ(integer(5), integer(6)));
    EXPECT_FALSE(differ(real(5.5), real(5.5)));
    EXPECT_TRUE(differ(real(5.5), real(5.25)));
    EXPECT_FALSE(differ(text, PhValue::ofText("5")));
    EXPECT_TRUE(differ(PhValue::ofText("a"), PhValue::ofText("A")));
    EXPECT_TRUE(differ(integer(5), real(5.0)));
    EXPECT_TRUE(differ(integer(5), text));
    EXPECT_TRUE(differ(real(5.0), text));
    EXPECT_TRUE(differ(nan, nan));
    EXPECT_TRUE(differ(integer(0), {}));
    EXPECT_TRUE(differ({}, PhValue::ofText("")));
    EXPECT_FALSE(differ({}, {}));
}

TEST_F(Primitives, ShownValues) {
    EXPECT_EQ(shownValue(nullptr), "NULL");
    EXPECT_EQ(shownValue(integer(-2147483648LL).get()), "-2147483648");
    EXPECT_EQ(shownValue(PhValue::ofText("unlock.dll").get()), "unlock.dll");
    EXPECT_EQ(shownValue(PhValue::ofText("").get()), "");
    EXPECT_EQ(shownValue(real(8.0).get()), "8");
    EXPECT_EQ(shownValue(real(0.1).get()), "0.1");
    EXPECT_EQ(shownValue(real(1234567.0).get()), "1.23457e+06");
    EXPECT_EQ(shownValue(real(-0.0000125).get()), "-1.25e-05");
    EXPECT_EQ(shownValue(makePh<PhValue>().get()), "<unkown>");
    const auto list = makePh<PhValue>();
    list->list();
    EXPECT_EQ(shownValue(list.get()), "<unkown>");
    const auto bytes = makePh<PhValue>();
    bytes->setBytes({1, 2});
    EXPECT_EQ(shownValue(bytes.get()), "<unkown>");
}

TEST_F(Primitives, Presence) {
    EXPECT_TRUE(checkPresent(report, true, true, "sources"));
    EXPECT_FALSE(checkPresent(report, false, false, "sources"));
    EXPECT_EQ(findings(), "");
    EXPECT_FALSE(checkPresent(report, true, false, "sources"));
    EXPECT_EQ(findings(), "1 module2 does not contain sources\n");
    EXPECT_FALSE(checkPresent(report, false, true, "sources"));
    EXPECT_EQ(findings(), "1 module1 does not contain sources\n");
}

TEST_F(Primitives, AFindingHoldsWhatWasCompared) {
    const auto pairs = [this] {
        std::string text;
        for (const CompareFinding& finding : std::exchange(report, {})) {
            const ComparedPair& pair = finding.pair;
            text += pair.what + ": " + pair.oldText + " -> " + pair.newText + "\n";
        }
        return text;
    };
    compareInt(quiet, PairLabel("a"), 1, -2);
    compareBool(quiet, PairLabel("b"), true, false);
    compareText(quiet, PairLabel("c", "texts differ"), "x", "");
    compareValue(quiet, PairLabel("d"), integer(1).get(), real(1).get());
    compareValue(quiet, PairLabel("e"), nullptr, real(2.5).get());
    checkPresent(report, true, false, "part");
    EXPECT_EQ(pairs(),
              "a: 1 -> -2\nb: true -> false\nc: x -> \nd: 1 -> 1\ne: NULL -> 2.5\n"
              "part: present -> absent\n");
}

}  // namespace
}  // namespace quillmark
