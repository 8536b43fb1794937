#include "prepare/grammar.h"

#include <algorithm>

#include "a2l/tokens/keyword_tables.h"
#include "prepare/token_reader.h"

namespace quillmark::preparing {

namespace {

/// Its length and three of its bytes.
constexpr std::uint32_t lookOf(std::string_view keyword) {
    const auto byte = [keyword](std::size_t at) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(keyword[at]));
    };
    const std::size_t size = keyword.size();
    return byte(0) | byte(size / 2) << 8U | byte(size - 1) << 16U |
           static_cast<std::uint32_t>(size) << 24U;
}

constexpr PartRule bare(std::string_view keyword, std::string_view parameters = {},
                        Fate fate = Fate::Keep) {
    return {Form::Bare, keyword, parameters, nullptr, fate, lookOf(keyword)};
}

constexpr PartRule block(std::string_view keyword, const Layout& inner, Fate fate = Fate::Keep) {
    return {Form::Block, keyword, {}, &inner, fate, lookOf(keyword)};
}

constexpr PartRule skipped(std::string_view keyword, Fate fate = Fate::Keep) {
    return {Form::Block, keyword, {}, nullptr, fate, lookOf(keyword)};
}

// --- Parts of several blocks ---------------------------------------------------------------------

constexpr Layout kNames{"i", {}};
constexpr Layout kTexts{"s", {}};
constexpr Layout kIfData{"D", {}};
constexpr Layout kFormulaNames{".i", {}};

constexpr PartRule kAnnotationParts[] = {
    bare("ANNOTATION_LABEL", "."),
    bare("ANNOTATION_ORIGIN", "."),
    block("ANNOTATION_TEXT", kTexts),
};
constexpr Layout kAnnotation{"", kAnnotationParts};

// --- The frame -----------------------------------------------------------------------------------

constexpr PartRule kHeaderParts[] = {bare("VERSION", "."), bare("PROJECT_NO", ".")};
constexpr Layout kHeader{"S", kHeaderParts};

constexpr PartRule kMemorySegmentParts[] = {block("IF_DATA", kIfData)};
constexpr Layout kMemorySegment{"IS..........", kMemorySegmentParts};

constexpr PartRule kModParParts[] = {
    bare("VERSION", "S"),
    bare("ADDR_EPK", "."),
    bare("EPK", "S"),
    bare("ECU", "S"),
    bare("SUPPLIER", "."),
    bare("CUSTOMER", "."),
    bare("CUSTOMER_NO", "."),
    bare("USER", "."),
    bare("PHONE_NO", "."),
    bare("CPU_TYPE", "."),
    bare("NO_OF_INTERFACES", "."),
    bare("ECU_CALIBRATION_OFFSET", "."),
    bare("SYSTEM_CONSTANT", ".."),
    block("MEMORY_SEGMENT", kMemorySegment),
    skipped("CALIBRATION_METHOD"),
    skipped("MEMORY_LAYOUT"),
};
constexpr Layout kModPar{"S", kModParParts};

constexpr PartRule kModCommonParts[] = {
    bare("BYTE_ORDER", "."),
    bare("S_REC_LAYOUT", "."),
    bare("DEPOSIT", "."),
    bare("DATA_SIZE", "."),
    bare("ALIGNMENT_BYTE", "."),
    bare("ALIGNMENT_WORD", "."),
    bare("ALIGNMENT_LONG", "."),
    bare("ALIGNMENT_INT64", "."),
    bare("ALIGNMENT_FLOAT16_IEEE", "."),
    bare("ALIGNMENT_FLOAT32_IEEE", "."),
    bare("ALIGNMENT_FLOAT64_IEEE", "."),
};
constexpr Layout kModCommon{"S", kModCommonParts};

// --- Signals -------------------------------------------------------------------------------------

constexpr PartRule kBitOperationParts[] = {
    bare("LEFT_SHIFT", "."),
    bare("RIGHT_SHIFT", "."),
    bare("SIGN_EXTEND"),
};
constexpr Layout kBitOperation{"", kBitOperationParts};

constexpr PartRule kMeasurementParts[] = {
    bare("ECU_ADDRESS", "."),
    bare("FORMAT", "w"),
    bare("PHYS_UNIT", "w"),
    bare("SYMBOL_LINK", ".."),
    bare("DISPLAY_IDENTIFIER", "."),
    bare("BIT_MASK", "."),
    bare("BYTE_ORDER", "."),
    bare("MATRIX_DIM", "z"),
    bare("LAYOUT", "."),
    bare("ARRAY_SIZE", "."),
    bare("ECU_ADDRESS_EXTENSION", "."),
    bare("MAX_REFRESH", ".."),
    bare("ERROR_MASK", "."),
    bare("REF_MEMORY_SEGMENT", "."),
    bare("DISCRETE"),
    bare("READ_WRITE"),
    bare("FUNCTION_LIST", "i"),
    block("IF_DATA", kIfData),
    block("ANNOTATION", kAnnotation),
    block("BIT_OPERATION", kBitOperation),
    block("FUNCTION_LIST", kNames),
    block("VIRTUAL", kNames),
    bare("MODEL_LINK", ".", Fate::TakeOut),
    bare("ADDRESS_TYPE", ".", Fate::Address),
};
constexpr Layout kMeasurement{"ISTI....", kMeasurementParts};

constexpr PartRule kCharacteristicParts[] = {
    bare("FORMAT", "w"),
    bare("PHYS_UNIT", "w"),
    bare("SYMBOL_LINK", ".."),
    bare("EXTENDED_LIMITS", ".."),
    bare("DISPLAY_IDENTIFIER", "."),
    bare("BYTE_ORDER", "."),
    bare("NUMBER", "."),
    bare("MATRIX_DIM", "#"),
    bare("BIT_MASK", "."),
    bare("REF_MEMORY_SEGMENT", "."),
    bare("ECU_ADDRESS_EXTENSION", "."),
    bare("COMPARISON_QUANTITY", "."),
    bare("CALIBRATION_ACCESS", "."),
    bare("STEP_SIZE", "."),
    bare("MAX_REFRESH", ".."),
    bare("READ_ONLY"),
    bare("GUARD_RAILS"),
    bare("DISCRETE"),
    bare("FUNCTION_LIST", "i"),
    bare("MAP_LIST", "i"),
    skipped("AXIS_DESCR"),
    block("IF_DATA", kIfData),
    block("ANNOTATION", kAnnotation),
    block("DEPENDENT_CHARACTERISTIC", kFormulaNames),
    block("VIRTUAL_CHARACTERISTIC", kFormulaNames),
    block("FUNCTION_LIST", kNames),
    bare("MODEL_LINK", ".", Fate::TakeOut),
    bare("ENCODING", ".", Fate::Encoding),
};
constexpr Layout kCharacteristic{"IS.......", kCharacteristicParts};

// --- Conversions ---------------------------------------------------------------------------------

constexpr PartRule kFormulaParts[] = {bare("FORMULA_INV", ".")};
constexpr Layout kFormula{"t", kFormulaParts};

constexpr PartRule kCompuMethodParts[] = {
    bare("COEFFS", "......"), bare("COEFFS_LINEAR", ".."),    bare("COMPU_TAB_REF", "I"),
    bare("REF_UNIT", "I"),    bare("STATUS_STRING_REF", "."), block("FORMULA", kFormula),
};
constexpr Layout kCompuMethod{"IS.wW", kCompuMethodParts};

constexpr PartRule kCompuTabParts[] = {
    bare("DEFAULT_VALUE", "S"),
    bare("DEFAULT_VALUE_NUMERIC", "."),
};
constexpr Layout kCompuTab{"IS.P", kCompuTabParts};

constexpr PartRule kVerbalTableParts[] = {bare("DEFAULT_VALUE", "S")};
constexpr Layout kCompuVtab{"IS.V", kVerbalTableParts};
constexpr Layout kCompuVtabRange{"ISQ", kVerbalTableParts};

constexpr PartRule kUnitParts[] = {
    bare("SI_EXPONENTS", "......."),
    bare("REF_UNIT", "."),
    bare("UNIT_REF", "."),
    bare("UNIT_CONVERSION", ".."),
};
constexpr Layout kUnit{"ISS.", kUnitParts};

// --- Record layouts ------------------------------------------------------------------------------

constexpr PartRule kRecordLayoutParts[] = {
    bare("FNC_VALUES", "...."),
    bare("IDENTIFICATION", ".."),
    bare("AXIS_PTS_X", "...."),
    bare("AXIS_PTS_Y", "...."),
    bare("AXIS_PTS_Z", "...."),
    bare("AXIS_PTS_4", "...."),
    bare("AXIS_PTS_5", "...."),
    bare("AXIS_RESCALE_X", "....."),
    bare("AXIS_RESCALE_Y", "....."),
    bare("AXIS_RESCALE_Z", "....."),
    bare("AXIS_RESCALE_4", "....."),
    bare("AXIS_RESCALE_5", "....."),
    bare("NO_AXIS_PTS_X", ".."),
    bare("NO_AXIS_PTS_Y", ".."),
    bare("NO_AXIS_PTS_Z", ".."),
    bare("NO_AXIS_PTS_4", ".."),
    bare("NO_AXIS_PTS_5", ".."),
    bare("NO_RESCALE_X", ".."),
    bare("NO_RESCALE_Y", ".."),
    bare("NO_RESCALE_Z", ".."),
    bare("NO_RESCALE_4", ".."),
    bare("NO_RESCALE_5", ".."),
    bare("FIX_NO_AXIS_PTS_X", "."),
    bare("FIX_NO_AXIS_PTS_Y", "."),
    bare("FIX_NO_AXIS_PTS_Z", "."),
    bare("FIX_NO_AXIS_PTS_4", "."),
    bare("FIX_NO_AXIS_PTS_5", "."),
    bare("SRC_ADDR_X", ".."),
    bare("SRC_ADDR_Y", ".."),
    bare("SRC_ADDR_Z", ".."),
    bare("SRC_ADDR_4", ".."),
    bare("SRC_ADDR_5", ".."),
    bare("RIP_ADDR_W", ".."),
    bare("RIP_ADDR_X", ".."),
    bare("RIP_ADDR_Y", ".."),
    bare("RIP_ADDR_Z", ".."),
    bare("RIP_ADDR_4", ".."),
    bare("RIP_ADDR_5", ".."),
    bare("SHIFT_OP_X", ".."),
    bare("SHIFT_OP_Y", ".."),
    bare("SHIFT_OP_Z", ".."),
    bare("SHIFT_OP_4", ".."),
    bare("SHIFT_OP_5", ".."),
    bare("OFFSET_X", ".."),
    bare("OFFSET_Y", ".."),
    bare("OFFSET_Z", ".."),
    bare("OFFSET_4", ".."),
    bare("OFFSET_5", ".."),
    bare("DIST_OP_X", ".."),
    bare("DIST_OP_Y", ".."),
    bare("DIST_OP_Z", ".."),
    bare("DIST_OP_4", ".."),
    bare("DIST_OP_5", ".."),
    bare("RESERVED", ".."),
    bare("ALIGNMENT_BYTE", "."),
    bare("ALIGNMENT_WORD", "."),
    bare("ALIGNMENT_LONG", "."),
    bare("ALIGNMENT_INT64", "."),
    bare("ALIGNMENT_FLOAT16_IEEE", "."),
    bare("ALIGNMENT_FLOAT32_IEEE", "."),
    bare("ALIGNMENT_FLOAT64_IEEE", "."),
    bare("STATIC_RECORD_LAYOUT"),
    bare("STATIC_ADDRESS_OFFSETS"),
};
constexpr Layout kRecordLayout{"I", kRecordLayoutParts};

// --- Orders of signals ---------------------------------------------------------------------------

constexpr PartRule kGroupParts[] = {
    bare("ROOT"),
    block("REF_CHARACTERISTIC", kNames),
    block("REF_MEASUREMENT", kNames),
    block("SUB_GROUP", kNames),
    block("FUNCTION_LIST", kNames),
    block("ANNOTATION", kAnnotation),
    block("IF_DATA", kIfData),
};
constexpr Layout kGroup{"IS", kGroupParts};

constexpr PartRule kFunctionParts[] = {
    bare("FUNCTION_VERSION", "."),
    block("DEF_CHARACTERISTIC", kNames),
    block("REF_CHARACTERISTIC", kNames),
    block("IN_MEASUREMENT", kNames),
    block("LOC_MEASUREMENT", kNames),
    block("OUT_MEASUREMENT", kNames),
    block("SUB_FUNCTION", kNames),
    block("ANNOTATION", kAnnotation),
    block("IF_DATA", kIfData),
    skipped("AR_COMPONENT", Fate::TakeOut),
    bare("AR_PROTOTYPE_OF", ".", Fate::TakeOut),
};
constexpr Layout kFunction{"IS", kFunctionParts};

constexpr PartRule kFrameParts[] = {
    bare("FRAME_MEASUREMENT", "i"),
    block("IF_DATA", kIfData),
};
constexpr Layout kFrame{"IS..", kFrameParts};

constexpr PartRule kUserRightsParts[] = {
    bare("READ_ONLY"),
    block("REF_GROUP", kNames),
};
constexpr Layout kUserRights{"I", kUserRightsParts};

// --- Types and instances of version 1.7 ----------------------------------------------------------

constexpr PartRule kComponentParts[] = {
    bare("ADDRESS_TYPE", "."),
    bare("LAYOUT", "."),
    bare("MATRIX_DIM", "z"),
    bare("SYMBOL_TYPE_LINK", "."),
};
constexpr Layout kComponent{"IIZ", kComponentParts};

constexpr PartRule kStructureParts[] = {
    bare("ADDRESS_TYPE", "."),
    bare("CONSISTENT_EXCHANGE"),
    bare("SYMBOL_TYPE_LINK", "."),
    block("STRUCTURE_COMPONENT", kComponent),
};
constexpr Layout kStructure{"ISZ", kStructureParts};

constexpr PartRule kTypeMeasurementParts[] = {
    bare("ADDRESS_TYPE", "."), bare("BIT_MASK", "."), block("BIT_OPERATION", kBitOperation),
    bare("BYTE_ORDER", "."),   bare("DISCRETE"),      bare("ERROR_MASK", "."),
    bare("FORMAT", "w"),       bare("LAYOUT", "."),   bare("MATRIX_DIM", "z"),
    bare("PHYS_UNIT", "w"),
};
constexpr Layout kTypeMeasurement{"IS.I....", kTypeMeasurementParts};

constexpr PartRule kTypeCharacteristicParts[] = {
    skipped("AXIS_DESCR"),  bare("BIT_MASK", "."),   bare("BYTE_ORDER", "."),
    bare("DISCRETE"),       bare("ENCODING", "."),   bare("EXTENDED_LIMITS", ".."),
    bare("FORMAT", "w"),    bare("MATRIX_DIM", "#"), bare("NUMBER", "."),
    bare("PHYS_UNIT", "w"), bare("STEP_SIZE", "."),
};
constexpr Layout kTypeCharacteristic{"IS......", kTypeCharacteristicParts};

constexpr PartRule kTypeAxisParts[] = {
    bare("BYTE_ORDER", "."), bare("DEPOSIT", "."),  bare("EXTENDED_LIMITS", ".."),
    bare("FORMAT", "w"),     bare("MONOTONY", "."), bare("PHYS_UNIT", "w"),
    bare("STEP_SIZE", "."),
};
constexpr Layout kTypeAxis{"IS.......", kTypeAxisParts};

constexpr PartRule kTypeBlobParts[] = {bare("ADDRESS_TYPE", ".")};
constexpr Layout kTypeBlob{"ISZ", kTypeBlobParts};

constexpr PartRule kOverwriteParts[] = {
    bare("CONVERSION", "I"),     bare("EXTENDED_LIMITS", ".."), bare("FORMAT", "w"),
    bare("INPUT_QUANTITY", "I"), bare("LIMITS", ".."),          bare("MONOTONY", "."),
    bare("PHYS_UNIT", "w"),
};
constexpr Layout kOverwrite{"IZ", kOverwriteParts};

constexpr PartRule kInstanceParts[] = {
    bare("ADDRESS_TYPE", "."),
    block("ANNOTATION", kAnnotation),
    bare("CALIBRATION_ACCESS", "."),
    bare("DISPLAY_IDENTIFIER", "."),
    bare("ECU_ADDRESS_EXTENSION", "."),
    block("IF_DATA", kIfData),
    bare("LAYOUT", "."),
    bare("MATRIX_DIM", "z"),
    bare("MAX_REFRESH", ".."),
    bare("MODEL_LINK", "."),
    block("OVERWRITE", kOverwrite),
    bare("READ_WRITE"),
    bare("SYMBOL_LINK", ".."),
};
constexpr Layout kInstance{"ISIZ", kInstanceParts};

constexpr PartRule kBlobParts[] = {
    bare("ADDRESS_TYPE", "."),          block("ANNOTATION", kAnnotation),
    bare("CALIBRATION_ACCESS", "."),    bare("DISPLAY_IDENTIFIER", "."),
    bare("ECU_ADDRESS_EXTENSION", "."), block("IF_DATA", kIfData),
    bare("MAX_REFRESH", ".."),          bare("MODEL_LINK", "."),
    bare("SYMBOL_LINK", ".."),
};
constexpr Layout kBlob{"ISZZ", kBlobParts};

// --- The project and the module ------------------------------------------------------------------

constexpr PartRule kProjectBlocks[] = {block("HEADER", kHeader)};

constexpr PartRule kModuleBlocks[] = {
    block("MEASUREMENT", kMeasurement),
    block("CHARACTERISTIC", kCharacteristic),
    block("COMPU_METHOD", kCompuMethod),
    block("COMPU_TAB", kCompuTab),
    block("COMPU_VTAB", kCompuVtab),
    block("COMPU_VTAB_RANGE", kCompuVtabRange),
    skipped("AXIS_PTS"),
    block("RECORD_LAYOUT", kRecordLayout),
    block("GROUP", kGroup),
    block("FUNCTION", kFunction),
    block("FRAME", kFrame),
    block("UNIT", kUnit),
    block("IF_DATA", kIfData),
    block("MOD_PAR", kModPar),
    block("MOD_COMMON", kModCommon),
    skipped("A2ML"),
    block("USER_RIGHTS", kUserRights),
    skipped("VARIANT_CODING"),
    block("TYPEDEF_STRUCTURE", kStructure, Fate::TakeOut),
    block("TYPEDEF_MEASUREMENT", kTypeMeasurement, Fate::TakeOut),
    block("TYPEDEF_CHARACTERISTIC", kTypeCharacteristic, Fate::TakeOut),
    block("TYPEDEF_AXIS", kTypeAxis, Fate::TakeOut),
    block("TYPEDEF_BLOB", kTypeBlob, Fate::TakeOut),
    block("INSTANCE", kInstance, Fate::TakeOut),
    block("BLOB", kBlob, Fate::TakeOut),
    skipped("TRANSFORMER", Fate::TakeOut),
};

// --- XCP -----------------------------------------------------------------------------------------

constexpr PartRule kStimParts[] = {bare("BIT_STIM_SUPPORTED"), bare("MIN_ST_STIM", ".")};
constexpr Layout kStim{"..", kStimParts, true};

constexpr PartRule kTimestampParts[] = {bare("TIMESTAMP_FIXED")};
constexpr Layout kTimestamp{"n..", kTimestampParts, true};

constexpr PartRule kOdtParts[] = {bare("ODT_ENTRY", ".....")};
constexpr Layout kOdt{".", kOdtParts, true};

constexpr PartRule kPredefinedParts[] = {block("ODT", kOdt)};
constexpr Layout kPredefined{"", kPredefinedParts, true};

constexpr PartRule kDaqListParts[] = {
    bare("DAQ_LIST_TYPE", "."),       bare("MAX_ODT", "."),     bare("MAX_ODT_ENTRIES", "."),
    bare("FIRST_PID", "."),           bare("EVENT_FIXED", "."), bare("DAQ_PACKED_MODE_SUPPORTED"),
    block("PREDEFINED", kPredefined),
};
constexpr Layout kDaqList{".", kDaqListParts, true};

constexpr Layout kMinCycleTime{"c", {}, true};

constexpr PartRule kDaqPackedModeParts[] = {bare("ALT_SAMPLE_COUNT", ".")};
constexpr Layout kDaqPackedMode{"....", kDaqPackedModeParts, true};

constexpr PartRule kEventParts[] = {
    bare("COMPLEMENTARY_BYPASS_EVENT_CHANNEL_NUMBER", "."),
    bare("CONSISTENCY", "."),
    bare("EVENT_COUNTER_PRESENT"),
    bare("RELATED_EVENT_CHANNEL_NUMBER", "."),
    bare("RELATED_EVENT_CHANNEL_NUMBER_FIXED"),
    bare("DTO_CTR_DAQ_MODE", "."),
    bare("DTO_CTR_DAQ_MODE_FIXED"),
    bare("DTO_CTR_STIM_MODE", "."),
    bare("DTO_CTR_STIM_MODE_FIXED"),
    bare("STIM_DTO_CTR_COPY_PRESENT"),
    bare("CPU_LOAD_MAX", "."),
    bare("MIN_CYCLE_TIME", "c"),
    block("MIN_CYCLE_TIME", kMinCycleTime),
    block("DAQ_PACKED_MODE", kDaqPackedMode),
};
constexpr Layout kEvent{"N....c.", kEventParts, true};

constexpr PartRule kDaqParts[] = {
    bare("PRESCALER_SUPPORTED"),
    bare("RESUME_SUPPORTED"),
    bare("DAQ_RESUME_SUPPORTED"),
    bare("PID_OFF_SUPPORTED"),
    bare("STORE_DAQ_SUPPORTED"),
    bare("DAQ_ALTERNATING_SUPPORTED", "."),
    bare("DTO_CTR_FIELD_SUPPORTED"),
    bare("OPTIMISATION_TYPE_ODT_STRICT"),
    bare("CPU_LOAD_MAX", "."),
    bare("MAX_DAQ_TOTAL", "."),
    bare("MAX_ODT_TOTAL", "."),
    bare("MAX_ODT_DAQ_TOTAL", "."),
    bare("MAX_ODT_STIM_TOTAL", "."),
    bare("MAX_ODT_ENTRIES_TOTAL", "."),
    bare("MAX_ODT_ENTRIES_DAQ_TOTAL", "."),
    bare("MAX_ODT_ENTRIES_STIM_TOTAL", "."),
    bare("CPU_LOAD_MAX_TOTAL", "."),
    bare("CORE_LOAD_MAX_TOTAL", "."),
    block("STIM", kStim),
    block("TIMESTAMP_SUPPORTED", kTimestamp),
    block("DAQ_LIST", kDaqList),
    block("EVENT", kEvent),
};
constexpr Layout kDaq{"..........", kDaqParts, true};

constexpr PartRule kEventListParts[] = {bare("EVENT", ".")};
constexpr Layout kEventList{"", kEventListParts, true};

constexpr PartRule kDaqEventParts[] = {
    bare("FIXED_EVENT_LIST", "E"),           bare("VARIABLE"),
    bare("AVAILABLE_EVENT_LIST", "E"),       bare("DEFAULT_EVENT_LIST", "E"),
    bare("CONSISTENCY_EVENT_LIST", "E"),     block("AVAILABLE_EVENT_LIST", kEventList),
    block("DEFAULT_EVENT_LIST", kEventList), block("CONSISTENCY_EVENT_LIST", kEventList),
};
constexpr Layout kDaqEvent{"", kDaqEventParts, true};

constexpr PartRule kCommunicationModes[] = {
    bare("BLOCK"),
    bare("SLAVE"),
    bare("MASTER", ".."),
    bare("INTERLEAVED", "."),
};
constexpr Layout kCommunicationMode{"", kCommunicationModes, true};

constexpr PartRule kProtocolLayerParts[] = {
    bare("OPTIONAL_CMD", "."),
    bare("OPTIONAL_LEVEL1_CMD", "."),
    bare("MAX_DTO_STIM", "."),
    bare("COMMUNICATION_MODE_SUPPORTED", "C"),
    block("COMMUNICATION_MODE_SUPPORTED", kCommunicationMode),
    bare("SEED_AND_KEY_EXTERNAL_FUNCTION", "X"),
};
constexpr Layout kProtocolLayer{"..........O.", kProtocolLayerParts, true};

constexpr PartRule kDaqListCanIdParts[] = {bare("FIXED", "."), bare("VARIABLE")};
constexpr Layout kDaqListCanId{".", kDaqListCanIdParts, true};

constexpr PartRule kCanFdParts[] = {
    bare("MAX_DLC", "."),
    bare("CAN_FD_DATA_TRANSFER_BAUDRATE", "."),
    bare("SAMPLE_POINT", "."),
    bare("BTL_CYCLES", "."),
    bare("SJW", "."),
    bare("SYNC_EDGE", "."),
    bare("MAX_DLC_REQUIRED"),
    bare("SECONDARY_SAMPLE_POINT", "."),
    bare("TRANSCEIVER_DELAY_COMPENSATION", "."),
};
constexpr Layout kCanFd{"", kCanFdParts, true};

constexpr PartRule kXcpOnCanParts[] = {
    bare("BAUDRATE", "."),
    bare("CAN_ID_MASTER", "."),
    bare("CAN_ID_SLAVE", "."),
    bare("MAX_DLC_REQUIRED"),
    bare("TRANSPORT_LAYER_INSTANCE", "X"),
    bare("CAN_ID_BROADCAST", "."),
    bare("CAN_ID_GET_DAQ_CLOCK_MULTICAST", "."),
    bare("SAMPLE_POINT", "."),
    bare("SAMPLE_RATE", "."),
    bare("BTL_CYCLES", "."),
    bare("SJW", "."),
    bare("SYNC_EDGE", "."),
    bare("MAX_BUS_LOAD", "."),
    bare("OPTIONAL_TL_SUBCMD", "."),
    bare("CAN_ID_MASTER_INCREMENTAL"),
    bare("MEASUREMENT_SPLIT_ALLOWED"),
    block("DAQ_LIST_CAN_ID", kDaqListCanId),
    block("PROTOCOL_LAYER", kProtocolLayer),
    block("DAQ", kDaq),
    block("CAN_FD", kCanFd),
};
constexpr Layout kXcpOnCan{"j", kXcpOnCanParts, true};

constexpr PartRule kXcpOnIpParts[] = {
    bare("HOST_NAME", "X"),
    bare("ADDRESS", "X"),
    bare("IPV6", "X"),
    bare("MAX_BUS_LOAD", "."),
    bare("MAX_BIT_RATE", "."),
    bare("MAX_BITRATE", "."),
    bare("PACKET_ALIGNMENT", "."),
    bare("OPTIONAL_TL_SUBCMD", "."),
    bare("TRANSPORT_LAYER_INSTANCE", "X"),
    block("PROTOCOL_LAYER", kProtocolLayer),
    block("DAQ", kDaq),
};
constexpr Layout kXcpOnIp{"..t", kXcpOnIpParts, true};

constexpr PartRule kLpduIdParts[] = {
    bare("FLX_SLOT_ID", "a"),
    bare("OFFSET", "a"),
    bare("CYCLE_REPETITION", "a"),
    bare("CHANNEL", "a"),
};
constexpr Layout kLpduId{"", kLpduIdParts, true};

constexpr PartRule kXcpPacketParts[] = {
    bare("CMD", "."), bare("RES_ERR", "."), bare("EV_SERV", "."),
    bare("DAQ", "."), bare("STIM", "."),    bare("MULTICAST", "."),
};
constexpr Layout kXcpPacket{"", kXcpPacketParts, true};

constexpr PartRule kFlexRayBufferParts[] = {
    bare("MAX_FLX_LEN_BUF", ".."),
    block("LPDU_ID", kLpduId),
    block("XCP_PACKET", kXcpPacket),
};
constexpr Layout kFlexRayBuffer{".", kFlexRayBufferParts, true};

constexpr PartRule kXcpOnFlxParts[] = {
    block("INITIAL_CMD_BUFFER", kFlexRayBuffer),
    block("INITIAL_RES_ERR_BUFFER", kFlexRayBuffer),
    block("POOL_BUFFER", kFlexRayBuffer),
    bare("OPTIONAL_TL_SUBCMD", "."),
    bare("TRANSPORT_LAYER_INSTANCE", "X"),
    block("PROTOCOL_LAYER", kProtocolLayer),
    block("DAQ", kDaq),
};
constexpr Layout kXcpOnFlx{"..XX...", kXcpOnFlxParts, true};

constexpr PartRule kXcpParts[] = {
    block("XCP_ON_CAN", kXcpOnCan),          block("XCP_ON_UDP_IP", kXcpOnIp),
    block("XCP_ON_TCP_IP", kXcpOnIp),        block("XCP_ON_FLX", kXcpOnFlx),
    block("PROTOCOL_LAYER", kProtocolLayer), block("DAQ", kDaq),
    block("DAQ_EVENT", kDaqEvent),
};
constexpr Layout kXcp{"", kXcpParts, true};
constexpr Layout kXcpPlus{".", kXcpParts, true};

// --- CCP -----------------------------------------------------------------------------------------

constexpr PartRule kQpBlobParts[] = {
    bare("LENGTH", "."),    bare("CAN_ID_VARIABLE"), bare("CAN_ID_FIXED", "."), bare("RASTER", "M"),
    bare("FIRST_PID", "."), bare("EXCLUSIVE", "."),  bare("REDUCTION_ALLOWED"),
};
constexpr Layout kQpBlob{".", kQpBlobParts, true};

constexpr PartRule kSourceParts[] = {bare("DISPLAY_IDENTIFIER", "."), block("QP_BLOB", kQpBlob)};
constexpr Layout kSource{"X..", kSourceParts, true};

constexpr PartRule kRasterParts[] = {bare("EXCLUSIVE", ".")};
constexpr Layout kRaster{"N....", kRasterParts, true};

constexpr PartRule kEventGroupParts[] = {bare("RASTER", ".")};
constexpr Layout kEventGroup{"X.", kEventGroupParts, true};

constexpr Layout kSeedKey{"XXX", {}, true};
constexpr Layout kChecksum{"X", {}, true};
constexpr Layout kCanParam{"...", {}, true};

constexpr PartRule kChecksumParamParts[] = {bare("CHECKSUM_CALCULATION", ".")};
constexpr Layout kChecksumParam{"..", kChecksumParamParts, true};

constexpr PartRule kDefinedPagesParts[] = {
    bare("RAM"),
    bare("ROM"),
    bare("FLASH"),
    bare("EEPROM"),
    bare("RAM_INIT_BY_ECU"),
    bare("RAM_INIT_BY_TOOL"),
    bare("AUTO_FLASH_BACK"),
    bare("FLASH_BACK"),
    bare("DEFAULT"),
};
constexpr Layout kDefinedPages{".....", kDefinedPagesParts, true};

constexpr PartRule kCcpTransportParts[] = {
    bare("BAUDRATE", "."),
    bare("SAMPLE_POINT", "."),
    bare("SAMPLE_RATE", "."),
    bare("BTL_CYCLES", "."),
    bare("SJW", "."),
    bare("SYNC_EDGE", "."),
    bare("CONSISTENCY", "."),
    bare("DAQ_MODE", "."),
    bare("BYTES_ONLY"),
    bare("RESUME_SUPPORTED"),
    bare("DAQ_RESUME_SUPPORTED"),
    bare("STORE_SUPPORTED"),
    bare("ADDRESS_EXTENSION", "."),
    bare("OPTIONAL_CMD", "."),
    block("CAN_PARAM", kCanParam),
    block("DEFINED_PAGES", kDefinedPages),
    block("CHECKSUM_PARAM", kChecksumParam),
};
constexpr Layout kCcpTransport{"......", kCcpTransportParts, true};

constexpr PartRule kCcpParts[] = {
    bare("KP_BLOB", "kR"),
    bare("DP_BLOB", "..."),
    bare("ADDRESS_MAPPING", "..."),
    bare("ADDR_MAPPING", "..."),
    block("SOURCE", kSource),
    block("RASTER", kRaster),
    block("EVENT_GROUP", kEventGroup),
    block("SEED_KEY", kSeedKey),
    block("CHECKSUM", kChecksum),
    block("TP_BLOB", kCcpTransport),
};
constexpr Layout kCcp{"", kCcpParts, true};

// --- GMLAN ---------------------------------------------------------------------------------------

constexpr Layout kTwoParameters{"..", {}, true};
constexpr Layout kSixParameters{"......", {}, true};
constexpr Layout kDiagBaud{"....z", {}, true};
constexpr Layout kGmlanAddress{"..G", {}, true};
constexpr Layout kOneParameter{".", {}, true};

constexpr PartRule kGmlanCanParts[] = {
    bare("SamplePoint", "."),
    bare("SamplesPerBit", "."),
    bare("BTL_CYCLES", "."),
    bare("SJW", "."),
    bare("SYNC_EDGE", "."),
    bare("NETWORK_LIMITS", ".."),
    bare("USDTP_TIMING_DEFAULTS", "z"),
    bare("USDTP_TIMING", "z"),
    block("ADDRESS", kGmlanAddress),
    block("TransportProtocolVersion", kOneParameter),
};
constexpr Layout kGmlanCan{".", kGmlanCanParts, true};

constexpr PartRule kGmlanTransportParts[] = {
    block("SESSION", kTwoParameters),
    block("DATA_ACCESS", kSixParameters),
    block("DIAG_BAUD", kDiagBaud),
    block("CAN", kGmlanCan),
};
constexpr Layout kGmlanTransport{"...", kGmlanTransportParts, true};

constexpr PartRule kCanIdRangeParts[] = {bare("FIRST_CAN_ID", "."), bare("LAST_CAN_ID", ".")};
constexpr Layout kCanIdRange{"", kCanIdRangeParts, true};

constexpr PartRule kIdRangeParts[] = {bare("FIRST_ID", "."), bare("LAST_ID", ".")};
constexpr Layout kIdRange{"", kIdRangeParts, true};

constexpr PartRule kGmlanSourceCanParts[] = {block("UUDT_CAN_IDs", kCanIdRange)};
constexpr Layout kGmlanSourceCan{"", kGmlanSourceCanParts, true};

constexpr PartRule kGmlanSourceParts[] = {
    bare("QP_BLOB"),
    bare("QP_BLOB_VERSION", "."),
    bare("FREERUNNINGMODE"),
    bare("RDBPI_PARAMETER", ".."),
    bare("TRANSMISSION_MODE", "."),
    bare("AVAILABLE_ON", "."),
    block("CAN", kGmlanSourceCan),
    block("AVAILABLE_PERIODIC_IDENTIFIER_RANGE", kIdRange),
    block("AVAILABLE_PARAMETER_IDENTIFIER_RANGE", kIdRange),
};
constexpr Layout kGmlanSource{"X..", kGmlanSourceParts, true};

constexpr PartRule kGmlanParts[] = {
    block("SOURCE", kGmlanSource),
    block("TP_BLOB", kGmlanTransport),
};
constexpr Layout kGmlan{"", kGmlanParts, true};

struct InterfaceRow {
    std::string_view name;
    const Layout* layout;
};

constexpr InterfaceRow kInterfaces[] = {
    {"ASAP1B_CCP", &kCcp},
    {"ASAP1B_GMLAN", &kGmlan},
    {"XCP", &kXcp},
    {"XCPplus", &kXcpPlus},
};

constexpr std::string_view kMeasurementTypes[] = {
    "UBYTE", "SBYTE",    "UWORD",   "SWORD",        "ULONG",
    "SLONG", "A_UINT64", "A_INT64", "FLOAT32_IEEE", "FLOAT64_IEEE",
};

const PartRule* find(std::span<const PartRule> rules, Form form, std::string_view keyword) {
    if (keyword.empty()) {
        return nullptr;
    }
    const std::uint32_t look = lookOf(keyword);
    for (const PartRule& rule : rules) {
        if (rule.look == look && rule.form == form && rule.keyword == keyword) {
            return &rule;
        }
    }
    return nullptr;
}

}  // namespace

const PartRule* findPart(const Layout& layout, Form form, std::string_view keyword) {
    return find(layout.parts, form, keyword);
}

const PartRule* findProjectBlock(std::string_view keyword) {
    return find(kProjectBlocks, Form::Block, keyword);
}

const PartRule* findModuleBlock(std::string_view keyword) {
    return find(kModuleBlocks, Form::Block, keyword);
}

const Layout* findInterface(std::string_view name) {
    for (const InterfaceRow& row : kInterfaces) {
        if (row.name == name) {
            return row.layout;
        }
    }
    return nullptr;
}

bool isMeasurementType(std::string_view word) {
    return std::find(std::begin(kMeasurementTypes), std::end(kMeasurementTypes), word) !=
           std::end(kMeasurementTypes);
}

bool isNameWord(std::string_view word) {
    const bool isLookedUp = word.front() < '0' || word.front() > '9';
    return !isLookedUp || lookup(kCoreKeywords, word) == 0;
}

bool isName(std::string_view text) {
    const Token token = TokenReader(text).next();
    return token.kind == TokenKind::Word && token.begin == 0 && token.end == text.size() &&
           isNameWord(text);
}

}  // namespace quillmark::preparing
