#include "library/shown_signal.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace quillmark {
namespace {

std::string hexadecimal(std::uint32_t value) {
    constexpr int kBase = 16;
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, kBase);
    return "0x" + std::string(digits.data(), end.ptr);
}

void appendIfAny(std::string& list, std::string_view text) {
    if (!text.empty()) {
        list.append(", ").append(text);
    }
}

std::string shownShift(const Signal& signal) {
    std::string text("shift ");
    text.append(textOf(signal.bitOperation()))
        .append(" ")
        .append(std::to_string(signal.shiftCount()));
    return signal.signExtend() ? text.append(" with sign") : text;
}

}  // namespace

std::optional<std::string> shownAddress(const Signal& signal) {
    const auto address = signal.address();
    if (!address) {
        return std::nullopt;
    }
    std::string text = hexadecimal(*address);
    if (const auto extension = signal.addressExtension()) {
        text.append(":").append(std::to_string(*extension));
    }
    return text;
}

bool sameType(const Signal& a, const Signal& b) {
    return a.kind() == b.kind() && a.baseType() == b.baseType() && a.sizeBits() == b.sizeBits() &&
           a.byteOrder() == b.byteOrder() && a.bitMask() == b.bitMask() &&
           a.bitOperation() == b.bitOperation() && a.shiftCount() == b.shiftCount() &&
           a.signExtend() == b.signExtend() && a.dimensions() == b.dimensions() &&
           a.layout() == b.layout();
}

std::string shownType(const Signal& signal) {
    std::string text(textOf(signal.kind()));
    for (const std::int32_t size : signal.dimensions()) {
        if (size == 0) {
            break;
        }
        text.append("[").append(std::to_string(size)).append("]");
    }
    appendIfAny(text, textOf(signal.layout()));
    appendIfAny(text, textOf(signal.baseType()));
    appendIfAny(text, std::to_string(signal.sizeBits()).append(" bits"));
    appendIfAny(text, textOf(signal.byteOrder()));
    if (const auto mask = signal.bitMask()) {
        appendIfAny(text, "mask " + hexadecimal(*mask));
    }
    if (signal.bitOperation() != BitOperation::None) {
        appendIfAny(text, shownShift(signal));
    }
    return text;
}

}  // namespace quillmark
