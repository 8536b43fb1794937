#include <array>

#include <gtest/gtest.h>

#include "a2l/interfaces/xcp_texts.h"

namespace quillmark {
namespace {

std::string event(std::string_view content) {
    return "/begin DAQ STATIC 0 0 0 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE "
           "IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 1 "
           "NO_OVERLOAD_INDICATION /begin EVENT " +
           std::string(content) + " /end EVENT /end DAQ";
}

constexpr std::string_view kFixed = "\"10 ms task\" \"10ms\" 0x0001 DAQ_STIM 0xFF 10 6 128 ";

std::string eventWith(std::string_view parts) {
    return event(std::string(kFixed) + std::string(parts));
}

/// The dump below the line of the DAQ capabilities.
std::string eventDump(std::string_view content) {
    const std::string dump = xcpDump(event(content));
    const std::size_t line = dump.find("  daqCapabilities ");
    return line == std::string::npos ? dump : dump.substr(dump.find('\n', line) + 1);
}

TEST(XcpEvent, Everything) {
    EXPECT_EQ(eventDump(std::string(kFixed) +
                        "CONSISTENCY EVENT /begin MIN_CYCLE_TIME 5 8 /end MIN_CYCLE_TIME "
                        "/begin DAQ_PACKED_MODE ELEMENT_GROUPED STS_FIRST MANDATORY 4 "
                        "ALT_SAMPLE_COUNT 8 ALT_SAMPLE_COUNT 16 /end DAQ_PACKED_MODE"),
              "    properties\n"
              "      list sources\n"
              "        list \"10 ms task\"\n"
              "          value source_id=1\n"
              "    raster \"10 ms task\" shortName=\"10ms\" channel=1 daqSupported=true "
              "stimSupported=true priority=128\n"
              "      timebase resolution=10 scale=2\n"
              "      minCycleTime resolution=500 scale=2\n"
              "      packedMode grouping=1 timestamp=1 mandatory=1 sampleCount=4\n"
              "        alternativeSampleCounts 8 16\n"
              "      properties\n"
              "        value max_daq_list=255\n");
}

TEST(XcpEvent, Traces) {
    EXPECT_EQ(xcpTrace(eventWith("/begin MIN_CYCLE_TIME 5 8 /end MIN_CYCLE_TIME "
                                 "MIN_CYCLE_TIME 5 8 "
                                 "/begin DAQ_PACKED_MODE ELEMENT_GROUPED STS_FIRST MANDATORY 4 "
                                 "/end DAQ_PACKED_MODE")),
              "-:   Parse IF_DATA XCP\n"
              "-:   Parse IF_DATA DAQ\n"
              "-:   Parse IF_DATA EVENT\n"
              "-:   Parse IF_DATA EVENT MIN_CYCLE_TIME\n"
              "-:   Parse IF_DATA EVENT MIN_CYCLE_TIME\n"
              "-:   Parse IF_DATA EVENT DAQ_PACKED_MODE\n");
}

TEST(XcpEvent, Names) {
    EXPECT_EQ(linesWith("raster", xcpDump(event("Fast f 1 DAQ 1 0 0 0"))),
              "raster Fast shortName=\"f\" channel=1 daqSupported=true priority=0\n");
    // A short name is taken whatever it is.
    EXPECT_EQ(linesWith("raster", xcpDump(event("Fast DAQ 1 DAQ 1 0 0 0"))),
              "raster Fast shortName=\"DAQ\" channel=1 daqSupported=true priority=0\n");
    EXPECT_EQ(linesWith("raster", xcpDump(event("Fast 10 1 DAQ 1 0 0 0"))),
              "raster Fast shortName=\"10\" channel=1 daqSupported=true priority=0\n");
    EXPECT_EQ(xcpMessages(event("DAQ \"\" 1 DAQ 1 0 0 0")),
              "Error 1: String or Identifier expected\n");
    EXPECT_EQ(xcpMessages(event("10 \"\" 1 DAQ 1 0 0 0")),
              "Error 1: String or Identifier expected\n");
}

TEST(XcpEvent, Directions) {
    EXPECT_EQ(linesWith("raster", xcpDump(event("Ev E 1 DAQ 1 0 0 0"))),
              "raster Ev shortName=\"E\" channel=1 daqSupported=true priority=0\n");
    EXPECT_EQ(linesWith("raster", xcpDump(event("Ev E 1 STIM 1 0 0 0"))),
              "raster Ev shortName=\"E\" channel=1 stimSupported=true priority=0\n");
    const Parsed parsed = parseModule(xcpBlock(event("Ev E 1 FIXED 1 0 0 0")));
    EXPECT_EQ(parsed.console, "-: Warning (a.a2l:1): Unexpected token 'FIXED' found\n");
    EXPECT_EQ(linesWith("raster", parsed.model),
              "raster Ev shortName=\"E\" channel=1 priority=0\n");
}

TEST(XcpEvent, TimeUnits) {
    constexpr std::array<std::pair<int, int>, 13> kUnits{{
        {7, 4},
        {70, 4},
        {700, 4},
        {7, 3},
        {70, 3},
        {700, 3},
        {7, 2},
        {70, 2},
        {700, 2},
        {7, 1},
        {7, 5},
        {70, 5},
        {700, 5},
    }};
    for (std::size_t code = 0; code < kUnits.size(); ++code) {
        const std::string expected = " resolution=" + std::to_string(kUnits[code].first) +
                                     " scale=" + std::to_string(kUnits[code].second) + "\n";
        const std::string number = std::to_string(code);
        EXPECT_EQ(linesWith("timebase", xcpDump(event("Ev E 1 DAQ 1 7 " + number + " 0"))),
                  "timebase" + expected);
        EXPECT_EQ(linesWith("minCycleTime", xcpDump(eventWith("/begin MIN_CYCLE_TIME 7 " + number +
                                                              " /end MIN_CYCLE_TIME"))),
                  "minCycleTime" + expected);
        EXPECT_EQ(linesWith("minCycleTime", xcpDump(eventWith("MIN_CYCLE_TIME 7 " + number))),
                  "minCycleTime" + expected);
    }
    // An event that is not cyclic has a time base too.
    EXPECT_EQ(linesWith("timebase", xcpDump(event("Ev E 1 DAQ 1 0 9 0"))), "timebase scale=1\n");
    EXPECT_EQ(linesWith("timebase", xcpDump(event("Ev E 1 DAQ 1 2.9 6.5 0"))),
              "timebase resolution=2 scale=2\n");
}

TEST(XcpEvent, WrongTimes) {
    constexpr std::string_view kConvert = "Error 1: Could not convert TIME_UNIT\n";
    constexpr std::string_view kRead = "Error 1: Could not read TIME_CYCLE or TIME_UNIT\n";
    for (const char* unit : {"13", "-1", "255", "1e30"}) {
        const std::string text = std::string("7 ") + unit;
        EXPECT_EQ(xcpMessages(event("Ev E 1 DAQ 1 " + text + " 0")), kConvert);
        EXPECT_EQ(xcpMessages(eventWith("/begin MIN_CYCLE_TIME " + text)), kConvert);
        EXPECT_EQ(xcpMessages(eventWith("MIN_CYCLE_TIME " + text)), kConvert);
    }
    for (const char* text : {"X 6", "7 UNIT_1MS", "\"7\" \"6\"", "DAQ 13", "/end MIN_CYCLE_TIME"}) {
        EXPECT_EQ(xcpMessages(event(std::string("Ev E 1 DAQ 1 ") + text + " 0")), kRead);
        EXPECT_EQ(xcpMessages(eventWith(std::string("/begin MIN_CYCLE_TIME ") + text)), kRead);
    }
    // Both are read before they are judged.
    EXPECT_EQ(xcpMessages(event("Ev E 1 DAQ 1 X\n\n6 0")),
              "Error 3: Could not read TIME_CYCLE or TIME_UNIT\n");
}

TEST(XcpEvent, PackedMode) {
    EXPECT_EQ(linesWith("packedMode",
                        xcpDump(eventWith("/begin DAQ_PACKED_MODE EVENT_GROUPED STS_LAST OPTIONAL "
                                          "2.5 /end DAQ_PACKED_MODE"))),
              "packedMode grouping=2 sampleCount=2\n");
    EXPECT_EQ(xcpMessages(eventWith("/begin DAQ_PACKED_MODE NONE STS FIXED 2 /end "
                                    "DAQ_PACKED_MODE")),
              "Warning 1: Unexpected token 'NONE' found\n"
              "Warning 1: Unexpected token 'token=303' found\n"
              "Warning 1: Unexpected token 'FIXED' found\n");
}

TEST(XcpEvent, KeywordsWithoutMeaning) {
    const std::string plain = xcpDump(eventWith(""));
    for (const char* part :
         {"COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER 2",
          "CONSISTENCY DAQ",
          "CONSISTENCY EVENT",
          "CONSISTENCY ODT",
          "CONSISTENCY NONE",
          "EVENT_COUNTER_PRESENT",
          "RELATED_EVENT_CHANNEL_NUMBER 3",
          "RELATED_EVENT_CHANNEL_NUMBER_FIXED",
          "DTO_CTR_DAQ_MODE INSERT_COUNTER",
          "DTO_CTR_DAQ_MODE INSERT_STIM_COUNTER_COPY",
          "DTO_CTR_DAQ_MODE_FIXED",
          "DTO_CTR_STIM_MODE CHECK_COUNTER",
          "DTO_CTR_STIM_MODE_FIXED",
          "STIM_DTO_CTR_COPY_PRESENT",
          "CPU_LOAD_MAX 1.5",
          "/begin BUFFER_RESERVE_EVENT 1 2 /end BUFFER_RESERVE_EVENT",
          "/begin CPU_LOAD_CONSUMPTION_DAQ 1 2 3 /begin ODT_ENTRY_SIZE_FACTOR_TABLE 1 2 /end "
          "ODT_ENTRY_SIZE_FACTOR_TABLE /end CPU_LOAD_CONSUMPTION_DAQ",
          "/begin CPU_LOAD_CONSUMPTION_STIM 1 /end CPU_LOAD_CONSUMPTION_STIM",
          "/begin CPU_LOAD_CONSUMPTION_QUEUE 1 /end CPU_LOAD_CONSUMPTION_QUEUE",
          "/begin CPU_LOAD_CONSUMPTION_QUEUE_STIM 1 /end CPU_LOAD_CONSUMPTION_QUEUE_STIM",
          "/begin NEWER EVENT /end NEWER"}) {
        EXPECT_EQ(xcpDump(eventWith(part)), plain) << part;
    }
}

TEST(XcpEvent, WrongWordsOfKeywordsWithoutMeaning) {
    EXPECT_EQ(xcpMessages(eventWith("CONSISTENCY STIM DTO_CTR_DAQ_MODE CHECK_COUNTER "
                                    "DTO_CTR_STIM_MODE INSERT_COUNTER")),
              "Warning 1: Unexpected token 'STIM' found\n"
              "Warning 1: Unexpected token 'CHECK_COUNTER' found\n"
              "Warning 1: Unexpected token 'token=303' found\n");
}

TEST(XcpEvent, Ends) {
    EXPECT_EQ(xcpMessages(eventWith("/end DAQ")), "Error 1: Keyword 'EVENT' expected after /end\n");
    EXPECT_EQ(xcpMessages(eventWith("/begin MIN_CYCLE_TIME 1 2 /end EVENT")),
              "Error 1: Keyword 'MIN_CYCLE_TIME' expected after /end\n");
    EXPECT_EQ(xcpMessages(eventWith("/begin MIN_CYCLE_TIME 1 2 3 /end EVENT")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(xcpMessages(eventWith("/begin DAQ_PACKED_MODE EVENT_GROUPED STS_LAST OPTIONAL 1 "
                                    "/end EVENT")),
              "Error 1: Keyword 'DAQ_PACKED_MODE' expected after /end\n");
    EXPECT_EQ(xcpMessages(eventWith("DAQ")), "Error 1: Unexpected token 'DAQ' found\n");
}

// --- DAQ_EVENT -----------------------------------------------------------------------------------

std::string measurement(std::string_view daqEvent) {
    return "/begin MEASUREMENT M \"\" UBYTE NO_COMPU_METHOD 0 0 0 1 " +
           xcpBlock("/begin DAQ_EVENT " + std::string(daqEvent) + " /end DAQ_EVENT") +
           " /end MEASUREMENT";
}

/// The dump below the lines of the measurement and its type.
std::string events(std::string_view daqEvent) {
    const std::string dump = moduleDump(measurement(daqEvent));
    const std::size_t line = dump.find("  datatype ");
    return line == std::string::npos ? dump : dump.substr(dump.find('\n', line) + 1);
}

TEST(XcpDaqEvent, Lists) {
    EXPECT_EQ(events("FIXED_EVENT_LIST EVENT 2 EVENT 0x10"), "  fixedEvents 2 16\n");
    EXPECT_EQ(events("FIXED_EVENT_LIST"), "");
    EXPECT_EQ(events("VARIABLE"), "");
    constexpr std::string_view kVariable =
        "  availableEvents 1 2\n"
        "  defaultEvents 2\n"
        "  consistencyEvents 3\n";
    EXPECT_EQ(events("VARIABLE /begin AVAILABLE_EVENT_LIST EVENT 1 EVENT 2 /end "
                     "AVAILABLE_EVENT_LIST /begin DEFAULT_EVENT_LIST EVENT 2 /end "
                     "DEFAULT_EVENT_LIST /begin CONSISTENCY_EVENT_LIST EVENT 3 /end "
                     "CONSISTENCY_EVENT_LIST"),
              kVariable);
    EXPECT_EQ(events("VARIABLE AVAILABLE_EVENT_LIST EVENT 1 EVENT 2 DEFAULT_EVENT_LIST EVENT 2 "
                     "CONSISTENCY_EVENT_LIST EVENT 3"),
              kVariable);
    EXPECT_EQ(events("VARIABLE DEFAULT_EVENT_LIST EVENT 1 /begin NEWER 1 /end NEWER"),
              "  defaultEvents 1\n");
    EXPECT_EQ(events("FIXED_EVENT_LIST EVENT 1.9 EVENT X"), "  fixedEvents 1 0\n");
}

TEST(XcpDaqEvent, OfACharacteristic) {
    const std::string dump = moduleDump(
        "/begin RECORD_LAYOUT R FNC_VALUES 1 UBYTE COLUMN_DIR DIRECT /end RECORD_LAYOUT "
        "/begin CHARACTERISTIC C \"\" VALUE 0 R 0 NO_COMPU_METHOD 0 1 " +
        xcpBlock("/begin DAQ_EVENT FIXED_EVENT_LIST EVENT 3 /end DAQ_EVENT") +
        " /end CHARACTERISTIC");
    EXPECT_EQ(linesWith("fixedEvents", dump), "fixedEvents 3\n") << dump;
}

TEST(XcpDaqEvent, MakesNoCommunicationParameters) {
    EXPECT_EQ(linesWith("commParam", moduleDump(measurement("FIXED_EVENT_LIST EVENT 2"))), "");
}

TEST(XcpDaqEvent, OfNoSignalIsForgotten) {
    EXPECT_EQ(xcpDump("/begin DAQ_EVENT FIXED_EVENT_LIST EVENT 2 /end DAQ_EVENT"),
              "station\n"
              "  protocolParam\n");
}

TEST(XcpDaqEvent, Errors) {
    EXPECT_EQ(messages(measurement("EVENT 1")), "Error 1: Unexpected token 'EVENT' found\n");
    EXPECT_EQ(messages(measurement("FIXED_EVENT_LIST EVENT 1 2")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(messages(measurement("VARIABLE /begin DEFAULT_EVENT_LIST 1")),
              "Error 1: Unexpected token 'token=300' found\n");
    EXPECT_EQ(messages(measurement("VARIABLE /begin DEFAULT_EVENT_LIST /end DAQ_EVENT")),
              "Error 1: Keyword 'DEFAULT_EVENT_LIST' expected after /end\n");
    EXPECT_EQ(messages(measurement("VARIABLE /end EVENT")),
              "Error 1: Keyword 'DAQ_EVENT' expected after /end\n");
}

}  // namespace
}  // namespace quillmark
