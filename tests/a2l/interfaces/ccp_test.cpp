#include "a2l/interfaces/ccp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "a2l/interfaces/interface_texts.h"

namespace quillmark {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

std::string ccpBlock(std::string_view content) {
    return "/begin IF_DATA ASAP1B_CCP " + std::string(content) + " /end IF_DATA";
}

/// What a module's block adds below the line of its communication parameters; the messages instead
/// when there were any.
std::string ccpDump(std::string_view content) {
    const std::string dump = moduleDump(ccpBlock(content));
    return dump.starts_with("commParam CCP protocolType=CCP\n") ? dumpBelow("commParam CCP", dump)
                                                                : dump;
}

std::string ccpMessages(std::string_view content) {
    return messages(ccpBlock(content));
}

/// What a verbose reader prints about a module's block.
std::string ccpTrace(std::string_view content) {
    const std::string console = parseModule(ccpBlock(content), {.verbose = true}).console;
    const std::size_t start = console.find("-:   Parse IF_DATA ASAP1B_CCP\n");
    return start == std::string::npos ? console : console.substr(start);
}

/// The line of a measurement whose optional parts these are.
std::string signalLine(std::string_view parts) {
    const std::string dump = moduleDump("/begin MEASUREMENT m \"\" UBYTE NO_COMPU_METHOD 0 0 0 1 " +
                                        std::string(parts) + " /end MEASUREMENT");
    const std::size_t start = dump.find("signal ");
    return start == std::string::npos ? dump : dump.substr(start, dump.find('\n', start) - start);
}

const std::string kSignal = "signal m longIdentifier=\"\" signalKind=Measurement";

std::string withAddress(std::string_view fields) {
    return kSignal + std::string(fields) + " lowerLimit=0 upperLimit=1";
}

// --- The block as a whole ------------------------------------------------------------------------

TEST(Ccp, AnEmptyBlockMakesNothing) {
    EXPECT_EQ(moduleDump("/begin IF_DATA ASAP1B_CCP /end IF_DATA"), "");
}

TEST(Ccp, TheNameHasToMatchExactly) {
    for (const char* name : {"ASAP1B_CCP2", "asap1b_ccp", "CCP", "\"ASAP1B_CCP\""}) {
        EXPECT_EQ(moduleDump("/begin IF_DATA " + std::string(name) +
                             " /begin CHECKSUM \"a\" /end CHECKSUM /end IF_DATA"),
                  "");
    }
}

TEST(Ccp, BareAddressPartsMakeNoParameters) {
    EXPECT_EQ(moduleDump(ccpBlock("KP_BLOB 1 2 3 RASTER 4 DP_BLOB 1 2 3 ADDRESS_MAPPING 1 2 3 "
                                  "ADDR_MAPPING 1 2 3 ADDR_MAPPING 4 5 6")),
              "");
}

TEST(Ccp, EveryBlockMakesTheParameters) {
    const std::string expected =
        "station\n"
        "  protocolParam\n";
    EXPECT_EQ(ccpDump("/begin KP_BLOB 0 1 /begin X /end Y /end KP_BLOB"), expected);
    EXPECT_EQ(ccpDump("/begin MAKERS_OWN TP_BLOB /end MAKERS_OWN"), expected);
    EXPECT_EQ(ccpDump("/begin DP_BLOB 0 1 2 /end DP_BLOB"), expected);
}

TEST(Ccp, SkippedBlocksNeedTheirOwnEnd) {
    EXPECT_EQ(ccpMessages("/begin KP_BLOB 0 /end SOURCE"),
              "Error 1: Keyword 'KP_BLOB' expected after /end (IGN)\n");
    EXPECT_EQ(ccpMessages("/begin MAKERS_OWN 0 /end SOURCE"),
              "Error 1: Keyword 'token=303' expected after /end (IGN)\n");
    // Any word that is no keyword ends a block of a name that is none.
    EXPECT_EQ(ccpMessages("/begin MAKERS_OWN 0 /end OTHER"), "");
}

TEST(Ccp, TheModulesByteOrderIsTheFirstEncoding) {
    EXPECT_EQ(moduleDump("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST /end MOD_COMMON " +
                         ccpBlock("/begin CHECKSUM \"c.dll\" /end CHECKSUM")),
              "commParam CCP protocolType=CCP\n"
              "  station\n"
              "    protocolParam encoding=BigEndian\n"
              "      properties\n"
              "        value checksum_dll_name=\"c.dll\"\n");
}

TEST(Ccp, FurtherBlocksFillTheSameParameters) {
    EXPECT_EQ(moduleDump(ccpBlock("/begin CHECKSUM \"a\" /end CHECKSUM") + " " +
                         ccpBlock("/begin TP_BLOB 1 2 3 4 5 2 /end TP_BLOB "
                                  "/begin CHECKSUM \"b\" /end CHECKSUM")),
              "commParam CCP protocolType=CCP\n"
              "  station\n"
              "    protocolParam encoding=LittleEndian\n"
              "      properties\n"
              "        value checksum_dll_name=\"b\"\n"
              "        value ccp_byteorder_code=2\n"
              "  transport CAN transportType=CAN slaveCanId=4 masterCanId=3 stationAddress=5\n");
}

TEST(Ccp, ProtocolsStandInTheOrderOfTheirFirstBlocks) {
    EXPECT_EQ(moduleDump(ccpBlock("/begin CHECKSUM \"a\" /end CHECKSUM") +
                         " /begin IF_DATA ASAP1B_GMLAN /begin SOURCE \"s\" 3 25 /end SOURCE "
                         "/end IF_DATA " +
                         ccpBlock("/begin CHECKSUM \"b\" /end CHECKSUM")),
              "commParam CCP protocolType=CCP\n"
              "  station\n"
              "    protocolParam\n"
              "      properties\n"
              "        value checksum_dll_name=\"b\"\n"
              "commParam GMLAN protocolType=4\n"
              "  station\n"
              "    protocolParam\n"
              "    daqTpCapabilities\n"
              "      daqTpCan number=3\n"
              "    daqCapabilities\n"
              "      properties\n"
              "        list sources\n"
              "          list s\n"
              "      raster s shortName=\"s\" channel=3 cyclic=true\n"
              "      daq s number=3\n");
}

TEST(Ccp, EndNeedsIfData) {
    const std::string expected = "Error 1: Keyword 'IF_DATA' expected after /end\n";
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_CCP /end MODULE"), expected);
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_CCP /end /end IF_DATA"), expected);
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_CCP KP_BLOB 0 1 2 /end ASAP1B_CCP"), expected);
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_CCP /end /*"),
              "Error 3: Error: Unexpected EOF in Comment (Line 1)\n");
}

TEST(Ccp, WhatFollowsTheBlockIsReadWithTheCoreKeywords) {
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_CCP /end IF_DATA RASTER"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_CCP /end IF_DATA NUMBER"),
              "Error 1: Unexpected token 'NUMBER' found\n");
    EXPECT_EQ(moduleDump("/begin IF_DATA ASAP1B_CCP /end IF_DATA "
                         "/begin UNIT m \"\" \"m\" DERIVED /end UNIT"),
              "unit m longIdentifier=\"\" displayText=\"m\"\n");
}

TEST(Ccp, BareWordsAreErrors) {
    EXPECT_EQ(ccpMessages("RASTER"), "Error 1: Unexpected token 'RASTER' found\n");
    EXPECT_EQ(ccpMessages("KP_BLOB 1 2 3 4"), "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(ccpMessages("MEASUREMENT"), "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(ccpMessages("/begin KP_BLOB /end KP_BLOB SOURCE"),
              "Error 1: Unexpected token 'SOURCE' found\n");
}

TEST(Ccp, OutsideOfAModuleNothingIsKept) {
    const std::string block = ccpBlock(
        "/begin SOURCE \"s\" 4 1 /begin QP_BLOB 1 LENGTH 2 /end QP_BLOB /end SOURCE "
        "/begin RASTER \"r\" \"r\" 1 2 3 /end RASTER "
        "/begin EVENT_GROUP \"g\" \"g\" RASTER 1 /end EVENT_GROUP "
        "/begin SEED_KEY \"\" \"\" \"\" /end SEED_KEY "
        "/begin TP_BLOB 1 2 3 4 5 1 DAQ_MODE BURST OPTIONAL_CMD 1 "
        "/begin DEFINED_PAGES 1 \"p\" 0 0 16 RAM /end DEFINED_PAGES /end TP_BLOB "
        "KP_BLOB 1 2 3");
    EXPECT_EQ(moduleDump("/begin GROUP G \"\" " + block + " /end GROUP"),
              "function G longIdentifier=\"\"\n");
    EXPECT_EQ(moduleDump("/begin FRAME F \"\" 3 10 " + block + " /end FRAME"),
              "frame F longIdentifier=\"\" scalingUnit=3 rate=10\n");
    EXPECT_EQ(signalLine(block), withAddress(" address=0x2 addressExtension=0x1"));
    EXPECT_EQ(messages("/begin FUNCTION F \"\" " + ccpBlock("/begin TP_BLOB 1 2 3 4 5 7 X")),
              "Warning 1: Invalid Byteorder 7 in ASAP1B_CCP/TP_BLOB\n"
              "Error 1: Unexpected token 'token=303' found\n");
}

// --- KP_BLOB and its like ------------------------------------------------------------------------

TEST(CcpAddress, KpBlobTellsASignalsAddress) {
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 0x2 0x80001000 4")),
              withAddress(" address=0x80001000 addressExtension=0x2"));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 1 2 4 RASTER 1 RASTER 3")),
              withAddress(" address=0x2 addressExtension=0x1"));
}

TEST(CcpAddress, ZeroIsNotStored) {
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 0 0x1000 4")), withAddress(" address=0x1000"));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 3 0 4")), withAddress(" addressExtension=0x3"));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 0 0 4")), withAddress(""));
    EXPECT_EQ(
        signalLine("ECU_ADDRESS 0x10 ECU_ADDRESS_EXTENSION 2 " + ccpBlock("KP_BLOB 0 0x1000 4")),
        withAddress(" address=0x1000 addressExtension=0x2"));
}

TEST(CcpAddress, TheLaterAddressWins) {
    EXPECT_EQ(signalLine("ECU_ADDRESS 0x10 " + ccpBlock("KP_BLOB 0 0x1000 4")),
              withAddress(" address=0x1000"));
    EXPECT_EQ(
        signalLine(ccpBlock("KP_BLOB 5 0x1000 4") + " ECU_ADDRESS 0x10 ECU_ADDRESS_EXTENSION 6"),
        withAddress(" address=0x10 addressExtension=0x6"));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 0 0x1000 4 KP_BLOB 0 0x2000 4")),
              withAddress(" address=0x2000"));
}

TEST(CcpAddress, BothValuesHaveToBeIntegers) {
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 1 2.0 4")), withAddress(""));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 1.0 2 4")), withAddress(""));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 1 2 4.5")),
              withAddress(" address=0x2 addressExtension=0x1"));
}

TEST(CcpAddress, TheFirstOtherTokenEndsTheValues) {
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB")), withAddress(""));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 1 RASTER 2")), withAddress(""));
    EXPECT_EQ(signalLine(ccpBlock("KP_BLOB 1 2 RASTER \"name\" RASTER 7")),
              withAddress(" address=0x2 addressExtension=0x1"));
    EXPECT_EQ(ccpMessages("KP_BLOB \"x\""), "Error 1: Unexpected token 'token=302' found\n");
    EXPECT_EQ(ccpMessages("KP_BLOB 1 2 3 RASTER"), "Error 1: Unexpected token 'token=303' found\n");
}

TEST(CcpAddress, ABlockOfThatNameIsSkipped) {
    EXPECT_EQ(signalLine(ccpBlock("/begin KP_BLOB 1 2 4 /end KP_BLOB")), withAddress(""));
}

TEST(CcpAddress, CharacteristicsHaveItToo) {
    EXPECT_THAT(moduleDump("/begin CHARACTERISTIC c \"\" VALUE 0x10 RL 0 NO_COMPU_METHOD 0 1 " +
                           ccpBlock("KP_BLOB 1 0x20 2 DP_BLOB 7 8 9") + " /end CHARACTERISTIC"),
                HasSubstr("signal c longIdentifier=\"\" signalKind=Value address=0x20 "
                          "addressExtension=0x1"));
}

TEST(CcpAddress, MappingsTakeThreeTokensOfAnyKind) {
    for (const std::string keyword : {"DP_BLOB", "ADDRESS_MAPPING", "ADDR_MAPPING"}) {
        EXPECT_EQ(ccpMessages(keyword + " \"x\" RASTER 1.5"), "");
        EXPECT_EQ(ccpMessages(keyword + " 1 2"), "Error 1: Unexpected token 'token=303' found\n")
            << "takes /end for its third value";
        EXPECT_EQ(ccpMessages(keyword + " 1 2 3 4"),
                  "Error 1: Unexpected token 'token=300' found\n");
    }
}

// --- SOURCE --------------------------------------------------------------------------------------

TEST(CcpSource, FillsADaqListAndAnEntry) {
    EXPECT_EQ(ccpDump("/begin SOURCE \"10 ms\" 4 1 DISPLAY_IDENTIFIER d10 "
                      "/begin QP_BLOB 3 LENGTH 12 CAN_ID_FIXED 0x80000651 RASTER 5 EXCLUSIVE 2 "
                      "EXCLUSIVE 4 REDUCTION_ALLOWED FIRST_PID 20 /end QP_BLOB /end SOURCE"),
              "station\n"
              "  protocolParam\n"
              "  daqTpCapabilities\n"
              "    daqTpCan number=3 canId=-2147482031\n"
              "  daqCapabilities\n"
              "    properties\n"
              "      list sources\n"
              "        list \"10 ms\"\n"
              "          value scaling_unit=4\n"
              "          value period=1\n"
              "          value daq_number=3\n"
              "          value can_id_fixed=-2147482031\n"
              "          value source_id=5\n"
              "          value first_pid=20\n"
              "    daq \"10 ms\" number=3 length=12 sourceId=5 firstPid=20\n");
}

TEST(CcpSource, SettingsKeepTheirOrder) {
    EXPECT_EQ(dumpBelow("list s\n",
                        ccpDump("/begin SOURCE \"s\" 4 1 /begin QP_BLOB 3 FIRST_PID 1 RASTER 2 "
                                "RASTER \"seg\" CAN_ID_VARIABLE FIRST_PID 4 /end QP_BLOB "
                                "/begin QP_BLOB 5 /end QP_BLOB /end SOURCE")),
              "value scaling_unit=4\n"
              "value period=1\n"
              "value daq_number=3\n"
              "value first_pid=1\n"
              "value source_id=2\n"
              "value raster=\"seg\"\n"
              "value can_id_variable=1\n"
              "value first_pid=4\n"
              "value daq_number=5\n");
}

TEST(CcpSource, AVariableIdentifierClearsAFixedOne) {
    const auto tpCan = [](const std::string& parts) {
        return dumpBelow("daqTpCapabilities", ccpDump("/begin SOURCE \"s\" 0 0 /begin QP_BLOB 1 " +
                                                      parts + " /end QP_BLOB /end SOURCE"));
    };
    EXPECT_EQ(tpCan("CAN_ID_FIXED 7 CAN_ID_VARIABLE"), "daqTpCan number=1\n");
    EXPECT_EQ(tpCan("CAN_ID_VARIABLE CAN_ID_FIXED 7"), "daqTpCan number=1 canId=7\n");
}

TEST(CcpSource, NumbersAreStoredAsIntegers) {
    EXPECT_EQ(ccpDump("/begin SOURCE \"s\" 4.9 \"x\" /begin QP_BLOB 3.7 LENGTH 1e12 RASTER 2.5 "
                      "FIRST_PID QP_BLOB CAN_ID_FIXED -1.5 /end QP_BLOB /end SOURCE"),
              "station\n"
              "  protocolParam\n"
              "  daqTpCapabilities\n"
              "    daqTpCan number=3 canId=-1\n"
              "  daqCapabilities\n"
              "    properties\n"
              "      list sources\n"
              "        list s\n"
              "          value scaling_unit=4\n"
              "          value period=0\n"
              "          value daq_number=3\n"
              "          value source_id=2\n"
              "          value first_pid=0\n"
              "          value can_id_fixed=-1\n"
              "    daq s number=3 length=2147483647 sourceId=2 firstPid=0\n");
}

TEST(CcpSource, WithoutQpBlobItHasNoNumber) {
    EXPECT_EQ(ccpDump("/begin SOURCE \"s\" 6 1 DISPLAY_IDENTIFIER \"d\" /end SOURCE"),
              "station\n"
              "  protocolParam\n"
              "  daqTpCapabilities\n"
              "    daqTpCan\n"
              "  daqCapabilities\n"
              "    properties\n"
              "      list sources\n"
              "        list s\n"
              "          value scaling_unit=6\n"
              "          value period=1\n"
              "    daq s\n");
}

TEST(CcpSource, NeedsItsNameInQuotes) {
    const std::string expected = "Error 1: String expected\n";
    EXPECT_EQ(ccpMessages("/begin SOURCE s 6 1 /end SOURCE"), expected);
    EXPECT_EQ(ccpMessages("/begin SOURCE NULL 6 1 /end SOURCE"), expected);
    EXPECT_EQ(ccpMessages("/begin SOURCE /end SOURCE"), expected);
    EXPECT_EQ(ccpDump("/begin SOURCE \"\" 6 1 /end SOURCE").empty(), false);
}

TEST(CcpSource, ItsRasterIsATextOrANumber) {
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 /begin QP_BLOB 1 RASTER seg /end QP_BLOB"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 /begin QP_BLOB 1 RASTER LENGTH /end QP_BLOB"),
              "Error 1: Unexpected token 'LENGTH' found\n");
}

TEST(CcpSource, UnknownBlocksAreSkippedAndUnknownWordsAreErrors) {
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 /begin X 1 /end X "
                          "/begin QP_BLOB 1 /begin RASTER /end RASTER /end QP_BLOB /end SOURCE"),
              "");
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 QP_BLOB 1"),
              "Error 1: Unexpected token 'QP_BLOB' found\n");
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 /begin QP_BLOB 1 BAUDRATE"),
              "Error 1: Unexpected token 'BAUDRATE' found\n");
}

TEST(CcpSource, ClosingErrors) {
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 /end TP_BLOB"),
              "Error 1: Keyword 'SOURCE' expected after /end\n");
    EXPECT_EQ(ccpMessages("/begin SOURCE \"s\" 6 1 /begin QP_BLOB 1 /end SOURCE"),
              "Error 1: Keyword 'QP_BLOB' expected after /end\n");
}

// --- RASTER, EVENT_GROUP, SEED_KEY, CHECKSUM -----------------------------------------------------

TEST(CcpRaster, KeepsItsScalingUnitAndPeriod) {
    EXPECT_EQ(ccpDump("/begin RASTER \"segment sync\" \"SEG\" 3 103 7 EXCLUSIVE 4 EXCLUSIVE 5 "
                      "/end RASTER /begin RASTER ident 8 4.5 1 2 /end RASTER"),
              "station\n"
              "  protocolParam\n"
              "  daqCapabilities\n"
              "    raster \"segment sync\" shortName=\"SEG\" channel=3\n"
              "      timebase resolution=7 scale=103\n"
              "    raster ident shortName=\"8\" channel=4\n"
              "      timebase resolution=2 scale=1\n");
}

TEST(CcpRaster, NeedsAName) {
    const std::string expected = "Error 1: String or Identifier expected\n";
    EXPECT_EQ(ccpMessages("/begin RASTER 3 \"SEG\" 3 103 7 /end RASTER"), expected);
    EXPECT_EQ(ccpMessages("/begin RASTER DAQ \"SEG\" 3 103 7 /end RASTER"), expected);
    EXPECT_EQ(ccpMessages("/begin RASTER /end RASTER"), expected);
}

TEST(CcpRaster, ClosingErrors) {
    EXPECT_EQ(ccpMessages("/begin RASTER \"r\" \"r\" 3 103 7 /end SOURCE"),
              "Error 1: Keyword 'RASTER' expected after /end\n");
    EXPECT_EQ(ccpMessages("/begin RASTER \"r\" \"r\" 3 103 7 8"),
              "Error 1: Unexpected token 'token=300' found\n");
}

TEST(CcpEventGroup, ListsItsRasters) {
    EXPECT_EQ(ccpDump("/begin EVENT_GROUP \"all cylinders\" \"CYL\" RASTER 3 RASTER 4.5 RASTER x "
                      "/end EVENT_GROUP /begin EVENT_GROUP \"g\" g /end EVENT_GROUP"),
              "station\n"
              "  protocolParam\n"
              "  daqCapabilities\n"
              "    properties\n"
              "      list event_groups\n"
              "        list \"all cylinders\"\n"
              "          value short_name=\"CYL\"\n"
              "          list rasters\n"
              "            value 3\n"
              "            value 4\n"
              "            value 0\n"
              "        list g\n"
              "          value short_name=\"g\"\n"
              "          list rasters\n");
}

TEST(CcpEventGroup, Errors) {
    EXPECT_EQ(ccpMessages("/begin EVENT_GROUP g \"g\" /end EVENT_GROUP"),
              "Error 1: String expected\n");
    EXPECT_EQ(ccpMessages("/begin EVENT_GROUP \"g\" \"g\" /end RASTER"),
              "Error 1: Keyword 'EVENT_GROUP' expected after /end\n");
    EXPECT_EQ(ccpMessages("/begin EVENT_GROUP \"g\" \"g\" EXCLUSIVE 1"),
              "Error 1: Unexpected token 'EXCLUSIVE' found\n");
}

TEST(CcpLibraries, AreProtocolProperties) {
    EXPECT_EQ(ccpDump("/begin SEED_KEY \"cal.dll\" \"\" \"pgm.dll\" /end SEED_KEY "
                      "/begin CHECKSUM \"crc.dll\" /end CHECKSUM"),
              "station\n"
              "  protocolParam\n"
              "    properties\n"
              "      value seed_key_dll_name_cal=\"cal.dll\"\n"
              "      value seed_key_dll_name_daq=\"\"\n"
              "      value seed_key_dll_name_pgm=\"pgm.dll\"\n"
              "      value checksum_dll_name=\"crc.dll\"\n");
}

TEST(CcpLibraries, Errors) {
    EXPECT_EQ(ccpMessages("/begin SEED_KEY \"a\" \"b\" /end SEED_KEY"),
              "Error 1: String expected\n");
    EXPECT_EQ(ccpMessages("/begin SEED_KEY NULL \"b\" \"c\" /end SEED_KEY"),
              "Error 1: String expected\n");
    EXPECT_EQ(ccpMessages("/begin SEED_KEY \"a\" \"b\" \"c\" \"d\" /end SEED_KEY"),
              "Error 1: Unexpected token 'token=302' found\n");
    EXPECT_EQ(ccpMessages("/begin SEED_KEY \"a\" \"b\" \"c\" /end CHECKSUM"),
              "Error 1: Keyword 'SEED_KEY' expected after /end\n");
    EXPECT_EQ(ccpMessages("/begin CHECKSUM 1 /end CHECKSUM"), "Error 1: String expected\n");
    EXPECT_EQ(ccpMessages("/begin CHECKSUM \"a\" /end SEED_KEY"),
              "Error 1: Keyword 'CHECKSUM' expected after /end\n");
}

// --- TP_BLOB -------------------------------------------------------------------------------------

std::string tpBlob(std::string_view parts) {
    return "/begin TP_BLOB 0x0201 0x0204 1 2 3 2 " + std::string(parts) + " /end TP_BLOB";
}

TEST(CcpTransport, FillsACanTransport) {
    EXPECT_EQ(ccpDump("/begin TP_BLOB 0x0201 0x0204 0x80000600 0x601 0x39 2 BAUDRATE 500000 "
                      "BYTES_ONLY /end TP_BLOB"),
              "station\n"
              "  protocolParam encoding=LittleEndian\n"
              "    properties\n"
              "      value ccp_byteorder_code=2\n"
              "transport CAN transportType=CAN slaveCanId=1537 masterCanId=-2147482112 "
              "stationAddress=57\n"
              "  properties\n"
              "    value bitrate=500000\n"
              "    value bytes_only=1\n");
}

TEST(CcpTransport, EachBlockIsATransport) {
    EXPECT_EQ(
        ccpDump("/begin TP_BLOB a b 1.5 x 3 1 BAUDRATE 2.5e5 /end TP_BLOB " + tpBlob("BAUDRATE x")),
        "station\n"
        "  protocolParam encoding=LittleEndian\n"
        "    properties\n"
        "      value ccp_byteorder_code=2\n"
        "transport CAN transportType=CAN slaveCanId=0 masterCanId=1 stationAddress=3\n"
        "  properties\n"
        "    value bitrate=250000\n"
        "transport CAN transportType=CAN slaveCanId=2 masterCanId=1 stationAddress=3\n"
        "  properties\n"
        "    value bitrate=0\n");
}

/// The messages about a byte order written like this, and the line that tells the encoding.
std::string byteOrder(const std::string& text) {
    const std::string block = ccpBlock("/begin TP_BLOB 1 2 3 4 5 " + text + " /end TP_BLOB");
    const std::string model = parseModule(block).model;
    const std::size_t start = model.find("protocolParam");
    return messages(block) + model.substr(start, model.find('\n', start) - start) + ", code" +
           model.substr(model.find("_code=") + 5, model.find("transport ") - model.find("_code="));
}

TEST(CcpTransport, ByteOrderIsAWordOrANumber) {
    const std::string big = "protocolParam encoding=BigEndian";
    const std::string little = "protocolParam encoding=LittleEndian";
    EXPECT_THAT(byteOrder("MSB_FIRST"), testing::StartsWith(big + ", code=1\n"));
    EXPECT_THAT(byteOrder("1"), testing::StartsWith(big + ", code=1\n"));
    EXPECT_THAT(byteOrder("MSB_LAST"), testing::StartsWith(little + ", code=2\n"));
    EXPECT_THAT(byteOrder("2"), testing::StartsWith(little + ", code=2\n"));
    EXPECT_THAT(byteOrder("2.9"), testing::StartsWith(little + ", code=2\n"));
}

TEST(CcpTransport, AnotherByteOrderIsWarnedOfAndStored) {
    const std::string number0 = "Warning 1: Invalid Byteorder 0 in ASAP1B_CCP/TP_BLOB\n";
    EXPECT_THAT(
        byteOrder("LITTLE"),
        testing::StartsWith("Warning 1: Invalid Byteorder 'LITTLE' in ASAP1B_CCP/TP_BLOB\n" +
                            number0 + "protocolParam, code=0\n"));
    EXPECT_THAT(byteOrder("\"MSB_LAST\""),
                testing::StartsWith(number0 + "protocolParam, code=0\n"));
    EXPECT_THAT(byteOrder("DAQ"), testing::StartsWith(number0 + "protocolParam, code=0\n"));
    EXPECT_THAT(byteOrder("-3"),
                testing::StartsWith("Warning 1: Invalid Byteorder -3 in ASAP1B_CCP/TP_BLOB\n"
                                    "protocolParam, code=-3\n"));
    EXPECT_THAT(byteOrder("0"), testing::StartsWith(number0 + "protocolParam, code=0\n"));
}

TEST(CcpTransport, AnInvalidByteOrderKeepsTheEncoding) {
    EXPECT_THAT(
        parseModule(ccpBlock(tpBlob("") + " /begin TP_BLOB 1 2 3 4 5 9 /end TP_BLOB")).model,
        HasSubstr("protocolParam encoding=LittleEndian\n"
                  "            properties\n"
                  "              value ccp_byteorder_code=9\n"));
}

TEST(CcpTransport, OnlyAVerboseReaderTellsOfAChangedEncoding) {
    const std::string blocks = tpBlob("") + " /begin TP_BLOB 1 2 3 4 5 1 /end TP_BLOB " +
                               "/begin TP_BLOB 1 2 3 4 5 MSB_FIRST /end TP_BLOB";
    EXPECT_EQ(ccpMessages(blocks), "");
    EXPECT_EQ(ccpTrace(blocks),
              "-:   Parse IF_DATA ASAP1B_CCP\n"
              "-:   Parse IF_DATA ASAP1B_CCP/TP_BLOB\n"
              "-: Warning (a.a2l:1): Encoding changed in CCP/TP_BLOB (2 -> 1)\n"
              "-:   Parse IF_DATA ASAP1B_CCP/TP_BLOB\n"
              "-:   Parse IF_DATA ASAP1B_CCP/TP_BLOB\n");
    EXPECT_THAT(parseModule("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST /end MOD_COMMON " +
                                ccpBlock(tpBlob("")),
                            {.verbose = true})
                    .console,
                HasSubstr("Encoding changed in CCP/TP_BLOB (1 -> 2)\n"));
}

TEST(CcpTransport, ModesOfDataAcquisition) {
    const auto daq = [](const std::string& parts) {
        const std::string dump = ccpDump(tpBlob(parts));
        const std::size_t start = dump.find("  daqCapabilities");
        return start == std::string::npos ? dump
                                          : dump.substr(start, dump.find("transport ") - start);
    };
    EXPECT_EQ(daq("DAQ_MODE ALTERNATING"),
              "  daqCapabilities\n"
              "    properties\n"
              "      value daq_mode=0\n");
    EXPECT_EQ(daq("DAQ_MODE ALTERNATING DAQ_MODE BURST ADDRESS_EXTENSION DAQ"),
              "  daqCapabilities addressExtension=3\n"
              "    properties\n"
              "      value daq_mode=1\n"
              "      value address_extension=0\n");
    EXPECT_EQ(daq("ADDRESS_EXTENSION ODT"),
              "  daqCapabilities addressExtension=2\n"
              "    properties\n"
              "      value address_extension=1\n");
    EXPECT_EQ(daq("DAQ_MODE DAQ"), "-: Warning (a.a2l:1): Unexpected token 'DAQ' found\n");
    EXPECT_EQ(daq("DAQ_MODE 1"), "-: Warning (a.a2l:1): Unexpected token 'token=300' found\n");
    EXPECT_EQ(daq("ADDRESS_EXTENSION FREE SJW 1"),
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n");
    EXPECT_EQ(ccpMessages("/begin TP_BLOB 1 2 3 4 5 2 DAQ_MODE /end TP_BLOB"),
              "Warning 1: Unexpected token '/end' found\n"
              "Error 1: Unexpected token 'TP_BLOB' found\n");
}

TEST(CcpTransport, AWrongModeKeepsTheOneBefore) {
    EXPECT_THAT(parseModule(ccpBlock(tpBlob("DAQ_MODE BURST DAQ_MODE ODT ADDRESS_EXTENSION ODT "
                                            "ADDRESS_EXTENSION BURST")))
                    .model,
                HasSubstr("daqCapabilities addressExtension=2\n"
                          "            properties\n"
                          "              value daq_mode=1\n"
                          "              value address_extension=1\n"));
}

TEST(CcpTransport, OptionalCommandsAreListed) {
    EXPECT_EQ(
        dumpBelow("protocolParam", ccpDump(tpBlob("OPTIONAL_CMD 0x11 SJW 2 OPTIONAL_CMD 9.5") +
                                           " " + tpBlob("OPTIONAL_CMD 9 OPTIONAL_CMD x"))),
        "properties\n"
        "  value ccp_byteorder_code=2\n"
        "  list optional_cmd\n"
        "    value 17\n"
        "    value 9\n"
        "    value 9\n"
        "    value 0\n");
}

TEST(CcpTransport, OtherKeywordsAreReadOver) {
    EXPECT_EQ(
        ccpDump(tpBlob("SAMPLE_POINT 80 SAMPLE_RATE SINGLE BTL_CYCLES 10 SJW x SYNC_EDGE DUAL "
                       "CONSISTENCY ODT CONSISTENCY 7 RESUME_SUPPORTED DAQ_RESUME_SUPPORTED "
                       "STORE_SUPPORTED /begin CAN_PARAM 0x3E80 x \"y\" /end CAN_PARAM "
                       "/begin MAKERS_OWN 1 /end MAKERS_OWN")),
        ccpDump(tpBlob("")));
}

TEST(CcpTransport, DefinedPagesArePagesOfTheModule) {
    EXPECT_EQ(
        moduleDump(ccpBlock(tpBlob(
            "/begin DEFINED_PAGES 1 \"reference\" 0 0x8000 0x2000 FLASH AUTO_FLASH_BACK FLASH_BACK "
            "DEFAULT /end DEFINED_PAGES "
            "/begin DEFINED_PAGES 2 work 1 0xD0008000 8192.5 RAM RAM_INIT_BY_ECU RAM_INIT_BY_TOOL "
            "/end DEFINED_PAGES "
            "/begin DEFINED_PAGES 3 \"\" 0 0 1 ROM /end DEFINED_PAGES "
            "/begin DEFINED_PAGES 4 \"\" 0 0 1 EEPROM /end DEFINED_PAGES"))),
        "commParam CCP protocolType=CCP\n"
        "  station\n"
        "    protocolParam encoding=LittleEndian\n"
        "      properties\n"
        "        value ccp_byteorder_code=2\n"
        "  transport CAN transportType=CAN slaveCanId=2 masterCanId=1 stationAddress=3\n"
        "memoryPage reference memoryType=Flash number=1 address=0x8000 size=8192 flags=0x1c4\n"
        "memoryPage work memoryType=Ram number=2 addressExtension=1 address=0xd0008000 size=8192 "
        "flags=0x31\n"
        "memoryPage \"\" memoryType=Rom number=3 size=1 flags=0x2\n"
        "memoryPage \"\" memoryType=Eeprom number=4 size=1 flags=0x8\n");
}

TEST(CcpTransport, ChecksumParametersAreProtocolProperties) {
    const auto properties = [](const std::string& parts) {
        return dumpBelow("properties", ccpDump(tpBlob("/begin CHECKSUM_PARAM 0xC001 0x1000 " +
                                                      parts + " /end CHECKSUM_PARAM")));
    };
    const std::string fixedPart =
        "value ccp_byteorder_code=2\n"
        "value checksum_procedure=49153\n"
        "value checksum_max_block_length=4096\n";
    EXPECT_EQ(properties(""), fixedPart);
    EXPECT_EQ(properties("CHECKSUM_CALCULATION ACTIVE_PAGE"),
              fixedPart + "value checksum_calculation=0\n");
    EXPECT_EQ(properties("CHECKSUM_CALCULATION BIT_OR_WITH_OPT_PAGE"),
              fixedPart + "value checksum_calculation=1\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin CHECKSUM_PARAM 1 2 CHECKSUM_CALCULATION 5 "
                                 "/end CHECKSUM_PARAM")),
              "Warning 1: Unexpected token 'token=300' found\n");
}

TEST(CcpTransport, Errors) {
    EXPECT_EQ(ccpMessages(tpBlob("LENGTH 1")), "Error 1: Unexpected token 'LENGTH' found\n");
    EXPECT_EQ(ccpMessages(tpBlob("KP_BLOB 1 2 3")), "Error 1: Unexpected token 'KP_BLOB' found\n");
    EXPECT_EQ(ccpMessages(tpBlob("MAKERS_OWN")), "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin CAN_PARAM 1 2 3 4 /end CAN_PARAM")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin DEFINED_PAGES 1 \"\" 0 0 1 1 /end DEFINED_PAGES")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin CHECKSUM_PARAM 1 2 3 /end CHECKSUM_PARAM")),
              "Error 1: Unexpected token 'token=300' found\n");
}

TEST(CcpTransport, ClosingErrors) {
    EXPECT_EQ(ccpMessages("/begin TP_BLOB 1 2 3 4 5 2 /end SOURCE"),
              "Error 1: Keyword 'TP_BLOB' expected after /end\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin CAN_PARAM 1 2 3 /end TP_BLOB")),
              "Error 1: Keyword 'CAN_PARAM' expected after /end\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin DEFINED_PAGES 1 \"\" 0 0 1 /end TP_BLOB")),
              "Error 1: Keyword 'DEFINED_PAGES' expected after /end\n");
    EXPECT_EQ(ccpMessages(tpBlob("/begin CHECKSUM_PARAM 1 2 /end TP_BLOB")),
              "Error 1: Keyword 'CHECKSUM_PARAM' expected after /end\n");
}

// --- Everything together -------------------------------------------------------------------------

/// One description with every part that the protocol has. Without blanks in its texts.
constexpr std::string_view kRich = R"(/begin PROJECT P "" /begin MODULE Ecu ""
/begin MOD_PAR "" ADDR_EPK 0x100 EPK "E1"
  /begin MEMORY_SEGMENT Cal "" DATA FLASH INTERN 0x8000 0x1000 -1 -1 -1 -1 -1
    /begin IF_DATA ASAP1B_CCP ADDRESS_MAPPING 0x8000 0xD000 0x800 ADDR_MAPPING 1 2 3
      DP_BLOB 0 0x8000 0x1000 /end IF_DATA
  /end MEMORY_SEGMENT
/end MOD_PAR
/begin MOD_COMMON "" BYTE_ORDER MSB_LAST /end MOD_COMMON
/begin IF_DATA ASAP1B_CCP
  /begin SOURCE "10ms" 4 1 DISPLAY_IDENTIFIER d10
    /begin QP_BLOB 0 LENGTH 12 CAN_ID_FIXED 0x651 RASTER 1 RASTER "10ms" EXCLUSIVE 2
      REDUCTION_ALLOWED FIRST_PID 20 /end QP_BLOB
  /end SOURCE
  /begin SOURCE "seg" 0 0 /begin QP_BLOB 1 CAN_ID_VARIABLE /end QP_BLOB /end SOURCE
  /begin RASTER "sync" "SEG" 3 103 1 EXCLUSIVE 4 /end RASTER
  /begin EVENT_GROUP "all" "CYL" RASTER 3 RASTER 4 /end EVENT_GROUP
  /begin SEED_KEY "cal.dll" "" "pgm.dll" /end SEED_KEY
  /begin CHECKSUM "crc16.dll" /end CHECKSUM
  /begin KP_BLOB 1 2 3 /end KP_BLOB
  /begin MAKERS_OWN /begin INNER 1 /end INNER /end MAKERS_OWN
  /begin TP_BLOB 0x0201 0x0204 0x600 0x601 0x39 2
    /begin CAN_PARAM 0x3E80 0xC0 0x14 /end CAN_PARAM
    BAUDRATE 500000 SAMPLE_POINT 80 SAMPLE_RATE 1 BTL_CYCLES 10 SJW 2 SYNC_EDGE SINGLE
    DAQ_MODE BURST BYTES_ONLY CONSISTENCY ODT ADDRESS_EXTENSION ODT
    RESUME_SUPPORTED DAQ_RESUME_SUPPORTED STORE_SUPPORTED
    /begin CHECKSUM_PARAM 0xC001 0x1000 CHECKSUM_CALCULATION ACTIVE_PAGE /end CHECKSUM_PARAM
    /begin DEFINED_PAGES 2 "working" 0 0xD0008000 0x2000 RAM RAM_INIT_BY_ECU /end DEFINED_PAGES
    OPTIONAL_CMD 0x11 OPTIONAL_CMD 0x09
  /end TP_BLOB
/end IF_DATA
/begin MEASUREMENT m "" UBYTE NO_COMPU_METHOD 0 0 0 1
  /begin IF_DATA ASAP1B_CCP KP_BLOB 0x0 0xD0001A40 2 RASTER 1 RASTER 3 /end IF_DATA
/end MEASUREMENT
/end MODULE /end PROJECT
)";

TEST(Ccp, TracesEveryBlock) {
    const std::string console = parseText(kRich, {.verbose = true}).console;
    const std::size_t start = console.find("-: Parse MOD_COMMON");
    EXPECT_EQ(console.substr(start),
              "-: Parse MOD_COMMON ''\n"
              "-:   Parse IF_DATA ASAP1B_CCP\n"
              "-:   Parse IF_DATA ASAP1B_CCP/SOURCE\n"
              "-:   Parse IF_DATA ASAP1B_CCP/SOURCE/QP_BLOB\n"
              "-:   Parse IF_DATA ASAP1B_CCP/SOURCE\n"
              "-:   Parse IF_DATA ASAP1B_CCP/SOURCE/QP_BLOB\n"
              "-:   Parse IF_DATA ASAP1B_CCP/RASTER\n"
              "-:   Parse IF_DATA ASAP1B_CCP/EVENT_GROUP\n"
              "-:   Parse IF_DATA ASAP1B_CCP/SEED_KEY\n"
              "-:   Parse IF_DATA ASAP1B_CCP/CHECKSUM\n"
              "-:   Parse IF_DATA ASAP1B_CCP/TP_BLOB\n"
              "-:   Parse IF_DATA ASAP1B_CCP/TP_BLOB/CHECKSUM_PARAM\n"
              "-:   Parse IF_DATA ASAP1B_CCP/TP_BLOB/DEFINED_PAGES\n"
              "-: Parse MEASUREMENT 'm'\n"
              "-:   Parse IF_DATA ASAP1B_CCP\n");
}

TEST(Ccp, EveryPartTogetherGivesNoMessage) {
    const Parsed parsed = parseText(kRich);
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console, "");
}

TEST(Ccp, ADescriptionCutOffAnywhereEndsInAnError) {
    cutAfterEachToken(kRich, [](std::string_view cut, const Parsed& parsed) {
        if (cut.ends_with("/end PROJECT")) {
            return;
        }
        EXPECT_EQ(parsed.status, -1) << cut;
        EXPECT_THAT(parsed.console, HasSubstr("-: Error (a.a2l:")) << cut;
        EXPECT_THAT(parsed.console, EndsWith("\n")) << cut;
    });
}

TEST(Ccp, AfterAnErrorAReaderStartsAnew) {
    CollectingConsole console;
    PhA2l reader(console, "a.a2l");
    for (const std::string& content :
         {ccpBlock("/begin SOURCE 1"), ccpBlock("RASTER"), std::string()}) {
        const std::string text = moduleText(content);
        MemoryInputFile input(text);
        PhRoot root;
        EXPECT_EQ(reader.parse(root, input), content.empty() ? 0 : -1);
    }
}

}  // namespace
}  // namespace quillmark
