#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "compare/compare_report.h"
#include "model/ph_value.h"
#include "platform/console.h"

namespace quillmark {

/// One running comparison of an old description with a new one: where its findings go, and where
/// the compared pairs are shown when it is verbose.
struct Comparison {
    CompareReport& report;
    bool verbose;
    Console& console;
};

/// What a compared pair is called: `shown` in its verbose line, `finding` when its values differ.
struct PairLabel {
    /// The usual finding: the label and " values are not equal".
    explicit PairLabel(std::string_view label);
    PairLabel(std::string_view shownLabel, std::string_view findingText)
        : shown(shownLabel), finding(findingText) {}

    std::string shown;
    std::string finding;
};

/// The primitives. Each shows its pair if the comparison is verbose, as "  label = old # new" with
/// the old value first, and adds a finding if the values are not equal.

/// Shown in decimal.
void compareInt(const Comparison& comparison, const PairLabel& label, std::int64_t oldValue,
                std::int64_t newValue);

/// Shown as true or false.
void compareBool(const Comparison& comparison, const PairLabel& label, bool oldValue,
                 bool newValue);

/// Equal as exact bytes.
void compareText(const Comparison& comparison, const PairLabel& label, std::string_view oldValue,
                 std::string_view newValue);

/// Either value may be absent (nullptr). Equal under equalValues(): an integer and a real never
/// are.
void compareValue(const Comparison& comparison, const PairLabel& label, const PhValue* oldValue,
                  const PhValue* newValue);

/// Whether both modules have an item; adds a finding if only one has.
bool checkPresent(CompareReport& report, bool inOld, bool inNew, std::string_view label);

/// A value as a verbose line shows it: its integer, its real with six significant digits, or its
/// text; "NULL" for an absent value and "<unkown>" for one without a scalar content.
std::string shownValue(const PhValue* value);

}  // namespace quillmark
