"""What the instances of a module stand for, before and without the program."""

import dataclasses
import itertools

from structures.blocks import Block, number
from structures.objects import (
    LISTS,
    Object,
    bytes_of,
    elements_of,
    fixed_of,
    indexed,
    is_data_type,
    lists_of,
    objects_of,
    options_of,
    sizes_of,
)

_POINTERS = {("PBYTE",), ("PWORD",), ("PLONG",), ("PLONGLONG",)}
_SWAPPED_WORDS = {
    ("MSB_FIRST_MSW_LAST",): ("MSB_FIRST",),
    ("MSB_LAST_MSW_FIRST",): ("MSB_LAST",),
}
_AXIS_REFERENCES = {"AXIS_PTS_REF", "CURVE_AXIS_REF"}

# What an option of an instance can be handed on to.
_HANDED_ON = {
    "ECU_ADDRESS_EXTENSION": {"MEASUREMENT", "CHARACTERISTIC", "AXIS_PTS"},
    "MAX_REFRESH": {"MEASUREMENT", "CHARACTERISTIC"},
    "READ_WRITE": {"MEASUREMENT"},
    "CALIBRATION_ACCESS": {"CHARACTERISTIC", "AXIS_PTS"},
}
_BLOCKS_HANDED_ON = ("IF_DATA", "ANNOTATION")

# What an OVERWRITE changes: the value's own words, by the kind of object.
_OVERWRITTEN = {
    "MEASUREMENT": {"CONVERSION", "LIMITS", "FORMAT", "PHYS_UNIT"},
    "CHARACTERISTIC": {"CONVERSION", "LIMITS", "EXTENDED_LIMITS", "FORMAT", "PHYS_UNIT"},
    "AXIS_PTS": {
        "CONVERSION", "LIMITS", "EXTENDED_LIMITS", "FORMAT", "PHYS_UNIT", "INPUT_QUANTITY",
        "MONOTONY",
    },
    "AXIS_DESCR": {
        "CONVERSION", "LIMITS", "EXTENDED_LIMITS", "FORMAT", "PHYS_UNIT", "INPUT_QUANTITY",
        "MONOTONY",
    },
}  # fmt: skip


# Whose ALIGNMENT_ a data type goes by, where that is not its own name.
_ALIGNED_AS = {
    "UBYTE": "BYTE", "SBYTE": "BYTE", "UWORD": "WORD", "SWORD": "WORD", "ULONG": "LONG",
    "SLONG": "LONG", "A_UINT64": "INT64", "A_INT64": "INT64",
}  # fmt: skip


class CannotExpand(Exception):
    """The description is one that has to be refused."""


@dataclasses.dataclass(frozen=True)
class _Place:
    """Where the expansion stands: a value of some type.

    `offset`: from the start of the instance. `paths`: the ways to name the place from the instance,
    with and without the indices of the arrays that were passed. `owner`: the name of the structure
    around it. `types`: those of all structures around it, the outermost first. `listed`: its name
    as lists have it, `above`: this and those of all that it is a part of.
    """

    name: str
    display: str
    offset: int
    paths: frozenset
    listed: str
    above: tuple
    owner: str = ""
    types: tuple = ()

    def element(self, indices, offset):
        listed = indexed(self.listed, indices)
        return dataclasses.replace(
            self,
            name=indexed(self.name, indices),
            display=indexed(self.display, indices),
            offset=self.offset + offset,
            paths=frozenset(p for path in self.paths for p in (path, indexed(path, indices))),
            listed=listed,
            above=(*self.above, listed),
        )

    def component(self, name, offset, separator, structure):
        listed = f"{self.listed}.{name}"
        return _Place(
            self.name + separator + name,
            self.display + separator + name,
            self.offset + offset,
            frozenset(f"{path}.{name}" if path else name for path in self.paths),
            listed,
            (*self.above, listed),
            self.name,
            (*self.types, structure),
        )


class Expansion:
    """Expands every instance of a module.

    `objects`: what the module holds then, those that stood there before included. `losses`: names
    of what could not be carried over. `lists`: as `lists_of`, with the new names. `is_complete`: no
    more objects were asked for than `most_objects`.
    """

    def __init__(self, module, separator=".", blob_arrays=False, most_objects=10**9):
        self._separator = separator
        self._types = {
            block.words()[0]: block
            for block in module.blocks()
            if block.keyword.startswith("TYPEDEF_")
        }
        self._record_layouts = {
            block.words()[0]: block.words()[1:] for block in module.blocks("RECORD_LAYOUT")
        }
        self._mod_common = [word for part in module.blocks("MOD_COMMON") for word in part.words()]
        self.objects = objects_of(module)
        before = len(self.objects)
        self._left = most_objects
        self.losses = []
        self._below = {}
        self._blob_arrays = blob_arrays
        for block in module.blocks("BLOB"):
            self._expand_instance(block)
        for block in module.blocks("INSTANCE"):
            self._expand_instance(block)
        names = [one.name for one in self.objects[before:]]
        if len(set(names)) != len(names) or set(names) & {
            one.name for one in self.objects[:before]
        }:
            raise CannotExpand("a name would exist twice")
        self.lists = [
            (owner, part, names)
            for owner, part, before in lists_of(module)
            if (names := self._listed(LISTS[part], before))
        ]

    @property
    def is_complete(self):
        return self._left >= 0

    def names(self):
        """Whatever a list may name: instances, components, and the objects that stood there."""
        return sorted({*self._below, *(one.name for one in self.objects)})

    # -- instances ---------------------------------------------------------------------------

    def _expand_instance(self, block):
        name, self._text, type_name, address = block.words()[:4]
        if block.keyword == "BLOB":
            type_name, address = None, type_name
        self._options = options_of(block.words()[4:])
        self._address = number(address)
        self._blocks = block.blocks(*_BLOCKS_HANDED_ON)
        self._overwrites = [
            (part.words()[0], number(part.words()[1]), options_of(part.words()[2:]))
            for part in block.blocks("OVERWRITE")
        ]
        self._instance = name
        self._met, self._lost = set(), set()
        display = self._options.get("DISPLAY_IDENTIFIER", ("",))[0]
        self._has_display = bool(display)
        place = _Place(name, display, 0, frozenset([""]), name, (name,))
        if self._options.get("ADDRESS_TYPE") in _POINTERS:
            self._lose(place)
            self._below.setdefault(name, [])
            return
        if block.keyword == "BLOB":
            self._expand_blob(place, block.words()[3])
            return
        self._expand_array(place, type_name, self._options)
        for path, _, _ in self._overwrites:
            if path not in self._met and not path.startswith(tuple(self._lost)):
                self.losses.append(f"{name} OVERWRITE {path}")

    def _lose(self, place):
        """What would have changed the value is no loss besides."""
        self.losses.append(place.name)
        self._met |= self._names_in_overwrite(place)
        self._lost |= {path + end for path in place.paths if path for end in ".["}

    def _names_in_overwrite(self, place):
        return {self._instance, "THIS"} if "" in place.paths else place.paths

    def _expand_array(self, place, type_name, options):
        """A value of a type, or an array of such values if the options of its owner say so."""
        block = self._types.get(type_name)
        if block is None:
            raise CannotExpand(f"there is no type {type_name}")
        if type_name in place.types:
            raise CannotExpand(f"{type_name} contains itself")
        self._below.setdefault(place.listed, [])
        sizes = sizes_of(options.get("MATRIX_DIM"))
        layout = options.get("LAYOUT")
        if block.keyword == "TYPEDEF_MEASUREMENT":
            layout = layout or options_of(block.words()[8:]).get("LAYOUT")
        row_dir = layout == ("ROW_DIR",)
        if len(sizes) > 3 and not row_dir:
            self._lose(place)
            return
        if block.keyword == "TYPEDEF_MEASUREMENT" and self._stays_an_array(block, sizes):
            array = {"MATRIX_DIM": options["MATRIX_DIM"], "LAYOUT": layout}
            self._expand_measurement(place, block, array)
            return
        size = self._bytes_of_type(type_name) if sizes else 0
        for indices, count in elements_of(sizes, row_dir):
            element = place.element(indices, count * size) if indices else place
            self._below.setdefault(element.listed, [])
            self._expand(element, block)

    @staticmethod
    def _stays_an_array(block, sizes):
        own = sizes_of(options_of(block.words()[8:]).get("MATRIX_DIM"))
        return not own and 0 < len(sizes) <= 3

    def _expand(self, place, block):
        self._left -= 1
        if self._left < 0:
            return
        expand = {
            "TYPEDEF_STRUCTURE": self._expand_structure,
            "TYPEDEF_MEASUREMENT": self._expand_measurement,
            "TYPEDEF_CHARACTERISTIC": self._expand_characteristic,
            "TYPEDEF_AXIS": self._expand_axis,
            "TYPEDEF_BLOB": lambda place, block: self._expand_blob(place, block.words()[2]),
        }
        expand[block.keyword](place, block)

    def _expand_structure(self, place, block):
        if options_of(block.words()[3:]).get("ADDRESS_TYPE") in _POINTERS:
            self._lose(place)
            return
        for component in block.blocks("STRUCTURE_COMPONENT"):
            name, type_name, offset = component.words()[:3]
            options = options_of(component.words()[3:])
            there = place.component(name, number(offset), self._separator, block.words()[0])
            if options.get("ADDRESS_TYPE") in _POINTERS:
                self._lose(there)
                self._below.setdefault(there.listed, [])
                continue
            self._expand_array(there, type_name, options)

    # -- single objects ----------------------------------------------------------------------

    def _expand_measurement(self, place, block, array=None):
        """`array`: MATRIX_DIM and LAYOUT of the owner, if the measurement has none of its own."""
        words = block.words()
        fixed, rest = fixed_of("MEASUREMENT", words[2:])
        options = options_of(rest)
        pointer = options.pop("ADDRESS_TYPE", None) in _POINTERS
        if pointer or fixed["datatype"] == "FLOAT16_IEEE":
            self._lose(place)
            return
        options |= {word: value for word, value in (array or {}).items() if value}
        sizes = sizes_of(options.get("MATRIX_DIM"))
        if len(sizes) <= 3:
            options["ECU_ADDRESS"] = (str(self._address + place.offset),)
            self._add(place, "MEASUREMENT", words[1], fixed, options, block)
        elif options.get("LAYOUT") != ("ROW_DIR",):
            self._lose(place)
        else:
            self._expand_elements(place, block, fixed, options, sizes)

    def _expand_elements(self, place, block, fixed, options, sizes):
        """A measurement of more sizes than three, value by value."""
        size = bytes_of(fixed["datatype"])
        single = {
            word: value for word, value in options.items() if word not in ("MATRIX_DIM", "LAYOUT")
        }
        for indices, count in elements_of(sizes, row_dir=True):
            element = place.element(indices, count * size)
            address = {"ECU_ADDRESS": (str(self._address + element.offset),)}
            self._add(
                element, "MEASUREMENT", block.words()[1], dict(fixed), single | address, block
            )

    def _expand_characteristic(self, place, block):
        words = block.words()
        fixed, rest = fixed_of("CHARACTERISTIC", words[2:], leave_out=("address",))
        fixed["address"] = str(self._address + place.offset)
        options = options_of(rest)
        options.pop("ENCODING", None)
        self._add(place, "CHARACTERISTIC", words[1], fixed, options, block)

    def _expand_axis(self, place, block):
        words = block.words()
        fixed, rest = fixed_of("AXIS_PTS", words[2:], leave_out=("address",))
        fixed["address"] = str(self._address + place.offset)
        fixed["input"] = self._from_here(place, fixed["input"])
        self._add(place, "AXIS_PTS", words[1], fixed, options_of(rest), block)

    def _expand_blob(self, place, size):
        if not self._blob_arrays:
            self._lose(place)
            return
        names = ("datatype", "conversion", "resolution", "accuracy", "lower", "upper")
        fixed = dict(zip(names, ("UBYTE", "NO_COMPU_METHOD", "0", "0", "0", "255"), strict=True))
        options = {"MATRIX_DIM": (size,), "ECU_ADDRESS": (str(self._address + place.offset),)}
        self._add(place, "MEASUREMENT", '""', fixed, options, Block("", []))

    def _add(self, place, kind, text, fixed, options, block):
        blocks = [self._axis(place, part) for part in block.blocks()]
        self._overwrite(place, kind, fixed, options, blocks)
        self._hand_on(place, kind, options)
        if "" in place.paths:
            text = self._text
        address = (self._address + place.offset) % (1 << 32)
        blocks += [_moved(part, address) for part in self._blocks]
        one = Object(kind, place.name, text, fixed, options, blocks)
        if not self._has_byte_order(one):
            self._lose(place)
            return
        self.objects.append(one)
        for name in place.above:
            self._below.setdefault(name, []).append((kind, place.name))

    def _hand_on(self, place, kind, options):
        """What the instance says for all its components."""
        for word, kinds in _HANDED_ON.items():
            if word in self._options and kind in kinds:
                options[word] = self._options[word]
        if self._has_display:
            options["DISPLAY_IDENTIFIER"] = (place.display,)
        if "SYMBOL_LINK" in self._options:
            symbol, offset = self._options["SYMBOL_LINK"]
            options["SYMBOL_LINK"] = (symbol, str(number(offset) + place.offset))

    def _has_byte_order(self, one):
        """Puts a byte order in place of one that swaps words, if the values have only one word."""
        plain = _SWAPPED_WORDS.get(one.options.get("BYTE_ORDER"))
        if plain is None:
            return True
        if one.kind == "MEASUREMENT":
            largest = bytes_of(one.fixed["datatype"])
        else:
            layout = self._record_layouts[one.fixed["record_layout"]]
            largest = max(bytes_of(word) for word in layout if is_data_type(word))
        if largest > 2:
            return False
        one.options["BYTE_ORDER"] = plain
        return True

    # -- names of the structure ---------------------------------------------------------------

    def _axis(self, place, block):
        """An AXIS_DESCR with the names that `THIS` stands for; other blocks as they are."""
        if block.keyword != "AXIS_DESCR":
            return block
        items = [
            self._from_here(place, item)
            if position == 1 or (position > 5 and block.items[position - 1] in _AXIS_REFERENCES)
            else item
            for position, item in enumerate(block.items)
        ]
        return dataclasses.replace(block, items=items)

    def _from_here(self, place, name):
        """`THIS.x` is x of the structure around the place; it stays if there is no such x."""
        path = name.removeprefix("THIS.")
        if path == name or not place.types:
            return name
        components = self._types[place.types[-1]].blocks("STRUCTURE_COMPONENT")
        if path.partition(".")[0] not in [component.words()[0] for component in components]:
            return name
        return place.owner + self._separator + path.replace(".", self._separator)

    # -- overwriting ---------------------------------------------------------------------------

    def _overwrite(self, place, kind, fixed, options, blocks):
        paths = self._names_in_overwrite(place)
        axes = [position for position, block in enumerate(blocks) if block.keyword == "AXIS_DESCR"]
        for path, axis, changes in self._overwrites:
            if path not in paths:
                continue
            self._met.add(path)
            if axis == 0 or kind == "AXIS_PTS":
                _overwrite_words(kind, fixed, options, changes)
            elif axis <= len(axes):
                blocks[axes[axis - 1]] = _overwritten_axis(blocks[axes[axis - 1]], changes)

    # -- sizes ---------------------------------------------------------------------------------

    def _bytes_of_type(self, name):
        """What an element of an array of this type takes."""
        block = self._types[name]
        words = block.words()
        if block.keyword in ("TYPEDEF_STRUCTURE", "TYPEDEF_BLOB"):
            return number(words[2])
        if block.keyword == "TYPEDEF_MEASUREMENT":
            fixed, rest = fixed_of("MEASUREMENT", words[2:])
            return bytes_of(fixed["datatype"]) * _product(
                sizes_of(options_of(rest).get("MATRIX_DIM"))
            )
        if block.keyword == "TYPEDEF_AXIS":
            fixed, _ = fixed_of("AXIS_PTS", words[2:], leave_out=("address",))
            return self._bytes_of_layout(fixed["record_layout"], 1, [number(fixed["points"])])
        fixed, rest = fixed_of("CHARACTERISTIC", words[2:], leave_out=("address",))
        options = options_of(rest)
        axes = [number(part.words()[3]) for part in block.blocks("AXIS_DESCR")]
        if fixed["form"] in ("VAL_BLK", "ASCII"):
            count = _product(sizes_of(options.get("MATRIX_DIM"))) * number(
                options.get("NUMBER", ("1",))[0]
            )
        else:
            count = _product(axes)
        return self._bytes_of_layout(fixed["record_layout"], count, axes)

    def _bytes_of_layout(self, name, values, axes):
        """`values`: how many function values there are; `axes`: the most points of each axis."""
        words = self._record_layouts[name]
        parts = []
        for index, word in enumerate(words):
            count = None
            if word == "FNC_VALUES":
                count = values
            elif word.startswith("AXIS_PTS_"):
                fixed = f"FIX_NO_{word}"
                axis = "XYZ45".index(word[-1])
                count = number(words[words.index(fixed) + 1]) if fixed in words else axes[axis]
            elif word.startswith("NO_AXIS_PTS_") or word in ("IDENTIFICATION", "RESERVED"):
                count = 1
            if count is not None:
                parts.append((number(words[index + 1]), words[index + 2], count))
        end = 0
        for _, data_type, count in sorted(parts):
            border = self._border(words, data_type)
            end = -(-end // border) * border + count * _bytes_of_part(data_type)
        return end

    def _border(self, words, data_type):
        """The address of a part of a record layout is a multiple of this."""
        keyword = "ALIGNMENT_" + _ALIGNED_AS.get(data_type, data_type)
        for owner in (words, self._mod_common):
            if keyword in owner:
                return number(owner[owner.index(keyword) + 1])
        return 1

    # -- lists of names --------------------------------------------------------------------------

    def _listed(self, kind, names):
        """A list of names with the instances and components in it replaced by what they became."""
        listed = []
        for name in names:
            below = self._below.get(name)
            if below is None:
                listed.append(name)
                continue
            fitting = [
                one for its, one in below if (its == "MEASUREMENT") == (kind == "MEASUREMENT")
            ]
            listed += fitting or [one for _, one in below]
        return list(dict.fromkeys(listed))


def _bytes_of_part(data_type):
    return {"BYTE": 1, "WORD": 2, "LONG": 4}.get(data_type) or bytes_of(data_type)


def _product(numbers):
    result = 1
    for one in numbers:
        result *= one
    return result


def _moved(block, address):
    """A block of the instance as a component has it: the address in a KP_BLOB is its own."""
    if block.keyword != "IF_DATA" or block.items[:2] != ["ASAP1B_CCP", "KP_BLOB"]:
        return block
    items = list(block.items)
    if number(items[3]) != 0:
        items[3] = str(address)
    return dataclasses.replace(block, items=items)


def _overwrite_words(kind, fixed, options, changes):
    for word, values in changes.items():
        if word not in _OVERWRITTEN[kind]:
            continue
        if word == "CONVERSION":
            fixed["conversion"] = values[0]
        elif word == "INPUT_QUANTITY":
            fixed["input"] = values[0]
        elif word == "LIMITS":
            fixed["lower"], fixed["upper"] = values
        else:
            options[word] = values


def _overwritten_axis(block, changes):
    fixed, rest = fixed_of("AXIS_DESCR", block.words())
    options = options_of(rest)
    _overwrite_words("AXIS_DESCR", fixed, options, changes)
    words = itertools.chain(fixed.values(), *((word, *values) for word, values in options.items()))
    return dataclasses.replace(block, items=[*words, *block.blocks()])
