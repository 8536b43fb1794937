// How raw values become physical ones: COMPU_METHOD, its tables, UNIT.

#include <algorithm>
#include <array>

#include "a2l/ph_a2l.h"
#include "a2l/reader/enumeration_parameter.h"

namespace quillmark {

using namespace kw::core;
using Rule = OptionalRule<PhA2l, PhConversion>;

namespace {

void appendIfPresent(std::vector<PhNumber>& list, const PhNumber& value) {
    if (value.isPresent()) {
        list.push_back(value);
    }
}

/// Stores the inverse of raw = (a p^2 + b p + c) / (d p^2 + e p + f) where it is a
/// linear-fractional function; says whether it is. A missing coefficient is left out of its list.
bool storeInverse(PhConversion& conversion, const std::array<PhNumber, 6>& coefficients) {
    const auto& [a, b, c, d, e, f] = coefficients;
    auto& numerator = conversion.coeffs;
    auto& denominator = conversion.denominatorCoeffs;
    numerator.clear();
    denominator.clear();
    if (!a.isZero() || !d.isZero()) {
        return false;
    }
    if (e.isZero()) {  // raw = (b p + c) / f
        appendIfPresent(numerator, f);
        appendIfPresent(numerator, c.negated());
        appendIfPresent(denominator, b);
        return true;
    }
    if (b.isZero()) {  // raw = c / (e p + f)
        appendIfPresent(numerator, f.negated());
        appendIfPresent(numerator, c);
        denominator = {e, PhNumber::integer(0)};
        return true;
    }
    if (f.isZero()) {  // raw = (b p + c) / (e p)
        appendIfPresent(numerator, c);
        denominator = {e, b.negated()};
        return true;
    }
    return false;
}

/// An input value of a verbal table: a real is rounded up from its half.
PhNumber verbalInput(const PhNumber& value) {
    return value.isReal() ? PhNumber::integer(saturatedInteger(value.toReal() + 0.5)) : value;
}

}  // namespace

int PhA2l::parseCompuMethod(PhGroup& module) {
    static constexpr WordRow<PhConversionType> kKinds[] = {
        {kw::word::IDENTICAL, {}, PhConversionType::Identity},
        {kw::word::LINEAR, {}, PhConversionType::Linear},
        {kw::word::RAT_FUNC, {}, PhConversionType::Rational},
        {kw::word::TAB_INTP, {}, PhConversionType::Interpolation},
        {kw::word::TAB_NOINTP, {}, PhConversionType::Table},
        {kw::word::TAB_VERB, {}, PhConversionType::Table},
        {kw::word::FORM, {}, PhConversionType::Formula},
    };
    static constexpr Rule kRules[] = {
        {Form::Bare, COEFFS, &PhA2l::parseCoeffs},
        {Form::Bare, COEFFS_LINEAR, &PhA2l::parseCoeffsLinear},
        {Form::Bare, COMPU_TAB_REF, &PhA2l::parseCompuTabRef},
        {Form::Bare, REF_UNIT, &PhA2l::parseRefUnit},
        {Form::Bare, STATUS_STRING_REF, nullptr, 1},
        {Form::Block, FORMULA, &PhA2l::parseFormula},
    };
    const auto conversion = defineNext<PhConversion>();
    readLongIdentifier(*conversion);
    traceBlock("Parse COMPU_METHOD '%s'\n", *conversion);
    keep(conversion->conversionType, readChoice(*this, kKinds));
    nextWord();  // the display format
    if (nextWord() != TOK_STRING) {
        return fail("String expected (Unit)");
    }
    conversion->unit = inlineUnit(token().text);
    keepIn(module.conversions, conversion);
    const int kind = readOptionals(*this, kRules, *conversion, next());
    return kind == END ? closeBlock(COMPU_METHOD) : kind;
}

PhHandle<PhUnit> PhA2l::inlineUnit(std::string_view text) {
    // Thousands of methods share some dozens of units.
    if (PhUnit* known = inlineUnits_.find(text)) {
        return PhHandle<PhUnit>(known);
    }
    auto unit = makePh<PhUnit>();
    unit->setName(PhString(text));
    unit->setDisplayText(unit->name());
    inlineUnits_.append(unit);
    return unit;
}

int PhA2l::parseCoeffs(PhConversion& conversion) {
    std::array<PhNumber, 6> coefficients;
    for (PhNumber& coefficient : coefficients) {
        coefficient = readNumberValue();
    }
    commit([&] {
        if (!storeInverse(conversion, coefficients)) {
            warning("Unable to compute inverse function in conversion '%s'",
                    {conversion.name().view()});
        }
    });
    return next();
}

int PhA2l::parseCoeffsLinear(PhConversion& conversion) {
    appendIfPresent(conversion.coeffs, readNumberValue());
    appendIfPresent(conversion.coeffs, readNumberValue());
    return next();
}

int PhA2l::parseRefUnit(PhConversion& conversion) {
    const PhString name = readIdentifier();
    keep(conversion.unit, references_->refer<PhUnit>(name.view()));
    return next();
}

int PhA2l::parseCompuTabRef(PhConversion& conversion) {
    const PhString name(PhConversion::kTablePrefix, readIdentifier().view());
    auto table = references_->refer<PhConversion>(name.view());
    if (table.get() != &conversion) {
        keep(conversion.tableRef, std::move(table));
    }
    return next();
}

int PhA2l::parseFormula(PhConversion&) {
    int kind = next();
    if (kind == TOK_STRING) {
        kind = next();
    }
    while (kind == FORMULA_INV) {
        kind = drop(1);
    }
    return kind == END ? closeBlock(FORMULA) : unexpectedToken(kind);
}

int PhA2l::parseCompuTab(PhGroup& module) {
    static constexpr WordRow<PhConversionType> kKinds[] = {
        {kw::word::TAB_INTP, {}, PhConversionType::Interpolation},
        {kw::word::TAB_NOINTP, {}, PhConversionType::Table},
    };
    static constexpr Rule kRules[] = {
        {Form::Bare, DEFAULT_VALUE, &PhA2l::parseDefaultValue},
        {Form::Bare, DEFAULT_VALUE_NUMERIC, nullptr, 1},
    };
    const auto table = startTable("Parse COMPU_TAB '%s'\n");
    keep(table->conversionType, readChoice(*this, kKinds, PhConversionType::Table));
    keepIn(module.conversions, table);
    for (std::int32_t left = readElementCount(*table); left > 0 && !failed(); --left) {
        const PhNumber input = readTableNumber();
        keepEntry(*table, {input, input, readTableNumber()});
    }
    const int kind = readOptionals(*this, kRules, *table, next());
    return kind == END ? closeBlock(COMPU_TAB) : kind;
}

int PhA2l::parseCompuVtab(PhGroup& module) {
    static constexpr WordRow<PhConversionType> kKinds[] = {
        {kw::word::TAB_VERB, {}, PhConversionType::Table},
    };
    const auto table = startTable("Parse COMPU_VTAB '%s'\n");
    keep(table->conversionType, readChoice(*this, kKinds, PhConversionType::Table));
    keepIn(module.conversions, table);
    for (std::int32_t left = readElementCount(*table); left > 0 && !failed(); --left) {
        const PhNumber input = verbalInput(readTableNumber());
        keepEntry(*table, {input, input, readTableText()});
    }
    return closeVerbalTable(*table, COMPU_VTAB);
}

int PhA2l::parseCompuVtabRange(PhGroup& module) {
    const auto table = startTable("Parse COMPU_VTAB_RANGE '%s'\n");
    table->conversionType = PhConversionType::Table;
    keepIn(module.conversions, table);
    for (std::int32_t left = readElementCount(*table); left > 0 && !failed(); --left) {
        const PhNumber lower = readTableNumber();
        const PhNumber upper = readTableNumber();
        keepEntry(*table, {lower, upper, readTableText()});
    }
    return closeVerbalTable(*table, COMPU_VTAB_RANGE);
}

PhHandle<PhConversion> PhA2l::startTable(std::string_view traceFormat) {
    const PhString name = readIdentifier();
    auto table =
        references_->define<PhConversion>(PhString(PhConversion::kTablePrefix, name.view()).view());
    readLongIdentifier(*table);
    traceText(traceFormat, name);
    return table;
}

std::int32_t PhA2l::readElementCount(PhConversion& table) {
    constexpr std::int32_t kMostAtOnce = 500;  // a file may promise more than it holds
    if (next() != TOK_INTEGER) {
        fail("Integer value (element count) expected");
        return 0;
    }
    const std::int32_t count = std::max(token().intValue, 0);
    table.tableEntries.reserve(static_cast<std::size_t>(std::min(count, kMostAtOnce)));
    return count;
}

PhNumber PhA2l::readTableNumber() {
    switch (next()) {
        case TOK_INTEGER:
            return PhNumber::integer(token().intValue);
        case TOK_FLOAT:
            return PhNumber::real(token().floatValue);
        default:
            fail("Double or integer value expected");
            return {};
    }
}

PhString PhA2l::readTableText() {
    if (next() != TOK_STRING) {
        fail("String value expected");
        return {};
    }
    return texts_.share(token().text);
}

void PhA2l::keepEntry(PhConversion& table, PhTableEntry entry) {
    commit([&] { table.tableEntries.push_back(std::move(entry)); });
}

int PhA2l::parseDefaultValue(PhConversion& table) {
    keep(table.defaultText, readString());
    return next();
}

int PhA2l::parseVerbalDefaultValue(PhConversion& table) {
    keep(table.defaultText, readString());
    if (traceDefaultValues()) {
        trace("T_DEFAULT_VALUE: '%s'\n", {table.defaultText.view()});
    }
    return next();
}

int PhA2l::closeVerbalTable(PhConversion& table, int keyword) {
    static constexpr Rule kRules[] = {
        {Form::Bare, DEFAULT_VALUE, &PhA2l::parseVerbalDefaultValue},
    };
    const int kind = readOptionals(*this, kRules, table, next());
    return kind == END ? closeBlock(keyword) : kind;
}

int PhA2l::parseUnit(PhGroup& module) {
    static constexpr OptionalRule<PhA2l, PhUnit> kRules[] = {
        {Form::Bare, SI_EXPONENTS, nullptr, 7},
        {Form::Bare, REF_UNIT, nullptr, 1},
        {Form::Bare, UNIT_REF, nullptr, 1},
        {Form::Bare, UNIT_CONVERSION, nullptr, 2},
    };
    constexpr int kKindWords = 1;  // DERIVED or EXTENDED_SI
    const auto unit = defineNext<PhUnit>();
    readLongIdentifier(*unit);
    traceBlock("Parse UNIT '%s'\n", *unit);
    const PhString displayText = readString();
    commit([&] { unit->setDisplayText(displayText); });
    keepIn(module.units, unit);
    const int kind = readOptionals(*this, kRules, *unit, drop(kKindWords));
    return kind == END ? closeBlock(UNIT) : kind;
}

}  // namespace quillmark
