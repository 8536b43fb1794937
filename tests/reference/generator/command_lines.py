"""Command lines of the three commands, and others."""

from generator.library_versions import selection

OUTPUT_NAMES = [
    "out.cfginclude", "out.cfginclude", "out.cfginclude", "out/ecu.cfginclude", "a.b.c", "noext",
    "ends.", "./x.cfg", "out/../y.inc", "missing/x.cfginclude", "out.dir/noext", ".hidden",
    "old.cfginclude", "out",
]
_STATIONS = ["Bench", "", "a b", "-z", "<x>", "St\xe4tion", "%s", "cfg_generated_on=12", "\xc2\xb0"]
_PREFIXES = ["P_", "", "TAB::", "x y", "-i", "pre.", "\xe4", "NO_COMPU_"]
_USER_FILES = [
    "notes.txt", "data/notes.txt", "data/a.bin", "script.sh", "\xc3\xa4.txt", "\xe4.txt", "a\\b.txt",
    "n" * 150 + ".txt", "missing.txt", "", "empty", "ecu.a2l",
    "data", ".",
]
_PACKAGES = [
    "pack.zpki", "out/pack.zpki", "pack", "", "missing/p.zpki", "old.zpki", "out", "a.b.zpki",
]


def plain_convert(dice, description):
    """`convert` as most users call it."""
    arguments = ["convert", description, "out.cfginclude"]
    arguments += dice.pick([[], [], ["-i"], ["-z"], ["-z", "-i"]])
    arguments += dice.pick([[], [], ["-n", "Station"]])
    arguments += dice.pick([[], [], ["-p", "P_"]])
    arguments += dice.pick(
        [
            [],
            ["-l", "sigTrak=1.5.4"],
            ["-l", "sigTrak=1.6.0"],
            ["-l", "sigTrak=2018.10.10"],
            ["-l", "sigTrak=2017.06.0"],
            ["-l", "sigTrak=2021.10.0"],
            ["-l", "sigTrak=2022.10.1"],
        ]
    )
    return arguments


def convert(dice, description):
    """`convert` with any options in any order."""
    arguments = [[description], [dice.pick(OUTPUT_NAMES)]]
    if dice.chance(0.1):
        arguments.append([dice.pick(["third", "-x", "", "--", "-Z", "-L"])])
    options = [
        lambda: ["-n", dice.pick(_STATIONS)],
        lambda: ["-p", dice.pick(_PREFIXES)],
        lambda: ["-l", selection(dice)],
        lambda: ["-z"],
        lambda: ["-i"],
        lambda: ["-epk-file-prefix"],
        lambda: ["-userfiles", user_files(dice)],
        lambda: ["-zpki", dice.pick(_PACKAGES)],
    ]
    for _ in range(dice.few(8)):
        arguments.append(dice.pick(options)())
    return _spoiled(dice, ["convert", *_flat(_mostly_in_order(dice, arguments))])


def package(dice, description):
    """`convert` into a package."""
    arguments = ["convert", description, dice.pick(OUTPUT_NAMES[:8])]
    if dice.chance(0.7):
        arguments += ["-userfiles", user_files(dice)]
        arguments += ["-epk-file-prefix"] if dice.chance(0.5) else []
    if dice.chance(0.6) or len(arguments) == 3:
        arguments += ["-zpki", dice.pick(_PACKAGES)]
    return arguments + dice.pick([[], [], ["-z"], ["-i"], ["-l", "sigTrak=2022.10.1"]])


def plain_compare(dice, old, new):
    """`compare` as most users call it."""
    return ["compare", old, new] + ["-v"] * dice.weighted({1: 7, 0: 3})


def compare(dice, old, new):
    arguments = [[old], [new]] + [["-v"]] * dice.weighted({1: 14, 0: 6, 2: 3})
    if dice.chance(0.05):
        arguments.append([dice.pick(["third.a2l", "-x", "", "-V"])])
    return _spoiled(dice, ["compare", *_flat(_mostly_in_order(dice, arguments))])


def decompress(dice, document):
    arguments = [
        document,
        dice.pick(
            [
                "plain.cfginclude", "plain.cfginclude", "out/p.cfginclude", "old.cfginclude",
                "missing/x",
                document,
                "out",
            ]
        ),
    ]
    if dice.chance(0.05):
        arguments = dice.pick(
            [[], arguments[:1], [*arguments, "-z"], ["absent", "x"], ["", "x"], [document, ""]]
        )
    return ["decompress", *arguments]


def user_files(dice):
    items = [
        dice.pick(_USER_FILES[:8]) if dice.chance(0.8) else dice.pick(_USER_FILES)
        for _ in range(dice.between(1, 3))
    ]
    return ",".join(items) + ("," if dice.chance(0.1) else "")


def _mostly_in_order(dice, arguments):
    return dice.shuffled(arguments) if dice.chance(0.3) else arguments


def _flat(arguments):
    return [word for group in arguments for word in group]


def _spoiled(dice, arguments):
    """Sometimes one word more, less or twice, or another command."""
    if dice.chance(0.9):
        return arguments
    place = dice.below(len(arguments))
    what = dice.below(5)
    if what == 0:
        return arguments[:place]
    if what == 1:
        return arguments[:place] + arguments[place + 1 :]
    if what == 2:
        return arguments[: place + 1] + arguments[place:]
    if what == 3:
        return arguments + [dice.pick(["-n", "-p", "-l", "-zpki", "-userfiles", "-z", "-v", "-i"])]
    return [
        dice.pick(["CONVERT", "help", "-h", "", "Compare", "decompress ", "convert"]),
        *arguments[1:],
    ]
