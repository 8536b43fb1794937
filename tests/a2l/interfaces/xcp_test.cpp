#include "a2l/interfaces/xcp.h"

#include <gtest/gtest.h>

#include "a2l/interfaces/xcp_texts.h"

namespace quillmark {
namespace {

// --- IF_DATA and the block as a whole ------------------------------------------------------------

TEST(Xcp, AnEmptyBlockMakesCommunicationParameters) {
    const std::string expected =
        "commParam XCP protocolType=XCP\n"
        "  station\n"
        "    protocolParam\n";
    EXPECT_EQ(moduleDump("/begin IF_DATA XCP /end IF_DATA"), expected);
    EXPECT_EQ(moduleDump("/begin IF_DATA XCPplus 0x0104 /end IF_DATA"), expected);
}

TEST(Xcp, XcpPlusTakesExactlyOneMoreToken) {
    EXPECT_EQ(messages("/begin IF_DATA XCP 0x0104 /end IF_DATA"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(messages("/begin IF_DATA XCPplus 0x0104 1 /end IF_DATA"),
              "Error 1: Unexpected token 'token=300' found\n");
    // The token is dropped whatever it is.
    EXPECT_EQ(messages("/begin IF_DATA XCPplus /end IF_DATA"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin IF_DATA XCPplus \"1\" /end IF_DATA"), "");
}

TEST(Xcp, OtherNamesAreSkipped) {
    for (const char* name : {"XCPPlus", "xcp", "XCP_PLUS", "\"XCP\"", "XCP2", "CANAPE_EXT"}) {
        EXPECT_EQ(moduleDump("/begin IF_DATA " + std::string(name) +
                             " /begin XCP_ON_CAN /end /end IF_DATA"),
                  "");
    }
}

TEST(Xcp, TheModulesByteOrderIsTheFirstEncoding) {
    EXPECT_EQ(moduleDump("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST /end MOD_COMMON "
                         "/begin IF_DATA XCP /end IF_DATA"),
              "commParam XCP protocolType=XCP\n"
              "  station\n"
              "    protocolParam encoding=BigEndian\n");
}

TEST(Xcp, EndNeedsIfData) {
    const std::string expected = "Error 1: Keyword 'IF_DATA' expected after /end\n";
    EXPECT_EQ(messages("/begin IF_DATA XCP /end MODULE"), expected);
    EXPECT_EQ(messages("/begin IF_DATA XCP /end XCP"), expected);
    EXPECT_EQ(messages("/begin IF_DATA XCP /end /*"),
              "Error 3: Error: Unexpected EOF in Comment (Line 1)\n");
    EXPECT_EQ(messages("/begin IF_DATA XCP /end /end IF_DATA"), expected);
}

TEST(Xcp, WhatFollowsTheBlockIsReadWithTheCoreKeywords) {
    EXPECT_EQ(
        moduleDump("/begin IF_DATA XCP /end IF_DATA /begin UNIT m \"\" \"m\" DERIVED /end UNIT"),
        "unit m longIdentifier=\"\" displayText=\"m\"\n"
        "commParam XCP protocolType=XCP\n"
        "  station\n"
        "    protocolParam\n");
    EXPECT_EQ(messages("/begin IF_DATA XCP /end IF_DATA PROTOCOL_LAYER"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin IF_DATA XCP /end IF_DATA NUMBER"),
              "Error 1: Unexpected token 'NUMBER' found\n");
}

TEST(Xcp, BlocksAreSkippedWhole) {
    EXPECT_EQ(
        xcpDump("/begin PAG 2 FREEZE_SUPPORTED /end PAG "
                "/begin PGM PGM_MODE_ABSOLUTE 1 8 /begin SECTOR \"boot\" 1 2 3 4 5 6 /end SECTOR "
                "COMMUNICATION_MODE_SUPPORTED BLOCK SLAVE /end PGM "
                "/begin SEGMENT 0 2 0 0 0 /begin CHECKSUM XCP_ADD_44 MAX_BLOCK_SIZE 9 "
                "/end CHECKSUM \"/end SEGMENT\" /end SEGMENT "
                "/begin TIME_CORRELATION DAQ_TIMESTAMPS_RELATE_TO XCP_SLAVE_CLOCK "
                "/end TIME_CORRELATION "
                "/begin XCP_ON_SxI 0x0104 9600 /end XCP_ON_SxI "
                "/begin XCP_ON_USB 1 /begin X /end Y /end XCP_ON_USB "
                "/begin MAKERS_OWN PROTOCOL_LAYER /end MAKERS_OWN"),
        "station\n"
        "  protocolParam\n");
}

TEST(Xcp, SkippedBlocksNeedTheirOwnEnd) {
    for (const char* name : {"PAG", "PGM", "SEGMENT", "TIME_CORRELATION", "XCP_ON_SxI"}) {
        const std::string block(name);
        EXPECT_EQ(xcpMessages("/begin " + block + " 1 /end DAQ"),
                  "Error 1: Keyword '" + block + "' expected after /end (IGN)\n");
    }
    EXPECT_EQ(xcpMessages("/begin MAKERS_OWN 1 /end DAQ"),
              "Error 1: Keyword 'token=303' expected after /end (IGN)\n");
    // Any word that is no keyword ends a block of a name that is none.
    EXPECT_EQ(xcpMessages("/begin MAKERS_OWN 1 /end OTHER"), "");
}

TEST(Xcp, BareWordsAreErrors) {
    EXPECT_EQ(xcpMessages("DAQ"), "Error 1: Unexpected token 'DAQ' found\n");
    EXPECT_EQ(xcpMessages("MAKERS_OWN"), "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(xcpMessages("1.5"), "Error 1: Unexpected token 'token=301' found\n");
    EXPECT_EQ(xcpMessages("\"x\""), "Error 1: Unexpected token 'token=302' found\n");
}

TEST(Xcp, ASecondBlockFillsTheSameParameters) {
    EXPECT_EQ(moduleDump("/begin MOD_COMMON \"\" BYTE_ORDER MSB_FIRST /end MOD_COMMON "
                         "/begin IF_DATA XCP /begin XCP_ON_CAN 1 /end XCP_ON_CAN /end IF_DATA "
                         "/begin MOD_COMMON \"\" BYTE_ORDER MSB_LAST /end MOD_COMMON "
                         "/begin IF_DATA XCPplus 1 /begin XCP_ON_UDP_IP 1 5555 /end XCP_ON_UDP_IP "
                         "/end IF_DATA"),
              "commParam XCP protocolType=XCP\n"
              "  station\n"
              "    protocolParam encoding=BigEndian\n"
              "  transport CAN transportType=CAN\n"
              "  transport UDP transportType=UDP\n"
              "    properties\n"
              "      value port=5555\n");
}

TEST(Xcp, OutsideOfAModuleNothingIsKept) {
    const std::string block =
        "/begin IF_DATA XCP "
        "/begin PROTOCOL_LAYER 1 2 3 4 5 6 7 8 9 10 BYTE_ORDER_MSB_LAST ADDRESS_GRANULARITY_BYTE "
        "/end PROTOCOL_LAYER "
        "/begin DAQ STATIC 1 2 3 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE "
        "IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 4 "
        "NO_OVERLOAD_INDICATION /begin DAQ_LIST 0 /end DAQ_LIST /end DAQ "
        "/begin XCP_ON_CAN 1 /begin DAQ_LIST_CAN_ID 0 FIXED 5 /end DAQ_LIST_CAN_ID /end XCP_ON_CAN "
        "/begin DAQ_EVENT FIXED_EVENT_LIST EVENT 1 /end DAQ_EVENT /end IF_DATA";
    EXPECT_EQ(moduleDump("/begin GROUP G \"\" " + block + " /end GROUP"),
              "function G longIdentifier=\"\"\n");
    EXPECT_EQ(moduleDump("/begin MOD_PAR \"\" /begin MEMORY_SEGMENT S \"\" DATA RAM INTERN 0 0 0 0 "
                         "0 0 0 " +
                         block + " /end MEMORY_SEGMENT /end MOD_PAR"),
              "memoryPage S longIdentifier=\"\" use=Data memoryType=Ram attribute=Intern\n");
    EXPECT_EQ(parseModule("/begin GROUP G \"\" " + block + " /end GROUP", {.verbose = true})
                  .console.find("Merging"),
              std::string::npos);
    EXPECT_EQ(moduleDump("/begin FUNCTION F \"\" " + block + " /end FUNCTION"),
              "function F longIdentifier=\"\"\n");
}

TEST(Xcp, ErrorsOutsideOfAModuleCountLikeAny) {
    EXPECT_EQ(messages("/begin FUNCTION F \"\" /begin IF_DATA XCP /begin XCP_ON_CAN 1 X"),
              "Error 1: Unexpected token 'token=303' found\n");
}

// --- Identifiers of DAQ lists --------------------------------------------------------------------

constexpr std::string_view kLayer =
    "/begin PROTOCOL_LAYER 1 2 3 4 5 6 7 8 9 10 BYTE_ORDER_MSB_LAST ADDRESS_GRANULARITY_BYTE "
    "/end PROTOCOL_LAYER ";

std::string daqLists(std::string_view lists) {
    return "/begin DAQ STATIC 1 2 3 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE "
           "IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 4 "
           "NO_OVERLOAD_INDICATION " +
           std::string(lists) + " /end DAQ ";
}

constexpr std::string_view kTwoLists =
    "/begin DAQ_LIST 0 /end DAQ_LIST /begin DAQ_LIST 3 /end DAQ_LIST";

std::string can(std::string_view content) {
    return "/begin XCP_ON_CAN 0x0100 " + std::string(content) + " /end XCP_ON_CAN ";
}

std::string canId(std::string_view content) {
    return "/begin DAQ_LIST_CAN_ID " + std::string(content) + " /end DAQ_LIST_CAN_ID ";
}

/// The lines about DAQ-list identifiers, the protocol's first and then the transports'.
std::string identifiers(std::string_view content) {
    return linesWith("daqTpCan ", xcpDump(content));
}

/// Whether the block is traced as merging.
bool merges(std::string_view content) {
    return xcpTrace(content).find("-: Merging DAQ-Lists ... \n") != std::string::npos;
}

TEST(XcpMerge, ListsOfTheProtocolTakeTheTransportsIdentifiers) {
    const std::string text = std::string(kLayer) + daqLists(kTwoLists) +
                             can(canId("3 FIXED 0x500") + canId("7 FIXED 0x501"));
    EXPECT_EQ(identifiers(text),
              "daqTpCan number=0\n"
              "daqTpCan number=3 canId=1280\n"
              "daqTpCan number=3 canId=1280\n"
              "daqTpCan number=7 canId=1281\n");
    EXPECT_TRUE(merges(text));
}

TEST(XcpMerge, TheOrderOfTheBlocksIsFree) {
    EXPECT_EQ(identifiers(can(canId("0 FIXED 1")) + daqLists(kTwoLists) + std::string(kLayer)),
              "daqTpCan number=0 canId=1\n"
              "daqTpCan number=3\n"
              "daqTpCan number=0 canId=1\n");
}

TEST(XcpMerge, NeedsAProtocolLayerOfItsOwnBlock) {
    const std::string unmerged =
        "daqTpCan number=0\n"
        "daqTpCan number=3\n"
        "daqTpCan number=0 canId=1\n";
    const std::string without = daqLists(kTwoLists) + can(canId("0 FIXED 1"));
    EXPECT_EQ(identifiers(without), unmerged);
    EXPECT_FALSE(merges(without));
    // That of the transport does not count.
    const std::string inTransport =
        daqLists(kTwoLists) + can(canId("0 FIXED 1") + std::string(kLayer));
    EXPECT_EQ(identifiers(inTransport), unmerged);
    EXPECT_FALSE(merges(inTransport));
    // Nor does that of another block, while the lists may well come from there.
    const std::string otherBlock = std::string(kLayer) + daqLists(kTwoLists) +
                                   "/end IF_DATA /begin IF_DATA XCP " + can(canId("0 FIXED 1"));
    EXPECT_EQ(identifiers(otherBlock), unmerged);
    EXPECT_TRUE(merges(daqLists(kTwoLists) + "/end IF_DATA /begin IF_DATA XCP " +
                       std::string(kLayer) + can(canId("0 FIXED 1"))));
}

TEST(XcpMerge, NeedsListsAndIdentifiers) {
    EXPECT_FALSE(merges(std::string(kLayer) + daqLists("") + can(canId("0 FIXED 1"))));
    EXPECT_FALSE(merges(std::string(kLayer) + daqLists(kTwoLists) + can("")));
    EXPECT_FALSE(merges(std::string(kLayer) + can(canId("0 FIXED 1"))));
    EXPECT_FALSE(merges(std::string(kLayer) + daqLists(kTwoLists)));
}

TEST(XcpMerge, OnlyTheLastCanTransportTakesPart) {
    EXPECT_EQ(identifiers(std::string(kLayer) + daqLists(kTwoLists) + can(canId("0 FIXED 1")) +
                          can(canId("3 FIXED 2"))),
              "daqTpCan number=0\n"
              "daqTpCan number=3 canId=2\n"
              "daqTpCan number=0 canId=1\n"
              "daqTpCan number=3 canId=2\n");
}

TEST(XcpMerge, AVariableIdentifierIsTakenToo) {
    const std::string fixed = std::string(kLayer) + daqLists(kTwoLists) + can(canId("0 FIXED 1"));
    EXPECT_EQ(identifiers(fixed + "/end IF_DATA /begin IF_DATA XCP " + std::string(kLayer) +
                          can(canId("0 VARIABLE"))),
              "daqTpCan number=0\n"
              "daqTpCan number=3\n"
              "daqTpCan number=0 canId=1\n"
              "daqTpCan number=0\n");
}

TEST(XcpMerge, OfTwoListsWithOneNumberTheFirstIsFound) {
    EXPECT_EQ(
        identifiers(std::string(kLayer) +
                    daqLists("/begin DAQ_LIST 0 /end DAQ_LIST /begin DAQ_LIST 0 /end DAQ_LIST") +
                    can(canId("0 FIXED 1"))),
        "daqTpCan number=0 canId=1\n"
        "daqTpCan number=0\n"
        "daqTpCan number=0 canId=1\n");
}

}  // namespace
}  // namespace quillmark
