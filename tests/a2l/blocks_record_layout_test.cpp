#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

std::string layout(std::string_view components) {
    return moduleDump("/begin RECORD_LAYOUT RL " + std::string(components) + " /end RECORD_LAYOUT");
}

TEST(RecordLayout, KeepsTheTypeOfItsValues) {
    EXPECT_EQ(layout("NO_AXIS_PTS_X 1 UBYTE RESERVED 2 BYTE AXIS_PTS_X 3 UWORD INDEX_INCR DIRECT "
                     "FNC_VALUES 4 SWORD COLUMN_DIR DIRECT ALIGNMENT_WORD 2"),
              "recordLayout RL\n  dataType baseType=BtInteger sizeBits=16\n");
    EXPECT_EQ(layout(""), "recordLayout RL\n");
    EXPECT_EQ(layout("FNC_VALUES 1 FLOAT16_IEEE ANYTHING PLONGLONG"),
              "recordLayout RL\n  dataType sizeBits=16\n");
    EXPECT_EQ(layout("FNC_VALUES 1 UBYTE COLUMN_DIR PBYTE FNC_VALUES 1 A_UINT64 ROW_DIR PWORD"),
              "recordLayout RL\n  dataType baseType=BtUInteger sizeBits=64\n");
}

TEST(RecordLayout, EveryComponent) {
    std::string components;
    for (const char* axis : {"X", "Y", "Z", "4", "5"}) {
        const std::string suffix = axis;
        components += " AXIS_PTS_" + suffix + " 1 UBYTE INDEX_DECR PLONG AXIS_RESCALE_" + suffix +
                      " 2 SBYTE 3 INDEX_INCR DIRECT NO_AXIS_PTS_" + suffix +
                      " 1 UWORD NO_RESCALE_" + suffix + " 1 ULONG FIX_NO_AXIS_PTS_" + suffix +
                      " 7 SRC_ADDR_" + suffix + " 1 SLONG RIP_ADDR_" + suffix +
                      " 1 A_INT64 SHIFT_OP_" + suffix + " 1 FLOAT32_IEEE OFFSET_" + suffix +
                      " 1 FLOAT64_IEEE DIST_OP_" + suffix + " 1 SWORD";
    }
    components += " RIP_ADDR_W 1 UBYTE IDENTIFICATION 1 UBYTE RESERVED 1 WORD RESERVED 1 LONG";
    for (const char* kind :
         {"BYTE", "WORD", "LONG", "INT64", "FLOAT16_IEEE", "FLOAT32_IEEE", "FLOAT64_IEEE"}) {
        components += " ALIGNMENT_" + std::string(kind) + " 4";
    }
    components += " STATIC_RECORD_LAYOUT STATIC_ADDRESS_OFFSETS";
    EXPECT_EQ(layout(components), "recordLayout RL\n");
}

TEST(RecordLayout, WrongWordsAreWarnedOf) {
    EXPECT_EQ(layout("FNC_VALUES 1 WORD COLUMN_DIR UBYTE RESERVED 1 UBYTE AXIS_PTS_X 1 X Y Z"),
              "-: Warning (a.a2l:1): Unexpected token 'WORD' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'UBYTE' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'UBYTE' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n"
              "-: Warning (a.a2l:1): Unexpected token 'token=303' found\n");
}

TEST(RecordLayout, Errors) {
    EXPECT_EQ(messages("/begin RECORD_LAYOUT \"RL\""), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin RECORD_LAYOUT RL \"text\""),
              "Error 1: Unexpected token 'token=302' found\n");
    EXPECT_EQ(messages("/begin RECORD_LAYOUT RL /begin X"),
              "Error 1: Unexpected token '/begin' found\n");
    EXPECT_EQ(messages("/begin RECORD_LAYOUT RL /end UNIT"),
              "Error 1: Keyword 'RECORD_LAYOUT' expected after /end\n");
}

}  // namespace
}  // namespace quillmark
