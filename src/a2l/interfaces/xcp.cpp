// The XCP interface block as a whole, and what its parts have to do with each other.

#include "a2l/interfaces/xcp.h"

#include <cstdint>

#include "a2l/interfaces/interface_parts.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

/// One XCP block while it is read.
struct XcpBlock {
    PhCommParam* commParam;   ///< of the module; nullptr when the block belongs to something else
    PhStationParam& station;  ///< that of `commParam`, or one that is thrown away
    PhEntity* signal;         ///< nullptr when the block belongs to something else
    PhHandle<PhTransportParam> canTransport;  ///< the last one
    bool hasProtocolLayer = false;
};

int parseCan(BlockReader& reader, XcpBlock& block) {
    block.canTransport = addTransport(block.commParam, "CAN", PhTransportType::Can);
    return parseXcpOnCan(reader, *block.canTransport);
}

int parseUdp(BlockReader& reader, XcpBlock& block) {
    return parseXcpOnUdpIp(reader, *addTransport(block.commParam, "UDP", PhTransportType::Udp));
}

int parseTcp(BlockReader& reader, XcpBlock& block) {
    return parseXcpOnTcpIp(reader, *addTransport(block.commParam, "TCP", PhTransportType::Tcp));
}

int parseFlexRay(BlockReader& reader, XcpBlock& block) {
    return parseXcpOnFlx(reader,
                         *addTransport(block.commParam, "FlexRay", PhTransportType::FlexRay));
}

int parseProtocolLayer(BlockReader& reader, XcpBlock& block) {
    block.hasProtocolLayer = true;
    return parseXcpProtocolLayer(reader, block.station.protocolParam());
}

int parseDaq(BlockReader& reader, XcpBlock& block) {
    return parseXcpDaq(reader, {block.station, false});
}

int parseDaqEvent(BlockReader& reader, XcpBlock& block) {
    return parseXcpDaqEvent(reader, block.signal);
}

constexpr InterfaceRule<XcpBlock> kBlocks[] = {
    block(XCP_ON_CAN, parseCan),
    block(XCP_ON_UDP_IP, parseUdp),
    block(XCP_ON_TCP_IP, parseTcp),
    block(XCP_ON_FLX, parseFlexRay),
    block(PROTOCOL_LAYER, parseProtocolLayer),
    block(DAQ, parseDaq),
    block(DAQ_EVENT, parseDaqEvent),
};

/// The CAN identifiers of DAQ lists stand in the CAN transport, the lists themselves at the
/// protocol. Brings the two together: each list of the protocol that the transport tells an
/// identifier for shares it. Identifiers of other lists stay with the transport only.
void mergeDaqLists(BlockReader& reader, const XcpBlock& block) {
    if (block.commParam == nullptr || !block.canTransport || !block.hasProtocolLayer) {
        return;
    }
    const PhStationParam* transportStation = block.canTransport->stationParamIfAny();
    const PhDaqTpCapabilities* identifiers =
        transportStation == nullptr ? nullptr : transportStation->daqTpCapabilitiesIfAny();
    const PhDaqCapabilities* daq = block.station.daqCapabilitiesIfAny();
    if (identifiers == nullptr || identifiers->daqLists.empty() || daq == nullptr ||
        daq->daqLists.empty()) {
        return;
    }
    reader.traceBlock("Merging DAQ-Lists ... \n");
    const PhDaqTpCapabilities& own = block.station.daqTpCapabilities();
    for (const PhDaqTpCan& identifier : identifiers->daqLists) {
        const std::int32_t number = identifier.number ? identifier.number->toInteger() : 0;
        if (PhDaqTpCan* list = own.findByNumber(number)) {
            list->canId = identifier.canId;
        }
    }
}

}  // namespace

int parseXcp(InterfaceBlock& block) {
    BlockReader& reader = block.reader;
    reader.traceBlock("  Parse IF_DATA XCP\n");
    PhStationParam unattached;
    PhCommParam* const commParam = obtainCommParam(block, "XCP", PhProtocolType::Xcp);
    XcpBlock parts{
        commParam,
        commParam == nullptr ? unattached : *commParam->stationParam,
        block.owner.kind() == PhClass::Entity ? &static_cast<PhEntity&>(block.owner) : nullptr,
        {},
    };
    reader.useKeywords(kXcpKeywords);
    if (!closeInterface(reader, readInterfaceOptionals(reader, kBlocks, parts, reader.next()))) {
        return TOK_ERROR;
    }
    mergeDaqLists(reader, parts);
    return reader.next();
}

}  // namespace quillmark
