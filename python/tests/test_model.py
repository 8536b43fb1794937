"""What descriptions hold, as views."""

from __future__ import annotations

import pytest

import quillmark
from conftest import described, measurement, signal_of


def test_lists_are_walked_and_searched(engine: quillmark.Description) -> None:
    signals = engine.modules["EngineControl"].signals
    assert signals[0].name == "nEngine"
    assert signals[-1] == signals[len(signals) - 1]
    assert [signal.name for signal in signals[:3]] == ["nEngine", "nEngineFast", "nIdleTarget"]
    assert [s.name for s in signals[::-1]] == [s.name for s in signals][::-1]
    assert signals["tOil"].name == "tOil"
    assert "tOil" in signals and "none" not in signals
    assert signals["tOil"] in signals
    assert signals.get("none") is None
    assert signals.get("none", 7) == 7
    with pytest.raises(KeyError):
        signals["none"]
    with pytest.raises(IndexError):
        signals[len(signals)]


def test_lists_keep_the_order_of_the_file() -> None:
    names = ["z", "a", "m"]
    units = "".join(f'/begin UNIT {name} "" "" DERIVED /end UNIT ' for name in names)
    assert [unit.name for unit in described(units).modules[0].units] == names


def test_a_signal_tells_what_it_is(engine: quillmark.Description) -> None:
    signals = engine.modules[0].signals
    gear = signals["stGear"]
    assert gear.kind is quillmark.SignalKind.MEASUREMENT
    assert gear.long_identifier == "gear, reverse being -1"
    assert gear.address == 0xD00001A4
    assert gear.address_extension is None
    assert gear.base_type is quillmark.BaseType.UNSIGNED_INTEGER
    assert gear.size_bits == 16
    assert gear.byte_order is quillmark.ByteOrder.LITTLE_ENDIAN
    assert gear.bit_mask == 0xF000
    assert gear.bit_operation is quillmark.BitOperation.RIGHT_SHIFT
    assert (gear.shift_count, gear.sign_extend) == (12, True)
    assert (gear.lower_limit, gear.upper_limit) == (-1, 7)
    assert gear.dimensions == ()
    assert signals["cntMisfire"].dimensions == (2, 2, 3)
    assert signals["aIgnition"].layout is quillmark.ArrayLayout.ROW_DIRECTION
    assert signals["facAdapt"].conversion is None
    assert signals["pCylinder"].address_extension == 1
    assert [event.channel for event in signals["nEngine"].events] == [0, 1, 2, 2]
    assert [s.name for s in signals["pwrEngine"].virtual_members] == ["trqEngine", "nEngine"]


def test_a_signal_without_an_address_has_none() -> None:
    text = '/begin MEASUREMENT s "" UBYTE NO_COMPU_METHOD 0 0 0 0 /end MEASUREMENT'
    signal = signal_of(text)
    assert signal.address is None
    assert signal.byte_order is None


def test_parts_tell_where_they_stand() -> None:
    text = (
        b'/begin PROJECT P "" /begin MODULE M ""\n'
        b'/begin UNIT u "" "V" DERIVED /end UNIT\n\n'
        b'/begin MEASUREMENT s "" UBYTE lost 0 0 0 0 /end MEASUREMENT\n'
        b"/end MODULE /end PROJECT\n"
    )
    module = quillmark.read(text).modules[0]
    signal = module.signals["s"]
    assert (module.line, module.units["u"].line, signal.line) == (1, 2, 4)
    assert signal.conversion is not None and signal.conversion.line is None


def test_a_module_tells_what_it_has(engine: quillmark.Description) -> None:
    module = engine.modules[0]
    assert engine.projects[0].modules[0] == module
    assert module.name == "EngineControl"
    assert (module.epk, module.epk_address) == ("BE4CYL_C3_0118", 0x80020040)
    assert module.station_protocol is quillmark.ProtocolKind.XCP
    assert module.conversions["CoolantSensor"].table == module.conversions["CoolantCurve"]
    assert module.units["kilometre_per_hour"].display_text == "km/h"
    assert module.record_layouts["Scalar_S16"].size_bits == 16
    segment = module.memory_segments["CalData"]
    assert (segment.address, segment.size) == (0x80020000, 0x8000)
    assert segment.kind is quillmark.MemoryKind.FLASH
    assert segment.use is quillmark.MemoryUse.DATA
    settings = {setting.name: setting.value for setting in module.settings}
    assert settings["mod_par/epk"] == "BE4CYL_C3_0118"


def test_a_protocol_tells_how_it_is_reached(engine: quillmark.Description) -> None:
    (protocol,) = engine.modules[0].protocols
    assert protocol.kind is quillmark.ProtocolKind.XCP
    (transport,) = protocol.transports
    assert transport.kind is quillmark.TransportKind.CAN
    assert (transport.master_can_id, transport.slave_can_id) == (0x7E1, 0x7E9)
    acquisition = protocol.station.acquisition
    assert acquisition is not None
    assert [event.name for event in acquisition.events][:2] == ["Segment", "2 ms task"]
    assert acquisition.events["10 ms task"].channel == 2
    assert acquisition.timestamps is not None and acquisition.timestamps.byte_length == 2


def test_views_show_what_they_are(engine: quillmark.Description) -> None:
    module = engine.modules[0]
    shown = {
        "<quillmark.Signal stGear: MEASUREMENT unsigned of 16 bits at 0xD00001A4>": module.signals[
            "stGear"
        ],
        "<quillmark.Conversion StateNames: TAB_NOINTP, 5 rows>": module.conversions["StateNames"],
        "<quillmark.Conversion Percent: LINEAR>": module.conversions["Percent"],
        "<quillmark.Unit degree_celsius: 'degC'>": module.units["degree_celsius"],
        "<quillmark.Protocol XCP>": module.protocols[0],
        "<quillmark.MemorySegment CalData: 32768 bytes at 0x80020000>": module.memory_segments[
            "CalData"
        ],
    }
    for text, view in shown.items():
        assert repr(view) == text
    assert repr(module.protocols) == "<quillmark.List of 1: <quillmark.Protocol XCP>>"


def walk(thing: object, depth: int = 0) -> int:
    """Reads every attribute of a view and of all that is reached from it."""
    count = 1
    assert repr(thing)
    if depth < 6 and isinstance(thing, quillmark.List):
        return count + sum(walk(item, depth + 1) for item in thing)
    if depth < 6 and type(thing).__module__ == "quillmark._quillmark":
        for name in dir(type(thing)):
            if isinstance(getattr(type(thing), name), property):
                count += walk(getattr(thing, name), depth + 1)
    return count


def test_everything_can_be_walked(engine: quillmark.Description) -> None:
    assert walk(engine) > 2000


def test_views_are_equal_where_they_look_at_the_same(engine: quillmark.Description) -> None:
    signals = engine.modules[0].signals
    assert signals[0] == signals["nEngine"]
    assert signals[0] != signals[1]
    assert len({signals[0], signals["nEngine"], signals[1]}) == 2
    assert signals[0] != "nEngine"


def test_a_name_that_is_only_used_is_not_defined() -> None:
    signal = signal_of(measurement("UBYTE", "lost"))
    assert signal.conversion is not None
    assert not signal.conversion.is_defined
    assert repr(signal.conversion) == "<quillmark.Conversion lost: not defined>"


def test_formulas_and_formats_are_texts() -> None:
    formula = '/begin FORMULA "X1 * 2" FORMULA_INV "X1 / 2" /end FORMULA'
    method = f'/begin COMPU_METHOD c "" FORM "%8.3" "" {formula} /end COMPU_METHOD'
    signal = signal_of(method, measurement("UBYTE", "c", 'FORMAT "%4.1"'))
    conversion = signal.conversion
    assert conversion is not None
    assert (conversion.formula, conversion.inverse_formula) == ("X1 * 2", "X1 / 2")
    assert (conversion.display_format, signal.display_format) == ("%8.3", "%4.1")
    assert signal_of(measurement("UBYTE")).display_format == ""
