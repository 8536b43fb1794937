// Every field that is compared of XCP modules, tried on pairs of descriptions of which one text
// differs.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "compare/compared_pairs.h"

namespace quillmark {
namespace {

class ComparedXcpFields : public ComparedPairs {};

constexpr std::string_view kXcpData = R"(
  /begin IF_DATA XCP
    /begin PROTOCOL_LAYER 0x0104 1 2 3 4 5 6 7 8 9 BYTE_ORDER_MSB_LAST ADDRESS_GRANULARITY_BYTE
      OPTIONAL_CMD GET_ID OPTIONAL_CMD SHORT_UPLOAD
      SEED_AND_KEY_EXTERNAL_FUNCTION "unlock.dll"
    /end PROTOCOL_LAYER
    /begin DAQ STATIC 10 11 12 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE
      IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 13
      NO_OVERLOAD_INDICATION
      /begin TIMESTAMP_SUPPORTED 1 SIZE_WORD UNIT_10US /end TIMESTAMP_SUPPORTED
      /begin DAQ_LIST 3 DAQ_LIST_TYPE DAQ MAX_ODT 20 MAX_ODT_ENTRIES 21 FIRST_PID 22
        EVENT_FIXED 23 /end DAQ_LIST
      /begin EVENT "10 ms" "10ms" 5 DAQ 255 10 6 30 /end EVENT
    /end DAQ
    /begin XCP_ON_CAN 0x0104 CAN_ID_MASTER 1793 CAN_ID_SLAVE 1794 BAUDRATE 500000
      /begin DAQ_LIST_CAN_ID 3 FIXED 1795 /end DAQ_LIST_CAN_ID
    /end XCP_ON_CAN
  /end IF_DATA
)";

constexpr std::string_view kXcpLines =
    "  daqlist(3):fixedCanId = 1795 # 1795\n"
    "  daqlist(3):MAX_ODT = 20 # 20\n"
    "  daqlist(3):MAX_ODT_ENTRIES = 21 # 21\n"
    "  daqlist(3):FIRST_PID = 22 # 22\n"
    "  daqlist(3):EVENT_FIXED = 23 # 23\n"
    "  event(5):dirDaqSupported = true # true\n"
    "  event(5):dirStimSupported = false # false\n"
    "  event(5):timebase:resolution = 10 # 10\n"
    "  event(5):timebase:scale = 2 # 2\n"
    "  event(5):timebase:byteLength = NULL # NULL\n"
    "  event(5):priority = 30 # 30\n"
    "  daq capabilities:t1 = 1 # 1\n"
    "  daq capabilities:t2 = 2 # 2\n"
    "  daq capabilities:t3 = 3 # 3\n"
    "  daq capabilities:t4 = 4 # 4\n"
    "  daq capabilities:t5 = 5 # 5\n"
    "  daq capabilities:t6 = 6 # 6\n"
    "  daq capabilities:t7 = 7 # 7\n"
    "  daq capabilities:xcp_byteorder_code = 0 # 0\n"
    "  daq capabilities:seed_and_key_external_function = unlock.dll # unlock.dll\n"
    "  daq capabilities:daqConfigType = 1 # 1\n"
    "  daq capabilities:maxDaq = 10 # 10\n"
    "  daq capabilities:maxEventChannel = 11 # 11\n"
    "  daq capabilities:minDaq = 12 # 12\n"
    "  daq capabilities:optimizationType = 1 # 1\n"
    "  daq capabilities:addressExtension = 1 # 1\n"
    "  daq capabilities:identificationFieldType = 1 # 1\n"
    "  daq capabilities:granularityOdtEntrySize = 1 # 1\n"
    "  daq capabilities:maxOdtEntrySizeDaq = 13 # 13\n"
    "  daq capabilities:overloadIndicationType = 1 # 1\n"
    "  daq capabilities:prescalerSupported = false # false\n"
    "  daq capabilities:daqResumeSupported = false # false\n"
    "  daq capabilities:timestampSettings:resolution = 10 # 10\n"
    "  daq capabilities:timestampSettings:scale = 3 # 3\n"
    "  daq capabilities:timestampSettings:byteLength = 2 # 2\n"
    "  daq capabilities:pidOffSupported = false # false\n"
    "  transport parameter:txId = 1793 # 1793\n"
    "  transport parameter:rxId = 1794 # 1794\n"
    "  transport parameter:bitrate = 500000 # 500000\n"
    "  transport parameter:max_dlc_required = NULL # NULL\n"
    "  OPTIONAL_CMD(1) : GET_ID SHORT_UPLOAD \n"
    "  OPTIONAL_CMD(2) : GET_ID SHORT_UPLOAD \n";

constexpr Change kXcpChanges[] = {
    {"FIXED 1795", "FIXED 1796", "  daqlist(3):fixedCanId = 1795 # 1795",
     "  daqlist(3):fixedCanId = 1795 # 1796"},
    {"3 FIXED 1795", "3 VARIABLE", "  daqlist(3):fixedCanId = 1795 # 1795",
     "  daqlist(3):fixedCanId = 1795 # NULL"},
    {"MAX_ODT 20", "MAX_ODT 8", "  daqlist(3):MAX_ODT = 20 # 20", "  daqlist(3):MAX_ODT = 20 # 8"},
    // An integer is not equal to a real.
    {"MAX_ODT 20", "MAX_ODT 20.0", "  daqlist(3):MAX_ODT = 20 # 20",
     "  daqlist(3):MAX_ODT = 20 # 20"},
    {"MAX_ODT_ENTRIES 21", "MAX_ODT_ENTRIES 8", "  daqlist(3):MAX_ODT_ENTRIES = 21 # 21",
     "  daqlist(3):MAX_ODT_ENTRIES = 21 # 8"},
    {"FIRST_PID 22", "FIRST_PID 2.5", "  daqlist(3):FIRST_PID = 22 # 22",
     "  daqlist(3):FIRST_PID = 22 # 2.5"},
    {"EVENT_FIXED 23", "", "  daqlist(3):EVENT_FIXED = 23 # 23",
     "  daqlist(3):EVENT_FIXED = 23 # NULL"},
    {"DAQ 255", "DAQ_STIM 255", "  event(5):dirStimSupported = false # false",
     "  event(5):dirStimSupported = false # true"},
    {"10 6 30", "20 6 30", "  event(5):timebase:resolution = 10 # 10",
     "  event(5):timebase:resolution = 10 # 20"},
    {"10 6 30", "10 3 30", "  event(5):timebase:scale = 2 # 2",
     "  event(5):timebase:scale = 2 # 3"},
    {"10 6 30", "10 6 31", "  event(5):priority = 30 # 30", "  event(5):priority = 30 # 31"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 99 2 3 4 5 6 7 8 9", "  daq capabilities:t1 = 1 # 1",
     "  daq capabilities:t1 = 1 # 99"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 1 99 3 4 5 6 7 8 9", "  daq capabilities:t2 = 2 # 2",
     "  daq capabilities:t2 = 2 # 99"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 1 2 99 4 5 6 7 8 9", "  daq capabilities:t3 = 3 # 3",
     "  daq capabilities:t3 = 3 # 99"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 1 2 3 99 5 6 7 8 9", "  daq capabilities:t4 = 4 # 4",
     "  daq capabilities:t4 = 4 # 99"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 1 2 3 4 99 6 7 8 9", "  daq capabilities:t5 = 5 # 5",
     "  daq capabilities:t5 = 5 # 99"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 1 2 3 4 5 99 7 8 9", "  daq capabilities:t6 = 6 # 6",
     "  daq capabilities:t6 = 6 # 99"},
    {"0x0104 1 2 3 4 5 6 7 8 9", "0x0104 1 2 3 4 5 6 99 8 9", "  daq capabilities:t7 = 7 # 7",
     "  daq capabilities:t7 = 7 # 99"},
    {"BYTE_ORDER_MSB_LAST", "BYTE_ORDER_MSB_FIRST", "  daq capabilities:xcp_byteorder_code = 0 # 0",
     "  daq capabilities:xcp_byteorder_code = 0 # 1"},
    {"SEED_AND_KEY_EXTERNAL_FUNCTION \"unlock.dll\"", "",
     "  daq capabilities:seed_and_key_external_function = unlock.dll # unlock.dll",
     "  daq capabilities:seed_and_key_external_function = unlock.dll # NULL"},
    {"\"unlock.dll\"", "\"Unlock.dll\"",
     "  daq capabilities:seed_and_key_external_function = unlock.dll # unlock.dll",
     "  daq capabilities:seed_and_key_external_function = unlock.dll # Unlock.dll"},
    {"STATIC 10", "DYNAMIC 10", "  daq capabilities:daqConfigType = 1 # 1",
     "  daq capabilities:daqConfigType = 1 # 2"},
    {"10 11 12", "99 11 12", "  daq capabilities:maxDaq = 10 # 10",
     "  daq capabilities:maxDaq = 10 # 99"},
    {"10 11 12", "10 99 12", "  daq capabilities:maxEventChannel = 11 # 11",
     "  daq capabilities:maxEventChannel = 11 # 99"},
    {"10 11 12", "10 11 99", "  daq capabilities:minDaq = 12 # 12",
     "  daq capabilities:minDaq = 12 # 99"},
    {"OPTIMISATION_TYPE_DEFAULT", "OPTIMISATION_TYPE_MAX_ENTRY_SIZE",
     "  daq capabilities:optimizationType = 1 # 1", "  daq capabilities:optimizationType = 1 # 6"},
    {"ADDRESS_EXTENSION_FREE", "ADDRESS_EXTENSION_DAQ",
     "  daq capabilities:addressExtension = 1 # 1", "  daq capabilities:addressExtension = 1 # 3"},
    {"FIELD_TYPE_ABSOLUTE", "FIELD_TYPE_RELATIVE_WORD",
     "  daq capabilities:identificationFieldType = 1 # 1",
     "  daq capabilities:identificationFieldType = 1 # 3"},
    {"SIZE_DAQ_BYTE", "SIZE_DAQ_DWORD", "  daq capabilities:granularityOdtEntrySize = 1 # 1",
     "  daq capabilities:granularityOdtEntrySize = 1 # 3"},
    {"DAQ_BYTE 13", "DAQ_BYTE 99", "  daq capabilities:maxOdtEntrySizeDaq = 13 # 13",
     "  daq capabilities:maxOdtEntrySizeDaq = 13 # 99"},
    {"NO_OVERLOAD_INDICATION", "OVERLOAD_INDICATION_EVENT",
     "  daq capabilities:overloadIndicationType = 1 # 1",
     "  daq capabilities:overloadIndicationType = 1 # 3"},
    {"NO_OVERLOAD_INDICATION", "NO_OVERLOAD_INDICATION PRESCALER_SUPPORTED",
     "  daq capabilities:prescalerSupported = false # false",
     "  daq capabilities:prescalerSupported = false # true"},
    {"NO_OVERLOAD_INDICATION", "NO_OVERLOAD_INDICATION RESUME_SUPPORTED",
     "  daq capabilities:daqResumeSupported = false # false",
     "  daq capabilities:daqResumeSupported = false # true"},
    {"1 SIZE_WORD", "5 SIZE_WORD", "  daq capabilities:timestampSettings:resolution = 10 # 10",
     "  daq capabilities:timestampSettings:resolution = 10 # 50"},
    {"UNIT_10US", "UNIT_10NS", "  daq capabilities:timestampSettings:scale = 3 # 3",
     "  daq capabilities:timestampSettings:scale = 3 # 4"},
    {"SIZE_WORD", "SIZE_DWORD", "  daq capabilities:timestampSettings:byteLength = 2 # 2",
     "  daq capabilities:timestampSettings:byteLength = 2 # 4"},
    {"NO_OVERLOAD_INDICATION", "NO_OVERLOAD_INDICATION PID_OFF_SUPPORTED",
     "  daq capabilities:pidOffSupported = false # false",
     "  daq capabilities:pidOffSupported = false # true"},
    {"CAN_ID_MASTER 1793", "CAN_ID_MASTER 99", "  transport parameter:txId = 1793 # 1793",
     "  transport parameter:txId = 1793 # 99"},
    {"CAN_ID_SLAVE 1794", "CAN_ID_SLAVE 99", "  transport parameter:rxId = 1794 # 1794",
     "  transport parameter:rxId = 1794 # 99"},
    {"BAUDRATE 500000", "", "  transport parameter:bitrate = 500000 # 500000",
     "  transport parameter:bitrate = 500000 # NULL"},
    {"BAUDRATE 500000", "BAUDRATE 500000 MAX_DLC_REQUIRED",
     "  transport parameter:max_dlc_required = NULL # NULL",
     "  transport parameter:max_dlc_required = NULL # 1"},
    {"OPTIONAL_CMD GET_ID ", "", "  OPTIONAL_CMD(2) : GET_ID SHORT_UPLOAD ",
     "  OPTIONAL_CMD(2) : SHORT_UPLOAD ",
     "[Optional command GET_ID is not present in second file]"},
};

TEST_F(ComparedXcpFields, EachAlone) {
    for (const Change& change : kXcpChanges) {
        SCOPED_TRACE(change.to);
        expectReport(kXcpData, replaced(kXcpData, change.from, change.to),
                     replaced(kXcpLines, change.line, change.changedLine), findingOf(change));
    }
}

TEST_F(ComparedXcpFields, DirectionOfAnEvent) {
    std::string lines =
        replaced(kXcpLines, "dirDaqSupported = true # true", "dirDaqSupported = true # false");
    lines = replaced(lines, "dirStimSupported = false # false", "dirStimSupported = false # true");
    expectReport(kXcpData, replaced(kXcpData, "DAQ 255", "STIM 255"), lines,
                 "1 event(5):dirDaqSupported values are not equal\n"
                 "1 event(5):dirStimSupported values are not equal\n");
}

TEST_F(ComparedXcpFields, WithItself) {
    expectReport(kXcpData, kXcpData, kXcpLines, "");
}

TEST_F(ComparedXcpFields, LostItems) {
    const std::string lists = replaced(kXcpData, "/begin DAQ_LIST 3", "/begin DAQ_LIST 4");
    EXPECT_EQ(compare(lists, kXcpData, false),
              "1 Daq List CAN config 4 is no longer present in new file\n"
              "1 Daq List 4 is no longer present in new file\n");
    EXPECT_EQ(compare(replaced(kXcpData, "\"10ms\" 5", "\"10ms\" 0xFFFF"), kXcpData, false),
              "1 Event 65535 is no longer present in new file\n");
    // More than before is no finding.
    const std::string more =
        replaced(kXcpData, "/begin EVENT", "/begin DAQ_LIST 5 /end DAQ_LIST /begin EVENT");
    EXPECT_EQ(compare(kXcpData, more, false), "");
    EXPECT_EQ(compare(more, kXcpData, false),
              "1 Daq List CAN config 5 is no longer present in new file\n"
              "1 Daq List 5 is no longer present in new file\n");
}

TEST_F(ComparedXcpFields, MissingParts) {
    const std::string noDaq = without(kXcpData, "/begin DAQ ", "/end DAQ\n");
    EXPECT_EQ(compare(kXcpData, noDaq, false),
              "1 module2 does not contain daq capabilities (?)\n"
              "1 module2 does not contain daq TP capabilities (?)\n");
    EXPECT_EQ(compare(noDaq, kXcpData, false),
              "1 module1 does not contain daq capabilities (?)\n"
              "1 module1 does not contain daq TP capabilities (?)\n");
    EXPECT_EQ(compare(noDaq, noDaq, false), "");

    const std::string noTimestamp =
        without(kXcpData, "/begin TIMESTAMP_SUPPORTED", "/end TIMESTAMP_SUPPORTED");
    const std::string lines = without(kXcpLines, "  daq capabilities:timestampSettings:resolution",
                                      "byteLength = 2 # 2\n");
    expectReport(kXcpData, noTimestamp, lines, "1 module2 does not contain timestamp\n");
    expectReport(noTimestamp, kXcpData, lines, "1 module1 does not contain timestamp\n");
    expectReport(noTimestamp, noTimestamp, lines, "");

    const std::string noCommands =
        replaced(kXcpData, "OPTIONAL_CMD GET_ID OPTIONAL_CMD SHORT_UPLOAD", "");
    const std::string fewerLines = std::string(kXcpLines.substr(0, kXcpLines.find("  OPTIONAL")));
    expectReport(kXcpData, noCommands, fewerLines,
                 "1 module2 does not contain optional commands\n");
    expectReport(noCommands, kXcpData, fewerLines,
                 "1 module1 does not contain optional commands\n");

    const std::string noTransport = without(kXcpData, "/begin XCP_ON_CAN", "/end XCP_ON_CAN");
    EXPECT_EQ(compare(kXcpData, noTransport, false),
              "1 daqlist(3):fixedCanId values are not equal\n"
              "1 [different number of transport parameters]\n");
}

TEST_F(ComparedXcpFields, TransportsOfOtherKindsHaveNoCanSettings) {
    const std::string udp = replaced(kXcpData, "  /end IF_DATA",
                                     "/begin XCP_ON_UDP_IP 0x0104 5555 ADDRESS \"10.0.0.1\" "
                                     "/end XCP_ON_UDP_IP /end IF_DATA");
    EXPECT_EQ(compare(udp, udp, true), "");
    EXPECT_NE(shown.find("  transport parameter:txId = NULL # NULL\n"
                         "  transport parameter:rxId = NULL # NULL\n"
                         "  transport parameter:bitrate = NULL # NULL\n"
                         "  transport parameter:max_dlc_required = NULL # NULL\n"),
              std::string::npos);
    EXPECT_EQ(compare(udp, kXcpData, false), "1 [different number of transport parameters]\n");
}

}  // namespace
}  // namespace quillmark
