"""Descriptions that cannot be read as they are."""

from __future__ import annotations

import os
import subprocess
import threading
from pathlib import Path

import pytest

import quillmark
from conftest import EXAMPLES

PROGRAM = Path(quillmark.__file__).resolve().parents[2] / "bin" / "quillmark-a2l"

WHEELS = """\
ASAP2_VERSION 1 71
/begin PROJECT Bench ""
  /begin MODULE Fan ""
    /begin TYPEDEF_MEASUREMENT Speed "" UWORD NO_COMPU_METHOD 0 0 0 16000
    /end TYPEDEF_MEASUREMENT
    /begin TYPEDEF_STRUCTURE Wheel "" 8
      /begin STRUCTURE_COMPONENT speed Speed 4 /end STRUCTURE_COMPONENT
    /end TYPEDEF_STRUCTURE
    /begin INSTANCE wheel "" Wheel 0x70001A40 MATRIX_DIM 2 /end INSTANCE
    /include "units.inc"
  /end MODULE
/end PROJECT
"""
UNITS = '/begin UNIT u "" "m" DERIVED /end UNIT\n'


@pytest.fixture
def wheels(tmp_path: Path) -> Path:
    (tmp_path / "units.inc").write_text(UNITS)
    path = tmp_path / "wheels.a2l"
    path.write_text(WHEELS)
    return path


def test_gives_what_read_takes(wheels: Path) -> None:
    with pytest.raises(quillmark.Error):
        quillmark.read(wheels)
    result = quillmark.prepare(wheels)
    assert result.description is not None
    module = quillmark.read(result.description).modules[0]
    addresses = {signal.name: signal.address for signal in module.signals}
    assert addresses == {"wheel[0].speed": 0x70001A44, "wheel[1].speed": 0x70001A4C}
    assert "u" in module.units
    assert not result.has_losses
    finding = result.findings[0]
    assert finding.severity is quillmark.Severity.NOTE
    assert (finding.file, finding.line) == (str(wheels), 4)
    assert "TYPEDEF_MEASUREMENT Speed" in finding.text and finding.text in str(finding)
    assert "findings" in repr(result)


def test_prepares_from_anywhere_to_anywhere(wheels: Path, tmp_path: Path) -> None:
    expected = quillmark.prepare(wheels).description
    assert quillmark.prepare(WHEELS.encode(), name=wheels).description == expected
    output = tmp_path / "ready.a2l"
    for source, keywords in (wheels, {}), (str(wheels), {}), (WHEELS.encode(), {"name": wheels}):
        output.unlink(missing_ok=True)
        assert quillmark.prepare(source, output, **keywords).description is None
        assert output.read_bytes() == expected
    # A file may become what was made of it.
    quillmark.prepare(wheels, wheels)
    assert wheels.read_bytes() == expected


@pytest.mark.skipif(not PROGRAM.exists(), reason="the program is not built")
@pytest.mark.parametrize(
    "options, keywords",
    [
        ([], {}),
        (["--separator", "_"], {"separator": "_"}),
        (["--latin1"], {"latin1": True}),
        (["--epk", "V1", "--epk-address", "0x10"], {"epk": "V1", "epk_address": 16}),
        (["--module", "Fan", "--epk", "V1"], {"module": "Fan", "epk": "V1"}),
        (["--limit", "1"], {"limit": 1}),
        (["--map", "map"], {"map": "map"}),
    ],
)
def test_prepares_as_the_program_does(
    wheels: Path, monkeypatch: pytest.MonkeyPatch, options: list[str], keywords
) -> None:
    monkeypatch.chdir(wheels.parent)
    command = [str(PROGRAM), "prepare", wheels.name, "-o", "expected", *options]
    told = subprocess.run(command, capture_output=True, text=True)
    words = {"note": "changed", "warning": "lost", "error": "error"}
    try:
        result = quillmark.prepare(wheels.name, "ready", **keywords)
        findings = result.findings
        assert told.returncode == (1 if result.has_losses else 0)
        assert Path("ready").read_bytes() == Path("expected").read_bytes()
    except quillmark.Error as error:
        findings = error.findings
        assert told.returncode == 2
    lines = [
        f"{finding.file}{':%d' % finding.line if finding.line else ''}: "
        f"{words[finding.severity.value]}: {finding.text}\n"
        for finding in findings
    ]
    assert "".join(lines) == told.stderr
    if "map" in keywords:
        assert "wheels.a2l" in Path("map").read_text()


def test_what_is_lost_is_told(wheels: Path, tmp_path: Path) -> None:
    (tmp_path / "units.inc").unlink()
    with pytest.raises(quillmark.Error, match="units.inc") as caught:
        quillmark.prepare(wheels)
    assert caught.value.findings[-1].severity is quillmark.Severity.ERROR
    result = quillmark.prepare(wheels, skip_missing=True)
    assert result.has_losses
    losses = [f for f in result.findings if f.severity is quillmark.Severity.WARNING]
    assert [finding.line for finding in losses] == [10]
    elsewhere = tmp_path / "elsewhere"
    elsewhere.mkdir()
    (elsewhere / "units.inc").write_text(UNITS)
    assert not quillmark.prepare(wheels, include_dir=[elsewhere]).has_losses


def test_a_dry_run_writes_nothing(wheels: Path, tmp_path: Path) -> None:
    before = sorted(tmp_path.iterdir())
    for source in wheels, WHEELS.encode():
        result = quillmark.prepare(
            source, tmp_path / "out", map=tmp_path / "map", dry_run=True, name=wheels
        )
        assert result.description is None and result.findings
    assert sorted(tmp_path.iterdir()) == before


def test_what_can_be_read_stays_as_it_is() -> None:
    fan = EXAMPLES / "first" / "fan.a2l"
    result = quillmark.prepare(fan)
    assert (result.description, result.findings) == (fan.read_bytes(), ())


def test_pipes_can_be_prepared(wheels: Path, tmp_path: Path) -> None:
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    writer = threading.Thread(target=lambda: pipe.write_bytes(wheels.read_bytes()))
    writer.start()
    quillmark.prepare(pipe, tmp_path / "out")
    writer.join()
    assert b"wheel[1].speed" in (tmp_path / "out").read_bytes()


def test_a_dash_is_a_file_like_any_other(wheels: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(wheels.parent)
    Path("-").write_text(WHEELS)
    quillmark.prepare("-", "-")
    assert b"wheel[1].speed" in Path("-").read_bytes()


def test_refuses_what_is_no_option(wheels: Path, tmp_path: Path) -> None:
    with pytest.raises(FileNotFoundError):
        quillmark.prepare(tmp_path / "none.a2l")
    with pytest.raises(quillmark.Error, match="cannot be written"):
        quillmark.prepare(wheels, tmp_path / "no" / "directory")
    with pytest.raises(ValueError):
        quillmark.prepare(wheels, separator=" ")
    with pytest.raises(TypeError):
        quillmark.prepare(wheels, include_dir="directory")
    with pytest.raises(TypeError):
        quillmark.prepare(wheels, limit=-1)
