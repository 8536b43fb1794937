#include "model/signal_model.h"

#include <array>
#include <cstdint>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(PhTableEntry, KeepsTheKindsOfItsNumbers) {
    const PhTableEntry entry(PhNumber::integer(-2147483648LL), PhNumber::real(2.5), PhNumber());
    EXPECT_EQ(entry.lower(), PhNumber::integer(-2147483648LL));
    EXPECT_EQ(entry.upper(), PhNumber::real(2.5));
    EXPECT_FALSE(entry.output().isPresent());
    EXPECT_TRUE(entry.text().isNull());

    const PhTableEntry whole(PhNumber::real(1), PhNumber::integer(1), PhNumber::real(0));
    EXPECT_EQ(whole.lower(), PhNumber::real(1));
    EXPECT_EQ(whole.upper(), PhNumber::integer(1));
    EXPECT_EQ(whole.output(), PhNumber::real(0));

    const PhTableEntry missing({}, {}, PhNumber::integer(0));
    EXPECT_FALSE(missing.lower().isPresent());
    EXPECT_FALSE(missing.upper().isPresent());
    EXPECT_EQ(missing.output(), PhNumber::integer(0));
}

TEST(PhTableEntry, TextLeavesTheOutputMissing) {
    const PhString text("neutral");
    const PhTableEntry entry(PhNumber::integer(0), PhNumber::integer(1), text);
    EXPECT_FALSE(entry.output().isPresent());
    EXPECT_EQ(entry.text().text(), text.text());
    EXPECT_FALSE(PhTableEntry({}, {}, PhString("")).text().isNull());
}

TEST(PhTableEntry, IsSmallBecauseTablesAreLong) {
    EXPECT_LE(sizeof(PhTableEntry), 40U);
}

TEST(PhEntity, IsSmallBecauseDescriptionsHaveMillions) {
    EXPECT_LE(sizeof(PhEntity), 120U);
}

TEST(PhUnit, HasNoDisplayTextUntilSet) {
    const auto unit = makePh<PhUnit>();
    EXPECT_TRUE(unit->displayText().isNull());
    unit->setDisplayText(PhString(""));
    EXPECT_FALSE(unit->displayText().isNull());
    EXPECT_TRUE(unit->name().isNull());
}

TEST(PhConversion, HasNothingAtFirst) {
    const auto conversion = makePh<PhConversion>();
    EXPECT_EQ(conversion->conversionType, PhConversionType::Undefined);
    EXPECT_FALSE(conversion->unit);
    EXPECT_FALSE(conversion->tableRef);
    EXPECT_TRUE(conversion->coeffs.empty());
    EXPECT_TRUE(conversion->denominatorCoeffs.empty());
    EXPECT_TRUE(conversion->tableEntries.empty());
    EXPECT_TRUE(conversion->defaultText.isNull());
}

TEST(PhConversion, SharesItsUnitAndTable) {
    const auto unit = makePh<PhUnit>();
    const auto table = makePh<PhConversion>();
    {
        const auto conversion = makePh<PhConversion>();
        conversion->unit = unit;
        conversion->tableRef = table;
        EXPECT_EQ(unit->refCount(), 2);
        EXPECT_EQ(table->refCount(), 2);
    }
    EXPECT_EQ(unit->refCount(), 1);
    EXPECT_EQ(table->refCount(), 1);
}

TEST(PhEntity, HasNothingAtFirst) {
    const auto signal = makePh<PhEntity>();
    EXPECT_EQ(signal->signalKind, PhSignalKind::Undefined);
    EXPECT_EQ(signal->byteOrder, PhByteOrder::Undefined);
    EXPECT_EQ(signal->bitOperation, PhBitOperation::None);
    EXPECT_EQ(signal->layout, PhLayout::None);
    EXPECT_FALSE(signal->signExtend);
    EXPECT_FALSE(signal->address);
    EXPECT_FALSE(signal->addressExtension);
    EXPECT_EQ(signal->matrixDims(), (std::array<std::int32_t, 3>{}));
    EXPECT_FALSE(signal->lowerLimit().isPresent());
    EXPECT_FALSE(signal->upperLimit().isPresent());
    EXPECT_EQ(signal->datatype.baseType, PhBaseType::Undefined);
    EXPECT_EQ(signal->datatype.sizeBits, 0);
    EXPECT_FALSE(signal->datatype.bitMask);
    EXPECT_FALSE(signal->datatype.unit);
    EXPECT_FALSE(signal->datatype.conversion);
    EXPECT_FALSE(signal->recordLayout);
}

TEST(PhEntity, MakesItsExtrasAtFirstUse) {
    const auto signal = makePh<PhEntity>();
    const PhEntity& constant = *signal;
    EXPECT_EQ(constant.extrasIfAny(), nullptr);
    EXPECT_EQ(signal->extrasIfAny(), nullptr);
    EXPECT_EQ(signal->shiftCount(), 0);
    signal->extras().shiftCount = 3;
    EXPECT_EQ(signal->shiftCount(), 3);
    EXPECT_EQ(constant.extrasIfAny(), &signal->extras());
}

TEST(PhFunction, SharesItsMembers) {
    const auto signal = makePh<PhEntity>();
    const auto inner = makePh<PhFunction>();
    {
        const auto function = makePh<PhFunction>();
        function->signals.append(signal);
        function->functions.append(inner);
        const auto frame = makePh<PhFrame>();
        frame->signals.append(signal);
        EXPECT_EQ(signal->refCount(), 3);
        EXPECT_EQ(inner->refCount(), 2);
    }
    EXPECT_EQ(signal->refCount(), 1);
    EXPECT_EQ(inner->refCount(), 1);
}

}  // namespace
}  // namespace quillmark
