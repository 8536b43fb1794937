"""Descriptions of control units (A2L, ASAM MCD-2 MC): read, walk, calculate, convert, compare.

>>> import quillmark
>>> description = quillmark.read("examples/first/fan.a2l")
>>> module = description.modules[0]
>>> fan = module.signals["nFan"]
>>> fan
<quillmark.Signal nFan: MEASUREMENT unsigned of 16 bits at 0x70001A40>
>>> fan.conversion(4000), fan.unit_text
(1000.0, '1/min')
>>> fan.decode(bytes.fromhex("a00f"))
1000.0
"""

from ._enumerations import (
    ArrayLayout,
    BaseType,
    BitOperation,
    ByteOrder,
    ConversionKind,
    DifferenceLevel,
    EventUse,
    MemoryKind,
    MemoryUse,
    ProtocolKind,
    Severity,
    SignalKind,
    TransportKind,
)
from ._error import Error
from ._quillmark import (
    Acquisition,
    CanFd,
    Conversion,
    ConvertResult,
    DaqCanId,
    DaqList,
    Description,
    Difference,
    Event,
    EventReference,
    Finding,
    FlexRayBuffer,
    Frame,
    Group,
    List,
    MemorySegment,
    Module,
    Odt,
    OdtEntry,
    PackedMode,
    Project,
    Protocol,
    RecordLayout,
    Setting,
    Signal,
    Station,
    TableRow,
    Timebase,
    Transport,
    Unit,
    __version__,
    compare,
    convert,
    read,
)
from ._verbs import decompress

__all__ = [
    "Acquisition",
    "ArrayLayout",
    "BaseType",
    "BitOperation",
    "ByteOrder",
    "CanFd",
    "Conversion",
    "ConversionKind",
    "ConvertResult",
    "DaqCanId",
    "DaqList",
    "Description",
    "Difference",
    "DifferenceLevel",
    "Error",
    "Event",
    "EventReference",
    "EventUse",
    "Finding",
    "FlexRayBuffer",
    "Frame",
    "Group",
    "List",
    "MemoryKind",
    "MemorySegment",
    "MemoryUse",
    "Module",
    "Odt",
    "OdtEntry",
    "PackedMode",
    "Project",
    "Protocol",
    "ProtocolKind",
    "RecordLayout",
    "Setting",
    "Severity",
    "Signal",
    "SignalKind",
    "Station",
    "TableRow",
    "Timebase",
    "Transport",
    "TransportKind",
    "Unit",
    "compare",
    "convert",
    "decompress",
    "read",
    "__version__",
]
