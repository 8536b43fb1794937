"""What all tests use."""

from __future__ import annotations

from pathlib import Path

import hypothesis
import pytest

import quillmark

# The same values at each run, however slow the machine.
hypothesis.settings.register_profile("gate", derandomize=True, deadline=None, database=None)
hypothesis.settings.load_profile("gate")

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


def word(member: object) -> object:
    return None if member is None else member.value


def row_of(module: quillmark.Module, signal: quillmark.Signal) -> dict[str, object]:
    """What a row of a table has to say, with None for what is missing."""
    return {
        "module": module.name,
        "name": signal.name,
        "kind": word(signal.kind),
        "address": signal.address,
        "address_extension": signal.address_extension,
        "base_type": word(signal.base_type),
        "size_bits": signal.size_bits,
        "byte_order": word(signal.byte_order),
        "bit_mask": signal.bit_mask,
        "lower_limit": signal.lower_limit,
        "upper_limit": signal.upper_limit,
        "conversion": None if signal.conversion is None else signal.conversion.name,
        "unit_text": signal.unit_text or None,
    }


def rows_of(description: quillmark.Description) -> list[dict[str, object]]:
    return [row_of(module, signal) for module in description.modules for signal in module.signals]


@pytest.fixture(scope="session")
def engine() -> quillmark.Description:
    """An engine controller, in which everything occurs once."""
    return quillmark.read(EXAMPLES / "engine-xcp" / "engine.a2l")
