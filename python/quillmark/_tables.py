"""Signals as tables of other packages, which are imported only when they are asked for."""

from __future__ import annotations

from importlib import import_module
from typing import Any

from . import _quillmark


def to_pandas(description: _quillmark.Description) -> Any:
    """The data frame that Description.to_pandas() gives."""
    pandas = import_module("pandas")

    def column(values: Any) -> Any:
        if not isinstance(values, tuple):
            return values
        numbers, other = values
        if isinstance(other, list):
            return pandas.Categorical.from_codes(numbers, categories=other)
        return pandas.arrays.IntegerArray(numbers, other)

    columns = _quillmark._signal_columns(description)
    return pandas.DataFrame({name: column(values) for name, values in columns.items()})


def to_arrow(description: _quillmark.Description) -> Any:
    """The table that Description.to_arrow() gives."""
    return import_module("pyarrow").table(description)
