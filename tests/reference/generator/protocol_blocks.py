"""Layouts of the interface blocks: CCP, XCP and GMLAN, and others that are skipped.

The names carry the protocol in front where two protocols use one keyword.
"""

from generator import keywords
from generator.grammar import layout

_SINGLE_DUAL = "SYNC_EDGE SINGLE|DUAL"

_CCP = {
    "CCP/SOURCE": layout(
        "str small int", "DISPLAY_IDENTIFIER id", "begin:CCP/QP_BLOB", "begin:CCP/QP_BLOB"
    ),
    "CCP/QP_BLOB": layout(
        "small", "LENGTH int", "CAN_ID_VARIABLE", "CAN_ID_FIXED addr",
        "CAN_ID_FIXED addr CAN_ID_VARIABLE", "RASTER small*",
        "RASTER str", "EXCLUSIVE int*", "REDUCTION_ALLOWED", "FIRST_PID int",
    ),
    "CCP/RASTER": layout("str str small int int", "EXCLUSIVE int*"),
    "CCP/EVENT_GROUP": layout("str str", "RASTER small*"),
    "CCP/SEED_KEY": layout("str str str"),
    "CCP/CHECKSUM": layout("str"),
    "CCP/TP_BLOB": layout(
        "int int addr addr int @ccp_byte_order", "begin:CCP/CAN_PARAM", "BAUDRATE int",
        "SAMPLE_POINT int", "SAMPLE_RATE int", "BTL_CYCLES int", "SJW int",
        _SINGLE_DUAL,
        "DAQ_MODE ALTERNATING|BURST", "BYTES_ONLY", "RESUME_SUPPORTED", "DAQ_RESUME_SUPPORTED",
        "STORE_SUPPORTED", "CONSISTENCY DAQ|ODT", "ADDRESS_EXTENSION DAQ|ODT",
        "begin:CCP/CHECKSUM_PARAM", "begin:CCP/DEFINED_PAGES*", "OPTIONAL_CMD small*",
    ),
    "CCP/CAN_PARAM": layout("int int int"),
    "CCP/DEFINED_PAGES": layout(
        "int str int addr int", "RAM", "ROM", "FLASH", "EEPROM", "RAM_INIT_BY_ECU",
        "RAM_INIT_BY_TOOL", "AUTO_FLASH_BACK", "FLASH_BACK", "DEFAULT",
    ),
    "CCP/CHECKSUM_PARAM": layout(
        "int int", "CHECKSUM_CALCULATION ACTIVE_PAGE|BIT_OR_WITH_OPT_PAGE"
    ),
    "CCP/KP_BLOB": layout("int addr int", "RASTER small*"),
    "CCP": layout(
        "", "begin:CCP/SOURCE*", "begin:CCP/SOURCE*", "begin:CCP/RASTER*", "begin:CCP/EVENT_GROUP*",
        "begin:CCP/SEED_KEY", "begin:CCP/CHECKSUM", "begin:CCP/TP_BLOB", "begin:CCP/TP_BLOB",
        "begin:CCP/KP_BLOB", "ADDRESS_MAPPING addr addr int", "ADDR_MAPPING addr addr int",
        "DP_BLOB int addr int",
    ),
    "CCP_SIGNAL": layout(
        "", "KP_BLOB int addr int", "KP_BLOB 0 addr int", "KP_BLOB int addr int RASTER small",
        "KP_BLOB @kp_values", "DP_BLOB int addr int", "ADDRESS_MAPPING addr addr int",
        "begin:CCP/KP_BLOB",
    ),
}

_XCP_COMMANDS = "|".join(
    word
    for word in keywords.XCP
    if word.startswith(
        (
            "GET_", "SET_", "PROGRAM", "ALLOC_", "DOWNLOAD", "UPLOAD", "SHORT_", "BUILD_", "USER_",
            "UNLOCK", "MODIFY", "COPY_CAL", "CLEAR_DAQ", "WRITE_DAQ", "READ_DAQ", "START_STOP",
            "FREE_DAQ", "TRANSPORT_LAYER_CMD", "TIME_CORRELATION_", "DTO_CTR_PROP",
        )
    )
)
_DAQ_TOTALS = tuple(f"{word} num" for word in keywords.XCP if word.endswith("_TOTAL"))
_LOAD_TABLE = "begin:ODT_ENTRY_SIZE_FACTOR_TABLE*"
_SKIPPED = ("begin:PAG", "begin:PGM", "begin:SEGMENT*", "begin:TIME_CORRELATION")
_TRANSPORT_OVERRIDES = ("begin:PROTOCOL_LAYER", "begin:DAQ", "begin:DAQ_EVENT", *_SKIPPED)
_FLEXRAY_PERMISSION = "NOT_ALLOWED|FIXED|VARIABLE_INITIALISED|VARIABLE"

_XCP = {
    "PROTOCOL_LAYER": layout(
        "int int int int int int int int int int BYTE_ORDER_MSB_FIRST|BYTE_ORDER_MSB_LAST "
        "ADDRESS_GRANULARITY_BYTE|ADDRESS_GRANULARITY_WORD|ADDRESS_GRANULARITY_DWORD",
        f"OPTIONAL_CMD {_XCP_COMMANDS}*", f"OPTIONAL_CMD {_XCP_COMMANDS}*", "@communication_mode",
        "SEED_AND_KEY_EXTERNAL_FUNCTION str", "MAX_DTO_STIM int",
        "OPTIONAL_LEVEL1_CMD GET_VERSION|SET_DAQ_PACKED_MODE|GET_DAQ_PACKED_MODE|"
        "SW_DBG_COMMAND_SPACE|POD_COMMAND_SPACE*", "begin:ECU_STATES",
    ),
    "ECU_STATES": layout("", "begin:STATE*"),
    "STATE": layout(
        "int str ECU_SWITCHED_TO_DEFAULT_PAGE? "
        "NOT_ACTIVE|ACTIVE|GETTER_ONLY NOT_ACTIVE|ACTIVE NOT_ACTIVE|ACTIVE"
    ),
    "DAQ": layout(
        "STATIC|DYNAMIC int int int "
        "OPTIMISATION_TYPE_DEFAULT|OPTIMISATION_TYPE_ODT_TYPE_16|"
        "OPTIMISATION_TYPE_ODT_TYPE_32|OPTIMISATION_TYPE_ODT_TYPE_64|"
        "OPTIMISATION_TYPE_ODT_TYPE_ALIGNMENT|OPTIMISATION_TYPE_MAX_ENTRY_SIZE "
        "ADDRESS_EXTENSION_FREE|ADDRESS_EXTENSION_ODT|ADDRESS_EXTENSION_DAQ "
        "IDENTIFICATION_FIELD_TYPE_ABSOLUTE|IDENTIFICATION_FIELD_TYPE_RELATIVE_BYTE|"
        "IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD|IDENTIFICATION_FIELD_TYPE_RELATIVE_WORD_ALIGNED "
        "GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE|GRANULARITY_ODT_ENTRY_SIZE_DAQ_WORD|"
        "GRANULARITY_ODT_ENTRY_SIZE_DAQ_DWORD|GRANULARITY_ODT_ENTRY_SIZE_DAQ_DLONG int "
        "NO_OVERLOAD_INDICATION|OVERLOAD_INDICATION_PID|OVERLOAD_INDICATION_EVENT",
        "PRESCALER_SUPPORTED", "RESUME_SUPPORTED", "DAQ_RESUME_SUPPORTED", "PID_OFF_SUPPORTED",
        "STORE_DAQ_SUPPORTED", "DAQ_ALTERNATING_SUPPORTED int", "DTO_CTR_FIELD_SUPPORTED",
        "OPTIMISATION_TYPE_ODT_STRICT", "begin:STIM", "begin:TIMESTAMP_SUPPORTED",
        "begin:TIMESTAMP_SUPPORTED", *_DAQ_TOTALS, "CPU_LOAD_MAX num", "begin:CORE_LOAD_MAX*",
        "begin:DAQ_MEMORY_CONSUMPTION", "begin:DAQ_LIST*", "begin:DAQ_LIST*", "begin:EVENT*",
        "begin:EVENT*", "begin:CPU_LOAD_CONSUMPTION_DAQ", "begin:MIN_CYCLE_TIME",
    ),
    "STIM": layout(
        "GRANULARITY_ODT_ENTRY_SIZE_STIM_BYTE|GRANULARITY_ODT_ENTRY_SIZE_STIM_WORD|"
        "GRANULARITY_ODT_ENTRY_SIZE_STIM_DWORD|GRANULARITY_ODT_ENTRY_SIZE_STIM_DLONG int",
        "BIT_STIM_SUPPORTED", "MIN_ST_STIM int",
    ),
    "TIMESTAMP_SUPPORTED": layout(
        "@ticks NO_TIME_STAMP|SIZE_BYTE|SIZE_WORD|SIZE_DWORD "
        "UNIT_1S|UNIT_1MS|UNIT_10MS|UNIT_100MS|UNIT_1US|UNIT_10US|"
        "UNIT_100US|UNIT_1NS|UNIT_10NS|UNIT_100NS|UNIT_1PS|UNIT_10PS|UNIT_100PS", "TIMESTAMP_FIXED",
    ),
    "CORE_LOAD_MAX": layout("int num"),
    "DAQ_MEMORY_CONSUMPTION": layout("int int int int int int", "begin:BUFFER_RESERVE"),
    "BUFFER_RESERVE": layout("int int"),
    "DAQ_LIST": layout(
        "small", "DAQ_LIST_TYPE DAQ|STIM|DAQ_STIM", "MAX_ODT num", "MAX_ODT_ENTRIES num",
        "FIRST_PID num", "EVENT_FIXED num", "DAQ_PACKED_MODE_SUPPORTED", "begin:PREDEFINED",
    ),
    "PREDEFINED": layout("", "begin:ODT*"),
    "ODT": layout("int", "ODT_ENTRY int addr int int int*"),
    "EVENT": layout(
        "@event_name @event_name small DAQ|STIM|DAQ_STIM int int @time_unit int",
        "COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER int", "CONSISTENCY DAQ|EVENT|ODT|NONE",
        "EVENT_COUNTER_PRESENT", "RELATED_EVENT_CHANNEL_NUMBER int",
        "RELATED_EVENT_CHANNEL_NUMBER_FIXED",
        "DTO_CTR_DAQ_MODE INSERT_COUNTER|INSERT_STIM_COUNTER_COPY", "DTO_CTR_DAQ_MODE_FIXED",
        "DTO_CTR_STIM_MODE DO_NOT_CHECK_COUNTER|CHECK_COUNTER", "DTO_CTR_STIM_MODE_FIXED",
        "STIM_DTO_CTR_COPY_PRESENT", "begin:DAQ_PACKED_MODE", "begin:MIN_CYCLE_TIME",
        "MIN_CYCLE_TIME int @time_unit", "begin:BUFFER_RESERVE_EVENT", "CPU_LOAD_MAX num",
        "begin:CPU_LOAD_CONSUMPTION_DAQ", "begin:CPU_LOAD_CONSUMPTION_STIM",
        "begin:CPU_LOAD_CONSUMPTION_QUEUE", "begin:CPU_LOAD_CONSUMPTION_QUEUE_STIM",
    ),
    "DAQ_PACKED_MODE": layout(
        "ELEMENT_GROUPED|EVENT_GROUPED STS_LAST|STS_FIRST OPTIONAL|MANDATORY int",
        "ALT_SAMPLE_COUNT int*",
    ),
    "MIN_CYCLE_TIME": layout("int @time_unit"),
    "BUFFER_RESERVE_EVENT": layout("int int"),
    "CPU_LOAD_CONSUMPTION_DAQ": layout("num num num", _LOAD_TABLE, "begin:CORE_LOAD_EP"),
    "CPU_LOAD_CONSUMPTION_STIM": layout("num num num", _LOAD_TABLE),
    "CPU_LOAD_CONSUMPTION_QUEUE": layout("num num", "begin:CORE_LOAD_EP"),
    "CPU_LOAD_CONSUMPTION_QUEUE_STIM": layout("num num"),
    "ODT_ENTRY_SIZE_FACTOR_TABLE": layout("int num"),
    "CORE_LOAD_EP": layout("int num"),
    "DAQ_EVENT": layout("@event_lists"),
    "AVAILABLE_EVENT_LIST": layout("", "EVENT small*"),
    "DEFAULT_EVENT_LIST": layout("", "EVENT small*"),
    "CONSISTENCY_EVENT_LIST": layout("", "EVENT small*"),
    "PAG": layout("int", "FREEZE_SUPPORTED"),
    "PGM": layout(
        "PGM_MODE_ABSOLUTE|PGM_MODE_FUNCTIONAL int int", "begin:SECTOR*", "@communication_mode"
    ),
    "SECTOR": layout("str int int int int int int"),
    "SEGMENT": layout(
        "int int int int int", "begin:XCP/CHECKSUM", "DEFAULT_PAGE_NUMBER int", "begin:PAGE*",
        "begin:XCP/ADDRESS_MAPPING*", "PGM_VERIFY int",
    ),
    "XCP/CHECKSUM": layout(
        "XCP_ADD_11|XCP_CRC_16|XCP_USER_DEFINED", "MAX_BLOCK_SIZE int", "EXTERNAL_FUNCTION str"
    ),
    "PAGE": layout(
        "int ECU_ACCESS_DONT_CARE XCP_READ_ACCESS_DONT_CARE XCP_WRITE_ACCESS_DONT_CARE",
        "INIT_SEGMENT int",
    ),
    "XCP/ADDRESS_MAPPING": layout("addr addr int"),
    "TIME_CORRELATION": layout(
        "", "DAQ_TIMESTAMPS_RELATE_TO XCP_SLAVE_CLOCK|ECU_CLOCK", "begin:CLOCK*"
    ),
    "CLOCK": layout(
        "int int int int int int int int XCP_SLAVE_CLOCK RANDOMLY_READABLE SYN_ALL int"
    ),
    "XCP_ON_CAN": layout(
        "int", "CAN_ID_BROADCAST addr", "CAN_ID_MASTER addr", "CAN_ID_MASTER_INCREMENTAL",
        "CAN_ID_SLAVE addr", "CAN_ID_GET_DAQ_CLOCK_MULTICAST addr", "BAUDRATE num",
        "SAMPLE_POINT int", "SAMPLE_RATE SINGLE|TRIPLE", "BTL_CYCLES int", "SJW int",
        _SINGLE_DUAL,
        "MAX_DLC_REQUIRED", "begin:DAQ_LIST_CAN_ID*", "begin:DAQ_LIST_CAN_ID*",
        "begin:EVENT_CAN_ID_LIST*", "MAX_BUS_LOAD int", "MEASUREMENT_SPLIT_ALLOWED", "begin:CAN_FD",
        "OPTIONAL_TL_SUBCMD GET_SLAVE_ID|GET_DAQ_ID|SET_DAQ_ID|GET_DAQ_CLOCK_MULTICAST*",
        "TRANSPORT_LAYER_INSTANCE str", *_TRANSPORT_OVERRIDES,
    ),
    "DAQ_LIST_CAN_ID": layout("small @fixed_or_variable"),
    "EVENT_CAN_ID_LIST": layout("int", "FIXED addr*"),
    "CAN_FD": layout(
        "", "MAX_DLC int", "CAN_FD_DATA_TRANSFER_BAUDRATE int", "SAMPLE_POINT int",
        "BTL_CYCLES int", "SJW int",
        _SINGLE_DUAL,
        "MAX_DLC_REQUIRED", "SECONDARY_SAMPLE_POINT int", "TRANSCEIVER_DELAY_COMPENSATION OFF|ON",
    ),
    "XCP_ON_UDP_IP": layout(
        "int int @host", "HOST_NAME str", "ADDRESS str", "IPV6 str", "MAX_BUS_LOAD int",
        "MAX_BIT_RATE int", "MAX_BITRATE int",
        "PACKET_ALIGNMENT PACKET_ALIGNMENT_8|PACKET_ALIGNMENT_16|PACKET_ALIGNMENT_32",
        "OPTIONAL_TL_SUBCMD GET_SLAVE_ID|GET_SLAVE_ID_EXTENDED|SET_SLAVE_IP_ADDRESS*",
        "TRANSPORT_LAYER_INSTANCE str", *_TRANSPORT_OVERRIDES,
    ),
    "XCP_ON_FLX": layout(
        "int int str str int HEADER_NAX|HEADER_NAX_FILL|HEADER_NAX_CTR|HEADER_NAX_FILL3|"
        "HEADER_NAX_CTR_FILL2|HEADER_NAX_LEN|HEADER_NAX_CTR_LEN|HEADER_NAX_FILL2_LEN|"
        "HEADER_NAX_CTR_FILL_LEN PACKET_ALIGNMENT_8|PACKET_ALIGNMENT_16|PACKET_ALIGNMENT_32",
        "begin:INITIAL_CMD_BUFFER", "begin:INITIAL_RES_ERR_BUFFER", "begin:POOL_BUFFER*",
        "OPTIONAL_TL_SUBCMD FLX_ASSIGN|FLX_ACTIVATE|GET_DAQ_FLX_BUF|SET_DAQ_FLX_BUF*",
        "TRANSPORT_LAYER_INSTANCE str", *_TRANSPORT_OVERRIDES,
    ),
    "LPDU_ID": layout(
        "", "FLX_SLOT_ID @slot_value", "OFFSET @slot_value", "CYCLE_REPETITION @slot_value",
        "CHANNEL @channel_value",
    ),
    "XCP_PACKET": layout(
        "",
        *(
            f"{packet} {_FLEXRAY_PERMISSION}"
            for packet in ("CMD", "RES_ERR", "EV_SERV", "DAQ", "STIM", "MULTICAST")
        ),
    ),
    "XCP_ON_SxI": layout("int int", "ASYNCH_FULL_DUPLEX_MODE", "HEADER_LEN_BYTE", "PARITY_NONE"),
    "XCP_ON_USB": layout(
        "int int int int HEADER_LEN_BYTE", "OUT_EP_CMD_STIM int", "begin:DAQ_LIST_USB_ENDPOINT*"
    ),
    "DAQ_LIST_USB_ENDPOINT": layout("int FIXED_IN int"),
    "XCP": layout(
        "", "begin:PROTOCOL_LAYER", "begin:PROTOCOL_LAYER", "begin:DAQ", "begin:DAQ",
        "begin:XCP_ON_CAN*", "begin:XCP_ON_CAN", "begin:XCP_ON_UDP_IP", "begin:XCP_ON_TCP_IP",
        "begin:XCP_ON_FLX", "begin:XCP_ON_SxI", "begin:XCP_ON_USB", "begin:DAQ_EVENT", *_SKIPPED,
    ),
    "XCP_SIGNAL": layout("", "begin:DAQ_EVENT", "begin:DAQ_EVENT", "begin:XCP_ON_CAN", "begin:DAQ"),
}
_XCP["XCP_ON_TCP_IP"] = _XCP["XCP_ON_UDP_IP"]
for _buffer in ("INITIAL_CMD_BUFFER", "INITIAL_RES_ERR_BUFFER", "POOL_BUFFER"):
    _XCP[_buffer] = layout(
        "int", "MAX_FLX_LEN_BUF FIXED|VARIABLE int", "begin:LPDU_ID", "begin:XCP_PACKET"
    )

_TIMING = "int int int @rest_of_timing"

_GMLAN = {
    "GMLAN": layout("", "begin:GMLAN/SOURCE*", "begin:GMLAN/TP_BLOB", "begin:GMLAN/TP_BLOB"),
    "GMLAN/SOURCE": layout(
        "str int int QP_BLOB?", "QP_BLOB_VERSION int", "FREERUNNINGMODE",
        "RDBPI_PARAMETER RESPONSE_TYPE RDBPI_RESPONSE_TYPE_UUDT|RDBPI_RESPONSE_TYPE_USDT",
        "begin:GMLAN/SOURCE/CAN",
        "TRANSMISSION_MODE TRANSMISSION_MODE_SLOW|TRANSMISSION_MODE_MEDIUM|TRANSMISSION_MODE_FAST",
        "begin:AVAILABLE_PERIODIC_IDENTIFIER_RANGE*", "begin:AVAILABLE_PARAMETER_IDENTIFIER_RANGE*",
        "AVAILABLE_ON CAN",
    ),
    "GMLAN/SOURCE/CAN": layout("", "begin:UUDT_CAN_IDs*"),
    "UUDT_CAN_IDs": layout("", "FIRST_CAN_ID addr", "LAST_CAN_ID addr"),
    "AVAILABLE_PERIODIC_IDENTIFIER_RANGE": layout("", "FIRST_ID int", "LAST_ID int"),
    "AVAILABLE_PARAMETER_IDENTIFIER_RANGE": layout("", "FIRST_ID int", "LAST_ID int"),
    "GMLAN/TP_BLOB": layout(
        "int ISO14229_1_2003 BYTEORDER_MSB_FIRST|BYTEORDER_MSB_LAST", "begin:SESSION*",
        "begin:DATA_ACCESS", "begin:DIAG_BAUD*", "begin:ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER",
        "begin:GMLAN/CAN", "begin:GMLAN/CHECKSUM", "begin:SECURITY_ACCESS",
    ),
    "SESSION": layout("str int"),
    "DATA_ACCESS": layout("int int int int int int"),
    "DIAG_BAUD": layout("int int BD_PARA int", "int*"),
    "ADDRESS_AND_LENGTH_FORMAT_IDENTIFIER": layout("int", "AALFI_FOR_READ int*"),
    "GMLAN/CHECKSUM": layout("int"),
    "SECURITY_ACCESS": layout("int int"),
    "GMLAN/CAN": layout(
        "int", "SamplePoint int", "SamplesPerBit int", "BTL_CYCLES int", "SJW int", "SYNC_EDGE int",
        "begin:GMLAN/ADDRESS", "begin:TransportProtocolVersion", "NETWORK_LIMITS int int",
        f"USDTP_TIMING_DEFAULTS {_TIMING}", f"USDTP_TIMING {_TIMING}*",
    ),
    "GMLAN/ADDRESS": layout("addr addr", "TGT_LOW int", "TGT_HIGH int"),
    "TransportProtocolVersion": layout("ISO15765_2_2003"),
}

_OTHER = {
    "OTHER_PROTOCOL": layout(
        "", "int*", "str*", "id*", "begin:UNKNOWN*", "begin:OTHER_PROTOCOL/TP_BLOB"
    ),
    "OTHER_PROTOCOL/TP_BLOB": layout("int int", "KWP2000 id", "begin:UNKNOWN"),
}

LAYOUTS = {**_CCP, **_XCP, **_GMLAN, **_OTHER}


def _communication_mode(grammar):
    """Stands with `/begin` or without, and tells its modes in any order."""
    body = grammar.options(("BLOCK", "SLAVE", "MASTER int int", "INTERLEAVED int"))
    if grammar.dice.chance(0.5):
        return ["COMMUNICATION_MODE_SUPPORTED", *body]
    return ["/begin", "COMMUNICATION_MODE_SUPPORTED", *body, "/end", "COMMUNICATION_MODE_SUPPORTED"]


def _event_lists(grammar):
    fixed = grammar.dice.chance(0.5)
    if fixed:
        return ["FIXED_EVENT_LIST", *grammar.options(("EVENT small*",))]
    lists = (
        "begin:AVAILABLE_EVENT_LIST", "begin:DEFAULT_EVENT_LIST", "begin:CONSISTENCY_EVENT_LIST",
        "DEFAULT_EVENT_LIST EVENT small",
    )
    return ["VARIABLE", *grammar.options(lists)]


def _ccp_byte_order(grammar):
    if grammar.dice.odd():
        return [grammar.words.anything()]
    return [grammar.dice.pick(["1", "2", "MSB_FIRST", "MSB_LAST", "0", "3", "MSB"])]


def _kp_values(grammar):
    """Often too few of them."""
    return [grammar.words.integer() for _ in range(grammar.dice.between(1, 3))]


def _ticks(grammar):
    return (
        []
        if grammar.dice.chance(0.1)
        else grammar.items("num" if grammar.dice.chance(0.2) else "int")
    )


def _event_name(grammar):
    return grammar.items("id" if grammar.dice.chance(0.2) else "str")


def _time_unit(grammar):
    if grammar.dice.odd():
        return [grammar.words.integer()]
    return [str(grammar.dice.below(13))]


def _fixed_or_variable(grammar):
    return grammar.items(
        grammar.dice.pick(
            ["FIXED addr", "FIXED addr", "VARIABLE", "VARIABLE FIXED addr", "FIXED addr VARIABLE"]
        )
        if grammar.dice.chance(0.9)
        else ""
    )


def _slot_value(grammar):
    return grammar.items(
        grammar.dice.pick(
            ["FIXED int", "VARIABLE", "VARIABLE INITIAL_VALUE int", "FIXED|VARIABLE int"]
        )
    )


def _channel_value(grammar):
    return grammar.items(
        grammar.dice.pick(["FIXED A|B", "VARIABLE", "VARIABLE INITIAL_VALUE A|B", "FIXED|VARIABLE"])
    )


def _host(grammar):
    return grammar.items(
        grammar.dice.pick(["HOST_NAME str", "ADDRESS str", "IPV6 str", "str", "", "ADDRESS str"])
    )


def _rest_of_timing(grammar):
    return grammar.items("int int int int") if grammar.dice.chance(0.7) else []


MAKERS = {
    "communication_mode": _communication_mode,
    "event_lists": _event_lists,
    "ccp_byte_order": _ccp_byte_order,
    "kp_values": _kp_values,
    "ticks": _ticks,
    "event_name": _event_name,
    "time_unit": _time_unit,
    "fixed_or_variable": _fixed_or_variable,
    "slot_value": _slot_value,
    "channel_value": _channel_value,
    "host": _host,
    "rest_of_timing": _rest_of_timing,
}
