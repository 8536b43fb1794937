#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "model/class_codes.h"
#include "model/ph_object.h"
#include "model/ph_string.h"

namespace quillmark {

/// A number as a description writes it: an integer, a real, or missing. Which of the two it is
/// depends only on how it was written (`1` or `1.0`), and the two are never mixed up: the output
/// and the comparison tell them apart.
class PhNumber {
  public:
    enum class Kind : std::uint8_t { None, Integer, Real };

    PhNumber() = default;
    static PhNumber integer(std::int64_t value) {
        return {Kind::Integer, std::bit_cast<Payload>(value)};
    }
    static PhNumber real(double value) { return {Kind::Real, std::bit_cast<Payload>(value)}; }

    Kind kind() const { return kind_; }
    bool isPresent() const { return kind_ != Kind::None; }
    bool isInteger() const { return kind_ == Kind::Integer; }
    bool isReal() const { return kind_ == Kind::Real; }

    /// The number as a real; 0 when missing.
    double toReal() const;

    /// The number as a 32-bit integer: a real is truncated toward zero, anything outside the range
    /// becomes the nearest limit and not-a-number 0; 0 when missing.
    std::int32_t toInteger() const;

    /// The exact value of an integer; 0 for anything else.
    std::int64_t exactInteger() const { return isInteger() ? asInteger() : 0; }

    /// Missing, integer 0, or a real equal to 0.0.
    bool isZero() const;

    /// The negative number, of the same kind.
    PhNumber negated() const;

    /// Equal only when both are of one kind; two missing numbers are equal, not-a-number never is.
    friend bool operator==(const PhNumber& left, const PhNumber& right);

  private:
    // As bytes, the value needs no alignment, and a number takes no more than nine of them: two
    // stand in every signal, three in every row of a table.
    using Payload = std::array<std::byte, sizeof(std::int64_t)>;

    PhNumber(Kind kind, Payload payload) : kind_(kind), payload_(payload) {}

    std::int64_t asInteger() const { return std::bit_cast<std::int64_t>(payload_); }
    double asReal() const { return std::bit_cast<double>(payload_); }

    Kind kind_ = Kind::None;
    Payload payload_{};
};

/// A std::optional<std::int32_t> in five bytes that need no alignment: each of millions of signals
/// has three.
class PhOptionalInteger {
  public:
    PhOptionalInteger() = default;
    PhOptionalInteger(std::int32_t value)
        : hasValue_(true), bytes_(std::bit_cast<decltype(bytes_)>(value)) {}

    explicit operator bool() const { return hasValue_; }

    /// 0 when missing.
    std::int32_t operator*() const { return std::bit_cast<std::int32_t>(bytes_); }

    operator std::optional<std::int32_t>() const {
        return hasValue_ ? std::optional<std::int32_t>(**this) : std::nullopt;
    }

  private:
    bool hasValue_ = false;
    std::array<std::byte, sizeof(std::int32_t)> bytes_{};
};

/// A real as a 32-bit integer, under the rule of PhNumber::toInteger().
std::int32_t saturatedInteger(double value);

/// The model's variant value, an object of its own so that several holders can share it: nothing,
/// an integer, a real, a text, a list of values, or raw bytes.
class PhValue final : public PhObject {
  public:
    enum class Type : std::uint8_t { None, Integer, Real, Text, List, Bytes };
    using List = std::vector<PhHandle<PhValue>>;

    PhValue() : PhObject(PhClass::Value) {}
    explicit PhValue(PhNumber number);
    static PhHandle<PhValue> ofInteger(std::int64_t value);
    static PhHandle<PhValue> ofNumber(PhNumber number);
    static PhHandle<PhValue> ofText(std::string_view text);

    Type type() const { return type_; }
    const PhNumber& number() const { return number_; }
    const PhString& text() const { return text_; }
    const std::vector<unsigned char>& bytes() const { return bytes_; }

    /// As PhNumber::toInteger(); 0 for anything that is no number.
    std::int32_t toInteger() const { return number_.toInteger(); }

    void setNumber(PhNumber number);
    void setText(PhString text);
    void setBytes(std::vector<unsigned char> bytes);

    /// The elements of a list value; makes this an (empty) list when it is none yet.
    List& list();

    /// The elements of a list value, or nullptr when this is none.
    const List* listIfAny() const { return type_ == Type::List ? &list_ : nullptr; }

  private:
    void become(Type type);

    Type type_ = Type::None;
    PhNumber number_;
    PhString text_;
    List list_;
    std::vector<unsigned char> bytes_;
};

/// Equality of two values that may be absent: two absent ones are equal, an absent and a present
/// one are not; values are equal to their own type only, lists when their elements are.
bool equalValues(const PhValue* left, const PhValue* right);

/// An ordered bag of named values. Storing under a name that is there already replaces its value in
/// place.
class PhProperties final : public PhObject {
  public:
    PhProperties() : PhObject(PhClass::Properties) {}

    void setInteger(std::string_view name, std::int64_t value);
    void setText(std::string_view name, std::string_view text);

    /// The value of that name, or nullptr.
    const PhValue* find(std::string_view name) const;

    /// The list-valued entry of that name, created empty when missing.
    PhValue::List& list(std::string_view name);

    const std::vector<PhHandle<PhValue>>& values() const { return values_; }

  private:
    PhValue& obtain(std::string_view name);

    std::vector<PhHandle<PhValue>> values_;
};

}  // namespace quillmark
