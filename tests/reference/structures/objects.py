"""The objects of a module as values that can be compared: MEASUREMENT, CHARACTERISTIC, AXIS_PTS."""

import dataclasses
import itertools

from structures.blocks import number

KINDS = ("MEASUREMENT", "CHARACTERISTIC", "AXIS_PTS")

# How many words follow an optional word; None: all the numbers behind it.
_PARAMETERS = {
    "ADDRESS_TYPE": 1, "ARRAY_SIZE": 1, "AXIS_PTS_REF": 1, "BIT_MASK": 1, "BYTE_ORDER": 1,
    "CALIBRATION_ACCESS": 1, "CONSISTENT_EXCHANGE": 0, "CONVERSION": 1, "CURVE_AXIS_REF": 1,
    "DEPOSIT": 1, "DISCRETE": 0, "DISPLAY_IDENTIFIER": 1, "ECU_ADDRESS": 1,
    "ECU_ADDRESS_EXTENSION": 1, "ENCODING": 1, "ERROR_MASK": 1, "EXTENDED_LIMITS": 2,
    "FIX_AXIS_PAR": 3, "FIX_AXIS_PAR_DIST": 3, "FORMAT": 1, "GUARD_RAILS": 0, "INPUT_QUANTITY": 1,
    "LAYOUT": 1, "LIMITS": 2, "MATRIX_DIM": None, "MAX_GRAD": 1, "MAX_REFRESH": 2, "MODEL_LINK": 1,
    "MONOTONY": 1, "NUMBER": 1, "PHYS_UNIT": 1, "READ_ONLY": 0, "READ_WRITE": 0, "STEP_SIZE": 1,
    "SYMBOL_LINK": 2, "SYMBOL_TYPE_LINK": 1,
}  # fmt: skip

# The fixed parameters behind name and text.
_FIXED = {
    "MEASUREMENT": ("datatype", "conversion", "resolution", "accuracy", "lower", "upper"),
    "CHARACTERISTIC": (
        "form", "address", "record_layout", "max_diff", "conversion", "lower", "upper",
    ),
    "AXIS_PTS": (
        "address", "input", "record_layout", "max_diff", "conversion", "points", "lower", "upper",
    ),
    "AXIS_DESCR": ("form", "input", "conversion", "points", "lower", "upper"),
}  # fmt: skip


@dataclasses.dataclass
class Object:
    """One object. Values are the tokens of the file; a dictionary has no order."""

    kind: str
    name: str
    text: str
    fixed: dict
    options: dict
    blocks: list

    @property
    def address(self):
        """Without its sign and what does not fit 32 bits; None if there is none."""
        if self.kind == "MEASUREMENT":
            written = self.options.get("ECU_ADDRESS")
            return None if written is None else number(written[0]) % (1 << 32)
        return number(self.fixed["address"]) % (1 << 32)


def options_of(words):
    """The optional words in a list of words, each with its parameters."""
    options = {}
    position = 0
    while position < len(words):
        word = words[position]
        count = _PARAMETERS[word]
        if count is None:
            count = sum(1 for _ in itertools.takewhile(_is_number, words[position + 1 :]))
        options[word] = tuple(words[position + 1 : position + 1 + count])
        position += 1 + count
    return options


def _is_number(word):
    return word.lstrip("-")[:1].isdigit()


def fixed_of(kind, words, leave_out=()):
    """(fixed parameters, the words behind them)."""
    names = [name for name in _FIXED[kind] if name not in leave_out]
    return dict(zip(names, words, strict=False)), words[len(names) :]


def read_object(block):
    words = block.words()
    fixed, rest = fixed_of(block.keyword, words[2:])
    return Object(block.keyword, words[0], words[1], fixed, options_of(rest), list(block.blocks()))


def objects_of(module):
    return [read_object(block) for block in module.blocks(*KINDS)]


def sizes_of(matrix_dim):
    """The sizes of an array as `convert` reads them: 1 at the end is none, 0 ends the list."""
    sizes = [max(number(word), 0) for word in matrix_dim or ()]
    while sizes and sizes[-1] == 1:
        sizes.pop()
    return list(itertools.takewhile(lambda size: size != 0, sizes))


def elements_of(sizes, row_dir):
    """(indices, how many elements come before) of each element of an array.

    The first index runs fastest. In memory it is contiguous with ROW_DIR; without, the second one
    is, then the first, then the third.
    """
    order = list(range(len(sizes)))
    if len(sizes) > 1 and not row_dir:
        order[0], order[1] = 1, 0
    for backwards in itertools.product(*(range(size) for size in reversed(sizes))):
        indices = backwards[::-1]
        offset, step = 0, 1
        for axis in order:
            offset += indices[axis] * step
            step *= sizes[axis]
        yield indices, offset


def indexed(name, indices):
    return name + "".join(f"[{index}]" for index in indices)


_DATA_TYPE_BYTES = {
    "UBYTE": 1, "SBYTE": 1, "UWORD": 2, "SWORD": 2, "ULONG": 4, "SLONG": 4, "A_UINT64": 8,
    "A_INT64": 8, "FLOAT16_IEEE": 2, "FLOAT32_IEEE": 4, "FLOAT64_IEEE": 8,
}  # fmt: skip


def is_data_type(word):
    return word in _DATA_TYPE_BYTES


def bytes_of(data_type):
    return _DATA_TYPE_BYTES[data_type]


def values_of(one):
    """(name, address, everything else) of each single value that the object stands for."""
    options = {key: value for key, value in one.options.items() if key != "ECU_ADDRESS"}
    fixed = {key: value for key, value in one.fixed.items() if key != "address"}
    sizes = []
    if one.kind == "MEASUREMENT":
        sizes = sizes_of(options.pop("MATRIX_DIM", ()))
        row_dir = options.pop("LAYOUT", None) == ("ROW_DIR",)
        size = bytes_of(fixed["datatype"])
    else:
        row_dir, size = False, 0
    rest = (
        one.kind, one.text, _plain(fixed), _plain(options),
        tuple(_plain_block(block) for block in one.blocks if block.keyword == "AXIS_DESCR"),
        tuple(sorted(_plain_block(block) for block in one.blocks if block.keyword != "AXIS_DESCR")),
    )  # fmt: skip
    for indices, offset in elements_of(sizes, row_dir):
        address = None if one.address is None else (one.address + offset * size) % (1 << 32)
        yield indexed(one.name, indices), address, rest


def _plain(values):
    return tuple(
        (key, tuple(map(_plain_token, value)) if isinstance(value, tuple) else _plain_token(value))
        for key, value in sorted(values.items())
    )


def _plain_block(block):
    if block.keyword != "AXIS_DESCR":
        return " ".join(map(_plain_token, block.written()))
    fixed, rest = fixed_of("AXIS_DESCR", block.words())
    inner = sorted(_plain_block(part) for part in block.blocks())
    return f"AXIS_DESCR {_plain(fixed)} {_plain(options_of(rest))} {inner}"


def _plain_token(token):
    """Numbers by their value: 0x10 is 16, 1.50 is 1.5."""
    try:
        return str(float(number(token)))
    except ValueError:
        pass
    try:
        return str(float(token))
    except ValueError:
        return token


# The lists of names in groups and functions, and what kind of object they hold.
LISTS = {
    "REF_MEASUREMENT": "MEASUREMENT",
    "IN_MEASUREMENT": "MEASUREMENT",
    "LOC_MEASUREMENT": "MEASUREMENT",
    "OUT_MEASUREMENT": "MEASUREMENT",
    "REF_CHARACTERISTIC": "CHARACTERISTIC",
    "DEF_CHARACTERISTIC": "CHARACTERISTIC",
}


def lists_of(module):
    """(group or function, list, names) of each list of names in a module that is not empty."""
    return [
        (f"{owner.keyword} {owner.words()[0]}", part.keyword, part.words())
        for owner in module.blocks("GROUP", "FUNCTION")
        for part in owner.blocks(*LISTS)
        if part.words()
    ]
