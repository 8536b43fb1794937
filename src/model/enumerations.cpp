#include "model/enumerations.h"

#include <array>
#include <cstddef>
#include <span>

namespace quillmark {

namespace {

using Text = std::string_view;

/// One array per enumeration, index equals code; an empty text is a code without one.
constexpr std::array kByteOrder{Text("Undefined"), Text("BigEndian"), Text("LittleEndian")};
constexpr std::array kDocumentKind{Text("Undefined"),  Text("Doc"),         Text("Library"),
                                   Text("Variant"),    Text("BaseVariant"), Text("Protocol"),
                                   Text("Functional"), Text("Project"),     Text("Module")};
constexpr std::array kParameterRole{
    Text("Undefined"),     Text("Case"),      Text("LocalId"),     Text("DataId"),
    Text("DataPackageId"), Text("ServiceId"), Text("ServiceIdRq"), Text("Data"),
    Text("AccessMode"),    Text("Address"),   Text("SubFunction"), Text("ParameterId")};
constexpr std::array kMemoryType{Text("Undefined"), Text("Ram"),   Text("Rom"),     Text("Eprom"),
                                 Text("Eeprom"),    Text("Flash"), Text("Register")};
constexpr std::array kSegmentUse{Text("Undefined"), Text("Reserved"), Text("Code"),
                                 Text("Variables"), Text("Data"),     Text("Parameters")};
constexpr std::array kMemoryAttribute{Text("Undefined"), Text("Intern"), Text("Extern")};
constexpr std::array kStructureType{
    Text("StUndefined"), Text("StStructure"), Text("StField"), Text("StArray"), Text("StTable"),
    Text("StMux"),       Text("StList"),      Text(),          Text("StPdu")};
constexpr std::array kDatatypeClass{Text("DcUndefined"), Text("DcTypeRef"), Text("DcStructure"),
                                    Text("DcUnion"), Text("DcTypedef")};
constexpr std::array kProtocolType{Text("Undefined"), Text("KWP"), Text("CCP"), Text("XCP")};
constexpr std::array kTransportType{Text("Undefined"), Text("CAN"),       Text("CAN-ISO15765"),
                                    Text("CAN-VWTP2"), Text("CAN-IVLAN"), Text("UDP"),
                                    Text("TCP"),       Text("SPI"),       Text("SCI")};
constexpr std::array kBusType{Text("Undefined"), Text("CAN"),     Text("CAN-FD"),  Text("LIN"),
                              Text("MOST"),      Text("FlexRay"), Text("Ethernet")};
constexpr std::array kFrameKind{Text("Undefined"),
                                Text("NM"),
                                Text("DIAG-STATE"),
                                Text("DIAG-REQUEST"),
                                Text("DIAG-RESPONSE"),
                                Text("TPL"),
                                Text("XCP_PRE_CONFIGURED"),
                                Text("XCP_RUNTIME_CONFIGURED"),
                                Text("SERVICE"),
                                Text("OTHER"),
                                Text("APPLICATION")};
constexpr std::array kBaseType{Text("BtUndefined"),  Text("BtInteger"),       Text("BtUInteger"),
                               Text("BtIeee32"),     Text("BtIeee64"),        Text("BtStringAscii"),
                               Text("BtStringUtf8"), Text("BtStringUnicode"), Text("BtBytefield"),
                               Text("BtBitfield"),   Text("BtBoolean")};
constexpr std::array kConversionType{
    Text("CtUndefined"), Text("CtIdentity"),      Text("CtRational"),
    Text("CtLinear"),    Text("CtTable"),         Text("CtFormula"),
    Text("CtCode"),      Text("CtInterpolation"), Text("CtScale")};
constexpr std::array kNetworkAddressType{Text("NaUndefined"), Text("NaIPv4Fixed"),
                                         Text("NaIPv4Dhcp")};

/// Index equals PhEnumeration.
constexpr std::array<std::span<const Text>, 15> kTables{
    kByteOrder,       kDocumentKind,  kParameterRole, kMemoryType,     kSegmentUse,
    kMemoryAttribute, kStructureType, kDatatypeClass, kProtocolType,   kTransportType,
    kBusType,         kFrameKind,     kBaseType,      kConversionType, kNetworkAddressType};
static_assert(kTables.size() == static_cast<std::size_t>(PhEnumeration::NetworkAddressType) + 1);

}  // namespace

std::string_view enumerationText(PhEnumeration enumeration, std::int32_t code) {
    const std::span<const Text> texts = kTables.at(static_cast<std::size_t>(enumeration));
    if (code < 0 || static_cast<std::size_t>(code) >= texts.size() ||
        texts[static_cast<std::size_t>(code)].empty()) {
        return "*Undefined*";
    }
    return texts[static_cast<std::size_t>(code)];
}

}  // namespace quillmark
