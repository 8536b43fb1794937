"""Decodes a recorded DAQ frame by hand: which signals it holds is known from the set-up of the
measurement, how their bytes are read from the description.

    decode_frame.py DESCRIPTION FRAME SIGNAL...

FRAME are the bytes of the frame in hexadecimal. The first one is the identifier of the table, then
the signals follow each other without gaps.
"""

from __future__ import annotations

import sys
from collections.abc import Iterator

import quillmark


def decode(
    module: quillmark.Module, frame: bytes, names: list[str]
) -> Iterator[tuple[str, object, str]]:
    """Name, physical value and unit of each signal in the frame."""
    offset = 1
    for name in names:
        signal = module.signals[name]
        yield name, signal.decode(frame, offset=offset), signal.unit_text
        offset += signal.size_bits // 8


def main() -> None:
    description = quillmark.read(sys.argv[1])
    frame = bytes.fromhex(sys.argv[2])
    print(f"table {frame[0]}")
    for name, value, unit in decode(description.modules[0], frame, sys.argv[3:]):
        print(f"{name} = {value} {unit}".rstrip())


if __name__ == "__main__":
    main()
