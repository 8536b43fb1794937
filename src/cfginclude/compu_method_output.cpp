#include "cfginclude/compu_method_output.h"

#include <cstddef>
#include <vector>

namespace quillmark {

namespace {

/// What a conversion is written as.
enum class ConversionForm { Nothing, Identity, ScaleOffset, RatFunc, CompuTab, Vtab };

/// The conversion's own table or, if it has none, that of the table it names.
const std::vector<PhTableEntry>& tableOf(const PhConversion& conversion) {
    return conversion.tableEntries.empty() && conversion.tableRef
               ? conversion.tableRef->tableEntries
               : conversion.tableEntries;
}

/// The first entry decides for the whole table.
ConversionForm tableForm(const PhConversion& conversion, const LibraryFeatures& features) {
    if (conversion.name().view().starts_with(PhConversion::kTablePrefix)) {
        return ConversionForm::Nothing;
    }
    const auto& table = tableOf(conversion);
    if (table.empty()) {
        return ConversionForm::Identity;
    }
    const PhTableEntry& first = table.front();
    if (first.lower().isReal() && first.output().isReal()) {
        return ConversionForm::CompuTab;
    }
    if (features.writeValueTables && first.lower().isInteger() && !first.text().isNull()) {
        return ConversionForm::Vtab;
    }
    return ConversionForm::Identity;
}

ConversionForm formOf(const PhConversion& conversion, const LibraryFeatures& features) {
    constexpr std::size_t kLinearCoefficients = 2;
    switch (conversion.conversionType) {
        case PhConversionType::Linear:
            return conversion.coeffs.size() < kLinearCoefficients ? ConversionForm::Identity
                                                                  : ConversionForm::ScaleOffset;
        case PhConversionType::Rational:
            return ConversionForm::RatFunc;
        case PhConversionType::Table:
        case PhConversionType::Interpolation:
            return tableForm(conversion, features);
        case PhConversionType::Undefined:
        case PhConversionType::Identity:
        case PhConversionType::Formula:
        case PhConversionType::Code:
        case PhConversionType::Scale:
            return ConversionForm::Identity;
    }
    return ConversionForm::Identity;
}

/// Linear and constant term of a polynomial, highest power first; 0 where it has none.
struct LinearTerms {
    double linear = 0;
    double constant = 0;
};

LinearTerms linearTerms(const std::vector<PhNumber>& polynomial) {
    if (polynomial.empty()) {
        return {};
    }
    if (polynomial.size() == 1) {
        return {0, polynomial[0].toReal()};
    }
    return {polynomial[0].toReal(), polynomial[1].toReal()};
}

void writeScaleOffset(CfgChild& element, double scale, double offset) {
    element.addRealValue("scale", scale);
    element.addRealValue("offset", offset);
}

/// Turns the raw-to-physical function round again, into the orientation of an A2L COEFFS line. The
/// sign undoes how the reader placed the terms: a denominator of one term came from a linear
/// function.
void writeRatFunc(CfgChild& element, const PhConversion& conversion) {
    const LinearTerms p = linearTerms(conversion.coeffs);
    const LinearTerms q = linearTerms(conversion.denominatorCoeffs);
    const double sign = conversion.denominatorCoeffs.size() < 2 ? -1.0 : 1.0;
    element.addRealValue("coeff1", 0.0);
    element.addRealValue("coeff2", -q.constant * sign);
    element.addRealValue("coeff3", p.constant * sign);
    element.addRealValue("coeff4", 0.0);
    element.addRealValue("coeff5", q.linear * sign);
    element.addRealValue("coeff6", -p.linear * sign);
}

void writeCompuTab(CfgChild& element, const PhConversion& conversion) {
    element.addIntValue("interpolate",
                        conversion.conversionType == PhConversionType::Interpolation ? 1 : 0);
    element.addChildren([&conversion](CfgChildren& rows) {
        for (const PhTableEntry& entry : tableOf(conversion)) {
            CfgChild& point = rows.add("tablepoint");
            point.addRealValue("x", entry.lower().toReal());
            point.addRealValue("y", entry.output().toReal());
        }
    });
}

void writeVtab(CfgChild& element, const PhConversion& conversion) {
    if (conversion.tableRef && !conversion.tableRef->defaultText.isNull()) {
        element.addValue("default", conversion.tableRef->defaultText.view());
    }
    element.addChildren([&conversion](CfgChildren& rows) {
        for (const PhTableEntry& entry : tableOf(conversion)) {
            CfgChild& row = rows.add("entry");
            row.addIntValue("value", entry.lower().toInteger());
            row.addValue("text", entry.text().view());
        }
    });
}

std::string_view elementName(ConversionForm form) {
    switch (form) {
        case ConversionForm::RatFunc:
            return "ratfunc";
        case ConversionForm::CompuTab:
            return "computab";
        case ConversionForm::Vtab:
            return "vtab";
        case ConversionForm::Nothing:
        case ConversionForm::Identity:
        case ConversionForm::ScaleOffset:
            break;
    }
    return "scaleoffset";
}

}  // namespace

IdentityFallbackNames::IdentityFallbackNames(const PhObjectList<PhConversion>& conversions,
                                             const LibraryFeatures& features)
    : index_(0) {
    for (const PhConversion& conversion : conversions) {
        if (formOf(conversion, features) == ConversionForm::Identity) {
            const auto position = static_cast<std::uint32_t>(names_.size());
            const std::string_view name = conversion.name().view();
            names_.push_back(conversion.name());
            index_.add(PhNameIndex::hashOf(name), position, hasName(name));
        }
    }
}

bool IdentityFallbackNames::contains(std::string_view conversionName) const {
    return index_.find(conversionName, hasName(conversionName)) != PhNameIndex::kNone;
}

void writeCompuMethod(CfgChildren& parent, const PhConversion& conversion,
                      std::string_view namePrefix, const LibraryFeatures& features) {
    const ConversionForm form = formOf(conversion, features);
    if (form == ConversionForm::Nothing) {
        return;
    }
    CfgChild& element = parent.add(elementName(form));
    element.addJoinedValue("name", {namePrefix, conversion.name().view()});
    switch (form) {
        case ConversionForm::Nothing:
            break;
        case ConversionForm::Identity:
            writeScaleOffset(element, 1.0, 0.0);
            break;
        case ConversionForm::ScaleOffset:
            writeScaleOffset(element, conversion.coeffs[0].toReal(), conversion.coeffs[1].toReal());
            break;
        case ConversionForm::RatFunc:
            writeRatFunc(element, conversion);
            break;
        case ConversionForm::CompuTab:
            writeCompuTab(element, conversion);
            break;
        case ConversionForm::Vtab:
            writeVtab(element, conversion);
            break;
    }
}

}  // namespace quillmark
