#include "model/enumerations.h"

#include <cstdint>
#include <limits>
#include <ostream>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

struct Row {
    PhEnumeration enumeration;
    std::vector<std::string_view> texts;  ///< in the order of the codes, from 0
};

/// What a failing row is called.
void PrintTo(const Row& row, std::ostream* out) {
    *out << "table " << static_cast<int>(row.enumeration);
}

class EnumerationTexts : public testing::TestWithParam<Row> {};

TEST_P(EnumerationTexts, AreAsTold) {
    const Row& row = GetParam();
    std::int32_t code = 0;
    for (const std::string_view text : row.texts) {
        EXPECT_EQ(enumerationText(row.enumeration, code), text) << code;
        ++code;
    }
}

TEST_P(EnumerationTexts, AreUndefinedOutsideTheTable) {
    const Row& row = GetParam();
    const auto end = static_cast<std::int32_t>(row.texts.size());
    for (const std::int32_t code : {end, end + 1, 255, -1, std::numeric_limits<std::int32_t>::max(),
                                    std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(enumerationText(row.enumeration, code), "*Undefined*") << code;
    }
}

const std::vector<Row> kRows = {
    {PhEnumeration::ByteOrder, {"Undefined", "BigEndian", "LittleEndian"}},
    {PhEnumeration::DocumentKind,
     {"Undefined", "Doc", "Library", "Variant", "BaseVariant", "Protocol", "Functional", "Project",
      "Module"}},
    {PhEnumeration::ParameterRole,
     {"Undefined", "Case", "LocalId", "DataId", "DataPackageId", "ServiceId", "ServiceIdRq", "Data",
      "AccessMode", "Address", "SubFunction", "ParameterId"}},
    {PhEnumeration::MemoryType,
     {"Undefined", "Ram", "Rom", "Eprom", "Eeprom", "Flash", "Register"}},
    {PhEnumeration::SegmentUse,
     {"Undefined", "Reserved", "Code", "Variables", "Data", "Parameters"}},
    {PhEnumeration::MemoryAttribute, {"Undefined", "Intern", "Extern"}},
    {PhEnumeration::StructureType,
     {"StUndefined", "StStructure", "StField", "StArray", "StTable", "StMux", "StList",
      "*Undefined*", "StPdu"}},
    {PhEnumeration::DatatypeClass,
     {"DcUndefined", "DcTypeRef", "DcStructure", "DcUnion", "DcTypedef"}},
    {PhEnumeration::ProtocolType, {"Undefined", "KWP", "CCP", "XCP"}},
    {PhEnumeration::TransportType,
     {"Undefined", "CAN", "CAN-ISO15765", "CAN-VWTP2", "CAN-IVLAN", "UDP", "TCP", "SPI", "SCI"}},
    {PhEnumeration::BusType, {"Undefined", "CAN", "CAN-FD", "LIN", "MOST", "FlexRay", "Ethernet"}},
    {PhEnumeration::FrameKind,
     {"Undefined", "NM", "DIAG-STATE", "DIAG-REQUEST", "DIAG-RESPONSE", "TPL", "XCP_PRE_CONFIGURED",
      "XCP_RUNTIME_CONFIGURED", "SERVICE", "OTHER", "APPLICATION"}},
    {PhEnumeration::BaseType,
     {"BtUndefined", "BtInteger", "BtUInteger", "BtIeee32", "BtIeee64", "BtStringAscii",
      "BtStringUtf8", "BtStringUnicode", "BtBytefield", "BtBitfield", "BtBoolean"}},
    {PhEnumeration::ConversionType,
     {"CtUndefined", "CtIdentity", "CtRational", "CtLinear", "CtTable", "CtFormula", "CtCode",
      "CtInterpolation", "CtScale"}},
    {PhEnumeration::NetworkAddressType, {"NaUndefined", "NaIPv4Fixed", "NaIPv4Dhcp"}},
};

INSTANTIATE_TEST_SUITE_P(All, EnumerationTexts, testing::ValuesIn(kRows));

TEST(Enumerations, StructureTypeSevenHasNoTextAndEightHas) {
    EXPECT_EQ(enumerationText(PhEnumeration::StructureType, 7), "*Undefined*");
    EXPECT_EQ(enumerationText(PhEnumeration::StructureType, 8), "StPdu");
}

TEST(Enumerations, CodesOfTheProtocolsAreAsTold) {
    EXPECT_EQ(textOf(PhProtocolType::Kwp), "KWP");
    EXPECT_EQ(textOf(PhProtocolType::Ccp), "CCP");
    EXPECT_EQ(textOf(PhProtocolType::Xcp), "XCP");
    EXPECT_EQ(static_cast<int>(PhProtocolType::Gmlan), 4);
    EXPECT_EQ(textOf(PhProtocolType::Gmlan), "*Undefined*");
}

TEST(Enumerations, CodesOfTheTransportsAreAsTold) {
    EXPECT_EQ(textOf(PhTransportType::Can), "CAN");
    EXPECT_EQ(textOf(PhTransportType::Udp), "UDP");
    EXPECT_EQ(textOf(PhTransportType::Tcp), "TCP");
    EXPECT_EQ(static_cast<int>(PhTransportType::FlexRay), 9);
    EXPECT_EQ(textOf(PhTransportType::FlexRay), "*Undefined*");
}

TEST(Enumerations, NamedCodesReadAsTheirTexts) {
    EXPECT_EQ(textOf(PhByteOrder::LittleEndian), "LittleEndian");
    EXPECT_EQ(textOf(PhDocumentKind::Project), "Project");
    EXPECT_EQ(textOf(PhDocumentKind::Module), "Module");
    EXPECT_EQ(textOf(PhMemoryType::Register), "Register");
    EXPECT_EQ(textOf(PhSegmentUse::Parameters), "Parameters");
    EXPECT_EQ(textOf(PhMemoryAttribute::Extern), "Extern");
    EXPECT_EQ(textOf(PhBaseType::Boolean), "BtBoolean");
    EXPECT_EQ(textOf(PhConversionType::Scale), "CtScale");
    EXPECT_EQ(textOf(PhParameterRole::ParameterId), "ParameterId");
    EXPECT_EQ(textOf(PhStructureType::List), "StList");
    EXPECT_EQ(textOf(PhStructureType::Pdu), "StPdu");
    EXPECT_EQ(textOf(PhDatatypeClass::Typedef), "DcTypedef");
    EXPECT_EQ(textOf(PhBusType::Ethernet), "Ethernet");
    EXPECT_EQ(textOf(PhFrameKind::Application), "APPLICATION");
    EXPECT_EQ(textOf(PhNetworkAddressType::IPv4Dhcp), "NaIPv4Dhcp");
}

}  // namespace
}  // namespace quillmark
