#include "signal_columns.h"

namespace quillmark::python {
namespace {

std::optional<double> realIfAny(const Number& number) {
    return number.isPresent() ? std::optional(number.real()) : std::nullopt;
}

}  // namespace

void CategoryColumn::add(std::string_view text) {
    std::int32_t code = -1;
    if (!text.empty()) {
        const auto next = static_cast<std::int32_t>(texts_.size());
        const auto [known, isNew] = codeOf_.try_emplace(text, next);
        if (isNew) {
            texts_.push_back(text);
        }
        code = known->second;
    }
    codes_.push_back(code);
}

SignalColumns::SignalColumns(const Description& description) {
    for (const Project project : description.projects()) {
        for (const Module each : project.modules()) {
            for (const Signal signal : each.signals()) {
                add(each, signal);
            }
        }
    }
}

void SignalColumns::add(const Module& ofModule, const Signal& signal) {
    module.add(ofModule.name());
    name.push_back(signal.name());
    kind.add(textOf(signal.kind()));
    address.add(signal.address());
    addressExtension.add(signal.addressExtension());
    baseType.add(textOf(signal.baseType()));
    sizeBits.push_back(signal.sizeBits());
    byteOrder.add(textOf(signal.byteOrder()));
    bitMask.add(signal.bitMask());
    lowerLimit.add(realIfAny(signal.lowerLimit()));
    upperLimit.add(realIfAny(signal.upperLimit()));
    const auto signalConversion = signal.conversion();
    conversion.add(signalConversion ? signalConversion->name() : std::string_view());
    unitText.add(signal.unitText());
}

}  // namespace quillmark::python
