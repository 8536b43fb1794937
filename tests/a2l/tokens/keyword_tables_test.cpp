#include "a2l/tokens/keyword_tables.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "a2l/tokens/frequent_keywords.h"

namespace quillmark {
namespace {

struct TableRow {
    const char* name;
    const KeywordTable* table;
    std::uint32_t capacity;
};

const TableRow kTables[] = {
    {"core", &kCoreKeywords, 400}, {"words", &kWordKeywords, 100}, {"xcp", &kXcpKeywords, 400},
    {"ccp", &kCcpKeywords, 200},   {"kwp", &kKwpKeywords, 100},    {"gmlan", &kGmlanKeywords, 100},
};

TEST(KeywordTables, SizesAreFixed) {
    for (const TableRow& row : kTables) {
        EXPECT_LE(row.table->entries.size(), row.capacity) << row.name;
        EXPECT_EQ(row.table->capacity, row.capacity) << row.name;
        EXPECT_EQ(row.table->slotCount, row.capacity + 1) << row.name;
    }
}

TEST(KeywordTables, EveryRowIsFoundByItsText) {
    for (const TableRow& row : kTables) {
        std::map<std::string_view, int> first;
        for (const KeywordEntry& entry : row.table->entries) {
            first.emplace(entry.text, entry.id);
        }
        for (const KeywordEntry& entry : row.table->entries) {
            EXPECT_EQ(lookup(*row.table, entry.text), first[entry.text])
                << row.name << " " << entry.text;
        }
    }
}

TEST(KeywordTables, NeighboursOfKeywordsAreNotFound) {
    for (const TableRow& row : kTables) {
        for (const KeywordEntry& entry : row.table->entries) {
            const std::string text(entry.text);
            const std::string without = text.substr(0, text.size() - 1);
            std::string swapped = text;
            swapped.back() = static_cast<char>(swapped.back() ^ 0x20);
            for (const std::string& other : {text + "_", without, swapped, text + '\0'}) {
                const int expected = lookup(KeywordTable(row.table->entries), other);
                EXPECT_EQ(lookup(*row.table, other), expected) << row.name << " " << other;
            }
        }
    }
}

TEST(KeywordTables, TableWithoutIndexFindsTheSame) {
    for (const TableRow& row : kTables) {
        const KeywordTable bare(row.table->entries);
        for (const TableRow& other : kTables) {
            for (const KeywordEntry& entry : other.table->entries) {
                EXPECT_EQ(lookup(bare, entry.text), lookup(*row.table, entry.text))
                    << row.name << " " << entry.text;
            }
        }
        EXPECT_EQ(lookup(bare, "no keyword"), 0);
    }
}

TEST(KeywordTables, SlashBelongsToTheKeyword) {
    EXPECT_EQ(lookup(kCoreKeywords, "/begin"), 1);
    EXPECT_EQ(lookup(kCoreKeywords, "/end"), 2);
    EXPECT_EQ(lookup(kCoreKeywords, "/include"), 122);
    EXPECT_EQ(lookup(kCoreKeywords, "begin"), 0);
    EXPECT_EQ(lookup(kCoreKeywords, "include"), 0);
}

TEST(KeywordTables, BeginAndEndStandEverywhereButAmongTheWords) {
    for (const TableRow& row : kTables) {
        const bool words = row.table == &kWordKeywords;
        EXPECT_EQ(lookup(*row.table, "/begin"), words ? 0 : 1) << row.name;
        EXPECT_EQ(lookup(*row.table, "/end"), words ? 0 : 2) << row.name;
    }
}

TEST(KeywordTables, CaseCounts) {
    EXPECT_EQ(lookup(kCoreKeywords, "MEASUREMENT"), 134);
    EXPECT_EQ(lookup(kCoreKeywords, "Measurement"), 0);
    EXPECT_EQ(lookup(kCoreKeywords, "measurement"), 0);
    EXPECT_EQ(lookup(kXcpKeywords, "XCP_ON_SxI"), 2198);
    EXPECT_EQ(lookup(kXcpKeywords, "XCP_ON_SXI"), 0);
}

TEST(KeywordTables, KeywordsOfOtherTablesAreNone) {
    EXPECT_EQ(lookup(kCoreKeywords, "DAQ"), 0);
    EXPECT_EQ(lookup(kXcpKeywords, "DAQ"), 2030);
    EXPECT_EQ(lookup(kCcpKeywords, "DAQ"), 3018);
    EXPECT_EQ(lookup(kXcpKeywords, "MEASUREMENT"), 0);
    EXPECT_EQ(lookup(kWordKeywords, "MEASUREMENT"), 0);
}

TEST(KeywordTables, EmptyAndLongTextsAreNone) {
    for (const TableRow& row : kTables) {
        EXPECT_EQ(lookup(*row.table, ""), 0);
        EXPECT_EQ(lookup(*row.table, std::string(63, 'A')), 0);
        EXPECT_EQ(lookup(*row.table, std::string(64, 'A')), 0);
        EXPECT_EQ(lookup(*row.table, std::string(100000, 'A')), 0);
    }
}

TEST(KeywordTables, IrregularXcpRows) {
    const std::pair<const char*, int> rows[] = {
        {"CAN_ID_MASTER", 2022},
        {"CAN_ID_MASTER_INCREMENTAL", 2296},
        {"CAN_ID_SLAVE", 2023},
        {"CAN_ID_GET_DAQ_CLOCK_MULTICAST", 2297},
        {"CHECKSUM", 2024},
        {"OPTIONAL_CMD", 2109},
        {"OPTIONAL_TL_SUBCMD", 2290},
        {"OVERLOAD_INDICATION_EVENT", 2110},
        {"PACKET_ALIGNMENT", 2386},
        {"PACKET_ALIGNMENT_8", 2238},
        {"PACKET_ALIGNMENT_16", 2236},
        {"PACKET_ALIGNMENT_32", 2237},
        {"MAX_BITRATE", 2274},
        {"MAX_BIT_RATE", 2274},
        {"UNIT_100PS", 2287},
        {"UNIT_10PS ", 2288},
        {"UNIT_10PS", 0},
        {"UNIT_1PS  ", 2289},
        {"UNIT_1PS", 0},
        {"INSERT_COUNTE", 2302},
        {"SET_DAQ_PACKED_MOD", 2325},
        {"CORE_LOAD_MAX_TOTAL", 3341},
        {"CORE_LOAD_MAX", 3342},
        {"BUFFER_RESERVE", 3343},
        {"CONSISTENCY_EVENT_LIST", 2344},
        {"FLX_ACTIVATE", 2374},
        {"FLX_DEACTIVATE", 2375},
        {"DAQ_FLX_BUF", 2377},
        {"DAQ_CLOCK_MULTICAST", 2378},
        {"CPU_LOAD_CONSUMPTION_QUEUE_STIM", 2385},
    };
    for (const auto& [text, id] : rows) {
        EXPECT_EQ(lookup(kXcpKeywords, text), id) << text;
    }
}

TEST(KeywordTables, RepeatedRowsStay) {
    std::map<std::string_view, int> count;
    for (const KeywordEntry& entry : kXcpKeywords.entries) {
        ++count[entry.text];
    }
    EXPECT_EQ(count["FLX_ACTIVATE"], 2);
    EXPECT_EQ(count["DAQ_FLX_BUF"], 2);
    EXPECT_EQ(kXcpKeywords.entries.size() - count.size(), 2U);
}

bool looksLikeKeyword(const KeywordTable& table, std::string_view text) {
    return table.hints->rows[KeywordHints::placeOf(text)] != KeywordHints::kNone;
}

TEST(KeywordTables, WordsThatLookLikeAKeywordAreNone) {
    // Beginning, middle, end and length are those of a keyword.
    EXPECT_TRUE(looksLikeKeyword(kCoreKeywords, "MEASUREMENT"));
    EXPECT_TRUE(looksLikeKeyword(kCoreKeywords, "MAESUREMNET"));
    EXPECT_EQ(lookup(kCoreKeywords, "MAESUREMNET"), 0);
    EXPECT_EQ(lookup(kCoreKeywords, "MAESUREMNET", 303), 303);
    EXPECT_EQ(lookup(kCoreKeywords, "MEASUREMENT", 303), 134);
    EXPECT_EQ(lookup(kCoreKeywords, "", 303), 303);
    // One of more than sixteen bytes.
    EXPECT_EQ(lookup(kCoreKeywords, "ECU_ADDRESS_EXTENSION", 303), 88);
    EXPECT_EQ(lookup(kCoreKeywords, "ECU_ADDRESS_EXTENSIOM", 303), 303);
}

TEST(KeywordTables, EveryKeywordMayBeOne) {
    for (const TableRow& row : kTables) {
        for (const KeywordEntry& entry : row.table->entries) {
            EXPECT_TRUE(looksLikeKeyword(*row.table, entry.text)) << entry.text;
        }
    }
}

TEST(KeywordTables, FrequentWordsHaveAPlaceOfTheirOwn) {
    for (const std::string_view text : kFrequentKeywords) {
        EXPECT_NE(kCoreKeywords.hints->rows[KeywordHints::placeOf(text)], KeywordHints::kSeveral)
            << text;
    }
}

TEST(KeywordTables, MostNamesAreToldApartAtOnce) {
    int alike = 0;
    for (int number = 0; number < 1000; ++number) {
        alike += looksLikeKeyword(kCoreKeywords, "Rail_p" + std::to_string(number)) ? 1 : 0;
    }
    EXPECT_LT(alike, 200);
}

TEST(KeywordTables, IrregularRowsOfTheOtherTables) {
    EXPECT_EQ(lookup(kCoreKeywords, "ALIGNMENT_INT64"), 239);
    EXPECT_EQ(lookup(kCoreKeywords, "STATIC_ADDRESS_OFFSETS"), 279);
    EXPECT_EQ(lookup(kCoreKeywords, "PHYS_UNIT"), 242);
    EXPECT_EQ(lookup(kCoreKeywords, "SYMBOL_LINK"), 241);
    EXPECT_EQ(lookup(kCoreKeywords, "SYMBOLIC_LINK"), 277);
    EXPECT_EQ(lookup(kCoreKeywords, "ASAP2_VERSION"), 35);
    EXPECT_EQ(lookup(kKwpKeywords, "5Baud"), 4001);
    EXPECT_EQ(lookup(kKwpKeywords, "WuP"), 4039);
    EXPECT_EQ(lookup(kCcpKeywords, "DAQ_RESUME_SUPPORTED"), 3053);
    EXPECT_EQ(lookup(kGmlanKeywords, "AVAILABLE_PARAMETER_IDENTIFIER_RANGE"), 5045);
}

TEST(KeywordTables, FirstOfTwoEqualTextsWins) {
    static constexpr KeywordEntry kRows[] = {{"A", 7}, {"B", 8}, {"A", 9}};
    EXPECT_EQ(lookup(KeywordTable(kRows), "A"), 7);
}

TEST(KeywordTables, IdsWithoutGaps) {
    for (std::size_t i = 0; i < kWordKeywords.entries.size(); ++i) {
        EXPECT_EQ(kWordKeywords.entries[i].id, 1001 + static_cast<int>(i));
    }
    for (std::size_t i = 2; i < kCcpKeywords.entries.size(); ++i) {
        EXPECT_EQ(kCcpKeywords.entries[i].id, 2999 + static_cast<int>(i));
    }
    for (std::size_t i = 2; i < kGmlanKeywords.entries.size(); ++i) {
        EXPECT_EQ(kGmlanKeywords.entries[i].id, 4999 + static_cast<int>(i));
    }
}

TEST(KeywordTables, NameIsTheFirstTextOfAnId) {
    EXPECT_EQ(keywordName(kCoreKeywords, 1), "/begin");
    EXPECT_EQ(keywordName(kCoreKeywords, 35), "ASAP2_VERSION");
    EXPECT_EQ(keywordName(kXcpKeywords, 2274), "MAX_BITRATE");
    EXPECT_EQ(keywordName(kXcpKeywords, 2288), "UNIT_10PS ");
    EXPECT_EQ(keywordName(kWordKeywords, 1), "");
    EXPECT_EQ(keywordName(kCoreKeywords, 2030), "");
    EXPECT_EQ(keywordName(kCoreKeywords, 303), "");
    EXPECT_EQ(keywordName(kCoreKeywords, 0), "");
    EXPECT_EQ(keywordName(kCoreKeywords, -1), "");
}

TEST(KeywordTables, ConstantsAreTheIdsOfTheRows) {
    EXPECT_EQ(kw::core::BEGIN, 1);
    EXPECT_EQ(kw::core::END, 2);
    EXPECT_EQ(kw::core::INCLUDE, 122);
    EXPECT_EQ(kw::core::MEASUREMENT, 134);
    EXPECT_EQ(kw::word::UBYTE, 1017);
    EXPECT_EQ(kw::xcp::UNIT_1PS, 2289);
    EXPECT_EQ(kw::xcp::BEGIN, 1);
    EXPECT_EQ(kw::ccp::RASTER, 3039);
    EXPECT_EQ(kw::kwp::BAUD_5, 4001);
    EXPECT_EQ(kw::gmlan::CAN, 5010);
}

TEST(KeywordTables, Contexts) {
    EXPECT_EQ(keywordTableOfContext(0), &kCoreKeywords);
    EXPECT_EQ(keywordTableOfContext(1), &kWordKeywords);
    EXPECT_EQ(keywordTableOfContext(2), &kCcpKeywords);
    EXPECT_EQ(keywordTableOfContext(3), &kXcpKeywords);
    EXPECT_EQ(keywordTableOfContext(4), &kKwpKeywords);
    EXPECT_EQ(keywordTableOfContext(5), &kGmlanKeywords);
    EXPECT_EQ(keywordTableOfContext(6), nullptr);
    EXPECT_EQ(keywordTableOfContext(-1), nullptr);
}

TEST(KeywordTables, Hash) {
    EXPECT_EQ(keywordHash(""), 0U);
    EXPECT_EQ(keywordHash("A"), 65U);
    EXPECT_EQ(keywordHash("AB"), 196U);
    // What overflows 24 bits comes back at the low end.
    EXPECT_EQ(keywordHash(std::string(16, '\xFF')), 0xFEFF01U);
    EXPECT_EQ(keywordHash(std::string(17, '\xFF')), 0xFDFF02U);
}

}  // namespace
}  // namespace quillmark
