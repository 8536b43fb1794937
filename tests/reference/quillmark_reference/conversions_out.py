"""Writes the conversions of a module."""

from . import model
from .lexer import clamp_to_int32


def write_conversion(parent, conversion, prefix, features, fallback_names):
    """Appends at most one element.

    A conversion that the logger can't represent becomes an identity, and its full name goes to
    `fallback_names`: no signal refers to such a substitute.
    """
    full_name = prefix + conversion.name
    if conversion.kind == model.LINEAR and len(conversion.coefficients) >= 2:
        scale, offset = conversion.coefficients[:2]
        _write_scale(parent, full_name, scale, offset)
        return
    if conversion.kind == model.RATIONAL:
        _write_rational(parent, full_name, conversion)
        return
    if conversion.kind in (model.TABLE, model.INTERPOLATION):
        if conversion.name.startswith(model.TABLE_PREFIX):
            return  # written with those that refer to it
        if _write_table(parent, full_name, conversion, features):
            return
    _write_scale(parent, full_name, 1, 0)
    fallback_names.add(full_name)


def _write_scale(parent, full_name, scale, offset):
    element = parent.add_child(b"scaleoffset")
    element.add_value(b"name", full_name)
    element.add_real(b"scale", scale)
    element.add_real(b"offset", offset)


def _write_rational(parent, full_name, conversion):
    """The inverse of physical = (P1 x + P0) / (Q1 x + Q0), as COEFFS has it."""
    p1, p0 = _linear_terms(conversion.coefficients)
    q1, q0 = _linear_terms(conversion.denominator)
    sign = 1 if len(conversion.denominator) >= 2 else -1
    element = parent.add_child(b"ratfunc")
    element.add_value(b"name", full_name)
    coefficients = (0, -q0 * sign, p0 * sign, 0, q1 * sign, -p1 * sign)
    for index, value in enumerate(coefficients, start=1):
        element.add_real(b"coeff%d" % index, value)


def _linear_terms(polynomial):
    if len(polynomial) < 2:
        return (0, *polynomial) if polynomial else (0, 0)
    return tuple(polynomial[:2])


def _write_table(parent, full_name, conversion, features):
    """Writes the table that the conversion refers to. Returns False if it can't be written."""
    table = conversion.table.target if conversion.table else None
    entries = conversion.entries or (table.entries if table else [])
    if not entries:
        return False
    # The first entry decides for all of them.
    first = entries[0]
    if isinstance(first.lower, float) and isinstance(first.output, float):
        element = parent.add_child(b"computab")
        element.add_value(b"name", full_name)
        element.add_int(b"interpolate", int(conversion.kind == model.INTERPOLATION))
        for entry in entries:
            point = element.add_child(b"tablepoint")
            point.add_real(b"x", entry.lower)
            point.add_real(b"y", entry.output)
        return True
    if (features.value_tables and isinstance(first.lower, int)
            and isinstance(first.output, bytes)):
        element = parent.add_child(b"vtab")
        element.add_value(b"name", full_name)
        if table and table.default_text is not None:
            element.add_value(b"default", table.default_text)
        for entry in entries:
            child = element.add_child(b"entry")
            child.add_int(b"value", clamp_to_int32(float(entry.lower)))
            child.add_value(b"text", entry.output)
        return True
    return False
