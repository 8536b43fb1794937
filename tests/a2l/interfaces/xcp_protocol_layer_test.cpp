#include <array>

#include <gtest/gtest.h>

#include "a2l/interfaces/xcp_texts.h"

namespace quillmark {
namespace {

std::string layer(std::string_view content,
                  std::string_view words = "BYTE_ORDER_MSB_LAST ADDRESS_GRANULARITY_BYTE") {
    return "/begin PROTOCOL_LAYER 0x0104 1000 200 0 1 2 3 4 8 16 " + std::string(words) + " " +
           std::string(content) + " /end PROTOCOL_LAYER ";
}

/// The properties of the protocol behind the thirteen fixed ones.
std::string furtherProperties(std::string_view content) {
    constexpr std::string_view kLastFixed = "value address_granularity=1\n";
    const std::string dump = xcpDump(layer(content));
    const std::size_t start = dump.find(kLastFixed);
    return start == std::string::npos ? dump : dump.substr(start + kLastFixed.size());
}

TEST(XcpProtocolLayer, FixedParameters) {
    EXPECT_EQ(xcpDump(layer("")),
              "station\n"
              "  protocolParam encoding=LittleEndian\n"
              "    properties\n"
              "      value xcp_version=260\n"
              "      value t1=1000\n"
              "      value t2=200\n"
              "      value t3=0\n"
              "      value t4=1\n"
              "      value t5=2\n"
              "      value t6=3\n"
              "      value t7=4\n"
              "      value max_cto=8\n"
              "      value max_dto=16\n"
              "      value xcp_byteorder_code=0\n"
              "      value address_granularity=1\n");
}

TEST(XcpProtocolLayer, NumbersAreStoredAsIntegers) {
    const std::string dump = xcpDump(
        "/begin PROTOCOL_LAYER 1.9 -2.9 1e99 -1e99 \"5\" SIX DAQ /begin 8 9 BYTE_ORDER_MSB_FIRST "
        "ADDRESS_GRANULARITY_BYTE /end PROTOCOL_LAYER");
    EXPECT_EQ(linesWith("value", dump),
              "value xcp_version=1\n"
              "value t1=-2\n"
              "value t2=2147483647\n"
              "value t3=-2147483648\n"
              "value t4=0\n"
              "value t5=0\n"
              "value t6=0\n"
              "value t7=0\n"
              "value max_cto=8\n"
              "value max_dto=9\n"
              "value xcp_byteorder_code=1\n"
              "value address_granularity=1\n");
}

TEST(XcpProtocolLayer, ByteOrder) {
    EXPECT_EQ(linesWith("protocolParam", xcpDump(layer("",
                                                       "BYTE_ORDER_MSB_FIRST "
                                                       "ADDRESS_GRANULARITY_BYTE"))),
              "protocolParam encoding=BigEndian\n");
    EXPECT_EQ(xcpMessages(layer("", "MSB_LAST ADDRESS_GRANULARITY_BYTE")),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(xcpMessages(layer("", "ADDRESS_GRANULARITY_BYTE")),
              "Error 1: Unexpected token 'ADDRESS_GRANULARITY_BYTE' found\n");
    EXPECT_EQ(xcpMessages(layer("", "17 BYTE_ORDER_MSB_LAST")),
              "Error 1: Unexpected token 'token=300' found\n");
}

TEST(XcpProtocolLayer, GranularitiesOfWordAndDoubleWordAreSwapped) {
    constexpr std::array<std::pair<const char*, const char*>, 3> kCodes{{
        {"ADDRESS_GRANULARITY_BYTE", "1"},
        {"ADDRESS_GRANULARITY_DWORD", "2"},
        {"ADDRESS_GRANULARITY_WORD", "4"},
    }};
    for (const auto& [word, code] : kCodes) {
        EXPECT_EQ(linesWith("value address_granularity",
                            xcpDump(layer("", std::string("BYTE_ORDER_MSB_LAST ") + word))),
                  std::string("value address_granularity=") + code + "\n");
    }
}

TEST(XcpProtocolLayer, AnUnknownGranularityIsAWarning) {
    const Parsed parsed =
        parseModule(xcpBlock(layer("OPTIONAL_CMD GET_ID", "BYTE_ORDER_MSB_LAST SIZE_BYTE")));
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console, "-: Warning (a.a2l:1): Unexpected token 'SIZE_BYTE' found\n");
    EXPECT_EQ(linesWith("value address_granularity", parsed.model), "");
    EXPECT_EQ(linesWith("value GET_ID", parsed.model), "value GET_ID=250\n");
}

TEST(XcpProtocolLayer, AnotherEncodingIsToldOnlyWhenVerbose) {
    const std::string both = layer("", "BYTE_ORDER_MSB_FIRST ADDRESS_GRANULARITY_BYTE") + layer("");
    EXPECT_EQ(xcpMessages(both), "");
    EXPECT_EQ(linesWith("protocolParam", xcpDump(both)), "protocolParam encoding=LittleEndian\n");
    EXPECT_EQ(xcpTrace(both),
              "-:   Parse IF_DATA XCP\n"
              "-: Warning (a.a2l:1): Encoding changed in XCP/PROTOCOL_LAYER (1 -> 2)\n");
    EXPECT_EQ(xcpTrace(layer("") + layer("", "BYTE_ORDER_MSB_FIRST ADDRESS_GRANULARITY_WORD")),
              "-:   Parse IF_DATA XCP\n"
              "-: Warning (a.a2l:1): Encoding changed in XCP/PROTOCOL_LAYER (2 -> 1)\n");
    EXPECT_EQ(xcpTrace(layer("") + layer("")), "-:   Parse IF_DATA XCP\n");
    EXPECT_EQ(parseModule("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST /end MOD_COMMON " +
                              xcpBlock(layer("")),
                          {.verbose = true})
                      .console.find("Encoding changed in XCP/PROTOCOL_LAYER (1 -> 2)") ==
                  std::string::npos,
              false);
}

TEST(XcpProtocolLayer, OptionalCommands) {
    constexpr std::array kCommands{
        "GET_COMM_MODE_INFO",
        "GET_ID",
        "SET_REQUEST",
        "GET_SEED",
        "UNLOCK",
        "SET_MTA",
        "UPLOAD",
        "SHORT_UPLOAD",
        "BUILD_CHECKSUM",
        "TRANSPORT_LAYER_CMD",
        "USER_CMD",
        "DOWNLOAD",
        "DOWNLOAD_NEXT",
        "DOWNLOAD_MAX",
        "SHORT_DOWNLOAD",
        "MODIFY_BITS",
        "SET_CAL_PAGE",
        "GET_CAL_PAGE",
        "GET_PAG_PROCESSOR_INFO",
        "GET_SEGMENT_INFO",
        "GET_PAGE_INFO",
        "SET_SEGMENT_MODE",
        "GET_SEGMENT_MODE",
        "COPY_CAL_PAGE",
        "CLEAR_DAQ_LIST",
        "SET_DAQ_PTR",
        "WRITE_DAQ",
        "SET_DAQ_LIST_MODE",
        "GET_DAQ_LIST_MODE",
        "START_STOP_DAQ_LIST",
        "START_STOP_SYNCH",
        "GET_DAQ_CLOCK",
        "READ_DAQ",
        "GET_DAQ_PROCESSOR_INFO",
        "GET_DAQ_RESOLUTION_INFO",
        "GET_DAQ_LIST_INFO",
        "GET_DAQ_EVENT_INFO",
        "FREE_DAQ",
        "ALLOC_DAQ",
        "ALLOC_ODT",
        "ALLOC_ODT_ENTRY",
        "PROGRAM_START",
        "PROGRAM_CLEAR",
        "PROGRAM",
        "PROGRAM_RESET",
        "GET_PGM_PROCESSOR_INFO",
        "GET_SECTOR_INFO",
        "PROGRAM_PREPARE",
        "PROGRAM_FORMAT",
        "PROGRAM_NEXT",
        "PROGRAM_MAX",
        "PROGRAM_VERIFY",
        "WRITE_DAQ_MULTIPLE",
        "TIME_CORRELATION_PROPERTIES",
        "DTO_CTR_PROPERTIES",
    };
    // The codes of the protocol run down from 0xFB without a gap.
    static_assert(kCommands.size() == 0xFB - 0xC5 + 1);
    std::string text;
    std::string expected = "      list optional_cmd\n";
    int code = 0xFB;
    for (const char* command : kCommands) {
        text += std::string("OPTIONAL_CMD ") + command + " ";
        expected += std::string("        value ") + command + "=" + std::to_string(code--) + "\n";
    }
    EXPECT_EQ(furtherProperties(text), expected);
}

TEST(XcpProtocolLayer, OtherCommandsAreWarnings) {
    EXPECT_EQ(xcpMessages(layer("OPTIONAL_CMD GET_VERSION OPTIONAL_CMD UNKNOWN OPTIONAL_CMD 250")),
              "Warning 1: Unexpected token 'GET_VERSION' found\n"
              "Warning 1: Unexpected token 'token=303' found\n"
              "Warning 1: Unexpected token 'token=300' found\n");
    const Parsed parsed = parseModule(xcpBlock(layer("OPTIONAL_CMD GET_VERSION")));
    EXPECT_EQ(parsed.model.find("optional_cmd"), std::string::npos);
}

TEST(XcpProtocolLayer, KeywordsWithoutMeaning) {
    EXPECT_EQ(
        furtherProperties("OPTIONAL_LEVEL1_CMD GET_VERSION OPTIONAL_LEVEL1_CMD "
                          "SET_DAQ_PACKED_MODE MAX_DTO_STIM 8 MAX_DTO_STIM \"x\" "
                          "/begin ECU_STATES /begin STATE 1 \"a\" NOT_ACTIVE /end STATE "
                          "/end ECU_STATES /begin OF_A_LATER_VERSION 1 /end OF_A_LATER_VERSION"),
        "");
    EXPECT_EQ(xcpMessages(layer("/begin ECU_STATES /end STATE")),
              "Error 1: Keyword 'ECU_STATES' expected after /end (IGN)\n");
}

TEST(XcpProtocolLayer, SeedAndKey) {
    EXPECT_EQ(furtherProperties("SEED_AND_KEY_EXTERNAL_FUNCTION \"unlock.dll\""),
              "      value seed_and_key_external_function=\"unlock.dll\"\n");
    EXPECT_EQ(xcpMessages(layer("SEED_AND_KEY_EXTERNAL_FUNCTION unlock")),
              "Error 1: String expected\n");
    EXPECT_EQ(xcpMessages(layer("SEED_AND_KEY_EXTERNAL_FUNCTION NULL")),
              "Error 1: String expected\n");
}

TEST(XcpProtocolLayer, End) {
    EXPECT_EQ(xcpMessages("/begin PROTOCOL_LAYER 1 2 3 4 5 6 7 8 9 10 BYTE_ORDER_MSB_LAST "
                          "ADDRESS_GRANULARITY_BYTE /end DAQ"),
              "Error 1: Keyword 'PROTOCOL_LAYER' expected after /end\n");
    EXPECT_EQ(xcpMessages(layer("DAQ")), "Error 1: Unexpected token 'DAQ' found\n");
    EXPECT_EQ(xcpMessages(layer("UNKNOWN 1")), "Error 1: Unexpected token 'token=303' found\n");
}

// --- COMMUNICATION_MODE_SUPPORTED ----------------------------------------------------------------

constexpr std::string_view kAllModes =
    "      value slave_block_mode_supported=1\n"
    "      value master_block_mode_supported=1\n"
    "      value max_bs=16\n"
    "      value min_st=2\n"
    "      value queue_size=3\n";

TEST(XcpCommunicationMode, BareAndAsBlock) {
    EXPECT_EQ(furtherProperties(
                  "COMMUNICATION_MODE_SUPPORTED BLOCK SLAVE MASTER 0x10 0x02 INTERLEAVED 3"),
              kAllModes);
    EXPECT_EQ(furtherProperties("/begin COMMUNICATION_MODE_SUPPORTED BLOCK SLAVE MASTER 0x10 0x02 "
                                "INTERLEAVED 3 /end COMMUNICATION_MODE_SUPPORTED"),
              kAllModes);
    EXPECT_EQ(furtherProperties("/begin COMMUNICATION_MODE_SUPPORTED "
                                "/end COMMUNICATION_MODE_SUPPORTED COMMUNICATION_MODE_SUPPORTED"),
              "");
    EXPECT_EQ(furtherProperties("COMMUNICATION_MODE_SUPPORTED INTERLEAVED 3 BLOCK"),
              "      value queue_size=3\n");
}

TEST(XcpCommunicationMode, TheBareFormEndsAtTheFirstOtherToken) {
    EXPECT_EQ(furtherProperties("COMMUNICATION_MODE_SUPPORTED BLOCK SLAVE OPTIONAL_CMD GET_ID"),
              "      value slave_block_mode_supported=1\n"
              "      list optional_cmd\n"
              "        value GET_ID=250\n");
    EXPECT_EQ(xcpMessages(layer("COMMUNICATION_MODE_SUPPORTED BLOCK SLAVE 5")),
              "Error 1: Unexpected token 'token=300' found\n");
}

TEST(XcpCommunicationMode, TheBlockFormTakesNothingElse) {
    EXPECT_EQ(xcpMessages(layer("/begin COMMUNICATION_MODE_SUPPORTED BLOCK OPTIONAL_CMD GET_ID")),
              "Error 1: Unexpected token 'OPTIONAL_CMD' found\n");
    EXPECT_EQ(xcpMessages(layer("/begin COMMUNICATION_MODE_SUPPORTED BLOCK /end BLOCK")),
              "Error 1: Keyword 'COMMUNICATION_MODE_SUPPORTED' expected after /end\n");
}

}  // namespace
}  // namespace quillmark
