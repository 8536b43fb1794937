"""Signals as tables."""

from __future__ import annotations

import pytest

import quillmark
from conftest import described

pandas = pytest.importorskip("pandas")


def word(member: object) -> object:
    return None if member is None else member.value


def row_of(module: quillmark.Module, signal: quillmark.Signal) -> dict[str, object]:
    """What a row of the table has to say, with None for what is missing."""
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


def test_a_table_tells_what_the_signals_tell(engine: quillmark.Description) -> None:
    table = engine.to_pandas()
    expected = [
        row_of(module, signal) for module in engine.modules for signal in module.signals
    ]
    rows = table.to_dict("records")
    assert len(rows) == len(expected) == 43
    for row, wanted in zip(rows, expected):
        assert {key: None if pandas.isna(cell) else cell for key, cell in row.items()} == wanted


def test_columns_have_types_that_keep_numbers_exact(engine: quillmark.Description) -> None:
    types = engine.to_pandas().dtypes
    assert str(types["address"]) == str(types["bit_mask"]) == "UInt32"
    assert str(types["address_extension"]) == "Int32"
    assert str(types["unit_text"]) == "category"


def test_a_description_without_signals_has_an_empty_table() -> None:
    table = described("").to_pandas()
    assert len(table) == 0
    assert "address" in table.columns
