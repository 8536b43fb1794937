#include "model/ph_value.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace quillmark {

double PhNumber::toReal() const {
    switch (kind_) {
        case Kind::None:
            return 0.0;
        case Kind::Integer:
            return static_cast<double>(asInteger());
        case Kind::Real:
            return asReal();
    }
    return 0.0;
}

std::int32_t PhNumber::toInteger() const {
    return saturatedInteger(toReal());  // exact: every 32-bit integer is a real
}

bool PhNumber::isZero() const {
    return toReal() == 0.0;
}

PhNumber PhNumber::negated() const {
    switch (kind_) {
        case Kind::None:
            return {};
        case Kind::Integer:
            return integer(-asInteger());
        case Kind::Real:
            return real(-asReal());
    }
    return {};
}

bool operator==(const PhNumber& left, const PhNumber& right) {
    if (left.kind_ != right.kind_) {
        return false;
    }
    return left.isReal() ? left.asReal() == right.asReal() : left.asInteger() == right.asInteger();
}

std::int32_t saturatedInteger(double value) {
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(value)) {
        return 0;
    }
    if (value <= kLowest) {
        return kLowest;
    }
    if (value >= kHighest) {
        return kHighest;
    }
    return static_cast<std::int32_t>(value);
}

PhValue::PhValue(PhNumber number) : PhObject(PhClass::Value) {
    setNumber(number);
}

PhHandle<PhValue> PhValue::ofInteger(std::int64_t value) {
    return ofNumber(PhNumber::integer(value));
}

PhHandle<PhValue> PhValue::ofNumber(PhNumber number) {
    return makePh<PhValue>(number);
}

PhHandle<PhValue> PhValue::ofText(std::string_view text) {
    auto value = makePh<PhValue>();
    value->setText(PhString(text));
    return value;
}

void PhValue::setNumber(PhNumber number) {
    become(number.isInteger() ? Type::Integer : number.isReal() ? Type::Real : Type::None);
    number_ = number;
}

void PhValue::setText(PhString text) {
    become(Type::Text);
    text_ = std::move(text);
}

void PhValue::setBytes(std::vector<unsigned char> bytes) {
    become(Type::Bytes);
    bytes_ = std::move(bytes);
}

PhValue::List& PhValue::list() {
    if (type_ != Type::List) {
        become(Type::List);
    }
    return list_;
}

void PhValue::become(Type type) {
    type_ = type;
    number_ = PhNumber();
    text_ = PhString();
    list_.clear();
    bytes_.clear();
}

bool equalValues(const PhValue* left, const PhValue* right) {
    if (left == nullptr || right == nullptr) {
        return left == right;
    }
    if (left->type() != right->type()) {
        return false;
    }
    if (const PhValue::List* elements = left->listIfAny()) {
        return std::equal(elements->begin(), elements->end(), right->listIfAny()->begin(),
                          right->listIfAny()->end(), [](const auto& one, const auto& other) {
                              return equalValues(one.get(), other.get());
                          });
    }
    return left->number() == right->number() && left->text() == right->text() &&
           left->bytes() == right->bytes();
}

void PhProperties::setInteger(std::string_view name, std::int64_t value) {
    obtain(name).setNumber(PhNumber::integer(value));
}

void PhProperties::setText(std::string_view name, std::string_view text) {
    obtain(name).setText(PhString(text));
}

const PhValue* PhProperties::find(std::string_view name) const {
    for (const auto& value : values_) {
        if (value->name().view() == name) {
            return value.get();
        }
    }
    return nullptr;
}

PhValue::List& PhProperties::list(std::string_view name) {
    return obtain(name).list();
}

PhValue& PhProperties::obtain(std::string_view name) {
    for (const auto& value : values_) {
        if (value->name().view() == name) {
            return *value;
        }
    }
    values_.push_back(makePh<PhValue>());
    values_.back()->setName(PhString(name));
    return *values_.back();
}

}  // namespace quillmark
