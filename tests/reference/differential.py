#!/usr/bin/env python3
"""Compares the program with the reference on random cases.

Case NUMBER of a SEED is always the same. What differs is kept in a folder of its own: the input,
the commands, what both sides made of it, the differences, and the same case made as small as can
be.
"""

import argparse
import multiprocessing
import os
import pathlib
import resource
import shlex
import shutil
import signal
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from generator.cases import make_case
from harness.observation import differences
from harness.runner import Runner, write_case
from harness.shrinking import shrunk

_PROJECT = pathlib.Path(__file__).resolve().parents[2]
_WORKERS = 2
_CASES_AT_ONCE = 10
_LARGEST_FILE = 64 << 20
_LINES_SHOWN = 12


class Worker:
    """Judges cases; one per process."""

    def __init__(self, options):
        self._options = options
        self._scratch = tempfile.TemporaryDirectory(prefix="quillmark-differential-")
        self._runner = Runner(options.program, self._scratch.name)

    def judge(self, number):
        """(number, kind, account): the account is empty if both sides agree, None if the case takes
        too long."""
        case = make_case(self._options.seed, number)
        found = self._differences(case)
        if not found:
            return number, case.kind, "" if found is not None else None
        return number, case.kind, self._keep(number, case, found)

    def _differences(self, case):
        program = self._runner.with_program(case)
        if program.failure:
            return None
        reference = self._runner.with_reference(case)
        return None if reference.failure else differences(program, reference)

    def _keep(self, number, case, found):
        folder = self._options.findings / f"{self._options.seed}-{number}"
        shutil.rmtree(folder, ignore_errors=True)
        self._keep_case(folder, case, found)
        wanted = set(found)
        smaller = shrunk(
            case,
            lambda candidate: bool(wanted & set(self._differences(candidate) or ())),
            self._options.shrink_seconds,
        )
        found = self._differences(smaller) or found
        self._keep_case(folder / "shrunk", smaller, found)
        return (
            f"{self._options.seed}-{number} ({case.kind}): {', '.join(found)}\n"
            + _beginning(found)
            + f"    kept in {folder}\n"
        )

    def _keep_case(self, folder, case, found):
        write_case(case, folder / "input")
        commands = "".join(shlex.join(["quillmark", *command]) + "\n" for command in case.commands)
        (folder / "command").write_text(f"TZ='{case.time_zone}'\n{commands}", encoding="latin-1")
        (folder / "diff").write_text(
            "".join(f"{name}:\n{diff}" for name, diff in found.items()),
            encoding="ascii",
            errors="backslashreplace",
        )
        for side, observation in (
            ("program", self._runner.with_program(case)),
            ("reference", self._runner.with_reference(case)),
        ):
            _keep_observation(folder / side, observation)


def _keep_observation(folder, observation):
    folder.mkdir()
    (folder / "stdout").write_bytes(observation.stdout)
    (folder / "stderr").write_bytes(observation.stderr)
    (folder / "status").write_text(repr(observation.statuses) + "\n", encoding="ascii")
    for name, (_, data) in observation.files.items():
        path = os.path.join(os.fsencode(folder / "files"), name.encode("latin-1"))
        if data is None:
            os.makedirs(path, exist_ok=True)
        else:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as stream:
                stream.write(data)


def _beginning(found):
    lines = [line for diff in found.values() for line in diff.splitlines(keepends=True)]
    return "".join(line[:160].rstrip("\n") + "\n" for line in lines[:_LINES_SHOWN])


_worker = None


def _start_worker(options):
    global _worker
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (_LARGEST_FILE, _LARGEST_FILE))
    _worker = Worker(options)


def _judge(number):
    return _worker.judge(number)


def _options():
    parser = argparse.ArgumentParser(
        prog="scripts/differential", description=__doc__.split("\n")[0]
    )
    parser.add_argument("count", nargs="?", type=int, default=1000, help="how many cases (1000)")
    parser.add_argument("seed", nargs="?", default="1", help="what they follow from (1)")
    parser.add_argument("--first", type=int, default=1, help="number of the first case (1)")
    parser.add_argument(
        "--stop-after",
        type=int,
        default=10,
        metavar="COUNT",
        help="give up after so many differences (10)",
    )
    parser.add_argument(
        "--shrink-seconds", type=float, default=10, help="how long to make one case smaller (10)"
    )
    parser.add_argument("--program", default=_PROJECT / "build" / "release" / "bin" / "quillmark")
    parser.add_argument(
        "--findings", type=pathlib.Path, default=_PROJECT / "build" / "differential"
    )
    return parser.parse_args()


def main():
    options = _options()
    started = time.monotonic()
    done, too_long, different = 0, 0, 0
    with multiprocessing.Pool(_WORKERS, _start_worker, (options,)) as pool:
        numbers = range(options.first, options.first + options.count)
        for number, kind, account in pool.imap(_judge, numbers, _CASES_AT_ONCE):
            done += 1
            if account is None:
                too_long += 1
                print(f"{options.seed}-{number} ({kind}): left out, takes too long")
            elif account:
                different += 1
                print(account, flush=True)
                if different == options.stop_after:
                    break
    print(
        f"{done} cases of seed {options.seed}: "
        f"{different or 'no'} difference{'' if different == 1 else 's'}"
        f"{f', {too_long} left out' if too_long else ''}, {time.monotonic() - started:.0f} s"
    )
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
