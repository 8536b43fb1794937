#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "model/class_codes.h"
#include "model/enumerations.h"
#include "model/model_memory.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/ph_value.h"

namespace quillmark {

/// The line of a description on which a block has its name, from 1; 0 where there is no such block.
using TextLine = std::int32_t;

/// A physical unit. A unit that a conversion writes inline has its text as name and display text;
/// one of its own block has the block's display text; a placeholder has none.
class PhUnit final : public PhObject {
  public:
    PhUnit() : PhObject(PhClass::Unit) {}

    const PhString& displayText() const { return displayText_; }
    void setDisplayText(PhString text) { displayText_ = std::move(text); }

    TextLine line = 0;

  private:
    PhString displayText_;
};

/// One row of a conversion table: an input range (both ends equal for a single value) and an output
/// that is a number or a text.
class PhTableEntry {
  public:
    PhTableEntry(PhNumber lower, PhNumber upper, PhNumber output)
        : lower_(lower), upper_(upper), output_(output) {}
    PhTableEntry(PhNumber lower, PhNumber upper, PhString text)
        : text_(std::move(text)), lower_(lower), upper_(upper) {}

    PhNumber lower() const { return lower_; }
    PhNumber upper() const { return upper_; }

    /// Missing when the output is a text.
    PhNumber output() const { return output_; }

    /// Null when the output is a number.
    const PhString& text() const { return text_; }

  private:
    PhString text_;
    PhNumber lower_;
    PhNumber upper_;
    PhNumber output_;
};

/// How raw values become physical ones: a conversion method, or one of its tables.
class PhConversion final : public PhObject {
  public:
    PhConversion() : PhObject(PhClass::Conversion) {}

    /// Begins the names of tables: they are kept among the methods, under names that no method can
    /// have.
    static constexpr std::string_view kTablePrefix = "TAB::";

    PhConversionType conversionType = PhConversionType::Undefined;
    TextLine line = 0;
    PhHandle<PhUnit> unit;
    PhHandle<PhConversion> tableRef;  ///< the table that the method names, never the method itself

    /// physical = coeffs(raw) / denominatorCoeffs(raw), highest power first; for a linear
    /// conversion coeffs holds the factor and the offset.
    std::vector<PhNumber> coeffs;
    std::vector<PhNumber> denominatorCoeffs;

    std::vector<PhTableEntry> tableEntries;  ///< in file order
    PhString defaultText;                    ///< null when the table has no default

    /// Texts that neither the include file nor the comparison knows, each null where there is none:
    /// how to show a value, and how to calculate it and the way back.
    struct Texts : InModelMemory {
        PhString displayFormat;
        PhString formula;
        PhString inverseFormula;
    };
    Texts& texts();
    const Texts* textsIfAny() const { return texts_.get(); }

  private:
    std::unique_ptr<Texts> texts_;
};

/// What a data type tells.
struct PhTypeData {
    PhBaseType baseType = PhBaseType::Undefined;
    PhOptionalInteger bitMask;
    std::int64_t sizeBits = 0;  ///< may be negative where a description says so
    PhHandle<PhUnit> unit;
    PhHandle<PhConversion> conversion;
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

    TextLine line = 0;
    PhHandle<PhType> dataType;
};

/// An XCP event channel that a signal names, and as what.
struct PhSignalEvent {
    enum class Use : std::uint8_t {
        Fixed,        ///< of a fixed list
        Available,    ///< of a variable one: to choose from
        Default,      ///< ... taken by default
        Consistency,  ///< ... keeps data consistent
    };

    Use use;
    std::int32_t channel;
};

/// A signal: a measurement or a characteristic. Descriptions have up to millions of them, so the
/// order of the members leaves little room between them.
class PhEntity final : public PhObject {
  public:
    PhEntity() : PhObject(PhClass::Entity) {}

    PhSignalKind signalKind = PhSignalKind::Undefined;
    PhByteOrder byteOrder = PhByteOrder::Undefined;
    PhBitOperation bitOperation = PhBitOperation::None;
    PhLayout layout = PhLayout::None;
    bool signExtend = false;
    PhOptionalInteger address;
    PhOptionalInteger addressExtension;
    TextLine line = 0;
    PhTypeData datatype;  ///< nobody shares it, so it is part of the signal
    PhHandle<PhRecordLayout> recordLayout;

    /// What a description writes about showing the physical value. Neither the include file nor the
    /// comparison knows it, so it is kept apart from what they read.
    struct Display : InModelMemory {
        PhNumber lowerLimit;
        PhNumber upperLimit;
        PhString format;
    };
    Display& display();

    /// Missing, or null, where none was kept.
    PhNumber lowerLimit() const { return display_ == nullptr ? PhNumber() : display_->lowerLimit; }
    PhNumber upperLimit() const { return display_ == nullptr ? PhNumber() : display_->upperLimit; }
    PhString displayFormat() const { return display_ == nullptr ? PhString() : display_->format; }

    /// What only few signals have.
    struct Extras : InModelMemory {
        std::array<std::int32_t, 3> matrixDims{};
        std::int32_t shiftCount = 0;
        PhObjectList<PhEntity> virtualMembers;
        std::vector<PhSignalEvent> events;  ///< in the order of the description
    };
    Extras& extras();
    const Extras* extrasIfAny() const { return extras_.get(); }
    Extras* extrasIfAny() { return extras_.get(); }

    /// Array dimensions; the first 0 ends them.
    std::array<std::int32_t, 3> matrixDims() const {
        return extras_ == nullptr ? std::array<std::int32_t, 3>{} : extras_->matrixDims;
    }

    /// In bits; meaningful with a bit operation.
    std::int32_t shiftCount() const { return extras_ == nullptr ? 0 : extras_->shiftCount; }

  private:
    std::unique_ptr<Display> display_;
    std::unique_ptr<Extras> extras_;
};

/// A GROUP or FUNCTION: names of signals and of other groups that belong together.
class PhFunction final : public PhObject {
  public:
    PhFunction() : PhObject(PhClass::Function) {}

    TextLine line = 0;
    PhObjectList<PhEntity> signals;
    PhObjectList<PhFunction> functions;
};

/// A FRAME: signals that the control unit sends together.
class PhFrame final : public PhObject {
  public:
    PhFrame() : PhObject(PhClass::Frame) {}

    TextLine line = 0;
    std::int32_t scalingUnit = 0;  ///< code of the standard's scaling-unit table
    std::int32_t rate = 0;         ///< number of scaling units
    PhObjectList<PhEntity> signals;
};

}  // namespace quillmark
