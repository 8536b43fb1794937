#!/usr/bin/env python3
"""Structures that were worked out on paper: does a program, or the second expansion, get the same?

    structures_test.py --program FILE      `FILE prepare` on every case
    structures_test.py                     the expansion of tests/reference/structures

A case is a folder of structures/: `in.a2l`, perhaps `options`, one a line, and `expected`, one
statement a line, `#` before a remark:

    status N                               the exit status (0 if nothing is said)
    KIND NAME ADDRESS [WORD=VALUE|-WORD]...
                                           an object that was not there before. A word is one of its
                                           block, or a fixed parameter as objects.py names it; VALUE
                                           are its parameters with commas between; -WORD: not there
    value NAME ADDRESS                     a single value, named and placed as `convert` does
    list OWNER NAME LIST NAME...           a list of names
    lost TEXT, error TEXT                  a finding of this kind that has the text as a word

There are no other new objects than those named, unless a `value` stands for them, no other lists
and no other losses.
"""

import argparse
import pathlib
import re
import shlex
import subprocess
import sys

_HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(_HERE.parent / "reference"))

from structures.blocks import modules, number, parse
from structures.expansion import CannotExpand, Expansion
from structures.objects import KINDS, lists_of, objects_of, values_of


_MEANING_OF_OPTIONS = {
    "": {},
    "--separator=_": {"separator": "_"},
    "--blob-arrays": {"blob_arrays": True},
}


class Result:
    """What came of a case."""

    def __init__(self, status, objects=(), lists=(), findings=()):
        self.status = status
        self.objects = list(objects)
        self.lists = list(lists)
        self.findings = list(findings)  # (lost or error, text)


def options_of_case(path):
    file = path.parent / "options"
    return file.read_text().split() if file.exists() else []


def of_program(program, path):
    done = subprocess.run(
        [program, "prepare", *options_of_case(path), path],
        capture_output=True,
        timeout=20,
        check=False,
    )
    findings = re.findall(r":(\d+: (?:lost|error): .*)", done.stderr.decode())
    tree = parse(done.stdout.decode())
    return Result(
        done.returncode,
        [one for module in modules(tree) for one in objects_of(module)],
        [one for module in modules(tree) for one in lists_of(module)],
        [(line.split(": ")[1], line) for line in findings],
    )


def of_reference(path):
    try:
        expansions = [
            Expansion(module, **_MEANING_OF_OPTIONS[" ".join(options_of_case(path))])
            for module in modules(parse(path.read_text()))
        ]
    except CannotExpand:
        return Result(2)
    losses = [("lost", loss) for one in expansions for loss in one.losses]
    return Result(
        1 if losses else 0,
        [one for expansion in expansions for one in expansion.objects],
        [one for expansion in expansions for one in expansion.lists],
        losses,
    )


def mistakes(path, result, has_errors):
    """What of `expected` does not hold."""
    statements = [
        shlex.split(line, comments=True)
        for line in (path.parent / "expected").read_text().splitlines()
    ]
    statements = [words for words in statements if words]
    status = next((int(words[1]) for words in statements if words[0] == "status"), 0)
    if result.status != status:
        return [f"status {result.status} instead of {status}: {result.findings}"]
    found = []
    if has_errors or status < 2:
        found += _untold(statements, result)
    if status < 2:
        found += _wrong_objects(path, statements, result)
        found += _wrong_lists(statements, result)
    return found


def _untold(statements, result):
    texts = {
        kind: [text for its, text in result.findings if its == kind] for kind in ("lost", "error")
    }
    found = [
        f"{words[0]} {words[1]} is not told: {texts[words[0]]}"
        for words in statements
        if words[0] in texts and not any(_has_word(text, words[1]) for text in texts[words[0]])
    ]
    losses = sum(words[0] == "lost" for words in statements)
    if len(texts["lost"]) != losses:
        found.append(f"{len(texts['lost'])} losses instead of {losses}: {texts['lost']}")
    return found


def _has_word(text, word):
    return re.search(rf"(?<![\w.\]]){re.escape(word)}(?![\w.\[])", text) is not None


def _wrong_objects(path, statements, result):
    before = {one.name for module in modules(parse(path.read_text())) for one in objects_of(module)}
    new = {one.name: one for one in result.objects if one.name not in before}
    values = {name: address for one in new.values() for name, address, _ in values_of(one)}
    found = []
    known = set()
    for words in statements:
        if words[0] in KINDS:
            known.add(words[1])
            found += _wrong_object(words, new.get(words[1]))
        elif words[0] == "value":
            known |= {name for name in new if words[1].startswith(name + "[") or words[1] == name}
            if values.get(words[1]) != number(words[2]):
                found.append(f"{words[1]} is at {values.get(words[1])} instead of {words[2]}")
    return found + [f"{name} is there" for name in new if name not in known]


def _wrong_object(words, one):
    kind, name, address, *details = words
    if one is None:
        return [f"{name} is missing"]
    found = []
    if one.kind != kind or one.address != number(address):
        found.append(f"{name} is a {one.kind} at {one.address:#x} instead of {address}")
    there = {key: (value,) for key, value in one.fixed.items()}
    there |= {"text": (one.text,), **one.options}
    there |= {block.keyword: tuple(block.words()) for block in one.blocks}
    for detail in details:
        key, _, wanted = detail.partition("=")
        if detail.startswith("-"):
            if detail[1:] in there:
                found.append(f"{name} has {detail[1:]}")
        elif key not in there or not _is_same(there[key], wanted.split(",") if wanted else []):
            found.append(f"{name}: {key} is {there.get(key)} instead of {wanted}")
    return found


def _is_same(tokens, wanted):
    if tokens == ('""',):
        tokens = ()
    return [_plain(token) for token in tokens] == [_plain(token) for token in wanted]


def _plain(token):
    try:
        return number(token)
    except ValueError:
        return token.strip('"')


def _wrong_lists(statements, result):
    wanted = sorted(
        (f"{words[1]} {words[2]}", words[3], words[4:])
        for words in statements
        if words[0] == "list"
    )
    if sorted(result.lists) != wanted:
        return [f"lists are {result.lists} instead of {wanted}"]
    return []


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--program")
    parser.add_argument("cases", nargs="*", type=pathlib.Path)
    options = parser.parse_args()
    cases = options.cases or sorted((_HERE / "structures").iterdir())
    failed = 0
    for case in cases:
        path = case / "in.a2l"
        result = of_program(options.program, path) if options.program else of_reference(path)
        found = mistakes(path, result, has_errors=options.program is not None)
        failed += bool(found)
        for line in found:
            print(f"{case.name}: {line}")
    print(f"{len(cases)} cases, {failed or 'none'} failed")
    return 1 if failed or not cases else 0


if __name__ == "__main__":
    sys.exit(main())
