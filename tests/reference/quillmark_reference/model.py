"""What a description tells, independent of how it was written.

Texts are bytes. A value that the model keeps with its kind is an int, a float or bytes, and None
where nothing was told.
"""

from dataclasses import dataclass, field

BIG_ENDIAN = 1
LITTLE_ENDIAN = 2

# Base types of stored values.
SIGNED = "signed"
UNSIGNED = "unsigned"
REAL = "float"
ASCII = "ascii"

# Kinds of conversions.
UNDEFINED = "undefined"
IDENTITY = "identity"
LINEAR = "linear"
RATIONAL = "rational"
TABLE = "table"
INTERPOLATION = "interpolation"
FORMULA = "formula"

# Kinds of signals that the output asks for.
MEASUREMENT = 1
VALUE = 2
ASCII_TEXT = 7

# Protocols.
KWP_PROTOCOL = 1
CCP_PROTOCOL = 2
XCP_PROTOCOL = 3
GMLAN_PROTOCOL = 4

# Transports.
CAN_TRANSPORT = 1
UDP_TRANSPORT = 5
TCP_TRANSPORT = 6
FLEXRAY_TRANSPORT = 9

# Prefix of the names under which the tables of conversions are kept, so that a table and a
# conversion may share a name.
TABLE_PREFIX = b"TAB::"


@dataclass
class Reference:
    """A name that stands for an object which may be defined later, or nowhere."""

    name: bytes
    target: object = None


@dataclass
class DataType:
    base_type: str | None = None
    size_bits: int = 0
    bit_mask: int | None = None


@dataclass
class Unit:
    name: bytes
    display_text: bytes


@dataclass
class TableEntry:
    lower: object
    upper: object
    output: object


@dataclass
class Conversion:
    name: bytes
    kind: str = UNDEFINED
    unit: object = None  # a Unit, or a Reference to one
    coefficients: list = field(default_factory=list)  # numerator, highest power first
    denominator: list = field(default_factory=list)
    table: Reference | None = None
    entries: list = field(default_factory=list)
    default_text: bytes | None = None


@dataclass
class RecordLayout:
    name: bytes
    data_type: DataType | None = None


@dataclass
class Signal:
    name: bytes
    kind: int = MEASUREMENT
    data_type: DataType = field(default_factory=DataType)
    conversion: Reference | None = None
    record_layout: Reference | None = None
    address: int | None = None
    address_extension: int | None = None
    byte_order: int = 0
    bit_operation: int = 0  # 1 left shift, 2 right shift
    shift_count: int = 0
    sign_extend: bool = False
    dimensions: list = field(default_factory=list)
    layout: int = 0  # 1 row direction, 2 column direction
    virtual_members: list = field(default_factory=list)


@dataclass
class Function:
    """A group or a function: names of signals and of other groups or functions."""

    name: bytes
    members: list = field(default_factory=list)


@dataclass
class Frame:
    name: bytes
    members: list = field(default_factory=list)


class MemorySegment:
    """Owner of the interface blocks of a memory segment; nothing of it is kept."""


@dataclass
class Module:
    name: bytes
    properties: dict = field(default_factory=dict)
    conversions: list = field(default_factory=list)
    units: list = field(default_factory=list)
    record_layouts: list = field(default_factory=list)
    signals: list = field(default_factory=list)
    functions: list = field(default_factory=list)
    frames: list = field(default_factory=list)
    comm_params: list = field(default_factory=list)


@dataclass
class Project:
    name: bytes
    modules: list = field(default_factory=list)


@dataclass
class Root:
    projects: list = field(default_factory=list)

    def modules(self):
        """Every module with its project, in file order."""
        for project in self.projects:
            for module in project.modules:
                yield project, module


# How a control unit is reached, and how data is acquired from it.


@dataclass
class TimeBase:
    resolution: int = 0
    scale: int = 0
    byte_length: int | None = None
    fixed: bool = False


@dataclass
class DaqList:
    number: int | None = None
    length: object = None
    max_odt_entries: object = None
    source_id: object = None
    first_pid: object = None
    name: bytes = b""


@dataclass
class DaqCanId:
    """The CAN identifier on which a DAQ list is sent; None where it may be chosen."""

    number: int | None = None
    can_id: int | None = None


@dataclass
class Raster:
    """An event channel."""

    number: int | None = None
    name: bytes = b""
    daq: bool = False
    stim: bool = False
    time_base: TimeBase | None = None
    priority: int | None = None


@dataclass
class NamedValue:
    name: bytes
    value: object


@dataclass
class Source:
    """A data source as a list of named values, in the order in which they were read."""

    name: bytes = b""
    values: list = field(default_factory=list)

    def add(self, name, value):
        self.values.append(NamedValue(name, value))

    def find(self, name):
        """The first value of that name, or None."""
        return next((value.value for value in self.values if value.name == name), None)


@dataclass
class ProtocolParam:
    encoding: int = 0
    properties: dict = field(default_factory=dict)


@dataclass
class DaqCapabilities:
    properties: dict = field(default_factory=dict)
    rasters: list = field(default_factory=list)
    daq_lists: list = field(default_factory=list)
    time_base: TimeBase | None = None
    configuration_type: int = 0
    optimisation_type: int = 0
    address_extension_type: int = 0
    identification_field_type: int = 0
    odt_entry_granularity: int = 0
    overload_indication: int = 0
    max_daq: int | None = None
    max_event_channels: int | None = None
    min_daq: int | None = None
    max_odt_entry_size: int | None = None
    prescaler_supported: bool = False
    resume_supported: bool = False
    pid_off_supported: bool = False
    store_daq_supported: bool = False


class Station:
    """Three parts, each made when something first asks for it to be there.

    The attributes tell what is there without making it.
    """

    def __init__(self):
        self.protocol = None
        self.daq_can_ids = None
        self.daq = None

    def need_protocol(self):
        self.protocol = self.protocol or ProtocolParam()
        return self.protocol

    def need_daq_can_ids(self):
        if self.daq_can_ids is None:
            self.daq_can_ids = []
        return self.daq_can_ids

    def need_daq(self):
        self.daq = self.daq or DaqCapabilities()
        return self.daq


@dataclass
class Transport:
    type: int
    name: bytes
    instance_name: bytes = b""
    properties: dict = field(default_factory=dict)
    slave_can_id: int | None = None
    master_can_id: int | None = None
    station_address: int | None = None
    station: Station = field(default_factory=Station)


@dataclass
class CommParam:
    """The communication parameters of one protocol of a module."""

    name: bytes
    protocol_type: int
    station: Station = field(default_factory=Station)
    transports: list = field(default_factory=list)
