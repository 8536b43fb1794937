// How a control unit is reached over FlexRay: XCP_ON_FLX with its buffers.

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr InterfaceWord kHeaderTypes[] = {
    {HEADER_NAX, 0},         {HEADER_NAX_FILL, 1},      {HEADER_NAX_CTR, 2},
    {HEADER_NAX_FILL3, 3},   {HEADER_NAX_CTR_FILL2, 4}, {HEADER_NAX_LEN, 5},
    {HEADER_NAX_CTR_LEN, 6}, {HEADER_NAX_FILL2_LEN, 7}, {HEADER_NAX_CTR_FILL_LEN, 8},
};

constexpr InterfaceWord kChannels[] = {{A, 0}, {B, 1}};

constexpr InterfaceWord kLengthKinds[] = {{FIXED, 0}, {VARIABLE, 1}};

/// Whether a buffer may carry packets of a kind, and how far that is fixed.
constexpr InterfaceWord kPacketUses[] = {
    {NOT_ALLOWED, 0}, {FIXED, 1}, {VARIABLE_INITIALISED, 2}, {VARIABLE, 3}};

/// Reads what stands before the value of a part of a slot: FIXED, or VARIABLE and INITIAL_VALUE;
/// another word counts as VARIABLE, after the warning "Unexpected token '%s' found". Returns true
/// before a value; else `kind` is the kind of the token after the part.
bool readAssignment(BlockReader& reader, int& kind) {
    kind = reader.next();
    if (kind == FIXED) {
        return true;
    }
    if (kind != VARIABLE) {
        reader.unexpectedTokenWarning(kind);
    }
    kind = reader.next();
    return kind == INITIAL_VALUE;
}

int parseSlotId(BlockReader& reader, PhFlexRayBuffer& buffer) {
    int kind = 0;
    return readAssignment(reader, kind) ? storeInteger<&PhFlexRayBuffer::slotId>(reader, buffer)
                                        : kind;
}

template <const std::string_view& Key>
int parseSlotNumber(BlockReader& reader, PhFlexRayBuffer& buffer) {
    int kind = 0;
    return readAssignment(reader, kind) ? storeProperty<Key>(reader, buffer) : kind;
}

int parseChannel(BlockReader& reader, PhFlexRayBuffer& buffer) {
    int kind = 0;
    if (!readAssignment(reader, kind)) {
        return kind;
    }
    if (const std::optional<std::int32_t> channel = readWord(reader, kChannels)) {
        reader.keepInteger(*buffer.properties, setting::kChannel, *channel);
    }
    return reader.next();
}

int parseLpduId(BlockReader& reader, PhFlexRayBuffer& buffer) {
    static constexpr InterfaceRule<PhFlexRayBuffer> kParts[] = {
        {Form::Bare, FLX_SLOT_ID, &parseSlotId},
        {Form::Bare, OFFSET, &parseSlotNumber<setting::kOffset>},
        {Form::Bare, CYCLE_REPETITION, &parseSlotNumber<setting::kCycleRepetition>},
        {Form::Bare, CHANNEL, &parseChannel},
    };
    return readInterfaceParts(reader, kParts, buffer, LPDU_ID, reader.next());
}

int parseXcpPacket(BlockReader& reader, PhFlexRayBuffer& buffer) {
    static constexpr InterfaceRule<PhFlexRayBuffer> kParts[] = {
        {Form::Bare, CMD, &judgeWord<kPacketUses>},
        {Form::Bare, RES_ERR, &judgeWord<kPacketUses>},
        {Form::Bare, EV_SERV, &judgeWord<kPacketUses>},
        {Form::Bare, DAQ, &judgeWord<kPacketUses>},
        {Form::Bare, STIM, &judgeWord<kPacketUses>},
        {Form::Bare, MULTICAST, &judgeWord<kPacketUses>},
    };
    return readInterfaceParts(reader, kParts, buffer, XCP_PACKET, reader.next());
}

int parseMaxLength(BlockReader& reader, PhFlexRayBuffer& buffer) {
    readWord(reader, kLengthKinds);  // a length follows either way
    return storeInteger<&PhFlexRayBuffer::maxLength>(reader, buffer);
}

/// What a buffer is for.
enum BufferRole : std::int32_t { kInitialCommand = 1, kInitialResponse = 2, kPool = 3 };

template <BufferRole Role, int Keyword>
int parseBuffer(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceRule<PhFlexRayBuffer> kParts[] = {
        {Form::Bare, MAX_FLX_LEN_BUF, &parseMaxLength},
        {Form::Block, LPDU_ID, &parseLpduId},
        {Form::Block, XCP_PACKET, &parseXcpPacket},
    };
    auto buffer = makePh<PhFlexRayBuffer>();
    buffer->role = Role;
    buffer->properties = makePh<PhProperties>();
    buffer->number = readIntegerValue(reader);
    reader.keepIn(transport.flexRayBuffers, buffer);
    return readInterfaceParts(reader, kParts, *buffer, Keyword, reader.next());
}

constexpr InterfaceRule<PhTransportParam> kFlexRayParts[] = {
    {Form::Block, INITIAL_CMD_BUFFER, &parseBuffer<kInitialCommand, INITIAL_CMD_BUFFER>},
    {Form::Block, INITIAL_RES_ERR_BUFFER, &parseBuffer<kInitialResponse, INITIAL_RES_ERR_BUFFER>},
    {Form::Block, POOL_BUFFER, &parseBuffer<kPool, POOL_BUFFER>},
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

void readHeaderType(BlockReader& reader, PhTransportParam& transport) {
    if (const auto code = readWord(reader, kHeaderTypes, "Unexpected token for Header-Type: %d")) {
        reader.keepInteger(*transport.properties, setting::kHeaderType, *code);
    }
}

}  // namespace

int parseXcpOnFlx(BlockReader& reader, PhTransportParam& transport) {
    traceBlock(reader, "  Parse IF_DATA XCP_ON_FLEXRAY\n");
    PhProperties& properties = *transport.properties;
    reader.next();  // version of the transport
    reader.keepInteger(properties, setting::kT1FlexRay, readTruncated(reader));
    if (readText(reader)) {
        reader.keepText(properties, "FIBEX_FILE", reader.token().text);
    }
    if (readText(reader)) {
        reader.keepText(properties, "CLUSTER_ID", reader.token().text);
    }
    reader.keepInteger(properties, setting::kNax, readTruncated(reader));
    readHeaderType(reader, transport);
    readXcpPacketAlignment(reader, transport);
    return readInterfaceParts(reader, kFlexRayParts, transport, XCP_ON_FLX, reader.next());
}

}  // namespace quillmark
