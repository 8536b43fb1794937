#include <string>

#include <gtest/gtest.h>

#include "library/example.h"
#include "quillmark/protocol.h"

namespace quillmark {
namespace {

/// The setting of that name; the test fails without one.
Setting setting(List<Setting> settings, std::string_view name) {
    for (const Setting candidate : settings) {
        if (candidate.name() == name) {
            return candidate;
        }
    }
    ADD_FAILURE() << "no setting " << name;
    return settings[0];
}

class XcpWalk : public testing::Test {
  protected:
    Description description_ = engine();
    Protocol protocol_ = firstModule(description_).protocols()[0];
    Station station_ = protocol_.station();
};

TEST_F(XcpWalk, Protocol) {
    EXPECT_EQ(protocol_.kind(), ProtocolKind::Xcp);
    EXPECT_EQ(protocol_.name(), "XCP");
    EXPECT_EQ(station_.byteOrder(), ByteOrder::LittleEndian);
    EXPECT_EQ(setting(station_.settings(), "max_cto").number().integer(), 8);
    const Setting commands = setting(station_.settings(), "optional_cmd");
    EXPECT_EQ(commands.type(), Setting::Type::List);
    ASSERT_EQ(commands.elements().size(), 13U);
    EXPECT_EQ(commands.elements()[0].name(), "GET_ID");
    EXPECT_EQ(setting(station_.settings(), "seed_and_key_external_function").text(),
              "bench_unlock.dll");
}

TEST_F(XcpWalk, Acquisition) {
    const Acquisition acquisition = station_.acquisition().value();
    EXPECT_EQ(acquisition.configType(), 2);
    EXPECT_EQ(acquisition.maxDaq().integer(), 8);
    EXPECT_EQ(acquisition.minDaq().integer(), 0);
    EXPECT_EQ(acquisition.maxEventChannel().integer(), 4);
    EXPECT_EQ(acquisition.overloadIndication(), 2);
    EXPECT_TRUE(acquisition.supportsPrescaler());
    EXPECT_TRUE(acquisition.supportsResume());
    EXPECT_FALSE(acquisition.supportsPidOff());
    EXPECT_TRUE(acquisition.timestamps().value().isFixed());
    EXPECT_EQ(acquisition.timestamps().value().byteLength().integer(), 2);
    ASSERT_EQ(acquisition.events().size(), 4U);
    const Event event = acquisition.events()[2];
    EXPECT_EQ(event.name(), "10 ms task");
    EXPECT_EQ(event.shortName(), "10ms");
    EXPECT_EQ(event.channel().integer(), 2);
    EXPECT_TRUE(event.supportsDaq());
    EXPECT_TRUE(event.supportsStim());
    EXPECT_TRUE(event.cycle().has_value());
    EXPECT_EQ(event.priority().integer(), 0x80);
    EXPECT_EQ(event.packedMode().has_value(), false);
}

TEST_F(XcpWalk, Transport) {
    ASSERT_EQ(protocol_.transports().size(), 1U);
    const Transport transport = protocol_.transports()[0];
    EXPECT_EQ(transport.kind(), TransportKind::Can);
    EXPECT_EQ(transport.masterCanId().integer(), 0x7E1);
    EXPECT_EQ(transport.slaveCanId().integer(), 0x7E9);
    EXPECT_FALSE(transport.stationAddress().isPresent());
    EXPECT_EQ(setting(transport.settings(), "bitrate").number().integer(), 500000);
    EXPECT_EQ(transport.canFd().has_value(), false);
    EXPECT_TRUE(transport.flexRayBuffers().empty());
    std::size_t canIds = station_.daqCanIds().size();
    if (transport.station()) {
        canIds += transport.station()->daqCanIds().size();
    }
    EXPECT_EQ(canIds, 2U);
}

TEST(CcpWalk, SourcesAreEvents) {
    const Description description =
        Description::readFile(QUILLMARK_EXAMPLES "/engine-ccp/engine.a2l");
    const Protocol protocol = firstModule(description).protocols()[0];
    EXPECT_EQ(protocol.kind(), ProtocolKind::Ccp);
    EXPECT_EQ(firstModule(description).stationProtocol(), ProtocolKind::Ccp);
    ASSERT_FALSE(protocol.transports().empty());
    EXPECT_TRUE(protocol.transports()[0].stationAddress().isPresent());
    EXPECT_FALSE(protocol.station().acquisition().value().daqLists().empty());
}

}  // namespace
}  // namespace quillmark
