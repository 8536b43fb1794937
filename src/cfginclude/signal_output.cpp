#include "cfginclude/signal_output.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace quillmark {

namespace {

/// What all elements of one signal have in common.
struct SignalDescription {
    std::string_view unit;
    std::string_view conversionName;
    bool namesConversion = false;
    std::int64_t sizeBytes = 0;
    std::string_view signedness;
    PhOptionalInteger bitMask;
};

/// The text for a base type, or an empty one where it leaves the text as it was.
std::string_view signednessOf(PhBaseType baseType) {
    switch (baseType) {
        case PhBaseType::Integer:
            return "signed";
        case PhBaseType::UInteger:
        case PhBaseType::StringAscii:
            return "unsigned";
        case PhBaseType::Ieee32:
        case PhBaseType::Ieee64:
            return "float";
        case PhBaseType::Undefined:
        case PhBaseType::StringUtf8:
        case PhBaseType::StringUnicode:
        case PhBaseType::Bytefield:
        case PhBaseType::Bitfield:
        case PhBaseType::Boolean:
            break;
    }
    return {};
}

/// Takes over what one type tells; a later type overwrites what an earlier one set.
void readType(const PhTypeData& type, SignalDescription& description) {
    constexpr std::int64_t kBitsPerByte = 8;
    description.sizeBytes = type.sizeBits / kBitsPerByte;
    if (const auto text = signednessOf(type.baseType); !text.empty()) {
        description.signedness = text;
    }
    if (type.unit) {
        description.unit = type.unit->displayText().view();
    }
    if (type.conversion) {
        const PhConversion& conversion = *type.conversion;
        if (conversion.name().view() != "NO_COMPU_METHOD") {
            description.conversionName = conversion.name().view();
            description.namesConversion = true;
        }
        if (!conversion.isPlaceholder() && conversion.unit) {
            description.unit = conversion.unit->displayText().view();
        }
    }
    if (type.bitMask) {
        description.bitMask = type.bitMask;
    }
}

SignalDescription describe(const PhEntity& signal) {
    SignalDescription description;
    readType(signal.datatype, description);
    if (signal.signalKind == PhSignalKind::Value && signal.recordLayout &&
        signal.recordLayout->dataType) {
        readType(*signal.recordLayout->dataType, description);
    }
    return description;
}

/// Walks the elements of an array, the first index running fastest. A scalar has one element and no
/// index.
class ArrayWalk {
  public:
    explicit ArrayWalk(const PhEntity& signal)
        : rowDirection_(signal.layout == PhLayout::RowDirection) {
        const auto dims = signal.matrixDims();
        while (dimensions_ < sizes_.size() && dims[dimensions_] != 0) {
            sizes_[dimensions_] = static_cast<std::uint32_t>(dims[dimensions_]);
            ++dimensions_;
        }
    }

    /// Number of elements before this one in memory. Wraps at 32 bits, as addresses do.
    std::uint32_t offset() const {
        const auto& [i0, i1, i2] = indices_;
        const std::uint32_t plane = sizes_[0] * sizes_[1];
        if (dimensions_ < 2) {
            return i0;
        }
        return rowDirection_ ? i0 + i1 * sizes_[0] + i2 * plane : i1 + i0 * sizes_[1] + i2 * plane;
    }

    /// "[i]" for each dimension; valid until the next call.
    std::string_view suffix() {
        char* at = suffix_.data();
        for (std::size_t i = 0; i < dimensions_; ++i) {
            *at++ = '[';
            at = std::to_chars(at, suffix_.data() + suffix_.size(), indices_[i]).ptr;
            *at++ = ']';
        }
        return {suffix_.data(), static_cast<std::size_t>(at - suffix_.data())};
    }

    /// Goes on to the next element; false behind the last one.
    bool advance() {
        for (std::size_t i = 0; i < dimensions_; ++i) {
            if (++indices_[i] < sizes_[i]) {
                return true;
            }
            indices_[i] = 0;
        }
        return false;
    }

  private:
    bool rowDirection_;
    std::size_t dimensions_ = 0;
    std::array<std::uint32_t, 3> sizes_{1, 1, 1};
    std::array<std::uint32_t, 3> indices_{};
    std::array<char, 40> suffix_{};  // three indices of ten digits and their brackets
};

void writeShift(CfgChild& element, const PhEntity& signal) {
    switch (signal.bitOperation) {
        case PhBitOperation::None:
            element.addValue("shift_type", "default");
            return;
        case PhBitOperation::LeftShift:
            element.addValue("shift_type", "left");
            break;
        case PhBitOperation::RightShift:
            element.addValue("shift_type", "right");
            break;
    }
    element.addIntValue("shift_length", signal.shiftCount());
    if (signal.bitOperation == PhBitOperation::RightShift && signal.signExtend) {
        element.addIntValue("sign_extend", 1);
    }
}

}  // namespace

std::string_view writtenUnit(const PhEntity& signal) {
    return describe(signal).unit;
}

bool isWrittenSignal(const PhEntity& signal, const LibraryFeatures& features) {
    switch (signal.signalKind) {
        case PhSignalKind::Measurement:
        case PhSignalKind::Value:
            return true;
        case PhSignalKind::Ascii:
            return features.includeAsciiCharacteristics;
        case PhSignalKind::Undefined:
        case PhSignalKind::Curve:
        case PhSignalKind::Map:
        case PhSignalKind::Cuboid:
        case PhSignalKind::ValueBlock:
        case PhSignalKind::Cube4:
        case PhSignalKind::Cube5:
            break;
    }
    return false;
}

void writeSignal(CfgChildren& parent, const PhEntity& signal, std::string_view namePrefix,
                 const LibraryFeatures& features,
                 const IdentityFallbackNames& identityFallbackNames) {
    const SignalDescription description = describe(signal);
    const bool writesConversion = description.namesConversion &&
                                  !(namePrefix.empty() && description.conversionName.empty()) &&
                                  !identityFallbackNames.contains(description.conversionName);
    const auto baseAddress = static_cast<std::uint32_t>(*signal.address);
    const auto sizeBytes = static_cast<std::uint32_t>(description.sizeBytes);
    ArrayWalk walk(signal);
    do {
        CfgChild& element = parent.add("signal");
        element.addJoinedValue("name", {namePrefix, signal.name().view(), walk.suffix()});
        if (!description.unit.empty()) {
            element.addValue("unit", description.unit);
        }
        if (writesConversion) {
            element.addJoinedValue("compumethod", {namePrefix, description.conversionName});
        }
        if (signal.addressExtension) {
            element.addHexValue("mta_ext", static_cast<std::uint32_t>(*signal.addressExtension));
        }
        if (signal.address) {
            element.addHexValue("mta", baseAddress + sizeBytes * walk.offset());
        }
        element.addIntValue("num_bytes", description.sizeBytes);
        element.addValue("signed", description.signedness);
        if (description.bitMask) {
            element.addHexValue("bitmask", static_cast<std::uint32_t>(*description.bitMask));
        }
        if (features.writeShiftAttributes) {
            writeShift(element, signal);
        }
        if (signal.byteOrder != PhByteOrder::Undefined) {
            element.addValue("byteorder",
                             signal.byteOrder == PhByteOrder::BigEndian ? "motorola" : "intel");
        }
    } while (parent.areWanted() && walk.advance());
}

}  // namespace quillmark
