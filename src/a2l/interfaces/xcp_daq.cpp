// What a control unit measures by itself: DAQ with its timestamps and DAQ_LISTs.

#include <cstdint>
#include <optional>
#include <utility>

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "a2l/interfaces/xcp_time.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr WordRow<std::int32_t> kConfigTypes[] = {{STATIC, 1}, {DYNAMIC, 2}};

constexpr WordRow<std::int32_t> kOptimisationTypes[] = {
    {OPTIMISATION_TYPE_DEFAULT, 1},
    {OPTIMISATION_TYPE_ODT_TYPE_16, 2},
    {OPTIMISATION_TYPE_ODT_TYPE_32, 3},
    {OPTIMISATION_TYPE_ODT_TYPE_64, 4},
    {OPTIMISATION_TYPE_ODT_TYPE_ALIGNMENT, 5},
    {OPTIMISATION_TYPE_MAX_ENTRY_SIZE, 6},
};

constexpr WordRow<std::int32_t> kAddressExtensions[] = {
    {ADDRESS_EXTENSION_FREE, 1},
    {ADDRESS_EXTENSION_ODT, 2},
    {ADDRESS_EXTENSION_DAQ, 3},
};

constexpr WordRow<std::int32_t> kIdentificationFields[] = {
    {IDENTIFICATION_FIELD_TYPE_ABSOLUTE, 1},
    {IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE, 2},
    {IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD, 3},
    {IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD_ALIGNED, 4},
};

/// Codes, while those of stimulation are sizes in bytes.
constexpr WordRow<std::int32_t> kDaqGranularities[] = {
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE, 1},
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_WORD, 2},
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_DWORD, 3},
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_DLONG, 4},
};

constexpr WordRow<std::int32_t> kStimGranularities[] = {
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE, 1},
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_WORD, 2},
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_DWORD, 4},
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_DLONG, 8},
};

constexpr WordRow<std::int32_t> kOverloadIndications[] = {
    {NO_OVERLOAD_INDICATION, 1},
    {OVERLOAD_INDICATION_PID, 2},
    {OVERLOAD_INDICATION_EVENT, 3},
};

/// Bytes.
constexpr WordRow<std::int32_t> kTimestampSizes[] = {
    {NO_TIME_STAMP, 0},
    {SIZE_BYTE, 1},
    {SIZE_WORD, 2},
    {SIZE_DWORD, 4},
};

constexpr WordRow<std::int32_t> kDaqListTypes[] = {{DAQ, 1}, {STIM, 2}, {DAQ_STIM, 3}};

template <bool PhDaqCapabilities::*Flag>
int setDaqFlag(BlockReader& reader, XcpDaqTarget& target) {
    reader.keep(target.daq.*Flag, true);
    return reader.next();
}

int parseStim(BlockReader& reader, XcpDaqTarget& target) {
    static constexpr InterfaceRule<XcpDaqTarget> kParts[] = {
        skipped(BIT_STIM_SUPPORTED, 0),
        skipped(MIN_ST_STIM, 1),
    };
    PhProperties& properties = *target.daq.properties;
    reader.keepInteger(properties, setting::kGranularityStim,
                       readWord(reader, kStimGranularities).value_or(0));
    reader.keepInteger(properties, setting::kMaxEntrySizeStim, readTruncated(reader));
    return readInterfaceParts(reader, kParts, target, STIM, reader.next());
}

int parseTimestampSupported(BlockReader& reader, XcpDaqTarget& target) {
    static constexpr InterfaceRule<PhTimebase> kParts[] = {
        flag(TIMESTAMP_FIXED, &PhTimebase::fixed),
    };
    static constexpr XcpTimeUnit kUnknownUnit{0, 1};
    // Files leave the number of ticks out when it is 1.
    std::int32_t ticks = 1;
    int kind = reader.next();
    if (const PhNumber number = reader.number(kind); number.isPresent()) {
        ticks = number.toInteger();
        kind = reader.next();
    }
    const std::optional<std::int32_t> size = findWord(reader, kTimestampSizes, kind);
    if (!size) {
        reader.unexpectedTokenWarning(kind);
    }
    kind = reader.next();
    const std::optional<XcpTimeUnit> unit = xcpTimeUnitOfWord(reader, kind);
    if (!unit) {
        reader.unexpectedTokenWarning(kind);
    }
    const PhHandle<PhTimebase> timebase = makeTimebase(ticks, unit.value_or(kUnknownUnit));
    PhProperties& properties = *target.daq.properties;
    if (size) {
        timebase->byteLength = PhValue::ofInteger(*size);
        reader.keepInteger(properties, setting::kTimestampSize, *size);
    }
    reader.keepInteger(properties, setting::kTimestampResolution, timebase->resolution);
    reader.keep(target.daq.timebase, timebase);
    return readInterfaceParts(reader, kParts, *timebase, TIMESTAMP_SUPPORTED, reader.next());
}

constexpr InterfaceRule<XcpDaqTarget> kDaqParts[] = {
    bare(PRESCALER_SUPPORTED, setDaqFlag<&PhDaqCapabilities::prescalerSupported>),
    bare(RESUME_SUPPORTED, setDaqFlag<&PhDaqCapabilities::resumeSupported>),
    bare(DAQ_RESUME_SUPPORTED, setDaqFlag<&PhDaqCapabilities::resumeSupported>),
    bare(PID_OFF_SUPPORTED, setDaqFlag<&PhDaqCapabilities::pidOffSupported>),
    bare(STORE_DAQ_SUPPORTED, setDaqFlag<&PhDaqCapabilities::storeDaqSupported>),
    skipped(DAQ_ALTERNATING_SUPPORTED, 1),
    skipped(DTO_CTR_FIELD_SUPPORTED, 0),
    skipped(identifier("OPTIMISATION_TYPE_ODT_STRICT"), 0),
    skipped(CPU_LOAD_MAX, 1),
    skipped(MAX_DAQ_TOTAL, 1),
    skipped(MAX_ODT_TOTAL, 1),
    skipped(MAX_ODT_DAQ_TOTAL, 1),
    skipped(MAX_ODT_STIM_TOTAL, 1),
    skipped(MAX_ODT_ENTRIES_TOTAL, 1),
    skipped(MAX_ODT_ENTRIES_DAQ_TOTAL, 1),
    skipped(MAX_ODT_ENTRIES_STIM_TOTAL, 1),
    skipped(CPU_LOAD_MAX_TOTAL, 1),
    skipped(CORE_LOAD_MAX_TOTAL, 1),
    block(STIM, parseStim),
    block(TIMESTAMP_SUPPORTED, parseTimestampSupported),
    block(DAQ_LIST, parseXcpDaqList),
    block(EVENT, parseXcpEvent),
};

/// Each list has an entry for its CAN identifier, which a CAN transport may tell. Within a
/// transport the identifier may have come first.
void enterDaqList(const XcpDaqTarget& target, const PhHandle<PhValue>& number) {
    PhDaqTpCapabilities& identifiers = target.station.daqTpCapabilities();
    if (target.inTransport && identifiers.findByNumber(number->toInteger()) != nullptr) {
        return;
    }
    auto entry = makePh<PhDaqTpCan>();
    entry->number = number;
    identifiers.daqLists.append(std::move(entry));
}

int parseDaqListType(BlockReader& reader, PhDaq& daq) {
    if (const auto type =
            readWord(reader, kDaqListTypes, "Unexpected token for DAQ_LIST_TYPE: %d")) {
        reader.keep(daq.direction, *type);
    }
    return reader.next();
}

int parseOdtEntry(BlockReader& reader, PhOdt& odt) {
    auto entry = makePh<PhOdtEntry>();
    entry->number = readIntegerValue(reader);
    entry->address = readIntegerValue(reader);
    entry->addressExtension = readIntegerValue(reader);
    entry->size = readIntegerValue(reader);
    entry->bitOffset = readIntegerValue(reader);
    reader.keepIn(odt.entries, std::move(entry));
    return reader.next();
}

int parseOdt(BlockReader& reader, PhDaq& daq) {
    static constexpr InterfaceRule<PhOdt> kParts[] = {
        bare(ODT_ENTRY, parseOdtEntry),
    };
    auto odt = makePh<PhOdt>();
    odt->number = readIntegerValue(reader);
    reader.keepIn(daq.odts, odt);
    return readInterfaceParts(reader, kParts, *odt, ODT, reader.next());
}

int parsePredefined(BlockReader& reader, PhDaq& daq) {
    static constexpr InterfaceRule<PhDaq> kParts[] = {
        block(ODT, parseOdt),
    };
    reader.traceBlock(" Parse DAQ_LIST PREDEFINED");
    return readInterfaceParts(reader, kParts, daq, PREDEFINED, reader.next());
}

}  // namespace

int parseXcpDaq(BlockReader& reader, XcpDaqTarget target) {
    PhDaqCapabilities& daq = target.daq;
    readWordInto(reader, kConfigTypes, daq.configType);
    reader.keep(daq.maxDaq, readIntegerValue(reader));
    reader.keep(daq.maxEventChannel, readIntegerValue(reader));
    reader.keep(daq.minDaq, readIntegerValue(reader));
    readWordInto(reader, kOptimisationTypes, daq.optimisationType);
    readWordInto(reader, kAddressExtensions, daq.addressExtension);
    readWordInto(reader, kIdentificationFields, daq.identificationFieldType);
    readWordInto(reader, kDaqGranularities, daq.granularityOdtEntrySize);
    reader.keep(daq.maxOdtEntrySize, readIntegerValue(reader));
    readWordInto(reader, kOverloadIndications, daq.overloadIndication);
    reader.traceBlock("  Parse IF_DATA DAQ\n");
    return readInterfaceParts(reader, kDaqParts, target, kw::xcp::DAQ, reader.next());
}

int parseXcpDaqList(BlockReader& reader, XcpDaqTarget& target) {
    static constexpr InterfaceRule<PhDaq> kParts[] = {
        bare(DAQ_LIST_TYPE, parseDaqListType),
        number(MAX_ODT, &PhDaq::length),
        number(MAX_ODT_ENTRIES, &PhDaq::maxOdtEntries),
        number(FIRST_PID, &PhDaq::firstPid),
        number(EVENT_FIXED, &PhDaq::sourceId),
        skipped(DAQ_PACKED_MODE_SUPPORTED, 0),
        block(PREDEFINED, parsePredefined),
    };
    reader.traceBlock("  Parse IF_DATA DAQ_LIST\n");
    auto daq = makePh<PhDaq>();
    daq->number = readIntegerValue(reader);
    reader.commit([&] {
        target.daq.daqLists.append(daq);
        enterDaqList(target, daq->number);
    });
    return readInterfaceParts(reader, kParts, *daq, DAQ_LIST, reader.next());
}

}  // namespace quillmark
