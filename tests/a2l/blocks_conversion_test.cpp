#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

/// Dump of a rational method with these optional parts.
std::string method(std::string_view optional, std::string_view kind = "RAT_FUNC") {
    return moduleDump("/begin COMPU_METHOD c \"\" " + std::string(kind) + " \"%4.1\" \"V\" " +
                      std::string(optional) + " /end COMPU_METHOD");
}

const std::string kHead = "conversion c longIdentifier=\"\" conversionType=CtRational unit=V\n";

TEST(CompuMethod, KindWords) {
    const std::pair<const char*, const char*> rows[] = {
        {"IDENTICAL", "CtIdentity"},     {"LINEAR", "CtLinear"},    {"RAT_FUNC", "CtRational"},
        {"TAB_INTP", "CtInterpolation"}, {"TAB_NOINTP", "CtTable"}, {"TAB_VERB", "CtTable"},
        {"FORM", "CtFormula"},
    };
    for (const auto& [word, type] : rows) {
        EXPECT_EQ(method("", word), "conversion c longIdentifier=\"\" conversionType=" +
                                        std::string(type) + " unit=V\n");
    }
}

TEST(CompuMethod, UnknownKindIsWarnedOfAndKept) {
    const Parsed parsed = parseModule(
        "/begin COMPU_METHOD c \"\" UBYTE \"\" \"\" /end COMPU_METHOD"
        "/begin COMPU_METHOD d \"\" OTHER \"\" \"\" /end COMPU_METHOD");
    // The first block's closing word runs into the second block's slash.
    EXPECT_EQ(parsed.console,
              "-: Warning (a.a2l:1): Unexpected token 'UBYTE' found\n"
              "-: Error (a.a2l:1): Keyword 'COMPU_METHOD' expected after /end\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD d \"\" OTHER \"\" \"\" /end COMPU_METHOD"),
              "Warning 1: Unexpected token 'token=303' found\n");
}

TEST(CompuMethod, FormatAndUnitMayBeUnquoted) {
    EXPECT_EQ(
        moduleDump("/begin COMPU_METHOD c \"\" LINEAR %4.1 km*h_%-1.5[x]|\xC4 /end COMPU_METHOD"),
        "conversion c longIdentifier=\"\" conversionType=CtLinear "
        "unit=\"km*h_%-1.5[x]|\\xc4\"\n");
    EXPECT_EQ(moduleDump("/begin COMPU_METHOD c \"\" LINEAR x NULL /end COMPU_METHOD"),
              "conversion c longIdentifier=\"\" conversionType=CtLinear unit=NULL\n");
}

TEST(CompuMethod, EmptyUnitIsAUnitWithAnEmptyName) {
    EXPECT_EQ(moduleDump("/begin COMPU_METHOD c \"\" LINEAR \"\" \"\" /end COMPU_METHOD"),
              "conversion c longIdentifier=\"\" conversionType=CtLinear unit=\"\"\n");
}

TEST(CompuMethod, HeadErrors) {
    EXPECT_EQ(messages("/begin COMPU_METHOD \"c\""), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c x"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c NULL LINEAR \"\" /end"),
              "Error 1: String expected (Unit)\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" LINEAR \"\" \"\" SIGN_EXTEND"),
              "Error 1: Unexpected token 'SIGN_EXTEND' found\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" LINEAR \"\" \"\" /begin ANNOTATION"),
              "Error 1: Unexpected token 'ANNOTATION' found\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" LINEAR \"\" \"\" /end COMPU_TAB"),
              "Error 1: Keyword 'COMPU_METHOD' expected after /end\n");
}

TEST(Coeffs, LinearFunctionsAreInverted) {
    EXPECT_EQ(method("COEFFS 0 1 0 0 0 1"), kHead + "  coeffs 1 0\n  denominatorCoeffs 1\n");
    EXPECT_EQ(method("COEFFS 0 2 3 0 0 4"), kHead + "  coeffs 4 -3\n  denominatorCoeffs 2\n");
    EXPECT_EQ(method("COEFFS 0 0.5 1.5 0.0 0 2"),
              kHead + "  coeffs 2 -1.5\n  denominatorCoeffs 0.5\n");
    EXPECT_EQ(method("COEFFS 0 0 0 0 0 0"), kHead + "  coeffs 0 0\n  denominatorCoeffs 0\n");
}

TEST(Coeffs, ReciprocalFunctionsAreInverted) {
    EXPECT_EQ(method("COEFFS 0 0 10 0 2 0"), kHead + "  coeffs 0 10\n  denominatorCoeffs 2 0\n");
    EXPECT_EQ(method("COEFFS 0 0 10 0 2.0 3"),
              kHead + "  coeffs -3 10\n  denominatorCoeffs 2.0 0\n");
    EXPECT_EQ(method("COEFFS 0 5 10 0 2 0"), kHead + "  coeffs 10\n  denominatorCoeffs 2 -5\n");
}

TEST(Coeffs, SmallestIntegerIsNegatedExactly) {
    EXPECT_EQ(method("COEFFS 0 1 -2147483648 0 0 1"),
              kHead + "  coeffs 1 2147483648\n  denominatorCoeffs 1\n");
}

TEST(Coeffs, OtherFunctionsAreWarnedOfAndLeaveEmptyLists) {
    for (const char* numbers : {"1 0 0 0 0 1", "0 1 0 1 0 0", "0 1 1 0 1 1", "1.5 1 0 0 0 1"}) {
        EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" RAT_FUNC \"\" \"\"\nCOEFFS " +
                           std::string(numbers) + "\n/end COMPU_METHOD"),
                  "Warning 2: Unable to compute inverse function in conversion 'c'\n")
            << numbers;
    }
}

TEST(Coeffs, AMissingCoefficientIsWarnedOfAndLeftOut) {
    const Parsed parsed = parseModule(
        "/begin COMPU_METHOD c \"\" RAT_FUNC \"\" \"V\" COEFFS 0 1 x 0 0 y /end COMPU_METHOD");
    EXPECT_EQ(parsed.console,
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n");
    EXPECT_NE(parsed.model.find("unit=V\n        denominatorCoeffs 1\n"), std::string::npos)
        << parsed.model;
}

TEST(Coeffs, ASecondLineReplacesBothLists) {
    EXPECT_EQ(method("COEFFS_LINEAR 7 8 COEFFS 0 1 0 0 0 1 COEFFS 0 0 10 0 2 0"),
              kHead + "  coeffs 0 10\n  denominatorCoeffs 2 0\n");
    const Parsed parsed = parseModule(
        "/begin COMPU_METHOD c \"\" RAT_FUNC \"\" \"V\" COEFFS 0 1 0 0 0 1 COEFFS 1 0 0 0 0 1 /end "
        "COMPU_METHOD");
    EXPECT_EQ(parsed.model.find("oeffs "), std::string::npos);
}

TEST(CoeffsLinear, PairsAreAppended) {
    EXPECT_EQ(method("COEFFS_LINEAR 0.5 -10 COEFFS_LINEAR 3 4"), kHead + "  coeffs 0.5 -10 3 4\n");
    EXPECT_EQ(
        messages("/begin COMPU_METHOD c \"\" LINEAR \"\" \"\" COEFFS_LINEAR 1 x /end COMPU_METHOD"),
        "Warning 1: Unexpected token 'token=303' found\n");
}

TEST(CompuMethod, RefUnitReplacesTheInlineUnit) {
    const std::string method =
        "/begin COMPU_METHOD c \"\" LINEAR \"\" \"V\" REF_UNIT kmh /end COMPU_METHOD ";
    const std::string unit = "/begin UNIT kmh \"\" \"km/h\" DERIVED /end UNIT ";
    const std::string methodDump =
        "conversion c longIdentifier=\"\" conversionType=CtLinear unit=kmh";
    const std::string unitDump = "\nunit kmh longIdentifier=\"\" displayText=\"km/h\"\n";
    EXPECT_EQ(moduleDump(method + unit), methodDump + unitDump);
    EXPECT_EQ(moduleDump(unit + method), methodDump + unitDump);
    EXPECT_EQ(moduleDump(method), methodDump + "!\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" LINEAR \"\" \"V\" REF_UNIT \"x\""),
              "Error 1: Identifier expected\n");
}

TEST(CompuMethod, TableReferenceIsFoundUnderItsPrefixedName) {
    const std::string method =
        "/begin COMPU_METHOD T1 \"\" TAB_INTP \"\" \"\" COMPU_TAB_REF T1 /end COMPU_METHOD ";
    const std::string table = "/begin COMPU_TAB T1 \"\" TAB_INTP 1 1.0 2.5 /end COMPU_TAB ";
    const std::string methodDump =
        "conversion T1 longIdentifier=\"\" conversionType=CtInterpolation unit=\"\" "
        "tableRef=TAB::T1";
    const std::string tableDump =
        "conversion TAB::T1 longIdentifier=\"\" conversionType=CtInterpolation\n"
        "  tableEntry lower=1.0 upper=1.0 output=2.5\n";
    EXPECT_EQ(moduleDump(method + table), methodDump + "\n" + tableDump);
    EXPECT_EQ(moduleDump(table + method), tableDump + methodDump + "\n");
    EXPECT_EQ(moduleDump(method), methodDump + "!\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" LINEAR \"\" \"V\" COMPU_TAB_REF 5"),
              "Error 1: Identifier expected\n");
}

TEST(CompuMethod, FormatAndFormulaAreKeptWhereTheyAreWanted) {
    const ReaderSwitches keeping{.parts = {.formats = true}};
    const auto kept = [&](std::string_view formula) {
        const std::string model = parseModule("/begin COMPU_METHOD c \"\" FORM %4.1 \"V\" " +
                                                  std::string(formula) + " /end COMPU_METHOD",
                                              keeping)
                                      .model;
        const std::size_t start = model.find(" displayFormat");
        return model.substr(start, model.find('\n', start) - start);
    };
    EXPECT_EQ(kept(""), " displayFormat=\"%4.1\"");
    EXPECT_EQ(kept("/begin FORMULA \"X1+1\" FORMULA_INV \"X1-1\" /end FORMULA"),
              " displayFormat=\"%4.1\" formula=\"X1+1\" inverseFormula=\"X1-1\"");
    EXPECT_EQ(kept("/begin FORMULA FORMULA_INV 5 /end FORMULA"), " displayFormat=\"%4.1\"");
}

TEST(CompuMethod, StatusStringAndFormulaAreReadOver) {
    EXPECT_EQ(
        method("STATUS_STRING_REF s /begin FORMULA \"X1\" FORMULA_INV \"X1\" FORMULA_INV \"\" /end "
               "FORMULA /begin FORMULA /end FORMULA",
               "FORM"),
        "conversion c longIdentifier=\"\" conversionType=CtFormula unit=V\n");
    EXPECT_EQ(
        messages(
            "/begin COMPU_METHOD c \"\" FORM \"\" \"\" /begin FORMULA \"a\" /end COMPU_METHOD"),
        "Error 1: Keyword 'FORMULA' expected after /end\n");
    EXPECT_EQ(messages("/begin COMPU_METHOD c \"\" FORM \"\" \"\" /begin FORMULA \"a\" \"b\""),
              "Error 1: Unexpected token 'token=302' found\n");
}

TEST(CompuTab, KeepsKindsAndOrder) {
    EXPECT_EQ(
        moduleDump(
            "/begin COMPU_TAB T \"text\" TAB_NOINTP 2 5 1.5 -1.0 2 DEFAULT_VALUE_NUMERIC 300.0 "
            "DEFAULT_VALUE \"a\" DEFAULT_VALUE \"b\" /end COMPU_TAB"),
        "conversion TAB::T longIdentifier=\"text\" conversionType=CtTable defaultText=\"b\"\n"
        "  tableEntry lower=5 upper=5 output=1.5\n"
        "  tableEntry lower=-1.0 upper=-1.0 output=2\n");
}

TEST(CompuTab, OtherKindWordsWarnAndGiveATable) {
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_VERB 0 /end COMPU_TAB"),
              "Warning 1: Unexpected token 'TAB_VERB' found\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB T \"\" TAB_INTP 0 /end COMPU_VTAB"),
              "Warning 1: Unexpected token 'TAB_INTP' found\n");
    EXPECT_NE(parseModule("/begin COMPU_TAB T \"\" FORM 0 /end COMPU_TAB").model.find("CtTable"),
              std::string::npos);
}

TEST(CompuTab, Errors) {
    EXPECT_EQ(messages("/begin COMPU_TAB 5"), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin COMPU_TAB T 5"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_INTP 1.5"),
              "Error 1: Integer value (element count) expected\n");
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_INTP 2 1 2 3 /end COMPU_TAB"),
              "Error 1: Double or integer value expected\n");
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_INTP 1 1 2 3"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_INTP 0 DEFAULT_VALUE 5"),
              "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_INTP 0 /end COMPU_VTAB"),
              "Error 1: Keyword 'COMPU_TAB' expected after /end\n");
}

TEST(CompuTab, NegativeCountIsNone) {
    EXPECT_EQ(moduleDump("/begin COMPU_TAB T \"\" TAB_INTP -3 /end COMPU_TAB"),
              "conversion TAB::T longIdentifier=\"\" conversionType=CtInterpolation\n");
}

TEST(CompuTab, HugeCountAllocatesNothingAhead) {
    EXPECT_EQ(messages("/begin COMPU_TAB T \"\" TAB_INTP 2147483647 1 2 /end COMPU_TAB"),
              "Error 1: Double or integer value expected\n");
}

TEST(CompuVtab, RealsAreRoundedUpFromTheirHalf) {
    EXPECT_EQ(
        moduleDump(
            "/begin COMPU_VTAB T \"\" TAB_VERB 6 2.5 \"a\" 2.4 \"b\" -1.2 \"c\" 7 \"d\" 1e300 "
            "\"e\" -1e999 \"f\" DEFAULT_VALUE NULL /end COMPU_VTAB"),
        "conversion TAB::T longIdentifier=\"\" conversionType=CtTable defaultText=\"\"\n"
        "  tableEntry lower=3 upper=3 text=\"a\"\n"
        "  tableEntry lower=2 upper=2 text=\"b\"\n"
        "  tableEntry lower=0 upper=0 text=\"c\"\n"
        "  tableEntry lower=7 upper=7 text=\"d\"\n"
        "  tableEntry lower=2147483647 upper=2147483647 text=\"e\"\n"
        "  tableEntry lower=-2147483648 upper=-2147483648 text=\"f\"\n");
}

TEST(CompuVtab, Errors) {
    EXPECT_EQ(messages("/begin COMPU_VTAB T \"\" TAB_VERB x"),
              "Error 1: Integer value (element count) expected\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB T \"\" TAB_VERB 1 x"),
              "Error 1: Double or integer value expected\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB T \"\" TAB_VERB 1 5 NULL"),
              "Error 1: String value expected\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB T \"\" TAB_VERB 0 DEFAULT_VALUE_NUMERIC 5"),
              "Error 1: Unexpected token 'DEFAULT_VALUE_NUMERIC' found\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB T \"\" TAB_VERB 0 /end COMPU_TAB"),
              "Error 1: Keyword 'COMPU_VTAB' expected after /end\n");
}

TEST(CompuVtabRange, KeepsNumbersAsRead) {
    EXPECT_EQ(
        moduleDump(
            "/begin COMPU_VTAB_RANGE T \"\" 2 0 1.5 \"a\" 2.5 3 \"b\" DEFAULT_VALUE \"?\" /end "
            "COMPU_VTAB_RANGE"),
        "conversion TAB::T longIdentifier=\"\" conversionType=CtTable defaultText=\"?\"\n"
        "  tableEntry lower=0 upper=1.5 text=\"a\"\n"
        "  tableEntry lower=2.5 upper=3 text=\"b\"\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB_RANGE T \"\" 1 0 \"a\""),
              "Error 1: Double or integer value expected\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB_RANGE T \"\" 1 0 1 a"),
              "Error 1: String value expected\n");
    EXPECT_EQ(messages("/begin COMPU_VTAB_RANGE T \"\" 0 /end COMPU_VTAB"),
              "Error 1: Keyword 'COMPU_VTAB_RANGE' expected after /end\n");
}

TEST(CompuVtab, DefaultsAreTracedOnDemand) {
    const std::string text =
        "/begin COMPU_VTAB T \"\" TAB_VERB 0 DEFAULT_VALUE \"a\" DEFAULT_VALUE \"b\" /end "
        "COMPU_VTAB "
        "/begin COMPU_VTAB_RANGE R \"\" 0 DEFAULT_VALUE \"c\" /end COMPU_VTAB_RANGE "
        "/begin COMPU_TAB N \"\" TAB_INTP 0 DEFAULT_VALUE \"d\" /end COMPU_TAB";
    EXPECT_EQ(parseModule(text, {.traceDefaultValues = true}).console,
              "-: T_DEFAULT_VALUE: 'a'\n-: T_DEFAULT_VALUE: 'b'\n-: T_DEFAULT_VALUE: 'c'\n");
    EXPECT_EQ(parseModule(text).console, "");
}

TEST(Unit, ReadsItsDisplayText) {
    EXPECT_EQ(
        moduleDump("/begin UNIT kmh \"speed\" \"km/h\" DERIVED REF_UNIT mps UNIT_CONVERSION 3.6 0 "
                   "SI_EXPONENTS 1 0 -1 0 0 0 0 UNIT_REF x /end UNIT"),
        "unit kmh longIdentifier=\"speed\" displayText=\"km/h\"\n");
    EXPECT_EQ(messages("/begin UNIT u \"\" \"\" ANYTHING /end UNIT"), "");
}

TEST(Unit, Errors) {
    EXPECT_EQ(messages("/begin UNIT 5"), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin UNIT u 5"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin UNIT u \"\" 5"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin UNIT u \"\" \"\" DERIVED 5"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(messages("/begin UNIT u \"\" \"\" DERIVED /end UNIT_REF"),
              "Error 1: Keyword 'UNIT' expected after /end\n");
}

}  // namespace
}  // namespace quillmark
