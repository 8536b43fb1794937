"""Runs a case with the program and with the reference."""

import contextlib
import os
import shutil
import signal
import subprocess
import tempfile
import time
import traceback

from harness.observation import Observation, directory_contents
from quillmark_reference import run as run_reference

# Cases are small; one that takes longer than this has met a number that asks for a huge output.
_SECONDS_PER_RUN = 10


class Runner:
    """Runs cases one after the other in one directory, always by the same name."""

    def __init__(self, program, scratch):
        self._program = os.path.abspath(program)
        self._root = os.path.join(scratch, "case")

    def with_program(self, case):
        with self._prepared(case) as environment:
            started = time.time()
            runs = []
            for command in case.commands:
                arguments = [self._program, *(argument.encode("latin-1") for argument in command)]
                try:
                    done = subprocess.run(
                        arguments,
                        cwd=self._root,
                        env=environment,
                        capture_output=True,
                        timeout=_SECONDS_PER_RUN,
                        stdin=subprocess.DEVNULL,
                        check=False,
                    )
                except subprocess.TimeoutExpired:
                    return Observation(started, time.time(), failure="the program takes too long")
                runs.append((done.returncode, done.stdout, done.stderr))
            return self._observed(started, runs)

    def with_reference(self, case):
        with self._prepared(case) as environment, _environment(environment), contextlib.chdir(
            self._root
        ):
            started = time.time()
            runs = []
            for command in case.commands:
                arguments = [argument.encode("latin-1") for argument in command]
                try:
                    with _time_limit(_SECONDS_PER_RUN):
                        done = run_reference(arguments)
                except TimeoutError:
                    return Observation(started, time.time(), failure="the reference takes too long")
                except Exception:  # whatever it is, it is a finding
                    runs.append(("exception", b"", traceback.format_exc().encode()))
                    break
                runs.append((done.status, done.stdout, done.stderr))
            return self._observed(started, runs)

    def _observed(self, started, runs):
        return Observation(
            started,
            time.time(),
            b"".join(run[1] for run in runs),
            b"".join(run[2] for run in runs),
            tuple(status & 0xFF if isinstance(status, int) else status for status, _, _ in runs),
            directory_contents(self._root),
        )

    @contextlib.contextmanager
    def _prepared(self, case):
        """Makes the directory of the case; gives the environment for its runs."""
        write_case(case, self._root)
        try:
            yield {
                "TZ": case.time_zone,
                "TMPDIR": os.path.join(self._root, "tmp"),
                "PATH": os.environ.get("PATH", ""),
            }
        finally:
            shutil.rmtree(self._root, ignore_errors=True)


def write_case(case, root):
    """Writes the files and directories that a case begins with."""
    os.makedirs(root)
    for directory in case.directories:
        os.makedirs(os.path.join(root, directory), exist_ok=True)
    for name, file in case.files.items():
        path = os.path.join(os.fsencode(root), name.encode("latin-1"))
        with open(path, "wb") as stream:
            stream.write(file.data)
        os.chmod(path, file.mode)
        os.utime(path, (file.modified, file.modified))


@contextlib.contextmanager
def _environment(values):
    before = dict(os.environ)
    os.environ.update(values)
    tempfile.tempdir = None
    time.tzset()
    try:
        yield
    finally:
        os.environ.clear()
        os.environ.update(before)
        tempfile.tempdir = None
        time.tzset()


@contextlib.contextmanager
def _time_limit(seconds):
    def give_up(*_):
        raise TimeoutError

    before = signal.signal(signal.SIGALRM, give_up)
    signal.alarm(seconds)
    try:
        yield
    finally:
        signal.alarm(0)
        signal.signal(signal.SIGALRM, before)
