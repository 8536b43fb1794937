// How a control unit is reached: over CAN, UDP and TCP.

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr InterfaceWord kSyncEdges[] = {{SINGLE, 1}, {DUAL, 2}};

constexpr InterfaceWord kSwitchWords[] = {
    {TOK_IDENT, 0, "OFF"},
    {TOK_IDENT, 1, "ON"},
};

constexpr InterfaceWord kPacketAlignments[] = {
    {PACKET_ALIGNMENT_8, 0},
    {PACKET_ALIGNMENT_16, 1},
    {PACKET_ALIGNMENT_32, 2},
};

int parseFixedCanId(BlockReader& reader, PhDaqTpCan& list) {
    reader.keep(list.canId, readIntegerValue(reader));
    return reader.next();
}

int parseVariableCanId(BlockReader& reader, PhDaqTpCan& list) {
    list.canId = {};
    return reader.next();
}

int parseDaqListCanId(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceRule<PhDaqTpCan> kParts[] = {
        {Form::Bare, FIXED, &parseFixedCanId},
        {Form::Bare, VARIABLE, &parseVariableCanId},
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
        {Form::Bare, MAX_DLC, &storeInteger<&PhCanFdParam::maxDlc>},
        {Form::Bare, CAN_FD_DATA_TRANSFER_BAUDRATE, &storeInteger<&PhCanFdParam::dataBitrate>},
        {Form::Bare, SAMPLE_POINT, &storeInteger<&PhCanFdParam::samplePoint>},
        {Form::Bare, BTL_CYCLES, &storeInteger<&PhCanFdParam::btlCycles>},
        {Form::Bare, SJW, &storeInteger<&PhCanFdParam::sjw>},
        {Form::Bare, SYNC_EDGE, &parseSyncEdge},
        {Form::Bare, MAX_DLC_REQUIRED, &setFlag<&PhCanFdParam::maxDlcRequired>},
        {Form::Bare, SECONDARY_SAMPLE_POINT, &storeInteger<&PhCanFdParam::secondarySamplePoint>},
        {Form::Bare, TRANSCEIVER_DELAY_COMPENSATION, &parseDelayCompensation},
    };
    auto canFd = makePh<PhCanFdParam>();
    transport.canFd = canFd;
    return readInterfaceParts(reader, kParts, *canFd, CAN_FD, reader.next());
}

constexpr InterfaceRule<PhTransportParam> kCanParts[] = {
    {Form::Bare, BAUDRATE, &storeProperty<setting::kBitrate>},
    {Form::Bare, CAN_ID_MASTER, &storeInteger<&PhTransportParam::masterCanId>},
    {Form::Bare, CAN_ID_SLAVE, &storeInteger<&PhTransportParam::slaveCanId>},
    {Form::Bare, MAX_DLC_REQUIRED, &setProperty<setting::kMaxDlcRequired>},
    {Form::Bare, TRANSPORT_LAYER_INSTANCE, &parseXcpTransportInstance},
    {Form::Bare, CAN_ID_BROADCAST, nullptr, 1},
    {Form::Bare, CAN_ID_GET_DAQ_CLOCK_MULTICAST, nullptr, 1},
    {Form::Bare, SAMPLE_POINT, nullptr, 1},
    {Form::Bare, SAMPLE_RATE, nullptr, 1},
    {Form::Bare, BTL_CYCLES, nullptr, 1},
    {Form::Bare, SJW, nullptr, 1},
    {Form::Bare, SYNC_EDGE, nullptr, 1},
    {Form::Bare, MAX_BUS_LOAD, nullptr, 1},
    {Form::Bare, OPTIONAL_TL_SUBCMD, nullptr, 1},
    {Form::Bare, CAN_ID_MASTER_INCREMENTAL, nullptr, 0},
    {Form::Bare, MEASUREMENT_SPLIT_ALLOWED, nullptr, 0},
    {Form::Block, DAQ_LIST_CAN_ID, &parseDaqListCanId},
    {Form::Block, PROTOCOL_LAYER, &parseXcpTransportProtocolLayer},
    {Form::Block, DAQ, &parseXcpTransportDaq},
    {Form::Block, CAN_FD, &parseCanFd},
    {Form::Block, DAQ_EVENT},
    {Form::Block, PAG},
    {Form::Block, PGM},
    {Form::Block, SEGMENT},
    {Form::Block, TIME_CORRELATION},
    {Form::Block, EVENT_CAN_ID_LIST},
};

int parseIpV6(BlockReader& reader, PhTransportParam& transport) {
    reader.keepInteger(*transport.properties, setting::kIpv6, 1);
    return storeTextProperty<setting::kHostName>(reader, transport);
}

int parsePacketAlignment(BlockReader& reader, PhTransportParam& transport) {
    readXcpPacketAlignment(reader, transport);
    return reader.next();
}

constexpr InterfaceRule<PhTransportParam> kIpParts[] = {
    {Form::Bare, HOST_NAME, &storeTextProperty<setting::kHostName>},
    {Form::Bare, ADDRESS, &storeTextProperty<setting::kHostName>},
    {Form::Bare, IPV6, &parseIpV6},
    {Form::Bare, MAX_BUS_LOAD, nullptr, 1},
    {Form::Bare, MAX_BIT_RATE, nullptr, 1},
    {Form::Bare, PACKET_ALIGNMENT, &parsePacketAlignment},
    {Form::Bare, OPTIONAL_TL_SUBCMD, nullptr, 1},
    {Form::Bare, TRANSPORT_LAYER_INSTANCE, &parseXcpTransportInstance},
    {Form::Block, PROTOCOL_LAYER, &parseXcpTransportProtocolLayer},
    {Form::Block, DAQ, &parseXcpTransportDaq},
    {Form::Block, DAQ_EVENT},
    {Form::Block, PAG},
    {Form::Block, PGM},
    {Form::Block, SEGMENT},
    {Form::Block, TIME_CORRELATION},
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
    return readOptionals(reader, kIpParts, transport, kind);
}

}  // namespace

int parseXcpOnCan(BlockReader& reader, PhTransportParam& transport) {
    traceBlock(reader, "  Parse IF_DATA XCP_ON_CAN\n");
    int kind = reader.next();
    if (kind == TOK_INTEGER) {  // version of the transport, missing in old files
        kind = reader.next();
    }
    return readInterfaceParts(reader, kCanParts, transport, XCP_ON_CAN, kind);
}

// The messages about a missing end have always named the two IP transports without their last part.

int parseXcpOnUdpIp(BlockReader& reader, PhTransportParam& transport) {
    traceBlock(reader, "  Parse IF_DATA XCP_ON_UDP_IP\n");
    const int kind = parseIpParts(reader, transport);
    return kind == END ? reader.closeBlock(XCP_ON_UDP_IP, "XCP_ON_UDP") : kind;
}

int parseXcpOnTcpIp(BlockReader& reader, PhTransportParam& transport) {
    traceBlock(reader, "  Parse IF_DATA XCP_ON_TCP_IP\n");
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
