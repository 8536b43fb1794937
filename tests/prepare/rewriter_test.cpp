// What comes of descriptions, and what is told about it.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preparing.h"
#include "support/temp_dir.h"

namespace quillmark::preparing {
namespace {

using testing::HasSubstr;

struct Row {
    const char* content;
    const char* prepared;
    const char* findings;
};

void expectRows(std::initializer_list<Row> rows, const RewriteOptions& options = {}) {
    for (const Row& row : rows) {
        const Prepared prepared = prepareInMemory(moduleOf(row.content), options);
        EXPECT_EQ(contentOf(prepared), row.prepared) << row.content;
        EXPECT_EQ(prepared.findings, row.findings) << row.content;
    }
}

constexpr const char* kIsNow160 = "1 changed: ASAP2_VERSION is now 1 60\n";

TEST(Prepare, LeavesWhatCanBeReadAsItIs) {
    for (const std::string& text :
         {std::string("ASAP2_VERSION 1 71\n"), moduleOf(""),
          moduleOf("/begin AXIS_PTS a MODEL_LINK \"x\" /end AXIS_PTS // 1.7 but read over"),
          moduleOf("/begin MEASUREMENT m \"\" UWORD NO_COMPU_METHOD 0 0 0 1 MATRIX_DIM 2 3 4\r\n"
                   " ECU_ADDRESS 0x10 FORMAT %5.2 /end MEASUREMENT /* end */"),
          moduleOf("/begin IF_DATA OTHER /begin /end x /end IF_DATA"),
          moduleOf("/begin IF_DATA XCP /begin UNHEARD of /end UNHEARD /end IF_DATA"),
          moduleOf("/begin A2ML /include \"x\" ; /end A2ML"),
          moduleOf("/begin MOD_PAR \"\" EPK \"a\xFF\" /endM\xFFOD_PAR"),
          std::string("\xEF\xBB\xBF") + moduleOf("")}) {
        for (const std::size_t chunk : {0U, 1U, 7U}) {
            const Prepared prepared = prepareInMemory(text, {}, {}, chunk);
            const bool isOdd = text.find("/endM") != std::string::npos;
            EXPECT_EQ(prepared.text, isOdd ? prepared.text : text);
            EXPECT_EQ(prepared.findings, isOdd ? prepared.findings : "");
        }
    }
}

TEST(Prepare, KeepsBytesWithoutMeaningIfNothingElseChanges) {
    const std::string text = moduleOf("/begin MOD_\xFFPAR \"\xFF\" EPK \"a\" /end MOD_PAR");
    EXPECT_EQ(prepareInMemory(text).text, text);
}

TEST(Prepare, TakesOutWordsOfLaterVersions) {
    expectRows({
        {"/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 MODEL_LINK \"x\" READ_WRITE /end MEASUREMENT",
         "/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 READ_WRITE /end MEASUREMENT",
         "4 changed: took out MODEL_LINK \"x\"\n1 changed: ASAP2_VERSION is now 1 60\n"},
        {"/begin CHARACTERISTIC c \"\" ASCII 0 r 0 c 0 1\n  ENCODING UTF8\n  NUMBER 3\n/end "
         "CHARACTERISTIC",
         "/begin CHARACTERISTIC c \"\" ASCII 0 r 0 c 0 1\n  NUMBER 3\n/end CHARACTERISTIC",
         "5 changed: took out ENCODING UTF8\n1 changed: ASAP2_VERSION is now 1 60\n"},
        {"a\n/begin TRANSFORMER t \"1\" \"\" \"\" 1 ON_CHANGE x /end TRANSFORMER\n"
         "/begin FUNCTION f \"\" /begin AR_COMPONENT \"x\" AR_PROTOTYPE_OF y /end AR_COMPONENT "
         "/end FUNCTION",
         "/begin FUNCTION f \"\" /end FUNCTION",
         "4 lost: took out a, which nobody knows here\n5 changed: took out TRANSFORMER t\n"
         "6 changed: took out /begin AR_COMPONENT \"x\" AR_PROTOTYPE_OF y /end AR_COMPONENT\n"
         "1 changed: ASAP2_VERSION is now 1 60\n"},
    });
}

TEST(Prepare, LosesWhatHasNoCounterpart) {
    expectRows({
        {"x\n/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 ADDRESS_TYPE PLONG /end MEASUREMENT\n", "",
         "4 lost: took out x, which nobody knows here\n"
         "5 lost: m is lost: its address holds another address (ADDRESS_TYPE PLONG)\n"
         "1 changed: ASAP2_VERSION is now 1 60\n"},
        {"/begin MEASUREMENT m \"\" FLOAT16_IEEE c 0 0 0 1 /end MEASUREMENT\n", "",
         "4 lost: m is lost: the data type FLOAT16_IEEE\n"
         "1 changed: ASAP2_VERSION is now 1 60\n"},
        {"/begin BLOB b \"\" 0x10 4 /end BLOB\n"
         "/begin GROUP g \"\" /begin REF_CHARACTERISTIC a b /end REF_CHARACTERISTIC /end GROUP",
         "/begin GROUP g \"\" /begin REF_CHARACTERISTIC a /end REF_CHARACTERISTIC /end GROUP",
         "4 lost: b is lost: a BLOB\n5 changed: brought 1 name in GROUP g up to date\n"
         "1 changed: ASAP2_VERSION is now 1 60\n"},
    });
}

TEST(Prepare, MakesArraysOfBlobsIfAsked) {
    RewriteOptions options;
    options.expansion.blobArrays = true;
    expectRows({{"/begin BLOB b \"x\" 0x10 4 ECU_ADDRESS_EXTENSION 2 /end BLOB",
                 "/begin MEASUREMENT b \"x\" UBYTE NO_COMPU_METHOD 0 0 0 255 ECU_ADDRESS 0x10 "
                 "MATRIX_DIM 4 ECU_ADDRESS_EXTENSION 2 /end MEASUREMENT",
                 "4 changed: BLOB b became an array of UBYTE\n"
                 "1 changed: ASAP2_VERSION is now 1 60\n"}},
               options);
}

TEST(Prepare, WritesArraysOfManySizesOneByOne) {
    expectRows({
        {"/begin MEASUREMENT m \"\" UWORD c 0 0 0 1 ECU_ADDRESS 0x10 MATRIX_DIM 1 1 1 2 LAYOUT "
         "ROW_DIR SYMBOL_LINK \"s\" 4 /end MEASUREMENT",
         "/begin MEASUREMENT m[0][0][0][0] \"\" UWORD c 0 0 0 1 ECU_ADDRESS 0x10 SYMBOL_LINK \"s\" "
         "4 /end MEASUREMENT\n/begin MEASUREMENT m[0][0][0][1] \"\" UWORD c 0 0 0 1 ECU_ADDRESS "
         "0x12 SYMBOL_LINK \"s\" 6 /end MEASUREMENT",
         "4 changed: m became 2 signals\n1 changed: ASAP2_VERSION is now 1 60\n"},
        {"/begin MEASUREMENT m \"\" UWORD c 0 0 0 1 MATRIX_DIM 3 1 1 1 /end MEASUREMENT",
         "/begin MEASUREMENT m \"\" UWORD c 0 0 0 1 MATRIX_DIM 3 /end MEASUREMENT",
         "4 changed: the sizes of m are now those of MATRIX_DIM 3\n"
         "1 changed: ASAP2_VERSION is now 1 60\n"},
        {"/begin MEASUREMENT m \"\" UWORD c 0 0 0 1 MATRIX_DIM 3 1 1 2 MATRIX_DIM 4 /end "
         "MEASUREMENT",
         "/begin MEASUREMENT m \"\" UWORD c 0 0 0 1 MATRIX_DIM 4 /end MEASUREMENT",
         "4 changed: took out MATRIX_DIM 3 1 1 2\n1 changed: ASAP2_VERSION is now 1 60\n"},
        {"/begin MEASUREMENT m \"\" UWORD c 0 0 0 1 MATRIX_DIM 2 2 2 2 /end MEASUREMENT\n", "",
         "4 lost: m is lost: an array of more than three sizes without LAYOUT ROW_DIR\n"
         "1 changed: ASAP2_VERSION is now 1 60\n"},
    });
}

TEST(Prepare, TakesOutWhatNobodyKnows) {
    expectRows({
        {"/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 ECU_ADRESS 0x5 READ_WRITE /end MEASUREMENT",
         "/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 READ_WRITE /end MEASUREMENT",
         "4 lost: took out the word ECU_ADRESS 0x5, which nobody knows in a MEASUREMENT\n"},
        {"/begin IF_DATA XCP /begin DAQ_EVENT FIXED_EVENT_LIST EVENT 1 NOVELTY 2 /end DAQ_EVENT "
         "/end IF_DATA",
         "/begin IF_DATA XCP /begin DAQ_EVENT FIXED_EVENT_LIST EVENT 1 /end DAQ_EVENT /end IF_DATA",
         "4 lost: took out the word NOVELTY 2, which nobody knows in an IF_DATA\n"},
        {"/begin GROUP g \"\" /begin REF_MEASUREMENT a VERSION b /end REF_MEASUREMENT /end GROUP",
         "/begin GROUP g \"\" /begin REF_MEASUREMENT a b /end REF_MEASUREMENT /end GROUP",
         "4 lost: took out the word VERSION, which nobody knows in a GROUP\n"},
        {"/begin MEASUREMENT m \"\" NOTYPE c 0 0 0 1 /end MEASUREMENT\n", "",
         "4 lost: took out the MEASUREMENT m, which cannot be read from here on: NOTYPE\n"},
        {"/begin NOVELTY /begin X /end X /end NOVELTY\n", "",
         "4 lost: took out the block NOVELTY, which nobody knows\n"},
    });
}

TEST(Prepare, KnowsWhereABlockMayStand) {
    constexpr const char* kHeader = "/begin HEADER \"\" /end HEADER\n";
    constexpr const char* kUnit = "/begin UNIT u \"\" \"m\" DERIVED /end UNIT\n";
    const auto projectOf = [](std::string_view content) {
        return "/begin PROJECT P \"\"\n" + std::string(content) + "/end PROJECT\n";
    };
    const std::string module = "/begin MODULE M \"\"\n/end MODULE\n";
    EXPECT_EQ(prepareInMemory(projectOf(kHeader + module)).findings, "");
    EXPECT_EQ(prepareInMemory(moduleOf(kHeader)).findings,
              "4 lost: took out the block HEADER, which nobody knows\n");
    EXPECT_EQ(prepareInMemory(projectOf(module + kUnit)).findings,
              "4 lost: took out the block UNIT, which nobody knows\n");
    EXPECT_EQ(prepareInMemory(projectOf(module) + kUnit).findings,
              "5 lost: took out the block UNIT, which nobody knows\n");
}

TEST(Prepare, KeepsWordsApartBetweenWhichOthersGo) {
    EXPECT_EQ(prepareInMemory("/begin PROJECT P /\"x\" y \"z\" /end PROJECT").text,
              "/begin PROJECT P / /end PROJECT");
}

TEST(Prepare, TakesOutAllWordsThatAreUnknownInAList) {
    expectRows({
        {"/begin IF_DATA ASAP1B_CCP /begin TP_BLOB 1 2 3 4 5 1 /begin CAN_PARAM 1 2 3 a b /end "
         "CAN_PARAM /end TP_BLOB /end IF_DATA",
         "/begin IF_DATA ASAP1B_CCP /begin TP_BLOB 1 2 3 4 5 1 /begin CAN_PARAM 1 2 3 /end "
         "CAN_PARAM /end TP_BLOB /end IF_DATA",
         "4 lost: took out the word a b, which nobody knows in an IF_DATA\n"},
        {"/begin UNIT u \"\" \"m\" DERIVED /begin ANNOTATION /end ANNOTATION /end UNIT",
         "/begin UNIT u \"\" \"m\" DERIVED /end UNIT",
         "4 lost: took out the block /begin ANNOTATION /end ANNOTATION, which nobody knows in a "
         "UNIT\n"},
        {"/begin GROUP g \"\" /begin ANNOTATION /begin ANNOTATION_TEXT \"a\" b c \"d\" /end "
         "ANNOTATION_TEXT /end ANNOTATION /end GROUP",
         "/begin GROUP g \"\" /begin ANNOTATION /begin ANNOTATION_TEXT \"a\" \"d\" /end "
         "ANNOTATION_TEXT /end ANNOTATION /end GROUP",
         "4 lost: took out the word b, which nobody knows in a GROUP\n"
         "4 lost: took out the word c, which nobody knows in a GROUP\n"},
    });
}

TEST(Prepare, MendsTheFrame) {
    EXPECT_EQ(prepareInMemory("ASAP2_VERSION 1 71\nA2ML_VERSION 1 31\n/begin PROJECT P \"\" "
                              "/end PROJECT\n")
                  .text,
              "ASAP2_VERSION 1 71\n/begin PROJECT P \"\" /end PROJECT\n");
    EXPECT_EQ(prepareInMemory("/begin ASAP2_VERSION 1 70\n/end ASAP2_VERSION\n").text,
              "ASAP2_VERSION 1 70\n");
    EXPECT_EQ(
        prepareInMemory(moduleOf("/begin UNIT u \"\" \"m\" DERIVED /end UNIT/begin UNIT v \"\" "
                                 "\"s\" DERIVED /end UNIT/* both */"))
            .text,
        moduleOf("/begin UNIT u \"\" \"m\" DERIVED /end UNIT /begin UNIT v \"\" \"s\" DERIVED "
                 "/end UNIT /* both */"));
    EXPECT_EQ(prepareInMemory(moduleOf("") + "// the end").text, moduleOf("") + "// the end\n");
}

TEST(Prepare, PutsTheEpkWhereItIsMissing) {
    RewriteOptions options;
    options.epk = "A";
    options.epkAddress = "0x10";
    expectRows({{"/begin MOD_PAR \"\" VERSION \"1\" /end MOD_PAR",
                 "/begin MOD_PAR \"\" EPK \"A\" ADDR_EPK 0x10 VERSION \"1\" /end MOD_PAR",
                 "4 changed: put the EPK into MOD_PAR\n"},
                {"/begin MOD_PAR \"\" EPK \"B\" /end MOD_PAR",
                 "/begin MOD_PAR \"\" ADDR_EPK 0x10 EPK \"B\" /end MOD_PAR",
                 "4 changed: put the EPK into MOD_PAR\n"},
                {"/begin MOD_PAR \"\" EPK \"B\" ADDR_EPK 1 /end MOD_PAR",
                 "/begin MOD_PAR \"\" EPK \"B\" ADDR_EPK 1 /end MOD_PAR", ""},
                {"x y", "  /begin MOD_PAR \"\" EPK \"A\" ADDR_EPK 0x10 /end MOD_PAR\n",
                 "3 changed: put in a MOD_PAR with the EPK\n"
                 "4 lost: took out x, which nobody knows here\n"
                 "4 lost: took out y, which nobody knows here\n"}},
               options);
    const std::string two =
        "/begin PROJECT P \"\"\n/begin MODULE A \"\" /end MODULE\n/begin MODULE B \"\" "
        "/end MODULE /end PROJECT\n";
    EXPECT_FALSE(prepareInMemory(two, options).isGood);
    options.module = "B";
    EXPECT_THAT(prepareInMemory(two, options).text, HasSubstr("B \"\"\n  /begin MOD_PAR"));
    options.module = "C";
    EXPECT_FALSE(prepareInMemory(two, options).isGood);
}

TEST(Prepare, RefusesWhatIsNotWhole) {
    struct Refused {
        std::string text;
        const char* findings;
    };
    const Refused rows[] = {
        {"", "1 error: there is no description\n"},
        {"A2ML_VERSION 1 31\n",
         "1 changed: took out A2ML_VERSION\n2 error: there is no description\n"},
        {"/begin PROJECT UNIT \"\" /end PROJECT", "1 error: a name or its text is missing\n"},
        {"/begin PROJECT P \"\"\n/begin MODULE \"M\" \"\"",
         "2 error: a name or its text is missing\n"},
        {"hello", "1 error: no description begins with hello\n"},
        {"/begin PROJECT P \"\"\n/begin MODULE M \"\"\n",
         "3 error: the description ends inside the MODULE that begins in in.a2l:2\n"},
        {moduleOf("/begin MOD_PAR \"\""), "5 error: /end MODULE where /end MOD_PAR should stand\n"},
        {"/begin PROJECT P \"\"\n/begin MODULE M \"\" /begin UNIT\n\"",
         "3 error: the text that begins here has no end\n"},
        {moduleOf("/* no end"), "4 error: the comment that begins here has no end\n"},
        {moduleOf("/end UNIT"), "4 error: /end UNIT where nothing of that kind is open\n"},
    };
    for (const Refused& row : rows) {
        const Prepared prepared = prepareInMemory(row.text);
        EXPECT_FALSE(prepared.isGood) << row.text;
        EXPECT_EQ(prepared.findings, row.findings) << row.text;
    }
}

TEST(Prepare, ExpandsInstances) {
    const std::string content =
        "  /begin INSTANCE fan \"the fan\" Fan 0x10 MATRIX_DIM 2 DISPLAY_IDENTIFIER d SYMBOL_LINK "
        "\"f\" 2 READ_WRITE\n  /end INSTANCE\n"
        "  /begin TYPEDEF_STRUCTURE Fan \"\" 4\n"
        "    /begin STRUCTURE_COMPONENT speed Speed 2 /end STRUCTURE_COMPONENT\n"
        "  /end TYPEDEF_STRUCTURE\n"
        "  /begin TYPEDEF_MEASUREMENT Speed \"how fast\" UWORD C 0 0 0 9 PHYS_UNIT \"rpm\"\n"
        "  /end TYPEDEF_MEASUREMENT\n"
        "  /begin GROUP g \"\" /begin REF_MEASUREMENT fan /end REF_MEASUREMENT /end GROUP";
    const Prepared prepared = prepareInMemory(moduleOf(content));
    EXPECT_EQ(contentOf(prepared),
              "  /begin MEASUREMENT fan[0].speed \"how fast\" UWORD C 0 0 0 9 ECU_ADDRESS 0x12 "
              "PHYS_UNIT \"rpm\" DISPLAY_IDENTIFIER d[0].speed SYMBOL_LINK \"f\" 4 READ_WRITE /end "
              "MEASUREMENT\n"
              "  /begin MEASUREMENT fan[1].speed \"how fast\" UWORD C 0 0 0 9 ECU_ADDRESS 0x16 "
              "PHYS_UNIT \"rpm\" DISPLAY_IDENTIFIER d[1].speed SYMBOL_LINK \"f\" 8 READ_WRITE /end "
              "MEASUREMENT\n"
              "  /begin GROUP g \"\" /begin REF_MEASUREMENT fan[0].speed fan[1].speed /end "
              "REF_MEASUREMENT /end GROUP");
    EXPECT_EQ(prepareInMemory(prepared.text).findings, "");
    EXPECT_EQ(prepareInMemory(prepared.text).text, prepared.text);
    EXPECT_EQ(prepared.map, "1\t4\tin.a2l\t1\n5\t1\tin.a2l\t4\n6\t3\tin.a2l\t11\n");
}

TEST(Prepare, LosesSignalsWhoseNamesNobodyCanRead) {
    constexpr const char* kTypes =
        "/begin TYPEDEF_MEASUREMENT V \"\" UBYTE C 0 0 0 1 /end TYPEDEF_MEASUREMENT\n"
        "/begin TYPEDEF_STRUCTURE T \"\" 1 /begin STRUCTURE_COMPONENT REFRESH V 0 /end "
        "STRUCTURE_COMPONENT /begin STRUCTURE_COMPONENT a/b V 0 /end STRUCTURE_COMPONENT /end "
        "TYPEDEF_STRUCTURE\n";
    const auto findings = [&](const std::string& name, const std::string& separator) {
        RewriteOptions options;
        options.expansion.separator = separator;
        return prepareInMemory(
                   moduleOf(kTypes + ("/begin INSTANCE " + name + " \"\" T 0 /end INSTANCE")),
                   options)
            .findings;
    };
    EXPECT_THAT(findings("MAX", "_"), HasSubstr("MAX_REFRESH is lost: nobody can read its name"));
    EXPECT_THAT(findings("1ms", "."), HasSubstr("1ms.a/b is lost: nobody can read its name"));
    EXPECT_THAT(findings("MAX_", "."), testing::Not(HasSubstr("lost")));
}

TEST(Prepare, KeepsTheEndOfAnAxisThatLacksParameters) {
    const std::string content =
        "/begin TYPEDEF_CHARACTERISTIC C \"\" CURVE R 0 K 0 1 /begin AXIS_DESCR FIX_AXIS n 0 1 4 "
        "EXTENDED_LIMITS 1 /end AXIS_DESCR /end TYPEDEF_CHARACTERISTIC\n"
        "/begin INSTANCE i \"\" C 0x100 /begin OVERWRITE i 1 LIMITS 1 2 EXTENDED_LIMITS 3 4 /end "
        "OVERWRITE /end INSTANCE";
    const Prepared prepared = prepareInMemory(moduleOf(content));
    EXPECT_THAT(prepared.text, HasSubstr("/end AXIS_DESCR /end CHARACTERISTIC"));
    EXPECT_EQ(prepareInMemory(prepared.text).text, prepared.text);
}

TEST(Prepare, LosesArraysThatAreAlignedBeyondAllMemory) {
    const Prepared prepared = prepareInMemory(moduleOf(
        "/begin RECORD_LAYOUT R AXIS_PTS_X 1 UBYTE INDEX_INCR DIRECT FNC_VALUES 2 UBYTE ROW_DIR "
        "DIRECT FIX_NO_AXIS_PTS_X 3 ALIGNMENT_BYTE 0x7FFFFFFFFFFFFFFF /end RECORD_LAYOUT\n"
        "/begin TYPEDEF_CHARACTERISTIC C \"\" CURVE R 0 K 0 1 /end TYPEDEF_CHARACTERISTIC\n"
        "/begin INSTANCE i \"\" C 0x100 MATRIX_DIM 2 /end INSTANCE"));
    EXPECT_THAT(prepared.findings, HasSubstr("record layout R does not tell their size"));
}

TEST(Prepare, ExtendsTextsThatAreShown) {
    const auto shown = [](const std::string& display) {
        return contentOf(prepareInMemory(
            moduleOf("/begin INSTANCE i \"\" V 0 MATRIX_DIM 2 2 2 2 LAYOUT ROW_DIR "
                     "DISPLAY_IDENTIFIER " +
                     display +
                     " /end INSTANCE\n/begin TYPEDEF_MEASUREMENT V \"\" UBYTE C 0 0 0 1 /end "
                     "TYPEDEF_MEASUREMENT")));
    };
    EXPECT_THAT(shown("d"), HasSubstr("DISPLAY_IDENTIFIER d[1][0][0][0] "));
    EXPECT_THAT(shown("\"d\""), HasSubstr("DISPLAY_IDENTIFIER \"d[1][0][0][0]\" "));
    EXPECT_THAT(shown("5"), HasSubstr("DISPLAY_IDENTIFIER 5 "));
}

TEST(Prepare, RefusesExpansionsThatWouldNotEnd) {
    const Prepared prepared =
        prepareInMemory(moduleOf("/begin TYPEDEF_STRUCTURE T \"\" 1 /end TYPEDEF_STRUCTURE\n"
                                 "/begin INSTANCE t \"\" T 0 MATRIX_DIM 1000000000 /end INSTANCE"));
    EXPECT_EQ(prepared.findings,
              "5 error: the instance t becomes 1000000000 signals, with those before it more than "
              "10000000\n");
}

TEST(Prepare, RefusesTypesThatAreNestedTooDeep) {
    std::string content = "/begin INSTANCE t \"\" T0 0 /end INSTANCE\n";
    for (int i = 0; i < 5000; ++i) {
        content += "/begin TYPEDEF_STRUCTURE T" + std::to_string(i) +
                   " \"\" 1 /begin STRUCTURE_COMPONENT c T" + std::to_string(i + 1) +
                   " 0 /end STRUCTURE_COMPONENT /end TYPEDEF_STRUCTURE\n";
    }
    EXPECT_THAT(prepareInMemory(moduleOf(content)).findings,
                HasSubstr("more than 200 structures lie within one another"));
}

TEST(Prepare, RefusesANameThatExistsTwice) {
    constexpr const char* kType =
        "/begin TYPEDEF_MEASUREMENT T \"\" UBYTE C 0 0 0 1 /end TYPEDEF_MEASUREMENT\n"
        "/begin INSTANCE t \"\" T 0 /end INSTANCE\n";
    EXPECT_EQ(
        prepareInMemory(moduleOf(std::string(kType) +
                                 "/begin MEASUREMENT t \"\" UBYTE C 0 0 0 1 /end MEASUREMENT"))
            .findings,
        "4 changed: took out TYPEDEF_MEASUREMENT T\n5 changed: INSTANCE t became 1 signal\n"
        "6 error: the name t would exist twice; the other one is in in.a2l:5\n");
    EXPECT_EQ(
        prepareInMemory(moduleOf(std::string(kType) + "/begin INSTANCE t \"\" T 1 /end INSTANCE"))
            .findings,
        "6 error: the name t would exist twice; the first is in in.a2l:5\n");
}

TEST(Prepare, PutsFilesIn) {
    const TempDir directory;
    writeFile(directory.file("a.inc"),
              "/begin UNIT a \"\" \"m\" DERIVED /end UNIT\n/include b.inc");
    writeFile(directory.file("b.inc"), "// no line feed");
    writeFile(directory.file("loop.inc"), "/include \"loop.inc\"\n");
    const Prepared prepared =
        prepareInMemory(moduleOf("/include \"a.inc\" // here\n/include .\\b.inc\n"), {},
                        directory.path().generic_string());
    EXPECT_EQ(contentOf(prepared),
              "/begin UNIT a \"\" \"m\" DERIVED /end UNIT\n// no line feed\n\n // here\n// no line "
              "feed\n\n");
    EXPECT_EQ(prepared.findings,
              "4 changed: put in the file a.inc\n2 changed: put in the file b.inc\n"
              "5 changed: put in the file .\\b.inc\n");
    const std::string name = directory.path().generic_string();
    EXPECT_EQ(prepareInMemory(moduleOf("/include loop.inc\n"), {}, name).findings,
              "1 error: a file includes itself: " + name + "/in.a2l, " + name + "/loop.inc, " +
                  name + "/loop.inc\n");
    EXPECT_EQ(prepareInMemory(moduleOf("/include none.inc\n"), {}, name).findings,
              "4 error: there is no file " + name + "/in.a2l, none.inc\n");
    RewriteOptions options;
    options.expansion.skipsMissing = true;
    const Prepared skipped = prepareInMemory(moduleOf("/include none.inc\n"), options, name);
    EXPECT_TRUE(skipped.isGood);
    EXPECT_EQ(skipped.findings, "4 lost: there is no file " + name + "/in.a2l, none.inc\n");
}

TEST(Prepare, PutsFilesIntoBlocks) {
    const TempDir directory;
    writeFile(directory.file("part.inc"), "ECU_ADDRESS 0x10\nMODEL_LINK \"x\"\n");
    const std::string name = directory.path().generic_string();
    const Prepared prepared = prepareInMemory(
        moduleOf("/begin MEASUREMENT m \"\" UBYTE C 0 0 0 1\n/include part.inc\n/end MEASUREMENT"),
        {}, name, 5);
    EXPECT_EQ(contentOf(prepared),
              "/begin MEASUREMENT m \"\" UBYTE C 0 0 0 1\nECU_ADDRESS 0x10\n\n/end MEASUREMENT");
    EXPECT_EQ(prepared.findings,
              "5 changed: put in the file part.inc\n2 changed: took out MODEL_LINK \"x\"\n" +
                  std::string(kIsNow160));
}

TEST(Prepare, ReadsOtherEncodings) {
    const auto utf16 = [](std::string_view text, bool highFirst) {
        std::string bytes;
        for (const char byte : text) {
            bytes += highFirst ? std::string{'\0', byte} : std::string{byte, '\0'};
        }
        return bytes;
    };
    const std::string text = moduleOf("");
    const std::string marked = "\xEF\xBB\xBF" + text;
    for (const bool highFirst : {false, true}) {
        for (const std::size_t chunk : {0U, 1U}) {
            EXPECT_EQ(prepareInMemory(utf16(text, highFirst), {}, {}, chunk).text, marked);
            const std::string mark = highFirst ? "\xFE\xFF" : "\xFF\xFE";
            EXPECT_EQ(prepareInMemory(mark + utf16(text, highFirst), {}, {}, chunk).text, marked);
        }
    }
    for (const char* const front : {"", "#"}) {
        const std::string withNul = front + std::string(1, '\0') + (*front ? "1 60\n" : "") + text;
        EXPECT_EQ(prepareInMemory(withNul).text, withNul);
    }
    EXPECT_EQ(prepareInMemory(utf16(text, true)).findings,
              "1 changed: UTF-16 became UTF-8 with a mark\n");
}

TEST(Prepare, WritesLatin1) {
    RewriteOptions options;
    options.latin1 = true;
    const Prepared prepared = prepareInMemory(
        "\xEF\xBB\xBF" +
            moduleOf("/begin UNIT \xC3\xBC \"\xE2\x82\xAC\" \"\xE4\" DERIVED /end UNIT"),
        options);
    EXPECT_THAT(prepared.findings, HasSubstr("ISO 8859-1"));
    EXPECT_EQ(prepared.text.substr(0, 5), "ASAP2");
}

}  // namespace
}  // namespace quillmark::preparing
