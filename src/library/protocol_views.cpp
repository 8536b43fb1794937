#include "library/view_access.h"
#include "model/protocol_model.h"
#include "quillmark/protocol.h"

namespace quillmark {

// Timebase

std::int32_t Timebase::resolution() const noexcept {
    return timebase_->resolution;
}

std::int32_t Timebase::unit() const noexcept {
    return timebase_->scale;
}

Number Timebase::byteLength() const noexcept {
    return numberOf(timebase_->byteLength);
}

bool Timebase::isFixed() const noexcept {
    return timebase_->fixed;
}

// PackedMode

std::int32_t PackedMode::grouping() const noexcept {
    return mode_->grouping;
}

std::int32_t PackedMode::timestamp() const noexcept {
    return mode_->timestamp;
}

std::int32_t PackedMode::mandatory() const noexcept {
    return mode_->mandatory;
}

Number PackedMode::sampleCount() const noexcept {
    return numberOf(mode_->sampleCount);
}

std::vector<Number> PackedMode::alternativeSampleCounts() const {
    std::vector<Number> counts;
    counts.reserve(mode_->alternativeSampleCounts.count());
    for (const PhValue& count : mode_->alternativeSampleCounts) {
        counts.push_back(numberOf(count.number()));
    }
    return counts;
}

// Event

std::string_view Event::name() const noexcept {
    return event_->name().view();
}

std::string_view Event::shortName() const noexcept {
    return event_->shortName.view();
}

Number Event::channel() const noexcept {
    return numberOf(event_->channel);
}

bool Event::isCyclic() const noexcept {
    return event_->cyclic;
}

bool Event::supportsDaq() const noexcept {
    return event_->daqSupported;
}

bool Event::supportsStim() const noexcept {
    return event_->stimSupported;
}

std::optional<Timebase> Event::cycle() const noexcept {
    return ViewAccess::viewIfAny<Timebase>(event_->timebase);
}

std::optional<Timebase> Event::minCycle() const noexcept {
    return ViewAccess::viewIfAny<Timebase>(event_->minCycleTime);
}

Number Event::priority() const noexcept {
    return numberOf(event_->priority);
}

std::optional<PackedMode> Event::packedMode() const noexcept {
    return ViewAccess::viewIfAny<PackedMode>(event_->packedMode);
}

List<Setting> Event::settings() const noexcept {
    return settingsOf(event_->properties);
}

// OdtEntry

Number OdtEntry::number() const noexcept {
    return numberOf(entry_->number);
}

Number OdtEntry::address() const noexcept {
    return numberOf(entry_->address);
}

Number OdtEntry::addressExtension() const noexcept {
    return numberOf(entry_->addressExtension);
}

Number OdtEntry::size() const noexcept {
    return numberOf(entry_->size);
}

Number OdtEntry::bitOffset() const noexcept {
    return numberOf(entry_->bitOffset);
}

// Odt

Number Odt::number() const noexcept {
    return numberOf(odt_->number);
}

List<OdtEntry> Odt::entries() const noexcept {
    return ViewAccess::list<OdtEntry>(&odt_->entries);
}

// DaqList

std::string_view DaqList::name() const noexcept {
    return list_->name().view();
}

Number DaqList::number() const noexcept {
    return numberOf(list_->number);
}

std::int32_t DaqList::direction() const noexcept {
    return list_->direction;
}

Number DaqList::maxOdt() const noexcept {
    return numberOf(list_->length);
}

Number DaqList::maxOdtEntries() const noexcept {
    return numberOf(list_->maxOdtEntries);
}

Number DaqList::event() const noexcept {
    return numberOf(list_->sourceId);
}

Number DaqList::firstPid() const noexcept {
    return numberOf(list_->firstPid);
}

List<Odt> DaqList::odts() const noexcept {
    return ViewAccess::list<Odt>(&list_->odts);
}

// Acquisition

std::optional<Timebase> Acquisition::timestamps() const noexcept {
    return ViewAccess::viewIfAny<Timebase>(acquisition_->timebase);
}

List<Event> Acquisition::events() const noexcept {
    return ViewAccess::list<Event>(&acquisition_->rasters);
}

List<DaqList> Acquisition::daqLists() const noexcept {
    return ViewAccess::list<DaqList>(&acquisition_->daqLists);
}

List<Setting> Acquisition::settings() const noexcept {
    return settingsOf(acquisition_->properties);
}

std::int32_t Acquisition::configType() const noexcept {
    return acquisition_->configType;
}

std::int32_t Acquisition::optimisationType() const noexcept {
    return acquisition_->optimisationType;
}

std::int32_t Acquisition::addressExtension() const noexcept {
    return acquisition_->addressExtension;
}

std::int32_t Acquisition::identificationFieldType() const noexcept {
    return acquisition_->identificationFieldType;
}

std::int32_t Acquisition::granularityOdtEntrySize() const noexcept {
    return acquisition_->granularityOdtEntrySize;
}

std::int32_t Acquisition::overloadIndication() const noexcept {
    return acquisition_->overloadIndication;
}

Number Acquisition::maxDaq() const noexcept {
    return numberOf(acquisition_->maxDaq);
}

Number Acquisition::minDaq() const noexcept {
    return numberOf(acquisition_->minDaq);
}

Number Acquisition::maxEventChannel() const noexcept {
    return numberOf(acquisition_->maxEventChannel);
}

Number Acquisition::maxOdtEntrySize() const noexcept {
    return numberOf(acquisition_->maxOdtEntrySize);
}

bool Acquisition::supportsPrescaler() const noexcept {
    return acquisition_->prescalerSupported;
}

bool Acquisition::supportsResume() const noexcept {
    return acquisition_->resumeSupported;
}

bool Acquisition::supportsPidOff() const noexcept {
    return acquisition_->pidOffSupported;
}

bool Acquisition::supportsStoreDaq() const noexcept {
    return acquisition_->storeDaqSupported;
}

// DaqCanId

Number DaqCanId::daqList() const noexcept {
    return numberOf(id_->number);
}

Number DaqCanId::canId() const noexcept {
    return numberOf(id_->canId);
}

// Station

ByteOrder Station::byteOrder() const noexcept {
    const PhProtocolParam* const protocol = station_->protocolParamIfAny();
    return protocol == nullptr ? ByteOrder::Undefined : static_cast<ByteOrder>(protocol->encoding);
}

List<Setting> Station::settings() const noexcept {
    const PhProtocolParam* const protocol = station_->protocolParamIfAny();
    return protocol == nullptr ? List<Setting>() : settingsOf(protocol->properties);
}

std::optional<Acquisition> Station::acquisition() const noexcept {
    return ViewAccess::viewIfAny<Acquisition>(station_->daqCapabilitiesIfAny());
}

List<DaqCanId> Station::daqCanIds() const noexcept {
    const PhDaqTpCapabilities* const transport = station_->daqTpCapabilitiesIfAny();
    return transport == nullptr ? List<DaqCanId>()
                                : ViewAccess::list<DaqCanId>(&transport->daqLists);
}

// CanFd

Number CanFd::maxDlc() const noexcept {
    return numberOf(canFd_->maxDlc);
}

Number CanFd::dataBitrate() const noexcept {
    return numberOf(canFd_->dataBitrate);
}

Number CanFd::samplePoint() const noexcept {
    return numberOf(canFd_->samplePoint);
}

Number CanFd::secondarySamplePoint() const noexcept {
    return numberOf(canFd_->secondarySamplePoint);
}

Number CanFd::btlCycles() const noexcept {
    return numberOf(canFd_->btlCycles);
}

Number CanFd::sjw() const noexcept {
    return numberOf(canFd_->sjw);
}

Number CanFd::syncEdge() const noexcept {
    return numberOf(canFd_->syncEdge);
}

bool CanFd::maxDlcRequired() const noexcept {
    return canFd_->maxDlcRequired;
}

std::int32_t CanFd::transceiverDelayCompensation() const noexcept {
    return canFd_->transceiverDelayCompensation;
}

// FlexRayBuffer

std::int32_t FlexRayBuffer::role() const noexcept {
    return buffer_->role;
}

Number FlexRayBuffer::number() const noexcept {
    return numberOf(buffer_->number);
}

Number FlexRayBuffer::maxLength() const noexcept {
    return numberOf(buffer_->maxLength);
}

Number FlexRayBuffer::slotId() const noexcept {
    return numberOf(buffer_->slotId);
}

List<Setting> FlexRayBuffer::settings() const noexcept {
    return settingsOf(buffer_->properties);
}

// Transport

TransportKind Transport::kind() const noexcept {
    switch (transport_->transportType) {
        case PhTransportType::Can:
            return TransportKind::Can;
        case PhTransportType::Udp:
            return TransportKind::Udp;
        case PhTransportType::Tcp:
            return TransportKind::Tcp;
        case PhTransportType::FlexRay:
            return TransportKind::FlexRay;
        case PhTransportType::Undefined:
            break;
    }
    return TransportKind::Undefined;
}

std::string_view Transport::instanceName() const noexcept {
    return transport_->instanceName.view();
}

Number Transport::masterCanId() const noexcept {
    return numberOf(transport_->masterCanId);
}

Number Transport::slaveCanId() const noexcept {
    return numberOf(transport_->slaveCanId);
}

Number Transport::stationAddress() const noexcept {
    return numberOf(transport_->stationAddress);
}

std::optional<CanFd> Transport::canFd() const noexcept {
    return ViewAccess::viewIfAny<CanFd>(transport_->canFd);
}

List<FlexRayBuffer> Transport::flexRayBuffers() const noexcept {
    return ViewAccess::list<FlexRayBuffer>(&transport_->flexRayBuffers);
}

List<Setting> Transport::settings() const noexcept {
    return settingsOf(transport_->properties);
}

std::optional<Station> Transport::station() const noexcept {
    return ViewAccess::viewIfAny<Station>(transport_->stationParamIfAny());
}

// Protocol

ProtocolKind Protocol::kind() const noexcept {
    return static_cast<ProtocolKind>(protocol_->protocolType);
}

std::string_view Protocol::name() const noexcept {
    return protocol_->name().view();
}

Station Protocol::station() const noexcept {
    return ViewAccess::view<Station>(*protocol_->stationParam);
}

List<Transport> Protocol::transports() const noexcept {
    return ViewAccess::list<Transport>(&protocol_->transports);
}

}  // namespace quillmark
