"""Signals as a table of Arrow: what is in the capsule, read as its interface lays it down."""

from __future__ import annotations

import ctypes
import gc
import sys
from collections.abc import Iterator
from typing import Any

import pytest

import quillmark
from conftest import described, measurement, rows_of


class Schema(ctypes.Structure):
    pass


class Array(ctypes.Structure):
    pass


class Stream(ctypes.Structure):
    pass


Schema._fields_ = [
    ("format", ctypes.c_char_p),
    ("name", ctypes.c_char_p),
    ("metadata", ctypes.c_char_p),
    ("flags", ctypes.c_int64),
    ("n_children", ctypes.c_int64),
    ("children", ctypes.POINTER(ctypes.POINTER(Schema))),
    ("dictionary", ctypes.POINTER(Schema)),
    ("release", ctypes.CFUNCTYPE(None, ctypes.POINTER(Schema))),
    ("private_data", ctypes.c_void_p),
]
Array._fields_ = [
    ("length", ctypes.c_int64),
    ("null_count", ctypes.c_int64),
    ("offset", ctypes.c_int64),
    ("n_buffers", ctypes.c_int64),
    ("n_children", ctypes.c_int64),
    ("buffers", ctypes.POINTER(ctypes.c_void_p)),
    ("children", ctypes.POINTER(ctypes.POINTER(Array))),
    ("dictionary", ctypes.POINTER(Array)),
    ("release", ctypes.CFUNCTYPE(None, ctypes.POINTER(Array))),
    ("private_data", ctypes.c_void_p),
]
Stream._fields_ = [
    ("get_schema", ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(Stream), ctypes.POINTER(Schema))),
    ("get_next", ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(Stream), ctypes.POINTER(Array))),
    ("get_last_error", ctypes.CFUNCTYPE(ctypes.c_char_p, ctypes.POINTER(Stream))),
    ("release", ctypes.CFUNCTYPE(None, ctypes.POINTER(Stream))),
    ("private_data", ctypes.c_void_p),
]

NUMBERS: dict[bytes, Any] = {
    b"i": ctypes.c_int32,
    b"I": ctypes.c_uint32,
    b"l": ctypes.c_int64,
    b"g": ctypes.c_double,
}


def stream_of(capsule: object) -> Stream:
    pointer = ctypes.pythonapi.PyCapsule_GetPointer
    pointer.restype, pointer.argtypes = ctypes.c_void_p, [ctypes.py_object, ctypes.c_char_p]
    return Stream.from_address(pointer(capsule, b"arrow_array_stream"))


def elements(array: Array, buffer: int, kind: Any, count: int) -> list[Any]:
    address = array.buffers[buffer]
    return list((kind * count).from_address(address)) if count else []


def values_of(schema: Schema, array: Array) -> Iterator[object]:
    """The values of a column, with None for those that are absent."""
    if schema.format == b"U":
        assert array.n_buffers == 3
        offsets = elements(array, 1, ctypes.c_int64, array.length + 1)
        data = ctypes.string_at(array.buffers[2], offsets[-1]) if offsets[-1] else b""
        values: list[object] = [data[a:b].decode() for a, b in zip(offsets, offsets[1:])]
    else:
        assert array.n_buffers == 2
        values = elements(array, 1, NUMBERS[schema.format], array.length)
    if schema.dictionary:
        texts = list(values_of(schema.dictionary[0], array.dictionary[0]))
        values = [texts[code] if code >= 0 else None for code in values]
    bits = elements(array, 0, ctypes.c_uint8, (array.length + 7) // 8) if array.buffers[0] else []
    present = [not bits or bits[i // 8] >> i % 8 & 1 for i in range(array.length)]
    assert array.null_count == present.count(0)
    assert schema.flags == (2 if bits else 0) or array.length == 0
    yield from (value if there else None for value, there in zip(values, present))


def read_all(description: quillmark.Description) -> tuple[dict[str, str], list[dict[str, object]]]:
    """The types of the columns, and the rows."""
    capsule = description.__arrow_c_stream__()
    stream, schema, array = stream_of(capsule), Schema(), Array()
    assert stream.get_schema(stream, schema) == stream.get_next(stream, array) == 0
    # What was handed out needs neither the description nor the stream.
    del capsule, description
    gc.collect()
    columns = {}
    types = {}
    for i in range(schema.n_children):
        child = schema.children[i][0]
        types[child.name.decode()] = child.format.decode()
        columns[child.name.decode()] = list(values_of(child, array.children[i][0]))
    assert (schema.format, array.length) == (b"+s", len(columns["name"]))
    rows = [dict(zip(columns, row)) for row in zip(*columns.values())]
    schema.release(schema)
    array.release(array)
    assert not schema.release and not array.release
    return types, rows


def test_a_stream_tells_what_the_signals_tell(engine: quillmark.Description) -> None:
    _, rows = read_all(engine)
    assert rows == rows_of(engine)


def test_columns_have_the_documented_types(engine: quillmark.Description) -> None:
    types, _ = read_all(engine)
    assert types == {
        "module": "i",
        "name": "U",
        "kind": "i",
        "address": "I",
        "address_extension": "i",
        "base_type": "i",
        "size_bits": "l",
        "byte_order": "i",
        "bit_mask": "I",
        "lower_limit": "g",
        "upper_limit": "g",
        "conversion": "i",
        "unit_text": "i",
    }


def test_a_description_without_signals_has_no_rows() -> None:
    types, rows = read_all(described(""))
    assert "address" in types and rows == []


def test_texts_are_utf8_whatever_they_were() -> None:
    for encoding in "utf-8", "latin-1":
        text = (
            'ASAP2_VERSION 1 60 /begin PROJECT P "" /begin MODULE M "" '
            '/begin COMPU_METHOD c "" IDENTICAL "%1" "°C" /end COMPU_METHOD '
            + measurement("UBYTE", "c")
            + " /end MODULE /end PROJECT"
        )
        _, rows = read_all(quillmark.read(text.encode(encoding)))
        assert rows[0]["unit_text"] == "°C"


def test_a_stream_ends_behind_its_only_batch(engine: quillmark.Description) -> None:
    capsule = engine.__arrow_c_stream__()
    stream, array = stream_of(capsule), Array()
    assert stream.get_next(stream, array) == 0 and array.release
    array.release(array)
    for _ in range(2):
        assert stream.get_next(stream, array) == 0 and not array.release
    assert stream.get_last_error(stream) is None


def test_columns_may_be_taken_out_of_the_table(engine: quillmark.Description) -> None:
    stream_capsule = engine.__arrow_c_stream__(requested_schema=None)
    stream, array, column = stream_of(stream_capsule), Array(), Array()
    assert stream.get_next(stream, array) == 0
    # As the interface has it: copy the structure, and mark the original as released.
    original = array.children[3][0]
    ctypes.memmove(ctypes.byref(column), ctypes.byref(original), ctypes.sizeof(Array))
    original.release = type(original.release)()
    array.release(array)
    stream.release(stream)
    expected = [row["address"] for row in rows_of(engine)]
    assert list(values_of(Schema(format=b"I", flags=2), column)) == expected
    column.release(column)


def test_what_nobody_takes_goes_with_its_capsule(engine: quillmark.Description) -> None:
    for is_released in False, True:
        capsule = engine.__arrow_c_stream__()
        if is_released:
            stream = stream_of(capsule)
            stream.release(stream)
        del capsule


def test_pyarrow_takes_it(engine: quillmark.Description) -> None:
    pyarrow = pytest.importorskip("pyarrow", reason="Debian has no pyarrow")
    table = engine.to_arrow()
    table.validate(full=True)
    assert table.to_pylist() == rows_of(engine)
    assert table.schema.field("address").type == pyarrow.uint32()
    assert table.schema.field("unit_text").type.value_type == pyarrow.large_string()
    assert described("").to_arrow().num_rows == 0


def test_without_pyarrow_the_method_says_so(
    engine: quillmark.Description, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setitem(sys.modules, "pyarrow", None)
    with pytest.raises(ImportError, match="pyarrow"):
        engine.to_arrow()
