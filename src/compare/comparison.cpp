#include "compare/comparison.h"

#include <array>
#include <charconv>
#include <utility>

#include "platform/text.h"

namespace quillmark {
namespace {

std::string shownReal(double value) {
    constexpr int kSignificantDigits = 6;
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::general, kSignificantDigits);
    return {buffer.data(), result.ptr};
}

std::string shown(std::int64_t value) {
    return std::to_string(value);
}

std::string shown(bool value) {
    return value ? "true" : "false";
}

std::string shown(std::string_view value) {
    return std::string(value);
}

std::string shown(const PhValue* value) {
    return shownValue(value);
}

void showPair(const Comparison& comparison, const PairLabel& label, std::string_view oldText,
              std::string_view newText) {
    comparison.console.printLine(joined({"  ", label.shown, " = ", oldText, " # ", newText}));
}

/// Shows the pair and judges it, each as wanted. Texts are made only then.
template <typename Value>
void handlePair(const Comparison& comparison, const PairLabel& label, bool equal,
                const Value& oldValue, const Value& newValue) {
    if (equal && !comparison.verbose) {
        return;
    }
    std::string oldText = shown(oldValue);
    std::string newText = shown(newValue);
    if (comparison.verbose) {
        showPair(comparison, label, oldText, newText);
    }
    if (!equal) {
        addFinding(comparison.report, kLevelError, label.finding,
                   {label.shown, std::move(oldText), std::move(newText)});
    }
}

}  // namespace

PairLabel::PairLabel(std::string_view label) : shown(label), finding(label) {
    finding += " values are not equal";
}

void compareInt(const Comparison& comparison, const PairLabel& label, std::int64_t oldValue,
                std::int64_t newValue) {
    handlePair(comparison, label, oldValue == newValue, oldValue, newValue);
}

void compareBool(const Comparison& comparison, const PairLabel& label, bool oldValue,
                 bool newValue) {
    handlePair(comparison, label, oldValue == newValue, oldValue, newValue);
}

void compareText(const Comparison& comparison, const PairLabel& label, std::string_view oldValue,
                 std::string_view newValue) {
    handlePair(comparison, label, oldValue == newValue, oldValue, newValue);
}

void compareValue(const Comparison& comparison, const PairLabel& label, const PhValue* oldValue,
                  const PhValue* newValue) {
    handlePair(comparison, label, equalValues(oldValue, newValue), oldValue, newValue);
}

bool checkPresent(CompareReport& report, bool inOld, bool inNew, std::string_view label) {
    if (inOld != inNew) {
        const std::string_view lacks = inOld ? "module2" : "module1";
        const auto textOf = [](bool present) { return std::string(present ? kPresent : kAbsent); };
        addFinding(report, kLevelError, joined({lacks, " does not contain ", label}),
                   {std::string(label), textOf(inOld), textOf(inNew)});
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
