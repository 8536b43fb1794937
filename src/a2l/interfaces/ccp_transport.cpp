// IF_DATA ASAP1B_CCP: TP_BLOB.

#include <array>
#include <cstddef>
#include <cstdint>
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
        return reader.number(kind).toInteger();
    }
    static constexpr WordRow<std::int32_t> kOrders[] = {
        {identifier("MSB_FIRST"), 1},
        {identifier("MSB_LAST"), 2},
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
    return storeProperty(reader, *transport.param.properties, setting::kBitrate);
}

int parseBytesOnly(BlockReader& reader, Transport& transport) {
    return setProperty(reader, *transport.param.properties, setting::kBytesOnly);
}

int parseDaqMode(BlockReader& reader, Transport& transport) {
    static constexpr WordRow<std::int32_t> kModes[] = {{ALTERNATING, 0}, {BURST, 1}};
    if (const auto code = readWord(reader, kModes)) {
        transport.settings.station().daqCapabilities().properties->setInteger(setting::kDaqMode,
                                                                              *code);
    }
    return reader.next();
}

int parseAddressExtension(BlockReader& reader, Transport& transport) {
    static constexpr WordRow<std::int32_t> kExtensions[] = {{DAQ, 0}, {ODT, 1}};
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

int parseCanParam(BlockReader& reader, Transport&) {
    constexpr int kParameters = 3;  // quartz frequency, BTR0, BTR1
    return readInterfaceEnd(reader, CAN_PARAM, reader.drop(kParameters));
}

int parseChecksumCalculation(BlockReader& reader, Transport& transport) {
    static constexpr WordRow<std::int32_t> kCalculations[] = {{ACTIVE_PAGE, 0},
                                                              {BIT_OR_WITH_OPT_PAGE, 1}};
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
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/TP_BLOB/CHECKSUM_PARAM\n");
    static constexpr InterfaceRule<Transport> kParts[] = {
        bare(CHECKSUM_CALCULATION, parseChecksumCalculation),
    };
    return readInterfaceParts(reader, kParts, transport, CHECKSUM_PARAM, reader.next());
}

/// Sets the flag of a page whose bit the rule tells. The first flags also tell what memory it is.
int setPageFlag(BlockReader& reader, PhMemoryPage& page, const InterfaceRule<PhMemoryPage>& rule) {
    static constexpr PhMemoryType kTypes[] = {PhMemoryType::Ram, PhMemoryType::Rom,
                                              PhMemoryType::Flash, PhMemoryType::Eeprom};
    const auto bit = static_cast<std::size_t>(rule.value<int>());
    page.flags |= 1U << bit;
    if (bit < std::size(kTypes)) {
        page.memoryType = kTypes[bit];
    }
    return reader.next();
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
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/TP_BLOB/DEFINED_PAGES\n");
    static constexpr InterfaceRule<PhMemoryPage> kParts[] = {
        bare(RAM, setPageFlag, 0),
        bare(ROM, setPageFlag, 1),
        bare(FLASH, setPageFlag, 2),
        bare(EEPROM, setPageFlag, 3),
        bare(RAM_INIT_BY_ECU, setPageFlag, 4),
        bare(RAM_INIT_BY_TOOL, setPageFlag, 5),
        bare(AUTO_FLASH_BACK, setPageFlag, 6),
        bare(FLASH_BACK, setPageFlag, 7),
        bare(DEFAULT, setPageFlag, 8),
    };
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
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/TP_BLOB\n");
    static constexpr InterfaceRule<Transport> kParts[] = {
        bare(BAUDRATE, parseBaudrate),
        skipped(SAMPLE_POINT, 1),
        skipped(SAMPLE_RATE, 1),
        skipped(BTL_CYCLES, 1),
        skipped(SJW, 1),
        skipped(SYNC_EDGE, 1),
        skipped(CONSISTENCY, 1),
        bare(DAQ_MODE, parseDaqMode),
        bare(BYTES_ONLY, parseBytesOnly),
        skipped(RESUME_SUPPORTED, 0),
        skipped(DAQ_RESUME_SUPPORTED, 0),
        skipped(STORE_SUPPORTED, 0),
        bare(ADDRESS_EXTENSION, parseAddressExtension),
        bare(OPTIONAL_CMD, parseOptionalCommand),
        block(CAN_PARAM, parseCanParam),
        block(DEFINED_PAGES, parseDefinedPages),
        block(CHECKSUM_PARAM, parseChecksumParam),
    };
    Transport transport{settings, *param};
    return readInterfaceParts(reader, kParts, transport, TP_BLOB, reader.next());
}

}  // namespace quillmark
