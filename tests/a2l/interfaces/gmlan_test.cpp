#include "a2l/interfaces/gmlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "a2l/interfaces/interface_texts.h"

namespace quillmark {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

std::string gmlanBlock(std::string_view content) {
    return "/begin IF_DATA ASAP1B_GMLAN " + std::string(content) + " /end IF_DATA";
}

/// What a module's block adds below the line of its communication parameters; the messages instead
/// when there were any.
std::string gmlanDump(std::string_view content) {
    const std::string dump = moduleDump(gmlanBlock(content));
    return dump.starts_with("commParam GMLAN protocolType=4\n") ? dumpBelow("commParam GMLAN", dump)
                                                                : dump;
}

std::string gmlanMessages(std::string_view content) {
    return messages(gmlanBlock(content));
}

/// What a verbose reader prints about a module's block.
std::string gmlanTrace(std::string_view content) {
    const std::string console = parseModule(gmlanBlock(content), {.verbose = true}).console;
    const std::size_t start = console.find("-:   Parse IF_DATA ASAP1B_GMLAN\n");
    return start == std::string::npos ? console : console.substr(start);
}

// --- The block as a whole ------------------------------------------------------------------------

TEST(Gmlan, AnEmptyBlockMakesNothing) {
    EXPECT_EQ(moduleDump("/begin IF_DATA ASAP1B_GMLAN /end IF_DATA"), "");
}

TEST(Gmlan, EveryBlockMakesTheParameters) {
    EXPECT_EQ(gmlanDump("/begin MAKERS_OWN SOURCE /begin A /end B /end MAKERS_OWN"),
              "station\n"
              "  protocolParam\n");
    EXPECT_EQ(gmlanDump("/begin CAN 1 /end CAN"),
              "station\n"
              "  protocolParam\n");
}

TEST(Gmlan, TheModulesByteOrderIsTheFirstEncoding) {
    EXPECT_EQ(moduleDump("/begin MOD_COMMON \"\" BYTE_ORDER MSB_LAST /end MOD_COMMON " +
                         gmlanBlock("/begin X /end X")),
              "commParam GMLAN protocolType=4\n"
              "  station\n"
              "    protocolParam encoding=LittleEndian\n");
}

TEST(Gmlan, FurtherBlocksFillTheSameParameters) {
    EXPECT_EQ(moduleDump(gmlanBlock("/begin TP_BLOB 1 2 BYTEORDER_MSB_FIRST /end TP_BLOB") + " " +
                         gmlanBlock("/begin TP_BLOB 1 2 BYTEORDER_MSB_LAST /end TP_BLOB")),
              "commParam GMLAN protocolType=4\n"
              "  station\n"
              "    protocolParam encoding=LittleEndian\n"
              "  transport CAN transportType=CAN\n"
              "  transport CAN transportType=CAN\n");
}

TEST(Gmlan, OutsideOfAModuleNothingIsKept) {
    const std::string block = gmlanBlock(
        "/begin SOURCE \"s\" 3 25 /end SOURCE "
        "/begin TP_BLOB 1 2 BYTEORDER_MSB_FIRST /begin CAN 500000 /end CAN /end TP_BLOB");
    EXPECT_EQ(moduleDump("/begin GROUP G \"\" " + block + " /end GROUP"),
              "function G longIdentifier=\"\"\n");
    EXPECT_EQ(messages("/begin GROUP G \"\" " + gmlanBlock("/begin TP_BLOB 1 2 3 /end TP_BLOB") +
                       " /end GROUP"),
              "Warning 1: Invalid Byteorder 300 in ASAP1B_GMLAN/TP_BLOB\n");
}

TEST(Gmlan, EndNeedsIfData) {
    const std::string expected = "Error 1: Keyword 'IF_DATA' expected after /end\n";
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_GMLAN /end MODULE"), expected);
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_GMLAN /begin X /end X /end ASAP1B_GMLAN"), expected);
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_GMLAN /end /*"),
              "Error 3: Error: Unexpected EOF in Comment (Line 1)\n");
}

TEST(Gmlan, WhatFollowsTheBlockIsReadWithTheCoreKeywords) {
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_GMLAN /end IF_DATA SOURCE"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin IF_DATA ASAP1B_GMLAN /begin X /end X /end IF_DATA NUMBER"),
              "Error 1: Unexpected token 'NUMBER' found\n");
}

TEST(Gmlan, BareWordsAreErrors) {
    EXPECT_EQ(gmlanMessages("SOURCE"), "Error 1: Unexpected token 'SOURCE' found\n");
    EXPECT_EQ(gmlanMessages("IF_DATA"), "Error 1: Unexpected token 'IF_DATA' found\n");
    EXPECT_EQ(gmlanMessages("/begin X /end X KP_BLOB"),
              "Error 1: Unexpected token 'token=303' found\n");
}

TEST(Gmlan, SkippedBlocksNeedTheirOwnEnd) {
    EXPECT_EQ(gmlanMessages("/begin CAN 1 /end SOURCE"),
              "Error 1: Keyword 'CAN' expected after /end (IGN)\n");
    EXPECT_EQ(gmlanMessages("/begin X 1 /end SOURCE"),
              "Error 1: Keyword 'token=303' expected after /end (IGN)\n");
}

// --- SOURCE --------------------------------------------------------------------------------------

TEST(GmlanSource, FillsAListARasterAndTheirIdentifiers) {
    EXPECT_EQ(
        gmlanDump(
            "/begin SOURCE \"fast\" 3 25 QP_BLOB QP_BLOB_VERSION 0x0300 FREERUNNINGMODE "
            "RDBPI_PARAMETER RESPONSE_TYPE RDBPI_RESPONSE_TYPE_USDT "
            "/begin CAN /begin UUDT_CAN_IDs FIRST_CAN_ID 0x5E8 LAST_CAN_ID 0x5EB /end UUDT_CAN_IDs "
            "/end CAN TRANSMISSION_MODE TRANSMISSION_MODE_FAST "
            "/begin AVAILABLE_PERIODIC_IDENTIFIER_RANGE LAST_ID 0xFE FIRST_ID 0xEF "
            "/end AVAILABLE_PERIODIC_IDENTIFIER_RANGE "
            "/begin AVAILABLE_PARAMETER_IDENTIFIER_RANGE FIRST_ID 1 FIRST_ID 2 LAST_ID 3.5 "
            "/end AVAILABLE_PARAMETER_IDENTIFIER_RANGE AVAILABLE_ON CAN /end SOURCE"),
        "station\n"
        "  protocolParam\n"
        "  daqTpCapabilities\n"
        "    daqTpCan number=3\n"
        "  daqCapabilities\n"
        "    properties\n"
        "      list sources\n"
        "        list fast\n"
        "      value can_id_first=1512\n"
        "      value can_id_last=1515\n"
        "      value packet_id_last=254\n"
        "      value packet_id_first=239\n"
        "      value parameter_id_first=2\n"
        "      value parameter_id_last=3\n"
        "    raster fast shortName=\"fast\" channel=3 cyclic=true\n"
        "    daq fast number=3\n");
}

TEST(GmlanSource, EachSourceHasItsOwnObjects) {
    EXPECT_EQ(gmlanDump("/begin SOURCE \"a\" 3 25 /end SOURCE /begin SOURCE \"b\" 4.5 1 "
                        "/end SOURCE"),
              "station\n"
              "  protocolParam\n"
              "  daqTpCapabilities\n"
              "    daqTpCan number=3\n"
              "    daqTpCan number=4\n"
              "  daqCapabilities\n"
              "    properties\n"
              "      list sources\n"
              "        list a\n"
              "        list b\n"
              "    raster a shortName=\"a\" channel=3 cyclic=true\n"
              "    raster b shortName=\"b\" channel=4 cyclic=true\n"
              "    daq a number=3\n"
              "    daq b number=4\n");
}

TEST(GmlanSource, ItsNumbersAreValuesOfTheirOwn) {
    CollectingConsole console;
    PhA2l reader(console, "a.a2l");
    const std::string text = moduleText(gmlanBlock("/begin SOURCE \"a\" 3 25 /end SOURCE"));
    MemoryInputFile input(text);
    PhRoot root;
    ASSERT_EQ(reader.parse(root, input), 0);
    PhStationParam& station = *root.documents.at(0).documents.at(0).commParams.at(0).stationParam;
    const PhHandle<PhValue>& raster = station.daqCapabilities().rasters.at(0).channel;
    const PhHandle<PhValue>& list = station.daqCapabilities().daqLists.at(0).number;
    const PhHandle<PhValue>& identifier = station.daqTpCapabilities().daqLists.at(0).number;
    EXPECT_NE(raster.get(), list.get());
    EXPECT_NE(raster.get(), identifier.get());
    EXPECT_NE(list.get(), identifier.get());
}

TEST(GmlanSource, NeedsItsNameInQuotes) {
    const std::string expected = "Error 1: String expected\n";
    EXPECT_EQ(gmlanMessages("/begin SOURCE fast 3 25 /end SOURCE"), expected);
    EXPECT_EQ(gmlanMessages("/begin SOURCE NULL 3 25 /end SOURCE"), expected);
    EXPECT_EQ(gmlanMessages("/begin SOURCE /end SOURCE"), expected);
}

TEST(GmlanSource, ANumberOfAnotherKindIsZero) {
    EXPECT_EQ(dumpBelow("daqTpCapabilities", gmlanDump("/begin SOURCE \"a\" x y /end SOURCE")),
              "daqTpCan number=0\n");
}

TEST(GmlanSource, UnknownBlocksAreSkippedAndUnknownWordsAreErrors) {
    EXPECT_EQ(gmlanMessages("/begin SOURCE \"a\" 3 25 /begin X /end X /begin CAN /begin X /end X "
                            "/begin UUDT_CAN_IDs /begin X /end X /end UUDT_CAN_IDs /end CAN "
                            "/begin UUDT_CAN_IDs 1 /end UUDT_CAN_IDs /end SOURCE"),
              "");
    EXPECT_EQ(gmlanMessages("/begin SOURCE \"a\" 3 25 1"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(gmlanMessages("/begin SOURCE \"a\" 3 25 FIRST_ID 1"),
              "Error 1: Unexpected token 'FIRST_ID' found\n");
    EXPECT_EQ(gmlanMessages("/begin SOURCE \"a\" 3 25 /begin CAN 500000"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(gmlanMessages("/begin SOURCE \"a\" 3 25 /begin CAN /begin UUDT_CAN_IDs FIRST_ID 1"),
              "Error 1: Unexpected token 'FIRST_ID' found\n");
    EXPECT_EQ(gmlanMessages("/begin SOURCE \"a\" 3 25 "
                            "/begin AVAILABLE_PERIODIC_IDENTIFIER_RANGE LAST_CAN_ID 1"),
              "Error 1: Unexpected token 'LAST_CAN_ID' found\n");
}

TEST(GmlanSource, ClosingErrors) {
    const std::string source = "/begin SOURCE \"a\" 3 25 ";
    EXPECT_EQ(gmlanMessages(source + "/end TP_BLOB"),
              "Error 1: Keyword 'SOURCE' expected after /end\n");
    EXPECT_EQ(gmlanMessages(source + "/begin CAN /end SOURCE"),
              "Error 1: Keyword 'CAN' expected after /end\n");
    EXPECT_EQ(gmlanMessages(source + "/begin CAN /begin UUDT_CAN_IDs /end CAN"),
              "Error 1: Keyword 'UUDT_CAN_IDs' expected after /end\n");
    for (const std::string range :
         {"AVAILABLE_PERIODIC_IDENTIFIER_RANGE", "AVAILABLE_PARAMETER_IDENTIFIER_RANGE"}) {
        std::string text = source;
        text.append("/begin ").append(range).append(" FIRST_ID 1 LAST_ID 2 /end SOURCE");
        EXPECT_EQ(gmlanMessages(text), "Error 1: Keyword '" + range + "' expected after /end\n");
    }
}

// --- TP_BLOB -------------------------------------------------------------------------------------

std::string tpBlob(std::string_view parts) {
    return "/begin TP_BLOB 0x0300 ISO14229_1_2003 BYTEORDER_MSB_FIRST " + std::string(parts) +
           " /end TP_BLOB";
}

TEST(GmlanTransport, FillsACanTransport) {
    EXPECT_EQ(
        gmlanDump(tpBlob(
            "/begin SESSION \"extended\" 0x03 /end SESSION "
            "/begin DATA_ACCESS 0 0 1 1 0 0 /end DATA_ACCESS "
            "/begin DIAG_BAUD 500000 0x85 BD_PARA 0x00 /end DIAG_BAUD "
            "/begin DIAG_BAUD 500000 0x85 BD_PARA 0x00 1 2 /end DIAG_BAUD "
            "/begin ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER 1 AALFI_FOR_RAM 2 "
            "/end ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER "
            "/begin SECURITY_ACCESS 1 /end SECURITY_ACCESS /begin COPY 1 /end COPY "
            "/begin CAN 500000 SamplePoint 80 SamplesPerBit 1 BTL_CYCLES 10 SJW 2 SYNC_EDGE 0 "
            "/begin ADDRESS 0x7E8 0x7E0 TGT_ECU 1 TGT_TOOL 0xF1 /end ADDRESS "
            "/begin TransportProtocolVersion ISO15765_2_2003 /end TransportProtocolVersion "
            "NETWORK_LIMITS 255 4095 USDTP_TIMING_DEFAULTS 70 70 70 0 100 0 5000 "
            "USDTP_TIMING 70 70 70 USDTP_TIMING /begin X /end X /end CAN")),
        "station\n"
        "  protocolParam encoding=BigEndian\n"
        "transport CAN transportType=CAN slaveCanId=2024 masterCanId=2016\n"
        "  properties\n"
        "    value bitrate=500000\n");
}

TEST(GmlanTransport, TheBitrateIsAnInteger) {
    const auto bitrate = [](const std::string& text) {
        return dumpBelow("properties", gmlanDump(tpBlob("/begin CAN " + text + " /end CAN")));
    };
    EXPECT_EQ(bitrate("33333.3"), "value bitrate=33333\n");
    EXPECT_EQ(bitrate("x"), "value bitrate=0\n");
}

TEST(GmlanTransport, ByteOrder) {
    const auto encoding = [](const std::string& word) {
        const std::string dump = gmlanDump("/begin TP_BLOB 1 2 " + word + " /end TP_BLOB");
        return dump.substr(0, dump.find("transport"));
    };
    EXPECT_EQ(encoding("BYTEORDER_MSB_FIRST"),
              "station\n"
              "  protocolParam encoding=BigEndian\n");
    EXPECT_EQ(encoding("BYTEORDER_MSB_LAST"),
              "station\n"
              "  protocolParam encoding=LittleEndian\n");
    EXPECT_EQ(encoding("MSB_LAST"),
              "-: Warning (a.a2l:1): Invalid Byteorder 303 in ASAP1B_GMLAN/TP_BLOB\n");
    EXPECT_EQ(encoding("2"),
              "-: Warning (a.a2l:1): Invalid Byteorder 300 in ASAP1B_GMLAN/TP_BLOB\n");
    EXPECT_EQ(encoding("FAST"),
              "-: Warning (a.a2l:1): Invalid Byteorder 5013 in ASAP1B_GMLAN/TP_BLOB\n");
    EXPECT_EQ(gmlanMessages("/begin TP_BLOB 1 2 /end TP_BLOB"),
              "Warning 1: Invalid Byteorder 2 in ASAP1B_GMLAN/TP_BLOB\n"
              "Error 1: Unexpected token 'TP_BLOB' found\n");
}

TEST(GmlanTransport, AnUnknownByteOrderKeepsTheEncoding) {
    EXPECT_THAT(parseModule(gmlanBlock(tpBlob("") + " /begin TP_BLOB 1 2 x /end TP_BLOB")).model,
                HasSubstr("protocolParam encoding=BigEndian\n"));
}

TEST(GmlanTransport, OnlyAVerboseReaderTellsOfAChangedEncoding) {
    const std::string blocks = tpBlob("") + " /begin TP_BLOB 1 2 BYTEORDER_MSB_LAST /end TP_BLOB";
    EXPECT_EQ(gmlanMessages(blocks), "");
    EXPECT_EQ(gmlanTrace(blocks),
              "-:   Parse IF_DATA ASAP1B_GMLAN\n"
              "-:   Parse IF_DATA ASAP1B_GMLAN/TP_BLOB\n"
              "-: Warning (a.a2l:1): Encoding changed in GMLAN/TP_BLOB (1 -> 2)\n"
              "-:   Parse IF_DATA ASAP1B_GMLAN/TP_BLOB\n");
}

TEST(GmlanTransport, Errors) {
    EXPECT_EQ(gmlanMessages(tpBlob("BTL_CYCLES 1")),
              "Error 1: Unexpected token 'BTL_CYCLES' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin SESSION \"x\" 1 2 /end SESSION")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin DATA_ACCESS 1 2 3 4 5 /end DATA_ACCESS")),
              "Error 1: Unexpected token 'DATA_ACCESS' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin DIAG_BAUD 1 2 BD_PARA 4 x /end DIAG_BAUD")),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin CAN 1 2 /end CAN")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin CAN 1 BAUDRATE 2 /end CAN")),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin CAN 1 USDTP_TIMING 1 2.5 /end CAN")),
              "Error 1: Unexpected token 'token=301' found\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin CAN 1 /begin ADDRESS 1 2 OTHER 3 /end ADDRESS")),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(gmlanMessages(
                  tpBlob("/begin CAN 1 /begin ADDRESS 1 2 TGT_A 1 TGT_B 2 TGT_C 3 /end ADDRESS")),
              "Error 1: Unexpected token 'token=303' found\n");
}

TEST(GmlanTransport, ClosingErrors) {
    EXPECT_EQ(gmlanMessages("/begin TP_BLOB 1 2 BYTEORDER_MSB_LAST /end SOURCE"),
              "Error 1: Keyword 'TP_BLOB' expected after /end\n");
    struct Row {
        const char* keyword;
        const char* parameters;
    };
    for (const Row& row : {Row{"SESSION", "\"x\" 1"}, Row{"DATA_ACCESS", "1 2 3 4 5 6"},
                           Row{"DIAG_BAUD", "1 2 BD_PARA 4"}, Row{"CAN", "1"}}) {
        const std::string keyword(row.keyword);
        EXPECT_EQ(gmlanMessages(tpBlob("/begin " + keyword + " " + row.parameters + " /end X")),
                  "Error 1: Keyword '" + keyword + "' expected after /end\n");
    }
    EXPECT_EQ(gmlanMessages(tpBlob("/begin CAN 1 /begin ADDRESS 1 2 /end CAN")),
              "Error 1: Keyword 'ADDRESS' expected after /end\n");
    EXPECT_EQ(gmlanMessages(tpBlob("/begin CAN 1 /begin TransportProtocolVersion 2 /end CAN")),
              "Warning 1: Unexpected token 'token=300' found\n"
              "Error 1: Keyword 'TransportProtocolVersion' expected after /end\n");
    EXPECT_EQ(
        gmlanMessages(tpBlob("/begin ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER 1 /end CAN")),
        "Error 1: Keyword 'ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER' expected after /end (IGN)\n");
}

// --- Everything together -------------------------------------------------------------------------

/// One description with every part that the protocol has. Without blanks in its texts.
constexpr std::string_view kRich = R"(/begin PROJECT P "" /begin MODULE Ecu ""
/begin IF_DATA ASAP1B_GMLAN
  /begin SOURCE "fast" 3 25 QP_BLOB QP_BLOB_VERSION 0x0300 FREERUNNINGMODE
    RDBPI_PARAMETER RESPONSE_TYPE RDBPI_RESPONSE_TYPE_UUDT
    /begin CAN /begin UUDT_CAN_IDs FIRST_CAN_ID 0x5E8 LAST_CAN_ID 0x5EB /end UUDT_CAN_IDs /end CAN
    TRANSMISSION_MODE TRANSMISSION_MODE_FAST
    /begin AVAILABLE_PERIODIC_IDENTIFIER_RANGE FIRST_ID 0xEF LAST_ID 0xFE
    /end AVAILABLE_PERIODIC_IDENTIFIER_RANGE
    /begin AVAILABLE_PARAMETER_IDENTIFIER_RANGE FIRST_ID 1 LAST_ID 2
    /end AVAILABLE_PARAMETER_IDENTIFIER_RANGE
    AVAILABLE_ON CAN
  /end SOURCE
  /begin MAKERS_OWN /begin INNER 1 /end INNER /end MAKERS_OWN
  /begin TP_BLOB 0x0300 ISO14229_1_2003 BYTEORDER_MSB_FIRST
    /begin SESSION "extended" 0x03 /end SESSION
    /begin DATA_ACCESS 0 0 1 1 0 0 /end DATA_ACCESS
    /begin DIAG_BAUD 500000 0x85 BD_PARA 0x00 0x01 /end DIAG_BAUD
    /begin ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER 1 AALFI_FOR_RAM 2
    /end ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER
    /begin CAN 500000 SamplePoint 80 SamplesPerBit 1 BTL_CYCLES 10 SJW 2 SYNC_EDGE 0
      /begin ADDRESS 0x7E8 0x7E0 TGT_ECU 1 TGT_TOOL 2 /end ADDRESS
      /begin TransportProtocolVersion ISO15765_2_2003 /end TransportProtocolVersion
      NETWORK_LIMITS 255 4095 USDTP_TIMING_DEFAULTS 70 70 70 0 100 0 5000 USDTP_TIMING 70 70 70
    /end CAN
  /end TP_BLOB
/end IF_DATA
/end MODULE /end PROJECT
)";

TEST(Gmlan, TracesItsBlocks) {
    EXPECT_EQ(parseText(kRich, {.verbose = true}).console,
              "-: Parse PROJECT 'P'\n"
              "-: Parse MODULE 'Ecu'\n"
              "-:   Parse IF_DATA ASAP1B_GMLAN\n"
              "-:   Parse IF_DATA ASAP1B_GMLAN/SOURCE\n"
              "-:   Parse IF_DATA ASAP1B_GMLAN/TP_BLOB\n");
}

TEST(Gmlan, EveryPartTogetherGivesNoMessage) {
    const Parsed parsed = parseText(kRich);
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console, "");
}

TEST(Gmlan, ADescriptionCutOffAnywhereEndsInAnError) {
    cutAfterEachToken(kRich, [](std::string_view cut, const Parsed& parsed) {
        if (cut.ends_with("/end PROJECT")) {
            return;
        }
        EXPECT_EQ(parsed.status, -1) << cut;
        EXPECT_THAT(parsed.console, HasSubstr("-: Error (a.a2l:")) << cut;
        EXPECT_THAT(parsed.console, EndsWith("\n")) << cut;
    });
}

}  // namespace
}  // namespace quillmark
