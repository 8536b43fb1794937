#include "raw_value.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "errors.h"
#include "values.h"

namespace quillmark::python {
namespace {

constexpr std::int64_t kBitsPerByte = 8;

/// How the elements of an array follow each other.
struct Shape {
    std::vector<std::size_t> sizes;  ///< of each dimension
    std::vector<std::size_t> steps;  ///< elements from one index to the next
};

Shape shapeOf(const Signal& signal) {
    Shape shape;
    for (const std::int32_t size : signal.dimensions()) {
        if (size == 0) {
            break;
        }
        shape.sizes.push_back(static_cast<std::uint32_t>(size));
    }
    // Rows one after the other only where the description says so. Dimensions beyond the second are
    // the slowest in either case.
    std::size_t step = 1;
    for (const std::size_t size : shape.sizes) {
        shape.steps.push_back(step);
        step *= size;
    }
    if (shape.sizes.size() > 1 && signal.layout() != ArrayLayout::RowDirection) {
        shape.steps[0] = shape.sizes[1];
        shape.steps[1] = 1;
    }
    return shape;
}

std::uint64_t unsignedOf(std::string_view bytes, ByteOrder order) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t at = order == ByteOrder::BigEndian ? i : bytes.size() - 1 - i;
        value = value << kBitsPerByte | static_cast<unsigned char>(bytes[at]);
    }
    return value;
}

/// The number of two's complement that has so many bits.
std::int64_t signedOf(std::uint64_t value, int bits) {
    const int unused = 64 - bits;
    return static_cast<std::int64_t>(value << unused) >> unused;
}

/// The bits of the mask, then shifted. Without a shift of the description the lowest bit of the
/// mask becomes that of the value.
py::object maskedValue(const Signal& signal, std::uint64_t value, std::uint32_t mask) {
    const int shift = std::clamp(signal.shiftCount(), 0, 63);
    const std::uint64_t masked = value & mask;
    switch (signal.bitOperation()) {
        case BitOperation::LeftShift:
            return py::int_(masked << shift);
        case BitOperation::RightShift:
            break;
        case BitOperation::None:
            return py::int_(mask == 0 ? 0 : masked >> std::countr_zero(mask));
    }
    const int bits = static_cast<int>(std::bit_width(mask)) - shift;
    if (signal.signExtend() && bits > 0) {
        return py::int_(signedOf(masked >> shift, bits));
    }
    return py::int_(masked >> shift);
}

/// Whether the mask leaves out nothing of the value, and nothing is to be shifted: some generators
/// write one for every signal, which takes no sign away.
bool isWholeValue(const Signal& signal, std::uint32_t mask) {
    return signal.bitOperation() == BitOperation::None &&
           std::countr_one(mask) >= signal.sizeBits();
}

py::object elementOf(const Signal& signal, std::string_view bytes) {
    const std::uint64_t value = unsignedOf(bytes, signal.byteOrder());
    switch (signal.baseType()) {
        case BaseType::Float32:
            return py::float_(std::bit_cast<float>(static_cast<std::uint32_t>(value)));
        case BaseType::Float64:
            return py::float_(std::bit_cast<double>(value));
        default:
            break;
    }
    if (const auto mask = signal.bitMask(); mask && !isWholeValue(signal, *mask)) {
        return maskedValue(signal, value, *mask);
    }
    if (signal.baseType() == BaseType::Integer) {
        return py::int_(signedOf(value, static_cast<int>(signal.sizeBits())));
    }
    return py::int_(value);
}

/// The elements of a dimension and of all behind it, from an element on.
py::object elementsOf(const Signal& signal, std::string_view bytes, const Shape& shape,
                      std::size_t dimension, std::size_t first) {
    if (dimension == shape.sizes.size()) {
        const auto size = static_cast<std::size_t>(signal.sizeBits() / kBitsPerByte);
        return elementOf(signal, bytes.substr(first * size, size));
    }
    py::list elements(shape.sizes[dimension]);
    for (std::size_t i = 0; i < shape.sizes[dimension]; ++i) {
        elements[i] =
            elementsOf(signal, bytes, shape, dimension + 1, first + i * shape.steps[dimension]);
    }
    return elements;
}

py::object textOfBytes(std::string_view bytes) {
    return pythonText(bytes.substr(0, bytes.find('\0')));
}

[[noreturn]] void refuseSize(const Signal& signal, std::size_t available) {
    throw py::value_error(std::string(signal.name()) + " does not fit into " +
                          std::to_string(available) + " bytes");
}

void checkKind(const Signal& signal) {
    const SignalKind kind = signal.kind();
    const bool isSingle =
        kind == SignalKind::Measurement || kind == SignalKind::Value || kind == SignalKind::Ascii;
    const std::int64_t bits = signal.sizeBits();
    const bool isText = signal.baseType() == BaseType::Ascii;
    if (!isSingle || signal.baseType() == BaseType::Undefined || bits < kBitsPerByte ||
        (!isText && bits > 64)) {
        raiseError("how the bytes of " + std::string(signal.name()) + " are stored is not known");
    }
}

}  // namespace

py::object rawValue(const Signal& signal, std::string_view bytes) {
    checkKind(signal);
    const auto size = static_cast<std::size_t>(signal.sizeBits() / kBitsPerByte);
    const Shape shape = shapeOf(signal);
    std::size_t room = bytes.size() / size;
    for (const std::size_t count : shape.sizes) {
        room /= count;
    }
    if (room == 0) {
        refuseSize(signal, bytes.size());
    }
    if (signal.baseType() == BaseType::Ascii) {
        return textOfBytes(bytes.substr(0, size));
    }
    return elementsOf(signal, bytes, shape, 0, 0);
}

}  // namespace quillmark::python
