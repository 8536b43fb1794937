// IF_DATA ASAP1B_CCP: TP_BLOB.

#include <array>
#include <iterator>
#include <utility>

#include "a2l/interfaces/ccp_blocks.h"
#include "a2l/interfaces/interface_block.h"
#include "a2l/interfaces/interface_parts.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::ccp;

struct Transport {
    CcpSettings& settings;
    PhTransportParam& param;
};

/// The byte order as its code, which a number tells directly; 0 for anything unknown.
std::int32_t readByteOrderCode(BlockReader& reader) {
    const int kind = reader.next();
    if (kind != TOK_IDENT) {
        return numberOf(reader, kind).toInteger();
    }
    static constexpr InterfaceWord kOrders[] = {
        {TOK_IDENT, 1, "MSB_FIRST"},
        {TOK_IDENT, 2, "MSB_LAST"},
    };
    if (const auto code = findWord(reader, kOrders, kind)) {
        return *code;
    }
    reader.warning("Invalid Byteorder '%s' in ASAP1B_CCP/TP_BLOB", {reader.token().text});
    return 0;
}

void readByteOrder(BlockReader& reader, PhProtocolParam& protocol) {
    const std::int32_t code = readByteOrderCode(reader);
    reader.keepInteger(*protocol.properties, setting::kCcpByteOrderCode, code);
    switch (code) {
        case static_cast<std::int32_t>(PhByteOrder::BigEndian):
        case static_cast<std::int32_t>(PhByteOrder::LittleEndian):
            changeEncoding(reader, protocol, static_cast<PhByteOrder>(code), "CCP/TP_BLOB");
            break;
        default:
            reader.warning("Invalid Byteorder %d in ASAP1B_CCP/TP_BLOB", {code});
    }
}

int parseBaudrate(BlockReader& reader, Transport& transport) {
    reader.keepInteger(*transport.param.properties, setting::kBitrate, readTruncated(reader));
    return reader.next();
}

int parseBytesOnly(BlockReader& reader, Transport& transport) {
    reader.keepInteger(*transport.param.properties, setting::kBytesOnly, 1);
    return reader.next();
}

int parseDaqMode(BlockReader& reader, Transport& transport) {
    static constexpr InterfaceWord kModes[] = {{ALTERNATING, 0}, {BURST, 1}};
    if (const auto code = readWord(reader, kModes)) {
        transport.settings.station().daqCapabilities().properties->setInteger(setting::kDaqMode,
                                                                              *code);
    }
    return reader.next();
}

int parseAddressExtension(BlockReader& reader, Transport& transport) {
    static constexpr InterfaceWord kExtensions[] = {{DAQ, 0}, {ODT, 1}};
    constexpr std::array<std::int32_t, 2> kTypes{3, 2};  // one per DAQ list, one per ODT
    if (const auto code = readWord(reader, kExtensions)) {
        PhDaqCapabilities& capabilities = transport.settings.station().daqCapabilities();
        capabilities.properties->setInteger(setting::kAddressExtension, *code);
        capabilities.addressExtension = kTypes.at(static_cast<std::size_t>(*code));
    }
    return reader.next();
}

int parseOptionalCommand(BlockReader& reader, Transport& transport) {
    PhProperties& properties = *transport.settings.station().protocolParam().properties;
    auto command = readIntegerValue(reader);
    reader.commit(
        [&] { properties.list(setting::kOptionalCommands).push_back(std::move(command)); });
    return reader.next();
}

int parseCanParam(BlockReader& reader, Transport& transport) {
    constexpr int kParameters = 3;  // quartz frequency, BTR0, BTR1
    return readInterfaceParts(reader, kNoInterfaceRules<Transport>, transport, CAN_PARAM,
                              reader.drop(kParameters));
}

int parseChecksumCalculation(BlockReader& reader, Transport& transport) {
    static constexpr InterfaceWord kCalculations[] = {{ACTIVE_PAGE, 0}, {BIT_OR_WITH_OPT_PAGE, 1}};
    if (const auto code = readWord(reader, kCalculations)) {
        transport.settings.station().protocolParam().properties->setInteger(
            setting::kChecksumCalculation, *code);
    }
    return reader.next();
}

int parseChecksumParam(BlockReader& reader, Transport& transport) {
    PhProperties& properties = *transport.settings.station().protocolParam().properties;
    reader.keepInteger(properties, setting::kChecksumProcedure, readTruncated(reader));
    reader.keepInteger(properties, setting::kChecksumMaxBlockLength, readTruncated(reader));
    traceBlock(reader, "  Parse IF_DATA ASAP1B_CCP/TP_BLOB/CHECKSUM_PARAM\n");
    static constexpr InterfaceRule<Transport> kParts[] = {
        {Form::Bare, CHECKSUM_CALCULATION, &parseChecksumCalculation},
    };
    return readInterfaceParts(reader, kParts, transport, CHECKSUM_PARAM, reader.next());
}

/// What a keyword of DEFINED_PAGES says about a page.
struct PageFlag {
    int keyword;
    PhMemoryType memoryType;
};

/// In the order of the page's flag bits.
constexpr PageFlag kPageFlags[] = {
    {RAM, PhMemoryType::Ram},
    {ROM, PhMemoryType::Rom},
    {FLASH, PhMemoryType::Flash},
    {EEPROM, PhMemoryType::Eeprom},
    {RAM_INIT_BY_ECU, PhMemoryType::Undefined},
    {RAM_INIT_BY_TOOL, PhMemoryType::Undefined},
    {AUTO_FLASH_BACK, PhMemoryType::Undefined},
    {FLASH_BACK, PhMemoryType::Undefined},
    {DEFAULT, PhMemoryType::Undefined},
};

template <std::size_t Index>
int setPageFlag(BlockReader& reader, PhMemoryPage& page) {
    page.flags |= 1U << Index;
    if (kPageFlags[Index].memoryType != PhMemoryType::Undefined) {
        page.memoryType = kPageFlags[Index].memoryType;
    }
    return reader.next();
}

template <std::size_t... Indices>
constexpr auto pageFlagRules(std::index_sequence<Indices...>) {
    return std::array{InterfaceRule<PhMemoryPage>{Form::Bare, kPageFlags[Indices].keyword,
                                                  &setPageFlag<Indices>}...};
}

int parseDefinedPages(BlockReader& reader, Transport& transport) {
    auto page = makePh<PhMemoryPage>();
    page->number = readTruncated(reader);
    reader.next();
    page->setName(PhString(reader.token().text));
    page->addressExtension = readTruncated(reader);
    page->address = readTruncated(reader);
    page->size = readTruncated(reader);
    if (transport.settings.module != nullptr) {
        reader.keepIn(transport.settings.module->memoryPages, page);
    }
    traceBlock(reader, "  Parse IF_DATA ASAP1B_CCP/TP_BLOB/DEFINED_PAGES\n");
    static constexpr auto kParts = pageFlagRules(std::make_index_sequence<std::size(kPageFlags)>{});
    return readInterfaceParts(reader, kParts, *page, DEFINED_PAGES, reader.next());
}

}  // namespace

int parseCcpTransport(BlockReader& reader, CcpSettings& settings) {
    const auto param = addTransport(&settings.commParam, "CAN", PhTransportType::Can);
    reader.next();  // version of the protocol and of the block
    reader.next();
    reader.keep(param->masterCanId, readIntegerValue(reader));
    reader.keep(param->slaveCanId, readIntegerValue(reader));
    reader.keep(param->stationAddress, readIntegerValue(reader));
    readByteOrder(reader, settings.station().protocolParam());
    traceBlock(reader, "  Parse IF_DATA ASAP1B_CCP/TP_BLOB\n");
    static constexpr InterfaceRule<Transport> kParts[] = {
        {Form::Bare, BAUDRATE, &parseBaudrate},
        {Form::Bare, SAMPLE_POINT, nullptr, 1},
        {Form::Bare, SAMPLE_RATE, nullptr, 1},
        {Form::Bare, BTL_CYCLES, nullptr, 1},
        {Form::Bare, SJW, nullptr, 1},
        {Form::Bare, SYNC_EDGE, nullptr, 1},
        {Form::Bare, CONSISTENCY, nullptr, 1},
        {Form::Bare, DAQ_MODE, &parseDaqMode},
        {Form::Bare, BYTES_ONLY, &parseBytesOnly},
        {Form::Bare, RESUME_SUPPORTED, nullptr, 0},
        {Form::Bare, DAQ_RESUME_SUPPORTED, nullptr, 0},
        {Form::Bare, STORE_SUPPORTED, nullptr, 0},
        {Form::Bare, ADDRESS_EXTENSION, &parseAddressExtension},
        {Form::Bare, OPTIONAL_CMD, &parseOptionalCommand},
        {Form::Block, CAN_PARAM, &parseCanParam},
        {Form::Block, DEFINED_PAGES, &parseDefinedPages},
        {Form::Block, CHECKSUM_PARAM, &parseChecksumParam},
    };
    Transport transport{settings, *param};
    return readInterfaceParts(reader, kParts, transport, TP_BLOB, reader.next());
}

}  // namespace quillmark
