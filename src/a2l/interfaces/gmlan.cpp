// IF_DATA ASAP1B_GMLAN.

#include "a2l/interfaces/gmlan.h"

#include <cstdint>
#include <string_view>

#include "a2l/interfaces/daq_source.h"
#include "a2l/interfaces/interface_block.h"
#include "a2l/interfaces/interface_parts.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::gmlan;

/// Integers up to the next other token, whose kind is returned.
int dropIntegers(BlockReader& reader, int kind) {
    while (kind == TOK_INTEGER) {
        kind = reader.next();
    }
    return kind;
}

// --- TP_BLOB -------------------------------------------------------------------------------------

/// Timings come in a long and a short form.
int dropTimings(BlockReader& reader, PhTransportParam&) {
    return dropIntegers(reader, reader.next());
}

/// The two CAN identifiers, then up to two target addresses.
int parseAddress(BlockReader& reader, PhTransportParam& transport) {
    constexpr int kMaxTargets = 2;
    constexpr std::string_view kTargetPrefix = "TGT_";
    reader.keep(transport.slaveCanId, readIntegerValue(reader));
    reader.keep(transport.masterCanId, readIntegerValue(reader));
    int kind = reader.next();
    for (int i = 0; i < kMaxTargets && kind == TOK_IDENT &&
                    reader.token().text.substr(0, kTargetPrefix.size()) == kTargetPrefix;
         ++i) {
        kind = reader.drop(1);
    }
    return readInterfaceEnd(reader, ADDRESS, kind);
}

int parseTransportVersion(BlockReader& reader, PhTransportParam&) {
    static constexpr WordRow<std::int32_t> kVersions[] = {{ISO15765_2_2003, 2}};
    readWord(reader, kVersions);
    return readInterfaceEnd(reader, TransportProtocolVersion, reader.next());
}

int parseTransportCan(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceRule<PhTransportParam> kParts[] = {
        skipped(SamplePoint, 1),
        skipped(SamplesPerBit, 1),
        skipped(BTL_CYCLES, 1),
        skipped(SJW, 1),
        skipped(SYNC_EDGE, 1),
        skipped(NETWORK_LIMITS, 2),
        bare(USDTP_TIMING_DEFAULTS, dropTimings),
        bare(USDTP_TIMING, dropTimings),
        block(ADDRESS, parseAddress),
        block(TransportProtocolVersion, parseTransportVersion),
    };
    return readInterfaceParts(reader, kParts, transport, CAN,
                              storeProperty(reader, *transport.properties, setting::kBitrate));
}

/// Four parameters and any number of further parameter bytes.
int parseDiagBaud(BlockReader& reader, PhTransportParam&) {
    constexpr int kParameters = 4;
    return readInterfaceEnd(reader, DIAG_BAUD, dropIntegers(reader, reader.drop(kParameters)));
}

void readByteOrder(BlockReader& reader, PhProtocolParam& protocol) {
    static constexpr WordRow<PhByteOrder> kOrders[] = {
        {BYTEORDER_MSB_FIRST, PhByteOrder::BigEndian},
        {BYTEORDER_MSB_LAST, PhByteOrder::LittleEndian},
    };
    if (const auto order =
            readWord(reader, kOrders, "Invalid Byteorder %d in ASAP1B_GMLAN/TP_BLOB")) {
        changeEncoding(reader, protocol, *order, "GMLAN/TP_BLOB");
    }
}

int parseTpBlob(BlockReader& reader, PhCommParam& commParam) {
    const auto transport = addTransport(&commParam, "CAN", PhTransportType::Can);
    reader.next();  // version of the block and of the protocol
    reader.next();
    readByteOrder(reader, commParam.stationParam->protocolParam());
    reader.traceBlock("  Parse IF_DATA ASAP1B_GMLAN/TP_BLOB\n");
    static constexpr InterfaceRule<PhTransportParam> kParts[] = {
        skippedParameters(SESSION, 2),
        skippedParameters(DATA_ACCESS, 6),
        block(DIAG_BAUD, parseDiagBaud),
        // Of all that, the transport alone is kept.
        block(CAN, parseTransportCan),
    };
    return readInterfaceParts(reader, kParts, *transport, TP_BLOB, reader.next());
}

// --- SOURCE --------------------------------------------------------------------------------------

// Blocks that tell the first and the last identifier of a range.

using DaqRule = InterfaceRule<PhDaqCapabilities>;

constexpr DaqRule kCanIds[] = {
    property(FIRST_CAN_ID, setting::kCanIdFirst),
    property(LAST_CAN_ID, setting::kCanIdLast),
};

constexpr DaqRule kPacketIds[] = {
    property(FIRST_ID, setting::kPacketIdFirst),
    property(LAST_ID, setting::kPacketIdLast),
};

constexpr DaqRule kParameterIds[] = {
    property(FIRST_ID, setting::kParameterIdFirst),
    property(LAST_ID, setting::kParameterIdLast),
};

constexpr DaqRule kSourceCanParts[] = {
    blockOf(UUDT_CAN_IDs, kCanIds),
};

int parseSource(BlockReader& reader, PhCommParam& commParam) {
    DaqSource source = addDaqSource(*commParam.stationParam);
    PhDaqCapabilities& capabilities = commParam.stationParam->daqCapabilities();
    capabilities.rasters.append(makePh<PhRaster>());
    PhRaster& raster = capabilities.rasters.last();
    if (!readText(reader)) {
        return TOK_ERROR;
    }
    const PhString name(reader.token().text);
    source.entry.setName(name);
    source.daq.setName(name);
    raster.setName(name);
    raster.shortName = name;
    raster.cyclic = true;
    // The scaling unit serves as the source's number; the rate is not kept.
    const std::int32_t number = readTruncated(reader);
    reader.keep(source.daq.number, PhValue::ofInteger(number));
    reader.keep(source.tpCan.number, PhValue::ofInteger(number));
    reader.keep(raster.channel, PhValue::ofInteger(number));
    reader.next();
    reader.traceBlock("  Parse IF_DATA ASAP1B_GMLAN/SOURCE\n");
    static constexpr DaqRule kParts[] = {
        skipped(QP_BLOB, 0),
        skipped(QP_BLOB_VERSION, 1),
        skipped(FREERUNNINGMODE, 0),
        skipped(RDBPI_PARAMETER, 2),
        skipped(TRANSMISSION_MODE, 1),
        skipped(AVAILABLE_ON, 1),
        blockOf(CAN, kSourceCanParts),
        blockOf(AVAILABLE_PERIODIC_IDENTIFIER_RANGE, kPacketIds),
        blockOf(AVAILABLE_PARAMETER_IDENTIFIER_RANGE, kParameterIds),
    };
    return readInterfaceParts(reader, kParts, capabilities, SOURCE, reader.next());
}

constexpr InterfaceRule<PhCommParam> kBlocks[] = {
    block(SOURCE, parseSource),
    block(TP_BLOB, parseTpBlob),
};

}  // namespace

int parseGmlan(InterfaceBlock& block) {
    BlockReader& reader = block.reader;
    reader.traceBlock("  Parse IF_DATA ASAP1B_GMLAN\n");
    reader.useKeywords(kGmlanKeywords);
    int kind = reader.next();
    while (kind == BEGIN) {
        PhCommParam unattached;
        PhCommParam* const commParam = obtainCommParam(block, "GMLAN", PhProtocolType::Gmlan);
        kind = readInterfaceBlock(reader, kBlocks, commParam == nullptr ? unattached : *commParam);
    }
    return closeInterface(reader, kind) ? reader.next() : TOK_ERROR;
}

}  // namespace quillmark
