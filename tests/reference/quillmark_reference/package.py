"""Packs the include file and the user files into an archive."""

import os
import re
import shutil
import tarfile

from . import codec

_STEPS = {
    "prepare": b"Preparing structure of target directory...",
    "configuration": b"Copying configuration file to target directory...",
    "user files": b"Copying user files to target directory...",
    "archive": b"Creating archive file...",
    "clean up": b"Cleaning up temporary files...",
    "failed": b"Generation of zpkc failed!",
    "finished": b"Finished successfully",
}


class _Failure(Exception):
    """A step failed; the text says why."""


class _Staging:
    """The directory in which the package is put together."""

    def __init__(self, name):
        self.path = name
        self.files = []  # paths inside the directory, each once

    def add(self, source, inner_path):
        """Copies a file into the tree, keeping permissions and time. Returns the full path."""
        target = os.path.join(self.path, inner_path)
        shutil.copyfile(source, target)
        shutil.copystat(source, target)
        if inner_path not in self.files:
            self.files.append(inner_path)
        return target


def build_package(request, root, content, console, environment):
    """Writes the include file, packs it, and deletes it. Returns 0, or 1 if something failed."""
    try:
        stream = open(request.output_file, "wb", buffering=0)
    except (OSError, ValueError):
        console.line(b"ERROR: Cannot open output file: " + request.output_file)
        return 1
    is_complete = codec.write_all(stream, content)
    try:
        _pack(request, root, is_complete, console, environment)
    except _Failure as failure:
        console.line(_STEPS["failed"])
        console.line(b"ERROR: " + failure.args[0])
        return 1
    return 0


def _pack(request, root, is_complete, console, environment):
    console.line(_STEPS["prepare"])
    staging = _create_staging(environment)
    console.line(b"Temporary directory %s created" % staging.path)

    console.line(_STEPS["user files"])
    prefix = _user_file_prefix(request, root)
    for name in request.user_files:
        _stage_user_file(staging, name, prefix, console)

    console.line(_STEPS["configuration"])
    _stage_configuration(staging, request.output_file, is_complete, console)

    console.line(_STEPS["archive"])
    _create_archive(staging, request.zpki_file, console)

    console.line(_STEPS["clean up"])
    for inner_path in staging.files:
        path = os.path.join(staging.path, inner_path)
        os.remove(path)
        console.line(b"Temporary file %s removed" % path)
    shutil.rmtree(staging.path, ignore_errors=True)
    if os.path.realpath(request.output_file) != os.path.realpath(request.zpki_file):
        os.remove(request.output_file)  # else the package has already taken its place
    console.line(_STEPS["finished"])


def _create_staging(environment):
    base = os.path.realpath(os.environb.get(b"TMPDIR") or b"/tmp")
    if not os.path.isdir(base):
        raise _Failure(b"Target does not exist!")
    name = environment.now().strftime("%Y%m%d_%H%M%S").encode("ascii")
    staging = _Staging(os.path.join(base, name))
    try:
        os.mkdir(staging.path, 0o700)
    except OSError:
        raise _Failure(b"No write permission in target temp directory!") from None
    for inner_path in (b"descriptionfiles", b"userfiles", b"deviceconf", b"deviceconf/sigtrak",
                       b"deviceconf/vistrel"):
        os.mkdir(os.path.join(staging.path, inner_path))
    return staging


def _user_file_prefix(request, root):
    """With -epk-file-prefix the EPK of the first project's first module, else nothing."""
    if not request.epk_file_prefix or not root.projects or not root.projects[0].modules:
        return b""
    epk = root.projects[0].modules[0].properties.get("mod_par/epk", b"")
    return re.sub(rb"[^0-9A-Za-z_-]", b"_", epk)


def _stage_user_file(staging, name, prefix, console):
    if not os.path.exists(name):
        raise _Failure(b'Database file "%s" does not exist!' % name)
    inner_path = b"userfiles/" + prefix + name.rsplit(b"/", 1)[-1]
    try:
        target = staging.add(name, inner_path)
    except OSError:
        raise _Failure(b'Copying database file "%s" failed!' % name) from None
    console.line(b"Database file %s copied to %s" % (name, target))


def _stage_configuration(staging, name, is_complete, console):
    if not os.path.exists(name):
        raise _Failure(b"Configuration file does not exist!")
    try:
        if not is_complete:
            raise OSError
        target = staging.add(name, b"deviceconf/sigtrak/" + name.rsplit(b"/", 1)[-1])
    except OSError:
        raise _Failure(b"Copying configuration file failed!") from None
    console.line(b"Configuration file %s copied to %s" % (name, target))


def _create_archive(staging, name, console):
    """Makes the archive beside its target and moves it there when it is complete.

    Where nothing can be made beside it, or where it is no plain file, the target itself is opened.
    """
    beside = name + b".part"
    stream = None
    if os.path.isfile(name) or not os.path.exists(name):
        stream = _open_for_writing(beside)
    path = beside if stream else name
    stream = stream or _open_for_writing(name)
    if stream is None:
        raise _Failure(b"File could not be written")
    try:
        with stream, tarfile.open(mode="w", fileobj=stream, format=tarfile.PAX_FORMAT) as archive:
            for inner_path in staging.files:
                staged = os.path.join(staging.path, inner_path)
                archive.add(os.fsdecode(staged), os.fsdecode(inner_path), filter=_plain_entry)
                stream.flush()
                console.line(b"File %s added to archive %s" % (staged, name))
        if path != name:
            os.replace(path, name)
    except OSError:
        if os.path.isfile(path):
            os.remove(path)
        raise _Failure(b"Writing tar file failed!") from None


def _plain_entry(entry):
    """Without what needs an extended header or depends on the machine."""
    entry.mtime = int(entry.mtime)
    entry.uname = entry.gname = ""
    return entry


def _open_for_writing(name):
    try:
        return open(name, "wb")
    except (OSError, ValueError):
        return None
