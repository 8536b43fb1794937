#!/usr/bin/env python3
"""Prepares every description of the examples and of the recorded runs.

    inputs_test.py --preparer quillmark-a2l --reader quillmark [DIRECTORY|FILE]...

What `convert` reads comes back byte for byte. What it does not read is prepared into something that
it reads as far as its words and blocks go, unless a loss or an error was told. Preparing what has
been prepared changes nothing.
"""

import argparse
import pathlib
import sys
import tempfile

_PROJECT = pathlib.Path(__file__).resolve().parents[2]
_FOLDERS = (_PROJECT / "examples", _PROJECT / "tests" / "cli")

sys.path.insert(0, str(_PROJECT / "tests" / "reference"))

from harness.preparing import Programs, mistakes


def descriptions(places):
    for place in places:
        if place.is_dir():
            yield from sorted(path for path in place.rglob("*.a2l") if path.is_file())
        else:
            yield place


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--preparer", required=True, type=pathlib.Path)
    parser.add_argument("--reader", required=True, type=pathlib.Path)
    parser.add_argument("places", nargs="*", type=pathlib.Path, default=_FOLDERS)
    options = parser.parse_args()
    count, failed = 0, 0
    with tempfile.TemporaryDirectory(prefix="quillmark-prepared-") as directory:
        scratch = pathlib.Path(directory)
        programs = Programs(options.preparer.resolve(), options.reader.resolve())
        for path in descriptions(options.places):
            found = mistakes(path.resolve(), programs, scratch)
            count += 1
            failed += bool(found)
            for line in found:
                print(f"{path}: {line}")
    print(f"{count} descriptions, {failed or 'none'} failed")
    return 1 if failed or not count else 0


if __name__ == "__main__":
    sys.exit(main())
