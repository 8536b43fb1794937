#include "cfginclude/compu_method_output.h"

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "cfginclude/model_making.h"

namespace quillmark {
namespace {

constexpr LibraryFeatures kNoFeatures{};
constexpr LibraryFeatures kValueTables{.writeValueTables = true};

std::string written(const PhConversion& conversion, const LibraryFeatures& features = kValueTables,
                    std::string_view prefix = "") {
    return childrenText(
        [&](CfgChildren& children) { writeCompuMethod(children, conversion, prefix, features); });
}

std::string written(const PhHandle<PhConversion>& conversion,
                    const LibraryFeatures& features = kValueTables, std::string_view prefix = "") {
    return written(*conversion, features, prefix);
}

bool isFallback(const PhHandle<PhConversion>& conversion,
                const LibraryFeatures& features = kValueTables) {
    PhObjectList<PhConversion> list;
    list.append(conversion);
    const IdentityFallbackNames names(list, features);
    return names.contains(conversion->name().view());
}

std::string identity(std::string_view name) {
    return "<scaleoffset>\nname=" + std::string(name) + "\nscale=1\noffset=0\n</scaleoffset>\n";
}

std::string ratFunc(std::string_view name, const std::vector<std::string>& coefficients) {
    std::string text = "<ratfunc>\nname=" + std::string(name) + '\n';
    for (std::size_t i = 0; i < coefficients.size(); ++i) {
        text += "coeff" + std::to_string(i + 1) + '=' + coefficients[i] + '\n';
    }
    return text + "</ratfunc>\n";
}

void addRow(PhConversion& table, PhNumber input, PhNumber output) {
    table.tableEntries.emplace_back(input, input, output);
}

void addRow(PhConversion& table, PhNumber input, std::string_view text) {
    table.tableEntries.emplace_back(input, input, PhString(text));
}

/// A verbal table and the method that names it.
struct VerbalTable {
    PhHandle<PhConversion> table = makeConversion("TAB::t", PhConversionType::Table);
    PhHandle<PhConversion> method = makeConversion("v", PhConversionType::Table);

    VerbalTable() { method->tableRef = table; }
};

TEST(CompuMethodOutput, IdenticalIsAnIdentityUnderItsFullName) {
    const auto ident = makeConversion("ident", PhConversionType::Identity);
    EXPECT_EQ(written(ident, kNoFeatures, "P_"), identity("P_ident"));
    EXPECT_TRUE(isFallback(ident));
}

TEST(CompuMethodOutput, KindsThatTheLoggerDoesNotKnowAreIdentities) {
    for (const auto type : {PhConversionType::Undefined, PhConversionType::Formula,
                            PhConversionType::Code, PhConversionType::Scale}) {
        const auto conversion = makeConversion("c", type, reals({2.0, 3.0}), reals({4.0}));
        EXPECT_EQ(written(conversion), identity("c"));
        EXPECT_TRUE(isFallback(conversion));
    }
}

TEST(CompuMethodOutput, LinearIsScaleAndOffset) {
    const auto linear = makeConversion("lin", PhConversionType::Linear,
                                       {PhNumber::real(0.5), PhNumber::integer(-10)});
    EXPECT_EQ(written(linear, kNoFeatures, "P_"),
              "<scaleoffset>\nname=P_lin\nscale=0.5\noffset=-10\n</scaleoffset>\n");
    EXPECT_FALSE(isFallback(linear));
}

TEST(CompuMethodOutput, LinearTakesItsFirstTwoCoefficients) {
    EXPECT_EQ(written(makeConversion("l", PhConversionType::Linear, integers({2, 3, 4, 5}))),
              "<scaleoffset>\nname=l\nscale=2\noffset=3\n</scaleoffset>\n");
}

TEST(CompuMethodOutput, LinearThatIsTheIdentityIsNoFallback) {
    EXPECT_FALSE(isFallback(makeConversion("l", PhConversionType::Linear, integers({1, 0}))));
}

TEST(CompuMethodOutput, LinearWithoutTwoCoefficientsIsAnIdentity) {
    for (const auto& coeffs : {integers({}), integers({7})}) {
        const auto linear = makeConversion("l", PhConversionType::Linear, coeffs);
        EXPECT_EQ(written(linear), identity("l"));
        EXPECT_TRUE(isFallback(linear));
    }
}

TEST(CompuMethodOutput, RealsAreWrittenInGeneralNotation) {
    struct Row {
        double value;
        std::string_view text;
    };
    constexpr Row kRows[] = {
        {0.1, "0.1"},
        {1e6, "1e+06"},
        {1234567, "1.23457e+06"},
        {123456, "123456"},
        {999999.5, "1e+06"},
        {1e-5, "1e-05"},
        {0.0001, "0.0001"},
        {-0.0, "0"},
        {-2.5, "-2.5"},
        {1.0 / 3.0, "0.333333"},
        {1e100, "1e+100"},
        {5e-324, "4.94066e-324"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {-std::numeric_limits<double>::infinity(), "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const Row& row : kRows) {
        const auto linear =
            makeConversion("l", PhConversionType::Linear, reals({row.value, row.value}));
        const std::string text(row.text);
        EXPECT_EQ(written(linear), "<scaleoffset>\nname=l\nscale=" + text + "\noffset=" + text +
                                       "\n</scaleoffset>\n");
    }
}

// --- rational functions -----------------------------------------------------------------------

// Each line is what the reader makes of COEFFS 0 b c 0 e f, and gives these numbers back.

TEST(CompuMethodOutput, RationalOfALinearFunctionGivesItsCoefficientsBack) {
    const auto conversion =
        makeConversion("r", PhConversionType::Rational, integers({4, -3}), integers({2}));
    EXPECT_EQ(written(conversion, kNoFeatures, "P_"),
              ratFunc("P_r", {"0", "2", "3", "0", "0", "4"}));
    EXPECT_FALSE(isFallback(conversion));
}

TEST(CompuMethodOutput, RationalWithoutLinearTermAboveGivesItsCoefficientsBack) {
    EXPECT_EQ(written(makeConversion("r", PhConversionType::Rational, integers({-5, 10}),
                                     integers({2, 0}))),
              ratFunc("r", {"0", "0", "10", "0", "2", "5"}));
}

TEST(CompuMethodOutput, RationalWithoutConstantBelowGivesItsCoefficientsBack) {
    EXPECT_EQ(
        written(makeConversion("r", PhConversionType::Rational, integers({3}), integers({7, -2}))),
        ratFunc("r", {"0", "2", "3", "0", "7", "0"}));
}

TEST(CompuMethodOutput, RationalWithOneTermBelowHasNoNegativeZero) {
    EXPECT_EQ(
        written(makeConversion("r", PhConversionType::Rational, integers({0, 0}), integers({4}))),
        ratFunc("r", {"0", "4", "0", "0", "0", "0"}));
}

TEST(CompuMethodOutput, RationalThatCouldNotBeInvertedIsAllZeros) {
    const auto conversion = makeConversion("r", PhConversionType::Rational);
    EXPECT_EQ(written(conversion), ratFunc("r", {"0", "0", "0", "0", "0", "0"}));
    EXPECT_FALSE(isFallback(conversion));
}

TEST(CompuMethodOutput, RationalWithOneTermAboveTakesItAsTheConstant) {
    EXPECT_EQ(
        written(makeConversion("r", PhConversionType::Rational, integers({9}), integers({2}))),
        ratFunc("r", {"0", "2", "-9", "0", "0", "0"}));
}

TEST(CompuMethodOutput, RationalWithoutDenominatorTurnsTheSign) {
    EXPECT_EQ(written(makeConversion("r", PhConversionType::Rational, reals({0.5, 8.0}))),
              ratFunc("r", {"0", "0", "-8", "0", "0", "0.5"}));
}

TEST(CompuMethodOutput, RationalIgnoresTermsBehindTheSecond) {
    EXPECT_EQ(written(makeConversion("r", PhConversionType::Rational, integers({1, 2, 3}),
                                     integers({4, 5, 6}))),
              ratFunc("r", {"0", "-5", "2", "0", "4", "-1"}));
}

// --- tables -----------------------------------------------------------------------------------

TEST(CompuMethodOutput, TableOfRealsIsAComputab) {
    const auto table = makeConversion("TAB::t", PhConversionType::Interpolation);
    addRow(*table, PhNumber::real(1.5), PhNumber::real(-0.0));
    addRow(*table, PhNumber::integer(2), PhNumber::integer(3));
    const auto method = makeConversion("m", PhConversionType::Table);
    method->tableRef = table;
    const std::string points =
        "<tablepoint>\nx=1.5\ny=0\n</tablepoint>\n<tablepoint>\nx=2\ny=3\n</tablepoint>\n"
        "</computab>\n";
    EXPECT_EQ(written(method, kNoFeatures, "P_"), "<computab>\nname=P_m\ninterpolate=0\n" + points);
    EXPECT_FALSE(isFallback(method, kNoFeatures));
    method->conversionType = PhConversionType::Interpolation;
    EXPECT_EQ(written(method, kNoFeatures), "<computab>\nname=m\ninterpolate=1\n" + points);
}

TEST(CompuMethodOutput, TableOfRealsThatHoldsATextLaterWritesZeroForIt) {
    const auto method = makeConversion("m", PhConversionType::Table);
    addRow(*method, PhNumber::real(1.0), PhNumber::real(2.0));
    addRow(*method, PhNumber::integer(3), "text");
    EXPECT_EQ(written(method),
              "<computab>\nname=m\ninterpolate=0\n<tablepoint>\nx=1\ny=2\n</tablepoint>\n"
              "<tablepoint>\nx=3\ny=0\n</tablepoint>\n</computab>\n");
}

TEST(CompuMethodOutput, FirstRowDecidesForTheWholeTable) {
    struct Row {
        PhNumber input;
        PhNumber output;
    };
    const Row rows[] = {
        {PhNumber::integer(1), PhNumber::integer(2)},
        {PhNumber::real(1.0), PhNumber::integer(2)},
        {PhNumber::integer(1), PhNumber::real(2.0)},
    };
    for (const Row& row : rows) {
        const auto method = makeConversion("m", PhConversionType::Interpolation);
        addRow(*method, row.input, row.output);
        addRow(*method, PhNumber::real(3.0), PhNumber::real(4.0));
        EXPECT_EQ(written(method), identity("m"));
        EXPECT_TRUE(isFallback(method));
    }
}

TEST(CompuMethodOutput, OwnRowsGoBeforeThoseOfTheNamedTable) {
    VerbalTable verbal;
    addRow(*verbal.table, PhNumber::integer(0), "other");
    addRow(*verbal.method, PhNumber::integer(1), "own");
    verbal.table->defaultText = PhString("default");
    EXPECT_EQ(written(verbal.method),
              "<vtab>\nname=v\ndefault=default\n<entry>\nvalue=1\ntext=own\n</entry>\n</vtab>\n");
}

TEST(CompuMethodOutput, TableWithoutRowsIsAnIdentity) {
    const auto alone = makeConversion("m", PhConversionType::Table);
    EXPECT_EQ(written(alone), identity("m"));
    EXPECT_TRUE(isFallback(alone));
    const VerbalTable verbal;
    EXPECT_EQ(written(verbal.method), identity("v"));
    EXPECT_TRUE(isFallback(verbal.method));
}

TEST(CompuMethodOutput, TableObjectItselfIsNotWritten) {
    for (const auto type : {PhConversionType::Table, PhConversionType::Interpolation}) {
        const auto table = makeConversion("TAB::speed", type);
        EXPECT_EQ(written(table, kValueTables, "P_"), "");
        EXPECT_FALSE(isFallback(table));
        addRow(*table, PhNumber::real(1.0), PhNumber::real(2.0));
        EXPECT_EQ(written(table, kValueTables, "P_"), "");
    }
    EXPECT_EQ(written(makeConversion("TAB:speed", PhConversionType::Table)), identity("TAB:speed"));
    // Only the conversion's own name counts, not what the prefix makes of it.
    EXPECT_EQ(written(makeConversion("::speed", PhConversionType::Table), kValueTables, "TAB"),
              identity("TAB::speed"));
}

TEST(CompuMethodOutput, VerbalTableIsWrittenForLibrariesThatKnowIt) {
    VerbalTable verbal;
    addRow(*verbal.table, PhNumber::integer(0), "OFF");
    addRow(*verbal.table, PhNumber::integer(-1), "");
    EXPECT_EQ(written(verbal.method, kValueTables, "P_"),
              "<vtab>\nname=P_v\n<entry>\nvalue=0\ntext=OFF\n</entry>\n"
              "<entry>\nvalue=-1\ntext=\n</entry>\n</vtab>\n");
    EXPECT_FALSE(isFallback(verbal.method));
    EXPECT_EQ(written(verbal.method, kNoFeatures, "P_"), identity("P_v"));
    EXPECT_TRUE(isFallback(verbal.method, kNoFeatures));
}

TEST(CompuMethodOutput, VerbalTableMayBeginWithAnEmptyText) {
    VerbalTable verbal;
    addRow(*verbal.table, PhNumber::integer(0), "");
    EXPECT_EQ(written(verbal.method),
              "<vtab>\nname=v\n<entry>\nvalue=0\ntext=\n</entry>\n</vtab>\n");
}

TEST(CompuMethodOutput, VerbalTableOfAnInterpolatedMethodIsWrittenTheSame) {
    VerbalTable verbal;
    verbal.method->conversionType = PhConversionType::Interpolation;
    addRow(*verbal.table, PhNumber::integer(0), "OFF");
    EXPECT_EQ(written(verbal.method),
              "<vtab>\nname=v\n<entry>\nvalue=0\ntext=OFF\n</entry>\n</vtab>\n");
}

TEST(CompuMethodOutput, RangesAreWrittenWithTheirLowerValue) {
    VerbalTable verbal;
    auto& rows = verbal.table->tableEntries;
    rows.emplace_back(PhNumber::integer(1), PhNumber::integer(5), PhString("low"));
    rows.emplace_back(PhNumber::real(6.9), PhNumber::real(9.0), PhString("high"));
    EXPECT_EQ(written(verbal.method),
              "<vtab>\nname=v\n<entry>\nvalue=1\ntext=low\n</entry>\n"
              "<entry>\nvalue=6\ntext=high\n</entry>\n</vtab>\n");
}

TEST(CompuMethodOutput, RangesThatBeginWithARealAreAnIdentity) {
    VerbalTable verbal;
    verbal.table->tableEntries.emplace_back(PhNumber::real(1.0), PhNumber::integer(5),
                                            PhString("low"));
    EXPECT_EQ(written(verbal.method), identity("v"));
    EXPECT_TRUE(isFallback(verbal.method));
}

TEST(CompuMethodOutput, InputsAreTruncatedAndKeptInRange) {
    struct Row {
        double input;
        std::string_view text;
    };
    constexpr Row kRows[] = {
        {2.9, "2"},
        {-2.9, "-2"},
        {-0.5, "0"},
        {1e10, "2147483647"},
        {-1e10, "-2147483648"},
        {2147483647.0, "2147483647"},
        {-2147483648.0, "-2147483648"},
        {std::numeric_limits<double>::infinity(), "2147483647"},
        {std::numeric_limits<double>::quiet_NaN(), "0"},
    };
    VerbalTable verbal;
    addRow(*verbal.table, PhNumber::integer(7), "first");
    std::string expected = "<vtab>\nname=v\n<entry>\nvalue=7\ntext=first\n</entry>\n";
    for (const Row& row : kRows) {
        addRow(*verbal.table, PhNumber::real(row.input), "t");
        expected += "<entry>\nvalue=" + std::string(row.text) + "\ntext=t\n</entry>\n";
    }
    EXPECT_EQ(written(verbal.method), expected + "</vtab>\n");
}

TEST(CompuMethodOutput, DefaultComesFromTheNamedTableOnly) {
    VerbalTable verbal;
    addRow(*verbal.table, PhNumber::integer(0), "OFF");
    verbal.method->defaultText = PhString("ignored");
    const std::string row = "<entry>\nvalue=0\ntext=OFF\n</entry>\n</vtab>\n";
    EXPECT_EQ(written(verbal.method), "<vtab>\nname=v\n" + row);
    verbal.table->defaultText = PhString("a=\"<b>\"");
    EXPECT_EQ(written(verbal.method), "<vtab>\nname=v\ndefault=a=\"<b>\"\n" + row);
    verbal.table->defaultText = PhString("");
    EXPECT_EQ(written(verbal.method), "<vtab>\nname=v\ndefault=\n" + row);
}

TEST(CompuMethodOutput, VerbalTableOfItsOwnHasNoDefault) {
    const auto method = makeConversion("v", PhConversionType::Table);
    method->defaultText = PhString("ignored");
    addRow(*method, PhNumber::integer(0), "OFF");
    EXPECT_EQ(written(method), "<vtab>\nname=v\n<entry>\nvalue=0\ntext=OFF\n</entry>\n</vtab>\n");
}

// --- fallback names ---------------------------------------------------------------------------

TEST(IdentityFallbackNames, OneIdentityOfANameIsEnough) {
    const auto identical = makeConversion("twice", PhConversionType::Identity);
    const auto linear = makeConversion("twice", PhConversionType::Linear, integers({2, 0}));
    for (const auto& [first, second] :
         {std::pair(identical, linear), std::pair(linear, identical)}) {
        PhObjectList<PhConversion> list;
        list.append(first);
        list.append(second);
        list.append(makeConversion("once", PhConversionType::Linear, integers({2, 0})));
        const IdentityFallbackNames names(list, kNoFeatures);
        EXPECT_TRUE(names.contains("twice"));
        EXPECT_FALSE(names.contains("once"));
        EXPECT_FALSE(names.contains("twic"));
        EXPECT_FALSE(names.contains(""));
    }
}

TEST(IdentityFallbackNames, NoConversionsNoNames) {
    const PhObjectList<PhConversion> list;
    EXPECT_FALSE(IdentityFallbackNames(list, kNoFeatures).contains(""));
}

}  // namespace
}  // namespace quillmark
