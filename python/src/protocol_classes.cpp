#include <string>

#include "model_classes.h"
#include "quillmark/protocol.h"
#include "view_class.h"

namespace quillmark::python {
namespace {

std::string describeNumber(const Number& number) {
    return number.isInteger() ? std::to_string(number.integer()) : "?";
}

void declareEvents(py::module_& module) {
    ViewClass<Timebase>(module, "Timebase", "A clock or a cycle: `resolution` times the unit.")
        .attribute<&Timebase::resolution>("resolution", "How many of the unit.")
        .attribute<&Timebase::unit>(
            "unit", "XCP: 1 s, 2 ms, 3 us, 4 ns, 5 ps. CCP: the code of the scaling unit as read.")
        .attribute<&Timebase::byteLength>("byte_length", "Size of a timestamp [bytes].")
        .attribute<&Timebase::isFixed>("is_fixed", "Whether timestamps cannot be switched off.")
        .representation([](const Timebase& view) {
            return std::to_string(view.resolution()) + " of unit " + std::to_string(view.unit());
        });
    ViewClass<PackedMode>(module, "PackedMode", "How samples are packed into a transmission.")
        .attribute<&PackedMode::grouping>("grouping", "1 grouped by element, 2 by event.")
        .attribute<&PackedMode::timestamp>("timestamp", "0 of the last sample, 1 of the first.")
        .attribute<&PackedMode::mandatory>("mandatory", "1 when packing cannot be switched off.")
        .attribute<&PackedMode::sampleCount>("sample_count", "In one transmission.")
        .attribute<&PackedMode::alternativeSampleCounts>("alternative_sample_counts", "Or these.");
    ViewClass<Event>(module, "Event",
                     "An event channel: an XCP event, a CCP raster, a GMLAN source.")
        .attribute<&Event::name>("name", "As the description has it.")
        .attribute<&Event::shortName>("short_name", "As the description has it.")
        .attribute<&Event::channel>("channel", "Its number.")
        .attribute<&Event::isCyclic>("is_cyclic", "Whether it comes at fixed times.")
        .attribute<&Event::supportsDaq>("supports_daq", "Whether it can be measured with.")
        .attribute<&Event::supportsStim>("supports_stim", "Whether it can be stimulated with.")
        .attribute<&Event::cycle>("cycle", "None for one that comes at no fixed time.")
        .attribute<&Event::minCycle>("min_cycle", "The shortest cycle, or None.")
        .attribute<&Event::priority>("priority", "255 is the highest.")
        .attribute<&Event::packedMode>("packed_mode", "Or None.")
        .attribute<&Event::settings>("settings", "What else it says.")
        .representation([](const Event& view) {
            return std::string(view.name()) + ": channel " + describeNumber(view.channel());
        });
}

void declareLists(py::module_& module) {
    ViewClass<OdtEntry>(module, "OdtEntry", "An element of an object descriptor table.")
        .attribute<&OdtEntry::number>("number", "Its place.")
        .attribute<&OdtEntry::address>("address", "As the protocol counts it.")
        .attribute<&OdtEntry::addressExtension>("address_extension", "Of the address.")
        .attribute<&OdtEntry::size>("size", "As the protocol counts it.")
        .attribute<&OdtEntry::bitOffset>("bit_offset", "255: none.");
    ViewClass<Odt>(module, "Odt", "An object descriptor table.")
        .attribute<&Odt::number>("number", "Its place.")
        .attribute<&Odt::entries>("entries", "Its elements.");
    ViewClass<DaqList>(module, "DaqList", "A DAQ list of XCP, a source of CCP or GMLAN.")
        .attribute<&DaqList::name>("name", "Of a source; empty for a list.")
        .attribute<&DaqList::number>("number", "As the description has it.")
        .attribute<&DaqList::direction>("direction", "XCP: 1 DAQ, 2 STIM, 3 both.")
        .attribute<&DaqList::maxOdt>("max_odt", "The highest number of tables.")
        .attribute<&DaqList::maxOdtEntries>("max_odt_entries", "In one table.")
        .attribute<&DaqList::event>(
            "event",
            "The channel to which it is bound: of XCP where that is fixed, of CCP the raster.")
        .attribute<&DaqList::firstPid>("first_pid", "Identifier of its first table.")
        .attribute<&DaqList::odts>("odts", "Those that the control unit has filled already.")
        .representation(
            [](const DaqList& view) { return "number " + describeNumber(view.number()); });
    ViewClass<DaqCanId>(module, "DaqCanId", "The CAN identifier of a DAQ list.")
        .attribute<&DaqCanId::daqList>("daq_list", "Its number.")
        .attribute<&DaqCanId::canId>("can_id", "None for a variable one.");
}

void declareStation(py::module_& module) {
    ViewClass<Acquisition>(module, "Acquisition", "What a control unit can do in acquisition.")
        .attribute<&Acquisition::timestamps>("timestamps", "Their clock; None without any.")
        .attribute<&Acquisition::events>("events", "The event channels.")
        .attribute<&Acquisition::daqLists>("daq_lists", "Those that the description names.")
        .attribute<&Acquisition::settings>("settings", "What else it says.")
        .attribute<&Acquisition::configType>("config_type", "1 static, 2 dynamic.")
        .attribute<&Acquisition::optimisationType>("optimisation_type",
                                                   "1 to 6, in the order of the protocol's words.")
        .attribute<&Acquisition::addressExtension>("address_extension",
                                                   "1 free, 2 one per table, 3 one per DAQ list.")
        .attribute<&Acquisition::identificationFieldType>("identification_field_type",
                                                          "1 absolute, 2 to 4 relative.")
        .attribute<&Acquisition::granularityOdtEntrySize>("granularity_odt_entry_size",
                                                          "1 byte, 2 word, 3 double word, 4 long.")
        .attribute<&Acquisition::overloadIndication>("overload_indication",
                                                     "1 none, 2 PID, 3 event.")
        .attribute<&Acquisition::maxDaq>("max_daq", "The highest number of DAQ lists.")
        .attribute<&Acquisition::minDaq>("min_daq", "Of them are fixed.")
        .attribute<&Acquisition::maxEventChannel>("max_event_channel", "Number of channels.")
        .attribute<&Acquisition::maxOdtEntrySize>("max_odt_entry_size", "[bytes]")
        .attribute<&Acquisition::supportsPrescaler>("supports_prescaler", "As it says.")
        .attribute<&Acquisition::supportsResume>("supports_resume", "As it says.")
        .attribute<&Acquisition::supportsPidOff>("supports_pid_off", "As it says.")
        .attribute<&Acquisition::supportsStoreDaq>("supports_store_daq", "As it says.")
        .representation([](const Acquisition& view) {
            return std::to_string(view.events().size()) + " events, " +
                   std::to_string(view.daqLists().size()) + " DAQ lists";
        });
    ViewClass<Station>(module, "Station",
                       "The settings of a control unit, of a whole protocol or what one transport "
                       "says otherwise.")
        .attribute<&Station::byteOrder>("byte_order", "Of the protocol, or None.")
        .attribute<&Station::settings>("settings", "Timings, sizes, optional commands, ...")
        .attribute<&Station::acquisition>("acquisition", "Or None.")
        .attribute<&Station::daqCanIds>("daq_can_ids", "Of DAQ lists with their own.");
}

void declareTransports(py::module_& module) {
    ViewClass<CanFd>(module, "CanFd", "CAN FD settings of an XCP transport.")
        .attribute<&CanFd::maxDlc>("max_dlc", "[bytes]")
        .attribute<&CanFd::dataBitrate>("data_bitrate", "[Hz]")
        .attribute<&CanFd::samplePoint>("sample_point", "[%]")
        .attribute<&CanFd::secondarySamplePoint>("secondary_sample_point", "[%]")
        .attribute<&CanFd::btlCycles>("btl_cycles", "Time slices of a bit.")
        .attribute<&CanFd::sjw>("sjw", "Synchronisation jump width.")
        .attribute<&CanFd::syncEdge>("sync_edge", "1 single, 2 dual.")
        .attribute<&CanFd::maxDlcRequired>("max_dlc_required", "Whether frames have full length.")
        .attribute<&CanFd::transceiverDelayCompensation>("transceiver_delay_compensation", "1 on.");
    ViewClass<FlexRayBuffer>(module, "FlexRayBuffer", "A FlexRay buffer of an XCP transport.")
        .attribute<&FlexRayBuffer::role>(
            "role", "1 first command, 2 first response and error, 3 of the pool.")
        .attribute<&FlexRayBuffer::number>("number", "Its number.")
        .attribute<&FlexRayBuffer::maxLength>("max_length", "Of a frame.")
        .attribute<&FlexRayBuffer::slotId>("slot_id", "Its slot.")
        .attribute<&FlexRayBuffer::settings>("settings", "What else it says.");
    ViewClass<Transport>(module, "Transport", "One way of reaching the control unit.")
        .attribute<&Transport::kind>("kind", "The bus or network, or None.")
        .attribute<&Transport::instanceName>("instance_name", "Often empty.")
        .attribute<&Transport::masterCanId>(
            "master_can_id",
            "CAN: identifier from the logger to the control unit. Bit 31 marks an extended one.")
        .attribute<&Transport::slaveCanId>("slave_can_id", "CAN: the identifier back.")
        .attribute<&Transport::stationAddress>("station_address", "CCP.")
        .attribute<&Transport::canFd>("can_fd", "Or None.")
        .attribute<&Transport::flexRayBuffers>("flex_ray_buffers", "FlexRay.")
        .attribute<&Transport::settings>("settings", "Bit rate [bit/s], host name, port, ...")
        .attribute<&Transport::station>("station", "What it says otherwise, or None.")
        .representation([](const Transport& view) { return std::string(textOf(view.kind())); });
    ViewClass<Protocol>(module, "Protocol", "The settings of one protocol on one module.")
        .attribute<&Protocol::kind>("kind", "CCP, XCP, ...")
        .attribute<&Protocol::name>("name", "\"CCP\", \"XCP\" or \"GMLAN\".")
        .attribute<&Protocol::station>("station", "The settings of the control unit.")
        .attribute<&Protocol::transports>("transports", "The ways to it.")
        .representation([](const Protocol& view) { return std::string(textOf(view.kind())); });
}

}  // namespace

void declareProtocolClasses(py::module_& module) {
    declareEvents(module);
    declareLists(module);
    declareStation(module);
    declareTransports(module);
}

}  // namespace quillmark::python
