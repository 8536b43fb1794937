"""What is easier said in Python than in the native part."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Union, overload

from . import _quillmark


@overload
def decompress(
    include_file: Union[str, os.PathLike[str], bytes], output: None = None
) -> bytes: ...


@overload
def decompress(
    include_file: Union[str, os.PathLike[str], bytes], output: Union[str, os.PathLike[str]]
) -> None: ...


def decompress(
    include_file: Union[str, os.PathLike[str], bytes],
    output: Union[str, os.PathLike[str], None] = None,
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
