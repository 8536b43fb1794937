#pragma once

#include <cstdint>
#include <string_view>

#include "quillmark/export.h"

namespace quillmark {

// What the parts of a description can be. New codes may be added behind the last one: a `switch`
// needs a default. Each textOf() is a constant in upper or lower case as descriptions write it, and
// empty for a code without text.

/// What a signal is.
enum class SignalKind : std::uint8_t {
    Undefined,
    Measurement,
    Value,  ///< from here on a CHARACTERISTIC, by its type
    Curve,
    Map,
    Cuboid,
    ValueBlock,
    Ascii,
    Cube4,
    Cube5,
};
/// "MEASUREMENT", "VALUE", "CURVE", ...; "VAL_BLK", "CUBE_4".
QUILLMARK_API std::string_view textOf(SignalKind kind) noexcept;

/// Undefined where the description names none.
enum class ByteOrder : std::uint8_t { Undefined, BigEndian, LittleEndian };
/// "big" or "little".
QUILLMARK_API std::string_view textOf(ByteOrder order) noexcept;

/// How the bits of a value are read. Its size stands beside it.
enum class BaseType : std::uint8_t {
    Undefined,
    Integer,
    UnsignedInteger,
    Float32,
    Float64,
    Ascii,
};
/// "integer", "unsigned", "float32", "float64", "ascii".
QUILLMARK_API std::string_view textOf(BaseType type) noexcept;

/// Shift that a signal asks for once its bit mask has been applied.
enum class BitOperation : std::uint8_t { None, LeftShift, RightShift };
/// "left" or "right".
QUILLMARK_API std::string_view textOf(BitOperation operation) noexcept;

/// How the elements of an array follow each other; None where the description does not say.
enum class ArrayLayout : std::uint8_t { None, RowDirection, ColumnDirection };
/// "ROW_DIR" or "COLUMN_DIR".
QUILLMARK_API std::string_view textOf(ArrayLayout layout) noexcept;

/// How raw values become physical ones.
enum class ConversionKind : std::uint8_t {
    Undefined,
    Identity,
    Rational,
    Linear,
    Table,  ///< no interpolation: single values, ranges, texts
    Formula,
    InterpolatedTable,
};
/// "IDENTICAL", "RAT_FUNC", "LINEAR", "TAB_NOINTP", "FORM", "TAB_INTP".
QUILLMARK_API std::string_view textOf(ConversionKind kind) noexcept;

enum class ProtocolKind : std::uint8_t { Undefined, Kwp, Ccp, Xcp, Gmlan };
/// "KWP", "CCP", "XCP", "GMLAN".
QUILLMARK_API std::string_view textOf(ProtocolKind kind) noexcept;

enum class TransportKind : std::uint8_t { Undefined, Can, Udp, Tcp, FlexRay };
/// "CAN", "UDP", "TCP", "FLEXRAY".
QUILLMARK_API std::string_view textOf(TransportKind kind) noexcept;

enum class MemoryKind : std::uint8_t { Undefined, Ram, Rom, Eprom, Eeprom, Flash, Register };
/// "RAM", "ROM", "EPROM", "EEPROM", "FLASH", "REGISTER".
QUILLMARK_API std::string_view textOf(MemoryKind kind) noexcept;

/// CALIBRATION_VARIABLES count as Parameters, uses that a logger does not tell apart as Undefined.
enum class MemoryUse : std::uint8_t { Undefined, Reserved, Code, Variables, Data, Parameters };
/// "RESERVED", "CODE", "VARIABLES", "DATA", "CALIBRATION_VARIABLES".
QUILLMARK_API std::string_view textOf(MemoryUse use) noexcept;

/// As what a signal names an XCP event channel.
enum class EventUse : std::uint8_t {
    Fixed,        ///< of a fixed list
    Available,    ///< of a variable list: to choose from
    Default,      ///< ... taken by default
    Consistency,  ///< ... keeps data consistent
};
/// "fixed", "available", "default", "consistency".
QUILLMARK_API std::string_view textOf(EventUse use) noexcept;

}  // namespace quillmark
