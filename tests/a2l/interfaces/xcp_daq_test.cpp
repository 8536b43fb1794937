#include <array>

#include <gtest/gtest.h>

#include "a2l/interfaces/xcp_texts.h"

namespace quillmark {
namespace {

constexpr std::string_view kFixed =
    "DYNAMIC 5 6 7 OPTIMISATION_TYPE_ODT_TYPE_32 ADDRESS_EXTENSION_DAQ "
    "IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_DWORD 8 "
    "OVERLOAD_INDICATION_PID";

std::string daq(std::string_view content, std::string_view fixed = kFixed) {
    return "/begin DAQ " + std::string(fixed) + " " + std::string(content) + " /end DAQ ";
}

/// The dump below the line of the DAQ capabilities.
std::string daqParts(std::string_view content) {
    const std::string dump = xcpDump(daq(content));
    const std::size_t line = dump.find("  daqCapabilities ");
    return line == std::string::npos ? dump : dump.substr(dump.find('\n', line) + 1);
}

/// The line of the DAQ capabilities.
std::string daqLine(std::string_view text) {
    return linesWith("daqCapabilities", parseModule(xcpBlock(text)).model);
}

TEST(XcpDaq, FixedParameters) {
    EXPECT_EQ(xcpDump(daq("")),
              "station\n"
              "  protocolParam\n"
              "  daqCapabilities configType=2 optimisationType=3 addressExtension=3 "
              "identificationFieldType=2 granularityOdtEntrySize=3 overloadIndication=2 maxDaq=5 "
              "maxEventChannel=6 minDaq=7 maxOdtEntrySize=8\n");
    EXPECT_EQ(xcpTrace(daq("")), "-:   Parse IF_DATA XCP\n-:   Parse IF_DATA DAQ\n");
}

/// One fixed word and where its code is to be found.
struct FixedWord {
    std::size_t position;
    const char* word;
    const char* field;
};

constexpr std::array kFixedParameters{
    "STATIC",
    "0",
    "0",
    "0",
    "OPTIMISATION_TYPE_DEFAULT",
    "ADDRESS_EXTENSION_FREE",
    "IDENTIFICATION_FIELD_TYPE_ABSOLUTE",
    "GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE",
    "0",
    "NO_OVERLOAD_INDICATION",
};

std::string fixedWith(std::size_t position, const std::string& word) {
    std::string text;
    for (std::size_t i = 0; i < kFixedParameters.size(); ++i) {
        text += (i == position ? word : kFixedParameters[i]) + std::string(" ");
    }
    return text;
}

TEST(XcpDaq, FixedWords) {
    constexpr FixedWord kWords[] = {
        {0, "STATIC", "configType=1"},
        {0, "DYNAMIC", "configType=2"},
        {4, "OPTIMISATION_TYPE_DEFAULT", "optimisationType=1"},
        {4, "OPTIMISATION_TYPE_ODT_TYPE_16", "optimisationType=2"},
        {4, "OPTIMISATION_TYPE_ODT_TYPE_32", "optimisationType=3"},
        {4, "OPTIMISATION_TYPE_ODT_TYPE_64", "optimisationType=4"},
        {4, "OPTIMISATION_TYPE_ODT_TYPE_ALIGNMENT", "optimisationType=5"},
        {4, "OPTIMISATION_TYPE_MAX_ENTRY_SIZE", "optimisationType=6"},
        {5, "ADDRESS_EXTENSION_FREE", "addressExtension=1"},
        {5, "ADDRESS_EXTENSION_ODT", "addressExtension=2"},
        {5, "ADDRESS_EXTENSION_DAQ", "addressExtension=3"},
        {6, "IDENTIFICATION_FIELD_TYPE_ABSOLUTE", "identificationFieldType=1"},
        {6, "IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE", "identificationFieldType=2"},
        {6, "IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD", "identificationFieldType=3"},
        {6, "IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD_ALIGNED", "identificationFieldType=4"},
        {7, "GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE", "granularityOdtEntrySize=1"},
        {7, "GRANULARITY_ODT_ENTRY_SIZE_DAQ_WORD", "granularityOdtEntrySize=2"},
        {7, "GRANULARITY_ODT_ENTRY_SIZE_DAQ_DWORD", "granularityOdtEntrySize=3"},
        {7, "GRANULARITY_ODT_ENTRY_SIZE_DAQ_DLONG", "granularityOdtEntrySize=4"},
        {9, "NO_OVERLOAD_INDICATION", "overloadIndication=1"},
        {9, "OVERLOAD_INDICATION_PID", "overloadIndication=2"},
        {9, "OVERLOAD_INDICATION_EVENT", "overloadIndication=3"},
    };
    for (const FixedWord& row : kWords) {
        const std::string line = daqLine(daq("", fixedWith(row.position, row.word)));
        EXPECT_NE(line.find(std::string(" ") + row.field + " "), std::string::npos)
            << row.word << ": " << line;
    }
}

TEST(XcpDaq, AWrongWordIsAWarningAndStoresNothing) {
    constexpr FixedWord kWords[] = {
        {0, "INTERLEAVED", "configType"},
        {4, "OPTIMISATION_TYPE_ODT_STRICT", "optimisationType"},
        {5, "ADDRESS", "addressExtension"},
        {6, "300", "identificationFieldType"},
        {7, "GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE", "granularityOdtEntrySize"},
        {9, "\"x\"", "overloadIndication"},
    };
    constexpr std::array kNames{
        "INTERLEAVED", "token=303", "ADDRESS", "token=300", "GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE",
        "token=302"};
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        const std::string text =
            daq("PRESCALER_SUPPORTED", fixedWith(kWords[i].position, kWords[i].word));
        EXPECT_EQ(xcpMessages(text),
                  std::string("Warning 1: Unexpected token '") + kNames[i] + "' found\n");
        const std::string line = daqLine(text);
        EXPECT_EQ(line.find(kWords[i].field), std::string::npos) << line;
        EXPECT_NE(line.find("prescalerSupported=true"), std::string::npos) << line;
    }
}

TEST(XcpDaq, ALeftOutWordIsNotGuessed) {
    EXPECT_EQ(xcpMessages(daq("",
                              "DYNAMIC 0 3 0 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE "
                              "IDENTIFICATION_FIELD_TYPE_ABSOLUTE 8 OVERLOAD_INDICATION_PID")),
              "Warning 1: Unexpected token 'token=300' found\n"
              "Warning 1: Unexpected token '/end' found\n"
              "Error 1: Unexpected token 'DAQ' found\n");
}

TEST(XcpDaq, AWrongWordKeepsAnEarlierValue) {
    EXPECT_EQ(daqLine(daq("") + daq("", fixedWith(0, "X"))).find("configType=2 optimisationType=1"),
              std::string("daqCapabilities ").size());
}

TEST(XcpDaq, NumbersOfAnyOtherKindAre0) {
    const std::string line =
        daqLine(daq("",
                    "STATIC 1.9 \"x\" Y OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE "
                    "IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE -1e30 "
                    "NO_OVERLOAD_INDICATION"));
    EXPECT_NE(line.find("maxDaq=1 maxEventChannel=0 minDaq=0 maxOdtEntrySize=-2147483648"),
              std::string::npos)
        << line;
}

TEST(XcpDaq, Flags) {
    constexpr std::array<std::pair<const char*, const char*>, 5> kFlags{{
        {"PRESCALER_SUPPORTED", "prescalerSupported=true"},
        {"RESUME_SUPPORTED", "resumeSupported=true"},
        {"DAQ_RESUME_SUPPORTED", "resumeSupported=true"},
        {"PID_OFF_SUPPORTED", "pidOffSupported=true"},
        {"STORE_DAQ_SUPPORTED", "storeDaqSupported=true"},
    }};
    for (const auto& [keyword, field] : kFlags) {
        EXPECT_TRUE(daqLine(daq(keyword)).ends_with(std::string(" ") + field + "\n")) << keyword;
        EXPECT_EQ(xcpMessages(daq(keyword)), "");
    }
}

TEST(XcpDaq, KeywordsWithoutMeaning) {
    for (const char* keyword :
         {"DAQ_ALTERNATING_SUPPORTED", "CPU_LOAD_MAX", "MAX_DAQ_TOTAL", "MAX_ODT_TOTAL",
          "MAX_ODT_DAQ_TOTAL", "MAX_ODT_STIM_TOTAL", "MAX_ODT_ENTRIES_TOTAL",
          "MAX_ODT_ENTRIES_DAQ_TOTAL", "MAX_ODT_ENTRIES_STIM_TOTAL", "CPU_LOAD_MAX_TOTAL",
          "CORE_LOAD_MAX_TOTAL"}) {
        EXPECT_EQ(daqParts(std::string(keyword) + " 1.5"), "");
        EXPECT_EQ(xcpMessages(daq(std::string(keyword) + " 1 2")),
                  "Error 1: Unexpected token 'token=300' found\n");
    }
    EXPECT_EQ(daqParts("DTO_CTR_FIELD_SUPPORTED OPTIMISATION_TYPE_ODT_STRICT"), "");
    for (const char* name :
         {"CPU_LOAD_CONSUMPTION_DAQ", "CPU_LOAD_CONSUMPTION_STIM", "CPU_LOAD_CONSUMPTION_QUEUE",
          "DAQ_MEMORY_CONSUMPTION", "MIN_CYCLE_TIME", "CORE_LOAD_MAX"}) {
        const std::string block(name);
        EXPECT_EQ(daqParts("/begin " + block + " 1 /begin X /end Y /end " + block), "");
        EXPECT_EQ(xcpMessages(daq("/begin " + block + " 1 /end DAQ")),
                  "Error 1: Keyword '" + block + "' expected after /end (IGN)\n");
    }
    EXPECT_EQ(daqParts("/begin NEWER 1 /end NEWER"), "");
}

TEST(XcpDaq, End) {
    EXPECT_EQ(xcpMessages("/begin DAQ " + std::string(kFixed) + " /end EVENT"),
              "Error 1: Keyword 'DAQ' expected after /end\n");
    EXPECT_EQ(xcpMessages(daq("MIN_CYCLE_TIME 1 2")),
              "Error 1: Unexpected token 'MIN_CYCLE_TIME' found\n");
}

// --- STIM and TIMESTAMP_SUPPORTED ----------------------------------------------------------------

std::string stimProperties(std::string_view size) {
    return "    properties\n"
           "      value granularity_odt_entry_size_stim=" +
           std::string(size) +
           "\n"
           "      value max_odt_entry_size_stim=7\n";
}

TEST(XcpStim, Granularities) {
    constexpr std::array<std::pair<const char*, const char*>, 4> kCodes{{
        {"BYTE", "1"},
        {"WORD", "2"},
        {"DWORD", "4"},
        {"DLONG", "8"},
    }};
    for (const auto& [word, code] : kCodes) {
        EXPECT_EQ(daqParts(std::string("/begin STIM GRANULARITY_ODT_ENTRY_SIZE_STIM_") + word +
                           " 7 BIT_STIM_SUPPORTED MIN_ST_STIM 4 /end STIM"),
                  stimProperties(code));
    }
}

TEST(XcpStim, AWrongGranularityIs0) {
    const Parsed parsed =
        parseModule(xcpBlock(daq("/begin STIM GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 7 /end STIM")));
    EXPECT_EQ(parsed.console,
              "-: Warning (a.a2l:1): Unexpected token "
              "'GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE' found\n");
    EXPECT_EQ(linesWith("value granularity", parsed.model),
              "value granularity_odt_entry_size_stim=0\n");
}

TEST(XcpStim, End) {
    EXPECT_EQ(xcpMessages(daq("/begin STIM GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE 7 /end DAQ")),
              "Error 1: Keyword 'STIM' expected after /end\n");
    EXPECT_EQ(xcpMessages(daq("/begin STIM GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE 7 STIM")),
              "Error 1: Unexpected token 'STIM' found\n");
}

std::string timestamp(std::string_view content) {
    return "/begin TIMESTAMP_SUPPORTED " + std::string(content) + " /end TIMESTAMP_SUPPORTED";
}

TEST(XcpTimestamp, Units) {
    struct Row {
        const char* word;
        int resolution;
        int scale;
    };
    constexpr Row kUnits[] = {
        {"UNIT_1NS", 3, 4},     {"UNIT_10NS", 30, 4}, {"UNIT_100NS", 300, 4},
        {"UNIT_1US", 3, 3},     {"UNIT_10US", 30, 3}, {"UNIT_100US", 300, 3},
        {"UNIT_1MS", 3, 2},     {"UNIT_10MS", 30, 2}, {"UNIT_100MS", 300, 2},
        {"UNIT_1S", 3, 1},      {"UNIT_1PS", 3, 5},   {"UNIT_10PS", 30, 5},
        {"UNIT_100PS", 300, 5},
    };
    for (const Row& row : kUnits) {
        const std::string resolution = std::to_string(row.resolution);
        EXPECT_EQ(daqParts(timestamp(std::string("3 SIZE_DWORD ") + row.word)),
                  "    timebase resolution=" + resolution + " scale=" + std::to_string(row.scale) +
                      " byteLength=4\n"
                      "    properties\n"
                      "      value timestamp_size=4\n"
                      "      value timestamp_resolution=" +
                      resolution + "\n")
            << row.word;
    }
}

TEST(XcpTimestamp, SizesAndTheFixedFlag) {
    constexpr std::array<std::pair<const char*, const char*>, 4> kSizes{{
        {"NO_TIME_STAMP", "0"},
        {"SIZE_BYTE", "1"},
        {"SIZE_WORD", "2"},
        {"SIZE_DWORD", "4"},
    }};
    for (const auto& [word, size] : kSizes) {
        EXPECT_EQ(daqParts(timestamp(std::string("1 ") + word + " UNIT_1S TIMESTAMP_FIXED")),
                  std::string("    timebase resolution=1 scale=1 byteLength=") + size +
                      " fixed=true\n"
                      "    properties\n"
                      "      value timestamp_size=" +
                      size +
                      "\n"
                      "      value timestamp_resolution=1\n");
    }
}

TEST(XcpTimestamp, WithoutTicks) {
    EXPECT_EQ(linesWith("timebase", xcpDump(daq(timestamp("SIZE_WORD UNIT_100MS")))),
              "timebase resolution=100 scale=2 byteLength=2\n");
}

TEST(XcpTimestamp, ARealCountsAsTicks) {
    EXPECT_EQ(linesWith("timebase", xcpDump(daq(timestamp("2.9 SIZE_WORD UNIT_100MS")))),
              "timebase resolution=200 scale=2 byteLength=2\n");
}

TEST(XcpTimestamp, WrongWords) {
    const auto parse = [](std::string_view content) {
        return parseModule(xcpBlock(daq(timestamp(content))));
    };
    Parsed parsed = parse("5 SIZE_BIG UNIT_10US");
    EXPECT_EQ(parsed.console, "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n");
    EXPECT_EQ(linesWith("timebase", parsed.model), "timebase resolution=50 scale=3\n");
    EXPECT_EQ(linesWith("value", parsed.model), "value timestamp_resolution=50\n");
    parsed = parse("5 SIZE_BYTE UNIT_1MIN");
    EXPECT_EQ(parsed.console, "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n");
    EXPECT_EQ(linesWith("timebase", parsed.model), "timebase resolution=5 byteLength=1\n");
    // The word with blanks at its end is in the keyword table, but no text can match it.
    EXPECT_EQ(linesWith("timebase", parse("5 SIZE_BYTE UNIT_1PS").model),
              "timebase resolution=5 scale=5 byteLength=1\n");
}

TEST(XcpTimestamp, TheProductKeepsItsLow32Bits) {
    EXPECT_EQ(linesWith("timebase", xcpDump(daq(timestamp("0x7FFFFFFF SIZE_BYTE UNIT_100US")))),
              "timebase resolution=-100 scale=3 byteLength=1\n");
}

TEST(XcpTimestamp, ASecondOneReplacesTheFirst) {
    EXPECT_EQ(linesWith("timebase", xcpDump(daq(timestamp("1 SIZE_BYTE UNIT_1S TIMESTAMP_FIXED") +
                                                " " + timestamp("2 SIZE_WORD UNIT_1MS")))),
              "timebase resolution=2 scale=2 byteLength=2\n");
}

TEST(XcpTimestamp, End) {
    EXPECT_EQ(xcpMessages(daq("/begin TIMESTAMP_SUPPORTED 1 SIZE_BYTE UNIT_1S /end DAQ")),
              "Error 1: Keyword 'TIMESTAMP_SUPPORTED' expected after /end\n");
    EXPECT_EQ(xcpMessages(daq(timestamp("1 SIZE_BYTE UNIT_1S UNIT_1S"))),
              "Error 1: Unexpected token 'UNIT_1S' found\n");
}

// --- DAQ_LIST ------------------------------------------------------------------------------------

std::string daqList(std::string_view content) {
    return "/begin DAQ_LIST " + std::string(content) + " /end DAQ_LIST ";
}

TEST(XcpDaqList, Everything) {
    const std::string text = daq(
        daqList("2 DAQ_LIST_TYPE DAQ_STIM MAX_ODT 3 MAX_ODT_ENTRIES 7 FIRST_PID 0x10 EVENT_FIXED 1 "
                "DAQ_PACKED_MODE_SUPPORTED "
                "/begin PREDEFINED "
                "/begin ODT 0 ODT_ENTRY 0 0xD0001000 1 4 0xFF ODT_ENTRY 1 2 3 4 5 /end ODT "
                "/begin ODT 1 /end ODT /end PREDEFINED"));
    EXPECT_EQ(xcpDump(text),
              "station\n"
              "  protocolParam\n"
              "  daqTpCapabilities\n"
              "    daqTpCan number=2\n"
              "  daqCapabilities configType=2 optimisationType=3 addressExtension=3 "
              "identificationFieldType=2 granularityOdtEntrySize=3 overloadIndication=2 maxDaq=5 "
              "maxEventChannel=6 minDaq=7 maxOdtEntrySize=8\n"
              "    daq direction=3 number=2 length=3 maxOdtEntries=7 sourceId=1 firstPid=16\n"
              "      odt number=0\n"
              "        odtEntry number=0 address=-805302272 addressExtension=1 size=4 "
              "bitOffset=255\n"
              "        odtEntry number=1 address=2 addressExtension=3 size=4 bitOffset=5\n"
              "      odt number=1\n");
    EXPECT_EQ(xcpTrace(text),
              "-:   Parse IF_DATA XCP\n"
              "-:   Parse IF_DATA DAQ\n"
              "-:   Parse IF_DATA DAQ_LIST\n"
              "-:  Parse DAQ_LIST PREDEFINED");
}

TEST(XcpDaqList, NumbersKeepTheirKind) {
    EXPECT_EQ(
        linesWith("daq ", xcpDump(daq(daqList("2.9 MAX_ODT 3.0 MAX_ODT_ENTRIES 7 FIRST_PID 1e3 "
                                              "EVENT_FIXED 1.5")))),
        "daq number=2 length=3.0 maxOdtEntries=7 sourceId=1.5 firstPid=1000.0\n");
}

TEST(XcpDaqList, OtherTokensAreWarnings) {
    const Parsed parsed = parseModule(
        xcpBlock(daq(daqList("1 MAX_ODT 5 MAX_ODT \"3\" MAX_ODT_ENTRIES X FIRST_PID FIXED "
                             "EVENT_FIXED \"\" DAQ_LIST_TYPE STIM DAQ_LIST_TYPE FIXED "
                             "DAQ_LIST_TYPE 1"))));
    EXPECT_EQ(parsed.status, 0);
    EXPECT_EQ(parsed.console,
              "-: Warning (a.a2l:1): Unexpected token 'token=302' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'FIXED' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'token=302' found\n"
              "-: Warning (a.a2l:1): Unexpected token for DAQ_LIST_TYPE: 2050\n"
              "-: Warning (a.a2l:1): Unexpected token for DAQ_LIST_TYPE: 300\n");
    EXPECT_EQ(linesWith("daq ", parsed.model), "daq direction=2 number=1 length=5\n");
}

TEST(XcpDaqList, Types) {
    EXPECT_EQ(linesWith("daq ", xcpDump(daq(daqList("1 DAQ_LIST_TYPE DAQ") +
                                            daqList("2 DAQ_LIST_TYPE STIM") +
                                            daqList("3 DAQ_LIST_TYPE DAQ_STIM")))),
              "daq direction=1 number=1\n"
              "daq direction=2 number=2\n"
              "daq direction=3 number=3\n");
}

TEST(XcpDaqList, EveryListOfTheProtocolHasAnEntryOfItsOwn) {
    EXPECT_EQ(linesWith("daqTpCan ", xcpDump(daq(daqList("1") + daqList("1")))),
              "daqTpCan number=1\n"
              "daqTpCan number=1\n");
}

TEST(XcpDaqList, Ends) {
    EXPECT_EQ(xcpMessages(daq("/begin DAQ_LIST 1 /end DAQ")),
              "Error 1: Keyword 'DAQ_LIST' expected after /end\n");
    EXPECT_EQ(xcpMessages(daq("/begin DAQ_LIST 1 /begin PREDEFINED /end DAQ")),
              "Error 1: Keyword 'PREDEFINED' expected after /end\n");
    EXPECT_EQ(xcpMessages(daq("/begin DAQ_LIST 1 /begin PREDEFINED /begin ODT 1 /end DAQ")),
              "Error 1: Keyword 'ODT' expected after /end\n");
    EXPECT_EQ(xcpMessages(daq("/begin DAQ_LIST 1 ODT")), "Error 1: Unexpected token 'ODT' found\n");
    EXPECT_EQ(xcpMessages(daq("/begin DAQ_LIST 1 /begin PREDEFINED ODT_ENTRY")),
              "Error 1: Unexpected token 'ODT_ENTRY' found\n");
    EXPECT_EQ(xcpMessages(daq("/begin DAQ_LIST 1 /begin PREDEFINED /begin ODT 1 2")),
              "Error 1: Unexpected token 'token=300' found\n");
}

}  // namespace
}  // namespace quillmark
