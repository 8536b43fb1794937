#include "library/conversion_diff.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <vector>

namespace quillmark {
namespace {

/// An integer and a real are different numbers, as everywhere.
bool sameNumber(const Number& a, const Number& b) {
    return a.isPresent() == b.isPresent() && a.isInteger() == b.isInteger() &&
           (a.isInteger() ? a.integer() == b.integer() : a.real() == b.real());
}

bool sameNumbers(const std::vector<Number>& a, const std::vector<Number>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), &sameNumber);
}

bool sameRow(const TableRow& a, const TableRow& b) {
    return sameNumber(a.lower(), b.lower()) && sameNumber(a.upper(), b.upper()) &&
           sameNumber(a.output(), b.output()) && a.text() == b.text();
}

std::optional<std::string> tableName(const Conversion& conversion) {
    const auto table = conversion.table();
    return table ? std::optional(shownName(*table)) : std::nullopt;
}

std::string_view unitText(const Conversion& conversion) {
    const auto unit = conversion.unit();
    return unit ? unit->displayText() : std::string_view();
}

/// Shown so that a real differs from an integer of the same value.
std::string shownNumber(const Number& number) {
    std::array<char, 32> digits{};
    char* const last = digits.data() + digits.size();
    if (number.isInteger()) {
        return {digits.data(), std::to_chars(digits.data(), last, number.integer()).ptr};
    }
    std::string text(digits.data(), std::to_chars(digits.data(), last, number.real()).ptr);
    return text.find_first_of(".einf") == std::string::npos ? text.append(".0") : text;
}

void appendNumbers(std::string& text, const std::vector<Number>& numbers) {
    for (const Number& number : numbers) {
        text.append(" ").append(shownNumber(number));
    }
}

std::string shownRow(const TableRow& row) {
    std::string text = shownNumber(row.lower());
    if (!sameNumber(row.lower(), row.upper())) {
        text.append("..").append(shownNumber(row.upper()));
    }
    const auto output = row.text();
    return text.append(" = ").append(output ? *output : shownNumber(row.output()));
}

void appendRows(std::string& text, const List<TableRow>& rows, std::optional<std::size_t> shown) {
    text.append(", ")
        .append(std::to_string(rows.size()))
        .append(rows.size() == 1 ? " row" : " rows");
    if (shown && *shown < rows.size()) {
        text.append(", ").append(shownRow(rows[*shown]));
    }
}

}  // namespace

bool sameConversion(const Conversion& a, const Conversion& b) {
    return a.kind() == b.kind() && unitText(a) == unitText(b) && tableName(a) == tableName(b) &&
           a.defaultText() == b.defaultText() && a.formula() == b.formula() &&
           a.inverseFormula() == b.inverseFormula() &&
           sameNumbers(a.coefficients(), b.coefficients()) &&
           sameNumbers(a.denominatorCoefficients(), b.denominatorCoefficients()) &&
           !firstDifferentRow(a, b);
}

std::optional<std::size_t> firstDifferentRow(const Conversion& a, const Conversion& b) {
    const List<TableRow> rows = a.rows();
    const List<TableRow> others = b.rows();
    const auto [row, other] =
        std::mismatch(rows.begin(), rows.end(), others.begin(), others.end(), &sameRow);
    if (row == rows.end() && other == others.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(std::distance(rows.begin(), row));
}

std::string shownConversion(const Conversion& conversion, std::optional<std::size_t> row) {
    std::string text(textOf(conversion.kind()));
    appendNumbers(text, conversion.coefficients());
    if (const auto denominator = conversion.denominatorCoefficients(); !denominator.empty()) {
        text.append(" /");
        appendNumbers(text, denominator);
    }
    if (const auto table = tableName(conversion)) {
        text.append(" of table ").append(*table);
    }
    if (conversion.isTable()) {
        appendRows(text, conversion.rows(), row);
    }
    if (const std::string_view formula = conversion.formula(); !formula.empty()) {
        text.append(" ").append(formula);
    }
    if (const std::string_view inverse = conversion.inverseFormula(); !inverse.empty()) {
        text.append(", back ").append(inverse);
    }
    if (const auto other = conversion.defaultText()) {
        text.append(", otherwise ").append(*other);
    }
    if (const std::string_view unit = unitText(conversion); !unit.empty()) {
        text.append(", ").append(unit);
    }
    return text;
}

std::string shownName(const Conversion& conversion) {
    std::string name(conversion.name());
    return conversion.isDefined() ? name : name.append(" (not defined)");
}

}  // namespace quillmark
