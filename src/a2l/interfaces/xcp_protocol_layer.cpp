// What the protocol itself is like: PROTOCOL_LAYER.

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr std::string_view kNumberKeys[] = {
    setting::kXcpVersion, setting::kT1, setting::kT2, setting::kT3,     setting::kT4,
    setting::kT5,         setting::kT6, setting::kT7, setting::kMaxCto, setting::kMaxDto,
};

constexpr WordRow<std::int32_t> kByteOrders[] = {
    {BYTE_ORDER_MSB_FIRST, 1},
    {BYTE_ORDER_MSB_LAST, 0},
};

/// The codes of word and double word are the other way round than one would think, on purpose.
constexpr WordRow<std::int32_t> kGranularities[] = {
    {ADDRESS_GRANULARITY_BYTE, 1},
    {ADDRESS_GRANULARITY_DWORD, 2},
    {ADDRESS_GRANULARITY_WORD, 4},
};

/// Command codes of the protocol.
constexpr WordRow<std::int32_t> kCommands[] = {
    {GET_COMM_MODE_INFO, 0xFB},
    {GET_ID, 0xFA},
    {SET_REQUEST, 0xF9},
    {GET_SEED, 0xF8},
    {UNLOCK, 0xF7},
    {SET_MTA, 0xF6},
    {UPLOAD, 0xF5},
    {SHORT_UPLOAD, 0xF4},
    {BUILD_CHECKSUM, 0xF3},
    {TRANSPORT_LAYER_CMD, 0xF2},
    {USER_CMD, 0xF1},
    {DOWNLOAD, 0xF0},
    {DOWNLOAD_NEXT, 0xEF},
    {DOWNLOAD_MAX, 0xEE},
    {SHORT_DOWNLOAD, 0xED},
    {MODIFY_BITS, 0xEC},
    {SET_CAL_PAGE, 0xEB},
    {GET_CAL_PAGE, 0xEA},
    {GET_PAG_PROCESSOR_INFO, 0xE9},
    {GET_SEGMENT_INFO, 0xE8},
    {GET_PAGE_INFO, 0xE7},
    {SET_SEGMENT_MODE, 0xE6},
    {GET_SEGMENT_MODE, 0xE5},
    {COPY_CAL_PAGE, 0xE4},
    {CLEAR_DAQ_LIST, 0xE3},
    {SET_DAQ_PTR, 0xE2},
    {WRITE_DAQ, 0xE1},
    {SET_DAQ_LIST_MODE, 0xE0},
    {GET_DAQ_LIST_MODE, 0xDF},
    {START_STOP_DAQ_LIST, 0xDE},
    {START_STOP_SYNCH, 0xDD},
    {GET_DAQ_CLOCK, 0xDC},
    {READ_DAQ, 0xDB},
    {GET_DAQ_PROCESSOR_INFO, 0xDA},
    {GET_DAQ_RESOLUTION_INFO, 0xD9},
    {GET_DAQ_LIST_INFO, 0xD8},
    {GET_DAQ_EVENT_INFO, 0xD7},
    {FREE_DAQ, 0xD6},
    {ALLOC_DAQ, 0xD5},
    {ALLOC_ODT, 0xD4},
    {ALLOC_ODT_ENTRY, 0xD3},
    {PROGRAM_START, 0xD2},
    {PROGRAM_CLEAR, 0xD1},
    {PROGRAM, 0xD0},
    {PROGRAM_RESET, 0xCF},
    {GET_PGM_PROCESSOR_INFO, 0xCE},
    {GET_SECTOR_INFO, 0xCD},
    {PROGRAM_PREPARE, 0xCC},
    {PROGRAM_FORMAT, 0xCB},
    {PROGRAM_NEXT, 0xCA},
    {PROGRAM_MAX, 0xC9},
    {PROGRAM_VERIFY, 0xC8},
    {WRITE_DAQ_MULTIPLE, 0xC7},
    {TIME_CORRELATION_PROPERTIES, 0xC6},
    {DTO_CTR_PROPERTIES, 0xC5},
};

int parseOptionalCmd(BlockReader& reader, PhProtocolParam& protocol) {
    if (const std::optional<std::int32_t> code = readWord(reader, kCommands)) {
        auto command = PhValue::ofInteger(*code);
        command->setName(PhString(reader.token().text));
        protocol.properties->list(setting::kOptionalCommands).push_back(std::move(command));
    }
    return reader.next();
}

int parseMasterBlockMode(BlockReader& reader, PhProtocolParam& protocol) {
    reader.keepInteger(*protocol.properties, setting::kMasterBlockMode, 1);
    reader.keepInteger(*protocol.properties, setting::kMaxBs, readTruncated(reader));
    reader.keepInteger(*protocol.properties, setting::kMinSt, readTruncated(reader));
    return reader.next();
}

/// The grammar has either BLOCK with its modes or INTERLEAVED; files write both, in any order.
constexpr InterfaceRule<PhProtocolParam> kCommunicationModes[] = {
    skipped(BLOCK, 0),
    flagProperty(SLAVE, setting::kSlaveBlockMode),
    bare(MASTER, parseMasterBlockMode),
    property(INTERLEAVED, setting::kQueueSize),
};

int parseCommunicationModes(BlockReader& reader, PhProtocolParam& protocol) {
    return readBareOptionals(reader, kCommunicationModes, protocol, reader.next());
}

constexpr InterfaceRule<PhProtocolParam> kProtocolLayerParts[] = {
    bare(OPTIONAL_CMD, parseOptionalCmd),
    skipped(OPTIONAL_LEVEL1_CMD, 1),
    skipped(MAX_DTO_STIM, 1),
    bare(COMMUNICATION_MODE_SUPPORTED, parseCommunicationModes),
    blockOf(COMMUNICATION_MODE_SUPPORTED, kCommunicationModes),
    textProperty(SEED_AND_KEY_EXTERNAL_FUNCTION, setting::kSeedAndKeyFunction),
};

}  // namespace

int parseXcpProtocolLayer(BlockReader& reader, PhProtocolParam& protocol) {
    PhProperties& properties = *protocol.properties;
    for (const std::string_view key : kNumberKeys) {
        reader.keepInteger(properties, key, readTruncated(reader));
    }
    const int kind = reader.next();
    const std::optional<std::int32_t> byteOrder = findWord(reader, kByteOrders, kind);
    if (!byteOrder) {
        return reader.unexpectedToken(kind);
    }
    properties.setInteger(setting::kXcpByteOrderCode, *byteOrder);
    changeEncoding(reader, protocol,
                   *byteOrder == 1 ? PhByteOrder::BigEndian : PhByteOrder::LittleEndian,
                   "XCP/PROTOCOL_LAYER");
    if (const std::optional<std::int32_t> granularity = readWord(reader, kGranularities)) {
        properties.setInteger(setting::kAddressGranularity, *granularity);
    }
    return readInterfaceParts(reader, kProtocolLayerParts, protocol, PROTOCOL_LAYER, reader.next());
}

}  // namespace quillmark
