"""What holds for every description that is prepared, whatever is in it."""

import re
import subprocess

_READING_ERROR = re.compile(rb"^.*: Error \(.*$", re.MULTILINE)
_FAILED = b"Cannot compare modules: Reading of file 1 failed"
_INCLUDE = re.compile(rb"/include\b")
_SECONDS_PER_RUN = 30


class Programs:
    def __init__(self, preparer, reader):
        self._preparer = preparer
        self._reader = reader

    def prepared(self, path):
        """(status, output) of a description in a file."""
        done = subprocess.run(
            [self._preparer, "prepare", path],
            capture_output=True,
            timeout=_SECONDS_PER_RUN,
            check=False,
        )
        return done.returncode, done.stdout

    def reading_error(self, path):
        """The error at which reading a description stops; None if all of it is read. `compare`
        reads like `convert` and writes nothing, which could be without an end."""
        done = subprocess.run(
            [self._reader, "compare", path, path],
            capture_output=True,
            timeout=_SECONDS_PER_RUN,
            check=False,
        )
        found = _READING_ERROR.search(done.stdout)
        if found:
            return found.group()
        return b"not read" if _FAILED in done.stdout else None


def mistakes(path, programs, scratch):
    """What is wrong with the preparation of a description; empty if nothing is."""
    original = path.read_bytes()
    status, output = programs.prepared(path)
    if programs.reading_error(path) is None and not _INCLUDE.search(original):
        return [] if (status, output) == (0, original) else [f"changed, status {status}"]
    if status not in (0, 1):
        return [] if status == 2 and not output else [f"status {status} and {len(output)} bytes"]
    prepared = scratch / "prepared.a2l"
    prepared.write_bytes(output)
    found = []
    again = programs.prepared(prepared)
    if again[1] != output or again[0] > status:
        found.append(f"changes again, status {again[0]}")
    error = programs.reading_error(prepared)
    if status == 0 and error is not None and b"Unexpected token" in error:
        found.append(f"no loss was told, but: {error.decode(errors='replace')}")
    return found
