#include <array>

#include <gtest/gtest.h>

#include "a2l/interfaces/xcp_texts.h"

namespace quillmark {
namespace {

constexpr std::string_view kStation =
    "station\n"
    "  protocolParam\n";

/// The dump of the transport that a block gives.
std::string transport(std::string_view keyword, std::string_view content) {
    const std::string word(keyword);
    const std::string dump =
        xcpDump("/begin " + word + " " + std::string(content) + " /end " + word);
    return dump.starts_with(kStation) ? dump.substr(kStation.size()) : dump;
}

std::string can(std::string_view content) {
    return transport("XCP_ON_CAN", content);
}

std::string canMessages(std::string_view content) {
    return xcpMessages("/begin XCP_ON_CAN " + std::string(content));
}

// --- XCP_ON_CAN ----------------------------------------------------------------------------------

TEST(XcpOnCan, Everything) {
    EXPECT_EQ(can("0x0100 CAN_ID_BROADCAST 0x7F0 CAN_ID_MASTER 0x7E1 CAN_ID_SLAVE 0x800007E9 "
                  "CAN_ID_MASTER_INCREMENTAL CAN_ID_GET_DAQ_CLOCK_MULTICAST 0x7FF "
                  "BAUDRATE 500000 SAMPLE_POINT 80 SAMPLE_RATE SINGLE BTL_CYCLES 10 SJW 2 "
                  "SYNC_EDGE SINGLE MAX_DLC_REQUIRED MAX_BUS_LOAD 60 MEASUREMENT_SPLIT_ALLOWED "
                  "OPTIONAL_TL_SUBCMD GET_SLAVE_ID OPTIONAL_TL_SUBCMD SET_DAQ_ID "
                  "TRANSPORT_LAYER_INSTANCE \"CAN 1\" "
                  "/begin DAQ_LIST_CAN_ID 0 FIXED 0x7EA /end DAQ_LIST_CAN_ID "
                  "/begin EVENT_CAN_ID_LIST 1 FIXED 0x7EB FIXED 0x7EC /end EVENT_CAN_ID_LIST"),
              "transport CAN transportType=CAN instanceName=\"CAN 1\" slaveCanId=-2147481623 "
              "masterCanId=2017\n"
              "  properties\n"
              "    value bitrate=500000\n"
              "    value max_dlc_required=1\n"
              "  station\n"
              "    daqTpCapabilities\n"
              "      daqTpCan number=0 canId=2026\n");
    EXPECT_EQ(xcpTrace("/begin XCP_ON_CAN /end XCP_ON_CAN"),
              "-:   Parse IF_DATA XCP\n-:   Parse IF_DATA XCP_ON_CAN\n");
}

TEST(XcpOnCan, TheVersionMayBeMissing) {
    EXPECT_EQ(can(""), "transport CAN transportType=CAN\n");
    EXPECT_EQ(can("MAX_DLC_REQUIRED"), can("1 MAX_DLC_REQUIRED"));
    EXPECT_EQ(canMessages("1.0"), "Error 1: Unexpected token 'token=301' found\n");
    EXPECT_EQ(canMessages("1 1"), "Error 1: Unexpected token 'token=300' found\n");
}

TEST(XcpOnCan, NumbersOfOtherKinds) {
    EXPECT_EQ(can("1 BAUDRATE 2.5e5 CAN_ID_MASTER 1.9 CAN_ID_SLAVE \"5\""),
              "transport CAN transportType=CAN slaveCanId=0 masterCanId=1\n"
              "  properties\n"
              "    value bitrate=250000\n");
}

TEST(XcpOnCan, SkippedBlocks) {
    for (const char* name : {"DAQ_EVENT", "PAG", "PGM", "SEGMENT", "TIME_CORRELATION",
                             "EVENT_CAN_ID_LIST", "XCP_ON_CAN"}) {
        const std::string block(name);
        EXPECT_EQ(can("1 /begin " + block + " 1 /begin X /end X /end " + block), can("1")) << name;
        EXPECT_EQ(canMessages("1 /begin " + block + " 1 /end FIXED"),
                  "Error 1: Keyword '" + block + "' expected after /end (IGN)\n");
    }
}

TEST(XcpOnCan, InstanceNamesAreTexts) {
    EXPECT_EQ(canMessages("1 TRANSPORT_LAYER_INSTANCE Can1"), "Error 1: String expected\n");
}

TEST(XcpOnCan, End) {
    EXPECT_EQ(canMessages("1 /end XCP_ON_FLX"),
              "Error 1: Keyword 'XCP_ON_CAN' expected after /end\n");
    EXPECT_EQ(canMessages("1 DAQ_LIST_CAN_ID"),
              "Error 1: Unexpected token 'DAQ_LIST_CAN_ID' found\n");
    EXPECT_EQ(canMessages("1 UNKNOWN"), "Error 1: Unexpected token 'token=303' found\n");
}

std::string canId(std::string_view content) {
    return "/begin DAQ_LIST_CAN_ID " + std::string(content) + " /end DAQ_LIST_CAN_ID ";
}

TEST(XcpDaqListCanId, FixedAndVariable) {
    EXPECT_EQ(
        linesWith("daqTpCan ", can(canId("0 FIXED 1") + canId("1 VARIABLE") + canId("2 FIXED 3") +
                                   canId("2 VARIABLE") + canId("0 FIXED 4.9") + canId("3"))),
        "daqTpCan number=0 canId=4\n"
        "daqTpCan number=1\n"
        "daqTpCan number=2\n"
        "daqTpCan number=3\n");
}

TEST(XcpDaqListCanId, Errors) {
    EXPECT_EQ(canMessages("/begin DAQ_LIST_CAN_ID 0 5"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(canMessages("/begin DAQ_LIST_CAN_ID 0 FIXED 5 6"),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(canMessages("/begin DAQ_LIST_CAN_ID 0 FIXED 5 /end XCP_ON_CAN"),
              "Error 1: Keyword 'DAQ_LIST_CAN_ID' expected after /end\n");
}

TEST(XcpOnCan, OverridesGoToTheTransportsOwnStation) {
    EXPECT_EQ(can("1 /begin PROTOCOL_LAYER 1 2 3 4 5 6 7 8 9 10 BYTE_ORDER_MSB_FIRST "
                  "ADDRESS_GRANULARITY_BYTE /end PROTOCOL_LAYER " +
                  canId("0 FIXED 5") +
                  "/begin DAQ STATIC 1 2 3 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE "
                  "IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 4 "
                  "NO_OVERLOAD_INDICATION /begin DAQ_LIST 0 /end DAQ_LIST "
                  "/begin DAQ_LIST 1 /end DAQ_LIST /begin DAQ_LIST 1 /end DAQ_LIST /end DAQ"),
              "transport CAN transportType=CAN\n"
              "  station\n"
              "    protocolParam encoding=BigEndian\n"
              "      properties\n"
              "        value xcp_version=1\n"
              "        value t1=2\n"
              "        value t2=3\n"
              "        value t3=4\n"
              "        value t4=5\n"
              "        value t5=6\n"
              "        value t6=7\n"
              "        value t7=8\n"
              "        value max_cto=9\n"
              "        value max_dto=10\n"
              "        value xcp_byteorder_code=1\n"
              "        value address_granularity=1\n"
              "    daqTpCapabilities\n"
              "      daqTpCan number=0 canId=5\n"
              "      daqTpCan number=1\n"
              "    daqCapabilities configType=1 optimisationType=1 addressExtension=1 "
              "identificationFieldType=1 granularityOdtEntrySize=1 overloadIndication=1 maxDaq=1 "
              "maxEventChannel=2 minDaq=3 maxOdtEntrySize=4\n"
              "      daq number=0\n"
              "      daq number=1\n"
              "      daq number=1\n");
}

TEST(XcpCanFd, Everything) {
    EXPECT_EQ(can("1 /begin CAN_FD MAX_DLC 64 CAN_FD_DATA_TRANSFER_BAUDRATE 2000000 SAMPLE_POINT "
                  "75 BTL_CYCLES 20 SJW 4 SYNC_EDGE SINGLE MAX_DLC_REQUIRED "
                  "SECONDARY_SAMPLE_POINT 70 TRANSCEIVER_DELAY_COMPENSATION ON /end CAN_FD"),
              "transport CAN transportType=CAN\n"
              "  canFd maxDlc=64 dataBitrate=2000000 samplePoint=75 btlCycles=20 sjw=4 syncEdge=1 "
              "secondarySamplePoint=70 maxDlcRequired=true transceiverDelayCompensation=1\n");
    EXPECT_EQ(can("1 /begin CAN_FD SYNC_EDGE DUAL TRANSCEIVER_DELAY_COMPENSATION ON "
                  "TRANSCEIVER_DELAY_COMPENSATION OFF /end CAN_FD"),
              "transport CAN transportType=CAN\n"
              "  canFd syncEdge=2\n");
}

TEST(XcpCanFd, Errors) {
    EXPECT_EQ(canMessages("/begin CAN_FD SYNC_EDGE TRIPLE TRANSCEIVER_DELAY_COMPENSATION MAYBE X"),
              "Warning 1: Unexpected token 'TRIPLE' found\n"
              "Warning 1: Unexpected token 'token=303' found\n"
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(canMessages("/begin CAN_FD /end XCP_ON_CAN"),
              "Error 1: Keyword 'CAN_FD' expected after /end\n");
    EXPECT_EQ(canMessages("/begin CAN_FD 1"), "Error 1: Unexpected token 'token=300' found\n");
}

// --- XCP_ON_UDP_IP and XCP_ON_TCP_IP -------------------------------------------------------------

struct IpTransport {
    const char* keyword;
    const char* firstLine;
    const char* nameInMessages;
};

constexpr std::array kIpTransports{
    IpTransport{"XCP_ON_UDP_IP", "transport UDP transportType=UDP\n", "XCP_ON_UDP"},
    IpTransport{"XCP_ON_TCP_IP", "transport TCP transportType=TCP\n", "XCP_ON_TCP"},
};

std::string properties(std::initializer_list<std::string_view> values) {
    std::string text = "  properties\n    value port=5555\n";
    for (const std::string_view value : values) {
        text += "    value ";
        text += value;
        text += '\n';
    }
    return text;
}

TEST(XcpOnIp, Everything) {
    for (const IpTransport& row : kIpTransports) {
        const std::string first = row.firstLine;
        EXPECT_EQ(transport(row.keyword,
                            "0x0104 5555 ADDRESS \"192.168.0.40\" MAX_BUS_LOAD 60 MAX_BIT_RATE 100 "
                            "MAX_BITRATE 100 PACKET_ALIGNMENT PACKET_ALIGNMENT_8 "
                            "OPTIONAL_TL_SUBCMD GET_SLAVE_ID"),
                  first + properties({"hostname=\"192.168.0.40\"", "packet_alignment=0"}));
        EXPECT_EQ(xcpTrace(std::string("/begin ") + row.keyword + " 1 5555 /end " + row.keyword),
                  std::string("-:   Parse IF_DATA XCP\n-:   Parse IF_DATA ") + row.keyword + "\n");
    }
}

TEST(XcpOnIp, TheAddressIsOptionalAndMayStandAnywhere) {
    for (const IpTransport& row : kIpTransports) {
        const std::string first = row.firstLine;
        EXPECT_EQ(transport(row.keyword, "1 5555"), first + properties({}));
        EXPECT_EQ(transport(row.keyword, "1 5555 \"ecu\""),
                  first + properties({"hostname=\"ecu\""}));
        EXPECT_EQ(transport(row.keyword, "1 5555 HOST_NAME \"ecu\""),
                  first + properties({"hostname=\"ecu\""}));
        EXPECT_EQ(transport(row.keyword, "1 5555 MAX_BUS_LOAD 5 HOST_NAME \"ecu\""),
                  first + properties({"hostname=\"ecu\""}));
        EXPECT_EQ(transport(row.keyword, "1 5555 IPV6 \"fe80::1\""),
                  first + properties({"ipv6=1", "hostname=\"fe80::1\""}));
        EXPECT_EQ(
            xcpMessages(std::string("/begin ") + row.keyword + " 1 5555 MAX_BUS_LOAD 5 \"x\""),
            "Error 1: Unexpected token 'token=302' found\n");
        for (const char* keyword : {"HOST_NAME", "ADDRESS", "IPV6"}) {
            EXPECT_EQ(
                xcpMessages(std::string("/begin ") + row.keyword + " 1 5555 " + keyword + " ecu"),
                "Error 1: String expected\n");
        }
    }
}

TEST(XcpOnIp, PacketAlignments) {
    for (const IpTransport& row : kIpTransports) {
        const std::string first = row.firstLine;
        EXPECT_EQ(transport(row.keyword, "1 5555 PACKET_ALIGNMENT PACKET_ALIGNMENT_16"),
                  first + properties({"packet_alignment=1"}));
        EXPECT_EQ(transport(row.keyword, "1 5555 PACKET_ALIGNMENT PACKET_ALIGNMENT_32"),
                  first + properties({"packet_alignment=2"}));
        EXPECT_EQ(xcpMessages(std::string("/begin ") + row.keyword +
                              " 1 5555 PACKET_ALIGNMENT PACKET_ALIGNMENT_64 PACKET_ALIGNMENT 8 "
                              "PACKET_ALIGNMENT ALIGNMENT_8_BIT /end " +
                              row.keyword),
                  "Warning 1: Unexpected token for Packet-Alignment: 303\n"
                  "Warning 1: Unexpected token for Packet-Alignment: 300\n"
                  "Warning 1: Unexpected token for Packet-Alignment: 2242\n");
    }
}

TEST(XcpOnIp, InstanceAndOverrides) {
    for (const IpTransport& row : kIpTransports) {
        const std::string dump = transport(
            row.keyword,
            "1 5555 TRANSPORT_LAYER_INSTANCE \"eth0\" "
            "/begin PROTOCOL_LAYER 1 2 3 4 5 6 7 8 9 10 BYTE_ORDER_MSB_FIRST "
            "ADDRESS_GRANULARITY_BYTE /end PROTOCOL_LAYER /begin DAQ STATIC 1 2 3 "
            "OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE IDENTIFICATION_FIELD_TYPE_ABSOLUTE "
            "GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 4 NO_OVERLOAD_INDICATION /end DAQ "
            "/begin SEGMENT /end SEGMENT /begin PAG /end PAG /begin PGM /end PGM "
            "/begin DAQ_EVENT /end DAQ_EVENT /begin TIME_CORRELATION /end TIME_CORRELATION");
        EXPECT_NE(dump.find(" instanceName=\"eth0\"\n"), std::string::npos) << dump;
        EXPECT_EQ(linesWith("protocolParam", dump), "protocolParam encoding=BigEndian\n");
        EXPECT_NE(linesWith("daqCapabilities", dump), "");
        EXPECT_EQ(
            xcpMessages(std::string("/begin ") + row.keyword + " 1 2 TRANSPORT_LAYER_INSTANCE 3"),
            "Error 1: String expected\n");
    }
}

TEST(XcpOnIp, SkippedBlocks) {
    for (const IpTransport& row : kIpTransports) {
        for (const char* name : {"DAQ_EVENT", "PAG", "XCP_ON_CAN"}) {
            const std::string block(name);
            EXPECT_EQ(transport(row.keyword, "1 5555 /begin " + block + " 1 /end " + block),
                      transport(row.keyword, "1 5555"));
            EXPECT_EQ(xcpMessages(std::string("/begin ") + row.keyword + " 1 5555 /begin " + block +
                                  " 1 /end DAQ"),
                      "Error 1: Keyword '" + block + "' expected after /end (IGN)\n");
        }
    }
}

TEST(XcpOnIp, MessagesNameTheBlockWithoutItsLastPart) {
    for (const IpTransport& row : kIpTransports) {
        const std::string expected =
            std::string("Error 1: Keyword '") + row.nameInMessages + "' expected after /end\n";
        EXPECT_EQ(xcpMessages(std::string("/begin ") + row.keyword + " 1 5555 /end DAQ"), expected);
        EXPECT_EQ(xcpMessages(std::string("/begin ") + row.keyword + " 1 5555 /end " +
                              row.nameInMessages),
                  expected);
    }
}

TEST(XcpOnIp, VersionAndPortAreTakenWhateverTheyAre) {
    EXPECT_EQ(transport("XCP_ON_UDP_IP", "ONE TWO"),
              "transport UDP transportType=UDP\n  properties\n    value port=0\n");
}

// --- XCP_ON_FLX ----------------------------------------------------------------------------------

constexpr std::string_view kFlxFixed =
    "0x0100 25 \"net.xml\" \"BackboneA\" 0x02 HEADER_NAX_CTR_LEN PACKET_ALIGNMENT_16 ";

std::string flx(std::string_view content) {
    return transport("XCP_ON_FLX", std::string(kFlxFixed) + std::string(content));
}

std::string flxMessages(std::string_view content) {
    return xcpMessages("/begin XCP_ON_FLX " + std::string(content));
}

constexpr std::string_view kFlxDump =
    "transport FlexRay transportType=9\n"
    "  properties\n"
    "    value t1_flx=25\n"
    "    value FIBEX_FILE=\"net.xml\"\n"
    "    value CLUSTER_ID=\"BackboneA\"\n"
    "    value nax=2\n"
    "    value header_type=6\n"
    "    value packet_alignment=1\n";

TEST(XcpOnFlx, FixedParameters) {
    EXPECT_EQ(flx(""), kFlxDump);
    EXPECT_EQ(flx("OPTIONAL_TL_SUBCMD FLX_ASSIGN OPTIONAL_TL_SUBCMD GET_DAQ_FLX_BUF "
                  "/begin PAG /end PAG /begin NEWER /end NEWER"),
              kFlxDump);
    EXPECT_EQ(xcpTrace("/begin XCP_ON_FLX " + std::string(kFlxFixed) + "/end XCP_ON_FLX"),
              "-:   Parse IF_DATA XCP\n-:   Parse IF_DATA XCP_ON_FLEXRAY\n");
}

TEST(XcpOnFlx, Buffers) {
    EXPECT_EQ(
        flx("/begin INITIAL_CMD_BUFFER 1 MAX_FLX_LEN_BUF FIXED 48 "
            "/begin LPDU_ID FLX_SLOT_ID FIXED 60 OFFSET FIXED 0 CYCLE_REPETITION FIXED 1 CHANNEL "
            "FIXED A /end LPDU_ID "
            "/begin XCP_PACKET CMD FIXED RES_ERR NOT_ALLOWED EV_SERV NOT_ALLOWED DAQ NOT_ALLOWED "
            "STIM FIXED MULTICAST VARIABLE_INITIALISED /end XCP_PACKET /end INITIAL_CMD_BUFFER "
            "/begin INITIAL_RES_ERR_BUFFER 2 /end INITIAL_RES_ERR_BUFFER "
            "/begin POOL_BUFFER 3 MAX_FLX_LEN_BUF VARIABLE 64 "
            "/begin LPDU_ID FLX_SLOT_ID VARIABLE INITIAL_VALUE 62 OFFSET VARIABLE CYCLE_REPETITION "
            "VARIABLE INITIAL_VALUE 2 CHANNEL VARIABLE INITIAL_VALUE B /end LPDU_ID "
            "/end POOL_BUFFER "
            "/begin POOL_BUFFER 4 /begin LPDU_ID FLX_SLOT_ID VARIABLE CHANNEL VARIABLE /end "
            "LPDU_ID "
            "/end POOL_BUFFER"),
        std::string(kFlxDump) +
            "  flexRayBuffer role=1 number=1 maxLength=48 slotId=60\n"
            "    properties\n"
            "      value offset=0\n"
            "      value cycle_repetition=1\n"
            "      value channel=0\n"
            "  flexRayBuffer role=2 number=2\n"
            "  flexRayBuffer role=3 number=3 maxLength=64 slotId=62\n"
            "    properties\n"
            "      value cycle_repetition=2\n"
            "      value channel=1\n"
            "  flexRayBuffer role=3 number=4\n");
}

TEST(XcpOnFlx, HeaderTypes) {
    constexpr std::array kTypes{
        "HEADER_NAX",         "HEADER_NAX_FILL",      "HEADER_NAX_CTR",
        "HEADER_NAX_FILL3",   "HEADER_NAX_CTR_FILL2", "HEADER_NAX_LEN",
        "HEADER_NAX_CTR_LEN", "HEADER_NAX_FILL2_LEN", "HEADER_NAX_CTR_FILL_LEN"};
    for (std::size_t code = 0; code < kTypes.size(); ++code) {
        EXPECT_EQ(linesWith("value header_type",
                            transport("XCP_ON_FLX", std::string("1 2 \"\" \"\" 3 ") + kTypes[code] +
                                                        " PACKET_ALIGNMENT_8")),
                  "value header_type=" + std::to_string(code) + "\n");
    }
}

TEST(XcpOnFlx, WrongWordsAndTexts) {
    EXPECT_EQ(flxMessages("1 2 \"f\" \"c\" 3 T1_FLX PACKET_ALIGNMENT /end XCP_ON_FLX"),
              "Warning 1: Unexpected token for Header-Type: 303\n"
              "Warning 1: Unexpected token for Packet-Alignment: 2386\n");
    EXPECT_EQ(flxMessages("1 2 net \"c\" 3"), "Error 1: String expected\n");
    EXPECT_EQ(flxMessages("1 2 \"f\" c 3"), "Error 1: String expected\n");
    EXPECT_EQ(flxMessages(std::string(kFlxFixed) + "TRANSPORT_LAYER_INSTANCE x"),
              "Error 1: String expected\n");
    EXPECT_EQ(flxMessages(std::string(kFlxFixed) +
                          "/begin POOL_BUFFER 1 /begin LPDU_ID OFFSET 5 CHANNEL A CHANNEL FIXED "
                          "DAQ OFFSET FIXED 5 /end LPDU_ID /end POOL_BUFFER /end XCP_ON_FLX"),
              "Warning 1: Unexpected token 'token=300' found\n"
              "Warning 1: Unexpected token 'A' found\n"
              "Warning 1: Unexpected token 'DAQ' found\n");
}

TEST(XcpOnFlx, AWrongSlotWordIsReadOnAsVariable) {
    const std::string block =
        xcpBlock("/begin XCP_ON_FLX " + std::string(kFlxFixed) +
                 "/begin POOL_BUFFER 1 /begin LPDU_ID FLX_SLOT_ID DAQ INITIAL_VALUE 62 OFFSET 5 "
                 "CYCLE_REPETITION DAQ /end LPDU_ID /end POOL_BUFFER /end XCP_ON_FLX");
    EXPECT_EQ(messages(block),
              "Warning 1: Unexpected token 'DAQ' found\n"
              "Warning 1: Unexpected token 'token=300' found\n"
              "Warning 1: Unexpected token 'DAQ' found\n");
    EXPECT_EQ(linesWith("flexRayBuffer", parseModule(block).model),
              "flexRayBuffer role=3 number=1 slotId=62\n");
}

TEST(XcpOnFlx, WrongWordsOfBuffers) {
    EXPECT_EQ(flxMessages(std::string(kFlxFixed) +
                          "/begin POOL_BUFFER 1 MAX_FLX_LEN_BUF DAQ 48 /begin XCP_PACKET CMD A "
                          "RES_ERR 5 EV_SERV FIXED DAQ NOT_ALLOWED STIM VARIABLE "
                          "MULTICAST VARIABLE_INITIALISED "
                          "/end XCP_PACKET /end POOL_BUFFER /end XCP_ON_FLX"),
              "Warning 1: Unexpected token 'DAQ' found\n"
              "Warning 1: Unexpected token 'A' found\n"
              "Warning 1: Unexpected token 'token=300' found\n");
}

TEST(XcpOnFlx, Ends) {
    const std::string fixed(kFlxFixed);
    EXPECT_EQ(flxMessages(fixed + "/end DAQ"),
              "Error 1: Keyword 'XCP_ON_FLX' expected after /end\n");
    for (const char* name : {"INITIAL_CMD_BUFFER", "INITIAL_RES_ERR_BUFFER", "POOL_BUFFER"}) {
        EXPECT_EQ(flxMessages(fixed + "/begin " + name + " 1 /end DAQ"),
                  std::string("Error 1: Keyword '") + name + "' expected after /end\n");
        for (const char* part : {"LPDU_ID", "XCP_PACKET"}) {
            EXPECT_EQ(flxMessages(fixed + "/begin " + name + " 1 /begin " + part + " /end DAQ"),
                      std::string("Error 1: Keyword '") + part + "' expected after /end\n");
            EXPECT_EQ(flxMessages(fixed + "/begin " + name + " 1 /begin " + part + " X"),
                      "Error 1: Unexpected token 'token=303' found\n");
        }
        EXPECT_EQ(flxMessages(fixed + "/begin " + name + " 1 CMD"),
                  "Error 1: Unexpected token 'CMD' found\n");
    }
    EXPECT_EQ(flxMessages(fixed + "FIXED"), "Error 1: Unexpected token 'FIXED' found\n");
}

}  // namespace
}  // namespace quillmark
