#include <array>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "library/example.h"
#include "quillmark/model.h"

namespace quillmark {
namespace {

class Walk : public testing::Test {
  protected:
    Signal signal(std::string_view name) const { return module_.findSignal(name).value(); }
    Conversion conversion(std::string_view name) const {
        return module_.findConversion(name).value();
    }

    Description description_ = engine();
    Module module_ = firstModule(description_);
};

TEST_F(Walk, ProjectAndModule) {
    const Project project = description_.projects()[0];
    EXPECT_EQ(project.name(), "BenchEngine");
    EXPECT_EQ(project.longIdentifier(), "Test bench engine, four cylinders");
    EXPECT_EQ(module_.name(), "EngineControl");
    EXPECT_EQ(module_.longIdentifier(), "Engine controller");
    EXPECT_EQ(module_.epk(), "BE4CYL_C3_0118");
    EXPECT_EQ(module_.epkAddress(), 0x80020040U);
    EXPECT_EQ(module_.stationProtocol(), ProtocolKind::Xcp);
    std::set<std::string_view> names;
    for (const Setting setting : module_.settings()) {
        names.insert(setting.name());
    }
    EXPECT_EQ(names, (std::set<std::string_view>{"mod_par/version", "mod_par/addr_epk",
                                                 "mod_par/epk", "mod_par/ecu"}));
}

TEST_F(Walk, Measurement) {
    const Signal speed = signal("nEngine");
    EXPECT_EQ(speed.name(), "nEngine");
    EXPECT_EQ(speed.longIdentifier(), "engine speed");
    EXPECT_EQ(speed.kind(), SignalKind::Measurement);
    EXPECT_TRUE(speed.isDefined());
    EXPECT_EQ(speed.address(), 0xD0000100U);
    EXPECT_EQ(speed.addressExtension(), std::nullopt);
    EXPECT_EQ(speed.baseType(), BaseType::UnsignedInteger);
    EXPECT_EQ(speed.sizeBits(), 16);
    EXPECT_EQ(speed.byteOrder(), ByteOrder::LittleEndian);
    EXPECT_EQ(speed.bitMask(), std::nullopt);
    EXPECT_EQ(speed.bitOperation(), BitOperation::None);
    EXPECT_EQ(speed.dimensions(), (std::array<std::int32_t, 3>{0, 0, 0}));
    EXPECT_TRUE(speed.lowerLimit().isInteger());
    EXPECT_EQ(speed.upperLimit().real(), 16383.75);
    EXPECT_EQ(speed.conversion().value().name(), "EngineSpeed");
    EXPECT_EQ(speed.unitText(), "1/min");
    EXPECT_EQ(speed.recordLayout().has_value(), false);
    ASSERT_EQ(speed.events().size(), 4U);
    EXPECT_EQ(speed.events()[0].use, EventUse::Available);
    EXPECT_EQ(speed.events()[2].channel, 2);
    EXPECT_EQ(speed.events()[3].use, EventUse::Default);
}

TEST_F(Walk, ShapesOfMeasurements) {
    EXPECT_EQ(signal("pCylinder").addressExtension(), 1);
    EXPECT_EQ(signal("bClutch").bitMask(), 2U);
    EXPECT_EQ(signal("bClutch").bitOperation(), BitOperation::RightShift);
    EXPECT_EQ(signal("bClutch").shiftCount(), 1);
    EXPECT_FALSE(signal("bClutch").signExtend());
    EXPECT_TRUE(signal("stGear").signExtend());
    EXPECT_EQ(signal("cntMisfire").dimensions(), (std::array<std::int32_t, 3>{2, 2, 3}));
    EXPECT_EQ(signal("aIgnition").layout(), ArrayLayout::RowDirection);
    EXPECT_EQ(signal("aIgnition").baseType(), BaseType::Integer);
    EXPECT_EQ(signal("facAdapt").baseType(), BaseType::Float32);
    EXPECT_EQ(signal("mFuelTotal").baseType(), BaseType::Float64);
    EXPECT_EQ(signal("facAdapt").conversion().has_value(), false) << "NO_COMPU_METHOD";
    EXPECT_EQ(signal("facAdapt").unitText(), "");
    EXPECT_EQ(signal("wdFaults").byteOrder(), ByteOrder::LittleEndian);
    EXPECT_EQ(signal("tExhaust").byteOrder(), ByteOrder::BigEndian);
    const Signal turbo = signal("nTurbo");
    EXPECT_EQ(turbo.address(), std::nullopt);
    ASSERT_EQ(turbo.virtualMembers().size(), 2U);
    EXPECT_EQ(turbo.virtualMembers()[1].name(), "mfAir");
    EXPECT_EQ(turbo.virtualMembers()[1].address(), 0xD0000124U);
}

TEST_F(Walk, Characteristics) {
    const Signal idle = signal("kIdleSpeed");
    EXPECT_EQ(idle.kind(), SignalKind::Value);
    EXPECT_EQ(idle.baseType(), BaseType::Integer);
    EXPECT_EQ(idle.sizeBits(), 16);
    EXPECT_EQ(idle.recordLayout().value().name(), "Scalar_S16");
    EXPECT_EQ(idle.recordLayout().value().sizeBits(), 16);
    EXPECT_EQ(signal("mpIgnition").kind(), SignalKind::Map);
    EXPECT_EQ(signal("mpIgnition").sizeBits(), 8);
    const Signal text = signal("txDataSet");
    EXPECT_EQ(text.kind(), SignalKind::Ascii);
    EXPECT_EQ(text.baseType(), BaseType::Ascii);
    EXPECT_EQ(text.sizeBits(), 128);
}

TEST_F(Walk, Conversions) {
    const Conversion linear = conversion("Temperature");
    EXPECT_EQ(linear.kind(), ConversionKind::Linear);
    ASSERT_EQ(linear.coefficients().size(), 2U);
    EXPECT_EQ(linear.coefficients()[0].real(), 0.5);
    EXPECT_TRUE(linear.coefficients()[1].isInteger());
    EXPECT_EQ(linear.coefficients()[1].integer(), -40);
    EXPECT_EQ(linear.unit().value().displayText(), "degC");
    EXPECT_EQ(linear.unit().value().name(), "degree_celsius");
    const Conversion rational = conversion("AirFuelRatio");
    EXPECT_EQ(rational.kind(), ConversionKind::Rational);
    EXPECT_FALSE(rational.denominatorCoefficients().empty());
    EXPECT_EQ(conversion("Power").kind(), ConversionKind::Formula);
    EXPECT_EQ(conversion("Raw").kind(), ConversionKind::Identity);
    const Conversion state = conversion("State");
    EXPECT_EQ(state.kind(), ConversionKind::Table);
    EXPECT_FALSE(state.isTable());
    EXPECT_TRUE(state.rows().empty());
    EXPECT_EQ(state.table().value().name(), "StateNames");
}

TEST_F(Walk, FormatsAndFormulas) {
    EXPECT_EQ(conversion("Power").formula(), "X1 * X2 / 9549");
    EXPECT_EQ(conversion("Power").inverseFormula(), "X1 * 9549 / X2");
    EXPECT_EQ(conversion("Power").displayFormat(), "%6.1");
    EXPECT_EQ(conversion("Temperature").formula(), "");
    EXPECT_EQ(module_.findTable("StateNames").value().displayFormat(), "");
    EXPECT_EQ(signal("nEngine").displayFormat(), "%7.2");
    EXPECT_EQ(signal("pCylinder").displayFormat(), "");
}

TEST_F(Walk, Tables) {
    const Conversion states = module_.findTable("StateNames").value();
    EXPECT_TRUE(states.isTable());
    EXPECT_EQ(states.name(), "StateNames");
    EXPECT_EQ(states.longIdentifier(), "operating states");
    EXPECT_EQ(states.defaultText(), "unknown");
    ASSERT_EQ(states.rows().size(), 5U);
    EXPECT_EQ(states.rows()[2].lower().integer(), 2);
    EXPECT_EQ(states.rows()[2].text(), "idle");
    EXPECT_FALSE(states.rows()[2].output().isPresent());
    const Conversion ranges = module_.findTable("LoadRanges").value();
    EXPECT_EQ(ranges.rows()[1].lower().integer(), 64);
    EXPECT_EQ(ranges.rows()[1].upper().integer(), 191);
    const Conversion curve = module_.findTable("CoolantCurve").value();
    EXPECT_EQ(curve.kind(), ConversionKind::InterpolatedTable);
    EXPECT_EQ(curve.rows()[1].output().real(), 110.5);
    EXPECT_EQ(curve.rows()[1].text(), std::nullopt);
    EXPECT_EQ(module_.findTable("BoostSteps").value().defaultText(), std::nullopt);
    EXPECT_EQ(module_.findConversion("StateNames").has_value(), false);
}

TEST_F(Walk, UnitsGroupsFramesAndMemory) {
    ASSERT_EQ(module_.units().size(), 3U);
    EXPECT_EQ(module_.findUnit("metre_per_second").value().displayText(), "m/s");
    ASSERT_EQ(module_.groups().size(), 5U);
    const Group bench = module_.findGroup("Bench").value();
    EXPECT_EQ(bench.longIdentifier(), "what the bench always records");
    ASSERT_EQ(bench.groups().size(), 2U);
    EXPECT_EQ(bench.groups()[1].signals().size(), 5U);
    EXPECT_EQ(bench.signals()[1].name(), "trqEngine");
    ASSERT_EQ(module_.frames().size(), 1U);
    EXPECT_EQ(module_.frames()[0].name(), "WheelFrame");
    EXPECT_EQ(module_.frames()[0].scalingUnit(), 3);
    EXPECT_EQ(module_.frames()[0].rate(), 20);
    EXPECT_EQ(module_.frames()[0].signals()[0].name(), "vVehicle");
    ASSERT_EQ(module_.memorySegments().size(), 3U);
    const MemorySegment ram = module_.memorySegments()[2];
    EXPECT_EQ(ram.name(), "Ram");
    EXPECT_EQ(ram.use(), MemoryUse::Variables);
    EXPECT_EQ(ram.kind(), MemoryKind::Ram);
    EXPECT_EQ(ram.address(), 0xD0000000U);
    EXPECT_EQ(ram.size(), 0x10000U);
    EXPECT_EQ(module_.recordLayouts().size(), 6U);
}

// The lines on which names stand in the description.
TEST_F(Walk, LinesAreThoseOfTheNames) {
    std::map<std::string, std::int32_t, std::less<>> lines;
    std::ifstream file(QUILLMARK_EXAMPLES "/engine-xcp/engine.a2l");
    std::string text;
    for (std::int32_t line = 1; std::getline(file, text); ++line) {
        std::istringstream words(text);
        std::string begin;
        std::string keyword;
        std::string name;
        if (words >> begin >> keyword >> name && begin == "/begin") {
            lines.try_emplace(keyword + " " + name, line);
        }
    }
    const auto expectLine = [&](const char* keyword, const auto& part) {
        const std::string block = std::string(keyword) + " " + std::string(part.name());
        EXPECT_EQ(part.line(), lines[block]) << block;
    };
    expectLine("PROJECT", description_.projects()[0]);
    expectLine("MODULE", module_);
    for (const Signal part : module_.signals()) {
        expectLine(part.kind() == SignalKind::Measurement ? "MEASUREMENT" : "CHARACTERISTIC", part);
    }
    for (const Conversion part : module_.conversions()) {
        if (!part.isTable()) {
            expectLine("COMPU_METHOD", part);
        }
    }
    expectLine("COMPU_VTAB", module_.findTable("StateNames").value());
    expectLine("COMPU_TAB", module_.findTable("CoolantCurve").value());
    for (const Unit part : module_.units()) {
        expectLine("UNIT", part);
    }
    for (const RecordLayout part : module_.recordLayouts()) {
        expectLine("RECORD_LAYOUT", part);
    }
    expectLine("FUNCTION", module_.findGroup("Ignition").value());
    expectLine("GROUP", module_.findGroup("Bench").value());
    expectLine("FRAME", module_.frames()[0]);
    EXPECT_EQ(conversion("Raw").unit().value().line(), 0) << "a text is no block";
}

TEST_F(Walk, WhatIsNotThere) {
    EXPECT_EQ(module_.findSignal("nothing").has_value(), false);
    EXPECT_EQ(module_.findUnit("").has_value(), false);
    EXPECT_EQ(module_.findGroup("nothing").has_value(), false);
}

TEST(UndefinedNames, HaveNothingButTheirName) {
    const Description description = described(
        moduleWith("/begin MEASUREMENT s \"\" UBYTE Missing 0 0 0 1 /end MEASUREMENT\n"
                   "/begin GROUP G \"\" /begin REF_MEASUREMENT s lost /end REF_MEASUREMENT\n"
                   "/begin SUB_GROUP gone /end SUB_GROUP /end GROUP\n"));
    const Module module = firstModule(description);
    EXPECT_FALSE(module.signals()[0].conversion().value().isDefined());
    EXPECT_EQ(module.signals()[0].conversion().value().name(), "Missing");
    const Group group = module.groups()[0];
    EXPECT_TRUE(group.signals()[0].isDefined());
    EXPECT_FALSE(group.signals()[1].isDefined());
    EXPECT_EQ(group.signals()[1].name(), "lost");
    EXPECT_EQ(group.signals()[1].address(), std::nullopt);
    EXPECT_FALSE(group.groups()[0].isDefined());
}

}  // namespace
}  // namespace quillmark
