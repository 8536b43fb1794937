"""Writes the signals of a module."""

from itertools import product

from . import model

_SIGNEDNESS = {
    model.SIGNED: b"signed",
    model.UNSIGNED: b"unsigned",
    model.ASCII: b"unsigned",
    model.REAL: b"float",
}


def is_written(signal, features):
    """Curves, maps, cuboids and value blocks never are."""
    return (signal.kind in (model.MEASUREMENT, model.VALUE)
            or signal.kind == model.ASCII_TEXT and features.ascii_characteristics)


def write_signal(parent, signal, prefix, features, fallback_names):
    """Appends the signal's element, or one for each element of an array."""
    size, signedness = _stored_form(signal)
    unit, conversion_name = _unit_and_conversion(signal, prefix)
    if conversion_name in fallback_names:
        conversion_name = b""
    dimensions = _told_dimensions(signal)
    for indices in _odometer(dimensions):
        element = parent.add_child(b"signal")
        suffix = b"".join(b"[%d]" % index for index in indices)
        element.add_value(b"name", prefix + signal.name + suffix)
        if unit:
            element.add_value(b"unit", unit)
        if conversion_name:
            element.add_value(b"compumethod", conversion_name)
        if signal.address_extension is not None:
            element.add_hex(b"mta_ext", signal.address_extension)
        if signal.address is not None:
            offset = _offset(indices, dimensions, signal.layout)
            element.add_hex(b"mta", signal.address + size * offset)
        element.add_int(b"num_bytes", size)
        element.add_value(b"signed", signedness)
        if signal.data_type.bit_mask is not None:
            element.add_hex(b"bitmask", signal.data_type.bit_mask)
        if features.shift_attributes:
            _add_shift(element, signal)
        if signal.byte_order != 0:
            is_big = signal.byte_order == model.BIG_ENDIAN
            element.add_value(b"byteorder", b"motorola" if is_big else b"intel")


def _stored_form(signal):
    """Size in bytes and signedness. For a single characteristic its record layout decides."""
    types = [signal.data_type]
    if signal.kind == model.VALUE and signal.record_layout and signal.record_layout.target:
        types.append(signal.record_layout.target.data_type)
    size, signedness = 0, b""
    for data_type in types:
        if data_type is not None:
            size = int(data_type.size_bits / 8)
            signedness = _SIGNEDNESS.get(data_type.base_type, signedness)
    return size, signedness


def _unit_and_conversion(signal, prefix):
    """The text of the unit and the full name of the conversion, each empty if there is none."""
    conversion = signal.conversion
    if conversion is None:
        return b"", b""
    name = b"" if conversion.name == b"NO_COMPU_METHOD" else prefix + conversion.name
    unit = conversion.target.unit if conversion.target else None
    if isinstance(unit, model.Reference):
        unit = unit.target
    return unit.display_text if unit else b"", name


def _told_dimensions(signal):
    """The dimensions up to the first that is 0."""
    dimensions = []
    for size in signal.dimensions:
        if size == 0:
            break
        dimensions.append(size)
    return dimensions


def _odometer(dimensions):
    """All indices, the first of them running fastest; one empty tuple for a scalar."""
    for reversed_indices in product(*(range(size) for size in reversed(dimensions))):
        yield reversed_indices[::-1]


def _offset(indices, dimensions, layout):
    """Where an element lies, counted in elements."""
    if len(indices) < 2:
        return sum(indices)
    i0, i1, i2 = (*indices, 0)[:3]
    d0, d1 = dimensions[:2]
    if layout == 1:
        return i0 + i1 * d0 + i2 * d0 * d1
    return i1 + i0 * d1 + i2 * d1 * d0


def _add_shift(element, signal):
    if signal.bit_operation == 0:
        element.add_value(b"shift_type", b"default")
        return
    is_right = signal.bit_operation == 2
    element.add_value(b"shift_type", b"right" if is_right else b"left")
    element.add_int(b"shift_length", signal.shift_count)
    if is_right and signal.sign_extend:
        element.add_int(b"sign_extend", 1)
