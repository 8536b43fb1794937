// How a control unit is reached over FlexRay: XCP_ON_FLX with its buffers.

#include <cstdint>
#include <optional>

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr WordRow<std::int32_t> kHeaderTypes[] = {
    {HEADER_NAX, 0},         {HEADER_NAX_FILL, 1},      {HEADER_NAX_CTR, 2},
    {HEADER_NAX_FILL3, 3},   {HEADER_NAX_CTR_FILL2, 4}, {HEADER_NAX_LEN, 5},
    {HEADER_NAX_CTR_LEN, 6}, {HEADER_NAX_FILL2_LEN, 7}, {HEADER_NAX_CTR_FILL_LEN, 8},
};

constexpr WordRow<std::int32_t> kChannels[] = {{A, 0}, {B, 1}};

constexpr WordRow<std::int32_t> kLengthKinds[] = {{FIXED, 0}, {VARIABLE, 1}};

/// Whether a buffer may carry packets of a kind, and how far that is fixed.
constexpr WordRow<std::int32_t> kPacketUses[] = {
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

using BufferRule = InterfaceRule<PhFlexRayBuffer>;

int parseSlotId(BlockReader& reader, PhFlexRayBuffer& buffer) {
    int kind = 0;
    return readAssignment(reader, kind) ? storeInteger(reader, buffer.slotId) : kind;
}

/// The rule tells the name under which the number is kept.
int parseSlotNumber(BlockReader& reader, PhFlexRayBuffer& buffer, const BufferRule& rule) {
    int kind = 0;
    return readAssignment(reader, kind)
               ? storeProperty(reader, *buffer.properties, rule.value<std::string_view>())
               : kind;
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

constexpr BufferRule kLpduIdParts[] = {
    bare(FLX_SLOT_ID, parseSlotId),
    bare(OFFSET, parseSlotNumber, setting::kOffset),
    bare(CYCLE_REPETITION, parseSlotNumber, setting::kCycleRepetition),
    bare(CHANNEL, parseChannel),
};

constexpr BufferRule kPackets[] = {
    // Requests and answers,
    judged(CMD, kPacketUses),
    judged(RES_ERR, kPacketUses),
    judged(EV_SERV, kPacketUses),
    // measured data and stimulation.
    judged(DAQ, kPacketUses),
    judged(STIM, kPacketUses),
    judged(MULTICAST, kPacketUses),
};

int parseMaxLength(BlockReader& reader, PhFlexRayBuffer& buffer) {
    readWord(reader, kLengthKinds);  // a length follows either way
    return storeInteger(reader, buffer.maxLength);
}

/// What a buffer is for.
enum BufferRole : std::int32_t { kInitialCommand = 1, kInitialResponse = 2, kPool = 3 };

/// The rule tells the role.
int parseBuffer(BlockReader& reader, PhTransportParam& transport,
                const InterfaceRule<PhTransportParam>& rule) {
    static constexpr BufferRule kParts[] = {
        bare(MAX_FLX_LEN_BUF, parseMaxLength),
        blockOf(LPDU_ID, kLpduIdParts),
        blockOf(XCP_PACKET, kPackets),
    };
    auto buffer = makePh<PhFlexRayBuffer>();
    buffer->role = rule.value<int>();
    buffer->properties = makePh<PhProperties>();
    buffer->number = readIntegerValue(reader);
    reader.keepIn(transport.flexRayBuffers, buffer);
    return readInterfaceParts(reader, kParts, *buffer, rule.keyword(), reader.next());
}

constexpr InterfaceRule<PhTransportParam> kFlexRayParts[] = {
    block(INITIAL_CMD_BUFFER, parseBuffer, kInitialCommand),
    block(INITIAL_RES_ERR_BUFFER, parseBuffer, kInitialResponse),
    block(POOL_BUFFER, parseBuffer, kPool),
    skipped(OPTIONAL_TL_SUBCMD, 1),
    bare(TRANSPORT_LAYER_INSTANCE, parseXcpTransportInstance),
    block(PROTOCOL_LAYER, parseXcpTransportProtocolLayer),
    block(DAQ, parseXcpTransportDaq),
};

void readHeaderType(BlockReader& reader, PhTransportParam& transport) {
    if (const auto code = readWord(reader, kHeaderTypes, "Unexpected token for Header-Type: %d")) {
        reader.keepInteger(*transport.properties, setting::kHeaderType, *code);
    }
}

}  // namespace

int parseXcpOnFlx(BlockReader& reader, PhTransportParam& transport) {
    reader.traceBlock("  Parse IF_DATA XCP_ON_FLEXRAY\n");
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
