#include "cfginclude/signal_output.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "cfginclude/model_making.h"

namespace quillmark {
namespace {

constexpr LibraryFeatures kNoFeatures{};
constexpr LibraryFeatures kShifts{.writeShiftAttributes = true};
constexpr LibraryFeatures kTexts{.includeAsciiCharacteristics = true};

std::string written(const PhHandle<PhEntity>& signal, const LibraryFeatures& features = kNoFeatures,
                    std::string_view prefix = "",
                    const PhObjectList<PhConversion>& conversions = {}) {
    const IdentityFallbackNames fallbacks(conversions, features);
    return childrenText([&](CfgChildren& children) {
        writeSignal(children, *signal, prefix, features, fallbacks);
    });
}

/// The lines of a `signal` element.
std::string element(std::string_view lines) {
    return "<signal>\n" + std::string(lines) + "</signal>\n";
}

PhHandle<PhEntity> makeByte(std::string_view name = "x") {
    return makeMeasurement(name, PhBaseType::UInteger, 8);
}

/// The values of one key of all elements, in order.
std::vector<std::string> valuesOf(std::string_view key, std::string_view text) {
    std::vector<std::string> values;
    const std::string start = '\n' + std::string(key) + '=';
    for (std::size_t at = text.find(start); at != std::string_view::npos;
         at = text.find(start, at + 1)) {
        const std::size_t from = at + start.size();
        values.emplace_back(text.substr(from, text.find('\n', from) - from));
    }
    return values;
}

using Texts = std::vector<std::string>;

TEST(SignalOutput, WritesAMeasurementInTheOrderOfItsAttributes) {
    const auto speed = makeMeasurement("speed", PhBaseType::UInteger, 16);
    speed->address = 0x1000;
    speed->datatype.conversion =
        makeConversion("CM_speed", PhConversionType::Linear, integers({2, 0}));
    EXPECT_EQ(written(speed, kNoFeatures, "P_"),
              element("name=P_speed\ncompumethod=P_CM_speed\nmta=0x1000\nnum_bytes=2\n"
                      "signed=unsigned\n"));

    speed->addressExtension = 0xAB;
    speed->datatype.conversion->unit = makeUnit("km/h");
    speed->datatype.bitMask = 0xFF0;
    speed->bitOperation = PhBitOperation::RightShift;
    speed->extras().shiftCount = 4;
    speed->signExtend = true;
    speed->byteOrder = PhByteOrder::BigEndian;
    EXPECT_EQ(written(speed, kShifts, "P_"),
              element("name=P_speed\nunit=km/h\ncompumethod=P_CM_speed\nmta_ext=0xab\nmta=0x1000\n"
                      "num_bytes=2\nsigned=unsigned\nbitmask=0xff0\nshift_type=right\n"
                      "shift_length=4\nsign_extend=1\nbyteorder=motorola\n"));
}

TEST(SignalOutput, WithoutTypeAndAddressItHasNameSizeAndEmptySign) {
    const auto bare = makePh<PhEntity>();
    bare->setName(PhString("bare"));
    bare->signalKind = PhSignalKind::Measurement;
    EXPECT_EQ(written(bare), element("name=bare\nnum_bytes=0\nsigned=\n"));
}

TEST(SignalOutput, TextsAreWrittenAsTheyStand) {
    const auto signal = makeByte("a<b>=\"c\"");
    signal->datatype.unit = makeUnit(
        "\xB0"
        "C\n'");
    EXPECT_EQ(written(signal), element("name=a<b>=\"c\"\nunit=\xB0"
                                       "C\n'\nnum_bytes=1\n"
                                       "signed=unsigned\n"));
}

TEST(SignalOutput, SignFollowsTheBaseType) {
    struct Row {
        PhBaseType type;
        std::string_view text;
    };
    constexpr Row kRows[] = {
        {PhBaseType::Undefined, ""},        {PhBaseType::Integer, "signed"},
        {PhBaseType::UInteger, "unsigned"}, {PhBaseType::Ieee32, "float"},
        {PhBaseType::Ieee64, "float"},      {PhBaseType::StringAscii, "unsigned"},
        {PhBaseType::StringUtf8, ""},       {PhBaseType::StringUnicode, ""},
        {PhBaseType::Bytefield, ""},        {PhBaseType::Bitfield, ""},
        {PhBaseType::Boolean, ""},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(written(makeMeasurement("x", row.type, 32)),
                  element("name=x\nnum_bytes=4\nsigned=" + std::string(row.text) + '\n'));
    }
}

TEST(SignalOutput, SizeIsWholeBytesTruncatedTowardZero) {
    struct Row {
        std::int64_t bits;
        std::string_view bytes;
    };
    constexpr Row kRows[] = {
        {0, "0"},
        {7, "0"},
        {8, "1"},
        {15, "1"},
        {64, "8"},
        {-7, "0"},
        {-8, "-1"},
        {-16, "-2"},
        {std::int64_t{8} * 2147483647, "2147483647"},
        {std::int64_t{-8} * 2147483648, "-2147483648"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(
            valuesOf("num_bytes", written(makeMeasurement("x", PhBaseType::Integer, row.bits))),
            Texts{std::string(row.bytes)});
    }
}

TEST(SignalOutput, AddressExtensionAndMaskAre32BitsInHexadecimal) {
    const auto signal = makeByte();
    signal->address = -1;
    signal->addressExtension = 0;
    signal->datatype.bitMask = -2147483647 - 1;
    EXPECT_EQ(written(signal),
              element("name=x\nmta_ext=0x0\nmta=0xffffffff\nnum_bytes=1\nsigned=unsigned\n"
                      "bitmask=0x80000000\n"));
    signal->address = 0;
    signal->addressExtension = {};
    signal->datatype.bitMask = 0;
    EXPECT_EQ(written(signal),
              element("name=x\nmta=0x0\nnum_bytes=1\nsigned=unsigned\nbitmask=0x0\n"));
}

TEST(SignalOutput, ByteOrderNamesTheProcessorsMaker) {
    const auto signal = makeByte();
    EXPECT_EQ(valuesOf("byteorder", written(signal)), Texts{});
    signal->byteOrder = PhByteOrder::BigEndian;
    EXPECT_EQ(valuesOf("byteorder", written(signal)), Texts{"motorola"});
    signal->byteOrder = PhByteOrder::LittleEndian;
    EXPECT_EQ(valuesOf("byteorder", written(signal)), Texts{"intel"});
}

// --- conversion and unit ----------------------------------------------------------------------

TEST(SignalOutput, NoCompuMethodIsNotNamedButGivesItsUnit) {
    const auto signal = makeByte();
    signal->datatype.conversion = makeConversion("NO_COMPU_METHOD", PhConversionType::Linear);
    signal->datatype.conversion->unit = makeUnit("V");
    EXPECT_EQ(written(signal, kNoFeatures, "P_"),
              element("name=P_x\nunit=V\nnum_bytes=1\nsigned=unsigned\n"));
    signal->datatype.conversion->setName(PhString("no_compu_method"));
    EXPECT_EQ(valuesOf("compumethod", written(signal, kNoFeatures, "P_")),
              Texts{"P_no_compu_method"});
}

TEST(SignalOutput, IdentityIsNotNamed) {
    PhObjectList<PhConversion> conversions;
    conversions.append(makeConversion("ident", PhConversionType::Identity));
    const auto signal = makeByte();
    signal->datatype.conversion = makeConversion("ident", PhConversionType::Identity);
    signal->datatype.conversion->unit = makeUnit("V");
    EXPECT_EQ(written(signal, kNoFeatures, "P_", conversions),
              element("name=P_x\nunit=V\nnum_bytes=1\nsigned=unsigned\n"));
}

TEST(SignalOutput, OneIdentityAmongConversionsOfANameIsEnough) {
    const auto linear = makeConversion("twice", PhConversionType::Linear, integers({2, 0}));
    PhObjectList<PhConversion> conversions;
    conversions.append(linear);
    conversions.append(makeConversion("twice", PhConversionType::Formula));
    const auto signal = makeByte();
    signal->datatype.conversion = linear;
    EXPECT_EQ(valuesOf("compumethod", written(signal, kNoFeatures, "", conversions)), Texts{});
}

TEST(SignalOutput, ConversionThatIsDefinedNowhereIsNamed) {
    const auto signal = makeByte();
    signal->datatype.conversion = makeConversion("missing", PhConversionType::Undefined);
    signal->datatype.conversion->markPlaceholder();
    signal->datatype.conversion->markUnresolved();
    EXPECT_EQ(valuesOf("compumethod", written(signal, kNoFeatures, "P_")), Texts{"P_missing"});
}

TEST(SignalOutput, ConversionWithoutNameLeavesThePrefix) {
    const auto signal = makeByte();
    signal->datatype.conversion = makeConversion("", PhConversionType::Undefined);
    EXPECT_EQ(valuesOf("compumethod", written(signal)), Texts{});
    EXPECT_EQ(valuesOf("compumethod", written(signal, kNoFeatures, "P_")), Texts{"P_"});
}

TEST(SignalOutput, UnitOfTheConversionGoesBeforeThatOfTheType) {
    const auto signal = makeByte();
    signal->datatype.unit = makeUnit("type");
    EXPECT_EQ(valuesOf("unit", written(signal)), Texts{"type"});
    signal->datatype.conversion = makeConversion("c", PhConversionType::Linear);
    EXPECT_EQ(valuesOf("unit", written(signal)), Texts{"type"});
    signal->datatype.conversion->unit = makeUnit("conversion");
    EXPECT_EQ(valuesOf("unit", written(signal)), Texts{"conversion"});
}

TEST(SignalOutput, UnitOfAPlaceholderConversionIsNotUsed) {
    const auto signal = makeByte();
    signal->datatype.unit = makeUnit("type");
    signal->datatype.conversion = makeConversion("c", PhConversionType::Linear);
    signal->datatype.conversion->unit = makeUnit("conversion");
    signal->datatype.conversion->markPlaceholder();
    EXPECT_EQ(valuesOf("unit", written(signal)), Texts{"type"});
}

TEST(SignalOutput, UnitWithoutDisplayTextHidesTheTypesUnit) {
    const auto signal = makeByte();
    signal->datatype.unit = makeUnit("type");
    signal->datatype.conversion = makeConversion("c", PhConversionType::Linear);
    signal->datatype.conversion->unit = makePh<PhUnit>();  // a unit that nothing defines
    signal->datatype.conversion->unit->setName(PhString("missing"));
    EXPECT_EQ(valuesOf("unit", written(signal)), Texts{});
    signal->datatype.conversion->unit = makeUnit("");
    EXPECT_EQ(valuesOf("unit", written(signal)), Texts{});
}

// --- record layouts ---------------------------------------------------------------------------

PhHandle<PhEntity> makeCharacteristic(PhSignalKind kind) {
    const auto signal = makeMeasurement("x", PhBaseType::Undefined, 0);
    signal->signalKind = kind;
    signal->recordLayout = makePh<PhRecordLayout>();
    signal->recordLayout->dataType = makePh<PhType>();
    signal->recordLayout->dataType->baseType = PhBaseType::Integer;
    signal->recordLayout->dataType->sizeBits = 16;
    return signal;
}

TEST(SignalOutput, SingleValueTakesSizeAndSignFromItsLayout) {
    const auto signal = makeCharacteristic(PhSignalKind::Value);
    signal->datatype.sizeBits = 32;  // NUMBER 4
    signal->datatype.unit = makeUnit("V");
    signal->datatype.bitMask = 3;
    signal->datatype.conversion = makeConversion("c", PhConversionType::Linear);
    EXPECT_EQ(written(signal), element("name=x\nunit=V\ncompumethod=c\nnum_bytes=2\n"
                                       "signed=signed\nbitmask=0x3\n"));
}

TEST(SignalOutput, LayoutOverwritesWhatItTellsItself) {
    const auto signal = makeCharacteristic(PhSignalKind::Value);
    signal->datatype.baseType = PhBaseType::Ieee32;
    signal->datatype.unit = makeUnit("own");
    signal->datatype.bitMask = 3;
    PhType& type = *signal->recordLayout->dataType;
    type.baseType = PhBaseType::Undefined;
    type.sizeBits = 0;
    type.unit = makeUnit("layout");
    type.bitMask = 4;
    EXPECT_EQ(written(signal),
              element("name=x\nunit=layout\nnum_bytes=0\nsigned=float\nbitmask=0x4\n"));
}

TEST(SignalOutput, OtherSignalsIgnoreTheirLayout) {
    for (const auto kind : {PhSignalKind::Measurement, PhSignalKind::Ascii}) {
        const auto signal = makeCharacteristic(kind);
        signal->datatype.baseType = PhBaseType::StringAscii;
        signal->datatype.sizeBits = 80;
        EXPECT_EQ(written(signal, kTexts), element("name=x\nnum_bytes=10\nsigned=unsigned\n"));
    }
}

TEST(SignalOutput, LayoutWithoutTypeChangesNothing) {
    const auto signal = makeCharacteristic(PhSignalKind::Value);
    signal->datatype.sizeBits = 32;
    signal->recordLayout->dataType = {};
    EXPECT_EQ(written(signal), element("name=x\nnum_bytes=4\nsigned=\n"));
    signal->recordLayout = {};
    EXPECT_EQ(written(signal), element("name=x\nnum_bytes=4\nsigned=\n"));
}

TEST(SignalOutput, LayoutAloneIsEnough) {
    const auto signal = makeCharacteristic(PhSignalKind::Value);
    signal->datatype = {};
    EXPECT_EQ(written(signal), element("name=x\nnum_bytes=2\nsigned=signed\n"));
}

// --- bit operations ---------------------------------------------------------------------------

TEST(SignalOutput, WithoutBitOperationTheShiftIsTheDefault) {
    EXPECT_EQ(written(makeByte(), kShifts),
              element("name=x\nnum_bytes=1\nsigned=unsigned\nshift_type=default\n"));
}

TEST(SignalOutput, SignExtensionWithoutShiftIsNotWritten) {
    const auto signal = makeByte();
    signal->signExtend = true;
    signal->extras().shiftCount = 3;
    EXPECT_EQ(written(signal, kShifts),
              element("name=x\nnum_bytes=1\nsigned=unsigned\nshift_type=default\n"));
}

TEST(SignalOutput, ShiftsAreWrittenForLibrariesThatKnowThem) {
    const auto signal = makeByte();
    signal->bitOperation = PhBitOperation::RightShift;
    signal->extras().shiftCount = 3;
    signal->signExtend = true;
    const std::string start = "name=x\nnum_bytes=1\nsigned=unsigned\n";
    EXPECT_EQ(written(signal), element(start));
    EXPECT_EQ(written(signal, kShifts),
              element(start + "shift_type=right\nshift_length=3\nsign_extend=1\n"));
    signal->signExtend = false;
    EXPECT_EQ(written(signal, kShifts), element(start + "shift_type=right\nshift_length=3\n"));
    signal->signExtend = true;
    signal->bitOperation = PhBitOperation::LeftShift;
    signal->extras().shiftCount = -1;
    EXPECT_EQ(written(signal, kShifts), element(start + "shift_type=left\nshift_length=-1\n"));
}

// --- arrays -----------------------------------------------------------------------------------

TEST(SignalOutput, ArrayRunsThroughItsFirstIndexFastest) {
    const auto signal = makeByte();
    signal->address = 0x100;
    signal->extras().matrixDims = {3, 2, 0};
    const Texts names{"P_x[0][0]", "P_x[1][0]", "P_x[2][0]", "P_x[0][1]", "P_x[1][1]", "P_x[2][1]"};
    const Texts byColumn{"0x100", "0x102", "0x104", "0x101", "0x103", "0x105"};
    const Texts byRow{"0x100", "0x101", "0x102", "0x103", "0x104", "0x105"};
    struct Row {
        PhLayout layout;
        Texts addresses;
    };
    for (const Row& row : {Row{PhLayout::None, byColumn}, Row{PhLayout::ColumnDirection, byColumn},
                           Row{PhLayout::RowDirection, byRow}}) {
        signal->layout = row.layout;
        const std::string text = written(signal, kNoFeatures, "P_");
        EXPECT_EQ(valuesOf("mta", text), row.addresses);
        EXPECT_EQ(valuesOf("name", text), names);
    }
}

TEST(SignalOutput, ThreeDimensions) {
    const auto signal = makeMeasurement("x", PhBaseType::Integer, 16);
    signal->address = 0;
    signal->extras().matrixDims = {2, 3, 2};
    const std::string byColumn = written(signal);
    EXPECT_EQ(valuesOf("name", byColumn),
              (Texts{"x[0][0][0]", "x[1][0][0]", "x[0][1][0]", "x[1][1][0]", "x[0][2][0]",
                     "x[1][2][0]", "x[0][0][1]", "x[1][0][1]", "x[0][1][1]", "x[1][1][1]",
                     "x[0][2][1]", "x[1][2][1]"}));
    // Two bytes times i1 + 3 i0 + 6 i2.
    EXPECT_EQ(valuesOf("mta", byColumn), (Texts{"0x0", "0x6", "0x2", "0x8", "0x4", "0xa", "0xc",
                                                "0x12", "0xe", "0x14", "0x10", "0x16"}));
    signal->layout = PhLayout::RowDirection;
    // Two bytes times i0 + 2 i1 + 6 i2.
    EXPECT_EQ(valuesOf("mta", written(signal)),
              (Texts{"0x0", "0x2", "0x4", "0x6", "0x8", "0xa", "0xc", "0xe", "0x10", "0x12", "0x14",
                     "0x16"}));
}

TEST(SignalOutput, OneDimensionKnowsNoDirection) {
    const auto signal = makeMeasurement("x", PhBaseType::Integer, 32);
    signal->address = 16;
    signal->extras().matrixDims = {3, 0, 0};
    for (const auto layout : {PhLayout::None, PhLayout::RowDirection, PhLayout::ColumnDirection}) {
        signal->layout = layout;
        EXPECT_EQ(valuesOf("mta", written(signal)), (Texts{"0x10", "0x14", "0x18"}));
    }
}

TEST(SignalOutput, FirstZeroEndsTheDimensions) {
    const auto signal = makeByte();
    signal->extras().matrixDims = {4, 0, 2};
    EXPECT_EQ(valuesOf("name", written(signal)), (Texts{"x[0]", "x[1]", "x[2]", "x[3]"}));
    signal->extras().matrixDims = {0, 3, 2};
    EXPECT_EQ(valuesOf("name", written(signal)), Texts{"x"});
}

TEST(SignalOutput, DimensionOfOneHasItsIndex) {
    const auto signal = makeByte();
    signal->extras().matrixDims = {1, 2, 0};
    EXPECT_EQ(valuesOf("name", written(signal)), (Texts{"x[0][0]", "x[0][1]"}));
    signal->extras().matrixDims = {1, 0, 0};
    EXPECT_EQ(valuesOf("name", written(signal)), Texts{"x[0]"});
}

TEST(SignalOutput, ElementsDifferInNameAndAddressOnly) {
    const auto signal = makeByte();
    signal->extras().matrixDims = {2, 0, 0};
    signal->address = 1;
    signal->addressExtension = 2;
    signal->datatype.unit = makeUnit("V");
    signal->datatype.bitMask = 7;
    signal->byteOrder = PhByteOrder::LittleEndian;
    const std::string rest =
        "num_bytes=1\nsigned=unsigned\nbitmask=0x7\nshift_type=default\n"
        "byteorder=intel\n";
    EXPECT_EQ(written(signal, kShifts),
              element("name=x[0]\nunit=V\nmta_ext=0x2\nmta=0x1\n" + rest) +
                  element("name=x[1]\nunit=V\nmta_ext=0x2\nmta=0x2\n" + rest));
}

TEST(SignalOutput, ArrayWithoutAddressIsNamedAllTheSame) {
    const auto signal = makeByte();
    signal->extras().matrixDims = {2, 0, 0};
    EXPECT_EQ(written(signal), element("name=x[0]\nnum_bytes=1\nsigned=unsigned\n") +
                                   element("name=x[1]\nnum_bytes=1\nsigned=unsigned\n"));
}

TEST(SignalOutput, AddressesWrapAt32Bits) {
    const auto signal = makeMeasurement("x", PhBaseType::Integer, 64);
    signal->address = -8;
    signal->extras().matrixDims = {3, 0, 0};
    EXPECT_EQ(valuesOf("mta", written(signal)), (Texts{"0xfffffff8", "0x0", "0x8"}));
}

TEST(SignalOutput, NegativeSizeWalksBackwards) {
    const auto signal = makeMeasurement("x", PhBaseType::Integer, -16);
    signal->address = 2;
    signal->extras().matrixDims = {3, 0, 0};
    EXPECT_EQ(valuesOf("mta", written(signal)), (Texts{"0x2", "0x0", "0xfffffffe"}));
}

// --- selection --------------------------------------------------------------------------------

TEST(SignalOutput, MeasurementsAndSingleValuesAreWritten) {
    struct Row {
        PhSignalKind kind;
        bool always;
        bool withTexts;
    };
    constexpr Row kRows[] = {
        {PhSignalKind::Undefined, false, false},  {PhSignalKind::Measurement, true, true},
        {PhSignalKind::Value, true, true},        {PhSignalKind::Curve, false, false},
        {PhSignalKind::Map, false, false},        {PhSignalKind::Cuboid, false, false},
        {PhSignalKind::ValueBlock, false, false}, {PhSignalKind::Ascii, false, true},
        {PhSignalKind::Cube4, false, false},      {PhSignalKind::Cube5, false, false},
    };
    for (const Row& row : kRows) {
        PhEntity signal;
        signal.signalKind = row.kind;
        EXPECT_EQ(isWrittenSignal(signal, kNoFeatures), row.always);
        EXPECT_EQ(isWrittenSignal(signal, kTexts), row.withTexts);
    }
}

// A disk that is full from the first byte on.
class FullSink final : public OutputSink {
  public:
    int drains = 0;

  protected:
    void drain(std::string_view) override {
        ++drains;
        fail();
    }
};

TEST(WriteSignal, MakesNoElementsThatNobodyTakes) {
    const auto signal = makeMeasurement("s", PhBaseType::UInteger, 8);
    signal->extras().matrixDims = {INT32_MAX, INT32_MAX, INT32_MAX};
    const PhObjectList<PhConversion> conversions;
    FullSink sink;
    CfgChildren children(sink, false, 0);
    writeSignal(children, *signal, "", {}, IdentityFallbackNames(conversions, {}));
    children.finish();
    EXPECT_EQ(sink.drains, 1);
}

}  // namespace
}  // namespace quillmark
