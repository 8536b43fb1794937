"""Cases: the files of a directory and the runs of the program in it."""

import dataclasses

from generator import command_lines, include_files, library_versions
from generator.description import Description, Shape
from generator.dice import Dice
from generator.layout_of_text import text_of
from generator.mutation import Mutation

_FIRST_SECOND = 1_500_000_000


@dataclasses.dataclass
class File:
    """A file before the first run. `modified` is in seconds since 1970."""

    data: bytes
    mode: int = 0o644
    modified: int = _FIRST_SECOND


@dataclasses.dataclass
class Case:
    """`files` by relative name; `commands` are argument lists without the program's name.

    Arguments are Latin-1 texts, one character a byte. `time_zone` is a value of TZ.
    """

    kind: str
    files: dict
    directories: list
    commands: list
    time_zone: str = "UTC0"


_TIME_ZONES = ["UTC0", "UTC0", "CET-1", "EST5", "NPT-5:45", "NST3:30", "<+14>-14"]
_DIRECTORIES = ["out", "out.dir", "data", "tmp"]


def make_case(seed, number):
    """The case of that seed and number."""
    dice = Dice(f"{seed}-{number}")
    kind = dice.weighted({kind: weight for kind, (weight, _) in _KINDS.items()})
    case = Case(kind, {}, list(_DIRECTORIES), [], dice.pick(_TIME_ZONES))
    case.files["sigtrakVersions.xml"] = File(library_versions.plain_version_file())
    _KINDS[kind][1](dice, case)
    return case


def _bytes(text):
    return text.encode("latin-1")


def _description(dice, oddness, shape=None):
    """The tokens of a description of that oddness."""
    dice.oddness = oddness
    dice.variety = dice.pick([0, 0.02, 0.1])
    return Description(dice, shape or Shape()).tokens()


def _input_name(dice):
    if dice.chance(0.9):
        return "ecu.a2l"
    return dice.pick(
        [
            "data/ecu.a2l", "e cu.a2l", "./ecu.a2l", "data\\ecu.a2l", "e'cu.a2l",
            "./" * 250 + "ecu.a2l",
            "\xe4.a2l", "data/../ecu.a2l", "-p.a2l",
        ]
    )


def _write_description(dice, case, tokens, broken_bytes=0):
    text = text_of(tokens, dice)
    for _ in range(broken_bytes):
        text = Mutation(dice).break_text(text)
    name = _input_name(dice)
    case.files[name] = File(_bytes(text))
    if dice.chance(0.2):
        case.files["out.cfginclude"] = File(b"an older file\n")
    return name


# Mostly what the include file tells: signals and conversions.
_WRITTEN = Shape(signals=10, conversions=7, others=4, interface_fullness=0.05)


def _plain(dice, case):
    shape = dice.pick([_WRITTEN, Shape()])
    name = _write_description(dice, case, _description(dice, dice.pick([0, 0, 0.002, 0.01]), shape))
    case.commands = [command_lines.plain_convert(dice, name)]


def _odd(dice, case):
    shape = dice.pick([_WRITTEN, Shape()])
    oddness = dice.pick([0.005, 0.01, 0.02, 0.05])
    name = _write_description(dice, case, _description(dice, oddness, shape))
    case.commands = [command_lines.plain_convert(dice, name)]


def _broken(dice, case):
    tokens = _description(dice, dice.pick([0, 0, 0.01]))
    bytes_too = dice.chance(0.4)
    Mutation(dice).break_tokens(tokens, dice.between(0 if bytes_too else 1, 3))
    name = _write_description(dice, case, tokens, dice.between(1, 2) if bytes_too else 0)
    case.commands = [command_lines.plain_convert(dice, name)]


def _noise(dice, case):
    """Hardly a description: what the lexer makes of anything."""
    tokens = _description(dice, 0.3, Shape(signals=1, conversions=1, others=1))
    del tokens[dice.between(1, 60) :]
    Mutation(dice).break_tokens(tokens, dice.below(4))
    name = _write_description(dice, case, tokens, dice.below(3))
    case.commands = [dice.pick([command_lines.plain_convert(dice, name), ["compare", name, name]])]


_COMPARED = Shape(
    signals=1,
    conversions=0,
    others=0,
    interface_fullness=0.35,
    protocols=("CCP", "CCP", "XCP", "XCP", "XCP", "CCP", "XCP+CCP", "CCP+XCP", "GMLAN", ""),
)


def _pair(dice, case):
    old = _description(dice, dice.pick([0, 0, 0, 0.003]), _COMPARED)
    dice.variety = 0
    new = list(old)
    Mutation(dice).tweak(new, dice.few(10))
    case.files["old.a2l"] = File(_bytes(text_of(old, dice, tidy=True)))
    case.files["new.a2l"] = File(_bytes(text_of(new, dice, tidy=True)))
    case.commands = [command_lines.plain_compare(dice, "old.a2l", "new.a2l")]


def _odd_pair(dice, case):
    tokens = []
    for name in ("old.a2l", "new.a2l"):
        if not tokens or dice.chance(0.5):
            tokens = _description(dice, dice.pick([0, 0.01, 0.05]), _COMPARED)
        changed = list(tokens)
        Mutation(dice).break_tokens(changed, dice.few(3))
        case.files[name] = File(_bytes(text_of(changed, dice)))
    names = [
        dice.pick(["old.a2l", "old.a2l", "new.a2l", "absent.a2l"]),
        dice.pick(["new.a2l", "new.a2l", "old.a2l", "absent.a2l"]),
    ]
    case.commands = [command_lines.compare(dice, *names)]


def _decompress(dice, case):
    case.files["packed.cfginclude"] = File(include_files.compressed_document(dice))
    if dice.chance(0.2):
        case.files["old.cfginclude"] = File(b"an older file\n")
    case.commands = [command_lines.decompress(dice, "packed.cfginclude")]


def _round_trip(dice, case):
    name = _write_description(dice, case, _description(dice, 0, Shape(signals=12)))
    library = dice.pick([[], ["-l", "sigTrak=2022.10.1"]])
    case.commands = [
        ["convert", name, "packed.cfginclude", "-z", *library],
        ["decompress", "packed.cfginclude", "plain.cfginclude"],
        ["convert", name, "direct.cfginclude", *library],
    ]


def _versions(dice, case):
    case.files["sigtrakVersions.xml"] = File(library_versions.version_file(dice))
    if dice.chance(0.05):
        del case.files["sigtrakVersions.xml"]
    name = _write_description(
        dice,
        case,
        _description(dice, 0, Shape(signals=2, conversions=2, others=0, interface_fullness=0.1)),
    )
    case.commands = [["convert", name, "out.cfginclude", "-l", library_versions.selection(dice)]]


def _options(dice, case):
    _add_user_files(dice, case)
    name = _write_description(
        dice,
        case,
        _description(dice, 0, Shape(signals=1, conversions=1, others=0, interface_fullness=0.1)),
    )
    if dice.chance(0.05):
        name = dice.pick(["absent.a2l", "", "missing/ecu.a2l"])
    case.commands = [command_lines.convert(dice, name)]
    if dice.chance(0.03):
        case.commands = [
            dice.pick(
                [
                    [],
                    ["convert"],
                    ["compare"],
                    ["decompress"],
                    ["help"],
                    ["-v"],
                    [""],
                    ["convert", ""],
                ]
            )
        ]


def _package(dice, case):
    _add_user_files(dice, case)
    name = _write_description(
        dice,
        case,
        _description(dice, 0, Shape(signals=1, conversions=1, others=0, interface_fullness=0.1)),
    )
    case.commands = [command_lines.package(dice, name)]


def _add_user_files(dice, case):
    names = {
        "notes.txt": b"notes\n",
        "data/notes.txt": b"other notes\n",
        "\xc3\xa4.txt": b"UTF-8\n",
        "\xe4.txt": b"Latin-1\n",
        "a\\b.txt": b"backslash\n",
        "n" * 150 + ".txt": b"long\n",
        "data/a.bin": dice.bytes(100) * dice.pick([1, 100]),
        "script.sh": b"#!/bin/sh\n",
        "empty": b"",
    }
    for name, data in names.items():
        if dice.chance(0.9):
            case.files[name] = File(
                data, dice.pick([0o644, 0o600, 0o755, 0o444]), _FIRST_SECOND + dice.below(100_000)
            )
    if dice.chance(0.1):
        case.files["old.zpki"] = File(b"an older package\n")


_KINDS = {
    "plain": (26, _plain),
    "odd": (19, _odd),
    "broken": (13, _broken),
    "noise": (5, _noise),
    "pair": (16, _pair),
    "odd pair": (4, _odd_pair),
    "decompress": (5, _decompress),
    "round trip": (2, _round_trip),
    "versions": (6, _versions),
    "options": (3, _options),
    "package": (4, _package),
}
