"""Parsers of units, conversions and their tables."""

from . import keywords, model
from .lexer import clamp_to_int32

_CONVERSION_KINDS = {
    "IDENTICAL": model.IDENTITY,
    "LINEAR": model.LINEAR,
    "RAT_FUNC": model.RATIONAL,
    "TAB_INTP": model.INTERPOLATION,
    "TAB_NOINTP": model.TABLE,
    "TAB_VERB": model.TABLE,
    "FORM": model.FORMULA,
}


def parse_unit(reader, module):
    name = reader.read_identifier()
    reader.read_string()
    unit = model.Unit(name, reader.read_string())
    reader.drop()  # extended or derived
    module.units.append(unit)
    for word in reader.words("UNIT"):
        if word == "SI_EXPONENTS":
            reader.drop(7)
        elif word in ("REF_UNIT", "UNIT_REF"):
            reader.drop()
        elif word == "UNIT_CONVERSION":
            reader.drop(2)
        else:
            reader.unexpected()


def parse_conversion(reader, module):
    conversion = model.Conversion(reader.read_identifier())
    reader.read_string()
    with reader.using(keywords.WORDS):
        conversion.kind = reader.read_choice(_CONVERSION_KINDS) or model.UNDEFINED
    reader.next(word_mode=True)  # format
    if reader.next(word_mode=True) != keywords.STRING:
        reader.error(b"String expected (Unit)")
    conversion.unit = model.Unit(reader.text, reader.text)
    module.conversions.append(conversion)
    for is_block, word in reader.parts("COMPU_METHOD"):
        if is_block:
            if word != "FORMULA":
                reader.unexpected()
            _parse_formula(reader)
        elif word == "COEFFS":
            _read_inverse(reader, conversion)
        elif word == "COEFFS_LINEAR":
            pair = [reader.read_number(), reader.read_number()]
            conversion.coefficients += _told(pair)
        elif word == "REF_UNIT":
            conversion.unit = model.Reference(reader.read_identifier())
        elif word == "COMPU_TAB_REF":
            conversion.table = model.Reference(model.TABLE_PREFIX + reader.read_identifier())
        elif word == "STATUS_STRING_REF":
            reader.drop()
        else:
            reader.unexpected()


def _parse_formula(reader):
    if reader.next() != keywords.STRING:
        reader.push_back()
    for word in reader.words("FORMULA"):
        if word != "FORMULA_INV":
            reader.unexpected()
        reader.drop()


def _told(values):
    """The numbers that could be read."""
    return [value for value in values if value is not None]


def _read_inverse(reader, conversion):
    """COEFFS gives raw of physical; kept is physical of raw, as two polynomials.

    raw = (a p^2 + b p + c) / (d p^2 + e p + f) has an inverse of that form only if it has no square
    terms and not all of b, e and f.
    """
    a, b, c, d, e, f = (reader.read_number() for _ in range(6))
    if not a and not d and not e:
        numerator, denominator = [f, _negative(c)], [b]
    elif not a and not d and not b:
        numerator, denominator = [_negative(f), c], [e, 0]
    elif not a and not d and not f:
        numerator, denominator = [c], [e, _negative(b)]
    else:
        numerator, denominator = [], []
        reader.warning(
            b"Unable to compute inverse function in conversion '%s'" % conversion.name)
    conversion.coefficients = _told(numerator)
    conversion.denominator = _told(denominator)


def _negative(value):
    return None if value is None else -value


def parse_table(reader, module):
    """COMPU_TAB, COMPU_VTAB and COMPU_VTAB_RANGE."""
    block = reader.word
    table = model.Conversion(model.TABLE_PREFIX + reader.read_identifier(), model.TABLE)
    reader.read_string()
    with reader.using(keywords.WORDS):
        if block == "COMPU_TAB":
            kinds = {"TAB_INTP": model.INTERPOLATION, "TAB_NOINTP": model.TABLE}
            table.kind = reader.read_choice(kinds) or model.TABLE
        elif block == "COMPU_VTAB":
            reader.read_choice({"TAB_VERB": model.TABLE})
    module.conversions.append(table)
    if reader.next() != keywords.INTEGER:
        reader.error(b"Integer value (element count) expected")
    for _ in range(reader.int_value):
        table.entries.append(_ENTRY_READERS[block](reader))
    for word in reader.words(block):
        if word == "DEFAULT_VALUE":
            table.default_text = reader.read_string()
        elif word == "DEFAULT_VALUE_NUMERIC" and block == "COMPU_TAB":
            reader.drop()
        else:
            reader.unexpected()


def _read_entry_number(reader):
    reader.next()
    if not reader.is_number:
        reader.error(b"Double or integer value expected")
    return reader.number


def _read_entry_text(reader):
    if reader.next() != keywords.STRING:
        reader.error(b"String value expected")
    return reader.text


def _read_numeric_entry(reader):
    value = _read_entry_number(reader)
    return model.TableEntry(value, value, _read_entry_number(reader))


def _read_verbal_entry(reader):
    value = _read_entry_number(reader)
    if isinstance(value, float):
        value = clamp_to_int32(value + 0.5)
    return model.TableEntry(value, value, _read_entry_text(reader))


def _read_range_entry(reader):
    lower = _read_entry_number(reader)
    upper = _read_entry_number(reader)
    return model.TableEntry(lower, upper, _read_entry_text(reader))


_ENTRY_READERS = {
    "COMPU_TAB": _read_numeric_entry,
    "COMPU_VTAB": _read_verbal_entry,
    "COMPU_VTAB_RANGE": _read_range_entry,
}
