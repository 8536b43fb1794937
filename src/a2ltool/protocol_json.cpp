// How a control unit is reached and measured, as JSON. Codes are the numbers that the public
// headers tell; a code of 0, which stands for nothing told, is left out.

#include "a2ltool/model_json.h"

namespace quillmark::a2ltool {
namespace {

void writeCode(JsonWriter& json, std::string_view name, std::int32_t code) {
    if (code != 0) {
        json.integerMember(name, code);
    }
}

/// A list of objects, each with the members that `write` makes; left out if it is empty.
template <typename Item, typename Write>
void writeObjects(JsonWriter& json, std::string_view name, const List<Item>& items, Write write) {
    if (items.empty()) {
        return;
    }
    json.startArray(name);
    for (const Item& item : items) {
        json.startObject();
        write(json, item);
        json.endObject();
    }
    json.endArray();
}

/// An object that may be absent.
template <typename Part, typename Write>
void writeObject(JsonWriter& json, std::string_view name, const Part& part, Write write) {
    if (part) {
        json.startObject(name);
        write(json, *part);
        json.endObject();
    }
}

void writeTimebase(JsonWriter& json, const Timebase& timebase) {
    json.integerMember("resolution", timebase.resolution());
    json.integerMember("unit", timebase.unit());
    writeNumber(json, "byteLength", timebase.byteLength());
    json.booleanMember("fixed", timebase.isFixed());
}

void writePackedMode(JsonWriter& json, const PackedMode& mode) {
    json.integerMember("grouping", mode.grouping());
    json.integerMember("timestamp", mode.timestamp());
    json.booleanMember("mandatory", mode.mandatory() != 0);
    writeNumber(json, "sampleCount", mode.sampleCount());
    writeNumbers(json, "alternativeSampleCounts", mode.alternativeSampleCounts());
}

void writeEvent(JsonWriter& json, const Event& event) {
    json.textMember("name", event.name());
    writeText(json, "shortName", event.shortName());
    writeNumber(json, "channel", event.channel());
    json.booleanMember("cyclic", event.isCyclic());
    json.booleanMember("daq", event.supportsDaq());
    json.booleanMember("stim", event.supportsStim());
    writeObject(json, "cycle", event.cycle(), &writeTimebase);
    writeObject(json, "minCycle", event.minCycle(), &writeTimebase);
    writeNumber(json, "priority", event.priority());
    writeObject(json, "packedMode", event.packedMode(), &writePackedMode);
    writeSettings(json, "settings", event.settings());
}

void writeOdtEntry(JsonWriter& json, const OdtEntry& entry) {
    writeNumber(json, "number", entry.number());
    writeNumber(json, "address", entry.address());
    writeNumber(json, "addressExtension", entry.addressExtension());
    writeNumber(json, "size", entry.size());
    writeNumber(json, "bitOffset", entry.bitOffset());
}

void writeOdt(JsonWriter& json, const Odt& odt) {
    writeNumber(json, "number", odt.number());
    writeObjects(json, "entries", odt.entries(), &writeOdtEntry);
}

void writeDaqList(JsonWriter& json, const DaqList& list) {
    writeText(json, "name", list.name());
    writeNumber(json, "number", list.number());
    writeCode(json, "direction", list.direction());
    writeNumber(json, "maxOdt", list.maxOdt());
    writeNumber(json, "maxOdtEntries", list.maxOdtEntries());
    writeNumber(json, "event", list.event());
    writeNumber(json, "firstPid", list.firstPid());
    writeObjects(json, "odts", list.odts(), &writeOdt);
}

void writeAcquisition(JsonWriter& json, const Acquisition& acquisition) {
    writeObject(json, "timestamps", acquisition.timestamps(), &writeTimebase);
    writeCode(json, "configType", acquisition.configType());
    writeCode(json, "optimisationType", acquisition.optimisationType());
    writeCode(json, "addressExtension", acquisition.addressExtension());
    writeCode(json, "identificationFieldType", acquisition.identificationFieldType());
    writeCode(json, "granularityOdtEntrySize", acquisition.granularityOdtEntrySize());
    writeCode(json, "overloadIndication", acquisition.overloadIndication());
    writeNumber(json, "maxDaq", acquisition.maxDaq());
    writeNumber(json, "minDaq", acquisition.minDaq());
    writeNumber(json, "maxEventChannel", acquisition.maxEventChannel());
    writeNumber(json, "maxOdtEntrySize", acquisition.maxOdtEntrySize());
    json.booleanMember("prescaler", acquisition.supportsPrescaler());
    json.booleanMember("resume", acquisition.supportsResume());
    json.booleanMember("pidOff", acquisition.supportsPidOff());
    json.booleanMember("storeDaq", acquisition.supportsStoreDaq());
    writeSettings(json, "settings", acquisition.settings());
    writeObjects(json, "events", acquisition.events(), &writeEvent);
    writeObjects(json, "daqLists", acquisition.daqLists(), &writeDaqList);
}

void writeDaqCanId(JsonWriter& json, const DaqCanId& id) {
    writeNumber(json, "daqList", id.daqList());
    writeNumber(json, "canId", id.canId());
}

void writeStation(JsonWriter& json, const Station& station) {
    writeText(json, "byteOrder", textOf(station.byteOrder()));
    writeSettings(json, "settings", station.settings());
    writeObject(json, "acquisition", station.acquisition(), &writeAcquisition);
    writeObjects(json, "daqCanIds", station.daqCanIds(), &writeDaqCanId);
}

void writeCanFd(JsonWriter& json, const CanFd& canFd) {
    writeNumber(json, "maxDlc", canFd.maxDlc());
    writeNumber(json, "dataBitrate", canFd.dataBitrate());
    writeNumber(json, "samplePoint", canFd.samplePoint());
    writeNumber(json, "secondarySamplePoint", canFd.secondarySamplePoint());
    writeNumber(json, "btlCycles", canFd.btlCycles());
    writeNumber(json, "sjw", canFd.sjw());
    writeNumber(json, "syncEdge", canFd.syncEdge());
    json.booleanMember("maxDlcRequired", canFd.maxDlcRequired());
    writeCode(json, "transceiverDelayCompensation", canFd.transceiverDelayCompensation());
}

void writeFlexRayBuffer(JsonWriter& json, const FlexRayBuffer& buffer) {
    writeCode(json, "role", buffer.role());
    writeNumber(json, "number", buffer.number());
    writeNumber(json, "maxLength", buffer.maxLength());
    writeNumber(json, "slotId", buffer.slotId());
    writeSettings(json, "settings", buffer.settings());
}

void writeTransport(JsonWriter& json, const Transport& transport) {
    writeText(json, "kind", textOf(transport.kind()));
    writeText(json, "instanceName", transport.instanceName());
    writeNumber(json, "masterCanId", transport.masterCanId());
    writeNumber(json, "slaveCanId", transport.slaveCanId());
    writeNumber(json, "stationAddress", transport.stationAddress());
    writeSettings(json, "settings", transport.settings());
    writeObject(json, "canFd", transport.canFd(), &writeCanFd);
    writeObjects(json, "flexRayBuffers", transport.flexRayBuffers(), &writeFlexRayBuffer);
    writeObject(json, "station", transport.station(), &writeStation);
}

}  // namespace

void writeMembers(JsonWriter& json, const Protocol& protocol) {
    writeText(json, "kind", textOf(protocol.kind()));
    json.textMember("name", protocol.name());
    json.startObject("station");
    writeStation(json, protocol.station());
    json.endObject();
    writeObjects(json, "transports", protocol.transports(), &writeTransport);
}

}  // namespace quillmark::a2ltool
