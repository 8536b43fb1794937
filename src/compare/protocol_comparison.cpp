#include "compare/protocol_comparison.h"

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "compare/compared_fields.h"
#include "model/setting_names.h"
#include "platform/text.h"

namespace quillmark {
namespace {

// Where the settings are. None of these makes what it does not find.

const PhStationParam* stationOf(const PhCommParam& parameters) {
    return parameters.stationParam.get();
}

const PhDaqCapabilities* daqOf(const PhCommParam& parameters) {
    const PhStationParam* station = stationOf(parameters);
    return station == nullptr ? nullptr : station->daqCapabilitiesIfAny();
}

const PhDaqTpCapabilities* daqTpOf(const PhCommParam& parameters) {
    const PhStationParam* station = stationOf(parameters);
    return station == nullptr ? nullptr : station->daqTpCapabilitiesIfAny();
}

const PhProtocolParam* protocolOf(const PhCommParam& parameters) {
    const PhStationParam* station = stationOf(parameters);
    return station == nullptr ? nullptr : station->protocolParamIfAny();
}

const PhValue* propertyOf(const PhHandle<PhProperties>& properties, std::string_view name) {
    return properties ? properties->find(name) : nullptr;
}

const PhValue* protocolProperty(const PhCommParam& parameters, std::string_view name) {
    const PhProtocolParam* protocol = protocolOf(parameters);
    return protocol == nullptr ? nullptr : propertyOf(protocol->properties, name);
}

const PhValue* daqProperty(const PhDaqCapabilities& daq, std::string_view name) {
    return propertyOf(daq.properties, name);
}

const PhValue* transportProperty(const PhTransportParam& transport, std::string_view name) {
    return propertyOf(transport.properties, name);
}

const PhValue* sourcesOf(const PhCommParam& parameters) {
    const PhDaqCapabilities* daq = daqOf(parameters);
    return daq == nullptr ? nullptr : daqProperty(*daq, setting::kSources);
}

/// None for a value that is absent or no list.
std::span<const PhHandle<PhValue>> elementsOf(const PhValue* value) {
    const PhValue::List* elements = value == nullptr ? nullptr : value->listIfAny();
    return elements == nullptr ? std::span<const PhHandle<PhValue>>() : std::span(*elements);
}

const PhObjectList<PhDaq>& daqLists(const PhCommParam& parameters) {
    return daqOf(parameters)->daqLists;
}

const PhObjectList<PhRaster>& rasters(const PhCommParam& parameters) {
    return daqOf(parameters)->rasters;
}

const PhObjectList<PhDaqTpCan>& daqListCanIds(const PhCommParam& parameters) {
    return daqTpOf(parameters)->daqLists;
}

/// A setting of a CCP source; of one that the source repeats, the first counts.
const PhValue* sourceSetting(const PhValue& source, std::string_view name) {
    for (const PhHandle<PhValue>& setting : elementsOf(&source)) {
        if (setting->name().view() == name) {
            return setting.get();
        }
    }
    return nullptr;
}

bool hasTimebase(const PhRaster& raster) {
    return static_cast<bool>(raster.timebase);
}

bool hasTimestamps(const PhDaqCapabilities& daq) {
    return static_cast<bool>(daq.timebase);
}

template <std::int32_t PhTimebase::*Member>
std::int32_t rasterTime(const PhRaster& raster) {
    return raster.timebase ? (*raster.timebase).*Member : 0;
}

template <std::int32_t PhTimebase::*Member>
std::int32_t timestampSetting(const PhDaqCapabilities& daq) {
    return daq.timebase ? (*daq.timebase).*Member : 0;
}

const PhValue* rasterByteLength(const PhRaster& raster) {
    return raster.timebase ? raster.timebase->byteLength.get() : nullptr;
}

const PhValue* timestampByteLength(const PhDaqCapabilities& daq) {
    return daq.timebase ? daq.timebase->byteLength.get() : nullptr;
}

std::int32_t transportType(const PhTransportParam& transport) {
    return static_cast<std::int32_t>(transport.transportType);
}

std::string_view transportName(const PhTransportParam& transport) {
    return transport.name().view();
}

// Rows. Order is the order of the report.

using ProtocolRow = FieldRow<PhCommParam>;
using DaqRow = FieldRow<PhDaqCapabilities>;
using SourceRow = FieldRow<PhValue>;
using DaqListRow = FieldRow<PhDaq>;
using RasterRow = FieldRow<PhRaster>;
using CanIdRow = FieldRow<PhDaqTpCan>;
using TransportRow = FieldRow<PhTransportParam>;

constexpr ProtocolRow protocolRow(std::string_view label, std::string_view property) {
    return {label, ProtocolRow::NamedValue{&protocolProperty, property}};
}

constexpr ProtocolRow kCcpSeedAndKey[] = {
    protocolRow("seed_key_dll_name_cal", setting::kSeedKeyDllCalibration),
    protocolRow("seed_key_dll_name_daq", setting::kSeedKeyDllDaq),
    protocolRow("seed_key_dll_name_pgm", setting::kSeedKeyDllProgramming),
};

constexpr ProtocolRow kCcpByteOrder[] = {
    protocolRow("daq capabilities:ccp_byteorder_code", setting::kCcpByteOrderCode),
};

constexpr DaqRow kCcpDaqCapabilities[] = {
    {"daq capabilities:address_extension",
     DaqRow::NamedValue{&daqProperty, setting::kAddressExtension}},
};

constexpr SourceRow sourceRow(std::string_view label, std::string_view setting) {
    return {label, SourceRow::NamedValue{&sourceSetting, setting}};
}

constexpr SourceRow kCcpSource[] = {
    sourceRow("):scaling_unit", setting::kScalingUnit),
    sourceRow("):period", setting::kPeriod),
    sourceRow("):can_id_variable", setting::kCanIdVariable),
    sourceRow("):can_id_fixed", setting::kCanIdFixed),
    sourceRow("):first_pid", setting::kFirstPid),
    sourceRow("):raster", setting::kRaster),
    sourceRow("):source_id", setting::kSourceId),
};

constexpr DaqListRow kCcpDaqList[] = {
    {"):daq_number", &valueOf<&PhDaq::number>},
    {"):length", &valueOf<&PhDaq::length>},
    {"):source_id", &valueOf<&PhDaq::sourceId>},
    {"):first_pid", &valueOf<&PhDaq::firstPid>},
};

// The verbose lines of a raster's time base do not say which of its two numbers they show.
constexpr RasterRow kCcpRaster[] = {
    {"):channelId", &valueOf<&PhRaster::channel>},
    {")", &rasterTime<&PhTimebase::resolution>, "):timebase:resolution values are not equal"},
    {")", &rasterTime<&PhTimebase::scale>, "):timebase:scale values are not equal"},
};

constexpr CanIdRow kDaqListCanId[] = {
    {"):fixedCanId", &valueOf<&PhDaqTpCan::canId>},
};

constexpr DaqListRow kXcpDaqList[] = {
    {"):MAX_ODT", &valueOf<&PhDaq::length>},
    {"):MAX_ODT_ENTRIES", &valueOf<&PhDaq::maxOdtEntries>},
    {"):FIRST_PID", &valueOf<&PhDaq::firstPid>},
    {"):EVENT_FIXED", &valueOf<&PhDaq::sourceId>},
};

constexpr RasterRow kXcpEvent[] = {
    {"):dirDaqSupported", RasterRow::BooleanOf{&flagOf<&PhRaster::daqSupported>}},
    {"):dirStimSupported", RasterRow::BooleanOf{&flagOf<&PhRaster::stimSupported>}},
    {"):timebase", RasterRow::Presence{&hasTimebase}},
    {"):timebase:resolution", &rasterTime<&PhTimebase::resolution>, {}, &hasTimebase},
    {"):timebase:scale", &rasterTime<&PhTimebase::scale>, {}, &hasTimebase},
    {"):timebase:byteLength", &rasterByteLength, {}, &hasTimebase},
    {"):priority", &valueOf<&PhRaster::priority>},
};

constexpr ProtocolRow kXcpProtocol[] = {
    protocolRow("daq capabilities:t1", setting::kT1),
    protocolRow("daq capabilities:t2", setting::kT2),
    protocolRow("daq capabilities:t3", setting::kT3),
    protocolRow("daq capabilities:t4", setting::kT4),
    protocolRow("daq capabilities:t5", setting::kT5),
    protocolRow("daq capabilities:t6", setting::kT6),
    protocolRow("daq capabilities:t7", setting::kT7),
    protocolRow("daq capabilities:xcp_byteorder_code", setting::kXcpByteOrderCode),
    protocolRow("daq capabilities:seed_and_key_external_function", setting::kSeedAndKeyFunction),
};

constexpr DaqRow kXcpDaqCapabilities[] = {
    {"daq capabilities:daqConfigType", &integerOf<&PhDaqCapabilities::configType>},
    {"daq capabilities:maxDaq", &valueOf<&PhDaqCapabilities::maxDaq>},
    {"daq capabilities:maxEventChannel", &valueOf<&PhDaqCapabilities::maxEventChannel>},
    {"daq capabilities:minDaq", &valueOf<&PhDaqCapabilities::minDaq>},
    {"daq capabilities:optimizationType", &integerOf<&PhDaqCapabilities::optimisationType>},
    {"daq capabilities:addressExtension", &integerOf<&PhDaqCapabilities::addressExtension>},
    {"daq capabilities:identificationFieldType",
     &integerOf<&PhDaqCapabilities::identificationFieldType>},
    {"daq capabilities:granularityOdtEntrySize",
     &integerOf<&PhDaqCapabilities::granularityOdtEntrySize>},
    {"daq capabilities:maxOdtEntrySizeDaq", &valueOf<&PhDaqCapabilities::maxOdtEntrySize>},
    {"daq capabilities:overloadIndicationType", &integerOf<&PhDaqCapabilities::overloadIndication>},
    {"daq capabilities:prescalerSupported",
     DaqRow::BooleanOf{&flagOf<&PhDaqCapabilities::prescalerSupported>}},
    {"daq capabilities:daqResumeSupported",
     DaqRow::BooleanOf{&flagOf<&PhDaqCapabilities::resumeSupported>}},
    {"timestamp", DaqRow::Presence{&hasTimestamps}},
    {"daq capabilities:timestampSettings:resolution",
     &timestampSetting<&PhTimebase::resolution>,
     {},
     &hasTimestamps},
    {"daq capabilities:timestampSettings:scale",
     &timestampSetting<&PhTimebase::scale>,
     {},
     &hasTimestamps},
    {"daq capabilities:timestampSettings:byteLength", &timestampByteLength, {}, &hasTimestamps},
    {"daq capabilities:pidOffSupported",
     DaqRow::BooleanOf{&flagOf<&PhDaqCapabilities::pidOffSupported>}},
};

constexpr TransportRow kTxId = {"transport parameter:txId",
                                &valueOf<&PhTransportParam::masterCanId>};
constexpr TransportRow kRxId = {"transport parameter:rxId",
                                &valueOf<&PhTransportParam::slaveCanId>};
constexpr TransportRow kBitrate = {"transport parameter:bitrate",
                                   TransportRow::NamedValue{&transportProperty, setting::kBitrate}};

constexpr TransportRow kCcpTransport[] = {
    kTxId,
    kRxId,
    {"transport parameter:nodeId", &valueOf<&PhTransportParam::stationAddress>},
    kBitrate,
    {"transport parameter:transport type", &transportType, "transport types are not equal"},
    {"transport parameter:name", &transportName, "names are not equal"},
};

constexpr TransportRow kXcpTransport[] = {
    kTxId,
    kRxId,
    kBitrate,
    {"transport parameter:max_dlc_required",
     TransportRow::NamedValue{&transportProperty, setting::kMaxDlcRequired}},
};

// Numbered collections.

constexpr NumberedCollection<PhDaq> kCcpDaqLists = {"Daq List ", "daqlist(", &daqLists,
                                                    &valueOf<&PhDaq::number>, kCcpDaqList};
constexpr NumberedCollection<PhRaster> kCcpRasters = {"Raster ", "raster(", &rasters,
                                                      &valueOf<&PhRaster::channel>, kCcpRaster};
constexpr NumberedCollection<PhDaqTpCan> kDaqListCanIds = {
    "Daq List CAN config ", "daqlist(", &daqListCanIds, &valueOf<&PhDaqTpCan::number>,
    kDaqListCanId};
constexpr NumberedCollection<PhDaq> kXcpDaqLists = {"Daq List ", "daqlist(", &daqLists,
                                                    &valueOf<&PhDaq::number>, kXcpDaqList};
constexpr NumberedCollection<PhRaster> kXcpEvents = {"Event ", "event(", &rasters,
                                                     &valueOf<&PhRaster::channel>, kXcpEvent};

// Transports and optional commands, whose texts differ between the protocols.

struct TransportRows {
    std::string_view countFinding;
    std::span<const TransportRow> rows;
};

constexpr TransportRows kCcpTransports = {"different number of transport parameters",
                                          kCcpTransport};
constexpr TransportRows kXcpTransports = {"[different number of transport parameters]",
                                          kXcpTransport};

void compareTransports(const Comparison& comparison, const TransportRows& rows,
                       const PhCommParam& oldParameters, const PhCommParam& newParameters) {
    const auto& oldTransports = oldParameters.transports;
    const auto& newTransports = newParameters.transports;
    if (oldTransports.count() != newTransports.count()) {
        addFinding(comparison.report, kLevelError, std::string(rows.countFinding),
                   {"number of transport parameters", std::to_string(oldTransports.count()),
                    std::to_string(newTransports.count())});
    }
    const std::size_t pairs = std::min(oldTransports.count(), newTransports.count());
    for (std::size_t i = 0; i < pairs; ++i) {
        compareFields(comparison, {}, rows.rows, oldTransports.at(i), newTransports.at(i));
    }
}

struct CommandTexts {
    /// What stands before and behind the name of a command that the new module lost.
    std::string_view before;
    std::string_view behind;
    std::string (*nameOf)(const PhValue& command);
};

std::string commandCode(const PhValue& command) {
    return std::to_string(command.toInteger());
}

std::string commandKeyword(const PhValue& command) {
    return std::string(command.name().view());
}

constexpr CommandTexts kCcpCommands = {"optional command ", " is not present in second file",
                                       &commandCode};
constexpr CommandTexts kXcpCommands = {"[Optional command ", " is not present in second file]",
                                       &commandKeyword};

void showCommands(const Comparison& comparison, std::string_view title, const CommandTexts& texts,
                  std::span<const PhHandle<PhValue>> commands) {
    std::string line(title);
    for (const PhHandle<PhValue>& command : commands) {
        line.append(texts.nameOf(*command)).append(" ");
    }
    comparison.console.printLine(line);
}

void compareCommands(const Comparison& comparison, const CommandTexts& texts,
                     const PhCommParam& oldParameters, const PhCommParam& newParameters) {
    CompareReport& report = comparison.report;
    if (!checkPresent(report, protocolOf(oldParameters) != nullptr,
                      protocolOf(newParameters) != nullptr, "protocol_parameter")) {
        return;
    }
    const PhValue* oldProperty = protocolProperty(oldParameters, setting::kOptionalCommands);
    const PhValue* newProperty = protocolProperty(newParameters, setting::kOptionalCommands);
    if (!checkPresent(report, oldProperty != nullptr, newProperty != nullptr,
                      "optional commands")) {
        return;
    }
    const auto oldCommands = elementsOf(oldProperty);
    const auto newCommands = elementsOf(newProperty);
    if (comparison.verbose) {
        showCommands(comparison, "  OPTIONAL_CMD(1) : ", texts, oldCommands);
        showCommands(comparison, "  OPTIONAL_CMD(2) : ", texts, newCommands);
    }
    std::set<std::int32_t> kept;
    for (const PhHandle<PhValue>& command : newCommands) {
        kept.insert(command->toInteger());
    }
    for (const PhHandle<PhValue>& command : oldCommands) {
        if (!kept.contains(command->toInteger())) {
            const std::string name = texts.nameOf(*command);
            addFinding(report, kLevelError, joined({texts.before, name, texts.behind}),
                       lostPart("optional command " + name));
        }
    }
}

// What both modules must have for a section to be compared, and the sections.

enum class Part { Module, Station, DaqCapabilities, Sources, DaqTpCapabilities, Count };

struct PartRow {
    Part part;
    /// Asked for only where both modules have this one.
    Part within;
    std::string_view label;
    bool (*has)(const PhCommParam& parameters);
};

template <auto Of>
bool has(const PhCommParam& parameters) {
    return Of(parameters) != nullptr;
}

constexpr PartRow kStationPart = {Part::Station, Part::Module, "station_parameter",
                                  &has<stationOf>};
constexpr PartRow kDaqPart = {Part::DaqCapabilities, Part::Station, "daq capabilities (?)",
                              &has<daqOf>};
constexpr PartRow kSourcesPart = {Part::Sources, Part::DaqCapabilities, "sources", &has<sourcesOf>};
constexpr PartRow kDaqTpPart = {Part::DaqTpCapabilities, Part::Station, "daq TP capabilities (?)",
                                &has<daqTpOf>};

constexpr PartRow kCcpParts[] = {kStationPart, kDaqPart, kSourcesPart, kDaqTpPart};
constexpr PartRow kXcpParts[] = {kStationPart, kDaqPart, kDaqTpPart};

struct SectionRow {
    /// The section is passed over unless both modules have this part.
    Part needs;
    void (*compare)(const Comparison& comparison, const PhCommParam& oldParameters,
                    const PhCommParam& newParameters);
};

template <const auto& Rows>
void protocolFields(const Comparison& comparison, const PhCommParam& oldParameters,
                    const PhCommParam& newParameters) {
    compareFields(comparison, {}, std::span<const ProtocolRow>(Rows), oldParameters, newParameters);
}

template <const auto& Rows>
void daqFields(const Comparison& comparison, const PhCommParam& oldParameters,
               const PhCommParam& newParameters) {
    compareFields(comparison, {}, std::span<const DaqRow>(Rows), *daqOf(oldParameters),
                  *daqOf(newParameters));
}

template <const auto& Collection>
void numbered(const Comparison& comparison, const PhCommParam& oldParameters,
              const PhCommParam& newParameters) {
    compareNumbered(comparison, Collection, oldParameters, newParameters);
}

/// CCP sources are shown and never judged: each of the old module is compared with itself. The DAQ
/// lists and CAN identifiers that came with them are judged, in sections of their own.
void sourcesOfOld(const Comparison& comparison, const PhCommParam& oldParameters,
                  const PhCommParam&) {
    for (const PhHandle<PhValue>& source : elementsOf(sourcesOf(oldParameters))) {
        const std::int32_t number = numberOr0(sourceSetting(*source, setting::kDaqNumber));
        compareFields(comparison, numberedPrefix("source(", number),
                      std::span<const SourceRow>(kCcpSource), *source, *source);
    }
}

template <const auto& Rows>
void transports(const Comparison& comparison, const PhCommParam& oldParameters,
                const PhCommParam& newParameters) {
    compareTransports(comparison, Rows, oldParameters, newParameters);
}

template <const auto& Texts>
void optionalCommands(const Comparison& comparison, const PhCommParam& oldParameters,
                      const PhCommParam& newParameters) {
    compareCommands(comparison, Texts, oldParameters, newParameters);
}

constexpr SectionRow kCcpSections[] = {
    {Part::Station, &protocolFields<kCcpSeedAndKey>},
    {Part::DaqCapabilities, &protocolFields<kCcpByteOrder>},
    {Part::DaqCapabilities, &daqFields<kCcpDaqCapabilities>},
    {Part::Sources, &sourcesOfOld},
    {Part::DaqCapabilities, &numbered<kCcpDaqLists>},
    {Part::DaqCapabilities, &numbered<kCcpRasters>},
    {Part::DaqTpCapabilities, &numbered<kDaqListCanIds>},
    {Part::Module, &transports<kCcpTransports>},
    {Part::Station, &optionalCommands<kCcpCommands>},
};

constexpr SectionRow kXcpSections[] = {
    {Part::DaqTpCapabilities, &numbered<kDaqListCanIds>},
    {Part::DaqCapabilities, &numbered<kXcpDaqLists>},
    {Part::DaqCapabilities, &numbered<kXcpEvents>},
    {Part::DaqCapabilities, &protocolFields<kXcpProtocol>},
    {Part::DaqCapabilities, &daqFields<kXcpDaqCapabilities>},
    {Part::Module, &transports<kXcpTransports>},
    {Part::Station, &optionalCommands<kXcpCommands>},
};

/// The first communication parameters of a module; for one that has none, parameters without a
/// station.
PhHandle<PhCommParam> commParamOf(const PhGroup& module) {
    if (!module.commParams.empty()) {
        return PhHandle<PhCommParam>(&module.commParams.at(0));
    }
    auto none = makePh<PhCommParam>();
    none->stationParam = {};
    return none;
}

void compareModules(const Comparison& comparison, std::span<const PartRow> parts,
                    std::span<const SectionRow> sections, const PhGroup& oldModule,
                    const PhGroup& newModule) {
    const PhHandle<PhCommParam> oldParameters = commParamOf(oldModule);
    const PhHandle<PhCommParam> newParameters = commParamOf(newModule);
    std::bitset<static_cast<std::size_t>(Part::Count)> inBoth;
    const auto isInBoth = [&](Part part) { return inBoth[static_cast<std::size_t>(part)]; };
    isInBoth(Part::Module) = true;
    for (const PartRow& row : parts) {
        isInBoth(row.part) =
            isInBoth(row.within) && checkPresent(comparison.report, row.has(*oldParameters),
                                                 row.has(*newParameters), row.label);
    }
    for (const SectionRow& section : sections) {
        if (isInBoth(section.needs)) {
            section.compare(comparison, *oldParameters, *newParameters);
        }
    }
}

}  // namespace

void compareCcpModules(CompareReport& report, bool verbose, const PhGroup& oldModule,
                       const PhGroup& newModule, Console& console) {
    compareModules({report, verbose, console}, kCcpParts, kCcpSections, oldModule, newModule);
}

void compareXcpModules(CompareReport& report, bool verbose, const PhGroup& oldModule,
                       const PhGroup& newModule, Console& console) {
    compareModules({report, verbose, console}, kXcpParts, kXcpSections, oldModule, newModule);
}

}  // namespace quillmark
