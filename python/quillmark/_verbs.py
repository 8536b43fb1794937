"""What is easier said in Python than in the native part."""

from __future__ import annotations

import os
import re
from collections.abc import Iterable
from pathlib import Path
from typing import Union, overload

from . import _quillmark

_Path = Union[str, os.PathLike[str]]


@overload
def decompress(include_file: Union[_Path, bytes], output: None = None) -> bytes: ...


@overload
def decompress(include_file: Union[_Path, bytes], output: _Path) -> None: ...


def decompress(
    include_file: Union[_Path, bytes], output: Union[_Path, None] = None
) -> bytes | None:
    """Expands the first compressed section of an include file, given as a path or as its bytes.

    Writes the result into `output`, which may be the same file, or returns it. A damaged section
    gives what can be had of it. Raises quillmark.Error for an include file without one.
    """
    if output is None:
        if not isinstance(include_file, bytes):
            include_file = Path(include_file).read_bytes()
        return _quillmark._expand_bytes(include_file)
    if isinstance(include_file, bytes):
        Path(output).write_bytes(_quillmark._expand_bytes(include_file))
    else:
        _quillmark._expand_files(include_file, output)
    return None


def prepare(
    description: Union[_Path, bytes],
    output: Union[_Path, None] = None,
    *,
    dry_run: bool = False,
    include_dir: Iterable[_Path] = (),
    skip_missing: bool = False,
    map: Union[_Path, None] = None,
    latin1: bool = False,
    separator: str = ".",
    blob_arrays: bool = False,
    limit: int = 10_000_000,
    epk: Union[str, None] = None,
    epk_address: Union[int, None] = None,
    module: Union[str, None] = None,
    name: _Path = "<bytes>",
) -> _quillmark.PrepareResult:
    """Makes of a description, given as a path or as its bytes, one that read() takes.

    Includes are put in, structures of version 1.7 become single signals, and what read() refuses
    goes out. The result goes into `output`, which is replaced only when all of it is there, or is
    in the result. The keywords are the options of `quillmark-a2l prepare`, epk_address being a
    number. `name` is what findings call bytes, and where files are looked for that they include.

    What was changed or lost is in the findings of the result. Raises quillmark.Error where nothing
    can be made of the description, OSError for a file that cannot be opened.
    """
    if not re.fullmatch(r"[A-Za-z0-9_.|-]+", separator):
        raise ValueError(f"{separator!r} cannot stand in a name")
    options = _quillmark._PrepareOptions(
        output=None if dry_run else output,
        include_dir=include_dir,
        skip_missing=skip_missing,
        map=None if dry_run else map,
        latin1=latin1,
        separator=separator,
        blob_arrays=blob_arrays,
        limit=limit,
        epk=epk or "",
        epk_address="" if epk_address is None else hex(epk_address),
        module=module or "",
    )
    keep = output is None and not dry_run
    if isinstance(description, bytes):
        return _quillmark._prepare_bytes(description, name, options, keep)
    with open(description, "rb") as file:
        if keep or not os.path.isfile(description):
            return _quillmark._prepare_bytes(file.read(), description, options, keep)
    return _quillmark._prepare_file(description, options)
