#!/usr/bin/env python3
"""Compares what `quillmark-a2l prepare` makes of random structures with a second expansion.

Case NUMBER of a SEED is always the same: a description with structures, and those with which the
case of that number compares the program with the reference, of which less is known but that they
are copied where `convert` reads them. What differs is kept: the description, what was made of it,
and the differences.
"""

import argparse
import multiprocessing
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from generator.cases import make_case
from harness.preparing import Programs, mistakes
from structures.blocks import tokens_of
from structures.cases import make_text
from structures.comparison import Prepared, differences, expected_signals, signals_of
from structures.pieces import in_pieces, wrong_places

_PROJECT = pathlib.Path(__file__).resolve().parents[2]
_WORKERS = 2
_SECONDS_PER_RUN = 20
_LINES_SHOWN = 12


class Worker:
    """Judges cases; one per process."""

    def __init__(self, options):
        self._options = options
        self._scratch = tempfile.TemporaryDirectory(prefix="quillmark-structures-")
        self._root = pathlib.Path(self._scratch.name)
        self._programs = Programs(options.program, options.converter)
        shutil.copy(_PROJECT / "examples" / "sigtrakVersions.xml", self._root)

    def judge(self, number):
        """(number, account): the account is empty if nothing is different."""
        text = make_text(self._options.seed, number)
        prepared = self._prepared(text)
        found = differences(text, prepared)
        if not found and prepared.status < 2:
            found = self._with_what_is_ready(text, prepared) or self._in_pieces(text, prepared)
        if found:
            files = {
                "in.a2l": text.encode(),
                "out.a2l": prepared.text.encode(),
                "findings": prepared.findings.encode(),
            }
            return number, self._account(number, files, found)
        for name, file in make_case(self._options.seed, number).files.items():
            if name.endswith(".a2l"):
                path = self._root / "any.a2l"
                path.write_bytes(file.data)
                found = mistakes(path, self._programs, self._root)
                if found:
                    return number, self._account(number, {"in.a2l": file.data}, found)
        return number, ""

    def _prepared(self, text):
        done = subprocess.run(
            [self._options.program, "prepare"],
            input=text.encode(),
            capture_output=True,
            timeout=_SECONDS_PER_RUN,
            check=False,
        )
        return Prepared(done.returncode, done.stdout.decode(), done.stderr.decode())

    def _with_what_is_ready(self, text, prepared):
        """A second time changes nothing, and `convert` writes the signals."""
        again = self._prepared(prepared.text)
        if again.text != prepared.text or again.status != 0:
            return ["preparing it once more changes it"]
        (self._root / "ready.a2l").write_text(prepared.text, encoding="utf-8")
        done = subprocess.run(
            [self._options.converter, "convert", "ready.a2l", "out"],
            cwd=self._root,
            capture_output=True,
            timeout=_SECONDS_PER_RUN,
            check=False,
        )
        if done.returncode != 0:
            return ["convert refuses it:", *done.stdout.decode().splitlines()]
        signals = signals_of((self._root / "out").read_text())
        return [
            f"signal {name} is {signals.get(name)} instead of {expected}"
            for name, expected in expected_signals(text).items()
            if signals.get(name) != expected
        ]

    def _in_pieces(self, text, prepared):
        """From several files comes the same, and the map leads to them."""
        folder = self._root / "pieces"
        shutil.rmtree(folder, ignore_errors=True)
        files = in_pieces(text, text)
        for name, content in files.items():
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            (folder / name).write_text(content, encoding="utf-8")
        done = subprocess.run(
            [self._options.program, "prepare", "main.a2l"]
            + ["--include-dir=shared", "--map=map", "-o", "out.a2l"],
            cwd=folder,
            capture_output=True,
            timeout=_SECONDS_PER_RUN,
            check=False,
        )
        if done.returncode != prepared.status:
            return [
                f"in {len(files)} pieces: {done.returncode}",
                *done.stderr.decode().splitlines(),
            ]
        output = (folder / "out.a2l").read_text(encoding="utf-8")
        if [token for token, _ in tokens_of(output)] != [
            token for token, _ in tokens_of(prepared.text)
        ]:
            return [f"something else comes of {len(files)} pieces", *files, output]
        return wrong_places(output, (folder / "map").read_text(encoding="utf-8"), files)

    def _account(self, number, files, found):
        """Keeps a case and tells what is wrong with it."""
        folder = self._options.findings / f"{self._options.seed}-{number}"
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (folder / name).write_bytes(content)
        (folder / "differences").write_text("\n".join(found) + "\n", encoding="utf-8")
        lines = "".join(f"    {line[:300]}\n" for line in found[:_LINES_SHOWN])
        return f"{self._options.seed}-{number}, kept in {folder}:\n{lines}"


_worker = None


def _start_worker(options):
    global _worker
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    _worker = Worker(options)


def _judge(number):
    return _worker.judge(number)


def _options():
    parser = argparse.ArgumentParser(
        prog="scripts/differential-prepare", description=__doc__.split("\n")[0]
    )
    programs = _PROJECT / "build" / "release" / "bin"
    parser.add_argument("count", nargs="?", type=int, default=300, help="how many cases (300)")
    parser.add_argument("seed", nargs="?", default="1", help="what they follow from (1)")
    parser.add_argument("--first", type=int, default=1, help="number of the first case (1)")
    parser.add_argument(
        "--stop-after", type=int, default=10, metavar="COUNT", help="give up after so many (10)"
    )
    parser.add_argument("--program", type=pathlib.Path, default=programs / "quillmark-a2l")
    parser.add_argument("--converter", type=pathlib.Path, default=programs / "quillmark")
    parser.add_argument(
        "--findings", type=pathlib.Path, default=_PROJECT / "build" / "differential-prepare"
    )
    options = parser.parse_args()
    options.program, options.converter = options.program.resolve(), options.converter.resolve()
    return options


def main():
    options = _options()
    started = time.monotonic()
    done, different = 0, 0
    with multiprocessing.Pool(_WORKERS, _start_worker, (options,)) as pool:
        numbers = range(options.first, options.first + options.count)
        for _, account in pool.imap(_judge, numbers, 10):
            done += 1
            if account:
                different += 1
                print(account, flush=True)
                if different == options.stop_after:
                    break
    print(
        f"{done} cases of seed {options.seed}: {different or 'no'} "
        f"difference{'' if different == 1 else 's'}, {time.monotonic() - started:.0f} s"
    )
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
