"""Random modules with types, structures and instances."""

from generator.dice import Dice
from structures.blocks import modules, parse
from structures.expansion import CannotExpand, Expansion

_DATA_TYPES = {
    "UBYTE": 4, "SBYTE": 2, "UWORD": 4, "SWORD": 2, "ULONG": 3, "SLONG": 2, "FLOAT32_IEEE": 3,
    "FLOAT64_IEEE": 2, "A_UINT64": 1, "A_INT64": 1, "FLOAT16_IEEE": 0.3,
}  # fmt: skip
_RECORD_LAYOUTS = {
    "RlByte": "FNC_VALUES 1 UBYTE COLUMN_DIR DIRECT",
    "RlWord": "FNC_VALUES 1 SWORD ROW_DIR DIRECT",
    "RlFloat": "FNC_VALUES 1 FLOAT32_IEEE COLUMN_DIR DIRECT",
    "RlDouble": "FNC_VALUES 1 FLOAT64_IEEE COLUMN_DIR DIRECT",
    "RlParts": "FNC_VALUES 3 ULONG COLUMN_DIR DIRECT IDENTIFICATION 1 UBYTE RESERVED 2 WORD"
    " ALIGNMENT_LONG 4",
}
_CURVE_LAYOUT = (
    "NO_AXIS_PTS_X 1 UWORD AXIS_PTS_X 2 UWORD INDEX_INCR DIRECT"
    " FNC_VALUES 3 SWORD COLUMN_DIR DIRECT"
)
_AXIS_LAYOUT = "AXIS_PTS_X 1 UWORD INDEX_INCR DIRECT"
_CONVERSIONS = ["NO_COMPU_METHOD", "Cm1", "Cm2"]
_COMPONENT_NAMES = ["a", "b", "c", "speed", "x", "y", "value", "next", "Type1", "inst1", "t_2"]
_MOST_OBJECTS = 300


class _Maker:
    """Makes the text of one description."""

    def __init__(self, dice):
        self.dice = dice
        self._measurements = [f"M{index}" for index in range(dice.between(1, 4))]
        self._characteristics = [f"C{index}" for index in range(dice.between(0, 4))]
        self._axes = [f"A{index}" for index in range(dice.few(2))]
        self._blobs = ["B0"] if dice.chance(0.05) else []
        self._structures = []
        self._components = {}
        self._axis_counts = {}
        self.has_twins = False

    # -- words ---------------------------------------------------------------------------------

    def number(self, value):
        if value < 0:
            return str(value)
        return self.dice.pick([str(value), f"0x{value:X}", f"0x{value:x}"])

    def maybe(self, probability, text):
        return f" {text}" if self.dice.chance(probability) else ""

    def limits(self):
        low = self.dice.between(-300, 300)
        return self.dice.pick([f"{low} {low + 1000}", f"{low}.5 {low + 301}e3"])

    def matrix_dim(self, probability, most=3):
        if not self.dice.chance(probability):
            return ""
        count = self.dice.weighted({1: 6, 2: 4, 3: 2, 4: 0.3})
        sizes = [self.dice.between(1, most) for _ in range(count)]
        layout = self.dice.weighted({"": 3, " LAYOUT ROW_DIR": 2, " LAYOUT COLUMN_DIR": 1})
        return f" MATRIX_DIM {' '.join(self.number(size) for size in sizes)}{layout}"

    def address_type(self):
        if not self.dice.chance(0.03):
            return ""
        return " ADDRESS_TYPE " + self.dice.pick(
            ["PLONG", "PBYTE", "PLONGLONG", "DIRECT", "DIRECT"]
        )

    def byte_order(self, probability):
        order = self.dice.weighted(
            {"MSB_FIRST": 4, "MSB_LAST": 4, "MSB_FIRST_MSW_LAST": 0.3, "MSB_LAST_MSW_FIRST": 0.3}
        )
        return self.maybe(probability, f"BYTE_ORDER {order}")

    def block(self, keyword, content):
        space = self.dice.pick([" ", "\n      ", "  /* , */ ", " // of it\n "])
        return f"    /begin {keyword} {content}{space}/end {keyword}\n"

    # -- types ---------------------------------------------------------------------------------

    def measurement_type(self, name):
        dice = self.dice
        options = [
            self.maybe(0.2, f"BIT_MASK {self.number(dice.below(256))}"),
            self.maybe(0.1, "/begin BIT_OPERATION RIGHT_SHIFT 2 SIGN_EXTEND /end BIT_OPERATION"),
            self.byte_order(0.2),
            self.maybe(0.1, "DISCRETE"),
            self.maybe(0.1, "ERROR_MASK 0xF0"),
            self.maybe(0.2, 'FORMAT "%6.2"'),
            self.maybe(0.2, 'PHYS_UNIT "km/h"'),
            self.matrix_dim(0.15),
            self.address_type(),
        ]
        return self.block(
            "TYPEDEF_MEASUREMENT",
            f'{name} "{dice.pick(["", "what it measures"])}" {dice.weighted(_DATA_TYPES)} '
            f"{dice.pick(_CONVERSIONS)} {dice.below(3)} {dice.pick(['0', '0.5'])} {self.limits()}"
            + "".join(dice.shuffled(options)),
        )

    def characteristic_type(self, name):
        dice = self.dice
        form = dice.weighted({"VALUE": 6, "ASCII": 2, "VAL_BLK": 2, "CURVE": 1, "MAP": 1})
        layout = dice.pick(list(_RECORD_LAYOUTS))
        options = [
            self.maybe(0.1, "BIT_MASK 0x7F"),
            self.byte_order(0.15) if form == "VALUE" else "",
            self.maybe(0.1, "DISCRETE"),
            self.maybe(0.2, "EXTENDED_LIMITS -1000 1e6"),
            self.maybe(0.2, 'FORMAT "%4.1"'),
            self.maybe(0.2, 'PHYS_UNIT "mm"'),
            self.maybe(0.1, "STEP_SIZE 0.5"),
        ]
        if form == "ASCII":
            layout = "RlByte"
            options += [f" NUMBER {dice.between(1, 12)}", self.maybe(0.2, "ENCODING UTF8")]
        if form == "VAL_BLK":
            options.append(f" MATRIX_DIM {dice.between(1, 4)} {dice.between(1, 4)}")
        axes = {"CURVE": 1, "MAP": 2}.get(form, 0)
        if form == "CURVE" and dice.chance(0.5):
            layout = "RlCurve"
            axis = "STD_AXIS NO_INPUT_QUANTITY Cm1 5 0 100"
            options.append(
                self.inner_block("AXIS_DESCR", axis + self.maybe(0.3, "DEPOSIT ABSOLUTE"))
            )
        else:
            options += [self.axis() for _ in range(axes)]
        self._axis_counts[name] = axes
        return self.block(
            "TYPEDEF_CHARACTERISTIC",
            f'{name} "{dice.pick(["", "what it holds"])}" {form} {layout} '
            f"{dice.pick(['0', '100.0'])} "
            f"{dice.pick(_CONVERSIONS)} {self.limits()}" + "".join(options),
        )

    def axis(self):
        """An axis whose points stand elsewhere: in the same structure, or by an own name."""
        if self._axes and self.dice.chance(0.7):
            name = self.dice.weighted({"Points": 1, "THIS.x": 2, "THIS.y": 2, "THIS.a.x": 1})
            quantity = self.dice.weighted({"NO_INPUT_QUANTITY": 1, "THIS.speed": 1})
            axis = f"COM_AXIS {quantity} Cm2 6 0 10"
            return self.inner_block("AXIS_DESCR", f"{axis} AXIS_PTS_REF {name}")
        return self.inner_block(
            "AXIS_DESCR",
            "FIX_AXIS NO_INPUT_QUANTITY NO_COMPU_METHOD 4 0 3 FIX_AXIS_PAR_DIST 0 1 4"
            + self.maybe(0.2, 'FORMAT "%3.0"'),
        )

    def inner_block(self, keyword, content):
        return f" /begin {keyword} {content} /end {keyword}"

    def axis_type(self, name):
        options = [
            self.byte_order(0.1),
            self.maybe(0.2, "DEPOSIT ABSOLUTE"),
            self.maybe(0.2, "EXTENDED_LIMITS 0 500"),
            self.maybe(0.2, 'FORMAT "%5.1"'),
            self.maybe(0.2, "MONOTONY STRICT_INCREASE"),
            self.maybe(0.2, 'PHYS_UNIT "rpm"'),
        ]
        quantity = self.dice.pick(["NO_INPUT_QUANTITY", "Plain", "THIS.speed"])
        return self.block(
            "TYPEDEF_AXIS",
            f'{name} "" {quantity} RlAxis 0 {self.dice.pick(_CONVERSIONS)} '
            f"{self.dice.between(1, 9)} {self.limits()}" + "".join(self.dice.shuffled(options)),
        )

    def structure_type(self, name):
        dice = self.dice
        used = dice.some(_COMPONENT_NAMES, dice.between(1, 5))
        types = self._measurements + self._characteristics + self._axes + self._blobs
        components, offset, text = [], dice.pick([0, 0, 0, 4, -8]), ""
        for component in used:
            type_name = dice.pick(
                self._structures if self._structures and dice.chance(0.35) else types
            )
            options = [
                self.matrix_dim(0.25),
                self.maybe(0.1, f'SYMBOL_TYPE_LINK "{component}_"'),
                self.address_type(),
            ]
            components.append((component, type_name))
            text += "\n     " + self.inner_block(
                "STRUCTURE_COMPONENT",
                f"{component} {type_name} {self.number(offset)}" + "".join(dice.shuffled(options)),
            )
            offset += dice.pick([1, 2, 4, 8, 60, 0, -2, 0x7FFFFF00 if dice.chance(0.05) else 3])
        if dice.chance(0.02):
            text += self.inner_block("STRUCTURE_COMPONENT", f"loop {name} 0")
        if dice.chance(0.02):
            text += self.inner_block("STRUCTURE_COMPONENT", "gone NoSuchType 0")
        self._structures.append(name)
        self._components[name] = components
        size = dice.pick([offset + 8, 16, 0x40, 5, 1024])
        words = self.maybe(0.1, "CONSISTENT_EXCHANGE") + self.maybe(
            0.1, f'SYMBOL_TYPE_LINK "{name}"'
        )
        return self.block(
            "TYPEDEF_STRUCTURE", f'{name} "" {self.number(max(size, 0))}{words}{text}'
        )

    # -- instances -----------------------------------------------------------------------------

    def instance(self, name):
        dice = self.dice
        plain = self._measurements + self._characteristics + self._axes + self._blobs
        type_name = dice.pick(plain if dice.chance(0.25) else self._structures)
        address = dice.pick([0x1000, 0x70001A40, 0, 0xFFFFFFF0, dice.below(1 << 32)])
        options = [
            self.matrix_dim(0.3),
            self.maybe(0.2, f"ECU_ADDRESS_EXTENSION {dice.below(4)}"),
            self.maybe(0.15, "READ_WRITE"),
            self.maybe(0.15, "CALIBRATION_ACCESS CALIBRATION"),
            self.maybe(0.15, "MAX_REFRESH 3 20"),
            self.maybe(0.15, f"DISPLAY_IDENTIFIER shown.{name}"),
            self.maybe(0.2, f'SYMBOL_LINK "_{name}" {dice.pick([0, 4, -12])}'),
            self.maybe(0.1, 'MODEL_LINK "model/of/it"'),
            self.address_type(),
            self.maybe(
                0.2,
                "/begin IF_DATA XCP /begin DAQ_EVENT FIXED_EVENT_LIST EVENT 2 /end DAQ_EVENT"
                " /end IF_DATA",
            ),
            self.maybe(
                0.1, f"/begin IF_DATA ASAP1B_CCP KP_BLOB 0 {dice.pick([0, 4096])} 2 /end IF_DATA"
            ),
            self.maybe(
                0.1,
                '/begin ANNOTATION ANNOTATION_LABEL "note" ANNOTATION_ORIGIN "" /end ANNOTATION',
            ),
            *(self.overwrite(name, type_name) for _ in range(dice.few(3))),
        ]
        return self.block(
            "INSTANCE",
            f'{name} "{dice.pick(["", "an instance"])}" {type_name} {self.number(address)}'
            + "".join(dice.shuffled(options)),
        )

    def overwrite(self, instance, type_name):
        """Changes a value somewhere in the instance, or tries to."""
        dice = self.dice
        path = []
        while type_name in self._components:
            component, type_name = dice.pick(self._components[type_name])
            path.append(component)
        name = ".".join(path) or dice.pick([instance, "THIS"])
        if dice.chance(0.03):
            name = "nowhere"
        axis = 0
        if dice.chance(0.5):
            axis = dice.between(0, self._axis_counts.get(type_name, 0))
        options = [
            self.maybe(0.4, f"CONVERSION {dice.pick(_CONVERSIONS)}"),
            self.maybe(0.4, f"LIMITS {self.limits()}"),
            self.maybe(0.3, 'PHYS_UNIT "bar"'),
            self.maybe(0.3, 'FORMAT "%9.3"'),
        ]
        if axis > 0 or type_name in self._axes:
            options += [
                self.maybe(0.3, "INPUT_QUANTITY Plain"),
                self.maybe(0.3, "MONOTONY MON_DECREASE"),
            ]
        return self.inner_block("OVERWRITE", f"{name} {axis}" + "".join(dice.shuffled(options)))

    # -- the whole -----------------------------------------------------------------------------

    def description(self):
        dice = self.dice
        types = [self.measurement_type(name) for name in self._measurements]
        types += [self.characteristic_type(name) for name in self._characteristics]
        types += [self.axis_type(name) for name in self._axes]
        types += [self.block("TYPEDEF_BLOB", f'{name} "" 16') for name in self._blobs]
        types += [self.structure_type(f"Type{index}") for index in range(dice.between(1, 4))]
        names = [f"inst{index}" for index in range(dice.between(1, 3))]
        self.has_twins = dice.chance(0.02)
        if self.has_twins:
            names.append(names[0])
        parts = dice.shuffled(types + [self.instance(name) for name in names] + self.others())
        return parts

    def others(self):
        layouts = {**_RECORD_LAYOUTS, "RlCurve": _CURVE_LAYOUT, "RlAxis": _AXIS_LAYOUT}
        parts = [self.block("RECORD_LAYOUT", f"{name} {text}") for name, text in layouts.items()]
        parts += [
            self.block("COMPU_METHOD", f'{name} "" LINEAR "%6.2" "V" COEFFS_LINEAR {factor} 0')
            for name, factor in (("Cm1", 2), ("Cm2", 0.5))
        ]
        # Without an interface `convert` writes no signals.
        parts.append(self.block("MOD_PAR", '"" EPK "E" ADDR_EPK 0x80000000'))
        parts.append(self.block("IF_DATA", "XCP"))
        parts.append(
            self.block("MEASUREMENT", 'Plain "" UBYTE NO_COMPU_METHOD 0 0 0 255 ECU_ADDRESS 0x10')
        )
        if self.dice.chance(0.5):
            order = self.dice.pick(["MSB_FIRST", "MSB_LAST"])
            words = f"BYTE_ORDER {order}" + self.maybe(
                0.5, "ALIGNMENT_WORD 2 ALIGNMENT_FLOAT64_IEEE 8"
            )
            parts.append(self.block("MOD_COMMON", f'"" {words}'))
        return parts

    def groups(self, names):
        """A group and a function that list instances, parts of them, and another signal."""
        dice = self.dice
        parts = []
        for keyword, lists in (
            ("GROUP", ("REF_MEASUREMENT", "REF_CHARACTERISTIC")),
            ("FUNCTION", ("IN_MEASUREMENT", "LOC_MEASUREMENT", "DEF_CHARACTERISTIC")),
        ):
            if dice.chance(0.6):
                content = "".join(
                    self.inner_block(part, " ".join(dice.some(names, dice.few(4))))
                    for part in dice.some(lists, dice.between(1, 2))
                )
                parts.append(self.block(keyword, f'{keyword}1 ""{content}'))
        return parts


def _described(parts):
    return (
        'ASAP2_VERSION 1 71\n/begin PROJECT P ""\n  /begin MODULE M ""\n'
        + "".join(parts)
        + "  /end MODULE\n/end PROJECT\n"
    )


def make_text(seed, number):
    """The description of a seed and a number, always the same."""
    for attempt in range(100):
        maker = _Maker(Dice(f"{seed} {number} {attempt}"))
        parts = maker.description()
        text = _described(parts)
        try:
            expansion = Expansion(modules(parse(text))[0], most_objects=_MOST_OBJECTS)
        except CannotExpand:
            return text
        if expansion.is_complete:
            # Of two instances with one name nobody knows which one a list means.
            names = [] if maker.has_twins else expansion.names()
            return _described(parts + maker.groups(names))
    raise AssertionError("no description will do")
