#include "compare/comparison.h"

#include <array>
#include <charconv>

namespace quillmark {
namespace {

std::string shownReal(double value) {
    constexpr int kSignificantDigits = 6;
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::general, kSignificantDigits);
    return {buffer.data(), result.ptr};
}

void showPair(const Comparison& comparison, const PairLabel& label, std::string_view oldText,
              std::string_view newText) {
    std::string line = "  ";
    line.append(label.shown).append(" = ").append(oldText).append(" # ").append(newText);
    comparison.console.printLine(line);
}

void judge(const Comparison& comparison, const PairLabel& label, bool equal) {
    if (!equal) {
        addFinding(comparison.report, kLevelError, label.finding);
    }
}

std::string_view shownBool(bool value) {
    return value ? "true" : "false";
}

}  // namespace

PairLabel::PairLabel(std::string_view label) : shown(label), finding(label) {
    finding += " values are not equal";
}

void compareInt(const Comparison& comparison, const PairLabel& label, std::int64_t oldValue,
                std::int64_t newValue) {
    if (comparison.verbose) {
        showPair(comparison, label, std::to_string(oldValue), std::to_string(newValue));
    }
    judge(comparison, label, oldValue == newValue);
}

void compareBool(const Comparison& comparison, const PairLabel& label, bool oldValue,
                 bool newValue) {
    if (comparison.verbose) {
        showPair(comparison, label, shownBool(oldValue), shownBool(newValue));
    }
    judge(comparison, label, oldValue == newValue);
}

void compareText(const Comparison& comparison, const PairLabel& label, std::string_view oldValue,
                 std::string_view newValue) {
    if (comparison.verbose) {
        showPair(comparison, label, oldValue, newValue);
    }
    judge(comparison, label, oldValue == newValue);
}

void compareValue(const Comparison& comparison, const PairLabel& label, const PhValue* oldValue,
                  const PhValue* newValue) {
    if (comparison.verbose) {
        showPair(comparison, label, shownValue(oldValue), shownValue(newValue));
    }
    judge(comparison, label, equalValues(oldValue, newValue));
}

bool checkPresent(CompareReport& report, bool inOld, bool inNew, std::string_view label) {
    if (inOld != inNew) {
        std::string message = inOld ? "module2 does not contain " : "module1 does not contain ";
        addFinding(report, kLevelError, message.append(label));
    }
    return inOld && inNew;
}

std::string shownValue(const PhValue* value) {
    if (value == nullptr) {
        return "NULL";
    }
    switch (value->type()) {
        case PhValue::Type::Integer:
            return std::to_string(value->number().exactInteger());
        case PhValue::Type::Real:
            return shownReal(value->number().toReal());
        case PhValue::Type::Text:
            return std::string(value->text().view());
        case PhValue::Type::None:
        case PhValue::Type::List:
        case PhValue::Type::Bytes:
            break;
    }
    return "<unkown>";  // spelled so in every report so far
}

}  // namespace quillmark
