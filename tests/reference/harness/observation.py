"""What a case leaves behind, in a form that can be compared."""

import dataclasses
import datetime
import difflib
import io
import os
import re
import stat
import tarfile

# A stamp this much older or younger than the run, in seconds, is not taken for the time of the run.
_TOLERANCE = 5

_ISO_STAMP = re.compile(rb"(?<=#generated on )(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d)(?=([+-]\d\d:\d\d))")
_SECONDS = re.compile(rb"(?<=cfg_generated_on=)(\d{1,12})")
_STAGING_DIRECTORY = re.compile(rb"(?<=/)\d{8}_\d{6}(?=/|\b)")


@dataclasses.dataclass
class Observation:
    """What all runs of a case printed and returned, and the directory after them.

    `started` and `ended`: seconds since 1970. `files`: name to (mode, bytes), both None for a
    directory. `failure`: why there is nothing to compare, if that is so.
    """

    started: float
    ended: float
    stdout: bytes = b""
    stderr: bytes = b""
    statuses: tuple = ()
    files: dict = dataclasses.field(default_factory=dict)
    failure: str = ""

    def aspects(self):
        """Name of each thing to compare, and its bytes with all that depends on the time of the
        run taken out."""
        result = {
            "status": repr(self.statuses).encode(),
            "stdout": self._plain(self.stdout),
            "stderr": self._plain(self.stderr),
        }
        for name, (mode, data) in self.files.items():
            plain_name = self._plain(name.encode("latin-1")).decode("latin-1")
            if data is None:
                result["directory " + plain_name] = b""
            else:
                result["mode of " + plain_name] = f"{mode:o}".encode()
                result["file " + plain_name] = self._contents(data)
        return result

    def _plain(self, data):
        data = _ISO_STAMP.sub(self._iso_stamp, data)
        data = _SECONDS.sub(lambda match: self._stamp(match, int(match[1])), data)
        return _STAGING_DIRECTORY.sub(b"{staging}", data)

    def _iso_stamp(self, match):
        moment = datetime.datetime.fromisoformat((match[1] + match[2]).decode("ascii"))
        return self._stamp(match, moment.timestamp())

    def _stamp(self, match, seconds):
        return b"{now}" if self._is_now(seconds) else match[1]

    def _is_now(self, seconds):
        return self.started - _TOLERANCE <= seconds <= self.ended + _TOLERANCE

    def _contents(self, data):
        """The bytes of a file; of an archive its entries in their order."""
        if data[257:262] != b"ustar":
            return self._plain(data)
        try:
            with tarfile.open(fileobj=io.BytesIO(data), encoding="latin-1") as archive:
                return b"".join(self._entry(archive, entry) for entry in archive)
        except (tarfile.TarError, ValueError):
            return data

    def _entry(self, archive, entry):
        moment = "{now}" if self._is_now(entry.mtime) else int(entry.mtime)
        head = f" type {entry.type!r} mode {entry.mode:o} modified {moment}\n".encode("ascii")
        data = archive.extractfile(entry).read() if entry.isfile() else b""
        return _name_of(entry) + head + self._plain(data) + b"\n"


def _name_of(entry):
    """The bytes of an entry's name, in whichever of its two headers it stands."""
    extended = entry.pax_headers
    in_utf8 = "path" in extended and extended.get("hdrcharset") != "BINARY"
    return entry.name.encode("utf-8" if in_utf8 else "latin-1")


def directory_contents(root):
    """Everything below root: relative name to (mode, bytes), or (None, None) for a directory."""
    contents = {}
    for directory, subdirectories, files in os.walk(os.fsencode(root)):
        for name in subdirectories:
            contents[_relative(directory, name, root)] = (None, None)
        for name in files:
            path = os.path.join(directory, name)
            with open(path, "rb") as stream:
                data = stream.read()
            contents[_relative(directory, name, root)] = (stat.S_IMODE(os.stat(path).st_mode), data)
    return contents


def _relative(directory, name, root):
    return os.path.relpath(os.path.join(directory, name), os.fsencode(root)).decode("latin-1")


def differences(program, reference):
    """Names of the aspects in which two observations differ, and a text diff of each."""
    ours, theirs = program.aspects(), reference.aspects()
    return {
        name: _diff(ours.get(name), theirs.get(name))
        for name in sorted(ours.keys() | theirs.keys())
        if ours.get(name) != theirs.get(name)
    }


def _diff(ours, theirs):
    if ours is None or theirs is None:
        return f"    only with the {'reference' if ours is None else 'program'}\n"
    lines = difflib.unified_diff(
        _lines(ours), _lines(theirs), "program", "reference", lineterm="", n=2
    )
    return "".join(f"    {line}\n" for line in lines)


def _lines(data):
    """The lines with everything visible that is not."""
    return [
        line.decode("latin-1").encode("unicode_escape").decode("ascii")
        for line in data.splitlines(keepends=True)
    ]
