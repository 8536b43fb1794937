// What can be recorded: MEASUREMENT and CHARACTERISTIC.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "a2l/core_blocks.h"
#include "a2l/data_type.h"
#include "a2l/reader/enumeration_parameter.h"

namespace quillmark {

namespace {

using namespace kw::core;

// --- Both ----------------------------------------------------------------------------------------

void readLimit(CoreReader& reader, PhEntity& signal, PhNumber PhEntity::Display::*which,
               std::string_view message) {
    const int kind = reader.next();
    if (kind != TOK_INTEGER && kind != TOK_FLOAT) {
        reader.warning(message);
    } else if (reader.parts().limits) {
        signal.display().*which = reader.number(kind);
    }
}

void readLimits(CoreReader& reader, PhEntity& signal) {
    readLimit(reader, signal, &PhEntity::Display::lowerLimit, "Unexpected type for lower limit.");
    readLimit(reader, signal, &PhEntity::Display::upperLimit, "Unexpected type for upper limit.");
}

int parseFormat(CoreReader& reader, PhEntity& signal) {
    const PhString format = reader.readFormat();
    if (!format.isNull()) {
        reader.commit([&] { signal.display().format = format; });
    }
    return reader.next();
}

// --- MEASUREMENT ---------------------------------------------------------------------------------

/// What a MEASUREMENT block collects. The dimensions wait for its end, since two keywords tell
/// them.
struct Measurement {
    PhEntity& signal;
    bool hasArraySize = false;
    std::int32_t arraySize = 0;
    bool hasMatrixDim = false;
    std::array<std::int32_t, 3> matrixDim{1, 1, 1};
};

/// Product of three sizes, each at least 0; the largest value where it does not fit.
std::uint64_t elementCount(const std::array<std::int32_t, 3>& sizes) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t plane =
        static_cast<std::uint64_t>(sizes[0]) * static_cast<std::uint64_t>(sizes[1]);
    const auto planes = static_cast<std::uint64_t>(sizes[2]);
    return plane != 0 && planes > kMost / plane ? kMost : plane * planes;
}

void applyDimensions(CoreReader& reader, const Measurement& measurement) {
    std::array<std::int32_t, 3> dims{};
    if (measurement.hasMatrixDim) {
        const auto& given = measurement.matrixDim;
        std::size_t count = given.size();
        while (count > 0 && given[count - 1] == 1) {
            --count;
        }
        std::copy_n(given.begin(), count, dims.begin());
        if (measurement.hasArraySize &&
            std::cmp_not_equal(elementCount(given), measurement.arraySize)) {
            reader.warning("Array-size mismatch (%d).", {measurement.arraySize});
        }
    } else if (measurement.hasArraySize && measurement.arraySize != 1) {
        dims[0] = std::max(measurement.arraySize, 0);
    }
    if (dims != decltype(dims){}) {
        measurement.signal.extras().matrixDims = dims;
    }
}

int parseEcuAddress(CoreReader& reader, Measurement& measurement) {
    reader.readIntegerOrWarn(measurement.signal.address);
    return reader.next();
}

int parseEcuAddressExtension(CoreReader& reader, Measurement& measurement) {
    reader.readIntegerOrWarn(measurement.signal.addressExtension);
    return reader.next();
}

int parseBitMask(CoreReader& reader, Measurement& measurement) {
    reader.keep(measurement.signal.datatype.bitMask, reader.readInteger());
    return reader.next();
}

int parseByteOrder(CoreReader& reader, Measurement& measurement) {
    reader.keep(measurement.signal.byteOrder, readByteOrder(reader));
    return reader.next();
}

int parseArraySize(CoreReader& reader, Measurement& measurement) {
    measurement.hasArraySize |= reader.readIntegerOrWarn(measurement.arraySize);
    return reader.next();
}

// Negative sizes count as "not present" before anything is computed from them.
int parseMatrixDim(CoreReader& reader, Measurement& measurement) {
    measurement.hasMatrixDim = true;
    measurement.matrixDim = {1, 1, 1};
    int kind = reader.next();
    for (std::int32_t& size : measurement.matrixDim) {
        if (kind != TOK_INTEGER) {
            break;
        }
        size = std::max(reader.token().intValue, 0);
        kind = reader.next();
    }
    return kind;
}

int parseLayout(CoreReader& reader, Measurement& measurement) {
    static constexpr WordRow<PhLayout> kLayouts[] = {
        {identifier("ROW_DIR"), PhLayout::RowDirection},
        {identifier("COLUMN_DIR"), PhLayout::ColumnDirection},
    };
    const int kind = reader.next();
    if (kind != TOK_IDENT) {
        reader.unexpectedTokenWarning(kind);
        return reader.next();
    }
    const std::optional<PhLayout> layout = findWord(reader, kLayouts, kind);
    if (!layout) {
        reader.warning("Unexpected LAYOUT '%s'", {reader.token().text});
    }
    measurement.signal.layout = layout.value_or(PhLayout::None);
    return reader.next();
}

int parseMeasurementFormat(CoreReader& reader, Measurement& measurement) {
    return parseFormat(reader, measurement.signal);
}

int parseMeasurementIfData(CoreReader& reader, Measurement& measurement) {
    return parseIfData(reader, measurement.signal);
}

/// The rule tells the operation.
int parseShift(CoreReader& reader, PhEntity& signal, const CoreRule<PhEntity>& rule) {
    const std::int32_t count = reader.readInteger();
    reader.commit([&] {
        signal.bitOperation = static_cast<PhBitOperation>(rule.value<int>());
        signal.extras().shiftCount = count;
    });
    return reader.next();
}

int parseSignExtend(CoreReader& reader, PhEntity& signal) {
    signal.signExtend = true;
    return reader.next();
}

int parseBitOperation(CoreReader& reader, Measurement& measurement) {
    static constexpr CoreRule<PhEntity> kRules[] = {
        bare(LEFT_SHIFT, parseShift, static_cast<int>(PhBitOperation::LeftShift)),
        bare(RIGHT_SHIFT, parseShift, static_cast<int>(PhBitOperation::RightShift)),
        bare(SIGN_EXTEND, parseSignExtend),
    };
    return readParts(reader, kRules, measurement.signal, BIT_OPERATION, reader.next());
}

int parseVirtual(CoreReader& reader, Measurement& measurement) {
    if (!reader.parts().members) {
        return reader.readNameBlock(VIRTUAL, [](std::string_view) {});
    }
    PhEntity& signal = measurement.signal;
    auto& members = signal.extras().virtualMembers;
    return reader.readNameBlock(VIRTUAL, [&](std::string_view name) {
        // A placeholder of the signal's own name would become the next definition of that name.
        const bool isOwn = name == signal.name().view() && !reader.references().hasSignal(name);
        members.append(isOwn ? PhHandle<PhEntity>(&signal) : reader.refer<PhEntity>(name));
    });
}

int parseMeasurementBody(CoreReader& reader, Measurement& measurement) {
    PhEntity& signal = measurement.signal;
    signal.signalKind = PhSignalKind::Measurement;
    reader.readLongIdentifier(signal);
    reader.traceBlock("Parse MEASUREMENT '%s'\n", signal.name());
    reader.keep(signal.byteOrder, reader.moduleByteOrder());
    const std::optional<DataType> type = readChoiceOr(
        reader, kMeasurementTypes, [&reader](int kind) { reader.unexpectedToken(kind); });
    if (!type) {
        return TOK_ERROR;
    }
    signal.datatype.baseType = type->baseType;
    signal.datatype.sizeBits = type->sizeBits;
    if (reader.next() != TOK_IDENT) {
        return reader.fail("Identifier expected");
    }
    reader.references().bindConversionSoon(signal, reader.token().text);
    reader.drop(1);  // resolution; the token read is the accuracy, which nobody looks at
    readLimits(reader, signal);

    // Rules are looked through one by one, so the parts that most signals have come first.
    static constexpr CoreRule<Measurement> kRules[] = {
        bare(ECU_ADDRESS, parseEcuAddress),
        block(IF_DATA, parseMeasurementIfData),
        skipped(SYMBOL_LINK, 2),
        bare(ECU_ADDRESS_EXTENSION, parseEcuAddressExtension),
        bare(FORMAT, parseMeasurementFormat),
        skipped(DISPLAY_IDENTIFIER, 1),
        bare(BIT_MASK, parseBitMask),
        block(ANNOTATION, parseAnnotation<Measurement>),
        skippedWord(PHYS_UNIT),
        bare(BYTE_ORDER_, parseByteOrder),
        bare(MATRIX_DIM, parseMatrixDim),
        bare(LAYOUT, parseLayout),
        bare(ARRAY_SIZE, parseArraySize),
        skipped(MAX_REFRESH, 2),
        skipped(ERROR_MASK, 1),
        skipped(REF_MEMORY_SEGMENT, 1),
        skipped(DISCRETE, 0),
        skipped(READ_WRITE, 0),
        skippedNames(FUNCTION_LIST),
        block(BIT_OPERATION, parseBitOperation),
        skippedNameBlock(FUNCTION_LIST),
        block(VIRTUAL, parseVirtual),
    };
    return readOptionals(reader, kRules, measurement, reader.next(), OtherBlocks::Wrong);
}

// --- CHARACTERISTIC ------------------------------------------------------------------------------

void readStorageType(CoreReader& reader, PhEntity& signal) {
    static constexpr WordRow<PhSignalKind> kTypes[] = {
        {identifier("VALUE"), PhSignalKind::Value},
        {identifier("CURVE"), PhSignalKind::Curve},
        {identifier("MAP"), PhSignalKind::Map},
        {identifier("CUBOID"), PhSignalKind::Cuboid},
        {identifier("VAL_BLK"), PhSignalKind::ValueBlock},
        {identifier("ASCII"), PhSignalKind::Ascii},
        {identifier("CUBE_4"), PhSignalKind::Cube4},
        {identifier("CUBE_5"), PhSignalKind::Cube5},
    };
    // Also what an unknown storage type is written as.
    reader.keep(signal.signalKind, PhSignalKind::Measurement);
    const int kind = reader.next();
    if (kind != TOK_IDENT) {
        return;
    }
    const std::optional<PhSignalKind> type = findWord(reader, kTypes, kind);
    if (!type) {
        reader.warning("Unexpected storage type '%s'.", {reader.token().text});
        return;
    }
    signal.signalKind = *type;
    if (type == PhSignalKind::Ascii) {
        signal.datatype.baseType = PhBaseType::StringAscii;
    }
}

/// Whether a characteristic of that kind is an array of values, with axes or without.
bool isArray(PhSignalKind kind) {
    switch (kind) {
        case PhSignalKind::Curve:
        case PhSignalKind::Map:
        case PhSignalKind::Cuboid:
        case PhSignalKind::ValueBlock:
        case PhSignalKind::Cube4:
        case PhSignalKind::Cube5:
            return true;
        case PhSignalKind::Undefined:
        case PhSignalKind::Measurement:
        case PhSignalKind::Value:
        case PhSignalKind::Ascii:
            break;
    }
    return false;
}

int parseCharacteristicByteOrder(CoreReader& reader, PhEntity& signal) {
    reader.keep(signal.byteOrder, readByteOrder(reader));
    return reader.next();
}

int parseNumber(CoreReader& reader, PhEntity& signal) {
    constexpr std::int64_t kBitsPerByte = 8;
    if (reader.next() == TOK_INTEGER) {
        signal.datatype.sizeBits = kBitsPerByte * reader.token().intValue;
    }
    return reader.next();
}

/// A formula and the names in it.
int parseFormulaNames(CoreReader& reader, PhEntity&, const CoreRule<PhEntity>& rule) {
    reader.next();
    return reader.readNameBlock(rule.keyword(), [](std::string_view) {});
}

}  // namespace

int parseMeasurement(CoreReader& reader, PhGroup& module) {
    auto signal = reader.defineNext<PhEntity>();
    Measurement measurement{*signal};
    const int kind = parseMeasurementBody(reader, measurement);
    if (kind != END || reader.next() != MEASUREMENT) {
        reader.countError();
        // A signal that is its own member would keep itself for ever; no module frees this one.
        signal->extras().virtualMembers.clear();
        return kind == END ? reader.endMissing(MEASUREMENT) : kind;
    }
    applyDimensions(reader, measurement);
    reader.keepDescribed(module.signals, signal);
    const int following = reader.next();
    if (following == TOK_ERROR) {
        reader.countError();
    }
    return following;
}

int parseCharacteristic(CoreReader& reader, PhGroup& module) {
    // Held to the end, as after an error the module does not keep it.
    const auto owner = reader.defineNext<PhEntity>();
    PhEntity& signal = *owner;
    reader.readLongIdentifier(signal);
    const bool keepsArrays = reader.parts().arrays;
    if (keepsArrays) {
        reader.keepDescribed(module.signals, owner);
    }
    reader.traceBlock("Parse CHARACTERISTIC '%s'\n", signal.name());
    reader.keep(signal.byteOrder, reader.moduleByteOrder());
    readStorageType(reader, signal);
    const bool isKept = keepsArrays || !isArray(signal.signalKind);
    if (isKept && !keepsArrays) {
        reader.keepDescribed(module.signals, owner);
    }
    reader.readIntegerOrWarn(signal.address);
    reader.next();
    if (isKept) {
        reader.keep(signal.recordLayout, reader.refer<PhRecordLayout>(reader.token().text));
    }
    reader.drop(1);  // maximum difference
    if (isKept) {
        // The conversion's name, whatever kind of token it is.
        reader.commit([&] { reader.references().bindConversionSoon(signal, reader.token().text); });
    }
    readLimits(reader, signal);

    static constexpr CoreRule<PhEntity> kRules[] = {
        skipped(EXTENDED_LIMITS, 2),
        skippedBlock(AXIS_DESCR),
        bare(FORMAT, parseFormat),
        skipped(SYMBOL_LINK, 2),
        skipped(DISPLAY_IDENTIFIER, 1),
        block(IF_DATA, parseIfData<PhEntity>),
        bare(NUMBER, parseNumber),
        skippedWord(PHYS_UNIT),
        bare(BYTE_ORDER_, parseCharacteristicByteOrder),
        skippedNumbers(MATRIX_DIM),
        skipped(BIT_MASK, 1),
        skipped(REF_MEMORY_SEGMENT, 1),
        skipped(ECU_ADDRESS_EXTENSION, 1),
        skipped(COMPARISON_QUANTITY, 1),
        skipped(CALIBRATION_ACCESS, 1),
        skipped(STEP_SIZE, 1),
        skipped(MAX_REFRESH, 2),
        skipped(READ_ONLY, 0),
        skipped(GUARD_RAILS, 0),
        skipped(DISCRETE, 0),
        skippedNames(FUNCTION_LIST),
        skippedNames(MAP_LIST),
        block(ANNOTATION, parseAnnotation<PhEntity>),
        block(DEPENDENT_CHARACTERISTIC, parseFormulaNames),
        block(VIRTUAL_CHARACTERISTIC, parseFormulaNames),
        skippedNameBlock(FUNCTION_LIST),
    };
    return readParts(reader, kRules, signal, CHARACTERISTIC, reader.next());
}

PhByteOrder readByteOrder(BlockReader& reader) {
    // This pairing is the logger's: a LITTLE_ENDIAN word means the code of MSB_FIRST.
    static constexpr WordRow<PhByteOrder> kOrders[] = {
        {kw::word::MSB_FIRST, PhByteOrder::BigEndian},
        {kw::word::LITTLE_ENDIAN_, PhByteOrder::BigEndian},
        {kw::word::MSB_LAST, PhByteOrder::LittleEndian},
        {kw::word::BIG_ENDIAN_, PhByteOrder::LittleEndian},
    };
    return readChoice(reader, kOrders);
}

}  // namespace quillmark
