// When a control unit measures: the EVENTs of a DAQ block, and the DAQ_EVENTs of a signal, which
// tell with which of them the signal can be measured.

#include <cstdint>
#include <utility>
#include <vector>

#include "a2l/interfaces/interface_parts.h"
#include "a2l/interfaces/xcp.h"
#include "a2l/interfaces/xcp_time.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::xcp;

/// Bit 0: measuring, bit 1: stimulation.
constexpr WordRow<std::int32_t> kDirections[] = {{DAQ, 1}, {STIM, 2}, {DAQ_STIM, 3}};
constexpr std::int32_t kDaqBit = 1;
constexpr std::int32_t kStimBit = 2;

constexpr WordRow<std::int32_t> kConsistencies[] = {{DAQ, 0}, {EVENT, 1}, {ODT, 2}, {NONE, 3}};
constexpr WordRow<std::int32_t> kDaqCounters[] = {{identifier("INSERT_COUNTER"), 0},
                                                  {INSERT_STIM_COUNTER_COPY, 1}};
constexpr WordRow<std::int32_t> kStimCounters[] = {{DO_NOT_CHECK_COUNTER, 0}, {CHECK_COUNTER, 1}};

constexpr WordRow<std::int32_t> kGroupings[] = {{ELEMENT_GROUPED, 1}, {EVENT_GROUPED, 2}};
constexpr WordRow<std::int32_t> kTimestampPlaces[] = {{STS_LAST, 0}, {STS_FIRST, 1}};
constexpr WordRow<std::int32_t> kObligations[] = {{OPTIONAL, 0}, {MANDATORY, 1}};

int parseMinCycleTime(BlockReader& reader, PhRaster& event) {
    reader.traceBlock("  Parse IF_DATA EVENT MIN_CYCLE_TIME\n");
    reader.keep(event.minCycleTime, readTimeCycle(reader));
    return reader.next();
}

int parseMinCycleTimeBlock(BlockReader& reader, PhRaster& event) {
    return readInterfaceEnd(reader, MIN_CYCLE_TIME, parseMinCycleTime(reader, event));
}

int parseAltSampleCount(BlockReader& reader, PhDaqPackedMode& mode) {
    reader.keepIn(mode.alternativeSampleCounts, readIntegerValue(reader));
    return reader.next();
}

int parseDaqPackedMode(BlockReader& reader, PhRaster& event) {
    static constexpr InterfaceRule<PhDaqPackedMode> kParts[] = {
        bare(ALT_SAMPLE_COUNT, parseAltSampleCount),
    };
    reader.traceBlock("  Parse IF_DATA EVENT DAQ_PACKED_MODE\n");
    auto mode = makePh<PhDaqPackedMode>();
    readWordInto(reader, kGroupings, mode->grouping);
    readWordInto(reader, kTimestampPlaces, mode->timestamp);
    readWordInto(reader, kObligations, mode->mandatory);
    mode->sampleCount = readIntegerValue(reader);
    reader.keep(event.packedMode, mode);
    return readInterfaceParts(reader, kParts, *mode, DAQ_PACKED_MODE, reader.next());
}

constexpr InterfaceRule<PhRaster> kEventParts[] = {
    skipped(COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER, 1),
    judged(CONSISTENCY, kConsistencies),
    skipped(EVENT_COUNTER_PRESENT, 0),
    skipped(RELATED_EVENT_CHANNEL_NUMBER, 1),
    skipped(RELATED_EVENT_CHANNEL_NUMBER_FIXED, 0),
    judged(DTO_CTR_DAQ_MODE, kDaqCounters),
    skipped(DTO_CTR_DAQ_MODE_FIXED, 0),
    judged(DTO_CTR_STIM_MODE, kStimCounters),
    skipped(DTO_CTR_STIM_MODE_FIXED, 0),
    skipped(STIM_DTO_CTR_COPY_PRESENT, 0),
    skipped(CPU_LOAD_MAX, 1),
    bare(MIN_CYCLE_TIME, parseMinCycleTime),
    block(MIN_CYCLE_TIME, parseMinCycleTimeBlock),
    block(DAQ_PACKED_MODE, parseDaqPackedMode),
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
using SignalRule = InterfaceRule<SignalExtras>;
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
    bare(EVENT, parseEventChannel),
};

/// A list in either form. The rule tells what its events are for.
int parseEventList(BlockReader& reader, SignalExtras& signal, const SignalRule& rule) {
    EventList list{signal.events, static_cast<Use>(rule.value<int>())};
    const int kind = reader.next();
    return rule.form() == Form::Bare
               ? readBareOptionals(reader, kEventChannels, list, kind)
               : readInterfaceParts(reader, kEventChannels, list, rule.keyword(), kind);
}

constexpr SignalRule eventList(Form form, int keyword, Use use) {
    return {form, keyword, parseEventList, static_cast<int>(use)};
}

/// The lists of VARIABLE are blocks; some tools write them without /begin and /end.
constexpr SignalRule kDaqEventParts[] = {
    eventList(Form::Bare, FIXED_EVENT_LIST, Use::Fixed),
    skipped(VARIABLE, 0),
    eventList(Form::Bare, AVAILABLE_EVENT_LIST, Use::Available),
    eventList(Form::Bare, DEFAULT_EVENT_LIST, Use::Default),
    eventList(Form::Bare, CONSISTENCY_EVENT_LIST, Use::Consistency),
    eventList(Form::Block, AVAILABLE_EVENT_LIST, Use::Available),
    eventList(Form::Block, DEFAULT_EVENT_LIST, Use::Default),
    eventList(Form::Block, CONSISTENCY_EVENT_LIST, Use::Consistency),
};

}  // namespace

int parseXcpEvent(BlockReader& reader, XcpDaqTarget& target) {
    reader.traceBlock("  Parse IF_DATA EVENT\n");
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
