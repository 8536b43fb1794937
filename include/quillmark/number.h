#pragma once

#include <cstdint>

namespace quillmark {

/// A number as a description writes it: an integer, a real, or absent. `1` and `1.0` are different
/// numbers: the include file and the comparison tell them apart.
class Number {
  public:
    constexpr Number() noexcept = default;
    static constexpr Number ofInteger(std::int64_t value) noexcept {
        return Number(Kind::Integer, value, static_cast<double>(value));
    }
    static constexpr Number ofReal(double value) noexcept { return Number(Kind::Real, 0, value); }

    [[nodiscard]] constexpr bool isPresent() const noexcept { return kind_ != Kind::Absent; }
    [[nodiscard]] constexpr bool isInteger() const noexcept { return kind_ == Kind::Integer; }
    [[nodiscard]] constexpr bool isReal() const noexcept { return kind_ == Kind::Real; }

    /// The exact value of an integer; 0 for a real and for an absent number.
    [[nodiscard]] constexpr std::int64_t integer() const noexcept { return integer_; }

    /// The value of either kind, rounded where a large integer needs it; 0 when absent.
    [[nodiscard]] constexpr double real() const noexcept { return real_; }

  private:
    enum class Kind : std::uint8_t { Absent, Integer, Real };

    constexpr Number(Kind kind, std::int64_t integer, double real) noexcept
        : integer_(integer), real_(real), kind_(kind) {}

    std::int64_t integer_ = 0;
    double real_ = 0.0;
    Kind kind_ = Kind::Absent;
};

}  // namespace quillmark
