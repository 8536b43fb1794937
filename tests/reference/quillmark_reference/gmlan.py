"""Parser of IF_DATA ASAP1B_GMLAN. Nothing that is written or compared comes from it."""

from . import interface_reading, keywords, model
from .interface_reading import read_words, unknown_part


def parse(reader, owner):
    with reader.using(keywords.GMLAN):
        while reader.next() != keywords.END:
            if reader.kind != keywords.BEGIN:
                reader.unexpected()
            reader.next()
            comm_param = interface_reading.comm_param_of(
                reader, owner, b"GMLAN", model.GMLAN_PROTOCOL)
            if reader.word == "SOURCE":
                _parse_source(reader, comm_param.station)
            elif reader.word == "TP_BLOB":
                _parse_tp_blob(reader, comm_param)
            else:
                reader.skip_block()
        interface_reading.close_if_data(reader)


def _parse_source(reader, station):
    daq = station.need_daq()
    source = model.Source(reader.read_plain_string())
    number = reader.read_int()
    daq.daq_lists.append(model.DaqList(number=number, name=source.name))
    station.need_daq_can_ids().append(model.DaqCanId(number))
    daq.rasters.append(model.Raster(number=number, name=source.name))
    daq.properties.setdefault("sources", []).append(source)
    reader.drop()  # rate
    dropped = {
        "QP_BLOB": 0,
        "FREERUNNINGMODE": 0,
        "QP_BLOB_VERSION": 1,
        "TRANSMISSION_MODE": 1,
        "AVAILABLE_ON": 1,
        "RDBPI_PARAMETER": 2,
    }
    for is_block, word in reader.parts("SOURCE"):
        if is_block and word == "CAN":
            _parse_can_of_source(reader, daq.properties)
        elif is_block and word == "AVAILABLE_PERIODIC_IDENTIFIER_RANGE":
            _parse_range(reader, daq.properties, "packet_id", "FIRST_ID", "LAST_ID")
        elif is_block and word == "AVAILABLE_PARAMETER_IDENTIFIER_RANGE":
            _parse_range(reader, daq.properties, "parameter_id", "FIRST_ID", "LAST_ID")
        elif not is_block and word in dropped:
            reader.drop(dropped[word])
        else:
            unknown_part(reader, is_block)


def _parse_can_of_source(reader, properties):
    for is_block, word in reader.parts("CAN"):
        if is_block and word == "UUDT_CAN_IDs":
            _parse_range(reader, properties, "can_id", "FIRST_CAN_ID", "LAST_CAN_ID")
        else:
            unknown_part(reader, is_block)


def _parse_range(reader, properties, key, first, last):
    for is_block, word in reader.parts(reader.word):
        if not is_block and word == first:
            properties[key + "_first"] = reader.read_int()
        elif not is_block and word == last:
            properties[key + "_last"] = reader.read_int()
        else:
            unknown_part(reader, is_block)


def _parse_tp_blob(reader, comm_param):
    transport = model.Transport(model.CAN_TRANSPORT, b"CAN")
    comm_param.transports.append(transport)
    reader.drop(2)  # versions
    _read_byte_order(reader, comm_param.station.need_protocol())
    for is_block, word in reader.parts("TP_BLOB"):
        if is_block and word == "CAN":
            _parse_can(reader, transport)
        elif is_block and word in _TP_BLOCKS:
            reader.drop(_TP_BLOCKS[word])
            if word == "DIAG_BAUD":
                _skip_integers(reader)  # more parameter bytes
            read_words(reader, word, {})
        else:
            unknown_part(reader, is_block)


# Blocks that are dropped, and the number of their values.
_TP_BLOCKS = {"DATA_ACCESS": 6, "DIAG_BAUD": 4, "SESSION": 2}


def _read_byte_order(reader, protocol):
    reader.next()
    if reader.word == "BYTEORDER_MSB_FIRST":
        protocol.encoding = model.BIG_ENDIAN
    elif reader.word == "BYTEORDER_MSB_LAST":
        protocol.encoding = model.LITTLE_ENDIAN
    else:
        reader.warning(b"Invalid Byteorder %d in ASAP1B_GMLAN/TP_BLOB" % reader.kind)


_CAN_DROPPED = {
    "SamplePoint": 1,
    "SamplesPerBit": 1,
    "BTL_CYCLES": 1,
    "SJW": 1,
    "SYNC_EDGE": 1,
    "NETWORK_LIMITS": 2,
}


def _parse_can(reader, transport):
    transport.properties["bitrate"] = reader.read_int()
    for is_block, word in reader.parts("CAN"):
        if is_block and word == "ADDRESS":
            _parse_address(reader)
        elif is_block and word == "TransportProtocolVersion":
            reader.read_choice({"ISO15765_2_2003": 2})
            read_words(reader, "TransportProtocolVersion", {})
        elif not is_block and word in ("USDTP_TIMING", "USDTP_TIMING_DEFAULTS"):
            _skip_integers(reader)
        elif not is_block and word in _CAN_DROPPED:
            reader.drop(_CAN_DROPPED[word])
        else:
            unknown_part(reader, is_block)


def _parse_address(reader):
    """Two identifiers, and up to two words with a number each."""
    reader.drop(2)
    for _ in range(2):
        reader.next()
        if not (reader.plain_word or b"").startswith(b"TGT_"):
            reader.push_back()
            break
        reader.drop()
    read_words(reader, "ADDRESS", {})


def _skip_integers(reader):
    while reader.next() == keywords.INTEGER:
        pass
    reader.push_back()
