// What a description cannot say, or says only in a roundabout way: parts that are missing from the
// model, and items without or with equal numbers. Every compared field is tried in
// compared_..._fields_test.cpp.
#include "compare/protocol_comparison.h"

#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compare/report_text.h"
#include "support/collecting_console.h"
#include "support/cpu_time.h"

namespace quillmark {
namespace {

/// A module with communication parameters.
struct TestModule {
    TestModule() { group->commParams.append(makePh<PhCommParam>()); }

    PhCommParam& parameters() { return group->commParams.at(0); }
    PhStationParam& station() { return *parameters().stationParam; }
    PhProtocolParam& protocol() { return station().protocolParam(); }
    PhDaqCapabilities& daq() { return station().daqCapabilities(); }
    PhDaqTpCapabilities& daqTp() { return station().daqTpCapabilities(); }

    PhTransportParam& addTransport() {
        parameters().transports.append(makePh<PhTransportParam>());
        return parameters().transports.last();
    }
    PhDaq& addDaqList(std::int64_t number) {
        daq().daqLists.append(makePh<PhDaq>());
        daq().daqLists.last().number = PhValue::ofInteger(number);
        return daq().daqLists.last();
    }
    PhRaster& addRaster(std::int64_t channel) {
        daq().rasters.append(makePh<PhRaster>());
        daq().rasters.last().channel = PhValue::ofInteger(channel);
        return daq().rasters.last();
    }
    PhDaqTpCan& addCanId(std::int64_t number) {
        daqTp().daqLists.append(makePh<PhDaqTpCan>());
        daqTp().daqLists.last().number = PhValue::ofInteger(number);
        return daqTp().daqLists.last();
    }
    void addSource(std::int64_t number, std::int64_t period) {
        PhValue::List& sources = daq().properties->list("sources");
        sources.push_back(makePh<PhValue>());
        const auto add = [&](const char* name, std::int64_t value) {
            sources.back()->list().push_back(PhValue::ofInteger(value));
            sources.back()->list().back()->setName(PhString(name));
        };
        add("period", period);
        add("daq_number", number);
    }
    void addCommand(std::int64_t code, const char* name) {
        PhValue::List& commands = protocol().properties->list("optional_cmd");
        commands.push_back(PhValue::ofInteger(code));
        commands.back()->setName(PhString(name));
    }

    PhHandle<PhGroup> group = makePh<PhGroup>(PhDocumentKind::Module, nullptr);
};

class ProtocolComparison : public testing::Test {
  protected:
    std::string ccp(bool verbose = false) {
        return run([&](CompareReport& report) {
            compareCcpModules(report, verbose, *before.group, *after.group, console);
        });
    }
    std::string xcp(bool verbose = false) {
        return run([&](CompareReport& report) {
            compareXcpModules(report, verbose, *before.group, *after.group, console);
        });
    }
    std::string shown() { return std::exchange(console.out, {}); }

    TestModule before;
    TestModule after;

  private:
    template <typename Compare>
    std::string run(const Compare& compare) {
        CompareReport report;
        compare(report);
        return reportText(report);
    }

    CollectingConsole console;
};

TEST_F(ProtocolComparison, NothingIsMadeByLooking) {
    EXPECT_EQ(ccp(), "");
    EXPECT_EQ(xcp(), "");
    for (TestModule* module : {&before, &after}) {
        EXPECT_EQ(module->station().protocolParamIfAny(), nullptr);
        EXPECT_EQ(module->station().daqCapabilitiesIfAny(), nullptr);
        EXPECT_EQ(module->station().daqTpCapabilitiesIfAny(), nullptr);
    }
    before.daq();
    after.daq();
    EXPECT_EQ(ccp(), "");
    EXPECT_EQ(before.daq().properties->find("sources"), nullptr);
    EXPECT_EQ(before.station().protocolParamIfAny(), nullptr);
}

TEST_F(ProtocolComparison, AStationThatIsMissingIsAllThatIsSaidOfIt) {
    before.protocol();
    before.addSource(1, 10);
    before.addCanId(1);
    after.parameters().stationParam = {};
    EXPECT_EQ(ccp(), "1 module2 does not contain station_parameter\n");
    EXPECT_EQ(xcp(), "1 module2 does not contain station_parameter\n");
    std::swap(before, after);
    EXPECT_EQ(ccp(), "1 module1 does not contain station_parameter\n");
    EXPECT_EQ(xcp(), "1 module1 does not contain station_parameter\n");
    after.parameters().stationParam = {};
    EXPECT_EQ(ccp(), "");
}

TEST_F(ProtocolComparison, AModuleWithoutParametersHasNoStation) {
    after.group->commParams.clear();
    EXPECT_EQ(ccp(), "1 module2 does not contain station_parameter\n");
    EXPECT_EQ(xcp(), "1 module2 does not contain station_parameter\n");
}

TEST_F(ProtocolComparison, PartsThatAreMissing) {
    before.addSource(1, 10);
    before.addCanId(1);
    before.addCommand(7, "");
    EXPECT_EQ(ccp(),
              "1 module2 does not contain daq capabilities (?)\n"
              "1 module2 does not contain daq TP capabilities (?)\n"
              "1 module2 does not contain protocol_parameter\n");
    EXPECT_EQ(xcp(),
              "1 module2 does not contain daq capabilities (?)\n"
              "1 module2 does not contain daq TP capabilities (?)\n"
              "1 module2 does not contain protocol_parameter\n");
    after.daq();
    after.addCanId(1);
    after.protocol();
    EXPECT_EQ(ccp(),
              "1 module2 does not contain sources\n"
              "1 module2 does not contain optional commands\n");
    EXPECT_EQ(xcp(), "1 module2 does not contain optional commands\n");
    std::swap(before, after);
    EXPECT_EQ(ccp(),
              "1 module1 does not contain sources\n"
              "1 module1 does not contain optional commands\n");
    EXPECT_EQ(xcp(), "1 module1 does not contain optional commands\n");
}

TEST_F(ProtocolComparison, WithoutDaqCapabilitiesItsProtocolSettingsAreNotCompared) {
    for (const char* key : {"t1", "xcp_byteorder_code", "ccp_byteorder_code"}) {
        before.protocol().properties->setInteger(key, 1);
        after.protocol().properties->setInteger(key, 2);
    }
    EXPECT_EQ(ccp(), "");
    EXPECT_EQ(xcp(), "");
    before.daq();
    after.daq();
    EXPECT_EQ(ccp(), "1 daq capabilities:ccp_byteorder_code values are not equal\n");
    EXPECT_EQ(xcp(),
              "1 daq capabilities:t1 values are not equal\n"
              "1 daq capabilities:xcp_byteorder_code values are not equal\n");
}

TEST_F(ProtocolComparison, SeedAndKeyNeedsNoDaqCapabilities) {
    before.protocol().properties->setText("seed_key_dll_name_pgm", "a");
    after.protocol();
    EXPECT_EQ(ccp(), "1 seed_key_dll_name_pgm values are not equal\n");
}

TEST_F(ProtocolComparison, LostItems) {
    for (TestModule* module : {&before, &after}) {
        module->daq();
        module->daqTp();
    }
    for (const std::int64_t number : {7, 4, -1}) {
        before.addDaqList(number);
        before.addRaster(number);
        before.addCanId(number);
    }
    for (const std::int64_t number : {5, 7}) {
        after.addDaqList(number);
        after.addRaster(number);
        after.addCanId(number);
    }
    EXPECT_EQ(ccp(),
              "1 Daq List 4 is no longer present in new file\n"
              "1 Daq List -1 is no longer present in new file\n"
              "1 Raster 4 is no longer present in new file\n"
              "1 Raster -1 is no longer present in new file\n"
              "1 Daq List CAN config 4 is no longer present in new file\n"
              "1 Daq List CAN config -1 is no longer present in new file\n");
    EXPECT_EQ(xcp(),
              "1 Daq List CAN config 4 is no longer present in new file\n"
              "1 Daq List CAN config -1 is no longer present in new file\n"
              "1 Daq List 4 is no longer present in new file\n"
              "1 Daq List -1 is no longer present in new file\n"
              "1 Event 4 is no longer present in new file\n"
              "1 Event -1 is no longer present in new file\n");
}

TEST_F(ProtocolComparison, AnItemWithoutNumberIsNumberZero) {
    before.addDaqList(0).number = {};
    before.daqTp();
    before.addRaster(0).channel = {};
    before.addCanId(0).number = {};
    after.addDaqList(0);
    after.addRaster(0);
    after.addCanId(0);
    EXPECT_EQ(xcp(), "");
    EXPECT_EQ(ccp(),
              "1 daqlist(0):daq_number values are not equal\n"
              "1 raster(0):channelId values are not equal\n");
    after.daq().daqLists.clear();
    after.daqTp().daqLists.clear();
    EXPECT_EQ(xcp(),
              "1 Daq List CAN config 0 is no longer present in new file\n"
              "1 Daq List 0 is no longer present in new file\n");
}

TEST_F(ProtocolComparison, OfNewItemsWithOneNumberTheFirstCounts) {
    for (const std::int64_t length : {1, 2}) {
        before.addDaqList(3).length = PhValue::ofInteger(length);
        after.addDaqList(3).length = PhValue::ofInteger(length);
    }
    EXPECT_EQ(xcp(true), "1 daqlist(3):MAX_ODT values are not equal\n");
    const std::string lines = shown();
    EXPECT_NE(lines.find("  daqlist(3):MAX_ODT = 1 # 1\n"), std::string::npos);
    EXPECT_NE(lines.find("  daqlist(3):MAX_ODT = 2 # 1\n"), std::string::npos);
}

TEST_F(ProtocolComparison, NumbersAreComparedAsIntegers) {
    before.addDaqList(0).number = PhValue::ofNumber(PhNumber::real(2.9));
    after.addDaqList(2);
    EXPECT_EQ(xcp(), "");
}

TEST_F(ProtocolComparison, SourcesAreComparedWithinTheOldModule) {
    before.addSource(1, 10);
    before.addSource(2, 20);
    after.addSource(1, 99);
    EXPECT_EQ(ccp(true), "");
    EXPECT_EQ(shown(),
              "  seed_key_dll_name_cal = NULL # NULL\n"
              "  seed_key_dll_name_daq = NULL # NULL\n"
              "  seed_key_dll_name_pgm = NULL # NULL\n"
              "  daq capabilities:ccp_byteorder_code = NULL # NULL\n"
              "  daq capabilities:address_extension = NULL # NULL\n"
              "  source(1):scaling_unit = NULL # NULL\n"
              "  source(1):period = 10 # 10\n"
              "  source(1):can_id_variable = NULL # NULL\n"
              "  source(1):can_id_fixed = NULL # NULL\n"
              "  source(1):first_pid = NULL # NULL\n"
              "  source(1):raster = NULL # NULL\n"
              "  source(1):source_id = NULL # NULL\n"
              "  source(2):scaling_unit = NULL # NULL\n"
              "  source(2):period = 20 # 20\n"
              "  source(2):can_id_variable = NULL # NULL\n"
              "  source(2):can_id_fixed = NULL # NULL\n"
              "  source(2):first_pid = NULL # NULL\n"
              "  source(2):raster = NULL # NULL\n"
              "  source(2):source_id = NULL # NULL\n");
}

TEST_F(ProtocolComparison, SourcesThatShareANumberOrHaveNoneAreEachComparedWithThemselves) {
    before.addSource(1, 10);
    before.addSource(1, 20);
    for (const int unit : {3, 4}) {
        PhValue::List& sources = before.daq().properties->list("sources");
        sources.push_back(makePh<PhValue>());
        sources.back()->list().push_back(PhValue::ofInteger(unit));
        sources.back()->list().back()->setName(PhString("scaling_unit"));
    }
    after.addSource(1, 99);
    EXPECT_EQ(ccp(true), "");
    const std::string lines = shown();
    for (const std::string_view line :
         {"  source(1):period = 10 # 10\n", "  source(1):period = 20 # 20\n",
          "  source(0):scaling_unit = 3 # 3\n", "  source(0):scaling_unit = 4 # 4\n"}) {
        EXPECT_THAT(lines, testing::HasSubstr(line));
    }
}

TEST_F(ProtocolComparison, OfASettingThatASourceRepeatsTheFirstCounts) {
    before.addSource(1, 10);
    PhValue& source = *before.daq().properties->list("sources").back();
    source.list().push_back(PhValue::ofInteger(20));
    source.list().back()->setName(PhString("period"));
    before.daqTp();
    after.daqTp();
    after.addSource(1, 10);
    EXPECT_EQ(ccp(true), "");
    EXPECT_THAT(shown(), testing::HasSubstr("  source(1):period = 10 # 10\n"));
}

TEST_F(ProtocolComparison, SourcesOfOneNumberWithManySettings) {
    constexpr int kMany = 50000;
    constexpr double kGenerous = 10;  // looking through the first one for each source takes minutes
    for (int i = 0; i < kMany; ++i) {
        before.addSource(1, 10);
    }
    PhValue& first = *before.daq().properties->list("sources").front();
    for (int i = 0; i < kMany; ++i) {
        first.list().push_back(PhValue::ofInteger(i));
        first.list().back()->setName(PhString("first_pid"));
    }
    after.addSource(1, 10);
    EXPECT_LT(cpuSecondsOf([&] { ccp(); }), kGenerous);
}

TEST_F(ProtocolComparison, ATimeBaseThatIsMissing) {
    before.addRaster(1).timebase = makePh<PhTimebase>();
    before.daq().rasters.last().timebase->resolution = 10;
    before.daq().rasters.last().timebase->scale = 2;
    before.daq().rasters.last().priority = PhValue::ofInteger(1);
    after.addRaster(1);
    EXPECT_EQ(xcp(),
              "1 module2 does not contain event(1):timebase\n"
              "1 event(1):priority values are not equal\n");
    EXPECT_EQ(ccp(),
              "1 raster(1):timebase:resolution values are not equal\n"
              "1 raster(1):timebase:scale values are not equal\n");
    before.daq().rasters.last().timebase = {};
    EXPECT_EQ(xcp(true), "1 event(1):priority values are not equal\n");
    EXPECT_EQ(shown().find("timebase"), std::string::npos);
}

TEST_F(ProtocolComparison, MoreOrFewerTransports) {
    before.addTransport().masterCanId = PhValue::ofInteger(1);
    before.addTransport().masterCanId = PhValue::ofInteger(2);
    after.addTransport().masterCanId = PhValue::ofInteger(3);
    EXPECT_EQ(ccp(),
              "1 different number of transport parameters\n"
              "1 transport parameter:txId values are not equal\n");
    EXPECT_EQ(xcp(),
              "1 [different number of transport parameters]\n"
              "1 transport parameter:txId values are not equal\n");
    std::swap(before, after);
    EXPECT_EQ(ccp(),
              "1 different number of transport parameters\n"
              "1 transport parameter:txId values are not equal\n");
}

TEST_F(ProtocolComparison, TransportTypesAndNamesOfCcp) {
    before.addTransport().setName(PhString("CAN"));
    after.addTransport().setName(PhString("UDP"));
    before.parameters().transports.last().transportType = PhTransportType::Can;
    after.parameters().transports.last().transportType = PhTransportType::FlexRay;
    EXPECT_EQ(ccp(true), "1 transport types are not equal\n1 names are not equal\n");
    EXPECT_EQ(shown(),
              "  seed_key_dll_name_cal = NULL # NULL\n"
              "  seed_key_dll_name_daq = NULL # NULL\n"
              "  seed_key_dll_name_pgm = NULL # NULL\n"
              "  transport parameter:txId = NULL # NULL\n"
              "  transport parameter:rxId = NULL # NULL\n"
              "  transport parameter:nodeId = NULL # NULL\n"
              "  transport parameter:bitrate = NULL # NULL\n"
              "  transport parameter:transport type = 1 # 9\n"
              "  transport parameter:name = CAN # UDP\n");
    EXPECT_EQ(xcp(true), "");
    EXPECT_EQ(shown(),
              "  transport parameter:txId = NULL # NULL\n"
              "  transport parameter:rxId = NULL # NULL\n"
              "  transport parameter:bitrate = NULL # NULL\n"
              "  transport parameter:max_dlc_required = NULL # NULL\n");
}

TEST_F(ProtocolComparison, CommandsAreMatchedByCode) {
    before.addCommand(0xFA, "GET_ID");
    before.addCommand(0xF5, "UPLOAD");
    before.addCommand(0xF5, "UPLOAD");
    before.addCommand(0xF4, "SHORT_UPLOAD");
    after.addCommand(0xF4, "other name");
    after.addCommand(0xF0, "DOWNLOAD");
    EXPECT_EQ(xcp(true),
              "1 [Optional command GET_ID is not present in second file]\n"
              "1 [Optional command UPLOAD is not present in second file]\n"
              "1 [Optional command UPLOAD is not present in second file]\n");
    EXPECT_EQ(shown(),
              "  OPTIONAL_CMD(1) : GET_ID UPLOAD UPLOAD SHORT_UPLOAD \n"
              "  OPTIONAL_CMD(2) : other name DOWNLOAD \n");
    EXPECT_EQ(ccp(true),
              "1 optional command 250 is not present in second file\n"
              "1 optional command 245 is not present in second file\n"
              "1 optional command 245 is not present in second file\n");
    const std::string lines = shown();
    EXPECT_EQ(lines.substr(lines.find("  OPTIONAL")),
              "  OPTIONAL_CMD(1) : 250 245 245 244 \n  OPTIONAL_CMD(2) : 244 240 \n");
}

TEST_F(ProtocolComparison, ManyCommandsThatAreLost) {
    constexpr int kCommands = 100000;
    constexpr double kGenerous = 5;  // comparing each with each takes a minute
    for (int code = 0; code < kCommands; ++code) {
        before.addCommand(code, "");
        after.addCommand(-1 - code, "");
    }
    EXPECT_LT(cpuSecondsOf([&] { ccp(); }), kGenerous);
}

}  // namespace
}  // namespace quillmark
