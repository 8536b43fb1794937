"""Tells whether two descriptions agree in how data is acquired."""

from . import core_blocks, model, resolution

CANNOT_COMPARE = 0
ERROR = 1
WARNING = 2

_LABELS = {CANNOT_COMPARE: b"Cannot compare modules", ERROR: b"Error", WARNING: b"Warning"}

_PROTOCOL_NAMES = {
    model.KWP_PROTOCOL: b"KWP",
    model.CCP_PROTOCOL: b"CCP",
    model.XCP_PROTOCOL: b"XCP",
    model.GMLAN_PROTOCOL: b"GMLAN",
}


class Report:
    """Findings in the order in which they were made, and the values that -v shows."""

    def __init__(self, console, verbose):
        self._console = console
        self._verbose = verbose
        self._findings = []

    def add(self, level, message):
        self._findings.append((level, message))

    def print(self):
        for level, message in self._findings:
            self._console.line(_LABELS[level] + b": " + message)
        if not self._findings:
            self._console.line(b"No Errors.")

    def show(self, text):
        if self._verbose:
            self._console.line(b"  " + text)

    def compare(self, label, old, new):
        """Two values of the model, each possibly absent (None). Those of two types never equal."""
        self.show(b"%s = %s # %s" % (label, _display(old), _display(new)))
        if not _are_equal(old, new):
            self.add(ERROR, label + b" values are not equal")

    def are_present(self, label, old, new):
        """Whether both are there. One without the other is a finding, two absent ones are not."""
        if old is None and new is not None:
            self.add(ERROR, b"module1 does not contain " + label)
        elif old is not None and new is None:
            self.add(ERROR, b"module2 does not contain " + label)
        return old is not None and new is not None

    def pairs(self, kind, old_items, new_items, number_of=lambda item: item.number):
        """Yields (number, old item, new item) for each old item that has a partner."""
        partners = {}
        for item in new_items:
            partners.setdefault(number_of(item) or 0, item)
        for item in old_items:
            number = number_of(item) or 0
            if number in partners:
                yield number, item, partners[number]
            else:
                self.add(ERROR, b"%s %d is no longer present in new file" % (kind, number))


def _display(value):
    if value is None:
        return b"NULL"
    if isinstance(value, bool):
        return b"true" if value else b"false"
    if isinstance(value, int):
        return b"%d" % value
    if isinstance(value, float):
        return b"%g" % value
    return value


def _are_equal(old, new):
    return type(old) is type(new) and old == new


# The driver


def compare_files(old_path, new_path, verbose, console):
    """Prints what differs. Returns 0 when the modules could be compared."""
    report = Report(console, verbose)
    status = _compare_files(old_path, new_path, report, console)
    report.print()
    return status


def _compare_files(old_path, new_path, report, console):
    roots = []
    for number, path in enumerate((old_path, new_path), start=1):
        root = core_blocks.read_description(path, console)
        if root is None:
            report.add(CANNOT_COMPARE, b"Reading of file %d failed: '%s'" % (number, path))
            return 1
        resolution.resolve(root)
        roots.append(root)
    old_modules, new_modules = (list(root.modules()) for root in roots)
    problems = 0
    for modules, path in ((old_modules, old_path), (new_modules, new_path)):
        if not modules:
            report.add(CANNOT_COMPARE, b"no module found in file '%s'" % path)
            problems += 1
    for modules, path in ((old_modules, old_path), (new_modules, new_path)):
        if len(modules) > 1:
            report.add(CANNOT_COMPARE,
                       b"more than one module in one file is currently not supported: '%s'" % path)
            problems += 1
    if problems:
        return problems
    (old_project, old), (new_project, new) = old_modules[0], new_modules[0]
    console.line(b"comparing modules: ")
    console.line(b"    %s:%s in file %s" % (old_project.name, old.name, old_path))
    console.line(b"    %s:%s in file %s" % (new_project.name, new.name, new_path))
    console.line(b'COMPARE MODULE "%s" with "%s"' % (old.name, new.name))
    for kind, old_name, new_name in (
            (b"project", old_project.name, new_project.name), (b"module", old.name, new.name)):
        if old_name != new_name:
            report.add(WARNING, b"%s names do not match: %s != %s" % (kind, old_name, new_name))
    return _compare_modules(report, old, new)


def _compare_modules(report, old, new):
    old_type, new_type = _protocol_type(old), _protocol_type(new)
    old_name = _PROTOCOL_NAMES.get(old_type, b"Undefined")
    new_name = _PROTOCOL_NAMES.get(new_type, b"Undefined")
    if old_type != new_type:
        report.add(CANNOT_COMPARE, b"protocol types do not match: %s != %s" % (old_name, new_name))
        return 1
    if old_type not in (model.CCP_PROTOCOL, model.XCP_PROTOCOL):
        report.add(CANNOT_COMPARE, b"unsupported protocol type: " + old_name)
        return 1
    compare = _compare_ccp if old_type == model.CCP_PROTOCOL else _compare_xcp
    compare(report, old.comm_params[0], new.comm_params[0])
    return 0


def _protocol_type(module):
    return module.comm_params[0].protocol_type if module.comm_params else 0


# The protocols. Where a section's presence check fails, the section is skipped.


def _compare_ccp(report, old, new):
    if not report.are_present(b"station_parameter", old.station, new.station):
        return
    old_daq, new_daq = old.station.daq, new.station.daq
    has_daq = report.are_present(b"daq capabilities (?)", old_daq, new_daq)
    has_sources = has_daq and report.are_present(
        b"sources", old_daq.properties.get("sources"), new_daq.properties.get("sources"))
    has_can_ids = report.are_present(
        b"daq TP capabilities (?)", old.station.daq_can_ids, new.station.daq_can_ids)

    for privilege in ("cal", "daq", "pgm"):
        name = "seed_key_dll_name_" + privilege
        _compare_property(report, name.encode("ascii"), name,
                          old.station.protocol, new.station.protocol)
    if has_daq:
        _compare_property(report, b"daq capabilities:ccp_byteorder_code", "ccp_byteorder_code",
                          old.station.protocol, new.station.protocol)
        _compare_property(report, b"daq capabilities:address_extension", "address_extension",
                          old_daq, new_daq)
    if has_sources:
        _compare_sources(report, old_daq.properties["sources"])
    if has_daq:
        _compare_ccp_daq_lists(report, old_daq.daq_lists, new_daq.daq_lists)
        _compare_ccp_rasters(report, old_daq.rasters, new_daq.rasters)
    if has_can_ids:
        _compare_can_ids(report, old.station, new.station)
    _compare_ccp_transports(report, old.transports, new.transports)
    _compare_commands(report, old, new, b"optional command %s is not present in second file")


def _compare_property(report, label, name, old, new):
    """A property of two objects that have some; each object may be absent."""
    report.compare(label, *(owner.properties.get(name) if owner else None for owner in (old, new)))


def _compare_sources(report, sources):
    """Each source of the old module is compared with itself, so this only shows values."""
    fields = ("scaling_unit", "period", "can_id_variable", "can_id_fixed", "first_pid", "raster",
              "source_id")
    for source in sources:
        number = source.find("daq_number") or 0
        for field in fields:
            value = source.find(field)
            report.compare(b"source(%d):%s" % (number, field.encode("ascii")), value, value)


def _compare_ccp_daq_lists(report, old_lists, new_lists):
    for number, old, new in report.pairs(b"Daq List", old_lists, new_lists):
        prefix = b"daqlist(%d):" % number
        report.compare(prefix + b"daq_number", old.number, new.number)
        report.compare(prefix + b"length", old.length, new.length)
        report.compare(prefix + b"source_id", old.source_id, new.source_id)
        report.compare(prefix + b"first_pid", old.first_pid, new.first_pid)


def _compare_ccp_rasters(report, old_rasters, new_rasters):
    for number, old, new in report.pairs(b"Raster", old_rasters, new_rasters):
        report.compare(b"raster(%d):channelId" % number, old.number, new.number)
        for field in ("resolution", "scale"):
            old_value, new_value = (getattr(raster.time_base, field) for raster in (old, new))
            report.show(b"raster(%d) = %d # %d" % (number, old_value, new_value))
            if old_value != new_value:
                report.add(ERROR, b"raster(%d):timebase:%s values are not equal"
                           % (number, field.encode("ascii")))


def _compare_can_ids(report, old_station, new_station):
    for number, old, new in report.pairs(
            b"Daq List CAN config", old_station.daq_can_ids, new_station.daq_can_ids):
        report.compare(b"daqlist(%d):fixedCanId" % number, old.can_id, new.can_id)


def _compare_identifiers(report, old, new):
    report.compare(b"transport parameter:txId", old.master_can_id, new.master_can_id)
    report.compare(b"transport parameter:rxId", old.slave_can_id, new.slave_can_id)


def _compare_ccp_transports(report, old_transports, new_transports):
    if len(old_transports) != len(new_transports):
        report.add(ERROR, b"different number of transport parameters")
    for old, new in zip(old_transports, new_transports):
        _compare_identifiers(report, old, new)
        report.compare(b"transport parameter:nodeId", old.station_address, new.station_address)
        _compare_property(report, b"transport parameter:bitrate", "bitrate", old, new)
        report.show(b"transport parameter:transport type = %d # %d" % (old.type, new.type))
        if old.type != new.type:
            report.add(ERROR, b"transport types are not equal")
        report.show(b"transport parameter:name = %s # %s" % (old.name, new.name))
        if old.name != new.name:
            report.add(ERROR, b"names are not equal")


def _compare_commands(report, old, new, message):
    if not report.are_present(b"protocol_parameter", old.station.protocol, new.station.protocol):
        return
    old_commands, new_commands = (
        comm_param.station.protocol.properties.get("optional_cmd") for comm_param in (old, new))
    if not report.are_present(b"optional commands", old_commands, new_commands):
        return
    for number, commands in ((1, old_commands), (2, new_commands)):
        names = b"".join(command.name + b" " for command in commands)
        report.show(b"OPTIONAL_CMD(%d) : %s" % (number, names))
    new_codes = {command.value for command in new_commands}
    for command in old_commands:
        if command.value not in new_codes:
            report.add(ERROR, message % command.name)


def _compare_xcp(report, old, new):
    if not report.are_present(b"station_parameter", old.station, new.station):
        return
    old_daq, new_daq = old.station.daq, new.station.daq
    has_daq = report.are_present(b"daq capabilities (?)", old_daq, new_daq)
    has_can_ids = report.are_present(
        b"daq TP capabilities (?)", old.station.daq_can_ids, new.station.daq_can_ids)
    if has_can_ids:
        _compare_can_ids(report, old.station, new.station)
    if has_daq:
        _compare_xcp_daq_lists(report, old_daq.daq_lists, new_daq.daq_lists)
        _compare_xcp_events(report, old_daq.rasters, new_daq.rasters)
        _compare_xcp_daq(report, old.station, new.station)
    _compare_xcp_transports(report, old.transports, new.transports)
    _compare_commands(report, old, new, b"[Optional command %s is not present in second file]")


def _compare_xcp_daq_lists(report, old_lists, new_lists):
    for number, old, new in report.pairs(b"Daq List", old_lists, new_lists):
        prefix = b"daqlist(%d):" % number
        report.compare(prefix + b"MAX_ODT", old.length, new.length)
        report.compare(prefix + b"MAX_ODT_ENTRIES", old.max_odt_entries, new.max_odt_entries)
        report.compare(prefix + b"FIRST_PID", old.first_pid, new.first_pid)
        report.compare(prefix + b"EVENT_FIXED", old.source_id, new.source_id)


def _compare_xcp_events(report, old_events, new_events):
    for number, old, new in report.pairs(b"Event", old_events, new_events):
        prefix = b"event(%d):" % number
        report.compare(prefix + b"dirDaqSupported", old.daq, new.daq)
        report.compare(prefix + b"dirStimSupported", old.stim, new.stim)
        if report.are_present(prefix + b"timebase", old.time_base, new.time_base):
            _compare_time_base(report, prefix + b"timebase:", old.time_base, new.time_base)
        report.compare(prefix + b"priority", old.priority, new.priority)


def _compare_time_base(report, prefix, old, new):
    report.compare(prefix + b"resolution", old.resolution, new.resolution)
    report.compare(prefix + b"scale", old.scale, new.scale)
    report.compare(prefix + b"byteLength", old.byte_length, new.byte_length)


# Fields of the DAQ capabilities that are compared in a row, and their labels.
_DAQ_FIELDS = (
    ("configuration_type", b"daqConfigType"),
    ("max_daq", b"maxDaq"),
    ("max_event_channels", b"maxEventChannel"),
    ("min_daq", b"minDaq"),
    ("optimisation_type", b"optimizationType"),
    ("address_extension_type", b"addressExtension"),
    ("identification_field_type", b"identificationFieldType"),
    ("odt_entry_granularity", b"granularityOdtEntrySize"),
    ("max_odt_entry_size", b"maxOdtEntrySizeDaq"),
    ("overload_indication", b"overloadIndicationType"),
    ("prescaler_supported", b"prescalerSupported"),
    ("resume_supported", b"daqResumeSupported"),
)


def _compare_xcp_daq(report, old_station, new_station):
    names = [b"t%d" % number for number in range(1, 8)]
    for name in names + [b"xcp_byteorder_code", b"seed_and_key_external_function"]:
        _compare_property(report, b"daq capabilities:" + name, name.decode("ascii"),
                          old_station.protocol, new_station.protocol)
    old, new = old_station.daq, new_station.daq
    for field, label in _DAQ_FIELDS:
        report.compare(b"daq capabilities:" + label, getattr(old, field), getattr(new, field))
    if report.are_present(b"timestamp", old.time_base, new.time_base):
        _compare_time_base(
            report, b"daq capabilities:timestampSettings:", old.time_base, new.time_base)
    report.compare(b"daq capabilities:pidOffSupported",
                   old.pid_off_supported, new.pid_off_supported)


def _compare_xcp_transports(report, old_transports, new_transports):
    if len(old_transports) != len(new_transports):
        report.add(ERROR, b"[different number of transport parameters]")
    for old, new in zip(old_transports, new_transports):
        _compare_identifiers(report, old, new)
        _compare_property(report, b"transport parameter:bitrate", "bitrate", old, new)
        _compare_property(report, b"transport parameter:max_dlc_required", "max_dlc_required",
                          old, new)
