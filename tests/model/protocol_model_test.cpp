#include "model/protocol_model.h"

#include <utility>

#include <gtest/gtest.h>

#include "support/cpu_time.h"

namespace quillmark {
namespace {

TEST(PhStationParam, MakesItsPartsAtFirstUse) {
    const auto station = makePh<PhStationParam>();
    EXPECT_EQ(station->protocolParamIfAny(), nullptr);
    EXPECT_EQ(station->daqTpCapabilitiesIfAny(), nullptr);
    EXPECT_EQ(station->daqCapabilitiesIfAny(), nullptr);

    PhDaqCapabilities& capabilities = station->daqCapabilities();
    EXPECT_EQ(&station->daqCapabilities(), &capabilities);
    EXPECT_EQ(station->daqCapabilitiesIfAny(), &capabilities);
    EXPECT_EQ(station->protocolParamIfAny(), nullptr);
    EXPECT_EQ(station->daqTpCapabilitiesIfAny(), nullptr);

    PhProtocolParam& param = station->protocolParam();
    EXPECT_EQ(station->protocolParamIfAny(), &param);
    PhDaqTpCapabilities& daqTp = station->daqTpCapabilities();
    EXPECT_EQ(station->daqTpCapabilitiesIfAny(), &daqTp);
}

TEST(PhStationParam, DaqCapabilitiesOfAStationWithoutAnyAreEmpty) {
    const auto station = makePh<PhStationParam>();
    const PhDaqCapabilities& capabilities = station->daqCapabilities();
    EXPECT_FALSE(capabilities.timebase);
    ASSERT_TRUE(capabilities.properties);
    EXPECT_TRUE(capabilities.properties->values().empty());
    EXPECT_TRUE(capabilities.rasters.empty());
    EXPECT_TRUE(capabilities.daqLists.empty());
    EXPECT_EQ(capabilities.configType, 0);
    EXPECT_EQ(capabilities.optimisationType, 0);
    EXPECT_EQ(capabilities.addressExtension, 0);
    EXPECT_EQ(capabilities.identificationFieldType, 0);
    EXPECT_EQ(capabilities.granularityOdtEntrySize, 0);
    EXPECT_EQ(capabilities.overloadIndication, 0);
    EXPECT_FALSE(capabilities.maxDaq);
    EXPECT_FALSE(capabilities.maxEventChannel);
    EXPECT_FALSE(capabilities.minDaq);
    EXPECT_FALSE(capabilities.maxOdtEntrySize);
    EXPECT_FALSE(capabilities.prescalerSupported);
    EXPECT_FALSE(capabilities.resumeSupported);
    EXPECT_FALSE(capabilities.pidOffSupported);
    EXPECT_FALSE(capabilities.storeDaqSupported);
}

TEST(PhStationParam, PartsDieWithTheStation) {
    const auto inner = PhValue::ofInteger(1);
    {
        const auto station = makePh<PhStationParam>();
        station->daqCapabilities().maxDaq = inner;
        auto entry = makePh<PhDaqTpCan>();
        entry->number = inner;
        station->daqTpCapabilities().daqLists.append(std::move(entry));
        EXPECT_EQ(inner->refCount(), 3);
    }
    EXPECT_EQ(inner->refCount(), 1);
}

TEST(PhProtocolParam, HasPropertiesFromTheStart) {
    const auto param = makePh<PhProtocolParam>();
    EXPECT_EQ(param->encoding, PhByteOrder::Undefined);
    ASSERT_TRUE(param->properties);
    EXPECT_TRUE(param->properties->values().empty());
}

TEST(PhCommParam, HasAStationFromTheStart) {
    const auto param = makePh<PhCommParam>();
    EXPECT_EQ(param->protocolType, PhProtocolType::Undefined);
    ASSERT_TRUE(param->stationParam);
    EXPECT_EQ(param->stationParam->daqCapabilitiesIfAny(), nullptr);
    EXPECT_TRUE(param->transports.empty());
}

TEST(PhTransportParam, MakesItsStationAtFirstUse) {
    const auto transport = makePh<PhTransportParam>();
    ASSERT_TRUE(transport->properties);
    EXPECT_TRUE(transport->instanceName.isNull());
    EXPECT_EQ(transport->stationParamIfAny(), nullptr);
    PhStationParam& station = transport->stationParam();
    EXPECT_EQ(&transport->stationParam(), &station);
    EXPECT_EQ(transport->stationParamIfAny(), &station);
}

PhDaqTpCan& addEntry(PhDaqTpCapabilities& capabilities, PhHandle<PhValue> number) {
    auto entry = makePh<PhDaqTpCan>();
    entry->number = std::move(number);
    capabilities.daqLists.append(std::move(entry));
    return capabilities.daqLists.last();
}

TEST(PhDaqTpCapabilities, FindsNothingInAnEmptyList) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    EXPECT_EQ(capabilities->findByNumber(0), nullptr);
}

TEST(PhDaqTpCapabilities, EntryWithoutANumberCountsAsZero) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    PhDaqTpCan& unset = addEntry(*capabilities, {});
    addEntry(*capabilities, PhValue::ofInteger(0));
    EXPECT_EQ(capabilities->findByNumber(0), &unset);
    EXPECT_EQ(capabilities->findByNumber(1), nullptr);
}

TEST(PhDaqTpCapabilities, FindsTheFirstOfThatNumber) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    addEntry(*capabilities, PhValue::ofInteger(2));
    PhDaqTpCan& first = addEntry(*capabilities, PhValue::ofInteger(1));
    addEntry(*capabilities, PhValue::ofInteger(1));
    EXPECT_EQ(capabilities->findByNumber(1), &first);
    EXPECT_EQ(capabilities->findByNumber(-1), nullptr);
}

TEST(PhDaqTpCapabilities, FindsWhatCameAfterASearch) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    PhDaqTpCan& first = addEntry(*capabilities, PhValue::ofInteger(1));
    EXPECT_EQ(capabilities->findByNumber(2), nullptr);
    PhDaqTpCan& second = addEntry(*capabilities, PhValue::ofInteger(2));
    addEntry(*capabilities, PhValue::ofInteger(1));
    EXPECT_EQ(capabilities->findByNumber(2), &second);
    EXPECT_EQ(capabilities->findByNumber(1), &first);
}

TEST(PhDaqTpCapabilities, SearchesDoNotWalkTheList) {
    constexpr std::int32_t kEntries = 200000;
    constexpr double kGenerous = 5;  // walking it each time takes more than a minute
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    EXPECT_LT(cpuSecondsOf([&] {
                  for (std::int32_t number = 0; number < kEntries; ++number) {
                      ASSERT_EQ(capabilities->findByNumber(number), nullptr);
                      addEntry(*capabilities, PhValue::ofInteger(number));
                  }
              }),
              kGenerous);
}

// A search would answer from what it noted before.
TEST(PhDaqTpCapabilitiesDeathTest, NotedEntriesKeepTheirNumbersAndPlaces) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    addEntry(*capabilities, PhValue::ofInteger(1));
    PhDaqTpCan& second = addEntry(*capabilities, PhValue::ofInteger(2));
    capabilities->findByNumber(2);
    second.number->setNumber(PhNumber::integer(3));
    EXPECT_DEBUG_DEATH(capabilities->findByNumber(3), "noteIsTrue");
    second.number = PhValue::ofInteger(4);
    EXPECT_DEBUG_DEATH(capabilities->findByNumber(4), "noteIsTrue");
    second.number = PhValue::ofInteger(2);
    EXPECT_EQ(capabilities->findByNumber(2), &second);
    capabilities->daqLists.remove(0);
    EXPECT_DEBUG_DEATH(capabilities->findByNumber(1), "noteIsTrue");
}

TEST(PhDaqTpCapabilities, RealNumberIsTruncated) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    PhDaqTpCan& real = addEntry(*capabilities, PhValue::ofNumber(PhNumber::real(3.9)));
    EXPECT_EQ(capabilities->findByNumber(3), &real);
    EXPECT_EQ(capabilities->findByNumber(4), nullptr);
}

TEST(PhDaqTpCapabilities, TextCountsAsZero) {
    const auto capabilities = makePh<PhDaqTpCapabilities>();
    PhDaqTpCan& text = addEntry(*capabilities, PhValue::ofText("3"));
    EXPECT_EQ(capabilities->findByNumber(0), &text);
}

}  // namespace
}  // namespace quillmark
