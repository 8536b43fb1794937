#include <string>

#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

const std::string kMeasurement = "/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 /end MEASUREMENT ";
const std::string kMeasurementDump =
    "signal m longIdentifier=\"\" signalKind=Measurement lowerLimit=0 upperLimit=1\n"
    "  datatype baseType=BtUInteger sizeBits=8 conversion=c!\n";

TEST(Group, MembersAreResolvedInEitherOrder) {
    const std::string group =
        "/begin GROUP g \"text\" ROOT /begin REF_MEASUREMENT m x /end REF_MEASUREMENT /begin "
        "REF_CHARACTERISTIC k /end REF_CHARACTERISTIC /begin SUB_GROUP g h /end SUB_GROUP /begin "
        "FUNCTION_LIST f /end FUNCTION_LIST /begin REF_MEASUREMENT /end REF_MEASUREMENT /begin "
        "ANNOTATION "
        "/end ANNOTATION /begin IF_DATA X /end IF_DATA /end GROUP ";
    const std::string groupDump =
        "function g longIdentifier=\"text\"\n  signals m x! k!\n  functions g h! f!\n";
    EXPECT_EQ(moduleDump(group + kMeasurement), kMeasurementDump + groupDump);
    EXPECT_EQ(moduleDump(kMeasurement + group), kMeasurementDump + groupDump);
}

// Members are bound some at a time; the order and the missing ones must not show it.
TEST(Group, ManyMembers) {
    std::string measurements;
    std::string names;
    std::string boundNames;
    for (int i = 0; i < 100; ++i) {
        const std::string name = "m" + std::to_string(i);
        const bool isDefined = i % 7 != 3;
        if (isDefined) {
            measurements +=
                "/begin MEASUREMENT " + name + " \"\" UBYTE c 0 0 0 1 /end MEASUREMENT ";
        }
        names += name + " m0 ";
        boundNames += " " + name + (isDefined ? " m0" : "! m0");
    }
    const std::string group =
        "/begin GROUP g \"\" /begin REF_MEASUREMENT " + names + "/end REF_MEASUREMENT /end GROUP ";
    const std::string groupDump = "function g longIdentifier=\"\"\n  signals" + boundNames + "\n";
    for (const std::string& text : {group + measurements, measurements + group}) {
        const std::string dump = moduleDump(text);
        EXPECT_EQ(dump.substr(dump.find("function ")), groupDump);
    }
}

TEST(Group, Errors) {
    EXPECT_EQ(messages("/begin GROUP 5"), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin GROUP g 5"), "Error 1: String expected\n");
    EXPECT_EQ(messages("/begin GROUP g \"\" READ_ONLY"),
              "Error 1: Unexpected token 'READ_ONLY' found\n");
    EXPECT_EQ(messages("/begin GROUP g \"\" /begin IN_MEASUREMENT"),
              "Error 1: Unexpected token 'IN_MEASUREMENT' found\n");
    EXPECT_EQ(messages("/begin GROUP g \"\" /begin SUB_GROUP NUMBER"),
              "Error 1: Unexpected token 'NUMBER' found\n");
    EXPECT_EQ(messages("/begin GROUP g \"\" /end FUNCTION"),
              "Error 1: Keyword 'GROUP' expected after /end\n");
}

TEST(Function, AllLists) {
    EXPECT_EQ(
        moduleDump(
            "/begin FUNCTION f \"\" FUNCTION_VERSION \"2.1\" /begin DEF_CHARACTERISTIC a /end "
            "DEF_CHARACTERISTIC /begin REF_CHARACTERISTIC b /end REF_CHARACTERISTIC /begin "
            "IN_MEASUREMENT c /end IN_MEASUREMENT /begin LOC_MEASUREMENT d /end "
            "LOC_MEASUREMENT /begin OUT_MEASUREMENT e /end OUT_MEASUREMENT /begin "
            "SUB_FUNCTION f g /end SUB_FUNCTION /begin ANNOTATION /end ANNOTATION /begin "
            "IF_DATA X /end IF_DATA /end FUNCTION"),
        "function f longIdentifier=\"\"\n  signals a! b! c! d! e!\n  functions f g!\n");
}

TEST(Function, Errors) {
    EXPECT_EQ(messages("/begin FUNCTION f \"\" /begin AR_COMPONENT"),
              "Error 1: Unexpected token 'token=303' found\n");
    EXPECT_EQ(messages("/begin FUNCTION f \"\" ROOT"), "Error 1: Unexpected token 'ROOT' found\n");
    EXPECT_EQ(messages("/begin FUNCTION f \"\" /end GROUP"),
              "Error 1: Keyword 'FUNCTION' expected after /end\n");
}

TEST(Frame, MembersStandWithoutABlock) {
    EXPECT_EQ(
        moduleDump(kMeasurement + "/begin FRAME f \"\" 3 20 FRAME_MEASUREMENT m x /begin IF_DATA X "
                                  "/end IF_DATA /end FRAME"),
        kMeasurementDump + "frame f longIdentifier=\"\" scalingUnit=3 rate=20\n  signals m x!\n");
    EXPECT_EQ(moduleDump("/begin FRAME f \"\" -3 -20 /end FRAME"),
              "frame f longIdentifier=\"\" rate=-20\n");
    EXPECT_EQ(messages("/begin FRAME f \"\" 3 20 /end GROUP"),
              "Error 1: Keyword 'FRAME' expected after /end\n");
    EXPECT_EQ(messages("/begin FRAME f \"\" 3 20 FRAME_MEASUREMENT m 5"),
              "Error 1: Unexpected token 'token=300' found\n");
}

TEST(UserRights, AreCheckedAndDropped) {
    EXPECT_EQ(
        moduleDump(
            "/begin USER_RIGHTS u /begin REF_GROUP a b /end REF_GROUP READ_ONLY /begin REF_GROUP "
            "/end REF_GROUP /end USER_RIGHTS"),
        "");
    EXPECT_EQ(messages("/begin USER_RIGHTS \"u\""), "Error 1: Identifier expected\n");
    EXPECT_EQ(messages("/begin USER_RIGHTS u \"text\""),
              "Error 1: Unexpected token 'token=302' found\n");
    EXPECT_EQ(messages("/begin USER_RIGHTS u /begin REF_GROUP /end GROUP"),
              "Error 1: Keyword 'REF_GROUP' expected after /end\n");
    EXPECT_EQ(messages("/begin USER_RIGHTS u /end GROUP"),
              "Error 1: Keyword 'USER_RIGHTS' expected after /end\n");
}

}  // namespace
}  // namespace quillmark
