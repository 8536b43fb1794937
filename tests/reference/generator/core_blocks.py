"""Layouts of the blocks of the description itself."""

from generator.grammar import layout

_DATA_TYPE = "UBYTE|SBYTE|UWORD|SWORD|ULONG|SLONG|A_UINT64|A_INT64|FLOAT32_IEEE|FLOAT64_IEEE"
_LAYOUT_DATA_TYPE = _DATA_TYPE + "|FLOAT16_IEEE"
_ADDRESSING = "PBYTE|PWORD|PLONG|DIRECT|PLONGLONG"
_INDEX_ORDER = "INDEX_INCR|INDEX_DECR"
_INDEX_MODE = "ROW_DIR|COLUMN_DIR|ALTERNATE_WITH_X|ALTERNATE_WITH_Y|ALTERNATE_CURVES"
_ALIGNMENTS = tuple(
    f"ALIGNMENT_{what} int"
    for what in ("BYTE", "WORD", "LONG", "INT64", "FLOAT16_IEEE", "FLOAT32_IEEE", "FLOAT64_IEEE")
)
_AXES = ("X", "Y", "Z", "4", "5")
_BYTE_ORDER = "BYTE_ORDER MSB_FIRST|MSB_LAST|LITTLE_ENDIAN|BIG_ENDIAN|MSB_FIRST_MSW_LAST"


def _record_layout_options():
    options = [
        f"FNC_VALUES int {_LAYOUT_DATA_TYPE} {_INDEX_MODE} {_ADDRESSING}",
        f"FNC_VALUES int {_LAYOUT_DATA_TYPE} {_INDEX_MODE} {_ADDRESSING}",
        f"IDENTIFICATION int {_LAYOUT_DATA_TYPE}", "RESERVED int BYTE|WORD|LONG*",
        f"RIP_ADDR_W int {_LAYOUT_DATA_TYPE}", "STATIC_RECORD_LAYOUT", "STATIC_ADDRESS_OFFSETS",
    ]
    for axis in _AXES:
        options += [
            f"AXIS_PTS_{axis} int {_LAYOUT_DATA_TYPE} {_INDEX_ORDER} {_ADDRESSING}",
            f"AXIS_RESCALE_{axis} int {_LAYOUT_DATA_TYPE} int {_INDEX_ORDER} {_ADDRESSING}",
            f"FIX_NO_AXIS_PTS_{axis} int",
        ]
        options += [
            f"{keyword}_{axis} int {_LAYOUT_DATA_TYPE}"
            for keyword in (
                "NO_AXIS_PTS", "NO_RESCALE", "SRC_ADDR", "RIP_ADDR", "SHIFT_OP", "OFFSET",
                "DIST_OP",
            )
        ]
    return (*options, *_ALIGNMENTS)


def some_of_many(options):
    """A maker for blocks with so many options that a few random ones do."""

    def make(grammar):
        return [
            token
            for option in grammar.dice.some(options, grammar.dice.few(6))
            for token in grammar.items(option.rstrip("*"))
        ]

    return make


def _pairs(kind_words, entry):
    """A maker of a table's element count and entries; the count may lie."""

    def make(grammar):
        count = grammar.dice.few(5)
        tokens = grammar.items(kind_words)
        told = count + grammar.dice.between(-1, 1) if grammar.dice.odd() else count
        tokens.append(grammar.words.integer() if grammar.dice.odd() else str(told))
        for _ in range(count):
            tokens += grammar.items(entry)
        return tokens

    return make


def _real(grammar):
    """A number that is a real more often than elsewhere."""
    return (
        [f"{grammar.dice.between(-200, 200) / 8}"]
        if grammar.dice.chance(0.8)
        else [grammar.words.number()]
    )


def _numeric_table(grammar):
    return _pairs("TAB_INTP|TAB_NOINTP", "@real @real")(grammar)


def _coefficients(grammar):
    """Six coefficients, mostly those of a function that can be inverted."""
    pattern = grammar.dice.weighted(
        {
            "0 n n 0 0 n": 8,
            "0 0 n 0 n n": 5,
            "0 n n 0 n 0": 5,
            "n n n n n n": 2,
            "0 0 0 0 0 0": 1,
            "0 n n 0 n n": 1,
            "0 n 0 0 0 n": 2,
            "n n n 0 0 n": 1,
            "0 0 n 0 n 0": 1,
            "0 n 0 0 n 0": 1,
            "0 0 n 0 0 n": 1,
        }
    )
    zeros = (
        ["0", "0", "0", "0.0", "-0", "-0.0", "0x0", "0e5", "."]
        if grammar.dice.odd()
        else ["0", "0", "0.0"]
    )
    return [
        grammar.dice.pick(zeros) if item == "0" else grammar.words.number()
        for item in pattern.split()
    ]


def _matrix_dimensions(grammar):
    dice = grammar.dice
    if dice.odd():
        return [
            dice.pick(["0", "-1", "1", "2", "0x2", "1.0", "2.5", "x", '"3"'])
            for _ in range(dice.between(0, 4))
        ]
    return [str(dice.pick([1, 1, 2, 3, 4, 0])) for _ in range(dice.between(1, 3))]


def _array_size(grammar):
    if grammar.dice.odd():
        return [grammar.dice.pick(["0", "1", "-1", "-3", "2.0", "0x4", "x", "7"])]
    return [str(grammar.dice.pick([1, 2, 3, 4, 6, 8]))]


def _limits(grammar):
    if grammar.dice.odd():
        return [grammar.words.anything(), grammar.words.number()]
    return [grammar.words.number(), grammar.words.number()]


def _conversion_kind(grammar):
    """Kind, format, unit and the options that usually come with the kind."""
    dice = grammar.dice
    kind = dice.pick(
        [
            "IDENTICAL", "LINEAR", "RAT_FUNC", "RAT_FUNC", "TAB_INTP", "TAB_NOINTP", "TAB_VERB",
            "FORM",
        ]
    )
    tokens = [grammar.words.one_of([kind])] + grammar.items("raw raw")
    usual = {
        "LINEAR": "COEFFS_LINEAR num num",
        "RAT_FUNC": "COEFFS @coefficients",
        "FORM": "begin:FORMULA",
        "TAB_INTP": "COMPU_TAB_REF name:table",
        "TAB_NOINTP": "COMPU_TAB_REF name:table",
        "TAB_VERB": "COMPU_TAB_REF name:table",
    }
    if kind in usual and not dice.chance(0.05):
        tokens += grammar.items(usual[kind])
    return tokens


_ANNOTATION = "begin:ANNOTATION*"
_SIGNAL_DATA = "begin:SIGNAL_IF_DATA/IF_DATA*"
_CHARACTERISTIC_KIND = "VALUE|VALUE|VALUE|ASCII|CURVE|MAP|CUBOID|VAL_BLK|CUBE_4|CUBE_5|OTHER"

LAYOUTS = {
    "HEADER": layout("str", "VERSION str", "PROJECT_NO id"),
    "MOD_COMMON": layout(
        "str", "S_REC_LAYOUT id", "DEPOSIT ABSOLUTE|DIFFERENCE",
        _BYTE_ORDER,
        _BYTE_ORDER,
        "DATA_SIZE int", *_ALIGNMENTS,
    ),
    "MOD_PAR_REST": layout(
        "", "VERSION str", "SUPPLIER str", "CUSTOMER str", "CUSTOMER_NO str", "USER str",
        "PHONE_NO str", "ECU str", "CPU_TYPE str", "NO_OF_INTERFACES int",
        "ECU_CALIBRATION_OFFSET int", "SYSTEM_CONSTANT str str*", "begin:MEMORY_SEGMENT*",
        "begin:CALIBRATION_METHOD*", "begin:MEMORY_LAYOUT*",
    ),
    "MEMORY_SEGMENT": layout(
        "name:segment str CALIBRATION_VARIABLES|CODE|DATA|EXCLUDE_FROM_FLASH|OFFLINE_DATA|"
        "RESERVED|SERAM|VARIABLES "
        "EEPROM|EPROM|FLASH|RAM|ROM|REGISTER|NOT_IN_ECU INTERN|EXTERN addr int int int int int int",
        "begin:SEGMENT_IF_DATA/IF_DATA*",
    ),
    "CALIBRATION_METHOD": layout("str int", "begin:CALIBRATION_HANDLE*"),
    "CALIBRATION_HANDLE": layout("int int int", "CALIBRATION_HANDLE_TEXT str"),
    "MEMORY_LAYOUT": layout("PRG_CODE|PRG_DATA|PRG_RESERVED addr int int int int int int"),
    "UNIT": layout(
        "name:unit str str EXTENDED_SI|DERIVED", "SI_EXPONENTS int int int int int int int",
        "REF_UNIT name:unit", "UNIT_REF name:unit", "UNIT_CONVERSION num num",
    ),
    "RECORD_LAYOUT": layout("name:layout @layout_components"),
    "COMPU_METHOD": layout(
        "name:conversion str @conversion_kind", "REF_UNIT name:unit", "STATUS_STRING_REF name:table"
    ),
    "COMPU_METHOD_MIXED": layout(
        "name:conversion str @conversion_kind", "COEFFS @coefficients*", "COEFFS_LINEAR num num*",
        "REF_UNIT name:unit*", "COMPU_TAB_REF name:table*", "begin:FORMULA*",
    ),
    "FORMULA": layout("@formula", "FORMULA_INV str*"),
    "COMPU_TAB": layout(
        "name:table str @numeric_table", "DEFAULT_VALUE str*", "DEFAULT_VALUE_NUMERIC num"
    ),
    "COMPU_VTAB": layout("name:table str @verbal_table", "DEFAULT_VALUE str", "DEFAULT_VALUE str*"),
    "COMPU_VTAB_RANGE": layout(
        "name:table str @range_table", "DEFAULT_VALUE str", "DEFAULT_VALUE str*"
    ),
    "MEASUREMENT": layout(
        f"name:signal str {_DATA_TYPE} name:conversion int num @limits", "ECU_ADDRESS addr",
        "ECU_ADDRESS addr", "ECU_ADDRESS_EXTENSION int", "BIT_MASK int",
        _BYTE_ORDER,
        "ARRAY_SIZE @array_size", "MATRIX_DIM @matrix_dimensions", "LAYOUT ROW_DIR|COLUMN_DIR|DIAG",
        "FUNCTION_LIST names:function", "MAX_REFRESH int int", "SYMBOL_LINK str int", "FORMAT raw",
        "PHYS_UNIT raw", "ERROR_MASK int", "DISPLAY_IDENTIFIER id",
        "REF_MEMORY_SEGMENT name:segment", "DISCRETE", "READ_WRITE",
        _SIGNAL_DATA,
        _ANNOTATION,
        "begin:BIT_OPERATION", "begin:BIT_OPERATION", "begin:FUNCTION_LIST", "begin:VIRTUAL*",
    ),
    "CHARACTERISTIC": layout(
        f"name:signal str {_CHARACTERISTIC_KIND} addr name:layout num name:conversion @limits",
        _BYTE_ORDER,
        "NUMBER int", "FORMAT raw", "DISPLAY_IDENTIFIER id", "REF_MEMORY_SEGMENT name:segment",
        "ECU_ADDRESS_EXTENSION int", "BIT_MASK int", "COMPARISON_QUANTITY name:signal",
        "CALIBRATION_ACCESS CALIBRATION", "PHYS_UNIT raw", "STEP_SIZE num",
        "EXTENDED_LIMITS num num", "MAX_REFRESH int int", "SYMBOL_LINK str int", "READ_ONLY",
        "GUARD_RAILS", "DISCRETE", "MATRIX_DIM @matrix_dimensions", "FUNCTION_LIST names:function",
        "MAP_LIST names:signal",
        _SIGNAL_DATA,
        "begin:AXIS_DESCR*",
        _ANNOTATION,
        "begin:DEPENDENT_CHARACTERISTIC", "begin:VIRTUAL_CHARACTERISTIC", "begin:FUNCTION_LIST",
    ),
    "AXIS_DESCR": layout(
        "STD_AXIS|FIX_AXIS|COM_AXIS name:signal name:conversion int num num", "FORMAT raw",
        "FIX_AXIS_PAR int int int", "AXIS_PTS_REF name:any", "begin:ANNOTATION",
    ),
    "AXIS_PTS": layout(
        "name:signal str addr name:signal name:layout num name:conversion int num num",
        "FORMAT raw", "begin:ANNOTATION",
    ),
    "VARIANT_CODING": layout("", "VAR_SEPARATOR str", "VAR_NAMING NUMERIC", "begin:VAR_CRITERION"),
    "VAR_CRITERION": layout("id str id id", "VAR_MEASUREMENT name:signal"),
    "ANNOTATION": layout(
        "", "ANNOTATION_LABEL str", "ANNOTATION_ORIGIN str", "begin:ANNOTATION_TEXT*"
    ),
    "ANNOTATION_TEXT": layout("", "str*"),
    "BIT_OPERATION": layout(
        "", "LEFT_SHIFT int", "RIGHT_SHIFT int", "RIGHT_SHIFT small", "SIGN_EXTEND"
    ),
    "FUNCTION_LIST": layout("names:function"),
    "VIRTUAL": layout("names:signal"),
    "DEPENDENT_CHARACTERISTIC": layout("str names:signal"),
    "VIRTUAL_CHARACTERISTIC": layout("str names:signal"),
    "REF_CHARACTERISTIC": layout("names:signal"),
    "REF_MEASUREMENT": layout("names:signal"),
    "DEF_CHARACTERISTIC": layout("names:signal"),
    "IN_MEASUREMENT": layout("names:signal"),
    "LOC_MEASUREMENT": layout("names:signal"),
    "OUT_MEASUREMENT": layout("names:signal"),
    "SUB_GROUP": layout("names:group"),
    "SUB_FUNCTION": layout("names:function"),
    "REF_GROUP": layout("names:group"),
    "GROUP": layout(
        "name:group str", "ROOT", "begin:REF_CHARACTERISTIC*", "begin:REF_MEASUREMENT*",
        "begin:SUB_GROUP", "begin:FUNCTION_LIST",
        _ANNOTATION,
        "begin:OTHER_IF_DATA/IF_DATA*",
    ),
    "FUNCTION": layout(
        "name:function str", "FUNCTION_VERSION str", "begin:DEF_CHARACTERISTIC",
        "begin:REF_CHARACTERISTIC", "begin:IN_MEASUREMENT", "begin:LOC_MEASUREMENT",
        "begin:OUT_MEASUREMENT", "begin:SUB_FUNCTION",
        _ANNOTATION,
        "begin:OTHER_IF_DATA/IF_DATA*",
    ),
    "FRAME": layout(
        "name:frame str int int", "FRAME_MEASUREMENT names:signal", "begin:OTHER_IF_DATA/IF_DATA*"
    ),
    "USER_RIGHTS": layout("id", "begin:REF_GROUP*", "READ_ONLY"),
    # What no release of the program knows, or not there.
    "TYPEDEF_MEASUREMENT": layout("id str UBYTE id int num num num"),
    "INSTANCE": layout("id str id addr"),
    "MAP_LIST": layout("names:signal"),
    "AR_COMPONENT": layout("str AR_PROTOTYPE_OF id"),
    "UNKNOWN": layout("id str int", "WORD int", "begin:UNKNOWN"),
}


def _formula(grammar):
    return [grammar.words.text()] if grammar.dice.chance(0.9) else []


MAKERS = {
    "layout_components": some_of_many(_record_layout_options()),
    "conversion_kind": _conversion_kind,
    "coefficients": _coefficients,
    "numeric_table": _numeric_table,
    "verbal_table": _pairs("TAB_VERB|TAB_VERB|TAB_VERB|TAB_INTP", "num str"),
    "range_table": _pairs("", "num num str"),
    "real": _real,
    "limits": _limits,
    "matrix_dimensions": _matrix_dimensions,
    "array_size": _array_size,
    "formula": _formula,
}
