"""What all tests use."""

from __future__ import annotations

from pathlib import Path

import pytest

import quillmark

EXAMPLES = Path(__file__).resolve().parents[2] / "examples"
VERSIONS = "<v><TopVersion>2023.4.2</TopVersion></v>"


def described(blocks: str) -> quillmark.Description:
    """A description of one module, which can be converted, with these blocks in it."""
    text = (
        'ASAP2_VERSION 1 60 /begin PROJECT P "" /begin MODULE M ""\n'
        '/begin MOD_PAR "" EPK "V1" ADDR_EPK 1 /end MOD_PAR\n'
        "/begin IF_DATA XCP /end IF_DATA\n" + blocks + "\n/end MODULE /end PROJECT\n"
    )
    return quillmark.read(text.encode())


def measurement(data_type: str, conversion: str = "NO_COMPU_METHOD", rest: str = "") -> str:
    return (
        f'/begin MEASUREMENT s "" {data_type} {conversion} 0 0 0 0 '
        f"ECU_ADDRESS 0x10 {rest} /end MEASUREMENT"
    )


def signal_of(*blocks: str) -> quillmark.Signal:
    return described("\n".join(blocks)).modules[0].signals["s"]


@pytest.fixture(scope="session")
def engine() -> quillmark.Description:
    """An engine controller, in which everything occurs once."""
    return quillmark.read(EXAMPLES / "engine-xcp" / "engine.a2l")
