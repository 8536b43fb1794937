"""Descriptions in several files, and the map that leads back to them."""

from generator.dice import Dice

# Folders below that of the description; the second one is given as one to look in.
FOLDERS = ("parts", "shared")


def in_pieces(text, seed):
    """{name: text} of files that include each other and are together the text, main.a2l first."""
    dice = Dice(seed)
    files = {"main.a2l": text.split("\n")}
    for number in range(dice.between(1, 4)):
        name = dice.pick(list(files))
        lines = files[name]
        if len(lines) < 4:
            continue
        begin = dice.below(len(lines) - 2) + 1
        end = dice.between(begin, len(lines) - 1)
        # Names are relative to the file that includes, or to the folder that is looked in. A file
        # of a folder stays in it, and so do lines that include others.
        folder = dice.pick(["", *FOLDERS])
        if "/" in name or any("/include" in line for line in lines[begin:end]):
            folder = name.rpartition("/")[0]
        part = f"part{number}.inc"
        path = f"{folder}/{part}" if folder else part
        shown = part if folder in ("", "shared") or "/" in name else path
        files[path] = lines[begin:end]
        quoted = dice.pick([shown, f'"{shown}"'])
        files[name] = [*lines[:begin], f"/include {quoted}", *lines[end:]]
    return {name: "\n".join(lines) for name, lines in files.items()}


def wrong_places(output, rows, files):
    """What a map says wrongly: (output line, file, line) as far as the lines are copied."""
    lines = output.split("\n")
    sources = {name: text.split("\n") for name, text in files.items()}
    found, covered = [], 0
    for row in rows.splitlines():
        first, count, name, line = row.split("\t")
        if int(first) != covered + 1:
            found.append(f"row {row!r} does not follow line {covered}")
        covered = int(first) + int(count) - 1
        for offset in range(int(count)):
            made = lines[int(first) - 1 + offset]
            source = sources.get(name.removeprefix("./"), [])
            there = source[int(line) - 1 + offset : int(line) + offset]
            if not there or not _may_become(there[0], made):
                found.append(f"line {int(first) + offset} {made!r} is not of {name}:{there}")
    if covered < len(lines) - 1:
        found.append(f"{len(lines) - 1 - covered} lines at the end are not in the map")
    return found


# What stands in lines that need not be copied as they are.
_CHANGED = (
    "ASAP2_VERSION", "/include", "TYPEDEF_", "STRUCTURE_COMPONENT", "INSTANCE", "OVERWRITE",
    "_MEASUREMENT", "_CHARACTERISTIC",
)  # fmt: skip


def _may_become(source, made):
    return source == made or any(word in source for word in _CHANGED)
