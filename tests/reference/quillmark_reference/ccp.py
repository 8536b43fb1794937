"""Parser of IF_DATA ASAP1B_CCP."""

from . import interface_reading, keywords, model
from .interface_reading import unknown_part


def parse(reader, owner):
    """In a module: sources, rasters and the transport. In a signal: its address."""
    with reader.using(keywords.CCP):
        while reader.next() != keywords.END:
            if reader.kind == keywords.BEGIN:
                reader.next()
                comm_param = interface_reading.comm_param_of(
                    reader, owner, b"CCP", model.CCP_PROTOCOL)
                _parse_block(reader, comm_param)
            elif reader.word == "KP_BLOB":
                _parse_kp_blob(reader, owner)
            elif reader.word in ("ADDRESS_MAPPING", "ADDR_MAPPING", "DP_BLOB"):
                reader.drop(3)
            else:
                reader.unexpected()
        interface_reading.close_if_data(reader)


def _parse_block(reader, comm_param):
    blocks = {
        "SOURCE": _parse_source,
        "RASTER": _parse_raster,
        "EVENT_GROUP": _parse_event_group,
        "SEED_KEY": _parse_seed_key,
        "CHECKSUM": _parse_checksum,
        "TP_BLOB": _parse_tp_blob,
    }
    if reader.word in blocks:
        blocks[reader.word](reader, comm_param)
    else:
        reader.skip_block()


def _parse_kp_blob(reader, owner):
    values = []
    while len(values) < 3:
        reader.next()
        if not reader.is_number:
            reader.push_back()
            break
        values.append(reader.number)
    while reader.next() == keywords.CCP.number(b"RASTER"):
        reader.drop()
    reader.push_back()
    if not isinstance(owner, model.Signal) or len(values) < 2:
        return
    extension, address = values[:2]
    if isinstance(extension, int) and isinstance(address, int):
        # A 0 is deliberately not stored.
        owner.address = address or owner.address
        owner.address_extension = extension or owner.address_extension


def _parse_source(reader, comm_param):
    station = comm_param.station
    daq_list = model.DaqList()
    station.need_daq().daq_lists.append(daq_list)
    can_id = model.DaqCanId()
    station.need_daq_can_ids().append(can_id)
    source = model.Source(reader.read_plain_string())
    station.need_daq().properties.setdefault("sources", []).append(source)
    daq_list.name = source.name
    source.add("scaling_unit", reader.read_int())
    source.add("period", reader.read_int())
    for is_block, word in reader.parts("SOURCE"):
        if is_block and word == "QP_BLOB":
            _parse_qp_blob(reader, source, daq_list, can_id)
        elif not is_block and word == "DISPLAY_IDENTIFIER":
            reader.drop()
        else:
            unknown_part(reader, is_block)


def _parse_qp_blob(reader, source, daq_list, can_id):
    daq_list.number = can_id.number = reader.read_int()
    source.add("daq_number", daq_list.number)
    for is_block, word in reader.parts("QP_BLOB"):
        if is_block:
            reader.skip_block()
        elif word == "LENGTH":
            daq_list.length = reader.read_int()
        elif word == "CAN_ID_VARIABLE":
            source.add("can_id_variable", 1)
            can_id.can_id = None
        elif word == "CAN_ID_FIXED":
            can_id.can_id = reader.read_int()
            source.add("can_id_fixed", can_id.can_id)
        elif word == "RASTER":
            _read_raster_of_source(reader, source, daq_list)
        elif word == "FIRST_PID":
            daq_list.first_pid = reader.read_int()
            source.add("first_pid", daq_list.first_pid)
        elif word == "EXCLUSIVE":
            reader.drop()
        elif word != "REDUCTION_ALLOWED":
            reader.unexpected()


def _read_raster_of_source(reader, source, daq_list):
    reader.next()
    if reader.kind == keywords.STRING:
        source.add("raster", reader.text)
    elif reader.is_number:
        daq_list.source_id = reader.number_as_int()
        source.add("source_id", daq_list.source_id)
    else:
        reader.unexpected()


def _parse_raster(reader, comm_param):
    reader.next()
    if reader.kind not in (keywords.STRING, keywords.IDENTIFIER):
        reader.error(b"String or Identifier expected")
    raster = model.Raster(name=reader.text)
    reader.drop()  # short name
    raster.number = reader.read_int()
    scaling_unit = reader.read_int()
    raster.time_base = model.TimeBase(resolution=reader.read_int(), scale=scaling_unit)
    comm_param.station.need_daq().rasters.append(raster)
    interface_reading.read_words(reader, "RASTER", {"EXCLUSIVE": 1})


def _parse_event_group(reader, comm_param):
    properties = comm_param.station.need_daq().properties
    properties.setdefault("event_groups", []).append(reader.read_plain_string())
    reader.drop()  # short name
    for is_block, word in reader.parts("EVENT_GROUP"):
        if not is_block and word == "RASTER":
            properties.setdefault("rasters", []).append(reader.read_int())
        else:
            unknown_part(reader, is_block)


def _parse_seed_key(reader, comm_param):
    properties = comm_param.station.need_protocol().properties
    for privilege in ("cal", "daq", "pgm"):
        properties["seed_key_dll_name_" + privilege] = reader.read_plain_string()
    interface_reading.read_words(reader, "SEED_KEY", {})


def _parse_checksum(reader, comm_param):
    properties = comm_param.station.need_protocol().properties
    properties["checksum_dll_name"] = reader.read_plain_string()
    interface_reading.read_words(reader, "CHECKSUM", {})




def _parse_tp_blob(reader, comm_param):
    transport = model.Transport(model.CAN_TRANSPORT, b"CAN")
    comm_param.transports.append(transport)
    reader.drop(2)  # versions
    transport.master_can_id = reader.read_int()
    transport.slave_can_id = reader.read_int()
    transport.station_address = reader.read_int()
    _read_byte_order(reader, comm_param.station.need_protocol())
    for is_block, word in reader.parts("TP_BLOB"):
        if is_block:
            _parse_block_of_tp_blob(reader, word)
        else:
            _parse_word_of_tp_blob(reader, comm_param.station, transport, word)


def _read_byte_order(reader, protocol):
    reader.next()
    if reader.kind == keywords.IDENTIFIER:
        code = {b"MSB_FIRST": 1, b"MSB_LAST": 2}.get(reader.text, 0)
        if code == 0:
            reader.warning(b"Invalid Byteorder '%s' in ASAP1B_CCP/TP_BLOB" % reader.text)
    else:
        code = reader.number_as_int()
    protocol.properties["ccp_byteorder_code"] = code
    if code in (model.BIG_ENDIAN, model.LITTLE_ENDIAN):
        protocol.encoding = code
    else:
        reader.warning(b"Invalid Byteorder %d in ASAP1B_CCP/TP_BLOB" % code)


def _parse_block_of_tp_blob(reader, word):
    if word == "CAN_PARAM":
        reader.drop(3)
        interface_reading.read_words(reader, "CAN_PARAM", {})
    elif word == "DEFINED_PAGES":
        reader.drop(5)
        interface_reading.read_words(reader, "DEFINED_PAGES", dict.fromkeys(_PAGE_FLAGS, 0))
    elif word == "CHECKSUM_PARAM":
        _parse_checksum_param(reader)
    else:
        reader.skip_block()


_PAGE_FLAGS = ("RAM", "ROM", "FLASH", "EEPROM", "RAM_INIT_BY_ECU", "RAM_INIT_BY_TOOL",
               "AUTO_FLASH_BACK", "FLASH_BACK", "DEFAULT")


def _parse_checksum_param(reader):
    reader.drop(2)
    for is_block, word in reader.parts("CHECKSUM_PARAM"):
        if not is_block and word == "CHECKSUM_CALCULATION":
            reader.read_choice(dict.fromkeys(("ACTIVE_PAGE", "BIT_OR_WITH_OPT_PAGE")))
        else:
            unknown_part(reader, is_block)


def _parse_word_of_tp_blob(reader, station, transport, word):
    if word == "BAUDRATE":
        transport.properties["bitrate"] = reader.read_int()
    elif word in ("SAMPLE_POINT", "SAMPLE_RATE", "BTL_CYCLES", "SJW", "SYNC_EDGE", "CONSISTENCY"):
        reader.drop()
    elif word == "DAQ_MODE":
        mode = reader.read_choice({"ALTERNATING": 0, "BURST": 1})
        if mode is not None:
            station.need_daq().properties["daq_mode"] = mode
    elif word == "ADDRESS_EXTENSION":
        _read_address_extension(reader, station)
    elif word == "BYTES_ONLY":
        transport.properties["bytes_only"] = 1
    elif word == "OPTIONAL_CMD":
        commands = station.need_protocol().properties.setdefault("optional_cmd", [])
        code = reader.read_int()
        commands.append(model.NamedValue(b"%d" % code, code))
    elif word not in ("RESUME_SUPPORTED", "DAQ_RESUME_SUPPORTED", "STORE_SUPPORTED"):
        reader.unexpected()


def _read_address_extension(reader, station):
    """Whether the extension counts for a DAQ list or for an ODT, and the type that means."""
    found = reader.read_choice({"DAQ": (0, 3), "ODT": (1, 2)})
    if found is not None:
        daq = station.need_daq()
        daq.properties["address_extension"], daq.address_extension_type = found
