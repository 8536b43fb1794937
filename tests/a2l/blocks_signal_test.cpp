#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

std::string measurementText(std::string_view optional, std::string_view type = "UWORD") {
    return "/begin MEASUREMENT m \"text\" " + std::string(type) + " NO_COMPU_METHOD 0 0 0 100 " +
           std::string(optional) + " /end MEASUREMENT";
}

/// Dump of a measurement's own fields: what stands between its limits and its name.
std::string measurement(std::string_view optional, std::string_view type = "UWORD") {
    return moduleDump(measurementText(optional, type));
}

std::string warnings(std::string_view optional) {
    return messages(measurementText(optional));
}

std::string expected(std::string_view fields, std::string_view type = "",
                     std::string_view lastFields = "") {
    return "signal m longIdentifier=\"text\" signalKind=Measurement " + std::string(fields) +
           "lowerLimit=0 upperLimit=100" + std::string(lastFields) +
           "\n  datatype baseType=BtUInteger sizeBits=16 " + std::string(type) +
           "conversion=NO_COMPU_METHOD!\n";
}

std::string expectedArray(std::string_view dimensions) {
    return expected("", "", " matrixDims=" + std::string(dimensions));
}

TEST(Measurement, DataTypes) {
    const std::pair<const char*, const char*> rows[] = {
        {"UBYTE", "BtUInteger sizeBits=8"},       {"SBYTE", "BtInteger sizeBits=8"},
        {"UWORD", "BtUInteger sizeBits=16"},      {"SWORD", "BtInteger sizeBits=16"},
        {"ULONG", "BtUInteger sizeBits=32"},      {"SLONG", "BtInteger sizeBits=32"},
        {"A_UINT64", "BtUInteger sizeBits=64"},   {"A_INT64", "BtInteger sizeBits=64"},
        {"FLOAT32_IEEE", "BtIeee32 sizeBits=32"}, {"FLOAT64_IEEE", "BtIeee64 sizeBits=64"},
    };
    for (const auto& [word, type] : rows) {
        EXPECT_EQ(measurement("", word),
                  "signal m longIdentifier=\"text\" signalKind=Measurement lowerLimit=0 "
                  "upperLimit=100\n  datatype baseType=" +
                      std::string(type) + " conversion=NO_COMPU_METHOD!\n");
    }
}

TEST(Measurement, OtherDataTypesEndTheParseUnderTheirNameInTheWordTable) {
    EXPECT_EQ(messages("/begin MEASUREMENT m \"\" UINT"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin MEASUREMENT m \"\" BYTE"),
              "Error 1: Unexpected token 'BYTE' found\n");
    EXPECT_EQ(messages("/begin MEASUREMENT m \"\" /end"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin MEASUREMENT m \"\" FLOAT16_IEEE"),
              "Error 1: Unexpected token 'token=303' found\n");
}

TEST(Measurement, HeadErrors) {
    EXPECT_EQ(messages("/begin MEASUREMENT \"m\""), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin MEASUREMENT USER \"\""), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin MEASUREMENT m m"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin MEASUREMENT m NULL UBYTE 5"), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin MEASUREMENT m \"\" UBYTE c x \"y\" 0 0 /end UNIT"),
              "Error 1: Keyword 'MEASUREMENT' expected after /end\n");
}

TEST(Measurement, LimitsKeepTheirKindAndMayBeWrong) {
    const Parsed parsed = parseModule(
        "/begin MEASUREMENT m \"\" UBYTE c 0 0 x 1.5 /end MEASUREMENT\n"
        "/begin MEASUREMENT n \"\" UBYTE c 0 0 -1.0 \"y\" /end MEASUREMENT");
    EXPECT_EQ(parsed.console,
              "-: Warning (a.a2l:1): Unexpected type for lower limit.\n"
              "-: Warning (a.a2l:2): Unexpected type for upper limit.\n");
    EXPECT_NE(parsed.model.find("signalKind=Measurement upperLimit=1.5\n"), std::string::npos);
    EXPECT_NE(parsed.model.find("signalKind=Measurement lowerLimit=-1.0\n"), std::string::npos);
}

TEST(Measurement, AddressAndExtension) {
    EXPECT_EQ(measurement("ECU_ADDRESS 0x1000 ECU_ADDRESS_EXTENSION 2"),
              expected("address=0x1000 addressExtension=0x2 "));
    EXPECT_EQ(measurement("ECU_ADDRESS 0 ECU_ADDRESS_EXTENSION 0"),
              expected("address=0x0 addressExtension=0x0 "));
    EXPECT_EQ(warnings("ECU_ADDRESS x ECU_ADDRESS_EXTENSION 1.5"),
              "Warning 1: Unexpected token 'token=303' found\n"
              "Warning 1: Unexpected token 'token=301' found\n");
}

TEST(Measurement, BitMaskTakesTheIntegerOfAnyToken) {
    EXPECT_EQ(measurement("BIT_MASK 0xFF"), expected("", "bitMask=0xff "));
    EXPECT_EQ(measurement("BIT_MASK x"), expected("", "bitMask=0x0 "));
    EXPECT_EQ(measurement("BIT_MASK 1.5"), expected("", "bitMask=0x0 "));
}

TEST(Measurement, ByteOrderWords) {
    EXPECT_EQ(measurement("BYTE_ORDER MSB_FIRST"), expected("byteOrder=BigEndian "));
    EXPECT_EQ(measurement("BYTE_ORDER LITTLE_ENDIAN"), expected("byteOrder=BigEndian "));
    EXPECT_EQ(measurement("BYTE_ORDER MSB_LAST"), expected("byteOrder=LittleEndian "));
    EXPECT_EQ(measurement("BYTE_ORDER BIG_ENDIAN"), expected("byteOrder=LittleEndian "));
    EXPECT_EQ(warnings("BYTE_ORDER OTHER"), "Warning 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(warnings("BYTE_ORDER WORD"), "Warning 1: Unexpected token 'WORD' found\n");
}

TEST(Measurement, OwnByteOrderWinsOverTheModulesAlsoWhenUnknown) {
    const Parsed parsed = parseModule(
        "/begin MOD_COMMON \"\" BYTE_ORDER MSB_LAST /end MOD_COMMON " +
        measurementText("BYTE_ORDER OTHER") + " " + measurementText("BYTE_ORDER MSB_FIRST"));
    EXPECT_EQ(parsed.model.find("LittleEndian"), std::string::npos);
    EXPECT_NE(parsed.model.find("BigEndian"), std::string::npos);
}

TEST(Measurement, MatrixDimensions) {
    EXPECT_EQ(measurement("MATRIX_DIM 2 3 4"), expectedArray("2,3,4"));
    EXPECT_EQ(measurement("MATRIX_DIM 2 3 1"), expectedArray("2,3,0"));
    EXPECT_EQ(measurement("MATRIX_DIM 2 1 1"), expectedArray("2,0,0"));
    EXPECT_EQ(measurement("MATRIX_DIM 1 1 4"), expectedArray("1,1,4"));
    EXPECT_EQ(measurement("MATRIX_DIM 1 4"), expectedArray("1,4,0"));
    EXPECT_EQ(measurement("MATRIX_DIM 4"), expectedArray("4,0,0"));
    EXPECT_EQ(measurement("MATRIX_DIM 1"), expected(""));
    EXPECT_EQ(measurement("MATRIX_DIM"), expected(""));
    EXPECT_EQ(warnings("MATRIX_DIM 1 2 3 4"), "Error 1: Unexpected token 'token=300' found\n");
}

TEST(Measurement, ArraySize) {
    EXPECT_EQ(measurement("ARRAY_SIZE 6"), expectedArray("6,0,0"));
    EXPECT_EQ(measurement("ARRAY_SIZE 1"), expected(""));
    EXPECT_EQ(measurement("ARRAY_SIZE -2"), expected(""));
    EXPECT_EQ(warnings("ARRAY_SIZE x"), "Warning 1: Unexpected token 'token=303' found\n");
}

TEST(Measurement, ArraySizeMustFitTheMatrix) {
    EXPECT_EQ(measurement("MATRIX_DIM 2 3 1 ARRAY_SIZE 6"), expectedArray("2,3,0"));
    EXPECT_EQ(warnings("ARRAY_SIZE 5 MATRIX_DIM 2 3 1"), "Warning 1: Array-size mismatch (5).\n");
    EXPECT_EQ(warnings("MATRIX_DIM 2 ARRAY_SIZE 1"), "Warning 1: Array-size mismatch (1).\n");
    EXPECT_EQ(warnings("MATRIX_DIM ARRAY_SIZE 2"), "Warning 1: Array-size mismatch (2).\n");
    EXPECT_EQ(warnings("MATRIX_DIM -2 3 ARRAY_SIZE 0"), "");
    EXPECT_EQ(warnings("MATRIX_DIM -2 3 ARRAY_SIZE -6"), "Warning 1: Array-size mismatch (-6).\n");
    EXPECT_EQ(warnings("MATRIX_DIM 2147483647 2147483647 2147483647 ARRAY_SIZE -1"),
              "Warning 1: Array-size mismatch (-1).\n");
    EXPECT_EQ(warnings("MATRIX_DIM 2147483647 2147483647 2147483647 ARRAY_SIZE 1"),
              "Warning 1: Array-size mismatch (1).\n");
}

TEST(Measurement, MismatchIsReportedAtTheEndOfTheBlock) {
    EXPECT_EQ(messages("/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 ARRAY_SIZE 5 MATRIX_DIM 2\n/end\n"
                       "MEASUREMENT\n\n"),
              "Warning 3: Array-size mismatch (5).\n");
    EXPECT_EQ(
        messages("/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 ARRAY_SIZE 5 MATRIX_DIM 2 /end UNIT"),
        "Error 1: Keyword 'MEASUREMENT' expected after /end\n");
}

TEST(Measurement, Layout) {
    EXPECT_EQ(measurement("LAYOUT ROW_DIR"), expected("layout=RowDirection "));
    EXPECT_EQ(measurement("LAYOUT COLUMN_DIR"), expected("layout=ColumnDirection "));
    EXPECT_EQ(warnings("LAYOUT ROW_DIR LAYOUT DIAG"), "Warning 1: Unexpected LAYOUT 'DIAG'\n");
    EXPECT_EQ(warnings("LAYOUT 5"), "Warning 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(parseModule(measurementText("LAYOUT ROW_DIR LAYOUT DIAG")).model.find("layout="),
              std::string::npos);
    EXPECT_NE(parseModule(measurementText("LAYOUT ROW_DIR LAYOUT 5")).model.find("layout=Row"),
              std::string::npos);
}

TEST(Measurement, ReadOverKeywords) {
    EXPECT_EQ(
        measurement("FUNCTION_LIST a b MAX_REFRESH 3 1 SYMBOL_LINK \"s\" 0 FORMAT \"%4.2\" FORMAT "
                    "%4.2 PHYS_UNIT km%h ERROR_MASK 1 DISPLAY_IDENTIFIER d REF_MEMORY_SEGMENT s "
                    "DISCRETE READ_WRITE /begin FUNCTION_LIST f g /end FUNCTION_LIST "
                    "/begin ANNOTATION ANNOTATION_LABEL \"l\" ANNOTATION_ORIGIN \"o\" "
                    "/begin ANNOTATION_TEXT \"1\" \"2\" /end ANNOTATION_TEXT /end ANNOTATION "
                    "/begin IF_DATA X /end IF_DATA"),
        expected(""));
}

TEST(Measurement, WhatOnlyLaterVersionsKnowIsUnexpected) {
    EXPECT_EQ(warnings("READ_ONLY"), "Error 1: Unexpected token 'READ_ONLY' found\n");
    EXPECT_EQ(warnings("SYMBOLIC_LINK \"s\" 0"),
              "Error 1: Unexpected token 'SYMBOLIC_LINK' found\n");
    EXPECT_EQ(warnings("ADDRESS_TYPE"), "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(warnings("/begin MAP_LIST"), "Error 1: Unexpected token 'MAP_LIST' found\n");
}

TEST(Measurement, NameBlocksTakeNamesOnly) {
    EXPECT_EQ(warnings("/begin FUNCTION_LIST a 5"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(warnings("/begin FUNCTION_LIST a /end VIRTUAL"),
              "Error 1: Keyword 'FUNCTION_LIST' expected after /end\n");
    EXPECT_EQ(warnings("/begin VIRTUAL a /end FUNCTION_LIST"),
              "Error 1: Keyword 'VIRTUAL' expected after /end\n");
    EXPECT_EQ(warnings("/begin VIRTUAL USER"), "Error 1: Unexpected token 'USER' found\n");
}

TEST(Measurement, VirtualMembersAreResolved) {
    EXPECT_EQ(measurement("/begin VIRTUAL m other /end VIRTUAL"),
              expected("") + "  virtualMembers m other!\n");
}

TEST(BitOperation, ShiftsAndSign) {
    EXPECT_EQ(measurement("/begin BIT_OPERATION RIGHT_SHIFT 3 SIGN_EXTEND /end BIT_OPERATION"),
              expected("bitOperation=RightShift signExtend=true ", "", " shiftCount=3"));
    EXPECT_EQ(measurement("/begin BIT_OPERATION LEFT_SHIFT x /end BIT_OPERATION"),
              expected("bitOperation=LeftShift "));
    EXPECT_EQ(warnings("/begin BIT_OPERATION LEFT_SHIFT 1 /end BIT_MASK"),
              "Error 1: Keyword 'BIT_OPERATION' expected after /end\n");
    EXPECT_EQ(warnings("/begin BIT_OPERATION BIT_MASK"),
              "Error 1: Unexpected token 'BIT_MASK' found\n");
}

TEST(Annotation, Errors) {
    EXPECT_EQ(warnings("/begin ANNOTATION /begin ANNOTATION_TEXT \"a\" b"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(warnings("/begin ANNOTATION /begin ANNOTATION_TEXT NULL"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(warnings("/begin ANNOTATION /begin ANNOTATION_TEXT /end ANNOTATION"),
              "Error 1: Keyword 'ANNOTATION_TEXT' expected after /end\n");
    EXPECT_EQ(warnings("/begin ANNOTATION /end ANNOTATION_TEXT"),
              "Error 1: Keyword 'ANNOTATION' expected after /end\n");
}

std::string characteristicText(std::string_view type, std::string_view optional = "") {
    return "/begin CHARACTERISTIC k \"text\" " + std::string(type) + " 0x2000 RL 0 CM 0 100 " +
           std::string(optional) + " /end CHARACTERISTIC";
}

std::string expectedCharacteristic(std::string_view kind, std::string_view fields = "",
                                   std::string_view type = "") {
    return "signal k longIdentifier=\"text\" signalKind=" + std::string(kind) + " " +
           std::string(fields) + "address=0x2000 lowerLimit=0 upperLimit=100 recordLayout=RL!\n" +
           "  datatype " + std::string(type) + "conversion=CM!\n";
}

TEST(Characteristic, StorageTypes) {
    const std::pair<const char*, const char*> rows[] = {
        {"VALUE", "Value"},        {"CURVE", "Curve"},  {"MAP", "Map"},      {"CUBOID", "Cuboid"},
        {"VAL_BLK", "ValueBlock"}, {"CUBE_4", "Cube4"}, {"CUBE_5", "Cube5"},
    };
    for (const auto& [word, kind] : rows) {
        EXPECT_EQ(moduleDump(characteristicText(word)), expectedCharacteristic(kind));
    }
    EXPECT_EQ(moduleDump(characteristicText("ASCII", "NUMBER 20")),
              expectedCharacteristic("Ascii", "", "baseType=BtStringAscii sizeBits=160 "));
}

TEST(Characteristic, UnknownStorageTypeIsWrittenLikeAMeasurement) {
    const Parsed parsed = parseModule(characteristicText("VALUES"));
    EXPECT_EQ(parsed.console, "-: Warning (a.a2l:1): Unexpected storage type 'VALUES'.\n");
    EXPECT_NE(parsed.model.find("signalKind=Measurement"), std::string::npos);
    EXPECT_EQ(moduleDump(characteristicText("5")), expectedCharacteristic("Measurement"));
    EXPECT_EQ(moduleDump(characteristicText("\"VALUE\"")), expectedCharacteristic("Measurement"));
}

TEST(Characteristic, AddressThatIsNoInteger) {
    EXPECT_EQ(messages("/begin CHARACTERISTIC k \"\" VALUE x RL 0 CM 0 1 /end CHARACTERISTIC"),
              "Warning 1: Unexpected token 'token=303' found\n");
}

TEST(Characteristic, NamesMayBeTokensOfAnyKind) {
    EXPECT_EQ(
        moduleDump("/begin CHARACTERISTIC k \"\" MAP 0 \"R L\" x NUMBER 0 1 /end CHARACTERISTIC"),
        "signal k longIdentifier=\"\" signalKind=Map address=0x0 lowerLimit=0 upperLimit=1 "
        "recordLayout=\"R L\"!\n  datatype conversion=NUMBER!\n");
}

TEST(Characteristic, OptionalParts) {
    EXPECT_EQ(
        moduleDump(characteristicText(
            "MAP",
            "BYTE_ORDER MSB_LAST FORMAT %4.2 DISPLAY_IDENTIFIER d REF_MEMORY_SEGMENT s "
            "ECU_ADDRESS_EXTENSION 1 BIT_MASK 5 COMPARISON_QUANTITY q CALIBRATION_ACCESS "
            "CALIBRATION PHYS_UNIT km%h STEP_SIZE 1 EXTENDED_LIMITS 0 1 MAX_REFRESH 3 1 "
            "SYMBOL_LINK \"s\" 0 READ_ONLY GUARD_RAILS DISCRETE MATRIX_DIM 1 2.5 3 4 5 "
            "FUNCTION_LIST a b MAP_LIST c d NUMBER x /begin IF_DATA X /end IF_DATA /begin "
            "AXIS_DESCR "
            "STD_AXIS N CM 5 0 1 /begin X /end X /end AXIS_DESCR /begin ANNOTATION /end ANNOTATION "
            "/begin DEPENDENT_CHARACTERISTIC \"X1\" a b /end DEPENDENT_CHARACTERISTIC /begin "
            "VIRTUAL_CHARACTERISTIC \"x\" /end VIRTUAL_CHARACTERISTIC /begin FUNCTION_LIST f /end "
            "FUNCTION_LIST")),
        expectedCharacteristic("Map", "byteOrder=LittleEndian "));
}

TEST(Characteristic, NumberSetsTheSize) {
    EXPECT_EQ(moduleDump(characteristicText("VALUE", "NUMBER 3")),
              expectedCharacteristic("Value", "", "sizeBits=24 "));
    EXPECT_EQ(moduleDump(characteristicText("VALUE", "NUMBER 2147483647")),
              expectedCharacteristic("Value", "", "sizeBits=17179869176 "));
}

TEST(Characteristic, TakesTheModulesByteOrder) {
    EXPECT_EQ(moduleDump("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST /end MOD_COMMON " +
                         characteristicText("VALUE")),
              expectedCharacteristic("Value", "byteOrder=BigEndian "));
}

TEST(Characteristic, Errors) {
    EXPECT_EQ(messages("/begin CHARACTERISTIC 5"), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin CHARACTERISTIC k 5"), "Error 1: String expected\n");
    EXPECT_EQ(messages(characteristicText("VALUE", "ECU_ADDRESS 5")),
              "Error 1: Unexpected token 'ECU_ADDRESS' found\n");
    EXPECT_EQ(messages(characteristicText("VALUE", "/begin MAP_LIST a /end MAP_LIST")),
              "Error 1: Unexpected token 'MAP_LIST' found\n");
    EXPECT_EQ(messages(characteristicText("VALUE", "/begin FUNCTION_LIST /end MAP_LIST")),
              "Error 1: Keyword 'FUNCTION_LIST' expected after /end\n");
    EXPECT_EQ(messages(characteristicText("VALUE", "/begin DEPENDENT_CHARACTERISTIC \"\" 5")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(
        messages(characteristicText("VALUE", "/begin VIRTUAL_CHARACTERISTIC \"\" /end VIRTUAL")),
        "Error 1: Keyword 'VIRTUAL_CHARACTERISTIC' expected after /end\n");
    EXPECT_EQ(messages(characteristicText("VALUE", "/begin AXIS_DESCR /end AXIS_PTS")),
              "Error 1: Keyword 'AXIS_DESCR' expected after /end (IGN)\n");
    EXPECT_EQ(messages("/begin CHARACTERISTIC k \"\" VALUE 0 RL 0 CM 0 1 /end MEASUREMENT"),
              "Error 1: Keyword 'CHARACTERISTIC' expected after /end\n");
}

TEST(Signal, DisplayFormatIsKeptWhereItIsWanted) {
    const ReaderSwitches keeping{.parts = {.formats = true}};
    for (const std::string_view signal :
         {"/begin MEASUREMENT m \"\" UBYTE C 0 0 0 1 FORMAT \"%4.2\" /end MEASUREMENT",
          "/begin CHARACTERISTIC k \"\" VALUE 0 RL 0 C 0 1 FORMAT %4.2 /end CHARACTERISTIC"}) {
        EXPECT_NE(parseModule(signal, keeping).model.find("displayFormat=\"%4.2\""),
                  std::string::npos)
            << signal;
        EXPECT_EQ(parseModule(signal).model.find("displayFormat"), std::string::npos) << signal;
    }
}

}  // namespace
}  // namespace quillmark
