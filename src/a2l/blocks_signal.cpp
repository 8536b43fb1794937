// What can be recorded: MEASUREMENT and CHARACTERISTIC.

#include <algorithm>
#include <limits>
#include <utility>

#include "a2l/data_type.h"
#include "a2l/ph_a2l.h"

namespace quillmark {

using namespace kw::core;

/// What a MEASUREMENT block collects. The dimensions wait for its end, since two keywords tell
/// them.
struct PhA2l::Measurement {
    PhEntity& signal;
    bool hasArraySize = false;
    std::int32_t arraySize = 0;
    bool hasMatrixDim = false;
    std::array<std::int32_t, 3> matrixDim{1, 1, 1};
};

namespace {

/// Product of three sizes, each at least 0; the largest value where it does not fit.
std::uint64_t elementCount(const std::array<std::int32_t, 3>& sizes) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t plane =
        static_cast<std::uint64_t>(sizes[0]) * static_cast<std::uint64_t>(sizes[1]);
    const auto planes = static_cast<std::uint64_t>(sizes[2]);
    return plane != 0 && planes > kMost / plane ? kMost : plane * planes;
}

}  // namespace

int PhA2l::parseMeasurement(PhGroup& module) {
    auto signal = defineNext<PhEntity>();
    Measurement measurement{*signal};
    const int kind = parseMeasurementBody(measurement);
    if (kind != END || next() != MEASUREMENT) {
        ++errorCount_;
        // A signal that is its own member would keep itself for ever; no module frees this one.
        signal->extras().virtualMembers.clear();
        return kind == END ? fail("Keyword '%s' expected after /end", {keywordName(MEASUREMENT)})
                           : kind;
    }
    applyDimensions(measurement);
    module.signals.append(std::move(signal));
    const int following = next();
    errorCount_ += following == TOK_ERROR ? 1 : 0;
    return following;
}

int PhA2l::parseMeasurementBody(Measurement& measurement) {
    PhEntity& signal = measurement.signal;
    signal.signalKind = PhSignalKind::Measurement;
    readLongIdentifier(signal);
    traceBlock("Parse MEASUREMENT '%s'\n", signal);
    keep(signal.byteOrder, moduleByteOrder_);
    const auto* type =
        findChoice(*this, kMeasurementTypes, [this](int kind) { unexpectedToken(kind); });
    if (type == nullptr) {
        return TOK_ERROR;
    }
    signal.datatype.baseType = type->value.baseType;
    signal.datatype.sizeBits = type->value.sizeBits;
    if (next() != TOK_IDENT) {
        return fail("Identifier expected");
    }
    references_->bindConversionSoon(signal, token().text);
    drop(1);  // resolution; the token read is the accuracy, which nobody looks at
    readLimits(signal);

    using Rule = OptionalRule<PhA2l, Measurement>;
    static constexpr Rule kRules[] = {
        {Form::Bare, ECU_ADDRESS, &PhA2l::parseEcuAddress},
        {Form::Bare, FORMAT, &PhA2l::dropWord<Measurement>},
        {Form::Bare, PHYS_UNIT, &PhA2l::dropWord<Measurement>},
        {Form::Bare, SYMBOL_LINK, nullptr, 2},
        {Form::Bare, DISPLAY_IDENTIFIER, nullptr, 1},
        {Form::Bare, BIT_MASK, &PhA2l::parseBitMask},
        {Form::Bare, BYTE_ORDER_, &PhA2l::parseByteOrder},
        {Form::Bare, MATRIX_DIM, &PhA2l::parseMatrixDim},
        {Form::Bare, LAYOUT, &PhA2l::parseLayout},
        {Form::Bare, ARRAY_SIZE, &PhA2l::parseArraySize},
        {Form::Bare, ECU_ADDRESS_EXTENSION, &PhA2l::parseEcuAddressExtension},
        {Form::Bare, MAX_REFRESH, nullptr, 2},
        {Form::Bare, ERROR_MASK, nullptr, 1},
        {Form::Bare, REF_MEMORY_SEGMENT, nullptr, 1},
        {Form::Bare, DISCRETE, nullptr, 0},
        {Form::Bare, READ_WRITE, nullptr, 0},
        {Form::Bare, FUNCTION_LIST, &PhA2l::dropNames<Measurement>},
        {Form::Block, IF_DATA, &PhA2l::parseMeasurementIfData},
        {Form::Block, ANNOTATION, &PhA2l::parseAnnotation<Measurement>},
        {Form::Block, BIT_OPERATION, &PhA2l::parseBitOperation},
        {Form::Block, FUNCTION_LIST, &PhA2l::dropNameBlock<Measurement, FUNCTION_LIST>},
        {Form::Block, VIRTUAL, &PhA2l::parseVirtual},
    };
    return readOptionals(*this, kRules, measurement, next());
}

void PhA2l::applyDimensions(const Measurement& measurement) {
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
            warning("Array-size mismatch (%d).", {measurement.arraySize});
        }
    } else if (measurement.hasArraySize && measurement.arraySize != 1) {
        dims[0] = std::max(measurement.arraySize, 0);
    }
    if (dims != decltype(dims){}) {
        measurement.signal.extras().matrixDims = dims;
    }
}

void PhA2l::readLimits(PhEntity& signal) {
    keep(signal.lowerLimit, readLimit("Unexpected type for lower limit."));
    keep(signal.upperLimit, readLimit("Unexpected type for upper limit."));
}

PhNumber PhA2l::readLimit(std::string_view message) {
    switch (next()) {
        case TOK_INTEGER:
            return PhNumber::integer(token().intValue);
        case TOK_FLOAT:
            return PhNumber::real(token().floatValue);
        default:
            warning(message);
            return {};
    }
}

int PhA2l::parseEcuAddress(Measurement& measurement) {
    std::int32_t address = 0;
    if (readIntegerOrWarn(address)) {
        measurement.signal.address = address;
    }
    return next();
}

int PhA2l::parseEcuAddressExtension(Measurement& measurement) {
    std::int32_t extension = 0;
    if (readIntegerOrWarn(extension)) {
        measurement.signal.addressExtension = extension;
    }
    return next();
}

int PhA2l::parseBitMask(Measurement& measurement) {
    keep(measurement.signal.datatype.bitMask, readInteger());
    return next();
}

int PhA2l::parseByteOrder(Measurement& measurement) {
    return readByteOrder(measurement.signal.byteOrder);
}

int PhA2l::readByteOrder(PhByteOrder& byteOrder) {
    // This pairing is the logger's: a LITTLE_ENDIAN word means the code of MSB_FIRST.
    static constexpr WordRow<PhByteOrder> kOrders[] = {
        {kw::word::MSB_FIRST, {}, PhByteOrder::BigEndian},
        {kw::word::LITTLE_ENDIAN_, {}, PhByteOrder::BigEndian},
        {kw::word::MSB_LAST, {}, PhByteOrder::LittleEndian},
        {kw::word::BIG_ENDIAN_, {}, PhByteOrder::LittleEndian},
    };
    keep(byteOrder, readChoice(*this, kOrders));
    return next();
}

int PhA2l::parseArraySize(Measurement& measurement) {
    measurement.hasArraySize |= readIntegerOrWarn(measurement.arraySize);
    return next();
}

// Negative sizes count as "not present" before anything is computed from them.
int PhA2l::parseMatrixDim(Measurement& measurement) {
    measurement.hasMatrixDim = true;
    measurement.matrixDim = {1, 1, 1};
    int kind = next();
    for (std::int32_t& size : measurement.matrixDim) {
        if (kind != TOK_INTEGER) {
            break;
        }
        size = std::max(token().intValue, 0);
        kind = next();
    }
    return kind;
}

int PhA2l::parseLayout(Measurement& measurement) {
    const int kind = next();
    PhLayout& layout = measurement.signal.layout;
    if (kind != TOK_IDENT) {
        unexpectedTokenWarning(kind);
    } else if (token().text == "ROW_DIR") {
        layout = PhLayout::RowDirection;
    } else if (token().text == "COLUMN_DIR") {
        layout = PhLayout::ColumnDirection;
    } else {
        warning("Unexpected LAYOUT '%s'", {token().text});
        layout = PhLayout::None;
    }
    return next();
}

int PhA2l::parseMeasurementIfData(Measurement& measurement) {
    return parseIfData(measurement.signal);
}

int PhA2l::parseBitOperation(Measurement& measurement) {
    static constexpr OptionalRule<PhA2l, PhEntity> kRules[] = {
        {Form::Bare, LEFT_SHIFT, &PhA2l::parseLeftShift},
        {Form::Bare, RIGHT_SHIFT, &PhA2l::parseRightShift},
        {Form::Bare, SIGN_EXTEND, &PhA2l::parseSignExtend},
    };
    const int kind = readOptionals(*this, kRules, measurement.signal, next());
    return kind == END ? closeBlock(BIT_OPERATION) : kind;
}

int PhA2l::parseLeftShift(PhEntity& signal) {
    keepShift(signal, PhBitOperation::LeftShift, readInteger());
    return next();
}

int PhA2l::parseRightShift(PhEntity& signal) {
    keepShift(signal, PhBitOperation::RightShift, readInteger());
    return next();
}

void PhA2l::keepShift(PhEntity& signal, PhBitOperation operation, std::int32_t count) {
    commit([&] {
        signal.bitOperation = operation;
        signal.extras().shiftCount = count;
    });
}

int PhA2l::parseSignExtend(PhEntity& signal) {
    signal.signExtend = true;
    return next();
}

int PhA2l::parseVirtual(Measurement& measurement) {
    PhEntity& signal = measurement.signal;
    auto& members = signal.extras().virtualMembers;
    return readNameBlock(VIRTUAL, [&](std::string_view name) {
        // A placeholder of the signal's own name would become the next definition of that name.
        const bool isOwn = name == signal.name().view() && !references_->hasSignal(name);
        members.append(isOwn ? PhHandle<PhEntity>(&signal) : references_->refer<PhEntity>(name));
    });
}

int PhA2l::parseCharacteristic(PhGroup& module) {
    // Held to the end, as after an error the module does not keep it.
    const auto owner = defineNext<PhEntity>();
    PhEntity& signal = *owner;
    readLongIdentifier(signal);
    keepIn(module.signals, owner);
    traceBlock("Parse CHARACTERISTIC '%s'\n", signal);
    keep(signal.byteOrder, moduleByteOrder_);
    readStorageType(signal);
    std::int32_t address = 0;
    if (readIntegerOrWarn(address)) {
        signal.address = address;
    }
    next();
    keep(signal.recordLayout, references_->refer<PhRecordLayout>(token().text));
    drop(1);  // maximum difference
    // ... and the conversion's name, whatever kind of token it is
    commit([&] { references_->bindConversionSoon(signal, token().text); });
    readLimits(signal);

    using Rule = OptionalRule<PhA2l, PhEntity>;
    static constexpr Rule kRules[] = {
        {Form::Bare, FORMAT, &PhA2l::dropWord<PhEntity>},
        {Form::Bare, PHYS_UNIT, &PhA2l::dropWord<PhEntity>},
        {Form::Bare, SYMBOL_LINK, nullptr, 2},
        {Form::Bare, EXTENDED_LIMITS, nullptr, 2},
        {Form::Bare, DISPLAY_IDENTIFIER, nullptr, 1},
        {Form::Bare, BYTE_ORDER_, &PhA2l::parseCharacteristicByteOrder},
        {Form::Bare, NUMBER, &PhA2l::parseNumber},
        {Form::Bare, MATRIX_DIM, &PhA2l::dropNumbers<PhEntity>},
        {Form::Bare, BIT_MASK, nullptr, 1},
        {Form::Bare, REF_MEMORY_SEGMENT, nullptr, 1},
        {Form::Bare, ECU_ADDRESS_EXTENSION, nullptr, 1},
        {Form::Bare, COMPARISON_QUANTITY, nullptr, 1},
        {Form::Bare, CALIBRATION_ACCESS, nullptr, 1},
        {Form::Bare, STEP_SIZE, nullptr, 1},
        {Form::Bare, MAX_REFRESH, nullptr, 2},
        {Form::Bare, READ_ONLY, nullptr, 0},
        {Form::Bare, GUARD_RAILS, nullptr, 0},
        {Form::Bare, DISCRETE, nullptr, 0},
        {Form::Bare, FUNCTION_LIST, &PhA2l::dropNames<PhEntity>},
        {Form::Bare, MAP_LIST, &PhA2l::dropNames<PhEntity>},
        {Form::Block, AXIS_DESCR},  // skipped
        {Form::Block, IF_DATA, &PhA2l::parseIfDataOf<PhEntity>},
        {Form::Block, ANNOTATION, &PhA2l::parseAnnotation<PhEntity>},
        {Form::Block, DEPENDENT_CHARACTERISTIC, &PhA2l::parseDependentCharacteristic},
        {Form::Block, VIRTUAL_CHARACTERISTIC, &PhA2l::parseVirtualCharacteristic},
        {Form::Block, FUNCTION_LIST, &PhA2l::dropNameBlock<PhEntity, FUNCTION_LIST>},
    };
    const int kind = readOptionals(*this, kRules, signal, next());
    return kind == END ? closeBlock(CHARACTERISTIC) : kind;
}

void PhA2l::readStorageType(PhEntity& signal) {
    struct Row {
        std::string_view text;
        PhSignalKind kind;
    };
    static constexpr Row kRows[] = {
        {"VALUE", PhSignalKind::Value},
        {"CURVE", PhSignalKind::Curve},
        {"MAP", PhSignalKind::Map},
        {"CUBOID", PhSignalKind::Cuboid},
        {"VAL_BLK", PhSignalKind::ValueBlock},
        {"ASCII", PhSignalKind::Ascii},
        {"CUBE_4", PhSignalKind::Cube4},
        {"CUBE_5", PhSignalKind::Cube5},
    };
    // Also what an unknown storage type is written as.
    keep(signal.signalKind, PhSignalKind::Measurement);
    if (next() != TOK_IDENT) {
        return;
    }
    const auto* row =
        std::find_if(std::begin(kRows), std::end(kRows),
                     [this](const Row& candidate) { return candidate.text == token().text; });
    if (row == std::end(kRows)) {
        warning("Unexpected storage type '%s'.", {token().text});
        return;
    }
    signal.signalKind = row->kind;
    if (row->kind == PhSignalKind::Ascii) {
        signal.datatype.baseType = PhBaseType::StringAscii;
    }
}

int PhA2l::parseCharacteristicByteOrder(PhEntity& signal) {
    return readByteOrder(signal.byteOrder);
}

int PhA2l::parseNumber(PhEntity& signal) {
    constexpr std::int64_t kBitsPerByte = 8;
    if (next() == TOK_INTEGER) {
        signal.datatype.sizeBits = kBitsPerByte * token().intValue;
    }
    return next();
}

int PhA2l::parseDependentCharacteristic(PhEntity&) {
    next();  // the formula
    return readNameBlock(DEPENDENT_CHARACTERISTIC, [](std::string_view) {});
}

int PhA2l::parseVirtualCharacteristic(PhEntity&) {
    next();  // the formula
    return readNameBlock(VIRTUAL_CHARACTERISTIC, [](std::string_view) {});
}

}  // namespace quillmark
