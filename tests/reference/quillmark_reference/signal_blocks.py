"""Parsers of measurements and characteristics, and of the blocks that list them."""

from . import keywords, model
from .interface_blocks import parse_if_data

# Data types and their sizes in bits.
_DATA_TYPES = {
    "UBYTE": (model.UNSIGNED, 8),
    "SBYTE": (model.SIGNED, 8),
    "UWORD": (model.UNSIGNED, 16),
    "SWORD": (model.SIGNED, 16),
    "ULONG": (model.UNSIGNED, 32),
    "SLONG": (model.SIGNED, 32),
    "A_UINT64": (model.UNSIGNED, 64),
    "A_INT64": (model.SIGNED, 64),
    "FLOAT32_IEEE": (model.REAL, 32),
    "FLOAT64_IEEE": (model.REAL, 64),
}

# The pairing of the first two with one another, and of the last two, is the tool's own.
_BYTE_ORDERS = {
    "MSB_FIRST": model.BIG_ENDIAN,
    "LITTLE_ENDIAN": model.BIG_ENDIAN,
    "MSB_LAST": model.LITTLE_ENDIAN,
    "BIG_ENDIAN": model.LITTLE_ENDIAN,
}


def read_data_type(reader):
    """The current token as a data type, or None. The table of words must be in use."""
    found = _DATA_TYPES.get(reader.word)
    return model.DataType(*found) if found else None


def read_byte_order(reader):
    with reader.using(keywords.WORDS):
        return reader.read_choice(_BYTE_ORDERS) or 0


_MEASUREMENT_DROPPED = {
    "MAX_REFRESH": 2,
    "SYMBOL_LINK": 2,
    "ERROR_MASK": 1,
    "DISPLAY_IDENTIFIER": 1,
    "REF_MEMORY_SEGMENT": 1,
    "DISCRETE": 0,
    "READ_WRITE": 0,
}


def parse_measurement(reader, module):
    signal = model.Signal(reader.read_identifier())
    reader.read_string()
    signal.byte_order = reader.module_byte_order
    with reader.using(keywords.WORDS):
        reader.next()
        signal.data_type = read_data_type(reader)
        if signal.data_type is None:
            reader.unexpected()
    signal.conversion = model.Reference(reader.read_identifier())
    reader.drop(2)  # resolution, accuracy
    _read_limits(reader)
    module.signals.append(signal)

    array_size = None
    matrix = None
    for is_block, word in reader.parts("MEASUREMENT"):
        if is_block:
            _parse_block_of_measurement(reader, signal, word)
        elif word == "ARRAY_SIZE":
            array_size = _read_told_int(reader, array_size)
        elif word == "MATRIX_DIM":
            matrix = _read_matrix(reader)
        else:
            _parse_word_of_measurement(reader, signal, word)
    _set_dimensions(reader, signal, array_size, matrix)


def _parse_block_of_measurement(reader, signal, word):
    if word == "IF_DATA":
        parse_if_data(reader, signal)
    elif word == "ANNOTATION":
        _parse_annotation(reader)
    elif word == "BIT_OPERATION":
        _parse_bit_operation(reader, signal)
    elif word == "FUNCTION_LIST":
        _parse_names(reader)
    elif word == "VIRTUAL":
        signal.virtual_members += _parse_names(reader)
    else:
        reader.unexpected()


def _parse_word_of_measurement(reader, signal, word):
    if word == "ECU_ADDRESS":
        signal.address = _read_told_int(reader, signal.address)
    elif word == "ECU_ADDRESS_EXTENSION":
        signal.address_extension = _read_told_int(reader, signal.address_extension)
    elif word == "BIT_MASK":
        reader.next()
        signal.data_type.bit_mask = reader.int_value
    elif word == "BYTE_ORDER":
        signal.byte_order = read_byte_order(reader)
    elif word == "LAYOUT":
        _read_layout(reader, signal)
    elif word == "FUNCTION_LIST":
        reader.read_identifiers()
    elif word in ("FORMAT", "PHYS_UNIT"):
        reader.next(word_mode=True)
    elif word in _MEASUREMENT_DROPPED:
        reader.drop(_MEASUREMENT_DROPPED[word])
    else:
        reader.unexpected()


def _read_limits(reader):
    """The limits are judged, but nothing that is written needs them."""
    for limit in (b"lower", b"upper"):
        reader.next()
        if not reader.is_number:
            reader.warning(b"Unexpected type for %s limit." % limit)


def _read_told_int(reader, present):
    """An integer; any other token is warned of and changes nothing."""
    if reader.next() == keywords.INTEGER:
        return reader.int_value
    reader.unexpected_warning()
    return present


def _read_matrix(reader):
    sizes = []
    while len(sizes) < 3:
        if reader.next() != keywords.INTEGER:
            reader.push_back()
            break
        sizes.append(max(reader.int_value, 0))
    return sizes + [1] * (3 - len(sizes))


def _read_layout(reader, signal):
    if reader.next() != keywords.IDENTIFIER:
        reader.unexpected_warning()
        return
    signal.layout = {b"ROW_DIR": 1, b"COLUMN_DIR": 2}.get(reader.text, 0)
    if signal.layout == 0:
        reader.warning(b"Unexpected LAYOUT '%s'" % reader.text)


def _set_dimensions(reader, signal, array_size, matrix):
    if matrix is None:
        if array_size is not None and array_size > 1:
            signal.dimensions = [array_size]
        return
    x, y, z = matrix
    if z != 1:
        signal.dimensions = [x, y, z]
    elif y != 1:
        signal.dimensions = [x, y]
    elif x != 1:
        signal.dimensions = [x]
    if array_size is not None and x * y * z != array_size:
        reader.warning(b"Array-size mismatch (%d)." % array_size)


_STORAGE_TYPES = {
    b"VALUE": model.VALUE,
    b"CURVE": 3,
    b"MAP": 4,
    b"CUBOID": 5,
    b"VAL_BLK": 6,
    b"ASCII": model.ASCII_TEXT,
    b"CUBE_4": 8,
    b"CUBE_5": 9,
}

_CHARACTERISTIC_DROPPED = {
    "DISPLAY_IDENTIFIER": 1,
    "REF_MEMORY_SEGMENT": 1,
    "ECU_ADDRESS_EXTENSION": 1,
    "BIT_MASK": 1,
    "COMPARISON_QUANTITY": 1,
    "CALIBRATION_ACCESS": 1,
    "STEP_SIZE": 1,
    "EXTENDED_LIMITS": 2,
    "MAX_REFRESH": 2,
    "SYMBOL_LINK": 2,
    "READ_ONLY": 0,
    "GUARD_RAILS": 0,
    "DISCRETE": 0,
}


def parse_characteristic(reader, module):
    signal = model.Signal(reader.read_identifier())
    reader.read_string()
    module.signals.append(signal)
    signal.byte_order = reader.module_byte_order
    _read_storage_type(reader, signal)
    signal.address = _read_told_int(reader, None)
    reader.next()
    signal.record_layout = model.Reference(reader.text)
    reader.drop()  # maximum difference
    reader.next()
    signal.conversion = model.Reference(reader.text)
    _read_limits(reader)
    for is_block, word in reader.parts("CHARACTERISTIC"):
        if is_block:
            _parse_block_of_characteristic(reader, signal, word)
        else:
            _parse_word_of_characteristic(reader, signal, word)


def _read_storage_type(reader, signal):
    if reader.next() != keywords.IDENTIFIER:
        return
    if reader.text not in _STORAGE_TYPES:
        reader.warning(b"Unexpected storage type '%s'." % reader.text)
        return
    signal.kind = _STORAGE_TYPES[reader.text]
    if signal.kind == model.ASCII_TEXT:
        signal.data_type.base_type = model.ASCII


def _parse_block_of_characteristic(reader, signal, word):
    if word == "IF_DATA":
        parse_if_data(reader, signal)
    elif word == "AXIS_DESCR":
        reader.skip_block()
    elif word == "ANNOTATION":
        _parse_annotation(reader)
    elif word in ("DEPENDENT_CHARACTERISTIC", "VIRTUAL_CHARACTERISTIC"):
        reader.drop()  # the formula; the list of names must not begin with it
        _parse_names(reader, word)
    elif word == "FUNCTION_LIST":
        _parse_names(reader)
    else:
        reader.unexpected()


def _parse_word_of_characteristic(reader, signal, word):
    if word == "BYTE_ORDER":
        signal.byte_order = read_byte_order(reader)
    elif word == "NUMBER":
        if reader.next() == keywords.INTEGER:
            signal.data_type.size_bits = 8 * reader.int_value
    elif word in ("FORMAT", "PHYS_UNIT"):
        reader.next(word_mode=True)
    elif word == "MATRIX_DIM":
        reader.next()
        while reader.is_number:
            reader.next()
        reader.push_back()
    elif word in ("FUNCTION_LIST", "MAP_LIST"):
        reader.read_identifiers()
    elif word in _CHARACTERISTIC_DROPPED:
        reader.drop(_CHARACTERISTIC_DROPPED[word])
    else:
        reader.unexpected()


# Small blocks


def _parse_names(reader, block=None):
    """A block that lists names. Returns them."""
    names = []
    for _ in reader.words(block or reader.word):
        if reader.kind != keywords.IDENTIFIER:
            reader.unexpected()
        names.append(reader.text)
    return names


def _parse_annotation(reader):
    for is_block, word in reader.parts("ANNOTATION"):
        if not is_block and word in ("ANNOTATION_LABEL", "ANNOTATION_ORIGIN"):
            reader.drop()
        elif is_block and word == "ANNOTATION_TEXT":
            for _ in reader.words("ANNOTATION_TEXT"):
                if reader.kind != keywords.STRING:
                    reader.unexpected()
        else:
            reader.unexpected()


def _parse_bit_operation(reader, signal):
    for word in reader.words("BIT_OPERATION"):
        if word in ("LEFT_SHIFT", "RIGHT_SHIFT"):
            signal.bit_operation = 1 if word == "LEFT_SHIFT" else 2
            reader.next()
            signal.shift_count = reader.int_value
        elif word == "SIGN_EXTEND":
            signal.sign_extend = True
        else:
            reader.unexpected()


# Groups, functions, frames, rights

_LISTS_OF_GROUP = ("REF_CHARACTERISTIC", "REF_MEASUREMENT", "SUB_GROUP", "FUNCTION_LIST")
_LISTS_OF_FUNCTION = ("DEF_CHARACTERISTIC", "REF_CHARACTERISTIC", "IN_MEASUREMENT",
                      "LOC_MEASUREMENT", "OUT_MEASUREMENT", "SUB_FUNCTION")


def parse_group(reader, module):
    _parse_function(reader, module, "GROUP", _LISTS_OF_GROUP, {"ROOT": 0})


def parse_function(reader, module):
    _parse_function(reader, module, "FUNCTION", _LISTS_OF_FUNCTION, {"FUNCTION_VERSION": 1})


def _parse_function(reader, module, block, lists, dropped):
    function = model.Function(reader.read_identifier())
    reader.read_string()
    module.functions.append(function)
    for is_block, word in reader.parts(block):
        if is_block and word in lists:
            function.members += _parse_names(reader)
        elif is_block and word == "ANNOTATION":
            _parse_annotation(reader)
        elif is_block and word == "IF_DATA":
            parse_if_data(reader, function)
        elif not is_block and word in dropped:
            reader.drop(dropped[word])
        else:
            reader.unexpected()


def parse_frame(reader, module):
    frame = model.Frame(reader.read_identifier())
    reader.read_string()
    reader.drop(2)  # scaling unit, rate
    module.frames.append(frame)
    for is_block, word in reader.parts("FRAME"):
        if is_block and word == "IF_DATA":
            parse_if_data(reader, frame)
        elif not is_block and word == "FRAME_MEASUREMENT":
            frame.members += reader.read_identifiers()
        else:
            reader.unexpected()


def parse_user_rights(reader, _module):
    reader.read_identifier()
    for is_block, word in reader.parts("USER_RIGHTS"):
        if is_block and word == "REF_GROUP":
            _parse_names(reader)
        elif is_block or word != "READ_ONLY":
            reader.unexpected()
