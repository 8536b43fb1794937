#!/usr/bin/env python3
"""Tries what docs/a2l-support.md says of each part of a description: used, or without effect.

    parts_test.py PROGRAM SOURCE_DIRECTORY

The descriptions in parts/ have every part on a line of its own. Each part is taken away, and each of its
values is changed; `convert` and `compare` have to notice one of that if the page calls the part used,
and none if it says that the part is without effect.
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

PROGRAM, SOURCE = (Path(argument).resolve() for argument in sys.argv[1:3])

# The tables that a description is about, by the heading or the bold line before them.
DESCRIPTIONS = {
    "core.a2l": ("Outside of modules", "MODULE"),
    "xcp.a2l": ("XCP",),
    "ccp.a2l": ("ASAP1B_CCP",),
}

# Words of the tables that parts/ does not have as a part of its own.
NOT_TRIED = {
    *("PROJECT", "MODULE", "ASAP2_VERSION", "/include", "/end"),  # what makes it a description
    *("DERIVED", "EXTENDED_SI"),  # a parameter of UNIT
    "DAQ_RESUME_SUPPORTED",  # another spelling
    "IF_DATA",  # has tables of its own
    "-v",  # an option
    *("KP_BLOB", "DP_BLOB", "ADDRESS_MAPPING", "ADDR_MAPPING"),  # of signals and memory segments
}


class Row:
    """One line of a table: the words of its cells "Used" and "Without effect"."""

    def __init__(self, used, without):
        self.used = set(re.findall(r"`([^`]+)`", used))
        self.without = set(re.findall(r"`([^`]+)`", without))
        self.tried = set()

    def is_used(self, part):
        """None if the row does not tell."""
        used, without = (says(words, part) for words in (self.used, self.without))
        return None if used == without else used

    def untried(self):
        for word in (self.used ^ self.without) - NOT_TRIED:
            if not any(says([word], part) for part in self.tried):
                yield word


def says(words, part):
    """Whether the part is among the words, in which "..." stands for anything."""
    return any(re.fullmatch(re.escape(word).replace(r"\.\.\.", ".*"), part) for word in words)


def rows_by_block(headings):
    rows, heading = {}, ""
    for line in (SOURCE / "docs/a2l-support.md").read_text(encoding="utf-8").split("\n"):
        title = re.fullmatch(r"## (.*)|\*\*(.*)\*\*", line)
        if title:
            heading = title.group(1) or title.group(2)
        cells = [cell.strip() for cell in line.split("|")[1:-1]]
        if heading in headings and len(cells) >= 3:
            row = Row(cells[1], cells[2])
            for block in re.findall(r"`(\w+)`", cells[0]) or [cells[0]]:
                rows[block.replace("top level", "IF_DATA")] = row
    return rows


class Part:
    """One line of a description, or a block of several: its word, and the blocks around it."""

    def __init__(self, first, last, word, around):
        self.first, self.last, self.word, self.around = first, last, word, around


def parts_of(lines):
    parts, open_blocks = [], []
    for number, line in enumerate(lines):
        words = line.split()
        around = [word for word, _ in open_blocks]
        if words[0] == "/end":
            word, first = open_blocks.pop()
            parts.append(Part(first, number, word, [word for word, _ in open_blocks]))
        elif words[0] == "/begin" and words[-2] != "/end":
            open_blocks.append((words[1], number))
        else:
            parts.append(Part(number, number, words[words[0] == "/begin"], around))
    return parts


def changed_values(line):
    """The line with one of its numbers or texts changed, in every way."""
    for match in re.finditer(r'"[^"]*"|(?<=\s)(0x[0-9A-Fa-f]+|-?[0-9]+\.?[0-9]*)(?=\s|$)', line):
        value = match.group()
        if value.startswith('"'):
            other = '"changed"'
        elif value.startswith("0x"):
            other = hex(int(value, 16) + 1)
        else:
            other = str(float(value) + 1 if "." in value else int(value) + 1)
        yield line[: match.start()] + other + line[match.end() :]


class Trial:
    """What the two commands make of one description and of what is changed in it."""

    def __init__(self, lines, place):
        self.place = place
        self.lines = lines
        (place / "old.a2l").write_text("\n".join(lines) + "\n", encoding="utf-8")
        self.converted = self.convert(lines)
        if self.converted is None or self.differs():
            sys.exit(f"The description in {place} cannot be converted and compared.")

    def run(self, *arguments):
        return subprocess.run(
            [PROGRAM, *arguments], cwd=self.place, capture_output=True, check=False
        )

    def convert(self, lines):
        """The include file for the newest library, which shows most; None if it is refused."""
        (self.place / "new.a2l").write_text("\n".join(lines) + "\n", encoding="utf-8")
        if self.run("convert", "new.a2l", "out", "-l", "sigTrak=2023.4.2").returncode != 0:
            return None
        text = (self.place / "out").read_text(encoding="utf-8")
        return re.sub(r"(?m)^(#generated|cfg_generated).*\n", "", text)

    def differs(self):
        return b"No Errors." not in self.run("compare", "old.a2l", "new.a2l").stdout

    def notices(self, lines):
        converted = self.convert(lines)
        return converted is not None and (converted != self.converted or self.differs())

    def has_effect(self, part):
        before, behind = self.lines[: part.first], self.lines[part.last + 1 :]
        if self.notices(before + behind):
            return True
        own = self.lines[part.first : part.last + 1]
        return any(
            self.notices(before + own[:index] + [other] + own[index + 1 :] + behind)
            for index, line in enumerate(own)
            for other in changed_values(line)
        )


def expectation(part, rows):
    """The row that tells of the part, and whether it is used; None where nothing is told.

    What stands in a block without effect has none, whatever it is called.
    """
    within = []
    for block in reversed(part.around):
        if block in rows:
            row = rows[block]
            if any(row.is_used(each) is False for each in within):
                return row, False
            return row, row.is_used(part.word)
        within.append(block)
    return None, None


def check(name, place):
    """Tries one description and returns how many parts were tried and how many were wrong."""
    rows = rows_by_block(DESCRIPTIONS[name])
    lines = (SOURCE / "tests/docs/parts" / name).read_text(encoding="utf-8").splitlines()
    trial = Trial(lines, place)
    tried, failures = 0, 0
    for part in parts_of(lines):
        row, used = expectation(part, rows)
        if used is None:
            continue
        row.tried.add(part.word)
        tried += 1
        if trial.has_effect(part) != used:
            failures += 1
            place_of = " in ".join([part.word, *reversed(part.around)])
            print(f"{name}: the page is wrong about {place_of}")
    for block, row in rows.items():
        for word in row.untried():
            failures += 1
            print(f"{name}: {word} of {block} is not tried")
    return tried, failures


def main():
    failures = 0
    for name in DESCRIPTIONS:
        with tempfile.TemporaryDirectory() as directory:
            place = Path(directory)
            version_file = SOURCE / "examples/sigtrakVersions.xml"
            (place / "sigtrakVersions.xml").write_bytes(version_file.read_bytes())
            tried, failed = check(name, place)
            print(f"{name}: {tried} parts tried, {failed} failures")
            failures += failed
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
