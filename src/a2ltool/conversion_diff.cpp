#include "a2ltool/conversion_diff.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace quillmark::a2ltool {
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

bool sameRows(const List<TableRow>& a, const List<TableRow>& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!sameRow(a[i], b[i])) {
            return false;
        }
    }
    return true;
}

std::string_view tableName(const Conversion& conversion) {
    const auto table = conversion.table();
    return table ? table->name() : std::string_view();
}

std::string_view unitText(const Conversion& conversion) {
    const auto unit = conversion.unit();
    return unit ? unit->displayText() : std::string_view();
}

void appendNumbers(std::string& text, const std::vector<Number>& numbers) {
    std::array<char, 32> digits{};
    char* const last = digits.data() + digits.size();
    for (const Number& number : numbers) {
        const auto end = number.isInteger() ? std::to_chars(digits.data(), last, number.integer())
                                            : std::to_chars(digits.data(), last, number.real());
        text.append(" ").append(digits.data(), end.ptr);
    }
}

}  // namespace

bool sameConversion(const Conversion& a, const Conversion& b) {
    return a.kind() == b.kind() && unitText(a) == unitText(b) && tableName(a) == tableName(b) &&
           a.defaultText() == b.defaultText() && sameNumbers(a.coefficients(), b.coefficients()) &&
           sameNumbers(a.denominatorCoefficients(), b.denominatorCoefficients()) &&
           sameRows(a.rows(), b.rows());
}

std::string shownConversion(const Conversion& conversion) {
    std::string text(textOf(conversion.kind()));
    appendNumbers(text, conversion.coefficients());
    if (const auto denominator = conversion.denominatorCoefficients(); !denominator.empty()) {
        text.append(" /");
        appendNumbers(text, denominator);
    }
    if (const std::string_view table = tableName(conversion); !table.empty()) {
        text.append(" of table ").append(table);
    }
    if (conversion.isTable()) {
        text.append(", ").append(std::to_string(conversion.rows().size())).append(" rows");
    }
    if (const auto other = conversion.defaultText()) {
        text.append(", otherwise ").append(*other);
    }
    if (const std::string_view unit = unitText(conversion); !unit.empty()) {
        text.append(", ").append(unit);
    }
    return text;
}

}  // namespace quillmark::a2ltool
