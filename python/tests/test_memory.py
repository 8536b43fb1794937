"""What is left behind: nothing."""

from __future__ import annotations

import gc
import os
import threading
from pathlib import Path

import pytest

import quillmark
from conftest import EXAMPLES, VERSIONS

CONTENT = (EXAMPLES / "engine-xcp" / "engine.a2l").read_bytes()


def resident_kilobytes() -> int:
    status = Path("/proc/self/status").read_text()
    return int(status.partition("VmRSS:")[2].split()[0])


def use_everything() -> None:
    description = quillmark.read(CONTENT)
    module = description.modules[0]
    assert all(repr(signal) and signal.name in module.signals for signal in module.signals)
    assert module.signals["stEngine"].decode(b"\2") == "idle"
    assert quillmark.convert(description, versions=VERSIONS).include_file
    assert quillmark.compare(description, description) == []
    assert quillmark.prepare(CONTENT).description == CONTENT
    assert description.__arrow_c_stream__()
    try:
        quillmark.read(b"mistake")
    except quillmark.Error as error:
        assert error.findings


@pytest.mark.skipif("ASAN_OPTIONS" in os.environ, reason="the sanitizer keeps what is freed")
def test_a_thousand_reads_leave_nothing_behind() -> None:
    for _ in range(100):
        use_everything()
    gc.collect()
    before = resident_kilobytes()
    for _ in range(1000):
        use_everything()
    gc.collect()
    # A description takes some 150 KiB: with one in a hundred kept this would be ten times as much.
    assert resident_kilobytes() - before < 1024


def test_views_outlive_their_descriptions_in_eight_threads() -> None:
    failures: list[BaseException] = []
    descriptions = [quillmark.read(CONTENT) for _ in range(8)]
    shared = descriptions[0].modules[0].signals

    def work(number: int) -> None:
        try:
            for _ in range(30):
                signals = list(descriptions[number].modules[0].signals)
                descriptions[number] = quillmark.read(CONTENT)
                assert [s.name for s in signals] == [s.name for s in shared]
                assert all(s.conversion is None or s.conversion.name for s in signals)
                assert shared["tOil"] == shared["tOil"]
        except BaseException as error:  # told by the main thread
            failures.append(error)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(8)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not failures
