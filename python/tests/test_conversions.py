"""Conversions against a plain reading of their formulas."""

from __future__ import annotations

import math
from fractions import Fraction

import numpy
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import quillmark
from conftest import described

raws = st.integers(-(2**31), 2**32)
coefficients = st.integers(-1000, 1000)


def conversion_of(kind: str, rest: str, blocks: str = "") -> quillmark.Conversion:
    method = f'/begin COMPU_METHOD c "" {kind} "%1" "" {rest} /end COMPU_METHOD'
    return described(method + "\n" + blocks).modules[0].conversions["c"]


def close(left: float, right: Fraction) -> bool:
    return math.isclose(left, float(right), rel_tol=1e-12, abs_tol=1e-9)


@given(coefficients.filter(bool), coefficients, raws)
def test_linear(factor: int, offset: int, raw: int) -> None:
    conversion = conversion_of("LINEAR", f"COEFFS_LINEAR {factor} {offset}")
    assert close(conversion(raw), Fraction(factor) * raw + offset)
    assert close(conversion.to_raw(conversion(raw)), Fraction(raw))


@given(st.tuples(*[coefficients] * 4), raws, coefficients)
def test_rational(terms: tuple[int, int, int, int], raw: int, physical: int) -> None:
    """raw = (b p + c) / (e p + f), where one of the terms must be 0 for an inverse."""
    b, c, e, f = terms
    for b, c, e, f in (b, c, 0, f), (0, c, e, f), (b, c, e, 0):
        if b * f == c * e:  # a constant
            continue
        conversion = conversion_of("RAT_FUNC", f"COEFFS 0 {b} {c} 0 {e} {f}")
        if e * physical + f != 0:
            assert close(conversion.to_raw(physical), Fraction(b * physical + c, e * physical + f))
        if e * raw != b:
            assert close(conversion(raw), Fraction(c - f * raw, e * raw - b))
        else:
            assert not math.isfinite(conversion(raw))


@pytest.mark.parametrize("kind", ["RAT_FUNC", "FORM", "LINEAR", "TAB_INTP", "TAB_VERB"])
def test_what_cannot_be_calculated_is_an_error(kind: str) -> None:
    rest = {"RAT_FUNC": "COEFFS 1 0 0 0 0 16", "FORM": '/begin FORMULA "X1" /end FORMULA'}
    blocks = '/begin COMPU_VTAB t "" TAB_VERB 0 /end COMPU_VTAB'
    tables = {"TAB_INTP": "COMPU_TAB_REF none", "TAB_VERB": "COMPU_TAB_REF t"}
    conversion = conversion_of(kind, rest.get(kind, tables.get(kind, "")), blocks)
    with pytest.raises(quillmark.Error):
        conversion(1)
    with pytest.raises(quillmark.Error):
        conversion.to_raw(1)


def test_an_undefined_conversion_is_an_error() -> None:
    text = '/begin MEASUREMENT s "" UBYTE lost 0 0 0 0 /end MEASUREMENT'
    conversion = described(text).modules[0].signals["s"].conversion
    with pytest.raises(quillmark.Error, match="lost"):
        conversion(1)


def test_identity_gives_back_what_it_gets() -> None:
    conversion = conversion_of("IDENTICAL", "")
    for value in 7, 2**63, 1.5:
        assert conversion(value) == conversion.to_raw(value) == value
    array = numpy.array([1, 2])
    assert conversion(array) is array


points = st.lists(
    st.tuples(st.integers(-1000, 1000), st.integers(-1000, 1000)),
    min_size=1,
    max_size=8,
    unique_by=lambda point: point[0],
)


def table(kind: str, rows: list[tuple[int, int]], default: str = "") -> quillmark.Conversion:
    lines = " ".join(f"{x}.0 {y}.0" for x, y in rows)
    block = f'/begin COMPU_TAB t "" {kind} {len(rows)} {lines} {default} /end COMPU_TAB'
    return conversion_of(kind, "COMPU_TAB_REF t", block)


def interpolate(rows: list[tuple[int, int]], x: Fraction) -> Fraction:
    rows = sorted(rows)
    if x <= rows[0][0]:
        return Fraction(rows[0][1])
    for (x0, y0), (x1, y1) in zip(rows, rows[1:]):
        if x <= x1:
            return y0 + (x - x0) * Fraction(y1 - y0, x1 - x0)
    return Fraction(rows[-1][1])


@given(points, st.integers(-4400, 4400))
def test_interpolated_table(rows: list[tuple[int, int]], quarters: int) -> None:
    conversion = table("TAB_INTP", rows)
    raw = Fraction(quarters, 4)
    physical = interpolate(rows, raw)
    assert close(conversion(float(raw)), physical)
    back = conversion.to_raw(float(physical))
    assert back is not None and close(float(interpolate(rows, Fraction(back))), physical)


def test_an_interpolated_table_with_a_default_ends_where_it_ends() -> None:
    conversion = table("TAB_INTP", [(0, 10), (10, 30)], 'DEFAULT_VALUE "broken"')
    assert [conversion(raw) for raw in (-1, 0, 5, 10, 11)] == ["broken", 10, 20, 30, "broken"]
    result = conversion(numpy.array([-1, 5, 11]))
    numpy.testing.assert_array_equal(result, [numpy.nan, 20, numpy.nan])
    assert conversion.to_raw(31) is None


@given(points, st.integers(-1100, 1100))
def test_table_of_numbers(rows: list[tuple[int, int]], raw: int) -> None:
    conversion = table("TAB_NOINTP", rows)
    assert conversion(raw) == dict(rows).get(raw)
    physical = raw
    assert conversion.to_raw(physical) == next((x for x, y in rows if y == physical), None)


ranges = st.lists(st.tuples(st.integers(-20, 20), st.integers(0, 6)), min_size=1, max_size=8)


@given(ranges, st.integers(-25, 30), st.booleans())
def test_table_of_ranges(spans: list[tuple[int, int]], raw: int, has_default: bool) -> None:
    rows = [(low, low + width, f"text {i}") for i, (low, width) in enumerate(spans)]
    lines = " ".join(f'{low} {high} "{text}"' for low, high, text in rows)
    default = 'DEFAULT_VALUE "else"' if has_default else ""
    conversion = conversion_of(
        "TAB_VERB",
        "COMPU_TAB_REF t",
        f'/begin COMPU_VTAB_RANGE t "" {len(rows)} {lines} {default} /end COMPU_VTAB_RANGE',
    )
    fitting = [row for row in rows if row[0] <= raw <= row[1]]
    latest = max((row[0] for row in fitting), default=0)
    otherwise = "else" if has_default else None
    expected = next((row[2] for row in fitting if row[0] == latest), otherwise)
    assert conversion(raw) == expected
    assert list(conversion(numpy.array([raw, raw]))) == [expected, expected]
    for low, _, text in rows:
        assert conversion.to_raw(text) == low
    assert conversion.to_raw("no such text") is None
    back = conversion.to_raw(numpy.array([rows[0][2], "no such text"]))
    numpy.testing.assert_array_equal(back, [rows[0][0], numpy.nan])


@settings(max_examples=30)
@given(st.lists(raws, max_size=20))
def test_an_array_gives_what_its_numbers_give(values: list[int]) -> None:
    for conversion in (
        conversion_of("LINEAR", "COEFFS_LINEAR 0.5 -40"),
        conversion_of("RAT_FUNC", "COEFFS 0 0 30000000 0 1 0"),
        table("TAB_INTP", [(0, 10), (10, 30), (500, -2)]),
    ):
        result = conversion(numpy.array(values))
        assert result.dtype == float
        numpy.testing.assert_array_equal(result, [conversion(value) for value in values])
        back = conversion.to_raw(result)
        expected = [conversion.to_raw(float(value)) for value in result]
        numpy.testing.assert_array_equal(back, numpy.array(expected, dtype=float))


def test_arrays_keep_their_shape() -> None:
    conversion = conversion_of("LINEAR", "COEFFS_LINEAR 2 1")
    matrix = numpy.arange(6, dtype=numpy.uint8).reshape(2, 3)
    assert conversion(matrix).tolist() == [[1, 3, 5], [7, 9, 11]]
    assert conversion(matrix.T).tolist() == [[1, 7], [3, 9], [5, 11]]
    assert conversion(matrix[:, ::2]).tolist() == [[1, 5], [7, 11]]
    assert conversion(numpy.array(3)) == 7
    assert conversion(numpy.float32(3)) == conversion(numpy.int16(3)) == 7


@pytest.mark.parametrize("value", ["1", None, numpy.array(["1"]), numpy.array([1j])])
def test_refuses_what_is_no_number(value: object) -> None:
    conversion = conversion_of("LINEAR", "COEFFS_LINEAR 2 1")
    with pytest.raises(TypeError):
        conversion(value)


def test_no_number_stays_none() -> None:
    assert math.isnan(conversion_of("LINEAR", "COEFFS_LINEAR 2 1")(math.nan))
    assert table("TAB_NOINTP", [(1, 2)])(math.nan) is None
    assert table("TAB_INTP", [(1, 2), (2, 3)])(math.nan) is None
    result = table("TAB_INTP", [(1, 2), (2, 3)])(numpy.array([math.nan]))
    assert math.isnan(result[0])


def test_texts_are_found_in_either_encoding() -> None:
    for encoding in "utf-8", "latin-1":
        text = (
            'ASAP2_VERSION 1 60 /begin PROJECT P "" /begin MODULE M "" '
            '/begin COMPU_VTAB t "" TAB_VERB 1 3 "Öl" /end COMPU_VTAB /end MODULE /end PROJECT'
        )
        conversion = quillmark.read(text.encode(encoding)).modules[0].conversions["t"]
        assert conversion(3) == "Öl"
        assert conversion.to_raw("Öl") == 3
        assert conversion.to_raw("日") is None


def test_a_million_values_take_no_time() -> None:
    conversion = table("TAB_INTP", [(0, 10), (10, 30), (500, -2)])
    values = numpy.linspace(-5, 600, 1_000_000)
    expected = numpy.interp(values, [0, 10, 500], [10, 30, -2])
    numpy.testing.assert_allclose(conversion(values), expected)
