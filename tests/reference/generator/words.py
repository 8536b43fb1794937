"""Single tokens: names, texts, numbers, and those that stand where others are expected."""

from generator import keywords

NAMES = {
    "signal": [
        "speed", "rpm", "temp_1", "Sig.x[3]", "flow|b", "s", "S", "x(1)*", "1a.b[2]", "t\xe4st",
        "v-1/2",
    ],
    "conversion": [
        "CM_lin", "CM_rat", "CM_tab", "CM_verb", "CM_form", "NO_COMPU_METHOD", "cm.1", "s",
    ],
    "table": ["T1", "T2", "Tab[0]", "s"],
    "unit": ["kmh", "degC", "U1", "1ms", "s"],
    "layout": ["RL_U8", "RL_S16", "RL_F32", "RL_none", "s"],
    "group": ["Engine", "Fuel", "Air", "s"],
    "function": ["LambdaCtl", "IdleCtl", "s"],
    "frame": ["Abs1", "Abs2"],
    "segment": ["CalData", "Code"],
    "project": ["P", "Project_1", "pro.ject"],
    "module": ["ECU_1", "M1", "m-2", "ECU_A"],
    "any": ["alpha", "beta", "GAMMA", "d_1", "e.2", "f[0]"],
}

# Names that are read as something else, in whole or in part.
ODD_NAMES = [
    "EPK", "USER", "NUMBER", "ECU", "CODE", "VERSION", "NULL", "1ms", "0x1Fg", "12ab", "5", "1.5e",
    '"quoted"', "/x", "*star", "(", "a+b", "a%b", "a#b", "a,b", "a:b", "\xc4rger", "na\xdf",
    "b\xe9", "TAB::T1", "CM::x", "/begin", "/end", "IF_DATA", "DAQ", "RESERVED", "-5", ".5x", "_",
    "/", "*", "-", "\xff\xff", "A\xff", "\x00",
]

TEXTS = [
    "", "", "text", "a longer text", "V-4.2_b c", "km/h", "%", "\xc2\xb0C", "\xb0C", "m/s^2",
    "rpm", "-", "1", "<tag>", "key=value",
]

# Each is written between quotes as it stands.
ODD_TEXTS = [
    'say ""hi""', r"back\\slash", r"q\"uote", r"line\nfeed", r"tab\tx\ry", "raw\nfeed",
    "raw\r\nfeed", "cont\\\ninued", "/* no comment */", "// none", "/end MODULE",
    "/begin MEASUREMENT x", "NUL\x00here", "\x00", "0xff: \xff\xff", "\xff", "'single'", "\x01\x02",
    r"\x", r"\\", "\t", " ", "  blanks  ", "%d %s %n", "\xef\xbb\xbf", "\x80\xfe", "</signal>",
]

PLAIN_NUMBERS = [
    "0", "1", "2", "3", "4", "5", "8", "10", "16", "100", "255", "1000", "0x10", "0x1000", "0xFF",
    "-1", "-40",
]
REAL_NUMBERS = [
    "0.0", "0.5", "1.0", "2.5", "-0.5", "-1.2", "2.9", "-2.9", "1e3", "1.5E-3", "3.14159265",
    "1234567.8", "100.0",
]

# Numbers that the lexer reads, though not all as they look.
ODD_NUMBERS = [
    "0X1f", "0x", "-0x10", "-0x", "0xFFFFFFFF", "0x80000000", "0x7FFFFFFF", "0x100000001",
    "0xfffffffffffffffff", "-0xFFFFFFFF", "4294967295", "4294967296", "2147483647", "2147483648",
    "-2147483648", "-2147483649", "9223372036854775807", "9223372036854775808",
    "99999999999999999999999", "-99999999999999999999999", "007", "-0", "00", ".5",
    "1.", "-1.", "1.e2", ".5e1", "1e5", "1E+5", "1e-5", "-0.0", "0.0", "1e400", "-1e400",
    "1e-400", "2.4999999", "0.1", "123456.5", "1234567", "1e10", "-1e10", "4294967296.0",
    "-2147483649.5", "2147483647.9", "1e15", "1e16", "0.0001", "0.00001", "1e300", "5e-324",
    "1\xff2", "-\xff3", "0\xffx10",
    "1" * 400,
    "0." + "3" * 600,
    "0x" + "0" * 700 + "12",
]

# What stands where a number is expected, and is none.
NO_NUMBERS = [
    "-", ".", "-.5", "00x1", "--1", "+1", "- 1", "10x3", "1.5e", "1.5e+", "0x1G", "1ms", "1.2.3",
    "1..2", "-x", ".x", "1-2", "#", "%", "NULL", "nan", "inf", '"5"', '""', "VARIABLE", "/end", "'",
    "?", "\x80",
    "1.0f", "0xg", "1e+x", "00x", "1_000",
]

# Characters that start no token, and share their numbers with keywords.
LONE_CHARACTERS = [
    "#", "%", "!", "$", "&", "'", ",", ":", ";", "<", "=", ">", "?", "@", "\x01", "\x02", "(", ")",
    "{", "}", "~", "[", "]", "^", "`", "\\", "|", "+", "\x7f", "\x80", "\xb5", "\xfe", "\xc4",
    "\x0b", "\x0c",
]


# What names, numbers and texts are put together from at random.
_NAME_CHARACTERS = "aaBz019__....--//++[]||(())**%#\xc4\xd6\xdc\xe4\xf6\xfc\xdf\xff:"
_NUMBER_CHARACTERS = "001234599....eExX--+afF_z\xff"
_TEXT_PIECES = [
    '""', "\\\\", "\\n", "\\r", "\\t", "\\\n", '\\"', "\\x", "\n", "\r\n", "\x00", "\xff", "a",
    "b ", " ", "/*", "//", "/end", "\xe4", "%",
]


class Words:
    """Makes tokens, each a piece of the description's text."""

    def __init__(self, dice):
        self.dice = dice

    def name(self, kind="any"):
        dice = self.dice
        if dice.odd():
            return self._odd_name()
        if dice.chance(0.01):
            return dice.pick(NAMES["any"]) + "_" + "long" * dice.between(20, 300)
        return dice.pick(NAMES[kind])

    def _odd_name(self):
        what = self.dice.below(10)
        if what < 3:
            return self.dice.pick(keywords.ALL)
        if what < 6:
            return self._composed(_NAME_CHARACTERS, 8)
        return self.dice.pick(ODD_NAMES)

    def _composed(self, pieces, most):
        return "".join(self.dice.pick(pieces) for _ in range(self.dice.between(1, most)))

    def text(self):
        dice = self.dice
        if dice.odd():
            return self._odd_text()
        if dice.unusual():
            return self._unusual_text()
        return '"' + dice.pick(TEXTS) + '"'

    def _unusual_text(self):
        if self.dice.chance(0.5):
            return '"' + self.dice.pick(ODD_TEXTS) + '"'
        return '"' + self._composed(_TEXT_PIECES, 6) + '"'

    def _odd_text(self):
        dice = self.dice
        what = dice.below(10)
        if what < 6:
            return self._unusual_text()
        if what == 6:
            return "NULL"
        if what == 7:
            return '"' + dice.pick(TEXTS) + dice.pick(ODD_TEXTS) * dice.between(1, 130) + '"'
        if what == 8:
            return dice.pick(["noquotes", "5", "1.5", "/end", '"open', "null"])
        return self._odd_name()

    def unquoted(self):
        """A format or unit, which may stand without quotes."""
        dice = self.dice
        if dice.odd():
            return dice.pick(
                [
                    "%6.2", "km/h", "m/s", "-", "%", "%3.1*x", "[deg]", "1/min", "\xb0C",
                    "\xc4\xd6", "a|b", "/end", "*", ".5", "NULL", "#",
                ]
            )
        if dice.chance(0.15):
            return dice.pick(["%6.2", "rpm", "degC", "%8.3", "V", "5.2", "%"])
        return self.text() if dice.chance(0.5) else '"%' + str(dice.below(9)) + '.2"'

    def integer(self):
        dice = self.dice
        if dice.odd():
            return self._odd_number()
        if dice.unusual():
            return dice.pick(ODD_NUMBERS)
        return dice.pick(PLAIN_NUMBERS) if dice.chance(0.8) else str(dice.between(-300, 70000))

    def number(self):
        if self.dice.chance(0.5):
            return self.integer()
        if self.dice.odd():
            return self._odd_number()
        return self.dice.pick(REAL_NUMBERS)

    def small(self):
        """A number that tells lists, events or pages apart."""
        if self.dice.odd():
            return self._odd_number()
        return str(self.dice.below(5))

    def address(self):
        dice = self.dice
        if dice.odd():
            return self._odd_number()
        if dice.unusual():
            return dice.pick(ODD_NUMBERS)
        return dice.pick(["0x{:X}", "0x{:x}", "0x{:08X}", "{}"]).format(
            dice.pick([0, 0x1000, dice.below(1 << 16), dice.below(1 << 32)])
        )

    def _odd_number(self):
        what = self.dice.below(12)
        if what < 6:
            return self.dice.pick(ODD_NUMBERS)
        if what < 8:
            return self._composed(_NUMBER_CHARACTERS, 7)
        if what < 10:
            return self.dice.pick(REAL_NUMBERS)
        return self.dice.pick(NO_NUMBERS)

    def one_of(self, words):
        """One of an enumerated parameter's words, or another."""
        dice = self.dice
        if dice.odd():
            return dice.pick(
                [
                    dice.pick(keywords.ALL),
                    dice.pick(keywords.ALL),
                    "UNKNOWN_WORD", "1", '"text"',
                    dice.pick(words).lower(),
                    dice.pick(LONE_CHARACTERS),
                ]
            )
        return dice.pick(words)

    def anything(self):
        """A token of any kind."""
        dice = self.dice
        what = dice.below(12)
        if what < 3:
            return dice.pick(keywords.ALL)
        if what < 5:
            return dice.pick(["/begin", "/end", "/include", '"', "/*", "//", "*/"])
        makers = [
            lambda: dice.pick(ODD_NAMES),
            lambda: dice.pick(ODD_NUMBERS),
            lambda: dice.pick(NO_NUMBERS),
            lambda: '"' + dice.pick(ODD_TEXTS) + '"',
            lambda: dice.pick(LONE_CHARACTERS),
            self.integer,
            self.name,
        ]
        return makers[what - 5]()
