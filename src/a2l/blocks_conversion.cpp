// How raw values become physical ones: COMPU_METHOD, its tables, UNIT.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "a2l/core_blocks.h"
#include "a2l/reader/enumeration_parameter.h"

namespace quillmark {

namespace {

using namespace kw::core;

using ConversionRule = CoreRule<PhConversion>;

// --- COMPU_METHOD --------------------------------------------------------------------------------

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

int parseCoeffs(CoreReader& reader, PhConversion& conversion) {
    std::array<PhNumber, 6> coefficients;
    for (PhNumber& coefficient : coefficients) {
        coefficient = reader.readNumberValue();
    }
    reader.commit([&] {
        if (!storeInverse(conversion, coefficients)) {
            reader.warning("Unable to compute inverse function in conversion '%s'",
                           {conversion.name().view()});
        }
    });
    return reader.next();
}

int parseCoeffsLinear(CoreReader& reader, PhConversion& conversion) {
    appendIfPresent(conversion.coeffs, reader.readNumberValue());
    appendIfPresent(conversion.coeffs, reader.readNumberValue());
    return reader.next();
}

int parseRefUnit(CoreReader& reader, PhConversion& conversion) {
    const PhString name = reader.readIdentifier();
    reader.keep(conversion.unit, reader.refer<PhUnit>(name.view()));
    return reader.next();
}

int parseCompuTabRef(CoreReader& reader, PhConversion& conversion) {
    const PhString name(PhConversion::kTablePrefix, reader.readIdentifier().view());
    auto table = reader.refer<PhConversion>(name.view());
    if (table.get() != &conversion) {
        reader.keep(conversion.tableRef, std::move(table));
    }
    return reader.next();
}

/// Keeps the last token, if it is a text.
void keepText(CoreReader& reader, PhConversion& conversion, PhString PhConversion::Texts::*which,
              int kind) {
    if (kind == TOK_STRING && reader.parts().formats) {
        reader.commit([&] { conversion.texts().*which = PhString(reader.token().text); });
    }
}

int parseFormula(CoreReader& reader, PhConversion& conversion) {
    int kind = reader.next();
    if (kind == TOK_STRING) {
        keepText(reader, conversion, &PhConversion::Texts::formula, kind);
        kind = reader.next();
    }
    while (kind == FORMULA_INV) {
        keepText(reader, conversion, &PhConversion::Texts::inverseFormula, reader.next());
        kind = reader.next();
    }
    return kind == END ? reader.closeBlock(FORMULA) : reader.unexpectedToken(kind);
}

void readFormat(CoreReader& reader, PhConversion& conversion) {
    const PhString format = reader.readFormat();
    if (!format.isNull()) {
        reader.commit([&] { conversion.texts().displayFormat = format; });
    }
}

// --- Tables --------------------------------------------------------------------------------------

/// An input value of a verbal table: a real is rounded up from its half.
PhNumber verbalInput(const PhNumber& value) {
    return value.isReal() ? PhNumber::integer(saturatedInteger(value.toReal() + 0.5)) : value;
}

PhHandle<PhConversion> startTable(CoreReader& reader, std::string_view traceFormat) {
    const PhString name = reader.readIdentifier();
    auto table = reader.references().define<PhConversion>(
        PhString(PhConversion::kTablePrefix, name.view()).view());
    reader.readLongIdentifier(*table);
    reader.traceBlock(traceFormat, name);
    return table;
}

std::int32_t readElementCount(CoreReader& reader, PhConversion& table) {
    constexpr std::int32_t kMostAtOnce = 500;  // a file may promise more than it holds
    if (reader.next() != TOK_INTEGER) {
        reader.fail("Integer value (element count) expected");
        return 0;
    }
    const std::int32_t count = std::max(reader.token().intValue, 0);
    table.tableEntries.reserve(static_cast<std::size_t>(std::min(count, kMostAtOnce)));
    return count;
}

PhNumber readTableNumber(CoreReader& reader) {
    const PhNumber number = reader.number(reader.next());
    if (!number.isPresent()) {
        reader.fail("Double or integer value expected");
    }
    return number;
}

PhString readTableText(CoreReader& reader) {
    if (reader.next() != TOK_STRING) {
        reader.fail("String value expected");
        return {};
    }
    return reader.shareText(reader.token().text);
}

void keepEntry(CoreReader& reader, PhConversion& table, PhTableEntry entry) {
    if (reader.parts().signals) {
        reader.commit([&] { table.tableEntries.push_back(std::move(entry)); });
    }
}

int parseDefaultValue(CoreReader& reader, PhConversion& table) {
    reader.keep(table.defaultText, reader.readString());
    return reader.next();
}

int parseVerbalDefaultValue(CoreReader& reader, PhConversion& table) {
    reader.keep(table.defaultText, reader.readString());
    if (reader.traceDefaultValues()) {
        reader.trace("T_DEFAULT_VALUE: '%s'\n", {table.defaultText.view()});
    }
    return reader.next();
}

int closeVerbalTable(CoreReader& reader, PhConversion& table, int keyword) {
    static constexpr ConversionRule kRules[] = {
        bare(DEFAULT_VALUE, parseVerbalDefaultValue),
    };
    return readParts(reader, kRules, table, keyword, reader.next());
}

}  // namespace

int parseCompuMethod(CoreReader& reader, PhGroup& module) {
    static constexpr WordRow<PhConversionType> kKinds[] = {
        {kw::word::IDENTICAL, PhConversionType::Identity},
        {kw::word::LINEAR, PhConversionType::Linear},
        {kw::word::RAT_FUNC, PhConversionType::Rational},
        {kw::word::TAB_INTP, PhConversionType::Interpolation},
        {kw::word::TAB_NOINTP, PhConversionType::Table},
        {kw::word::TAB_VERB, PhConversionType::Table},
        {kw::word::FORM, PhConversionType::Formula},
    };
    static constexpr ConversionRule kRules[] = {
        bare(COEFFS, parseCoeffs),
        bare(COEFFS_LINEAR, parseCoeffsLinear),
        bare(COMPU_TAB_REF, parseCompuTabRef),
        bare(REF_UNIT, parseRefUnit),
        skipped(STATUS_STRING_REF, 1),
        block(FORMULA, parseFormula),
    };
    const auto conversion = reader.defineNext<PhConversion>();
    reader.readLongIdentifier(*conversion);
    reader.traceBlock("Parse COMPU_METHOD '%s'\n", conversion->name());
    reader.keep(conversion->conversionType, readChoice(reader, kKinds));
    readFormat(reader, *conversion);
    if (reader.nextWord() != TOK_STRING) {
        return reader.fail("String expected (Unit)");
    }
    conversion->unit = reader.inlineUnit(reader.token().text);
    reader.keepDescribed(module.conversions, conversion);
    return readParts(reader, kRules, *conversion, COMPU_METHOD, reader.next());
}

int parseCompuTab(CoreReader& reader, PhGroup& module) {
    static constexpr WordRow<PhConversionType> kKinds[] = {
        {kw::word::TAB_INTP, PhConversionType::Interpolation},
        {kw::word::TAB_NOINTP, PhConversionType::Table},
    };
    static constexpr ConversionRule kRules[] = {
        bare(DEFAULT_VALUE, parseDefaultValue),
        skipped(DEFAULT_VALUE_NUMERIC, 1),
    };
    const auto table = startTable(reader, "Parse COMPU_TAB '%s'\n");
    reader.keep(table->conversionType, readChoice(reader, kKinds, PhConversionType::Table));
    reader.keepDescribed(module.conversions, table);
    for (std::int32_t left = readElementCount(reader, *table); left > 0 && !reader.failed();
         --left) {
        const PhNumber input = readTableNumber(reader);
        keepEntry(reader, *table, {input, input, readTableNumber(reader)});
    }
    return readParts(reader, kRules, *table, COMPU_TAB, reader.next());
}

int parseCompuVtab(CoreReader& reader, PhGroup& module) {
    static constexpr WordRow<PhConversionType> kKinds[] = {
        {kw::word::TAB_VERB, PhConversionType::Table},
    };
    const auto table = startTable(reader, "Parse COMPU_VTAB '%s'\n");
    reader.keep(table->conversionType, readChoice(reader, kKinds, PhConversionType::Table));
    reader.keepDescribed(module.conversions, table);
    for (std::int32_t left = readElementCount(reader, *table); left > 0 && !reader.failed();
         --left) {
        const PhNumber input = verbalInput(readTableNumber(reader));
        keepEntry(reader, *table, {input, input, readTableText(reader)});
    }
    return closeVerbalTable(reader, *table, COMPU_VTAB);
}

int parseCompuVtabRange(CoreReader& reader, PhGroup& module) {
    const auto table = startTable(reader, "Parse COMPU_VTAB_RANGE '%s'\n");
    table->conversionType = PhConversionType::Table;
    reader.keepDescribed(module.conversions, table);
    for (std::int32_t left = readElementCount(reader, *table); left > 0 && !reader.failed();
         --left) {
        const PhNumber lower = readTableNumber(reader);
        const PhNumber upper = readTableNumber(reader);
        keepEntry(reader, *table, {lower, upper, readTableText(reader)});
    }
    return closeVerbalTable(reader, *table, COMPU_VTAB_RANGE);
}

int parseUnit(CoreReader& reader, PhGroup& module) {
    static constexpr CoreRule<PhUnit> kRules[] = {
        skipped(SI_EXPONENTS, 7),
        skipped(REF_UNIT, 1),
        skipped(UNIT_REF, 1),
        skipped(UNIT_CONVERSION, 2),
    };
    constexpr int kKindWords = 1;  // DERIVED or EXTENDED_SI
    const auto unit = reader.defineNext<PhUnit>();
    reader.readLongIdentifier(*unit);
    reader.traceBlock("Parse UNIT '%s'\n", unit->name());
    const PhString displayText = reader.readString();
    reader.commit([&] { unit->setDisplayText(displayText); });
    reader.keepDescribed(module.units, unit);
    return readParts(reader, kRules, *unit, UNIT, reader.drop(kKindWords));
}

}  // namespace quillmark
