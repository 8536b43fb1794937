// IF_DATA ASAP1B_CCP: addresses of signals, and the data sources of a module.

#include "a2l/interfaces/ccp.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "a2l/interfaces/ccp_blocks.h"
#include "a2l/interfaces/daq_source.h"
#include "a2l/interfaces/interface_block.h"
#include "a2l/interfaces/interface_parts.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::ccp;

// --- Bare keywords: where a signal lies ----------------------------------------------------------

/// Address extension, address and size of a signal, then the rasters that it suits. An address or
/// extension of 0 means "not told here" and leaves what the signal has.
int parseKpBlob(BlockReader& reader, InterfaceBlock& block) {
    std::array<PhNumber, 3> values;
    int kind = reader.next();
    for (PhNumber& value : values) {
        value = reader.number(kind);
        if (!value.isPresent()) {
            break;
        }
        kind = reader.next();
    }
    while (kind == RASTER) {
        kind = reader.drop(1);
    }
    const auto& [extension, address, size] = values;
    if (block.owner.kind() != PhClass::Entity || !extension.isInteger() || !address.isInteger()) {
        return kind;
    }
    auto& signal = static_cast<PhEntity&>(block.owner);
    if (!address.isZero()) {
        reader.keep(signal.address, address.toInteger());
    }
    if (!extension.isZero()) {
        reader.keep(signal.addressExtension, extension.toInteger());
    }
    return kind;
}

constexpr InterfaceRule<InterfaceBlock> kAddressParts[] = {
    bare(KP_BLOB, parseKpBlob),
    skipped(DP_BLOB, 3),
    skipped(ADDRESS_MAPPING, 3),
    skipped(ADDR_MAPPING, 3),
};

// --- SOURCE --------------------------------------------------------------------------------------

/// Reads an integer and adds it to the source's entry; returns it as a value for another holder.
PhHandle<PhValue> readSetting(BlockReader& reader, const DaqSource& source, std::string_view name) {
    const std::int32_t value = readTruncated(reader);
    reader.commit([&] { appendInteger(source.entry, name, value); });
    return PhValue::ofInteger(value);
}

int parseCanIdVariable(BlockReader& reader, DaqSource& source) {
    appendInteger(source.entry, setting::kCanIdVariable, 1);
    source.tpCan.canId = {};
    return reader.next();
}

int parseCanIdFixed(BlockReader& reader, DaqSource& source) {
    reader.keep(source.tpCan.canId, readSetting(reader, source, setting::kCanIdFixed));
    return reader.next();
}

/// The event channel of a source, by name or by number.
int parseSourceRaster(BlockReader& reader, DaqSource& source) {
    const int kind = reader.next();
    if (kind == TOK_STRING) {
        appendText(source.entry, setting::kRaster, reader.token().text);
        return reader.next();
    }
    const PhNumber channel = reader.number(kind);
    if (!channel.isPresent()) {
        return reader.unexpectedToken(kind);
    }
    appendInteger(source.entry, setting::kSourceId, channel.toInteger());
    source.daq.sourceId = PhValue::ofInteger(channel.toInteger());
    return reader.next();
}

int parseFirstPid(BlockReader& reader, DaqSource& source) {
    reader.keep(source.daq.firstPid, readSetting(reader, source, setting::kFirstPid));
    return reader.next();
}

int parseLength(BlockReader& reader, DaqSource& source) {
    reader.keep(source.daq.length, readIntegerValue(reader));
    return reader.next();
}

int parseQpBlob(BlockReader& reader, DaqSource& source) {
    const PhHandle<PhValue> number = readSetting(reader, source, setting::kDaqNumber);
    reader.keep(source.daq.number, number);
    reader.keep(source.tpCan.number, PhValue::ofInteger(number->toInteger()));
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/SOURCE/QP_BLOB\n");
    static constexpr InterfaceRule<DaqSource> kParts[] = {
        bare(LENGTH, parseLength),
        bare(CAN_ID_VARIABLE, parseCanIdVariable),
        bare(CAN_ID_FIXED, parseCanIdFixed),
        bare(RASTER, parseSourceRaster),
        bare(FIRST_PID, parseFirstPid),
        // What it shares its list with is for who plans a measurement.
        skipped(EXCLUSIVE, 1),
        skipped(REDUCTION_ALLOWED, 0),
    };
    return readInterfaceParts(reader, kParts, source, QP_BLOB, reader.next());
}

int parseSource(BlockReader& reader, CcpSettings& settings) {
    DaqSource source = addDaqSource(settings.station());
    if (!readText(reader)) {
        return TOK_ERROR;
    }
    const PhString name(reader.token().text);
    source.entry.setName(name);
    source.daq.setName(name);
    readSetting(reader, source, setting::kScalingUnit);
    readSetting(reader, source, setting::kPeriod);
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/SOURCE\n");
    static constexpr InterfaceRule<DaqSource> kParts[] = {
        skipped(DISPLAY_IDENTIFIER, 1),
        block(QP_BLOB, parseQpBlob),
    };
    return readInterfaceParts(reader, kParts, source, SOURCE, reader.next());
}

// --- RASTER, EVENT_GROUP, SEED_KEY, CHECKSUM -----------------------------------------------------

int parseRaster(BlockReader& reader, CcpSettings& settings) {
    const int kind = reader.next();
    if (kind != TOK_STRING && kind != TOK_IDENT) {
        return reader.fail("String or Identifier expected");
    }
    auto raster = makePh<PhRaster>();
    raster->setName(PhString(reader.token().text));
    reader.next();
    raster->shortName = PhString(reader.token().text);
    raster->channel = readIntegerValue(reader);
    raster->timebase = makePh<PhTimebase>();
    raster->timebase->scale = readTruncated(reader);
    raster->timebase->resolution = readTruncated(reader);
    reader.commit([&] { settings.station().daqCapabilities().rasters.append(raster); });
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/RASTER\n");
    static constexpr InterfaceRule<PhRaster> kParts[] = {
        skipped(EXCLUSIVE, 1),
    };
    return readInterfaceParts(reader, kParts, *raster, RASTER, reader.next());
}

int appendRaster(BlockReader& reader, PhValue& rasters) {
    auto channel = readIntegerValue(reader);
    reader.commit([&] { rasters.list().push_back(std::move(channel)); });
    return reader.next();
}

int parseEventGroup(BlockReader& reader, CcpSettings& settings) {
    if (!readText(reader)) {
        return TOK_ERROR;
    }
    const auto group = makePh<PhValue>();
    group->setName(PhString(reader.token().text));
    reader.next();
    appendText(*group, setting::kShortName, reader.token().text);
    PhValue& rasters = appendList(group->list());
    rasters.setName(PhString(setting::kRasters));
    reader.commit([&] {
        settings.station()
            .daqCapabilities()
            .properties->list(setting::kEventGroups)
            .push_back(group);
    });
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/EVENT_GROUP\n");
    static constexpr InterfaceRule<PhValue> kParts[] = {
        bare(RASTER, appendRaster),
    };
    return readInterfaceParts(reader, kParts, rasters, EVENT_GROUP, reader.next());
}

int parseSeedKey(BlockReader& reader, CcpSettings& settings) {
    for (const std::string_view key : {setting::kSeedKeyDllCalibration, setting::kSeedKeyDllDaq,
                                       setting::kSeedKeyDllProgramming}) {
        if (!readText(reader)) {
            return TOK_ERROR;
        }
        settings.station().protocolParam().properties->setText(key, reader.token().text);
    }
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/SEED_KEY\n");
    return readInterfaceEnd(reader, SEED_KEY, reader.next());
}

int parseChecksum(BlockReader& reader, CcpSettings& settings) {
    if (!readText(reader)) {
        return TOK_ERROR;
    }
    settings.station().protocolParam().properties->setText(setting::kChecksumDll,
                                                           reader.token().text);
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP/CHECKSUM\n");
    return readInterfaceEnd(reader, CHECKSUM, reader.next());
}

constexpr InterfaceRule<CcpSettings> kBlocks[] = {
    block(SOURCE, parseSource),          block(RASTER, parseRaster),
    block(EVENT_GROUP, parseEventGroup), block(SEED_KEY, parseSeedKey),
    block(CHECKSUM, parseChecksum),      block(TP_BLOB, parseCcpTransport),
};

}  // namespace

int parseCcp(InterfaceBlock& block) {
    BlockReader& reader = block.reader;
    reader.traceBlock("  Parse IF_DATA ASAP1B_CCP\n");
    reader.useKeywords(kCcpKeywords);
    int kind = readBareOptionals(reader, kAddressParts, block, reader.next());
    while (kind == BEGIN) {
        PhCommParam unattached;
        PhCommParam* const commParam = obtainCommParam(block, "CCP", PhProtocolType::Ccp);
        CcpSettings settings{commParam == nullptr ? unattached : *commParam, block.module()};
        kind = readInterfaceBlock(reader, kBlocks, settings);
        kind = readBareOptionals(reader, kAddressParts, block, kind);
    }
    return closeInterface(reader, kind) ? reader.next() : TOK_ERROR;
}

}  // namespace quillmark
