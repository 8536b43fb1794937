// One description with every block and keyword of XCP, cut off at every place.

#include <algorithm>

#include <gtest/gtest.h>

#include "a2l/xcp_texts.h"

namespace quillmark {
namespace {

constexpr std::string_view kEverything = R"(/begin PROJECT P "" /begin MODULE Ecu ""
/begin MEASUREMENT Speed "" UWORD NO_COMPU_METHOD 0 0 0 1
  /begin IF_DATA XCP /begin DAQ_EVENT VARIABLE
    /begin AVAILABLE_EVENT_LIST EVENT 1 EVENT 2 /end AVAILABLE_EVENT_LIST
    /begin DEFAULT_EVENT_LIST EVENT 2 /end DEFAULT_EVENT_LIST
    /begin CONSISTENCY_EVENT_LIST EVENT 2 /end CONSISTENCY_EVENT_LIST
  /end DAQ_EVENT /end IF_DATA
/end MEASUREMENT
/begin MEASUREMENT Gear "" UWORD NO_COMPU_METHOD 0 0 0 1
  /begin IF_DATA XCPplus 1 /begin DAQ_EVENT FIXED_EVENT_LIST EVENT 2 EVENT 3 /end DAQ_EVENT
  /end IF_DATA
/end MEASUREMENT
/begin IF_DATA XCPplus 0x0104
  /begin PROTOCOL_LAYER 0x0104 1000 200 0 0 0 0 0 8 8 BYTE_ORDER_MSB_LAST ADDRESS_GRANULARITY_BYTE
    OPTIONAL_CMD GET_ID OPTIONAL_LEVEL1_CMD GET_VERSION MAX_DTO_STIM 8
    COMMUNICATION_MODE_SUPPORTED BLOCK SLAVE MASTER 0x10 0x02
    /begin COMMUNICATION_MODE_SUPPORTED INTERLEAVED 3 /end COMMUNICATION_MODE_SUPPORTED
    SEED_AND_KEY_EXTERNAL_FUNCTION "unlock.dll" /* comment */
    /begin ECU_STATES /begin STATE 1 "run" NOT_ACTIVE /end STATE /end ECU_STATES
  /end PROTOCOL_LAYER
  /begin DAQ DYNAMIC 0 3 0 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE
    IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 8
    OVERLOAD_INDICATION_PID
    PRESCALER_SUPPORTED RESUME_SUPPORTED PID_OFF_SUPPORTED STORE_DAQ_SUPPORTED
    DAQ_ALTERNATING_SUPPORTED 1 DTO_CTR_FIELD_SUPPORTED OPTIMISATION_TYPE_ODT_STRICT
    CPU_LOAD_MAX 1.5 MAX_DAQ_TOTAL 1 CORE_LOAD_MAX_TOTAL 1
    /begin STIM GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE 8 BIT_STIM_SUPPORTED MIN_ST_STIM 1 /end STIM
    /begin TIMESTAMP_SUPPORTED 1 SIZE_DWORD UNIT_10PS TIMESTAMP_FIXED /end TIMESTAMP_SUPPORTED
    /begin DAQ_LIST 0 DAQ_LIST_TYPE DAQ MAX_ODT 2 MAX_ODT_ENTRIES 7 FIRST_PID 0 EVENT_FIXED 1
      DAQ_PACKED_MODE_SUPPORTED
      /begin PREDEFINED
        /begin ODT 0 ODT_ENTRY 0 0xD0001000 0 4 0xFF ODT_ENTRY 1 0xD0001004 0 2 0xFF /end ODT
      /end PREDEFINED
    /end DAQ_LIST
    /begin EVENT "10 ms task" "10ms" 0x0001 DAQ_STIM 0xFF 10 6 128
      COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER 1 CONSISTENCY EVENT EVENT_COUNTER_PRESENT
      RELATED_EVENT_CHANNEL_NUMBER 2 RELATED_EVENT_CHANNEL_NUMBER_FIXED
      DTO_CTR_DAQ_MODE INSERT_COUNTER DTO_CTR_DAQ_MODE_FIXED DTO_CTR_STIM_MODE CHECK_COUNTER
      DTO_CTR_STIM_MODE_FIXED STIM_DTO_CTR_COPY_PRESENT CPU_LOAD_MAX 1
      MIN_CYCLE_TIME 5 6
      /begin MIN_CYCLE_TIME 5 6 /end MIN_CYCLE_TIME
      /begin DAQ_PACKED_MODE ELEMENT_GROUPED STS_LAST OPTIONAL 4 ALT_SAMPLE_COUNT 8
      /end DAQ_PACKED_MODE
      /begin BUFFER_RESERVE_EVENT 1 2 /end BUFFER_RESERVE_EVENT
    /end EVENT
    /begin DAQ_MEMORY_CONSUMPTION 1 2 3 4 5 6 /end DAQ_MEMORY_CONSUMPTION
  /end DAQ
  /begin PAG 2 FREEZE_SUPPORTED /end PAG
  /begin DAQ_EVENT FIXED_EVENT_LIST EVENT 2 /end DAQ_EVENT
  /begin XCP_ON_CAN 0x0100 CAN_ID_BROADCAST 0x7F0 CAN_ID_MASTER 0x7E1 CAN_ID_SLAVE 0x7E9
    BAUDRATE 500000 SAMPLE_POINT 80 SAMPLE_RATE SINGLE BTL_CYCLES 10 SJW 2 SYNC_EDGE SINGLE
    CAN_ID_MASTER_INCREMENTAL CAN_ID_GET_DAQ_CLOCK_MULTICAST 1 MAX_DLC_REQUIRED MAX_BUS_LOAD 1
    MEASUREMENT_SPLIT_ALLOWED OPTIONAL_TL_SUBCMD GET_DAQ_ID TRANSPORT_LAYER_INSTANCE "c"
    /begin DAQ_LIST_CAN_ID 0 FIXED 0x7EA /end DAQ_LIST_CAN_ID
    /begin DAQ_LIST_CAN_ID 1 VARIABLE /end DAQ_LIST_CAN_ID
    /begin EVENT_CAN_ID_LIST 1 FIXED 0x7EB FIXED 0x7EC /end EVENT_CAN_ID_LIST
    /begin CAN_FD MAX_DLC 64 CAN_FD_DATA_TRANSFER_BAUDRATE 2000000 SAMPLE_POINT 75 BTL_CYCLES 20
      SJW 4 SYNC_EDGE DUAL MAX_DLC_REQUIRED SECONDARY_SAMPLE_POINT 70
      TRANSCEIVER_DELAY_COMPENSATION OFF
    /end CAN_FD
    /begin PROTOCOL_LAYER 1 1 1 1 1 1 1 1 8 8 BYTE_ORDER_MSB_FIRST ADDRESS_GRANULARITY_WORD
    /end PROTOCOL_LAYER
  /end XCP_ON_CAN
  /begin XCP_ON_UDP_IP 0x0104 5555 ADDRESS "192.168.0.40" MAX_BUS_LOAD 60 MAX_BIT_RATE 100
    PACKET_ALIGNMENT PACKET_ALIGNMENT_8 OPTIONAL_TL_SUBCMD GET_SLAVE_ID
  /end XCP_ON_UDP_IP
  /begin XCP_ON_TCP_IP 1 5555 "ecu" IPV6 "fe80::1" HOST_NAME "ecu" /end XCP_ON_TCP_IP
  /begin XCP_ON_FLX 0x0100 25 "net.xml" "BackboneA" 0x02 HEADER_NAX_CTR_LEN PACKET_ALIGNMENT_16
    /begin INITIAL_CMD_BUFFER 1 MAX_FLX_LEN_BUF FIXED 48
      /begin LPDU_ID FLX_SLOT_ID FIXED 60 OFFSET VARIABLE CYCLE_REPETITION VARIABLE INITIAL_VALUE 1
        CHANNEL FIXED A
      /end LPDU_ID
      /begin XCP_PACKET CMD FIXED RES_ERR NOT_ALLOWED /end XCP_PACKET
    /end INITIAL_CMD_BUFFER
    /begin POOL_BUFFER 3 MAX_FLX_LEN_BUF VARIABLE 64 /end POOL_BUFFER
  /end XCP_ON_FLX
/end IF_DATA
/end MODULE /end PROJECT)";

TEST(XcpCut, TheWholeTextIsRight) {
    const Parsed parsed = parseText(kEverything);
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console, "");
}

/// What is left of the text can only fail: the project is not closed. The failure is told once, in
/// the last line; before it only warnings may stand.
void expectOneError(std::string_view text) {
    const Parsed parsed = parseText(text);
    EXPECT_EQ(parsed.status, -1) << text;
    std::size_t errors = 0;
    std::string_view rest = parsed.console;
    std::string_view line;
    while (!rest.empty()) {
        line = rest.substr(0, rest.find('\n') + 1);
        rest.remove_prefix(line.size());
        errors += line.starts_with("-: Error (a.a2l:") ? 1U : 0U;
        EXPECT_TRUE(line.starts_with("-: Error (a.a2l:") || line.starts_with("-: Warning (a.a2l:"))
            << parsed.console;
    }
    // A text or a comment that is cut off is told as such, and a text by its reader too.
    const bool cutText = parsed.console.find("Unexpected EOF in string") != std::string::npos;
    EXPECT_EQ(errors, cutText ? 2U : 1U) << parsed.console << "\n" << text;
    EXPECT_TRUE(line.starts_with("-: Error")) << parsed.console;
}

TEST(XcpCut, AtEveryByte) {
    constexpr std::string_view kStart = "/begin PROJECT P \"\" ";
    for (std::size_t length = kStart.size(); length < kEverything.size(); ++length) {
        expectOneError(kEverything.substr(0, length));
    }
}

/// Without one of its words a text may be right or wrong, but its reading ends.
TEST(XcpCut, WithoutEachOfItsWords) {
    std::size_t start = 0;
    while (start < kEverything.size()) {
        const std::size_t end =
            std::min(kEverything.find_first_of(" \n", start), kEverything.size());
        const std::string text =
            std::string(kEverything.substr(0, start)) + std::string(kEverything.substr(end));
        const Parsed parsed = parseText(text);
        EXPECT_EQ(parsed.status, parsed.console.find("Error (") == std::string::npos ? 0 : -1)
            << text;
        start = end + 1;
    }
}

}  // namespace
}  // namespace quillmark
