"""Whole descriptions, as lists of tokens."""

import dataclasses

from generator import core_blocks, protocol_blocks
from generator.grammar import Grammar, layout
from generator.words import LONE_CHARACTERS, Words


@dataclasses.dataclass
class Shape:
    """How large a description is, and what it is mostly about.

    `signals`, `conversions` and `others`: the greatest numbers of such blocks in a module.
    `interface_fullness`: how often an option of an interface block is there.
    """

    signals: int = 6
    conversions: int = 5
    others: int = 3
    interface_fullness: float = 0.25
    protocols: tuple = (
        "CCP", "CCP", "CCP", "XCP", "XCP", "XCP", "CCP+XCP", "XCP+CCP", "GMLAN+CCP", "GMLAN+XCP",
        "GMLAN", "OTHER", "",
    )


_IF_DATA_LAYOUTS = {
    "MODULE_IF_DATA/IF_DATA": layout("@module_if_data"),
    "SIGNAL_IF_DATA/IF_DATA": layout("@signal_if_data"),
    "SEGMENT_IF_DATA/IF_DATA": layout("@segment_if_data"),
    "OTHER_IF_DATA/IF_DATA": layout("@other_if_data"),
}
_UNKNOWN_NAMES = [
    "ASAP1B_KWP2000", "ASAP1B_ADDRESS", "CANAPE_EXT", "XCPPLUS", "xcp", "DIM",
    "ASAP1B_DIAGNOSTIC_SERVICES",
]


class Description:
    """Makes the tokens of one description."""

    def __init__(self, dice, shape):
        self.dice = dice
        self.shape = shape
        words = Words(dice)
        makers = {
            **core_blocks.MAKERS,
            **protocol_blocks.MAKERS,
            "signal_if_data": self._signal_if_data,
            "segment_if_data": self._segment_if_data,
            "other_if_data": self._other_if_data,
        }
        layouts = {**core_blocks.LAYOUTS, **protocol_blocks.LAYOUTS, **_IF_DATA_LAYOUTS}
        self._core = Grammar(words, layouts, makers, fullness=0.25)
        self._interface = Grammar(words, layouts, makers, shape.interface_fullness)
        self._words = words

    def tokens(self):
        dice = self.dice
        tokens = []
        for _ in range(dice.weighted({0: 2, 1: 20, 2: 1})):
            tokens += ["ASAP2_VERSION", *self._core.items("int int")]
        for _ in range(dice.weighted({1: 40, 2: 2, 0: 1})):
            tokens += self._project()
        if dice.chance(0.02):
            tokens += ["ASAP2_VERSION", "1", "60"]
        return tokens

    def _project(self):
        dice = self.dice
        body = self._core.items("name:project str")
        if dice.chance(0.3):
            body += self._core.block("HEADER")
        for _ in range(dice.weighted({1: 40, 2: 3, 3: 1, 0: 1})):
            body += self._core.enclosed("MODULE", self._module())
        return self._core.enclosed("PROJECT", body)

    def _module(self):
        dice = self.dice
        blocks = [*self._frame_blocks(), *self._interface_blocks(), *self._content_blocks()]
        if dice.chance(0.5):
            blocks = dice.shuffled(blocks)
        return [
            *self._core.items("name:module str"),
            *(token for block in blocks for token in block),
        ]

    def _frame_blocks(self):
        dice = self.dice
        blocks = []
        if dice.chance(0.97):
            blocks.append(self._core.enclosed("MOD_PAR", self._module_parameters()))
        if dice.chance(0.5):
            blocks.append(self._core.block("MOD_COMMON"))
        if dice.chance(0.1):
            blocks.append(["/begin", "A2ML", *self._any_words(), "/end", "A2ML"])
        if dice.chance(0.05):
            blocks.append(["/include", self._words.text()])
        return blocks

    def _module_parameters(self):
        dice = self.dice
        parts = []
        if dice.chance(0.96):
            parts.append(self._core.items("ADDR_EPK addr"))
        if dice.chance(0.96):
            parts.append(self._core.items("EPK str"))
        parts.append(self._core.body("MOD_PAR_REST"))
        return [
            *self._core.items("str"),
            *(token for part in dice.shuffled(parts) for token in part),
        ]

    def _interface_blocks(self):
        names = self.dice.pick(self.shape.protocols)
        return [
            self._interface.enclosed("IF_DATA", self._module_if_data(name))
            for name in names.split("+")
            if name
        ]

    def _module_if_data(self, name):
        interface = self._interface
        if name == "XCP" and self.dice.chance(0.2):
            return ["XCPplus", *interface.items("int"), *interface.body("XCP")]
        if name == "OTHER":
            return [
                *self._protocol_name(self.dice.pick(_UNKNOWN_NAMES)),
                *interface.body("OTHER_PROTOCOL"),
            ]
        return [
            *self._protocol_name({"CCP": "ASAP1B_CCP", "GMLAN": "ASAP1B_GMLAN"}.get(name, name)),
            *interface.body(name),
        ]

    def _protocol_name(self, name):
        if self.dice.odd() and self.dice.chance(0.3):
            return [self._words.anything()] if self.dice.chance(0.7) else []
        return [name]

    def _signal_if_data(self, grammar):
        what = self.dice.below(10)
        if what < 5:
            return [*self._protocol_name("ASAP1B_CCP"), *grammar.body("CCP_SIGNAL")]
        if what < 8:
            return [*self._protocol_name("XCP"), *grammar.body("XCP_SIGNAL")]
        return [
            *self._protocol_name(self.dice.pick(_UNKNOWN_NAMES)),
            *grammar.body("OTHER_PROTOCOL"),
        ]

    def _segment_if_data(self, grammar):
        if self.dice.chance(0.5):
            return [
                *self._protocol_name("ASAP1B_CCP"),
                *grammar.items("ADDRESS_MAPPING addr addr int"),
            ]
        return self._other_if_data(grammar)

    def _other_if_data(self, grammar):
        """An interface block where it fills nothing."""
        name = self.dice.pick(["CCP", "XCP", "GMLAN", "OTHER", "OTHER"])
        if name == "OTHER":
            return [self.dice.pick(_UNKNOWN_NAMES), *grammar.body("OTHER_PROTOCOL")]
        thin = Grammar(
            self._words,
            {**core_blocks.LAYOUTS, **protocol_blocks.LAYOUTS, **_IF_DATA_LAYOUTS},
            {**core_blocks.MAKERS, **protocol_blocks.MAKERS},
            fullness=0.1,
        )
        return [
            *self._protocol_name({"CCP": "ASAP1B_CCP", "GMLAN": "ASAP1B_GMLAN"}.get(name, name)),
            *thin.body(name),
        ]

    def _content_blocks(self):
        dice, shape = self.dice, self.shape
        names = []
        names += ["MEASUREMENT"] * dice.between(0, shape.signals)
        names += ["CHARACTERISTIC"] * dice.few(shape.signals)
        for _ in range(dice.between(0, shape.conversions)):
            names.append(dice.pick(["COMPU_METHOD"] * 5 + ["COMPU_METHOD_MIXED"]))
        for _ in range(dice.between(0, shape.conversions)):
            names.append(dice.pick(["COMPU_TAB", "COMPU_VTAB", "COMPU_VTAB_RANGE"]))
        others = [
            "UNIT", "UNIT", "RECORD_LAYOUT", "RECORD_LAYOUT", "GROUP", "FUNCTION", "FRAME",
            "USER_RIGHTS", "AXIS_PTS", "VARIANT_CODING",
        ]
        for _ in range(dice.few(shape.others)):
            names.append(dice.pick(others))
        if dice.odd():
            names.append(
                dice.pick(
                    ["TYPEDEF_MEASUREMENT", "INSTANCE", "MAP_LIST", "AR_COMPONENT", "UNKNOWN"]
                )
            )
        return [self._content_block(name) for name in dice.shuffled(names)]

    def _content_block(self, name):
        if name == "COMPU_METHOD_MIXED":
            return self._core.enclosed("COMPU_METHOD", self._core.body(name))
        return self._core.block(name)

    def _any_words(self):
        dice = self.dice
        words = [
            "struct", "{", "uint", ";", '"IF_DATA"', "taggedunion", "(", ")", "*", "}",
            *LONE_CHARACTERS,
        ]
        return [dice.pick(words) for _ in range(dice.below(8))]
