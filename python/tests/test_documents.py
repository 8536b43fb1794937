"""The page and the examples show what really happens."""

from __future__ import annotations

import doctest
import subprocess
import sys
from pathlib import Path

import pytest

import quillmark

ROOT = Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples" / "python"


def test_the_page_shows_what_happens(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(ROOT)
    results = doctest.testfile(str(ROOT / "docs" / "python.md"), module_relative=False)
    assert results.attempted > 20 and results.failed == 0


def test_docstrings_show_what_happens(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(ROOT)
    results = doctest.testmod(quillmark)
    assert results.attempted > 0 and results.failed == 0


def run(name: str, *arguments: str, status: int = 0) -> str:
    command = [sys.executable, "-B", str(EXAMPLES / name), *arguments]
    result = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
    assert (result.returncode, result.stderr) == (status, "")
    return result.stdout


def test_the_page_shows_the_example() -> None:
    page = (ROOT / "docs" / "python.md").read_text()
    command, _, rest = page.partition("    python3 examples/python/")[2].partition("\n\nprints\n\n")
    expected = "".join(line.removeprefix("    ") for line in rest.splitlines(keepends=True))
    assert run(*command.split()) == expected


def test_signals_are_listed() -> None:
    lines = run("list_signals.py", "examples/first/fan.a2l").splitlines()
    assert lines[0] == "FanControl: 1 signals"
    assert lines[1].split() == ["nFan", "0x70001A40", "unsigned", "16", "1/min"]


def test_releases_are_compared() -> None:
    old, new = (f"examples/compare-xcp/{name}.a2l" for name in ("old", "new"))
    lines = run("compare_releases.py", old, new, status=1)
    assert "error: daqlist(1):MAX_ODT values are not equal (20 -> 24)" in lines
    assert lines.endswith(": 0xd0000011 -> 0xd0000014\n")
    assert run("compare_releases.py", old, old) == ""


def test_a_conversion_is_plotted(tmp_path: Path) -> None:
    pytest.importorskip("matplotlib")
    picture = tmp_path / "coolant.png"
    arguments = ("examples/engine-xcp/engine.a2l", "CoolantSensor", str(picture))
    assert run("plot_conversion.py", *arguments) == f"{picture}: 6 rows, -40 to 140 degC\n"
    assert picture.read_bytes().startswith(b"\x89PNG")


def test_every_example_is_tested() -> None:
    tests = Path(__file__).read_text() + (ROOT / "docs" / "python.md").read_text()
    assert all(path.name in tests for path in EXAMPLES.glob("*.py"))
