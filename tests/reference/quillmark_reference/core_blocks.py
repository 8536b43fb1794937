"""Parsers of the frame of a description: projects, modules, and their parameters."""

from . import keywords, model
from .conversion_blocks import parse_conversion, parse_table, parse_unit
from .interface_blocks import parse_if_data
from .reader import ReadError, Reader
from .signal_blocks import (parse_characteristic, parse_frame, parse_function, parse_group,
                            parse_measurement, parse_user_rights, read_byte_order,
                            read_data_type)


def read_description(file_name, console):
    """Reads a file into a new root. Returns None if it can't be read or holds an error."""
    reader = Reader(file_name, console)
    if not reader.open():
        return None
    root = model.Root()
    try:
        _parse_file(reader, root)
    except ReadError:
        return None
    return root


def _parse_file(reader, root):
    reader.next()
    while True:
        while reader.word == "ASAP2_VERSION":
            reader.drop(2)
            if reader.next() == keywords.END_OF_FILE:
                return
        if reader.kind != keywords.BEGIN:
            reader.unexpected()
        reader.next()
        if reader.word != "PROJECT":
            reader.unexpected()
        _parse_project(reader, root)
        if reader.next() == keywords.END_OF_FILE:
            return


def _parse_project(reader, root):
    reader.next()
    if reader.kind not in (keywords.STRING, keywords.IDENTIFIER):
        reader.error(b"Identifier expected")
    project = model.Project(reader.text)
    reader.next()
    if reader.kind not in (keywords.STRING, keywords.IDENTIFIER):
        reader.error(b"String expected")
    root.projects.append(project)
    for is_block, word in reader.parts("PROJECT"):
        if is_block and word == "MODULE":
            _parse_module(reader, project)
        elif is_block and word == "HEADER":
            _parse_header(reader)
        else:
            reader.unexpected()


def _parse_header(reader):
    reader.read_string()
    for word in reader.words("HEADER"):
        if word in ("VERSION", "PROJECT_NO"):
            reader.drop()
        else:
            reader.unexpected()


_MODULE_BLOCKS = {
    "COMPU_METHOD": parse_conversion,
    "COMPU_TAB": parse_table,
    "COMPU_VTAB": parse_table,
    "COMPU_VTAB_RANGE": parse_table,
    "UNIT": parse_unit,
    "MEASUREMENT": parse_measurement,
    "CHARACTERISTIC": parse_characteristic,
    "GROUP": parse_group,
    "FUNCTION": parse_function,
    "FRAME": parse_frame,
    "USER_RIGHTS": parse_user_rights,
    "IF_DATA": parse_if_data,
}


def _parse_module(reader, project):
    module = model.Module(reader.read_identifier())
    reader.read_string()
    project.modules.append(module)
    for is_block, word in reader.parts("MODULE"):
        if is_block and word in _MODULE_BLOCKS:
            _MODULE_BLOCKS[word](reader, module)
        elif is_block and word == "A2ML":
            _skip_a2ml(reader)
        elif is_block and word == "MOD_PAR":
            _parse_mod_par(reader, module)
        elif is_block and word == "MOD_COMMON":
            _parse_mod_common(reader)
        elif is_block and word == "RECORD_LAYOUT":
            _parse_record_layout(reader, module)
        elif is_block and word in ("AXIS_PTS", "VARIANT_CODING"):
            reader.skip_block()
        elif not is_block and word == "/include":
            if reader.next() != keywords.STRING:
                reader.error(b"Filename expected")
        else:
            reader.unexpected()


def _skip_a2ml(reader):
    """Skips to the first /end: an A2ML block does not count what is nested in it."""
    while reader.next() != keywords.END:
        if reader.kind == keywords.END_OF_FILE:
            return
    reader.close("A2ML")


# Texts of MOD_PAR that are kept, and the name of the property.
_MOD_PAR_TEXTS = {
    "VERSION": "mod_par/version",
    "EPK": "mod_par/epk",
    "ECU": "mod_par/ecu",
}

_MOD_PAR_DROPPED = {
    "SUPPLIER": 1,
    "CUSTOMER": 1,
    "CUSTOMER_NO": 1,
    "USER": 1,
    "PHONE_NO": 1,
    "CPU_TYPE": 1,
    "NO_OF_INTERFACES": 1,
    "ECU_CALIBRATION_OFFSET": 1,
    "SYSTEM_CONSTANT": 2,
}


def _parse_mod_par(reader, module):
    reader.read_string()
    for is_block, word in reader.parts("MOD_PAR"):
        if is_block and word == "MEMORY_SEGMENT":
            _parse_memory_segment(reader)
        elif is_block and word in ("CALIBRATION_METHOD", "MEMORY_LAYOUT"):
            reader.skip_block()
        elif is_block:
            reader.unexpected()
        elif word in _MOD_PAR_TEXTS:
            module.properties[_MOD_PAR_TEXTS[word]] = reader.read_string()
        elif word == "ADDR_EPK":
            if reader.next() == keywords.INTEGER:
                module.properties["mod_par/addr_epk"] = reader.int_value
            else:
                reader.unexpected_warning()
        elif word in _MOD_PAR_DROPPED:
            reader.drop(_MOD_PAR_DROPPED[word])
        else:
            reader.unexpected()


_PROGRAM_TYPES = dict.fromkeys((
    "CALIBRATION_VARIABLES", "CODE", "DATA", "EXCLUDE_FROM_FLASH", "OFFLINE_DATA", "RESERVED",
    "SERAM", "VARIABLES"))
_MEMORY_TYPES = dict.fromkeys((
    "EEPROM", "EPROM", "FLASH", "RAM", "ROM", "REGISTER", "NOT_IN_ECU"))
_SEGMENT_ATTRIBUTES = dict.fromkeys(("INTERN", "EXTERN"))


def _parse_memory_segment(reader):
    reader.read_identifier()
    reader.read_string()
    for choices in (_PROGRAM_TYPES, _MEMORY_TYPES, _SEGMENT_ATTRIBUTES):
        _judge_word(reader, choices)
    reader.drop(7)  # address, size, five offsets of mirrored segments
    for is_block, word in reader.parts("MEMORY_SEGMENT"):
        if is_block and word == "IF_DATA":
            parse_if_data(reader, model.MemorySegment())
        else:
            reader.unexpected()


def _judge_word(reader, choices):
    """A word of the enumeration table that is warned of when it is no choice, and not kept."""
    with reader.using(keywords.WORDS):
        reader.read_choice(choices)


_MOD_COMMON_DROPPED = (
    "S_REC_LAYOUT", "DEPOSIT", "DATA_SIZE", "ALIGNMENT_BYTE", "ALIGNMENT_WORD", "ALIGNMENT_LONG",
    "ALIGNMENT_INT64", "ALIGNMENT_FLOAT16_IEEE", "ALIGNMENT_FLOAT32_IEEE",
    "ALIGNMENT_FLOAT64_IEEE")


def _parse_mod_common(reader):
    reader.read_string()
    for word in reader.words("MOD_COMMON"):
        if word == "BYTE_ORDER":
            reader.module_byte_order = read_byte_order(reader)
        elif word in _MOD_COMMON_DROPPED:
            reader.drop()
        else:
            reader.unexpected()


_SIZE_WORDS = dict.fromkeys(("BYTE", "WORD", "LONG"))
_INDEX_ORDERS = dict.fromkeys(("INDEX_INCR", "INDEX_DECR"))
_ADDRESSINGS = dict.fromkeys(("PBYTE", "PWORD", "PLONG", "DIRECT", "PLONGLONG"))


def _layout_components():
    """The components of record layouts and their parameters, one letter for each.

    n number or free word, t data type, s size word, o index order, a addressing
    """
    components = {
        "FNC_VALUES": "ntna",
        "IDENTIFICATION": "nt",
        "RESERVED": "ns",
        "STATIC_RECORD_LAYOUT": "",
        "STATIC_ADDRESS_OFFSETS": "",
        "RIP_ADDR_W": "nt",
    }
    for axis in "XYZ45":
        components["AXIS_PTS_" + axis] = "ntoa"
        components["AXIS_RESCALE_" + axis] = "ntnoa"
        components["FIX_NO_AXIS_PTS_" + axis] = "n"
        for name in ("NO_AXIS_PTS_", "NO_RESCALE_", "SRC_ADDR_", "RIP_ADDR_", "SHIFT_OP_",
                     "OFFSET_", "DIST_OP_"):
            components[name + axis] = "nt"
    for size in ("BYTE", "WORD", "LONG", "INT64", "FLOAT16_IEEE", "FLOAT32_IEEE", "FLOAT64_IEEE"):
        components["ALIGNMENT_" + size] = "n"
    return components


_LAYOUT_COMPONENTS = _layout_components()
_LAYOUT_WORDS = {"s": _SIZE_WORDS, "o": _INDEX_ORDERS, "a": _ADDRESSINGS}


def _parse_record_layout(reader, module):
    layout = model.RecordLayout(reader.read_identifier())
    module.record_layouts.append(layout)
    for word in reader.words("RECORD_LAYOUT"):
        if word not in _LAYOUT_COMPONENTS:
            reader.unexpected()
        for parameter in _LAYOUT_COMPONENTS[word]:
            if parameter == "n":
                reader.drop()
            elif parameter == "t":
                data_type = _read_layout_type(reader)
                if word == "FNC_VALUES":
                    layout.data_type = data_type
            else:
                _judge_word(reader, _LAYOUT_WORDS[parameter])


def _read_layout_type(reader):
    with reader.using(keywords.WORDS):
        reader.next()
        if reader.plain_word == b"FLOAT16_IEEE":
            return model.DataType(None, 16)
        data_type = read_data_type(reader)
        if data_type is None:
            reader.unexpected_warning()
            return model.DataType()
        return data_type
