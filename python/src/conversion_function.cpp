#include "conversion_function.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace quillmark::python {
namespace {

/// Linear and constant term of a polynomial, highest power first.
struct LinearTerms {
    double linear = 0;
    double constant = 0;
};

LinearTerms linearTerms(const std::vector<Number>& polynomial) {
    if (polynomial.empty()) {
        return {};
    }
    if (polynomial.size() == 1) {
        return {0, polynomial[0].real()};
    }
    return {polynomial[0].real(), polynomial[1].real()};
}

/// The value at `x` of the straight line through two points, exactly theirs at both.
double onLine(double x, double x0, double y0, double x1, double y1) {
    if (x == x1) {
        return y1;
    }
    return x == x0 ? y0 : y0 + (x - x0) * (y1 - y0) / (x1 - x0);
}

}  // namespace

ConversionFunction::ConversionFunction(const Conversion& conversion) {
    constexpr std::size_t kLinearCoefficients = 2;
    switch (conversion.kind()) {
        case ConversionKind::Identity:
            form_ = Form::Identity;
            break;
        case ConversionKind::Linear:
            if (const auto terms = conversion.coefficients(); terms.size() >= kLinearCoefficients) {
                form_ = Form::Fraction;
                a_ = terms[0].real();
                b_ = terms[1].real();
            }
            break;
        case ConversionKind::Rational: {
            const auto below = conversion.denominatorCoefficients();
            const LinearTerms numerator = linearTerms(conversion.coefficients());
            const LinearTerms denominator = linearTerms(below);
            form_ = below.empty() ? Form::None : Form::Fraction;
            a_ = numerator.linear;
            b_ = numerator.constant;
            c_ = denominator.linear;
            d_ = denominator.constant;
            break;
        }
        case ConversionKind::Table:
        case ConversionKind::InterpolatedTable:
            takeTable(conversion);
            break;
        case ConversionKind::Undefined:
        case ConversionKind::Formula:
            break;
    }
}

void ConversionFunction::takeTable(const Conversion& conversion) {
    const Conversion table =
        conversion.rows().empty() ? conversion.table().value_or(conversion) : conversion;
    for (const TableRow row : table.rows()) {
        rows_.push_back(
            {row.lower(), row.upper(), row.output(), std::string(row.text().value_or(""))});
    }
    if (rows_.empty()) {
        return;
    }
    if (const auto text = table.defaultText()) {
        defaultText_ = *text;
    }
    const bool hasTexts = table.rows()[0].text().has_value();
    const bool isInterpolated = conversion.kind() == ConversionKind::InterpolatedTable;
    form_ = hasTexts ? Form::Texts : isInterpolated ? Form::Interpolated : Form::Numbers;

    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::stable_sort(order_.begin(), order_.end(), [this](std::size_t left, std::size_t right) {
        return rows_[left].lower.real() < rows_[right].lower.real();
    });
    double highest = -std::numeric_limits<double>::infinity();
    for (const std::size_t index : order_) {
        highest = std::max(highest, rows_[index].upper.real());
        highest_.push_back(highest);
    }
}

double ConversionFunction::physical(double raw) const {
    return form_ == Form::Interpolated ? interpolated(raw) : (a_ * raw + b_) / (c_ * raw + d_);
}

double ConversionFunction::raw(double physical) const {
    return form_ == Form::Interpolated ? interpolatedBack(physical)
                                       : (d_ * physical - b_) / (a_ - c_ * physical);
}

const ConversionFunction::Row* ConversionFunction::rowOf(double raw) const {
    const auto behind = std::upper_bound(
        order_.begin(), order_.end(), raw,
        [this](double value, std::size_t index) { return value < rows_[index].lower.real(); });
    const Row* found = nullptr;
    for (auto at = static_cast<std::size_t>(behind - order_.begin());
         at-- > 0 && highest_[at] >= raw;) {
        const Row& row = rows_[order_[at]];
        if (found != nullptr && row.lower.real() != found->lower.real()) {
            break;
        }
        if (raw <= row.upper.real()) {
            found = &row;
        }
    }
    return found;
}

const ConversionFunction::Row* ConversionFunction::rowGiving(double physical) const {
    const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const Row& candidate) {
        return candidate.output.isPresent() && candidate.output.real() == physical;
    });
    return row == rows_.end() ? nullptr : &*row;
}

const ConversionFunction::Row* ConversionFunction::rowGiving(std::string_view text) const {
    const auto row = std::find_if(rows_.begin(), rows_.end(),
                                  [&](const Row& candidate) { return candidate.text == text; });
    return row == rows_.end() ? nullptr : &*row;
}

double ConversionFunction::interpolated(double raw) const {
    const Row& first = rows_[order_.front()];
    const Row& last = rows_[order_.back()];
    if (std::isnan(raw)) {
        return kNoNumber;
    }
    if (raw < first.lower.real()) {
        return defaultText_ ? kNoNumber : first.output.real();
    }
    if (raw >= last.lower.real()) {
        return defaultText_ && raw > last.lower.real() ? kNoNumber : last.output.real();
    }
    const auto behind = std::upper_bound(
        order_.begin(), order_.end(), raw,
        [this](double value, std::size_t index) { return value < rows_[index].lower.real(); });
    const Row& left = rows_[*(behind - 1)];
    const Row& right = rows_[*behind];
    return onLine(raw, left.lower.real(), left.output.real(), right.lower.real(),
                  right.output.real());
}

double ConversionFunction::interpolatedBack(double physical) const {
    for (std::size_t i = 0; i < order_.size(); ++i) {
        const Row& left = rows_[order_[i]];
        if (left.output.real() == physical) {
            return left.lower.real();
        }
        if (i + 1 == order_.size()) {
            break;
        }
        const Row& right = rows_[order_[i + 1]];
        const double y0 = left.output.real();
        const double y1 = right.output.real();
        if ((y0 < physical && physical < y1) || (y1 < physical && physical < y0)) {
            return onLine(physical, y0, left.lower.real(), y1, right.lower.real());
        }
    }
    return kNoNumber;
}

}  // namespace quillmark::python
