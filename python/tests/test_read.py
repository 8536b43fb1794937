"""Reading: sources, findings, errors."""

from __future__ import annotations

import gc
import io
import os
import pickle
import threading

import pytest

import quillmark
from conftest import EXAMPLES, described, measurement

FAN = EXAMPLES / "first" / "fan.a2l"


@pytest.mark.parametrize(
    "source",
    [FAN, str(FAN), FAN.read_bytes(), bytearray(FAN.read_bytes()), io.BytesIO(FAN.read_bytes())],
    ids=["path", "str", "bytes", "bytearray", "file"],
)
def test_reads_a_description_from_anywhere(source: object) -> None:
    description = quillmark.read(source)
    assert description.is_complete
    assert [signal.name for signal in description.modules[0].signals] == ["nFan"]


def test_names_what_was_read() -> None:
    assert quillmark.read(FAN).name == str(FAN)
    assert quillmark.read(FAN.read_bytes()).name == "<bytes>"
    assert quillmark.read(FAN.read_bytes(), name="fan").name == "fan"
    with FAN.open("rb") as file:
        assert quillmark.read(file).name == str(FAN)


def test_a_missing_file_is_an_os_error(tmp_path) -> None:
    for strict in True, False:
        with pytest.raises(FileNotFoundError):
            quillmark.read(tmp_path / "none.a2l", strict=strict)


@pytest.mark.parametrize("source", [7, None, io.StringIO("text")])
def test_refuses_what_gives_no_bytes(source: object) -> None:
    with pytest.raises(TypeError):
        quillmark.read(source)


def test_what_a_file_raises_reaches_the_caller() -> None:
    class Broken:
        def read(self, size: int) -> bytes:
            raise RuntimeError("unplugged")

    with pytest.raises(RuntimeError, match="unplugged"):
        quillmark.read(Broken())


def test_a_file_may_not_give_more_than_was_asked_for() -> None:
    class Generous:
        def read(self, size: int) -> bytes:
            return bytes(size + 1)

    with pytest.raises(ValueError):
        quillmark.read(Generous())


BROKEN = (
    b'ASAP2_VERSION 1 60 /begin PROJECT P "" /begin MODULE M ""\n'
    b'/begin UNIT u "" "V" DERIVED /end UNIT\n  /begin MEASUREMENT\n'
)


def test_an_error_tells_where() -> None:
    with pytest.raises(quillmark.Error) as caught:
        quillmark.read(BROKEN, name="broken.a2l")
    (finding,) = caught.value.findings
    assert finding.severity is quillmark.Severity.ERROR
    assert (finding.file, finding.line) == ("broken.a2l", 4)
    assert str(caught.value) == str(finding)
    assert str(finding).startswith("broken.a2l:4")
    assert finding.text in str(finding)
    assert finding.text in repr(finding)


def test_not_strict_gives_what_was_read_before_the_error() -> None:
    description = quillmark.read(BROKEN, strict=False)
    assert not description.is_complete
    assert len(description.findings) == 1
    assert "u" in description.modules[0].units
    assert "not complete" in repr(description)


def test_reading_may_go_on_behind_errors() -> None:
    broken = "/begin UNIT 7 /end UNIT " * 3
    head = 'ASAP2_VERSION 1 60 /begin PROJECT P "" /begin MODULE M ""'
    text = f"{head} {broken} {measurement('UBYTE')} /end MODULE /end PROJECT".encode()
    for limit, errors, reached in (1, 1, False), (2, 2, False), (9, 3, True):
        description = quillmark.read(text, strict=False, error_limit=limit)
        assert len(description.findings) == errors
        assert description.reached_end is reached
        assert not description.is_complete
        assert ("s" in description.modules[0].signals) is reached
        with pytest.raises(quillmark.Error) as caught:
            quillmark.read(text, error_limit=limit)
        assert len(caught.value.findings) == errors
    assert quillmark.read(FAN, error_limit=9).reached_end
    with pytest.raises(TypeError):
        quillmark.read(FAN, error_limit=-1)


def test_texts_are_utf8_or_latin1() -> None:
    for encoding in "utf-8", "latin-1":
        blocks = '/begin UNIT grad "für Öl" "°C" DERIVED /end UNIT'
        text = (
            'ASAP2_VERSION 1 60 /begin PROJECT P "" /begin MODULE M "" '
            f"{blocks} /end MODULE /end PROJECT"
        )
        unit = quillmark.read(text.encode(encoding)).modules[0].units["grad"]
        assert (unit.display_text, unit.long_identifier) == ("°C", "für Öl")


def test_texts_may_be_left_out() -> None:
    module = quillmark.read(FAN, texts=False).modules[0]
    assert module.signals[0].long_identifier == ""


def test_views_keep_their_description() -> None:
    signals = quillmark.read(FAN).modules[0].signals
    conversion = signals["nFan"].conversion
    iterator = iter(signals)
    del signals
    gc.collect()
    assert next(iterator).name == "nFan"
    assert conversion is not None and conversion.name == "Speed"


def test_the_interpreter_goes_on_while_a_file_is_read(tmp_path) -> None:
    # A reader that waits for the other thread would wait forever with the lock held.
    path = tmp_path / "pipe"
    os.mkfifo(path)

    def write() -> None:
        with path.open("wb") as pipe:
            pipe.write(FAN.read_bytes())

    writer = threading.Thread(target=write)
    writer.start()
    assert quillmark.read(path).is_complete
    writer.join()


def test_views_cannot_be_pickled() -> None:
    with pytest.raises(TypeError):
        pickle.dumps(described("").modules[0])
