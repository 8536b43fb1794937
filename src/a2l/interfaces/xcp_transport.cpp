// How a control unit is reached: over CAN, UDP and TCP.

#include <cstdint>
#include <optional>

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr WordRow<std::int32_t> kSyncEdges[] = {{SINGLE, 1}, {DUAL, 2}};

constexpr WordRow<std::int32_t> kSwitchWords[] = {
    {identifier("OFF"), 0},
    {identifier("ON"), 1},
};

constexpr WordRow<std::int32_t> kPacketAlignments[] = {
    {PACKET_ALIGNMENT_8, 0},
    {PACKET_ALIGNMENT_16, 1},
    {PACKET_ALIGNMENT_32, 2},
};

int parseVariableCanId(BlockReader& reader, PhDaqTpCan& list) {
    list.canId = {};
    return reader.next();
}

int parseDaqListCanId(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceRule<PhDaqTpCan> kParts[] = {
        integer(FIXED, &PhDaqTpCan::canId),
        bare(VARIABLE, parseVariableCanId),
    };
    PhDaqTpCapabilities& identifiers = transport.stationParam().daqTpCapabilities();
    const PhHandle<PhValue> number = readIntegerValue(reader);
    PhHandle<PhDaqTpCan> list(identifiers.findByNumber(number->toInteger()));
    if (!list) {
        list = makePh<PhDaqTpCan>();
        list->number = number;
        reader.keepIn(identifiers.daqLists, list);
    }
    return readInterfaceParts(reader, kParts, *list, DAQ_LIST_CAN_ID, reader.next());
}

int parseSyncEdge(BlockReader& reader, PhCanFdParam& canFd) {
    if (const std::optional<std::int32_t> edge = readWord(reader, kSyncEdges)) {
        reader.keep(canFd.syncEdge, PhValue::ofInteger(*edge));
    }
    return reader.next();
}

int parseDelayCompensation(BlockReader& reader, PhCanFdParam& canFd) {
    readWordInto(reader, kSwitchWords, canFd.transceiverDelayCompensation);
    return reader.next();
}

int parseCanFd(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceRule<PhCanFdParam> kParts[] = {
        integer(MAX_DLC, &PhCanFdParam::maxDlc),
        integer(CAN_FD_DATA_TRANSFER_BAUDRATE, &PhCanFdParam::dataBitrate),
        integer(SAMPLE_POINT, &PhCanFdParam::samplePoint),
        integer(BTL_CYCLES, &PhCanFdParam::btlCycles),
        integer(SJW, &PhCanFdParam::sjw),
        bare(SYNC_EDGE, parseSyncEdge),
        flag(MAX_DLC_REQUIRED, &PhCanFdParam::maxDlcRequired),
        integer(SECONDARY_SAMPLE_POINT, &PhCanFdParam::secondarySamplePoint),
        bare(TRANSCEIVER_DELAY_COMPENSATION, parseDelayCompensation),
    };
    auto canFd = makePh<PhCanFdParam>();
    transport.canFd = canFd;
    return readInterfaceParts(reader, kParts, *canFd, CAN_FD, reader.next());
}

constexpr InterfaceRule<PhTransportParam> kCanParts[] = {
    property(BAUDRATE, setting::kBitrate),
    integer(CAN_ID_MASTER, &PhTransportParam::masterCanId),
    integer(CAN_ID_SLAVE, &PhTransportParam::slaveCanId),
    flagProperty(MAX_DLC_REQUIRED, setting::kMaxDlcRequired),
    bare(TRANSPORT_LAYER_INSTANCE, parseXcpTransportInstance),
    skipped(CAN_ID_BROADCAST, 1),
    skipped(CAN_ID_GET_DAQ_CLOCK_MULTICAST, 1),
    skipped(SAMPLE_POINT, 1),
    skipped(SAMPLE_RATE, 1),
    skipped(BTL_CYCLES, 1),
    skipped(SJW, 1),
    skipped(SYNC_EDGE, 1),
    skipped(MAX_BUS_LOAD, 1),
    skipped(OPTIONAL_TL_SUBCMD, 1),
    skipped(CAN_ID_MASTER_INCREMENTAL, 0),
    skipped(MEASUREMENT_SPLIT_ALLOWED, 0),
    block(DAQ_LIST_CAN_ID, parseDaqListCanId),
    block(PROTOCOL_LAYER, parseXcpTransportProtocolLayer),
    block(DAQ, parseXcpTransportDaq),
    block(CAN_FD, parseCanFd),
};

int parseIpV6(BlockReader& reader, PhTransportParam& transport) {
    reader.keepInteger(*transport.properties, setting::kIpv6, 1);
    return storeTextProperty(reader, *transport.properties, setting::kHostName);
}

int parsePacketAlignment(BlockReader& reader, PhTransportParam& transport) {
    readXcpPacketAlignment(reader, transport);
    return reader.next();
}

constexpr InterfaceRule<PhTransportParam> kIpParts[] = {
    textProperty(HOST_NAME, setting::kHostName),
    textProperty(ADDRESS, setting::kHostName),
    bare(IPV6, parseIpV6),
    skipped(MAX_BUS_LOAD, 1),
    skipped(MAX_BIT_RATE, 1),
    bare(PACKET_ALIGNMENT, parsePacketAlignment),
    skipped(OPTIONAL_TL_SUBCMD, 1),
    bare(TRANSPORT_LAYER_INSTANCE, parseXcpTransportInstance),
    block(PROTOCOL_LAYER, parseXcpTransportProtocolLayer),
    block(DAQ, parseXcpTransportDaq),
};

/// Everything but the end of a UDP or TCP block. Returns the kind of its `/end`, or an error.
int parseIpParts(BlockReader& reader, PhTransportParam& transport) {
    reader.next();  // version of the transport
    reader.keepInteger(*transport.properties, setting::kPort, readTruncated(reader));
    int kind = reader.next();
    if (kind == TOK_STRING) {  // files also write the address without a keyword
        reader.keepText(*transport.properties, setting::kHostName, reader.token().text);
        kind = reader.next();
    }
    return readInterfaceOptionals(reader, kIpParts, transport, kind);
}

}  // namespace

int parseXcpOnCan(BlockReader& reader, PhTransportParam& transport) {
    reader.traceBlock("  Parse IF_DATA XCP_ON_CAN\n");
    int kind = reader.next();
    if (kind == TOK_INTEGER) {  // version of the transport, missing in old files
        kind = reader.next();
    }
    return readInterfaceParts(reader, kCanParts, transport, XCP_ON_CAN, kind);
}

// The messages about a missing end have always named the two IP transports without their last part.

int parseXcpOnUdpIp(BlockReader& reader, PhTransportParam& transport) {
    reader.traceBlock("  Parse IF_DATA XCP_ON_UDP_IP\n");
    const int kind = parseIpParts(reader, transport);
    return kind == END ? reader.closeBlock(XCP_ON_UDP_IP, "XCP_ON_UDP") : kind;
}

int parseXcpOnTcpIp(BlockReader& reader, PhTransportParam& transport) {
    reader.traceBlock("  Parse IF_DATA XCP_ON_TCP_IP\n");
    const int kind = parseIpParts(reader, transport);
    return kind == END ? reader.closeBlock(XCP_ON_TCP_IP, "XCP_ON_TCP") : kind;
}

int parseXcpTransportProtocolLayer(BlockReader& reader, PhTransportParam& transport) {
    return parseXcpProtocolLayer(reader, transport.stationParam().protocolParam());
}

int parseXcpTransportDaq(BlockReader& reader, PhTransportParam& transport) {
    return parseXcpDaq(reader, {transport.stationParam(), true});
}

int parseXcpTransportInstance(BlockReader& reader, PhTransportParam& transport) {
    if (readText(reader)) {
        reader.keep(transport.instanceName, PhString(reader.token().text));
    }
    return reader.next();
}

void readXcpPacketAlignment(BlockReader& reader, PhTransportParam& transport) {
    if (const auto code =
            readWord(reader, kPacketAlignments, "Unexpected token for Packet-Alignment: %d")) {
        reader.keepInteger(*transport.properties, setting::kPacketAlignment, *code);
    }
}

}  // namespace quillmark
