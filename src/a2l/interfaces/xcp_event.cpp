// When a control unit measures: the EVENTs of a DAQ block, and the DAQ_EVENTs of a signal, which
// tell with which of them the signal can be measured.

#include <vector>

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "a2l/interfaces/xcp_time.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

/// Bit 0: measuring, bit 1: stimulation.
constexpr InterfaceWord kDirections[] = {{DAQ, 1}, {STIM, 2}, {DAQ_STIM, 3}};
constexpr std::int32_t kDaqBit = 1;
constexpr std::int32_t kStimBit = 2;

constexpr InterfaceWord kConsistencies[] = {{DAQ, 0}, {EVENT, 1}, {ODT, 2}, {NONE, 3}};
constexpr InterfaceWord kDaqCounters[] = {{TOK_IDENT, 0, "INSERT_COUNTER"},
                                          {INSERT_STIM_COUNTER_COPY, 1}};
constexpr InterfaceWord kStimCounters[] = {{DO_NOT_CHECK_COUNTER, 0}, {CHECK_COUNTER, 1}};

constexpr InterfaceWord kGroupings[] = {{ELEMENT_GROUPED, 1}, {EVENT_GROUPED, 2}};
constexpr InterfaceWord kTimestampPlaces[] = {{STS_LAST, 0}, {STS_FIRST, 1}};
constexpr InterfaceWord kObligations[] = {{OPTIONAL, 0}, {MANDATORY, 1}};

int parseMinCycleTime(BlockReader& reader, PhRaster& event) {
    traceBlock(reader, "  Parse IF_DATA EVENT MIN_CYCLE_TIME\n");
    reader.keep(event.minCycleTime, readTimeCycle(reader));
    return reader.next();
}

int parseMinCycleTimeBlock(BlockReader& reader, PhRaster& event) {
    const int kind = parseMinCycleTime(reader, event);
    return readInterfaceParts(reader, kNoInterfaceRules<PhRaster>, event, MIN_CYCLE_TIME, kind);
}

int parseAltSampleCount(BlockReader& reader, PhDaqPackedMode& mode) {
    reader.keepIn(mode.alternativeSampleCounts, readIntegerValue(reader));
    return reader.next();
}

int parseDaqPackedMode(BlockReader& reader, PhRaster& event) {
    static constexpr InterfaceRule<PhDaqPackedMode> kParts[] = {
        {Form::Bare, ALT_SAMPLE_COUNT, &parseAltSampleCount},
    };
    traceBlock(reader, "  Parse IF_DATA EVENT DAQ_PACKED_MODE\n");
    auto mode = makePh<PhDaqPackedMode>();
    readWordInto(reader, kGroupings, mode->grouping);
    readWordInto(reader, kTimestampPlaces, mode->timestamp);
    readWordInto(reader, kObligations, mode->mandatory);
    mode->sampleCount = readIntegerValue(reader);
    reader.keep(event.packedMode, mode);
    return readInterfaceParts(reader, kParts, *mode, DAQ_PACKED_MODE, reader.next());
}

constexpr InterfaceRule<PhRaster> kEventParts[] = {
    {Form::Bare, COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER, nullptr, 1},
    {Form::Bare, CONSISTENCY, &judgeWord<kConsistencies>},
    {Form::Bare, EVENT_COUNTER_PRESENT, nullptr, 0},
    {Form::Bare, RELATED_EVENT_CHANNEL_NUMBER, nullptr, 1},
    {Form::Bare, RELATED_EVENT_CHANNEL_NUMBER_FIXED, nullptr, 0},
    {Form::Bare, DTO_CTR_DAQ_MODE, &judgeWord<kDaqCounters>},
    {Form::Bare, DTO_CTR_DAQ_MODE_FIXED, nullptr, 0},
    {Form::Bare, DTO_CTR_STIM_MODE, &judgeWord<kStimCounters>},
    {Form::Bare, DTO_CTR_STIM_MODE_FIXED, nullptr, 0},
    {Form::Bare, STIM_DTO_CTR_COPY_PRESENT, nullptr, 0},
    {Form::Bare, CPU_LOAD_MAX, nullptr, 1},
    {Form::Bare, MIN_CYCLE_TIME, &parseMinCycleTime},
    {Form::Block, MIN_CYCLE_TIME, &parseMinCycleTimeBlock},
    {Form::Block, DAQ_PACKED_MODE, &parseDaqPackedMode},
    {Form::Block, BUFFER_RESERVE_EVENT},
    {Form::Block, CPU_LOAD_CONSUMPTION_DAQ},
    {Form::Block, CPU_LOAD_CONSUMPTION_STIM},
    {Form::Block, CPU_LOAD_CONSUMPTION_QUEUE},
    {Form::Block, CPU_LOAD_CONSUMPTION_QUEUE_STIM},
};

/// Enters the event among the sources of measured data.
void addSource(PhProperties& properties, const PhRaster& event) {
    auto channel = PhValue::ofInteger(event.channel->toInteger());
    channel->setName(PhString(setting::kSourceId));
    auto source = makePh<PhValue>();
    source->setName(event.name());
    source->list().push_back(std::move(channel));
    properties.list(setting::kSources).push_back(std::move(source));
}

using SignalExtras = PhEntity::Extras;
using Use = PhSignalEvent::Use;

/// The events that one list of a signal names.
struct EventList {
    std::vector<PhSignalEvent>& events;
    Use use;
};

int parseEventChannel(BlockReader& reader, EventList& list) {
    const std::int32_t channel = readTruncated(reader);
    reader.commit([&] { list.events.push_back({list.use, channel}); });
    return reader.next();
}

constexpr InterfaceRule<EventList> kEventChannels[] = {
    {Form::Bare, EVENT, &parseEventChannel},
};

template <Use ListUse>
int parseEventList(BlockReader& reader, SignalExtras& signal) {
    EventList list{signal.events, ListUse};
    return readBareOptionals(reader, kEventChannels, list, reader.next());
}

template <Use ListUse, int Keyword>
int parseEventListBlock(BlockReader& reader, SignalExtras& signal) {
    EventList list{signal.events, ListUse};
    return readInterfaceParts(reader, kEventChannels, list, Keyword, reader.next());
}

/// The lists of VARIABLE are blocks; some tools write them without /begin and /end.
constexpr InterfaceRule<SignalExtras> kDaqEventParts[] = {
    {Form::Bare, FIXED_EVENT_LIST, &parseEventList<Use::Fixed>},
    {Form::Bare, VARIABLE, nullptr, 0},
    {Form::Bare, AVAILABLE_EVENT_LIST, &parseEventList<Use::Available>},
    {Form::Bare, DEFAULT_EVENT_LIST, &parseEventList<Use::Default>},
    {Form::Bare, CONSISTENCY_EVENT_LIST, &parseEventList<Use::Consistency>},
    {Form::Block, AVAILABLE_EVENT_LIST, &parseEventListBlock<Use::Available, AVAILABLE_EVENT_LIST>},
    {Form::Block, DEFAULT_EVENT_LIST, &parseEventListBlock<Use::Default, DEFAULT_EVENT_LIST>},
    {Form::Block, CONSISTENCY_EVENT_LIST,
     &parseEventListBlock<Use::Consistency, CONSISTENCY_EVENT_LIST>},
};

}  // namespace

int parseXcpEvent(BlockReader& reader, XcpDaqTarget& target) {
    traceBlock(reader, "  Parse IF_DATA EVENT\n");
    const int kind = reader.next();
    if (kind != TOK_STRING && kind != TOK_IDENT) {
        return reader.fail("String or Identifier expected");
    }
    auto event = makePh<PhRaster>();
    event->setName(PhString(reader.token().text));
    event->properties = makePh<PhProperties>();
    reader.keepIn(target.daq.rasters, event);
    reader.next();
    reader.keep(event->shortName, PhString(reader.token().text));
    reader.keep(event->channel, readIntegerValue(reader));
    reader.commit([&] { addSource(*target.daq.properties, *event); });
    const std::int32_t direction = readWord(reader, kDirections).value_or(0);
    reader.keep(event->daqSupported, (direction & kDaqBit) != 0);
    reader.keep(event->stimSupported, (direction & kStimBit) != 0);
    reader.keepInteger(*event->properties, setting::kMaxDaqList, readTruncated(reader));
    reader.keep(event->timebase, readTimeCycle(reader));
    reader.keep(event->priority, readIntegerValue(reader));
    return readInterfaceParts(reader, kEventParts, *event, EVENT, reader.next());
}

int parseXcpDaqEvent(BlockReader& reader, PhEntity* signal) {
    SignalExtras unattached;
    SignalExtras& extras = signal == nullptr ? unattached : signal->extras();
    return readInterfaceParts(reader, kDaqEventParts, extras, DAQ_EVENT, reader.next());
}

}  // namespace quillmark
