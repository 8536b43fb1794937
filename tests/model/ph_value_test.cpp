#include "model/ph_value.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(PhNumber, KnowsItsKind) {
    EXPECT_FALSE(PhNumber().isPresent());
    EXPECT_EQ(PhNumber().kind(), PhNumber::Kind::None);
    EXPECT_TRUE(PhNumber::integer(0).isPresent());
    EXPECT_TRUE(PhNumber::integer(0).isInteger());
    EXPECT_FALSE(PhNumber::integer(0).isReal());
    EXPECT_TRUE(PhNumber::real(0).isReal());
    EXPECT_FALSE(PhNumber::real(0).isInteger());
}

TEST(PhNumber, ReadsAsReal) {
    EXPECT_EQ(PhNumber().toReal(), 0.0);
    EXPECT_EQ(PhNumber::integer(-3).toReal(), -3.0);
    EXPECT_EQ(PhNumber::real(2.5).toReal(), 2.5);
}

TEST(PhNumber, OnlyAnIntegerHasAnExactValue) {
    EXPECT_EQ(PhNumber::integer(2147483648).exactInteger(), 2147483648);
    EXPECT_EQ(PhNumber::real(7).exactInteger(), 0);
    EXPECT_EQ(PhNumber().exactInteger(), 0);
}

TEST(PhNumber, ConvertsToAnIntegerWithinTheRange) {
    EXPECT_EQ(PhNumber().toInteger(), 0);
    EXPECT_EQ(PhNumber::integer(kLowest).toInteger(), kLowest);
    EXPECT_EQ(PhNumber::integer(kHighest).toInteger(), kHighest);
    EXPECT_EQ(PhNumber::integer(2147483648).toInteger(), kHighest);
    EXPECT_EQ(PhNumber::real(2.9).toInteger(), 2);
    EXPECT_EQ(PhNumber::real(-2.9).toInteger(), -2);
}

TEST(PhOptionalInteger, IsMissingUntilItIsSet) {
    PhOptionalInteger value;
    EXPECT_FALSE(value);
    EXPECT_EQ(*value, 0);
    EXPECT_EQ(std::optional<std::int32_t>(value), std::nullopt);
    for (const std::int32_t given : {0, -1, kLowest, kHighest}) {
        value = given;
        EXPECT_TRUE(value);
        EXPECT_EQ(*value, given);
        EXPECT_EQ(std::optional<std::int32_t>(value), given);
    }
}

TEST(SaturatedInteger, TakesTheNearestLimit) {
    EXPECT_EQ(saturatedInteger(2147483646.9), 2147483646);
    EXPECT_EQ(saturatedInteger(2147483647.0), kHighest);
    EXPECT_EQ(saturatedInteger(2147483648.0), kHighest);
    EXPECT_EQ(saturatedInteger(1e300), kHighest);
    EXPECT_EQ(saturatedInteger(kInfinity), kHighest);
    EXPECT_EQ(saturatedInteger(-2147483647.9), -2147483647);
    EXPECT_EQ(saturatedInteger(-2147483648.9), kLowest);
    EXPECT_EQ(saturatedInteger(-kInfinity), kLowest);
    EXPECT_EQ(saturatedInteger(kNan), 0);
    EXPECT_EQ(saturatedInteger(-0.9), 0);
}

TEST(PhNumber, ZeroIsMissingOrZeroOfEitherKind) {
    EXPECT_TRUE(PhNumber().isZero());
    EXPECT_TRUE(PhNumber::integer(0).isZero());
    EXPECT_TRUE(PhNumber::real(0.0).isZero());
    EXPECT_TRUE(PhNumber::real(-0.0).isZero());
    EXPECT_FALSE(PhNumber::integer(1).isZero());
    EXPECT_FALSE(PhNumber::real(0.5).isZero());
    EXPECT_FALSE(PhNumber::real(kNan).isZero());
}

TEST(PhNumber, NegationKeepsTheKind) {
    EXPECT_EQ(PhNumber::integer(3).negated(), PhNumber::integer(-3));
    EXPECT_EQ(PhNumber::integer(0).negated(), PhNumber::integer(0));
    EXPECT_EQ(PhNumber::real(1.5).negated(), PhNumber::real(-1.5));
    EXPECT_FALSE(PhNumber().negated().isPresent());
}

TEST(PhNumber, NegationOfTheLowestIntegerIsItsMathematicalValue) {
    const PhNumber negated = PhNumber::integer(kLowest).negated();
    EXPECT_TRUE(negated.isInteger());
    EXPECT_EQ(negated.exactInteger(), 2147483648);
    EXPECT_EQ(negated.toReal(), 2147483648.0);
}

TEST(PhNumber, EqualityTellsTheKindsApart) {
    EXPECT_EQ(PhNumber(), PhNumber());
    EXPECT_EQ(PhNumber::integer(1), PhNumber::integer(1));
    EXPECT_FALSE(PhNumber::integer(1) == PhNumber::integer(2));
    EXPECT_FALSE(PhNumber::integer(1) == PhNumber::real(1));
    EXPECT_FALSE(PhNumber::integer(0) == PhNumber());
    EXPECT_FALSE(PhNumber::real(0) == PhNumber());
    EXPECT_EQ(PhNumber::real(0.0), PhNumber::real(-0.0));
}

TEST(PhNumber, NotANumberEqualsNothing) {
    EXPECT_FALSE(PhNumber::real(kNan) == PhNumber::real(kNan));
    EXPECT_FALSE(PhNumber::real(kNan) == PhNumber::real(0));
    EXPECT_FALSE(PhNumber::real(kNan) == PhNumber());
}

TEST(PhValue, IsNothingAtFirst) {
    const auto value = makePh<PhValue>();
    EXPECT_EQ(value->type(), PhValue::Type::None);
    EXPECT_FALSE(value->number().isPresent());
    EXPECT_TRUE(value->text().isNull());
    EXPECT_EQ(value->listIfAny(), nullptr);
    EXPECT_EQ(value->toInteger(), 0);
}

TEST(PhValue, TakesEveryTypeAndForgetsTheOneBefore) {
    const auto value = PhValue::ofInteger(4);
    EXPECT_EQ(value->type(), PhValue::Type::Integer);
    EXPECT_EQ(value->toInteger(), 4);

    value->setText(PhString("12"));
    EXPECT_EQ(value->type(), PhValue::Type::Text);
    EXPECT_EQ(value->text().view(), "12");
    EXPECT_EQ(value->toInteger(), 0);

    value->setNumber(PhNumber::real(4.7));
    EXPECT_EQ(value->type(), PhValue::Type::Real);
    EXPECT_EQ(value->toInteger(), 4);
    EXPECT_TRUE(value->text().isNull());

    value->setBytes({1, 2});
    EXPECT_EQ(value->type(), PhValue::Type::Bytes);
    EXPECT_EQ(value->bytes(), (std::vector<unsigned char>{1, 2}));
    EXPECT_FALSE(value->number().isPresent());
    EXPECT_TRUE(value->text().isNull());

    value->list().push_back(PhValue::ofText("element"));
    EXPECT_EQ(value->type(), PhValue::Type::List);
    EXPECT_TRUE(value->bytes().empty());
    EXPECT_EQ(value->list().size(), 1U);

    value->setNumber(PhNumber());
    EXPECT_EQ(value->type(), PhValue::Type::None);
    EXPECT_EQ(value->listIfAny(), nullptr);
    EXPECT_TRUE(value->list().empty());
}

TEST(PhValue, ListKeepsItsElements) {
    const auto value = makePh<PhValue>();
    value->list().push_back(PhValue::ofInteger(1));
    value->list().push_back(PhValue::ofInteger(2));
    ASSERT_NE(value->listIfAny(), nullptr);
    EXPECT_EQ(value->listIfAny()->size(), 2U);
}

TEST(EqualValues, AbsentEqualsAbsentOnly) {
    const auto zero = PhValue::ofInteger(0);
    const auto nothing = makePh<PhValue>();
    EXPECT_TRUE(equalValues(nullptr, nullptr));
    EXPECT_FALSE(equalValues(zero.get(), nullptr));
    EXPECT_FALSE(equalValues(nullptr, zero.get()));
    EXPECT_FALSE(equalValues(nullptr, nothing.get()));
    EXPECT_TRUE(equalValues(nothing.get(), makePh<PhValue>().get()));
}

TEST(EqualValues, ComparesWithinOneKindOnly) {
    const auto integer = PhValue::ofInteger(1);
    const auto real = PhValue::ofNumber(PhNumber::real(1));
    const auto text = PhValue::ofText("1");
    EXPECT_TRUE(equalValues(integer.get(), PhValue::ofInteger(1).get()));
    EXPECT_FALSE(equalValues(integer.get(), PhValue::ofInteger(2).get()));
    EXPECT_TRUE(equalValues(real.get(), PhValue::ofNumber(PhNumber::real(1)).get()));
    EXPECT_TRUE(equalValues(text.get(), PhValue::ofText("1").get()));
    EXPECT_FALSE(equalValues(text.get(), PhValue::ofText("2").get()));
    EXPECT_FALSE(equalValues(integer.get(), real.get()));
    EXPECT_FALSE(equalValues(integer.get(), text.get()));
    EXPECT_FALSE(equalValues(real.get(), text.get()));
}

PhHandle<PhValue> bytes(std::vector<unsigned char> content) {
    auto value = makePh<PhValue>();
    value->setBytes(std::move(content));
    return value;
}

TEST(EqualValues, ComparesBytes) {
    EXPECT_TRUE(equalValues(bytes({1, 2}).get(), bytes({1, 2}).get()));
    EXPECT_FALSE(equalValues(bytes({1, 2}).get(), bytes({1, 3}).get()));
    EXPECT_FALSE(equalValues(bytes({1, 2}).get(), bytes({1}).get()));
    EXPECT_FALSE(equalValues(bytes({}).get(), makePh<PhValue>().get()));
}

PhHandle<PhValue> listOf(PhValue::List elements) {
    auto value = makePh<PhValue>();
    value->list() = std::move(elements);
    return value;
}

TEST(EqualValues, ComparesListsElementByElement) {
    const auto one = PhValue::ofInteger(1);
    const auto two = PhValue::ofInteger(2);
    EXPECT_TRUE(equalValues(listOf({}).get(), listOf({}).get()));
    EXPECT_TRUE(equalValues(listOf({one, two}).get(), listOf({PhValue::ofInteger(1), two}).get()));
    EXPECT_FALSE(equalValues(listOf({one, two}).get(), listOf({two, one}).get()));
    EXPECT_FALSE(equalValues(listOf({one, two}).get(), listOf({one}).get()));
}

TEST(EqualValues, NotANumberEqualsNothing) {
    const auto value = PhValue::ofNumber(PhNumber::real(kNan));
    EXPECT_FALSE(equalValues(value.get(), value.get()));
}

TEST(PhProperties, KeepsTheOrderOfFirstStorage) {
    const auto properties = makePh<PhProperties>();
    properties->setInteger("b", 1);
    properties->setText("a", "text");
    properties->list("c");
    properties->setInteger("b", 2);
    ASSERT_EQ(properties->values().size(), 3U);
    EXPECT_EQ(properties->values()[0]->name().view(), "b");
    EXPECT_EQ(properties->values()[0]->toInteger(), 2);
    EXPECT_EQ(properties->values()[1]->name().view(), "a");
    EXPECT_EQ(properties->values()[1]->text().view(), "text");
    EXPECT_EQ(properties->values()[2]->name().view(), "c");
}

TEST(PhProperties, ReplacesAlsoByAnotherType) {
    const auto properties = makePh<PhProperties>();
    properties->setInteger("a", 1);
    properties->setText("a", "one");
    ASSERT_EQ(properties->values().size(), 1U);
    EXPECT_EQ(properties->find("a")->type(), PhValue::Type::Text);
}

TEST(PhProperties, FindCreatesNothing) {
    const auto properties = makePh<PhProperties>();
    EXPECT_EQ(properties->find("a"), nullptr);
    EXPECT_TRUE(properties->values().empty());
}

TEST(PhProperties, ListIsCreatedEmptyAndThenFound) {
    const auto properties = makePh<PhProperties>();
    EXPECT_TRUE(properties->list("optional_cmd").empty());
    properties->list("optional_cmd").push_back(PhValue::ofInteger(1));
    properties->list("optional_cmd").push_back(PhValue::ofInteger(2));
    ASSERT_EQ(properties->values().size(), 1U);
    ASSERT_NE(properties->find("optional_cmd")->listIfAny(), nullptr);
    EXPECT_EQ(properties->find("optional_cmd")->listIfAny()->size(), 2U);
}

}  // namespace
}  // namespace quillmark
