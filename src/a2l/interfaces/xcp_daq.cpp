// What a control unit measures by itself: DAQ with its timestamps and DAQ_LISTs.

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "a2l/interfaces/xcp_time.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

constexpr InterfaceWord kConfigTypes[] = {{STATIC, 1}, {DYNAMIC, 2}};

constexpr InterfaceWord kOptimisationTypes[] = {
    {OPTIMISATION_TYPE_DEFAULT, 1},
    {OPTIMISATION_TYPE_ODT_TYPE_16, 2},
    {OPTIMISATION_TYPE_ODT_TYPE_32, 3},
    {OPTIMISATION_TYPE_ODT_TYPE_64, 4},
    {OPTIMISATION_TYPE_ODT_TYPE_ALIGNMENT, 5},
    {OPTIMISATION_TYPE_MAX_ENTRY_SIZE, 6},
};

constexpr InterfaceWord kAddressExtensions[] = {
    {ADDRESS_EXTENSION_FREE, 1},
    {ADDRESS_EXTENSION_ODT, 2},
    {ADDRESS_EXTENSION_DAQ, 3},
};

constexpr InterfaceWord kIdentificationFields[] = {
    {IDENTIFICATION_FIELD_TYPE_ABSOLUTE, 1},
    {IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE, 2},
    {IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD, 3},
    {IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD_ALIGNED, 4},
};

/// Codes, while those of stimulation are sizes in bytes.
constexpr InterfaceWord kDaqGranularities[] = {
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE, 1},
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_WORD, 2},
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_DWORD, 3},
    {GRANULARITY_ODT_ENTRY_SIZE_DAQ_DLONG, 4},
};

constexpr InterfaceWord kStimGranularities[] = {
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE, 1},
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_WORD, 2},
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_DWORD, 4},
    {GRANULARITY_ODT_ENTRY_SIZE_STIM_DLONG, 8},
};

constexpr InterfaceWord kOverloadIndications[] = {
    {NO_OVERLOAD_INDICATION, 1},
    {OVERLOAD_INDICATION_PID, 2},
    {OVERLOAD_INDICATION_EVENT, 3},
};

/// Bytes.
constexpr InterfaceWord kTimestampSizes[] = {
    {NO_TIME_STAMP, 0},
    {SIZE_BYTE, 1},
    {SIZE_WORD, 2},
    {SIZE_DWORD, 4},
};

constexpr InterfaceWord kDaqListTypes[] = {{DAQ, 1}, {STIM, 2}, {DAQ_STIM, 3}};

template <bool PhDaqCapabilities::*Flag>
int setDaqFlag(BlockReader& reader, XcpDaqTarget& target) {
    return setFlag<Flag>(reader, target.daq);
}

int parseStim(BlockReader& reader, XcpDaqTarget& target) {
    static constexpr InterfaceRule<XcpDaqTarget> kParts[] = {
        {Form::Bare, BIT_STIM_SUPPORTED, nullptr, 0},
        {Form::Bare, MIN_ST_STIM, nullptr, 1},
    };
    PhProperties& properties = *target.daq.properties;
    reader.keepInteger(properties, setting::kGranularityStim,
                       readWord(reader, kStimGranularities).value_or(0));
    reader.keepInteger(properties, setting::kMaxEntrySizeStim, readTruncated(reader));
    return readInterfaceParts(reader, kParts, target, STIM, reader.next());
}

int parseTimestampSupported(BlockReader& reader, XcpDaqTarget& target) {
    static constexpr InterfaceRule<PhTimebase> kParts[] = {
        {Form::Bare, TIMESTAMP_FIXED, &setFlag<&PhTimebase::fixed>},
    };
    static constexpr XcpTimeUnit kUnknownUnit{0, 1};
    // Files leave the number of ticks out when it is 1.
    std::int32_t ticks = 1;
    int kind = reader.next();
    if (const PhNumber number = numberOf(reader, kind); number.isPresent()) {
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
    {Form::Bare, PRESCALER_SUPPORTED, &setDaqFlag<&PhDaqCapabilities::prescalerSupported>},
    {Form::Bare, RESUME_SUPPORTED, &setDaqFlag<&PhDaqCapabilities::resumeSupported>},
    {Form::Bare, DAQ_RESUME_SUPPORTED, &setDaqFlag<&PhDaqCapabilities::resumeSupported>},
    {Form::Bare, PID_OFF_SUPPORTED, &setDaqFlag<&PhDaqCapabilities::pidOffSupported>},
    {Form::Bare, STORE_DAQ_SUPPORTED, &setDaqFlag<&PhDaqCapabilities::storeDaqSupported>},
    {Form::Bare, DAQ_ALTERNATING_SUPPORTED, nullptr, 1},
    {Form::Bare, DTO_CTR_FIELD_SUPPORTED, nullptr, 0},
    {Form::Bare, TOK_IDENT, nullptr, 0, "OPTIMISATION_TYPE_ODT_STRICT"},
    {Form::Bare, CPU_LOAD_MAX, nullptr, 1},
    {Form::Bare, MAX_DAQ_TOTAL, nullptr, 1},
    {Form::Bare, MAX_ODT_TOTAL, nullptr, 1},
    {Form::Bare, MAX_ODT_DAQ_TOTAL, nullptr, 1},
    {Form::Bare, MAX_ODT_STIM_TOTAL, nullptr, 1},
    {Form::Bare, MAX_ODT_ENTRIES_TOTAL, nullptr, 1},
    {Form::Bare, MAX_ODT_ENTRIES_DAQ_TOTAL, nullptr, 1},
    {Form::Bare, MAX_ODT_ENTRIES_STIM_TOTAL, nullptr, 1},
    {Form::Bare, CPU_LOAD_MAX_TOTAL, nullptr, 1},
    {Form::Bare, CORE_LOAD_MAX_TOTAL, nullptr, 1},
    {Form::Block, STIM, &parseStim},
    {Form::Block, TIMESTAMP_SUPPORTED, &parseTimestampSupported},
    {Form::Block, DAQ_LIST, &parseXcpDaqList},
    {Form::Block, EVENT, &parseXcpEvent},
    {Form::Block, CPU_LOAD_CONSUMPTION_DAQ},
    {Form::Block, CPU_LOAD_CONSUMPTION_STIM},
    {Form::Block, CPU_LOAD_CONSUMPTION_QUEUE},
    {Form::Block, DAQ_MEMORY_CONSUMPTION},
    {Form::Block, MIN_CYCLE_TIME},
    {Form::Block, CORE_LOAD_MAX},
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
        {Form::Bare, ODT_ENTRY, &parseOdtEntry},
    };
    auto odt = makePh<PhOdt>();
    odt->number = readIntegerValue(reader);
    reader.keepIn(daq.odts, odt);
    return readInterfaceParts(reader, kParts, *odt, ODT, reader.next());
}

int parsePredefined(BlockReader& reader, PhDaq& daq) {
    static constexpr InterfaceRule<PhDaq> kParts[] = {
        {Form::Block, ODT, &parseOdt},
    };
    traceBlock(reader, " Parse DAQ_LIST PREDEFINED");
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
    traceBlock(reader, "  Parse IF_DATA DAQ\n");
    return readInterfaceParts(reader, kDaqParts, target, kw::xcp::DAQ, reader.next());
}

int parseXcpDaqList(BlockReader& reader, XcpDaqTarget& target) {
    static constexpr InterfaceRule<PhDaq> kParts[] = {
        {Form::Bare, DAQ_LIST_TYPE, &parseDaqListType},
        {Form::Bare, MAX_ODT, &storeNumber<&PhDaq::length>},
        {Form::Bare, MAX_ODT_ENTRIES, &storeNumber<&PhDaq::maxOdtEntries>},
        {Form::Bare, FIRST_PID, &storeNumber<&PhDaq::firstPid>},
        {Form::Bare, EVENT_FIXED, &storeNumber<&PhDaq::sourceId>},
        {Form::Bare, DAQ_PACKED_MODE_SUPPORTED, nullptr, 0},
        {Form::Block, PREDEFINED, &parsePredefined},
    };
    traceBlock(reader, "  Parse IF_DATA DAQ_LIST\n");
    auto daq = makePh<PhDaq>();
    daq->number = readIntegerValue(reader);
    reader.commit([&] {
        target.daq.daqLists.append(daq);
        enterDaqList(target, daq->number);
    });
    return readInterfaceParts(reader, kParts, *daq, DAQ_LIST, reader.next());
}

}  // namespace quillmark
