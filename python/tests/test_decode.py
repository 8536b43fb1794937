"""Values out of the memory of a control unit."""

from __future__ import annotations

import functools
import re
import struct

import numpy
import pytest
from hypothesis import given
from hypothesis import strategies as st

import quillmark
from conftest import VERSIONS, described, measurement, signal_of

TYPES = {
    "UBYTE": "B",
    "SBYTE": "b",
    "UWORD": "H",
    "SWORD": "h",
    "ULONG": "I",
    "SLONG": "i",
    "A_UINT64": "Q",
    "A_INT64": "q",
    "FLOAT32_IEEE": "f",
    "FLOAT64_IEEE": "d",
}


@functools.cache
def signal_with(data_type: str, byte_order: str) -> quillmark.Signal:
    return signal_of(measurement(data_type, rest=f"BYTE_ORDER {byte_order}"))


@pytest.mark.parametrize("order, sign", [("MSB_LAST", "<"), ("MSB_FIRST", ">")])
@pytest.mark.parametrize("name, code", TYPES.items())
@given(data=st.binary(min_size=11, max_size=11), offset=st.integers(0, 3))
def test_reads_every_type(name: str, code: str, order: str, sign: str, data: bytes, offset: int):
    signal = signal_with(name, order)
    (expected,) = struct.unpack_from(sign + code, data, offset)
    numpy.testing.assert_equal(signal.decode(data, offset=offset), expected)


def test_without_a_byte_order_the_low_byte_comes_first() -> None:
    assert signal_of(measurement("UWORD")).decode(b"\x01\x02") == 0x0201


@pytest.mark.parametrize("word, first", [("BIG_ENDIAN", "low"), ("LITTLE_ENDIAN", "high")])
def test_the_old_words_of_the_byte_order_mean_the_contrary(word: str, first: str) -> None:
    signal = signal_of(measurement("UWORD", rest=f"BYTE_ORDER {word}"))
    assert signal.decode(b"\x01\x02") == {"low": 0x0201, "high": 0x0102}[first]
    result = quillmark.convert(
        described(measurement("UWORD", rest=f"BYTE_ORDER {word}")), versions=VERSIONS
    )
    told = {"low": b"byteorder=intel", "high": b"byteorder=motorola"}[first]
    assert result.include_file is not None and told in result.include_file


@pytest.mark.parametrize("mask, expected", [("0xFFFF", -2), ("0x7FFF", 0x7FFE), ("0xFF", 0xFE)])
def test_a_mask_of_all_bits_takes_no_sign_away(mask: str, expected: int) -> None:
    signal = signal_of(measurement("SWORD", rest=f"BIT_MASK {mask}"))
    assert signal.decode(b"\xfe\xff") == expected


@pytest.mark.parametrize(
    "mask, operation, raw, expected",
    [
        ("0x0002", "", 0xFFFF, 1),
        ("0x0FF0", "", 0x1230, 0x23),
        ("0x0000", "", 0x1230, 0),
        ("0x000F", "LEFT_SHIFT 4", 0x1237, 0x70),
        ("0x0002", "RIGHT_SHIFT 1", 0xFFFF, 1),
        ("0xF000", "RIGHT_SHIFT 12", 0xF123, 15),
        ("0xF000", "RIGHT_SHIFT 12 SIGN_EXTEND", 0xF123, -1),
        ("0xF000", "RIGHT_SHIFT 12 SIGN_EXTEND", 0x7123, 7),
        ("0xF000", "RIGHT_SHIFT 8", 0x7123, 0x70),
    ],
)
def test_masks_first_and_shifts_then(mask: str, operation: str, raw: int, expected: int) -> None:
    shift = f"/begin BIT_OPERATION {operation} /end BIT_OPERATION" if operation else ""
    signal = signal_of(measurement("UWORD", rest=f"BIT_MASK {mask} {shift}"))
    assert signal.decode(struct.pack("<H", raw)) == expected


def test_gives_physical_values_or_raw_ones(engine: quillmark.Description) -> None:
    signals = engine.modules[0].signals
    assert signals["nEngine"].decode(b"\x10\x00") == 4.0
    assert signals["nEngine"].decode(b"\x10\x00", physical=False) == 16
    assert signals["stEngine"].decode(b"\x02") == "idle"
    assert signals["stEngine"].decode(b"\x09") == "unknown"
    assert signals["tiInjection"].decode(bytes(range(8)), physical=False) == [
        0x0100,
        0x0302,
        0x0504,
        0x0706,
    ]


@pytest.mark.parametrize("layout", ["", "LAYOUT ROW_DIR", "LAYOUT COLUMN_DIR"])
@pytest.mark.parametrize("dimensions", ["3", "2 3", "2 3 4"])
def test_elements_are_those_of_the_include_file(layout: str, dimensions: str) -> None:
    description = described(measurement("UBYTE", rest=f"MATRIX_DIM {dimensions} {layout}"))
    result = quillmark.convert(
        description, versions=VERSIONS, user="bench", library="sigTrak=2023.4.2"
    )
    text = result.include_file.decode()
    values = description.modules[0].signals["s"].decode(bytes(range(24)))
    elements = re.findall(r"name=s((?:\[\d+\])+)\r\n.*?mta=0x([0-9a-f]+)", text, re.DOTALL)
    assert len(elements) == numpy.prod([int(size) for size in dimensions.split()])
    for indices, address in elements:
        element = values
        for index in re.findall(r"\d+", indices):
            element = element[int(index)]
        assert element == int(address, 16) - 0x10


def test_a_text_ends_at_its_first_zero() -> None:
    signal = signal_of(
        '/begin CHARACTERISTIC s "" ASCII 0x10 l 0 NO_COMPU_METHOD 0 255 NUMBER 8 '
        "/end CHARACTERISTIC",
        "/begin RECORD_LAYOUT l FNC_VALUES 1 UBYTE COLUMN_DIR DIRECT /end RECORD_LAYOUT",
    )
    assert signal.decode(b"abc\0defgrest") == "abc"
    assert signal.decode(b"abcdefghrest") == "abcdefgh"


def test_too_few_bytes_are_refused() -> None:
    signal = signal_of(measurement("ULONG"))
    for data, offset in (b"", 0), (b"123", 0), (b"12345", 2), (b"1234", 9):
        with pytest.raises(ValueError, match="s does not fit"):
            signal.decode(data, offset=offset)
    with pytest.raises(ValueError):
        signal_of(measurement("UBYTE", rest="MATRIX_DIM 65535 65535 65535")).decode(bytes(99))
    with pytest.raises(TypeError):
        signal.decode("1234")
    with pytest.raises(TypeError):
        signal.decode(b"1234", offset=-1)


def test_what_is_no_plain_value_is_an_error(engine: quillmark.Description) -> None:
    for signal in engine.modules[0].signals:
        if signal.kind in (quillmark.SignalKind.CURVE, quillmark.SignalKind.MAP):
            with pytest.raises(quillmark.Error, match=signal.name):
                signal.decode(bytes(1000))
