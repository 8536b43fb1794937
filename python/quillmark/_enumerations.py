"""What the parts of a description can be. The values are the words of the library."""

import enum


class SignalKind(enum.Enum):
    """What a signal is: a MEASUREMENT, or a CHARACTERISTIC by its type."""

    MEASUREMENT = "MEASUREMENT"
    VALUE = "VALUE"
    CURVE = "CURVE"
    MAP = "MAP"
    CUBOID = "CUBOID"
    VALUE_BLOCK = "VAL_BLK"
    ASCII = "ASCII"
    CUBE_4 = "CUBE_4"
    CUBE_5 = "CUBE_5"


class ByteOrder(enum.Enum):
    """Which byte of a value comes first: the one of the highest or of the lowest weight."""

    BIG_ENDIAN = "big"
    LITTLE_ENDIAN = "little"


class BaseType(enum.Enum):
    """How the bits of a value are read. Its size stands beside it."""

    INTEGER = "integer"
    UNSIGNED_INTEGER = "unsigned"
    FLOAT32 = "float32"
    FLOAT64 = "float64"
    ASCII = "ascii"


class BitOperation(enum.Enum):
    """Shift that a signal asks for after its bit mask is applied."""

    LEFT_SHIFT = "left"
    RIGHT_SHIFT = "right"


class ArrayLayout(enum.Enum):
    """How the elements of an array follow each other."""

    ROW_DIRECTION = "ROW_DIR"
    COLUMN_DIRECTION = "COLUMN_DIR"


class ConversionKind(enum.Enum):
    """How raw values become physical ones. TABLE: single values, ranges, texts."""

    IDENTITY = "IDENTICAL"
    RATIONAL = "RAT_FUNC"
    LINEAR = "LINEAR"
    TABLE = "TAB_NOINTP"
    FORMULA = "FORM"
    INTERPOLATED_TABLE = "TAB_INTP"


class ProtocolKind(enum.Enum):
    """The protocol over which a control unit is measured."""

    KWP = "KWP"
    CCP = "CCP"
    XCP = "XCP"
    GMLAN = "GMLAN"


class TransportKind(enum.Enum):
    """The bus or network over which it is reached."""

    CAN = "CAN"
    UDP = "UDP"
    TCP = "TCP"
    FLEXRAY = "FLEXRAY"


class MemoryKind(enum.Enum):
    """The kind of a memory segment."""

    RAM = "RAM"
    ROM = "ROM"
    EPROM = "EPROM"
    EEPROM = "EEPROM"
    FLASH = "FLASH"
    REGISTER = "REGISTER"


class MemoryUse(enum.Enum):
    """What lies in a memory segment."""

    RESERVED = "RESERVED"
    CODE = "CODE"
    VARIABLES = "VARIABLES"
    DATA = "DATA"
    PARAMETERS = "CALIBRATION_VARIABLES"


class EventUse(enum.Enum):
    """As what a signal names an XCP event channel."""

    FIXED = "fixed"
    AVAILABLE = "available"
    DEFAULT = "default"
    CONSISTENCY = "consistency"


class Severity(enum.Enum):
    """How bad a finding is."""

    NOTE = "note"
    WARNING = "warning"
    ERROR = "error"


class DifferenceLevel(enum.Enum):
    """How bad a difference is. CANNOT_COMPARE is raised as an error, not returned."""

    CANNOT_COMPARE = "cannot compare"
    ERROR = "error"
    WARNING = "warning"


class DiffKind(enum.Enum):
    """What has happened from one description to the next."""

    INCOMPARABLE = "incomparable"
    SETTING = "setting"
    NAME = "name"
    REMOVED = "removed"
    ADDED = "added"
    ADDRESS = "address"
    TYPE = "type"
    CONVERSION = "conversion"
    UNIT = "unit"


class DiffObject(enum.Enum):
    """To what it has happened. TABLE: a COMPU_TAB, COMPU_VTAB or COMPU_VTAB_RANGE."""

    SETTING = "setting"
    MODULE = "module"
    SIGNAL = "signal"
    CONVERSION = "conversion"
    TABLE = "table"
