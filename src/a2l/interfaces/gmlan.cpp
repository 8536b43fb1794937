// IF_DATA ASAP1B_GMLAN.

#include "a2l/interfaces/gmlan.h"

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

/// A block of `Count` parameters that nothing needs.
template <int Keyword, int Count>
int dropBlock(BlockReader& reader, PhTransportParam& transport) {
    return readInterfaceParts(reader, kNoInterfaceRules<PhTransportParam>, transport, Keyword,
                              reader.drop(Count));
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
    return readInterfaceParts(reader, kNoInterfaceRules<PhTransportParam>, transport, ADDRESS,
                              kind);
}

int parseTransportVersion(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceWord kVersions[] = {{ISO15765_2_2003, 2}};
    readWord(reader, kVersions);
    return readInterfaceParts(reader, kNoInterfaceRules<PhTransportParam>, transport,
                              TransportProtocolVersion, reader.next());
}

int parseTransportCan(BlockReader& reader, PhTransportParam& transport) {
    static constexpr InterfaceRule<PhTransportParam> kParts[] = {
        {Form::Bare, SamplePoint, nullptr, 1},
        {Form::Bare, SamplesPerBit, nullptr, 1},
        {Form::Bare, BTL_CYCLES, nullptr, 1},
        {Form::Bare, SJW, nullptr, 1},
        {Form::Bare, SYNC_EDGE, nullptr, 1},
        {Form::Bare, NETWORK_LIMITS, nullptr, 2},
        {Form::Bare, USDTP_TIMING_DEFAULTS, &dropTimings},
        {Form::Bare, USDTP_TIMING, &dropTimings},
        {Form::Block, ADDRESS, &parseAddress},
        {Form::Block, TransportProtocolVersion, &parseTransportVersion},
    };
    return readInterfaceParts(reader, kParts, transport, CAN,
                              storeProperty<setting::kBitrate>(reader, transport));
}

/// Four parameters and any number of further parameter bytes.
int parseDiagBaud(BlockReader& reader, PhTransportParam& transport) {
    constexpr int kParameters = 4;
    return readInterfaceParts(reader, kNoInterfaceRules<PhTransportParam>, transport, DIAG_BAUD,
                              dropIntegers(reader, reader.drop(kParameters)));
}

void readByteOrder(BlockReader& reader, PhProtocolParam& protocol) {
    static constexpr InterfaceWord kOrders[] = {
        {BYTEORDER_MSB_FIRST, static_cast<std::int32_t>(PhByteOrder::BigEndian)},
        {BYTEORDER_MSB_LAST, static_cast<std::int32_t>(PhByteOrder::LittleEndian)},
    };
    if (const auto code =
            readWord(reader, kOrders, "Invalid Byteorder %d in ASAP1B_GMLAN/TP_BLOB")) {
        changeEncoding(reader, protocol, static_cast<PhByteOrder>(*code), "GMLAN/TP_BLOB");
    }
}

int parseTpBlob(BlockReader& reader, PhCommParam& commParam) {
    const auto transport = addTransport(&commParam, "CAN", PhTransportType::Can);
    reader.next();  // version of the block and of the protocol
    reader.next();
    readByteOrder(reader, commParam.stationParam->protocolParam());
    traceBlock(reader, "  Parse IF_DATA ASAP1B_GMLAN/TP_BLOB\n");
    static constexpr InterfaceRule<PhTransportParam> kParts[] = {
        {Form::Block, SESSION, &dropBlock<SESSION, 2>},
        {Form::Block, DATA_ACCESS, &dropBlock<DATA_ACCESS, 6>},
        {Form::Block, DIAG_BAUD, &parseDiagBaud},
        {Form::Block, ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER},  // skipped
        {Form::Block, CAN, &parseTransportCan},
    };
    return readInterfaceParts(reader, kParts, *transport, TP_BLOB, reader.next());
}

// --- SOURCE --------------------------------------------------------------------------------------

/// A block that tells the first and the last identifier of a range.
template <int Keyword, int FirstKeyword, const std::string_view& First, int LastKeyword,
          const std::string_view& Last>
int parseRange(BlockReader& reader, PhDaqCapabilities& capabilities) {
    static constexpr InterfaceRule<PhDaqCapabilities> kParts[] = {
        {Form::Bare, FirstKeyword, &storeProperty<First, PhDaqCapabilities>},
        {Form::Bare, LastKeyword, &storeProperty<Last, PhDaqCapabilities>},
    };
    return readInterfaceParts(reader, kParts, capabilities, Keyword, reader.next());
}

int parseSourceCan(BlockReader& reader, PhDaqCapabilities& capabilities) {
    static constexpr InterfaceRule<PhDaqCapabilities> kParts[] = {
        {Form::Block, UUDT_CAN_IDs,
         &parseRange<UUDT_CAN_IDs, FIRST_CAN_ID, setting::kCanIdFirst, LAST_CAN_ID,
                     setting::kCanIdLast>},
    };
    return readInterfaceParts(reader, kParts, capabilities, CAN, reader.next());
}

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
    traceBlock(reader, "  Parse IF_DATA ASAP1B_GMLAN/SOURCE\n");
    static constexpr InterfaceRule<PhDaqCapabilities> kParts[] = {
        {Form::Bare, QP_BLOB, nullptr, 0},
        {Form::Bare, QP_BLOB_VERSION, nullptr, 1},
        {Form::Bare, FREERUNNINGMODE, nullptr, 0},
        {Form::Bare, RDBPI_PARAMETER, nullptr, 2},
        {Form::Bare, TRANSMISSION_MODE, nullptr, 1},
        {Form::Bare, AVAILABLE_ON, nullptr, 1},
        {Form::Block, CAN, &parseSourceCan},
        {Form::Block, AVAILABLE_PERIODIC_IDENTIFIER_RANGE,
         &parseRange<AVAILABLE_PERIODIC_IDENTIFIER_RANGE, FIRST_ID, setting::kPacketIdFirst,
                     LAST_ID, setting::kPacketIdLast>},
        {Form::Block, AVAILABLE_PARAMETER_IDENTIFIER_RANGE,
         &parseRange<AVAILABLE_PARAMETER_IDENTIFIER_RANGE, FIRST_ID, setting::kParameterIdFirst,
                     LAST_ID, setting::kParameterIdLast>},
    };
    return readInterfaceParts(reader, kParts, capabilities, SOURCE, reader.next());
}

constexpr InterfaceRule<PhCommParam> kBlocks[] = {
    {Form::Block, SOURCE, &parseSource},
    {Form::Block, TP_BLOB, &parseTpBlob},
};

}  // namespace

int parseGmlan(InterfaceBlock& block) {
    BlockReader& reader = block.reader;
    traceBlock(reader, "  Parse IF_DATA ASAP1B_GMLAN\n");
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
