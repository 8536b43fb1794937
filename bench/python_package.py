#!/usr/bin/env python3
"""Measures the Python package on a large description: reading, walking, tables. Prints medians.

    PYTHONPATH=build/release/python /usr/bin/python3 bench/python_package.py DESCRIPTION [STEP]

STEP is the program quillmark_step, which reads the same in C++.
"""

from __future__ import annotations

import statistics
import subprocess
import sys
import time
from collections.abc import Callable, Iterable

import quillmark

ROUNDS = 7
ATTRIBUTES = 5


class Slots:
    """What an object costs that Python has made already."""

    __slots__ = ("name", "address", "size_bits", "byte_order", "unit_text")

    def __init__(self, signal: quillmark.Signal) -> None:
        for name in self.__slots__:
            setattr(self, name, getattr(signal, name))


def median(work: Callable[[], object]) -> float:
    """Seconds that it takes."""
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        result = work()
        times.append(time.perf_counter() - start)
        del result
    return statistics.median(times)


def walk(items: Iterable[quillmark.Signal | Slots]) -> None:
    """Reads as many attributes of each as ATTRIBUTES says."""
    for item in items:
        item.name, item.address, item.size_bits, item.byte_order, item.unit_text


def main() -> None:
    path, *step = sys.argv[1:]
    reading = median(lambda: quillmark.read(path))
    print(f"read: {reading:.3f} s")
    if step:
        cpp = median(lambda: subprocess.run([step[0], "read", path], check=True))
        print(f"read in C++: {cpp:.3f} s, a process of its own; Python takes {reading / cpp:.2f} of it")
    description = quillmark.read(path)
    signals = description.modules[0].signals
    objects = [Slots(signal) for signal in signals]
    count = len(signals) * ATTRIBUTES
    print(f"walk {len(signals)} signals, {ATTRIBUTES} attributes each, per attribute:")
    print(f"  signals: {median(lambda: walk(signals)) / count * 1e6:.3f} us")
    print(f"  objects with slots: {median(lambda: walk(objects)) / count * 1e6:.3f} us")
    print(f"table of Arrow: {median(description.__arrow_c_stream__):.3f} s")
    print(f"table of pandas: {median(description.to_pandas):.3f} s")


if __name__ == "__main__":
    main()
