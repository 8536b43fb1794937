"""Parser of IF_DATA XCP and XCPplus."""

from . import interface_reading, keywords, model
from .lexer import to_int32
from .interface_reading import read_words, unknown_part


def parse(reader, owner):
    with reader.using(keywords.XCP):
        comm_param = interface_reading.comm_param_of(reader, owner, b"XCP", model.XCP_PROTOCOL)
        last_can = None
        has_protocol_layer = False
        while reader.next() != keywords.END:
            if reader.kind != keywords.BEGIN:
                reader.unexpected()
            reader.next()
            if reader.word == "XCP_ON_CAN":
                last_can = _add_transport(comm_param, model.CAN_TRANSPORT, b"CAN")
                _parse_can(reader, last_can)
            elif reader.word == "PROTOCOL_LAYER":
                has_protocol_layer = True
                _parse_protocol_layer(reader, comm_param.station)
            else:
                _parse_block(reader, comm_param)
        interface_reading.close_if_data(reader)
    if last_can and has_protocol_layer:
        _merge_daq_lists(comm_param.station, last_can.station)


def _add_transport(comm_param, transport_type, name):
    transport = model.Transport(transport_type, name)
    comm_param.transports.append(transport)
    return transport


def _parse_block(reader, comm_param):
    word = reader.word
    if word == "XCP_ON_UDP_IP":
        _parse_ip(reader, _add_transport(comm_param, model.UDP_TRANSPORT, b"UDP"), "XCP_ON_UDP")
    elif word == "XCP_ON_TCP_IP":
        _parse_ip(reader, _add_transport(comm_param, model.TCP_TRANSPORT, b"TCP"), "XCP_ON_TCP")
    elif word == "XCP_ON_FLX":
        _parse_flexray(reader, _add_transport(comm_param, model.FLEXRAY_TRANSPORT, b"FlexRay"))
    elif word == "DAQ":
        _parse_daq(reader, comm_param.station, _append_can_id)
    elif word == "DAQ_EVENT":
        _parse_daq_event(reader)
    else:
        reader.skip_block()


def _merge_daq_lists(station, can_station):
    """The identifiers told with the transport go to the DAQ lists told with the protocol.

    What has no partner there is dropped.
    """
    if not can_station.daq_can_ids or not station.daq or not station.daq.daq_lists:
        return
    for told in can_station.daq_can_ids:
        for entry in station.daq_can_ids or []:
            if entry.number == told.number:
                entry.can_id = told.can_id
                break


# PROTOCOL_LAYER

_COMMAND_WORDS = (
    "GET_COMM_MODE_INFO GET_ID SET_REQUEST GET_SEED UNLOCK SET_MTA UPLOAD SHORT_UPLOAD"
    " BUILD_CHECKSUM TRANSPORT_LAYER_CMD USER_CMD DOWNLOAD DOWNLOAD_NEXT DOWNLOAD_MAX"
    " SHORT_DOWNLOAD MODIFY_BITS SET_CAL_PAGE GET_CAL_PAGE GET_PAG_PROCESSOR_INFO GET_SEGMENT_INFO"
    " GET_PAGE_INFO SET_SEGMENT_MODE GET_SEGMENT_MODE COPY_CAL_PAGE CLEAR_DAQ_LIST SET_DAQ_PTR"
    " WRITE_DAQ SET_DAQ_LIST_MODE GET_DAQ_LIST_MODE START_STOP_DAQ_LIST START_STOP_SYNCH"
    " GET_DAQ_CLOCK READ_DAQ GET_DAQ_PROCESSOR_INFO GET_DAQ_RESOLUTION_INFO GET_DAQ_LIST_INFO"
    " GET_DAQ_EVENT_INFO FREE_DAQ ALLOC_DAQ ALLOC_ODT ALLOC_ODT_ENTRY PROGRAM_START PROGRAM_CLEAR"
    " PROGRAM PROGRAM_RESET GET_PGM_PROCESSOR_INFO GET_SECTOR_INFO PROGRAM_PREPARE PROGRAM_FORMAT"
    " PROGRAM_NEXT PROGRAM_MAX PROGRAM_VERIFY WRITE_DAQ_MULTIPLE TIME_CORRELATION_PROPERTIES"
    " DTO_CTR_PROPERTIES").split()

# The codes count down from 0xFB without a gap.
_COMMANDS = {
    word: model.NamedValue(word.encode("ascii"), 0xFB - index)
    for index, word in enumerate(_COMMAND_WORDS)
}

_PROTOCOL_NUMBERS = ("xcp_version", "t1", "t2", "t3", "t4", "t5", "t6", "t7", "max_cto", "max_dto")

# DWORD and WORD are deliberately swapped against their names.
_ADDRESS_GRANULARITIES = {
    "ADDRESS_GRANULARITY_BYTE": 1,
    "ADDRESS_GRANULARITY_DWORD": 2,
    "ADDRESS_GRANULARITY_WORD": 4,
}


def _parse_protocol_layer(reader, station):
    protocol = station.need_protocol()
    properties = protocol.properties
    for name in _PROTOCOL_NUMBERS:
        properties[name] = reader.read_int()
    reader.next()
    if reader.word == "BYTE_ORDER_MSB_FIRST":
        properties["xcp_byteorder_code"] = 1
        protocol.encoding = model.BIG_ENDIAN
    elif reader.word == "BYTE_ORDER_MSB_LAST":
        properties["xcp_byteorder_code"] = 0
        protocol.encoding = model.LITTLE_ENDIAN
    else:
        reader.unexpected()
    _store_choice(reader, properties, "address_granularity", _ADDRESS_GRANULARITIES)
    for is_block, word in reader.parts("PROTOCOL_LAYER"):
        if word == "COMMUNICATION_MODE_SUPPORTED":
            _parse_communication_mode(reader, properties, is_block)
        elif is_block:
            reader.skip_block()
        elif word == "OPTIONAL_CMD":
            command = reader.read_choice(_COMMANDS)
            if command:
                properties.setdefault("optional_cmd", []).append(command)
        elif word == "SEED_AND_KEY_EXTERNAL_FUNCTION":
            properties["seed_and_key_external_function"] = reader.read_plain_string()
        elif word in ("OPTIONAL_LEVEL1_CMD", "MAX_DTO_STIM"):
            reader.drop()
        else:
            reader.unexpected()


def _store_choice(reader, properties, key, choices):
    """A word that is no choice is warned of, and what was stored before stays."""
    value = reader.read_choice(choices)
    if value is not None:
        properties[key] = value


def _parse_communication_mode(reader, properties, is_block):
    """The plain form ends at the first word that does not belong to it, the block at its end."""
    if not is_block:
        reader.next()
        while _read_communication_word(reader, properties):
            reader.next()
        reader.push_back()
        return
    for is_inner_block, _ in reader.parts("COMMUNICATION_MODE_SUPPORTED"):
        if is_inner_block or not _read_communication_word(reader, properties):
            unknown_part(reader, is_inner_block)


def _read_communication_word(reader, properties):
    """Reads what follows the current word. Returns False if it tells nothing of this kind."""
    word = reader.word
    if word == "SLAVE":
        properties["slave_block_mode_supported"] = 1
    elif word == "MASTER":
        properties["master_block_mode_supported"] = 1
        properties["max_bs"] = reader.read_int()
        properties["min_st"] = reader.read_int()
    elif word == "INTERLEAVED":
        properties["queue_size"] = reader.read_int()
    else:
        return word == "BLOCK"
    return True


# DAQ

_CONFIGURATIONS = {"STATIC": 1, "DYNAMIC": 2}
_OPTIMISATIONS = {
    "OPTIMISATION_TYPE_DEFAULT": 1,
    "OPTIMISATION_TYPE_ODT_TYPE_16": 2,
    "OPTIMISATION_TYPE_ODT_TYPE_32": 3,
    "OPTIMISATION_TYPE_ODT_TYPE_64": 4,
    "OPTIMISATION_TYPE_ODT_TYPE_ALIGNMENT": 5,
    "OPTIMISATION_TYPE_MAX_ENTRY_SIZE": 6,
}
_ADDRESS_EXTENSIONS = {
    "ADDRESS_EXTENSION_FREE": 1,
    "ADDRESS_EXTENSION_ODT": 2,
    "ADDRESS_EXTENSION_DAQ": 3,
}
_IDENTIFICATION_FIELDS = {
    "IDENTIFICATION_FIELD_TYPE_ABSOLUTE": 1,
    "IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE": 2,
    "IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD": 3,
    "IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD_ALIGNED": 4,
}
_GRANULARITIES = {
    "GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE": 1,
    "GRANULARITY_ODT_ENTRY_SIZE_DAQ_WORD": 2,
    "GRANULARITY_ODT_ENTRY_SIZE_DAQ_DWORD": 3,
    "GRANULARITY_ODT_ENTRY_SIZE_DAQ_DLONG": 4,
}
_STIM_GRANULARITIES = {
    "GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE": 1,
    "GRANULARITY_ODT_ENTRY_SIZE_STIM_WORD": 2,
    "GRANULARITY_ODT_ENTRY_SIZE_STIM_DWORD": 4,
    "GRANULARITY_ODT_ENTRY_SIZE_STIM_DLONG": 8,
}
_OVERLOAD_INDICATIONS = {
    "NO_OVERLOAD_INDICATION": 1,
    "OVERLOAD_INDICATION_PID": 2,
    "OVERLOAD_INDICATION_EVENT": 3,
}

_DAQ_FLAGS = {
    "PRESCALER_SUPPORTED": "prescaler_supported",
    "RESUME_SUPPORTED": "resume_supported",
    "DAQ_RESUME_SUPPORTED": "resume_supported",
    "PID_OFF_SUPPORTED": "pid_off_supported",
    "STORE_DAQ_SUPPORTED": "store_daq_supported",
}

_DAQ_DROPPED = {
    "DAQ_ALTERNATING_SUPPORTED": 1,
    "CPU_LOAD_MAX": 1,
    "MAX_DAQ_TOTAL": 1,
    "MAX_ODT_TOTAL": 1,
    "MAX_ODT_DAQ_TOTAL": 1,
    "MAX_ODT_STIM_TOTAL": 1,
    "MAX_ODT_ENTRIES_TOTAL": 1,
    "MAX_ODT_ENTRIES_DAQ_TOTAL": 1,
    "MAX_ODT_ENTRIES_STIM_TOTAL": 1,
    "CPU_LOAD_MAX_TOTAL": 1,
    "CORE_LOAD_MAX_TOTAL": 1,
    "DTO_CTR_FIELD_SUPPORTED": 0,
}


def _set_choice(reader, owner, field, choices):
    value = reader.read_choice(choices)
    if value is not None:
        setattr(owner, field, value)


def _parse_daq(reader, station, add_can_id):
    """`add_can_id` makes the entry of a DAQ list among those that tell CAN identifiers."""
    daq = station.need_daq()
    _set_choice(reader, daq, "configuration_type", _CONFIGURATIONS)
    daq.max_daq = reader.read_int()
    daq.max_event_channels = reader.read_int()
    daq.min_daq = reader.read_int()
    _set_choice(reader, daq, "optimisation_type", _OPTIMISATIONS)
    _set_choice(reader, daq, "address_extension_type", _ADDRESS_EXTENSIONS)
    _set_choice(reader, daq, "identification_field_type", _IDENTIFICATION_FIELDS)
    _set_choice(reader, daq, "odt_entry_granularity", _GRANULARITIES)
    daq.max_odt_entry_size = reader.read_int()
    _set_choice(reader, daq, "overload_indication", _OVERLOAD_INDICATIONS)
    for is_block, word in reader.parts("DAQ"):
        if is_block:
            _parse_block_of_daq(reader, station, add_can_id, word)
        elif word in _DAQ_FLAGS:
            setattr(daq, _DAQ_FLAGS[word], True)
        elif word in _DAQ_DROPPED:
            reader.drop(_DAQ_DROPPED[word])
        elif reader.plain_word != b"OPTIMISATION_TYPE_ODT_STRICT":
            reader.unexpected()


def _parse_block_of_daq(reader, station, add_can_id, word):
    daq = station.daq
    if word == "STIM":
        _parse_stim(reader, daq.properties)
    elif word == "TIMESTAMP_SUPPORTED":
        _parse_timestamp(reader, daq)
    elif word == "DAQ_LIST":
        daq_list = model.DaqList(number=reader.read_int())
        daq.daq_lists.append(daq_list)
        add_can_id(station, daq_list.number)
        _parse_daq_list(reader, daq_list)
    elif word == "EVENT":
        _parse_event(reader, daq)
    else:
        reader.skip_block()


def _parse_stim(reader, properties):
    granularity = reader.read_choice(_STIM_GRANULARITIES)
    properties["granularity_odt_entry_size_stim"] = granularity or 0
    properties["max_odt_entry_size_stim"] = reader.read_int()
    read_words(reader, "STIM", {"BIT_STIM_SUPPORTED": 0, "MIN_ST_STIM": 1})


_TIMESTAMP_SIZES = {"NO_TIME_STAMP": 0, "SIZE_BYTE": 1, "SIZE_WORD": 2, "SIZE_DWORD": 4}

# Codes of the units 1 s, 1 ms, 1 us, 1 ns, 1 ps, and how often a unit holds one of those.
_TIME_UNITS = {"UNIT_1S": (1, 1)} | {
    "UNIT_%d%s" % (factor, unit): (code, factor)
    for code, unit in ((2, "MS"), (3, "US"), (4, "NS"), (5, "PS"))
    for factor in (1, 10, 100)
}

_NUMERIC_TIME_UNITS = [
    _TIME_UNITS[word] for word in (
        "UNIT_1NS", "UNIT_10NS", "UNIT_100NS", "UNIT_1US", "UNIT_10US", "UNIT_100US", "UNIT_1MS",
        "UNIT_10MS", "UNIT_100MS", "UNIT_1S", "UNIT_1PS", "UNIT_10PS", "UNIT_100PS")
]


def _parse_timestamp(reader, daq):
    reader.next()
    if reader.is_number:
        ticks = reader.number_as_int()
    else:
        ticks = 1
        reader.push_back()
    size = reader.read_choice(_TIMESTAMP_SIZES)
    if size is not None:
        daq.properties["timestamp_size"] = size
    scale, factor = reader.read_choice(_TIME_UNITS) or (0, 1)
    daq.time_base = model.TimeBase(to_int32(ticks * factor), scale, size)
    daq.properties["timestamp_resolution"] = daq.time_base.resolution
    for is_block, word in reader.parts("TIMESTAMP_SUPPORTED"):
        if not is_block and word == "TIMESTAMP_FIXED":
            daq.time_base.fixed = True
        else:
            unknown_part(reader, is_block)


def _parse_daq_list(reader, daq_list):
    fields = {
        "MAX_ODT": "length",
        "MAX_ODT_ENTRIES": "max_odt_entries",
        "FIRST_PID": "first_pid",
        "EVENT_FIXED": "source_id",
    }
    for is_block, word in reader.parts("DAQ_LIST"):
        if is_block and word == "PREDEFINED":
            _parse_predefined(reader)
        elif is_block:
            reader.skip_block()
        elif word == "DAQ_LIST_TYPE":
            reader.next()
            if reader.word not in ("DAQ", "STIM", "DAQ_STIM"):
                reader.warning(b"Unexpected token for DAQ_LIST_TYPE: %d" % reader.kind)
        elif word in fields:
            value = reader.read_number()
            if value is not None:
                setattr(daq_list, fields[word], value)
        elif word != "DAQ_PACKED_MODE_SUPPORTED":
            reader.unexpected()


def _append_can_id(station, number):
    entry = model.DaqCanId(number)
    station.need_daq_can_ids().append(entry)
    return entry


def _need_can_id(station, number):
    """The first entry of that number; a new one only if there is none."""
    for entry in station.daq_can_ids or []:
        if entry.number == number:
            return entry
    return _append_can_id(station, number)


def _parse_predefined(reader):
    for is_block, word in reader.parts("PREDEFINED"):
        if is_block and word == "ODT":
            reader.drop()
            read_words(reader, "ODT", {"ODT_ENTRY": 5})
        else:
            unknown_part(reader, is_block)


_DIRECTIONS = {"DAQ": (True, False), "STIM": (False, True), "DAQ_STIM": (True, True)}

_EVENT_DROPPED = {
    "COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER": 1,
    "EVENT_COUNTER_PRESENT": 0,
    "RELATED_EVENT_CHANNEL_NUMBER": 1,
    "RELATED_EVENT_CHANNEL_NUMBER_FIXED": 0,
    "DTO_CTR_DAQ_MODE_FIXED": 0,
    "DTO_CTR_STIM_MODE_FIXED": 0,
    "STIM_DTO_CTR_COPY_PRESENT": 0,
    "CPU_LOAD_MAX": 1,
}

# Words of an event that are read and dropped, with those that may follow.
_EVENT_CHOICES = {
    "CONSISTENCY": dict.fromkeys(("DAQ", "EVENT", "ODT", "NONE")),
    "DTO_CTR_DAQ_MODE": dict.fromkeys(("INSERT_COUNTER", "INSERT_STIM_COUNTER_COPY")),
    "DTO_CTR_STIM_MODE": dict.fromkeys(("DO_NOT_CHECK_COUNTER", "CHECK_COUNTER")),
}


def _parse_event(reader, daq):
    reader.next()
    if reader.kind not in (keywords.STRING, keywords.IDENTIFIER):
        reader.error(b"String or Identifier expected")
    event = model.Raster(name=reader.text)
    reader.drop()  # short name
    event.number = reader.read_int()
    direction = reader.read_choice(_DIRECTIONS)
    if direction:
        event.daq, event.stim = direction
    reader.drop()  # highest number of DAQ lists
    event.time_base = _read_time(reader)
    event.priority = reader.read_int()
    daq.rasters.append(event)
    for is_block, word in reader.parts("EVENT"):
        if word == "MIN_CYCLE_TIME":  # some files leave out its frame
            _read_time(reader)
            if is_block:
                read_words(reader, "MIN_CYCLE_TIME", {})
        elif is_block and word == "DAQ_PACKED_MODE":
            _parse_packed_mode(reader)
        elif is_block:
            reader.skip_block()
        elif word in _EVENT_CHOICES:
            reader.read_choice(_EVENT_CHOICES[word])
        elif word in _EVENT_DROPPED:
            reader.drop(_EVENT_DROPPED[word])
        else:
            reader.unexpected()


def _read_time(reader):
    """A time cycle and the number of its unit."""
    reader.next()
    has_cycle, cycle = reader.is_number, reader.number_as_int()
    reader.next()
    has_unit, unit = reader.is_number, reader.number_as_int()
    if not has_cycle or not has_unit:
        reader.error(b"Could not read TIME_CYCLE or TIME_UNIT")
    if not 0 <= unit < len(_NUMERIC_TIME_UNITS):
        reader.error(b"Could not convert TIME_UNIT")
    scale, factor = _NUMERIC_TIME_UNITS[unit]
    return model.TimeBase(to_int32(cycle * factor), scale)


def _parse_packed_mode(reader):
    reader.read_choice(dict.fromkeys(("ELEMENT_GROUPED", "EVENT_GROUPED")))
    reader.read_choice(dict.fromkeys(("STS_LAST", "STS_FIRST")))
    reader.read_choice(dict.fromkeys(("OPTIONAL", "MANDATORY")))
    reader.drop()  # samples
    read_words(reader, "DAQ_PACKED_MODE", {"ALT_SAMPLE_COUNT": 1})


# DAQ_EVENT

_EVENT_LISTS = ("AVAILABLE_EVENT_LIST", "DEFAULT_EVENT_LIST", "CONSISTENCY_EVENT_LIST")


def _parse_daq_event(reader):
    """Some files leave out the frames of the inner lists."""
    for is_block, word in reader.parts("DAQ_EVENT"):
        if is_block and word in _EVENT_LISTS:
            read_words(reader, word, {"EVENT": 1})
        elif not is_block and word in ("FIXED_EVENT_LIST",) + _EVENT_LISTS:
            _skip_events(reader)
        elif is_block or word != "VARIABLE":
            unknown_part(reader, is_block)


def _skip_events(reader):
    reader.next()
    while reader.word == "EVENT":
        reader.drop(2)  # its number, and what follows
    reader.push_back()


# Transports

_CAN_DROPPED = {
    "CAN_ID_BROADCAST": 1,
    "CAN_ID_GET_DAQ_CLOCK_MULTICAST": 1,
    "SAMPLE_POINT": 1,
    "SAMPLE_RATE": 1,
    "BTL_CYCLES": 1,
    "SJW": 1,
    "SYNC_EDGE": 1,
    "MAX_BUS_LOAD": 1,
    "OPTIONAL_TL_SUBCMD": 1,
    "CAN_ID_MASTER_INCREMENTAL": 0,
    "MEASUREMENT_SPLIT_ALLOWED": 0,
}


def _parse_can(reader, transport):
    if reader.next() != keywords.INTEGER:  # version
        reader.push_back()
    for is_block, word in reader.parts("XCP_ON_CAN"):
        if is_block and word == "DAQ_LIST_CAN_ID":
            _parse_daq_list_can_id(reader, transport.station)
        elif is_block and word == "CAN_FD":
            _parse_can_fd(reader)
        elif is_block:
            _parse_override(reader, transport, word)
        elif word == "BAUDRATE":
            transport.properties["bitrate"] = reader.read_int()
        elif word == "CAN_ID_MASTER":
            transport.master_can_id = reader.read_int()
        elif word == "CAN_ID_SLAVE":
            transport.slave_can_id = reader.read_int()
        elif word == "MAX_DLC_REQUIRED":
            transport.properties["max_dlc_required"] = 1
        elif word == "TRANSPORT_LAYER_INSTANCE":
            transport.instance_name = reader.read_plain_string()
        elif word in _CAN_DROPPED:
            reader.drop(_CAN_DROPPED[word])
        else:
            reader.unexpected()


def _parse_override(reader, transport, word):
    """A block that stands for the whole protocol, too; in a transport it counts for that only."""
    if word == "PROTOCOL_LAYER":
        _parse_protocol_layer(reader, transport.station)
    elif word == "DAQ":
        _parse_daq(reader, transport.station, _need_can_id)
    else:
        reader.skip_block()


def _parse_daq_list_can_id(reader, station):
    entry = _need_can_id(station, reader.read_int())
    for is_block, word in reader.parts("DAQ_LIST_CAN_ID"):
        if not is_block and word == "VARIABLE":
            entry.can_id = None
        elif not is_block and word == "FIXED":
            entry.can_id = reader.read_int()
        else:
            unknown_part(reader, is_block)


_CAN_FD_DROPPED = {
    "MAX_DLC": 1,
    "CAN_FD_DATA_TRANSFER_BAUDRATE": 1,
    "SAMPLE_POINT": 1,
    "BTL_CYCLES": 1,
    "SJW": 1,
    "MAX_DLC_REQUIRED": 0,
    "SECONDARY_SAMPLE_POINT": 1,
}


def _parse_can_fd(reader):
    for is_block, word in reader.parts("CAN_FD"):
        if is_block:
            reader.skip_block()
        elif word == "SYNC_EDGE":
            reader.read_choice(dict.fromkeys(("SINGLE", "DUAL")))
        elif word == "TRANSCEIVER_DELAY_COMPENSATION":
            reader.read_choice(dict.fromkeys(("OFF", "ON")))
        elif word in _CAN_FD_DROPPED:
            reader.drop(_CAN_FD_DROPPED[word])
        else:
            reader.unexpected()


_ALIGNMENTS = ("PACKET_ALIGNMENT_8", "PACKET_ALIGNMENT_16", "PACKET_ALIGNMENT_32")


def _read_alignment(reader):
    reader.next()
    if reader.word not in _ALIGNMENTS:
        reader.warning(b"Unexpected token for Packet-Alignment: %d" % reader.kind)


def _parse_ip(reader, transport, complaint):
    """The address has a keyword of its own, or is a bare text behind the port."""
    block = reader.word
    reader.drop(2)  # version, port
    if reader.next() == keywords.STRING:
        transport.properties["hostname"] = reader.text
    else:
        reader.push_back()
    for is_block, word in reader.parts(block, complaint):
        if is_block:
            _parse_override(reader, transport, word)
        elif word in ("HOST_NAME", "ADDRESS"):
            transport.properties["hostname"] = reader.read_plain_string()
        elif word == "IPV6":
            transport.properties["hostname"] = reader.read_plain_string()
            transport.properties["ipv6"] = 1
        elif word == "PACKET_ALIGNMENT":
            _read_alignment(reader)
        elif word == "TRANSPORT_LAYER_INSTANCE":
            transport.instance_name = reader.read_plain_string()
        elif word in ("MAX_BUS_LOAD", "MAX_BITRATE", "OPTIONAL_TL_SUBCMD"):
            reader.drop()
        else:
            reader.unexpected()


_HEADERS = (
    "HEADER_NAX", "HEADER_NAX_FILL", "HEADER_NAX_CTR", "HEADER_NAX_FILL3", "HEADER_NAX_CTR_FILL2",
    "HEADER_NAX_LEN", "HEADER_NAX_CTR_LEN", "HEADER_NAX_FILL2_LEN", "HEADER_NAX_CTR_FILL_LEN")

_BUFFERS = ("INITIAL_CMD_BUFFER", "INITIAL_RES_ERR_BUFFER", "POOL_BUFFER")


def _parse_flexray(reader, transport):
    reader.drop(2)  # version, T1
    transport.properties["FIBEX_FILE"] = reader.read_plain_string()
    transport.properties["CLUSTER_ID"] = reader.read_plain_string()
    reader.drop()  # node address
    reader.next()
    if reader.word not in _HEADERS:
        reader.warning(b"Unexpected token for Header-Type: %d" % reader.kind)
    _read_alignment(reader)
    for is_block, word in reader.parts("XCP_ON_FLX"):
        if is_block and word in _BUFFERS:
            _parse_flexray_buffer(reader)
        elif is_block:
            _parse_override(reader, transport, word)
        elif word == "OPTIONAL_TL_SUBCMD":
            reader.drop()
        elif word == "TRANSPORT_LAYER_INSTANCE":
            transport.instance_name = reader.read_plain_string()
        else:
            reader.unexpected()


_FIXED_OR_VARIABLE = {"FIXED": "FIXED", "VARIABLE": "VARIABLE"}


def _parse_flexray_buffer(reader):
    block = reader.word
    reader.drop()  # number
    for is_block, word in reader.parts(block):
        if is_block and word == "LPDU_ID":
            _parse_slot(reader)
        elif is_block and word == "XCP_PACKET":
            _parse_packet_kinds(reader)
        elif not is_block and word == "MAX_FLX_LEN_BUF":
            reader.read_choice(_FIXED_OR_VARIABLE)
            reader.drop()
        else:
            unknown_part(reader, is_block)


def _parse_slot(reader):
    for is_block, word in reader.parts("LPDU_ID"):
        if is_block or word not in ("FLX_SLOT_ID", "OFFSET", "CYCLE_REPETITION", "CHANNEL"):
            unknown_part(reader, is_block)
            continue
        # Whatever is not fixed is read on as variable.
        has_value = reader.read_choice(_FIXED_OR_VARIABLE) == "FIXED"
        if not has_value:
            reader.next()
            has_value = reader.word == "INITIAL_VALUE"
            if not has_value:
                reader.push_back()
        if has_value and word == "CHANNEL":
            reader.read_choice(dict.fromkeys("AB"))
        elif has_value:
            reader.drop()


_PACKET_STATES = dict.fromkeys(("NOT_ALLOWED", "FIXED", "VARIABLE_INITIALISED", "VARIABLE"))


def _parse_packet_kinds(reader):
    for is_block, word in reader.parts("XCP_PACKET"):
        kinds = ("CMD", "RES_ERR", "EV_SERV", "DAQ", "STIM", "MULTICAST")
        if not is_block and word in kinds:
            reader.read_choice(_PACKET_STATES)
        else:
            unknown_part(reader, is_block)
