"""Signals as tables."""

from __future__ import annotations

import pytest

import quillmark
from conftest import described, rows_of

pandas = pytest.importorskip("pandas")


def test_a_table_tells_what_the_signals_tell(engine: quillmark.Description) -> None:
    table = engine.to_pandas()
    expected = rows_of(engine)
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
