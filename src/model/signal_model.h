#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "model/enumerations.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_value.h"

namespace quillmark {

/// A physical unit. A unit that a conversion writes inline has its text as name and display text;
/// one of its own block has the block's display text; a placeholder has none.
class PhUnit final : public PhObject {
  public:
    PhUnit() : PhObject(PhClass::Unit) {}

    const PhString& displayText() const { return displayText_; }
    void setDisplayText(PhString text) { displayText_ = std::move(text); }

  private:
    PhString displayText_;
};

/// One row of a conversion table: an input range (both ends equal for a single value) and an output
/// that is a number or a text.
class PhTableEntry {
  public:
    PhTableEntry(PhNumber lower, PhNumber upper, PhNumber output);
    PhTableEntry(PhNumber lower, PhNumber upper, PhString text);

    PhNumber lower() const { return number(lower_, lowerKind_); }
    PhNumber upper() const { return number(upper_, upperKind_); }

    /// Missing when the output is a text.
    PhNumber output() const { return number(output_, outputKind_); }

    /// Null when the output is a number.
    const PhString& text() const { return text_; }

  private:
    // Tables have millions of rows, so the numbers' kinds are packed together behind their values.
    union Payload {
        std::int64_t integer;
        double real;
    };
    static Payload payload(const PhNumber& value);
    static PhNumber number(Payload value, PhNumber::Kind kind);

    Payload lower_;
    Payload upper_;
    Payload output_;
    PhString text_;
    PhNumber::Kind lowerKind_;
    PhNumber::Kind upperKind_;
    PhNumber::Kind outputKind_;
};

/// How raw values become physical ones: a conversion method, or one of its tables (whose name then
/// begins with "TAB::").
class PhConversion final : public PhObject {
  public:
    PhConversion() : PhObject(PhClass::Conversion) {}

    PhConversionType conversionType = PhConversionType::Undefined;
    PhHandle<PhUnit> unit;
    PhHandle<PhConversion> tableRef;  ///< the table that the method names, never the method itself

    /// physical = coeffs(raw) / denominatorCoeffs(raw), highest power first; for a linear
    /// conversion coeffs holds the factor and the offset.
    std::vector<PhNumber> coeffs;
    std::vector<PhNumber> denominatorCoeffs;

    std::vector<PhTableEntry> tableEntries;  ///< in file order
    PhString defaultText;                    ///< null when the table has no default
};

/// What a data type tells.
struct PhTypeData {
    PhHandle<PhConversion> conversion;
    PhHandle<PhUnit> unit;
    std::int64_t sizeBits = 0;  ///< may be negative where a description says so
    std::optional<std::int32_t> bitMask;
    PhBaseType baseType = PhBaseType::Undefined;
};

/// A data type as an object of its own: that of a record layout's values.
class PhType final : public PhObject, public PhTypeData {
  public:
    PhType() : PhObject(PhClass::Type) {}
};

/// How a characteristic's values lie in memory; the type is that of the stored function values and
/// is absent for a layout without any.
class PhRecordLayout final : public PhObject {
  public:
    PhRecordLayout() : PhObject(PhClass::RecordLayout) {}

    PhHandle<PhType> dataType;
};

/// A signal: a measurement or a characteristic.
class PhEntity final : public PhObject {
  public:
    PhEntity() : PhObject(PhClass::Entity) {}

    PhSignalKind signalKind = PhSignalKind::Undefined;
    PhByteOrder byteOrder = PhByteOrder::Undefined;
    PhBitOperation bitOperation = PhBitOperation::None;
    PhLayout layout = PhLayout::None;
    bool signExtend = false;
    std::int32_t shiftCount = 0;  ///< bits; meaningful with a bit operation
    std::optional<std::int32_t> address;
    std::optional<std::int32_t> addressExtension;
    /// Array dimensions; the first 0 ends them.
    std::array<std::int32_t, 3> matrixDims{};
    PhNumber lowerLimit;
    PhNumber upperLimit;
    PhTypeData datatype;  ///< nobody shares it, so it is part of the signal
    PhHandle<PhRecordLayout> recordLayout;

    /// What only few signals have.
    struct Extras {
        PhObjectList<PhEntity> virtualMembers;
        std::vector<std::int32_t> fixedEvents;        ///< XCP event channels of a fixed list
        std::vector<std::int32_t> availableEvents;    ///< of a variable one: those to choose from
        std::vector<std::int32_t> defaultEvents;      ///< ... and those taken by default
        std::vector<std::int32_t> consistencyEvents;  ///< ... and those that keep data consistent
    };
    Extras& extras();
    const Extras* extrasIfAny() const { return extras_.get(); }
    Extras* extrasIfAny() { return extras_.get(); }

  private:
    std::unique_ptr<Extras> extras_;
};

/// A GROUP or FUNCTION: names of signals and of other groups that belong together.
class PhFunction final : public PhObject {
  public:
    PhFunction() : PhObject(PhClass::Function) {}

    PhObjectList<PhEntity> signals;
    PhObjectList<PhFunction> functions;
};

/// A FRAME: signals that the control unit sends together.
class PhFrame final : public PhObject {
  public:
    PhFrame() : PhObject(PhClass::Frame) {}

    std::int32_t scalingUnit = 0;  ///< code of the standard's scaling-unit table
    std::int32_t rate = 0;         ///< number of scaling units
    PhObjectList<PhEntity> signals;
};

}  // namespace quillmark
