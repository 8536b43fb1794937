// Every field that is compared of CCP modules, tried on pairs of descriptions of which one text
// differs.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "compare/compared_pairs.h"

namespace quillmark {
namespace {

class ComparedCcpFields : public ComparedPairs {};

constexpr std::string_view kCcpData = R"(
  /begin IF_DATA ASAP1B_CCP
    /begin SOURCE "segment" 103 1
      /begin QP_BLOB 4 LENGTH 12 CAN_ID_FIXED 1617 RASTER 7 FIRST_PID 20 /end QP_BLOB
    /end SOURCE
    /begin RASTER "segment" "SEG" 7 103 1 /end RASTER
    /begin SEED_KEY "cal.dll" "daq.dll" "pgm.dll" /end SEED_KEY
    /begin TP_BLOB 0x0201 0x0204 1536 1537 57 2 BAUDRATE 500000 ADDRESS_EXTENSION DAQ
      OPTIONAL_CMD 17 OPTIONAL_CMD 9
    /end TP_BLOB
  /end IF_DATA
)";

constexpr std::string_view kCcpLines =
    "  seed_key_dll_name_cal = cal.dll # cal.dll\n"
    "  seed_key_dll_name_daq = daq.dll # daq.dll\n"
    "  seed_key_dll_name_pgm = pgm.dll # pgm.dll\n"
    "  daq capabilities:ccp_byteorder_code = 2 # 2\n"
    "  daq capabilities:address_extension = 0 # 0\n"
    "  source(4):scaling_unit = 103 # 103\n"
    "  source(4):period = 1 # 1\n"
    "  source(4):can_id_variable = NULL # NULL\n"
    "  source(4):can_id_fixed = 1617 # 1617\n"
    "  source(4):first_pid = 20 # 20\n"
    "  source(4):raster = NULL # NULL\n"
    "  source(4):source_id = 7 # 7\n"
    "  daqlist(4):daq_number = 4 # 4\n"
    "  daqlist(4):length = 12 # 12\n"
    "  daqlist(4):source_id = 7 # 7\n"
    "  daqlist(4):first_pid = 20 # 20\n"
    "  raster(7):channelId = 7 # 7\n"
    "  raster(7) = 1 # 1\n"
    "  raster(7) = 103 # 103\n"
    "  daqlist(4):fixedCanId = 1617 # 1617\n"
    "  transport parameter:txId = 1536 # 1536\n"
    "  transport parameter:rxId = 1537 # 1537\n"
    "  transport parameter:nodeId = 57 # 57\n"
    "  transport parameter:bitrate = 500000 # 500000\n"
    "  transport parameter:transport type = 1 # 1\n"
    "  transport parameter:name = CAN # CAN\n"
    "  OPTIONAL_CMD(1) : 17 9 \n"
    "  OPTIONAL_CMD(2) : 17 9 \n";

constexpr Change kCcpChanges[] = {
    {"cal.dll", "x", "  seed_key_dll_name_cal = cal.dll # cal.dll",
     "  seed_key_dll_name_cal = cal.dll # x"},
    {"daq.dll", "", "  seed_key_dll_name_daq = daq.dll # daq.dll",
     "  seed_key_dll_name_daq = daq.dll # "},
    {"pgm.dll", "x y", "  seed_key_dll_name_pgm = pgm.dll # pgm.dll",
     "  seed_key_dll_name_pgm = pgm.dll # x y"},
    {"57 2", "57 1", "  daq capabilities:ccp_byteorder_code = 2 # 2",
     "  daq capabilities:ccp_byteorder_code = 2 # 1"},
    {"ADDRESS_EXTENSION DAQ", "ADDRESS_EXTENSION ODT",
     "  daq capabilities:address_extension = 0 # 0",
     "  daq capabilities:address_extension = 0 # 1"},
    {"LENGTH 12", "LENGTH 99", "  daqlist(4):length = 12 # 12", "  daqlist(4):length = 12 # 99"},
    {"RASTER 7", "RASTER 99", "  daqlist(4):source_id = 7 # 7", "  daqlist(4):source_id = 7 # 99"},
    {"FIRST_PID 20", "", "  daqlist(4):first_pid = 20 # 20", "  daqlist(4):first_pid = 20 # NULL"},
    {"7 103 1", "7 103 9", "  raster(7) = 1 # 1", "  raster(7) = 1 # 9",
     "raster(7):timebase:resolution values are not equal"},
    {"7 103 1", "7 4 1", "  raster(7) = 103 # 103", "  raster(7) = 103 # 4",
     "raster(7):timebase:scale values are not equal"},
    {"CAN_ID_FIXED 1617", "CAN_ID_FIXED 99", "  daqlist(4):fixedCanId = 1617 # 1617",
     "  daqlist(4):fixedCanId = 1617 # 99"},
    {"CAN_ID_FIXED 1617", "CAN_ID_VARIABLE", "  daqlist(4):fixedCanId = 1617 # 1617",
     "  daqlist(4):fixedCanId = 1617 # NULL"},
    {"1536 1537 57", "99 1537 57", "  transport parameter:txId = 1536 # 1536",
     "  transport parameter:txId = 1536 # 99"},
    {"1536 1537 57", "1536 99 57", "  transport parameter:rxId = 1537 # 1537",
     "  transport parameter:rxId = 1537 # 99"},
    {"1536 1537 57", "1536 1537 99", "  transport parameter:nodeId = 57 # 57",
     "  transport parameter:nodeId = 57 # 99"},
    {"BAUDRATE 500000", "", "  transport parameter:bitrate = 500000 # 500000",
     "  transport parameter:bitrate = 500000 # NULL"},
    {"OPTIONAL_CMD 17 ", "", "  OPTIONAL_CMD(2) : 17 9 ", "  OPTIONAL_CMD(2) : 9 ",
     "optional command 17 is not present in second file"},
};

TEST_F(ComparedCcpFields, EachAlone) {
    for (const Change& change : kCcpChanges) {
        SCOPED_TRACE(change.to);
        expectReport(kCcpData, replaced(kCcpData, change.from, change.to),
                     replaced(kCcpLines, change.line, change.changedLine), findingOf(change));
    }
}

TEST_F(ComparedCcpFields, WithItself) {
    expectReport(kCcpData, kCcpData, kCcpLines, "");
}

TEST_F(ComparedCcpFields, SourcesOfTheNewFileDoNotMatter) {
    expectReport(kCcpData, replaced(kCcpData, "103 1\n      /begin QP", "4 2\n      /begin QP"),
                 kCcpLines, "");
    const std::string raster = replaced(kCcpData, "RASTER 7", "RASTER \"segment\"");
    EXPECT_EQ(compare(raster, raster, true), "");
    EXPECT_NE(shown.find("  source(4):raster = segment # segment\n"
                         "  source(4):source_id = NULL # NULL\n"),
              std::string::npos);
}

TEST_F(ComparedCcpFields, LostItems) {
    EXPECT_EQ(compare(replaced(kCcpData, "QP_BLOB 4", "QP_BLOB 5"), kCcpData, false),
              "1 Daq List 5 is no longer present in new file\n"
              "1 Daq List CAN config 5 is no longer present in new file\n");
    EXPECT_EQ(compare(replaced(kCcpData, "\"SEG\" 7", "\"SEG\" 8"), kCcpData, false),
              "1 Raster 8 is no longer present in new file\n");
    const std::string more =
        replaced(kCcpData, "/begin SEED_KEY",
                 "/begin RASTER \"x\" \"x\" 9 4 1 /end RASTER /begin SOURCE \"x\" 4 1 "
                 "/begin QP_BLOB 9 /end QP_BLOB /end SOURCE /begin SEED_KEY");
    EXPECT_EQ(compare(kCcpData, more, false), "");
}

TEST_F(ComparedCcpFields, MissingParts) {
    const std::string noSource = without(kCcpData, "/begin SOURCE", "/end SOURCE");
    EXPECT_EQ(compare(kCcpData, noSource, false),
              "1 module2 does not contain sources\n"
              "1 module2 does not contain daq TP capabilities (?)\n"
              "1 Daq List 4 is no longer present in new file\n");
    EXPECT_EQ(compare(noSource, kCcpData, false),
              "1 module1 does not contain sources\n"
              "1 module1 does not contain daq TP capabilities (?)\n");

    const std::string noKey = without(kCcpData, "/begin SEED_KEY", "/end SEED_KEY");
    EXPECT_EQ(compare(kCcpData, noKey, false),
              "1 seed_key_dll_name_cal values are not equal\n"
              "1 seed_key_dll_name_daq values are not equal\n"
              "1 seed_key_dll_name_pgm values are not equal\n");

    const std::string noCommands = replaced(kCcpData, "OPTIONAL_CMD 17 OPTIONAL_CMD 9", "");
    const std::string fewerLines = std::string(kCcpLines.substr(0, kCcpLines.find("  OPTIONAL")));
    expectReport(kCcpData, noCommands, fewerLines,
                 "1 module2 does not contain optional commands\n");
    expectReport(noCommands, kCcpData, fewerLines,
                 "1 module1 does not contain optional commands\n");

    const std::string noTransport = without(kCcpData, "/begin TP_BLOB", "/end TP_BLOB");
    EXPECT_EQ(compare(kCcpData, noTransport, false),
              "1 daq capabilities:ccp_byteorder_code values are not equal\n"
              "1 daq capabilities:address_extension values are not equal\n"
              "1 different number of transport parameters\n"
              "1 module2 does not contain optional commands\n");
}

TEST_F(ComparedCcpFields, WithoutDaqCapabilities) {
    const std::string_view bare =
        " /begin IF_DATA ASAP1B_CCP /begin TP_BLOB 0x0201 0x0204 1 2 3 2 "
        "/end TP_BLOB /end IF_DATA ";
    expectReport(bare, replaced(bare, "1 2 3 2", "1 2 3 1"),
                 "  seed_key_dll_name_cal = NULL # NULL\n"
                 "  seed_key_dll_name_daq = NULL # NULL\n"
                 "  seed_key_dll_name_pgm = NULL # NULL\n"
                 "  transport parameter:txId = 1 # 1\n"
                 "  transport parameter:rxId = 2 # 2\n"
                 "  transport parameter:nodeId = 3 # 3\n"
                 "  transport parameter:bitrate = NULL # NULL\n"
                 "  transport parameter:transport type = 1 # 1\n"
                 "  transport parameter:name = CAN # CAN\n",
                 "");
    EXPECT_EQ(compare(bare, kCcpData, false),
              "1 module1 does not contain daq capabilities (?)\n"
              "1 module1 does not contain daq TP capabilities (?)\n"
              "1 seed_key_dll_name_cal values are not equal\n"
              "1 seed_key_dll_name_daq values are not equal\n"
              "1 seed_key_dll_name_pgm values are not equal\n"
              "1 transport parameter:txId values are not equal\n"
              "1 transport parameter:rxId values are not equal\n"
              "1 transport parameter:nodeId values are not equal\n"
              "1 transport parameter:bitrate values are not equal\n"
              "1 module1 does not contain optional commands\n");
}

}  // namespace
}  // namespace quillmark
