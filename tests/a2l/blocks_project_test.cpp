#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

TEST(Project, NamesMayBeQuotedOrBare) {
    const Parsed parsed = parseText("/begin PROJECT \"P 1\" Text /end PROJECT");
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.model, "root textEncoding=5\n  project \"P 1\" longIdentifier=\"Text\"\n");
}

TEST(Project, LongIdentifierNullIsAnIdentifierLikeAnyOther) {
    EXPECT_EQ(parseText("/begin PROJECT P NULL /end PROJECT").model,
              "root textEncoding=5\n  project P longIdentifier=\"NULL\"\n");
}

TEST(Project, HeadErrors) {
    EXPECT_EQ(parseText("/begin PROJECT 5").console, "-: Error (a.a2l:1): Identifier expected\n");
    EXPECT_EQ(parseText("/begin PROJECT P 5").console, "-: Error (a.a2l:1): String expected\n");
}

TEST(Project, OtherContentIsUnexpected) {
    EXPECT_EQ(parseText("/begin PROJECT P \"\" VERSION").console,
              "-: Error (a.a2l:1): Unexpected token 'VERSION' found\n");
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin MOD_PAR").console,
              "-: Error (a.a2l:1): Unexpected token 'MOD_PAR' found\n");
}

TEST(Project, ClosingKeyword) {
    const Parsed parsed = parseText("/begin PROJECT P \"\" /end MODULE");
    EXPECT_EQ(parsed.console, "-: Error (a.a2l:1): Keyword 'PROJECT' expected after /end\n");
    EXPECT_EQ(parsed.status, -1);
}

TEST(Project, SeveralModulesKeepTheirOrder) {
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin MODULE A \"\" /end MODULE\n"
                        "/begin MODULE B \"\" /end MODULE /end PROJECT")
                  .model,
              "root textEncoding=5\n  project P longIdentifier=\"\"\n"
              "    module A longIdentifier=\"\"\n    module B longIdentifier=\"\"\n");
}

TEST(Header, IsReadOver) {
    EXPECT_EQ(
        parseText("/begin PROJECT P \"\" /begin HEADER \"Bench build\" VERSION \"B7\" PROJECT_NO "
                  "P_0815 PROJECT_NO 5 VERSION 7 /end HEADER /end PROJECT")
            .console,
        "");
    EXPECT_EQ(
        parseText("/begin PROJECT P \"\" /begin HEADER NULL /end HEADER /end PROJECT").console, "");
}

TEST(Header, Errors) {
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin HEADER 5").console,
              "-: Error (a.a2l:1): String expected\n");
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin HEADER \"\" EPK").console,
              "-: Error (a.a2l:1): Unexpected token 'EPK' found\n");
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin HEADER \"\" /begin X").console,
              "-: Error (a.a2l:1): Unexpected token '/begin' found\n");
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin HEADER \"\" /end PROJECT").console,
              "-: Error (a.a2l:1): Keyword 'HEADER' expected after /end\n");
}

TEST(Module, HeadErrors) {
    const std::string project = "/begin PROJECT P \"\" /begin MODULE ";
    EXPECT_EQ(parseText(project + "\"M\"").console, "-: Error (a.a2l:1): Identifier expected\n");
    EXPECT_EQ(parseText(project + "EPK \"\"").console, "-: Error (a.a2l:1): Identifier expected\n");
    EXPECT_EQ(parseText(project + "M text").console, "-: Error (a.a2l:1): String expected\n");
    EXPECT_EQ(parseText(project + "M NULL /end MODULE /end PROJECT").console, "");
}

TEST(Module, IncludeIsAcceptedAndHasNoEffect) {
    EXPECT_EQ(moduleDump("/include \"other.a2l\""), "");
    EXPECT_EQ(messages("/include other"), "Error 1: Filename expected\n");
    EXPECT_EQ(messages("/include NULL"), "Error 1: Filename expected\n");
}

TEST(Module, AxisPointsAndVariantsAreSkippedWhole) {
    EXPECT_EQ(
        moduleDump("/begin AXIS_PTS A \"\" 0 N RL 0 CM 5 0 100 /begin IF_DATA X /end IF_DATA "
                   "DEPOSIT ABSOLUTE /end AXIS_PTS /begin VARIANT_CODING /begin VAR_CRITERION "
                   "/end VAR_CRITERION /end VARIANT_CODING"),
        "");
    EXPECT_EQ(messages("/begin AXIS_PTS A /end AXIS_DESCR"),
              "Error 1: Keyword 'AXIS_PTS' expected after /end (IGN)\n");
}

TEST(Module, AQuotedEndDoesNotCloseASkippedBlock) {
    EXPECT_EQ(messages("/begin AXIS_PTS \"/end\" /* /end */ /end AXIS_PTS"), "");
}

TEST(Module, LaterBlocksAreUnexpected) {
    EXPECT_EQ(messages("/begin TYPEDEF_MEASUREMENT M"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("\nMEASUREMENT"), "Error 2: Unexpected token 'MEASUREMENT' found\n");
    EXPECT_EQ(messages("/end PROJECT"), "Error 1: Keyword 'MODULE' expected after /end\n");
}

TEST(A2ml, EndsAtItsFirstEnd) {
    EXPECT_EQ(
        messages("/begin A2ML block \"IF_DATA\" struct { uint; char[3]; }; /begin x /end A2ML"),
        "");
    EXPECT_EQ(messages("/begin A2ML /end MODULE"), "Error 1: Keyword 'A2ML' expected after /end\n");
}

TEST(A2ml, WithoutEndStopsAtTheEndOfTheFile) {
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin MODULE M \"\" /begin A2ML x\n").console,
              "-: Error (a.a2l:2): Unexpected token 'token=304' found\n");
}

TEST(ModPar, StoresWhatTheLoggerNeeds) {
    EXPECT_EQ(
        moduleDump("/begin MOD_PAR \"\" VERSION \"4.2\" ADDR_EPK 0x8000 EPK \"EPK_42\" ECU \"Box\" "
                   "SUPPLIER \"a\" CUSTOMER \"b\" CUSTOMER_NO \"c\" USER \"d\" PHONE_NO \"e\" "
                   "CPU_TYPE \"f\" NO_OF_INTERFACES 2 ECU_CALIBRATION_OFFSET -5 SYSTEM_CONSTANT "
                   "\"N\" \"6\" /end MOD_PAR"),
        "properties\n"
        "  value mod_par/version=\"4.2\"\n"
        "  value mod_par/addr_epk=32768\n"
        "  value mod_par/epk=\"EPK_42\"\n"
        "  value mod_par/ecu=\"Box\"\n");
}

TEST(ModPar, ARepeatedKeywordReplaces) {
    EXPECT_EQ(
        moduleDump("/begin MOD_PAR \"\" EPK \"a\" EPK NULL ADDR_EPK 1 ADDR_EPK 2 /end MOD_PAR"),
        "properties\n  value mod_par/epk=\"\"\n  value mod_par/addr_epk=2\n");
}

TEST(ModPar, StoredTextsMustBeTexts) {
    EXPECT_EQ(messages("/begin MOD_PAR \"\" EPK x"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" ECU 5"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" VERSION /end"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin MOD_PAR 1"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" SUPPLIER 1 CPU_TYPE x /end MOD_PAR"), "");
}

TEST(ModPar, AddressThatIsNoIntegerIsNotStored) {
    EXPECT_EQ(messages("/begin MOD_PAR \"\" ADDR_EPK 1.5 /end MOD_PAR"),
              "Warning 1: Unexpected token 'token=301' found\n");
}

TEST(ModPar, SkippedAndUnknownBlocks) {
    EXPECT_EQ(
        messages(
            "/begin MOD_PAR \"\" /begin CALIBRATION_METHOD \"x\" 1 /begin CALIBRATION_HANDLE 1 "
            "/end CALIBRATION_HANDLE /end CALIBRATION_METHOD /begin MEMORY_LAYOUT PRG_CODE 0 "
            "0 0 0 0 0 0 /end MEMORY_LAYOUT /end MOD_PAR"),
        "");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" /begin UNIT"),
              "Error 1: Unexpected token 'UNIT' found\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" UNIT"), "Error 1: Unexpected token 'UNIT' found\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" /end MODULE"),
              "Error 1: Keyword 'MOD_PAR' expected after /end\n");
}

std::string segment(std::string_view words, std::string_view rest = "") {
    return "/begin MOD_PAR \"\" /begin MEMORY_SEGMENT S \"\" " + std::string(words) +
           " 0xA0040000 0x8000 -1 -1 -1 -1 -1 " + std::string(rest) +
           "/end MEMORY_SEGMENT /end MOD_PAR";
}

TEST(MemorySegment, WordsOfAllKinds) {
    EXPECT_EQ(moduleDump(segment("DATA FLASH INTERN")),
              "memoryPage S longIdentifier=\"\" use=Data memoryType=Flash attribute=Intern "
              "address=0xa0040000 size=32768\n");
    for (const char* use : {"CALIBRATION_VARIABLES", "CODE", "EXCLUDE_FROM_FLASH", "OFFLINE_DATA",
                            "RESERVED", "SERAM", "VARIABLES"}) {
        EXPECT_EQ(messages(segment(std::string(use) + " RAM EXTERN")), "") << use;
    }
    for (const char* type : {"EEPROM", "EPROM", "ROM", "REGISTER", "NOT_IN_ECU"}) {
        EXPECT_EQ(messages(segment("DATA " + std::string(type) + " EXTERN")), "") << type;
    }
}

TEST(MemorySegment, WrongWordsAreWarnedOfByTheirNameInTheWordTable) {
    EXPECT_EQ(messages(segment("PRG_CODE INTERN RAM")),
              "Warning 1: Unexpected token 'token=303' found\n"
              "Warning 1: Unexpected token 'INTERN' found\n"
              "Warning 1: Unexpected token 'RAM' found\n");
}

TEST(MemorySegment, InterfaceDataAndErrors) {
    EXPECT_EQ(messages(segment("DATA FLASH INTERN", "/begin IF_DATA X 1 /end IF_DATA ")), "");
    EXPECT_EQ(messages(segment("DATA FLASH INTERN", "0 ")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" /begin MEMORY_SEGMENT 1"),
              "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin MOD_PAR \"\" /begin MEMORY_SEGMENT S 1"),
              "Error 1: String expected\n");
    EXPECT_EQ(
        messages("/begin MOD_PAR \"\" /begin MEMORY_SEGMENT S \"\" DATA FLASH INTERN 0 0 0 0 0 0 0 "
                 "/end MOD_PAR"),
        "Error 1: Keyword 'MEMORY_SEGMENT' expected after /end\n");
}

TEST(ModCommon, ByteOrderIsTheDefaultOfWhatFollows) {
    const std::string measurement = "/begin MEASUREMENT m \"\" UBYTE CM 0 0 0 1 /end MEASUREMENT ";
    const std::string dumped = moduleDump(
        measurement +
        "/begin MOD_COMMON \"\" S_REC_LAYOUT x DEPOSIT ABSOLUTE BYTE_ORDER MSB_LAST DATA_SIZE "
        "32 ALIGNMENT_BYTE 1 ALIGNMENT_WORD 2 ALIGNMENT_LONG 4 ALIGNMENT_INT64 8 "
        "ALIGNMENT_FLOAT16_IEEE 2 ALIGNMENT_FLOAT32_IEEE 4 ALIGNMENT_FLOAT64_IEEE 8 /end "
        "MOD_COMMON " +
        measurement);
    EXPECT_EQ(
        dumped,
        "signal m longIdentifier=\"\" signalKind=Measurement lowerLimit=0 upperLimit=1\n"
        "  datatype baseType=BtUInteger sizeBits=8 conversion=CM!\n"
        "signal m longIdentifier=\"\" signalKind=Measurement byteOrder=LittleEndian lowerLimit=0 "
        "upperLimit=1\n"
        "  datatype baseType=BtUInteger sizeBits=8 conversion=CM!\n");
}

TEST(ModCommon, Errors) {
    EXPECT_EQ(messages("/begin MOD_COMMON x"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin MOD_COMMON \"\" EPK"), "Error 1: Unexpected token 'EPK' found\n");
    EXPECT_EQ(messages("/begin MOD_COMMON \"\" /end MOD_PAR"),
              "Error 1: Keyword 'MOD_COMMON' expected after /end\n");
    EXPECT_EQ(messages("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST_MSW_LAST /end MOD_COMMON"),
              "Warning 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin MOD_COMMON \"\" BYTE_ORDER UBYTE /end MOD_COMMON"),
              "Warning 1: Unexpected token 'UBYTE' found\n");
}

TEST(IfData, UnknownInterfacesAreSkippedToTheirEnd) {
    EXPECT_EQ(messages("/begin IF_DATA ETK /begin X /end X /end Y /end IF_DATA"), "");
    EXPECT_EQ(messages("/begin IF_DATA \"XCP\" /begin Y /end IF_DATA"), "");
    EXPECT_EQ(messages("/begin IF_DATA xcp /end IF_DATA"), "");
    EXPECT_EQ(messages("/begin IF_DATA /end IF_DATA"), "");
    EXPECT_EQ(messages("/begin IF_DATA X /end /end IF_DATA"), "");
}

TEST(IfData, UnknownInterfaceWithoutEndReachesTheEndOfTheFile) {
    EXPECT_EQ(parseText("/begin PROJECT P \"\" /begin MODULE M \"\" /begin IF_DATA X\n\n").console,
              "-: Error (a.a2l:3): Unexpected token 'token=304' found\n");
}

}  // namespace
}  // namespace quillmark
