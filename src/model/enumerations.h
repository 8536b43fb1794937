#pragma once

#include <cstdint>
#include <string_view>

namespace quillmark {

/// The enumerations of the model. Codes are part of the model: they are stored as read, also where
/// a protocol knows codes that have no text here, so each text function takes any integer and
/// answers "*Undefined*" outside its table.

enum class PhByteOrder : std::uint8_t { Undefined, BigEndian, LittleEndian };

enum class PhDocumentKind : std::uint8_t {
    Undefined,
    Doc,
    Library,
    Variant,
    BaseVariant,
    Protocol,
    Functional,
    Project,
    Module,
};

enum class PhParameterRole : std::uint8_t {
    Undefined,
    Case,
    LocalId,
    DataId,
    DataPackageId,
    ServiceId,
    ServiceIdRq,
    Data,
    AccessMode,
    Address,
    SubFunction,
    ParameterId,
};

/// Code 7 is not used.
enum class PhStructureType : std::uint8_t {
    Undefined,
    Structure,
    Field,
    Array,
    Table,
    Mux,
    List,
    Pdu = 8,
};

enum class PhDatatypeClass : std::uint8_t { Undefined, TypeRef, Structure, Union, Typedef };

/// GMLAN has a code and no text.
enum class PhProtocolType : std::uint8_t { Undefined, Kwp, Ccp, Xcp, Gmlan };

/// FlexRay has a code and no text.
enum class PhTransportType : std::uint8_t { Undefined = 0, Can = 1, Udp = 5, Tcp = 6, FlexRay = 9 };

enum class PhBusType : std::uint8_t { Undefined, Can, CanFd, Lin, Most, FlexRay, Ethernet };

enum class PhFrameKind : std::uint8_t {
    Undefined,
    NetworkManagement,
    DiagnosticState,
    DiagnosticRequest,
    DiagnosticResponse,
    TransportProtocol,
    XcpPreConfigured,
    XcpRuntimeConfigured,
    Service,
    Other,
    Application,
};

enum class PhNetworkAddressType : std::uint8_t { Undefined, IPv4Fixed, IPv4Dhcp };

enum class PhMemoryType : std::uint8_t { Undefined, Ram, Rom, Eprom, Eeprom, Flash, Register };

enum class PhSegmentUse : std::uint8_t { Undefined, Reserved, Code, Variables, Data, Parameters };

enum class PhMemoryAttribute : std::uint8_t { Undefined, Intern, Extern };

enum class PhBaseType : std::uint8_t {
    Undefined,
    Integer,
    UInteger,
    Ieee32,
    Ieee64,
    StringAscii,
    StringUtf8,
    StringUnicode,
    Bytefield,
    Bitfield,
    Boolean,
};

enum class PhConversionType : std::uint8_t {
    Undefined,
    Identity,
    Rational,
    Linear,
    Table,
    Formula,
    Code,
    Interpolation,
    Scale,
};

/// What a signal is: a measurement, or a characteristic of one of the standard's types.
enum class PhSignalKind : std::uint8_t {
    Undefined,
    Measurement,
    Value,
    Curve,
    Map,
    Cuboid,
    ValueBlock,
    Ascii,
    Cube4,
    Cube5,
};

enum class PhBitOperation : std::uint8_t { None, LeftShift, RightShift };

/// How the elements of an array follow each other in memory.
enum class PhLayout : std::uint8_t { None, RowDirection, ColumnDirection };

/// Which enumeration a text is wanted for.
enum class PhEnumeration : std::uint8_t {
    ByteOrder,
    DocumentKind,
    ParameterRole,
    MemoryType,
    SegmentUse,
    MemoryAttribute,
    StructureType,
    DatatypeClass,
    ProtocolType,
    TransportType,
    BusType,
    FrameKind,
    BaseType,
    ConversionType,
    NetworkAddressType,
};

/// The text of a code of that enumeration; "*Undefined*" when the code has none.
std::string_view enumerationText(PhEnumeration enumeration, std::int32_t code);

inline std::string_view textOf(PhByteOrder code) {
    return enumerationText(PhEnumeration::ByteOrder, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhDocumentKind code) {
    return enumerationText(PhEnumeration::DocumentKind, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhParameterRole code) {
    return enumerationText(PhEnumeration::ParameterRole, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhMemoryType code) {
    return enumerationText(PhEnumeration::MemoryType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhSegmentUse code) {
    return enumerationText(PhEnumeration::SegmentUse, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhMemoryAttribute code) {
    return enumerationText(PhEnumeration::MemoryAttribute, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhStructureType code) {
    return enumerationText(PhEnumeration::StructureType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhDatatypeClass code) {
    return enumerationText(PhEnumeration::DatatypeClass, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhProtocolType code) {
    return enumerationText(PhEnumeration::ProtocolType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhTransportType code) {
    return enumerationText(PhEnumeration::TransportType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhBusType code) {
    return enumerationText(PhEnumeration::BusType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhFrameKind code) {
    return enumerationText(PhEnumeration::FrameKind, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhBaseType code) {
    return enumerationText(PhEnumeration::BaseType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhConversionType code) {
    return enumerationText(PhEnumeration::ConversionType, static_cast<std::int32_t>(code));
}
inline std::string_view textOf(PhNetworkAddressType code) {
    return enumerationText(PhEnumeration::NetworkAddressType, static_cast<std::int32_t>(code));
}

}  // namespace quillmark
