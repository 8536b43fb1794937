#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "quillmark/model.h"

namespace quillmark::python {

/// Where there is no number to give.
inline constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

/// What a conversion makes of values. Reals are calculated as IEEE 754 has it: a division by zero
/// is an infinity or no number.
class ConversionFunction {
  public:
    enum class Form {
        None,  ///< cannot be calculated
        Identity,
        Fraction,      ///< (a x + b) / (c x + d)
        Numbers,       ///< a table of numbers
        Interpolated,  ///< ... with straight lines between them
        Texts,
    };
    struct Row {
        Number lower;
        Number upper;
        Number output;
        std::string text;
    };

    /// Copies what it needs of the conversion.
    explicit ConversionFunction(const Conversion& conversion);

    [[nodiscard]] Form form() const noexcept { return form_; }

    /// Of Fraction and Interpolated: the physical value. Not a number where an interpolated table
    /// has a default and does not reach.
    [[nodiscard]] double physical(double raw) const;

    /// Of Fraction and Interpolated: the raw value. Not a number where no raw value of the table
    /// gives it.
    [[nodiscard]] double raw(double physical) const;

    /// Of Numbers and Texts: the row of a raw value, of several that fit the one that begins last,
    /// of those the first; null for none.
    [[nodiscard]] const Row* rowOf(double raw) const;

    /// Of Numbers and Texts: the first row of the description that gives this; null for none.
    [[nodiscard]] const Row* rowGiving(double physical) const;
    [[nodiscard]] const Row* rowGiving(std::string_view text) const;

    /// What a table gives for all other values.
    [[nodiscard]] const std::optional<std::string>& defaultText() const { return defaultText_; }

  private:
    void takeTable(const Conversion& conversion);
    [[nodiscard]] double interpolated(double raw) const;
    [[nodiscard]] double interpolatedBack(double physical) const;

    Form form_ = Form::None;
    double a_ = 1;
    double b_ = 0;
    double c_ = 0;
    double d_ = 1;
    std::vector<Row> rows_;           ///< as the description has them
    std::vector<std::size_t> order_;  ///< the rows by their lower ends
    std::vector<double> highest_;     ///< the highest upper end up to there
    std::optional<std::string> defaultText_;
};

}  // namespace quillmark::python
