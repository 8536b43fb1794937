#include "model/class_codes.h"

#include <set>

#include <gtest/gtest.h>

#include "model/module_model.h"
#include "model/vocabulary.h"

namespace quillmark {
namespace {

template <typename T>
int codeOf() {
    return static_cast<int>(makePh<T>()->kind());
}

TEST(ClassCodes, OfClassesThatTheReadersFill) {
    EXPECT_EQ(codeOf<PhMemoryPage>(), 2);
    EXPECT_EQ(codeOf<PhTransportParam>(), 3);
    EXPECT_EQ(codeOf<PhFlexRayBuffer>(), 4);
    EXPECT_EQ(codeOf<PhCommParam>(), 5);
    EXPECT_EQ(codeOf<PhProtocolParam>(), 6);
    EXPECT_EQ(codeOf<PhDaqTpCapabilities>(), 7);
    EXPECT_EQ(codeOf<PhDaqCapabilities>(), 8);
    EXPECT_EQ(codeOf<PhStationParam>(), 9);
    EXPECT_EQ(codeOf<PhCanFdParam>(), 10);
    EXPECT_EQ(codeOf<PhUnit>(), 11);
    EXPECT_EQ(codeOf<PhType>(), 12);
    EXPECT_EQ(codeOf<PhEntity>(), 19);
    EXPECT_EQ(codeOf<PhRecordLayout>(), 22);
    EXPECT_EQ(codeOf<PhConversion>(), 23);
    EXPECT_EQ(codeOf<PhValue>(), 24);
    EXPECT_EQ(codeOf<PhDaqPackedMode>(), 25);
    EXPECT_EQ(codeOf<PhRaster>(), 26);
    EXPECT_EQ(codeOf<PhTimebase>(), 27);
    EXPECT_EQ(codeOf<PhOdt>(), 28);
    EXPECT_EQ(codeOf<PhOdtEntry>(), 29);
    EXPECT_EQ(codeOf<PhDaq>(), 30);
    EXPECT_EQ(codeOf<PhDaqTpCan>(), 31);
    EXPECT_EQ(codeOf<PhRoot>(), 41);
    EXPECT_EQ(codeOf<PhFrame>(), 42);
    EXPECT_EQ(codeOf<PhFunction>(), 48);
    EXPECT_EQ(codeOf<PhProperties>(), 56);
    const auto group = makePh<PhGroup>(PhDocumentKind::Module, nullptr);
    EXPECT_EQ(static_cast<int>(group->kind()), 40);
}

TEST(ClassCodes, OfTheVocabulary) {
    EXPECT_EQ(codeOf<PhMlContext>(), 1);
    EXPECT_EQ(codeOf<PhDatatype>(), 13);
    EXPECT_EQ(codeOf<PhSignal>(), 14);
    EXPECT_EQ(codeOf<PhSignalRef>(), 15);
    EXPECT_EQ(codeOf<PhPort>(), 16);
    EXPECT_EQ(codeOf<PhPortRef>(), 16);
    EXPECT_EQ(codeOf<PhStructure>(), 18);
    EXPECT_EQ(codeOf<PhEntityRef>(), 20);
    EXPECT_EQ(codeOf<PhServiceRef>(), 21);
    EXPECT_EQ(codeOf<PhRange>(), 32);
    EXPECT_EQ(codeOf<PhParameter>(), 33);
    EXPECT_EQ(codeOf<PhParameterRef>(), 34);
    EXPECT_EQ(codeOf<PhService>(), 35);
    EXPECT_EQ(codeOf<PhSocketAddress>(), 36);
    EXPECT_EQ(codeOf<PhSocketAddressConfig>(), 36);
    EXPECT_EQ(codeOf<PhSocketConnection>(), 37);
    EXPECT_EQ(codeOf<PhConnectionBundle>(), 38);
    EXPECT_EQ(codeOf<PhFrameTriggering>(), 43);
    EXPECT_EQ(codeOf<PhChannel>(), 44);
    EXPECT_EQ(codeOf<PhCluster>(), 45);
    EXPECT_EQ(codeOf<PhConnector>(), 46);
    EXPECT_EQ(codeOf<PhController>(), 47);
    EXPECT_EQ(codeOf<PhEcu>(), 49);
    EXPECT_EQ(codeOf<PhSystem>(), 49);
    EXPECT_EQ(codeOf<PhTiming>(), 50);
    EXPECT_EQ(codeOf<PhConnectorMapping>(), 51);
    EXPECT_EQ(codeOf<PhFrameMapping>(), 52);
    EXPECT_EQ(codeOf<PhSignalMapping>(), 53);
    EXPECT_EQ(codeOf<PhScheduleTable>(), 54);
    EXPECT_EQ(codeOf<PhScheduleTableEntry>(), 55);
    EXPECT_EQ(codeOf<PhNetworkEndpoint>(), 57);
    EXPECT_EQ(codeOf<PhNetworkAddress>(), 58);
    EXPECT_EQ(codeOf<PhApplicationEndpoint>(), 59);
    EXPECT_EQ(codeOf<PhEvent>(), 60);
    EXPECT_EQ(codeOf<PhMethod>(), 61);
    EXPECT_EQ(codeOf<PhField>(), 62);
    EXPECT_EQ(codeOf<PhServiceInterface>(), 63);
    EXPECT_EQ(codeOf<PhServiceInterfaceRef>(), 64);
}

TEST(ClassCodes, NoVocabularyClassTakesAFreeCode) {
    std::set<int> codes;
#define QUILLMARK_COLLECT_CODE(name, handles, lists, texts) codes.insert(codeOf<Ph##name>());
    QUILLMARK_VOCABULARY(QUILLMARK_COLLECT_CODE)
#undef QUILLMARK_COLLECT_CODE
    EXPECT_EQ(codes.size(), 33U);  // 36 classes, of which three share their code with another
    EXPECT_FALSE(codes.contains(17));
    EXPECT_FALSE(codes.contains(39));
}

}  // namespace
}  // namespace quillmark
