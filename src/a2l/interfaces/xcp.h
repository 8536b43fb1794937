#pragma once

#include "a2l/interfaces/interface_block.h"
#include "a2l/reader/block_reader.h"
#include "model/protocol_model.h"
#include "model/signal_model.h"

namespace quillmark {

/// Reads an XCP interface block (ASAM MCD-1 XCP, 1.0 to 1.5). A module's settings go to its
/// communication parameters named "XCP", which several blocks may fill one after the other; a
/// signal's to the signal. Whatever else stands in the block of anything but a module is checked
/// like everything and then forgotten.
int parseXcp(InterfaceBlock& block);

// --- The blocks within ---------------------------------------------------------------------------
//
// Each is called after `/begin KEYWORD`, with the XCP keywords current, and returns the kind of the
// token after its `/end KEYWORD`.

int parseXcpProtocolLayer(BlockReader& reader, PhProtocolParam& protocol);

/// What a DAQ block fills. Within a transport it overrides the settings of the protocol.
struct XcpDaqTarget {
    PhStationParam& station;
    bool inTransport;
    PhDaqCapabilities& daq = station.daqCapabilities();
};

int parseXcpDaq(BlockReader& reader, XcpDaqTarget target);
int parseXcpDaqList(BlockReader& reader, XcpDaqTarget& target);
int parseXcpEvent(BlockReader& reader, XcpDaqTarget& target);

/// `signal` is nullptr for a block that belongs to no signal.
int parseXcpDaqEvent(BlockReader& reader, PhEntity* signal);

int parseXcpOnCan(BlockReader& reader, PhTransportParam& transport);
int parseXcpOnUdpIp(BlockReader& reader, PhTransportParam& transport);
int parseXcpOnTcpIp(BlockReader& reader, PhTransportParam& transport);
int parseXcpOnFlx(BlockReader& reader, PhTransportParam& transport);

// --- Parts of several transports -----------------------------------------------------------------

/// A PROTOCOL_LAYER or DAQ that overrides the protocol's for one transport.
int parseXcpTransportProtocolLayer(BlockReader& reader, PhTransportParam& transport);
int parseXcpTransportDaq(BlockReader& reader, PhTransportParam& transport);

int parseXcpTransportInstance(BlockReader& reader, PhTransportParam& transport);

/// Reads the word for a packet alignment and stores it; for any other token the warning "Unexpected
/// token for Packet-Alignment: %d".
void readXcpPacketAlignment(BlockReader& reader, PhTransportParam& transport);

}  // namespace quillmark
