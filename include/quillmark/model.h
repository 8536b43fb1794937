#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "quillmark/enumerations.h"
#include "quillmark/export.h"
#include "quillmark/list.h"
#include "quillmark/number.h"

namespace quillmark {

// What a description holds, as small values that look at it: copy them freely, keep none longer
// than the description. Texts are views into it, in its own encoding. An absent number is a Number
// that is not present, an absent text is empty, anything else that may be absent is an
// std::optional. Lines are counted from 1 and tell where the name of the block stands; 0 where it
// is not known.

struct ViewAccess;
class PhConversion;
class PhEntity;
class PhFrame;
class PhFunction;
class PhGroup;
class PhMemoryPage;
class PhRecordLayout;
class PhTableEntry;
class PhUnit;
class PhValue;
struct PhSignalEvent;
class Protocol;

/// A named setting: of a module, a protocol, a transport, an event, ... A list holds further ones.
class QUILLMARK_API Setting {
  public:
    enum class Type : std::uint8_t { None, Integer, Real, Text, List, Bytes };

    /// "mod_par/epk", "max_cto", "bitrate", ...; docs/library.md has them all. May be empty within
    /// a list.
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] Type type() const noexcept;

    /// Of Integer and Real; absent otherwise.
    [[nodiscard]] Number number() const noexcept;

    /// Of Text; empty otherwise.
    [[nodiscard]] std::string_view text() const noexcept;

    /// Of Bytes; empty otherwise.
    [[nodiscard]] std::string_view bytes() const noexcept;

    /// Of List; empty otherwise.
    [[nodiscard]] List<Setting> elements() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Setting(const PhValue* value) noexcept : value_(value) {}

    const PhValue* value_;
};

/// A physical unit, from a UNIT block or from the text in a conversion.
class QUILLMARK_API Unit {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;

    /// What to show, such as "km/h"; empty for one that is not defined.
    [[nodiscard]] std::string_view displayText() const noexcept;

    /// Whether the description defines what this name stands for.
    [[nodiscard]] bool isDefined() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Unit(const PhUnit* unit) noexcept : unit_(unit) {}

    const PhUnit* unit_;
};

/// A row of a conversion table. The range includes both ends, which are equal for a single value.
class QUILLMARK_API TableRow {
  public:
    [[nodiscard]] Number lower() const noexcept;
    [[nodiscard]] Number upper() const noexcept;

    /// Absent where the output is a text.
    [[nodiscard]] Number output() const noexcept;

    /// Nothing where the output is a number.
    [[nodiscard]] std::optional<std::string_view> text() const noexcept;

  private:
    friend struct ViewAccess;
    explicit TableRow(const PhTableEntry* row) noexcept : row_(row) {}

    const PhTableEntry* row_;
};

/// How raw values become physical ones: a COMPU_METHOD, or one of the tables that they name
/// (COMPU_TAB, COMPU_VTAB, COMPU_VTAB_RANGE).
class QUILLMARK_API Conversion {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;
    [[nodiscard]] ConversionKind kind() const noexcept;

    /// Whether it is a table by itself. Methods and tables have names of their own: one of each may
    /// be called the same.
    [[nodiscard]] bool isTable() const noexcept;

    /// Whether the description defines what this name stands for. "NO_COMPU_METHOD" is never
    /// defined: it says that there is no conversion.
    [[nodiscard]] bool isDefined() const noexcept;

    [[nodiscard]] std::optional<Unit> unit() const noexcept;

    /// Linear: factor and offset. Rational: physical = coefficients(raw) /
    /// denominatorCoefficients(raw), highest power first, as turned round from the six of COEFFS;
    /// both empty where those have no inverse of that form. Otherwise empty.
    [[nodiscard]] std::vector<Number> coefficients() const;
    [[nodiscard]] std::vector<Number> denominatorCoefficients() const;

    /// The table that a method names, which may be undefined.
    [[nodiscard]] std::optional<Conversion> table() const noexcept;

    /// The rows of a table, empty for a method.
    [[nodiscard]] List<TableRow> rows() const noexcept;

    /// How to calculate the physical value, as the description writes it ("X1 * 0.5 + 3"), and the
    /// way back; empty where there is none. Only a method of kind Formula follows it, and a logger
    /// takes such a method as Identity.
    [[nodiscard]] std::string_view formula() const noexcept;
    [[nodiscard]] std::string_view inverseFormula() const noexcept;

    /// How many digits to show, as the description writes it: "%8.3", all digits and those behind
    /// the point. Empty for a table.
    [[nodiscard]] std::string_view displayFormat() const noexcept;

    /// What a table gives for all other values; nothing where it does not say.
    [[nodiscard]] std::optional<std::string_view> defaultText() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Conversion(const PhConversion* conversion) noexcept : conversion_(conversion) {}

    const PhConversion* conversion_;
};

/// How the values of a characteristic lie in memory.
class QUILLMARK_API RecordLayout {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;
    [[nodiscard]] bool isDefined() const noexcept;

    /// The type of the stored function values; Undefined and 0 for a layout without any.
    [[nodiscard]] BaseType baseType() const noexcept;
    [[nodiscard]] std::int64_t sizeBits() const noexcept;

  private:
    friend struct ViewAccess;
    explicit RecordLayout(const PhRecordLayout* layout) noexcept : layout_(layout) {}

    const PhRecordLayout* layout_;
};

/// An XCP event channel that a signal names.
struct QUILLMARK_API EventReference {
    EventUse use = EventUse::Fixed;
    std::int32_t channel = 0;
};

/// A MEASUREMENT or a CHARACTERISTIC.
class QUILLMARK_API Signal {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;
    [[nodiscard]] SignalKind kind() const noexcept;

    /// Whether the description defines what this name stands for; only members of groups, frames
    /// and virtual signals may be undefined. Such a one has nothing but its name.
    [[nodiscard]] bool isDefined() const noexcept;

    /// In the control unit; of an array that of its first element.
    [[nodiscard]] std::optional<std::uint32_t> address() const noexcept;
    [[nodiscard]] std::optional<std::int32_t> addressExtension() const noexcept;

    /// The type of a value, or of one element of an array. Of a characteristic other than text that
    /// of its record layout.
    [[nodiscard]] BaseType baseType() const noexcept;

    /// Its size in bits; of a text that of the whole text. 0 where it is not known.
    [[nodiscard]] std::int64_t sizeBits() const noexcept;

    /// That of the signal, otherwise that of its module.
    [[nodiscard]] ByteOrder byteOrder() const noexcept;
    [[nodiscard]] std::optional<std::uint32_t> bitMask() const noexcept;
    [[nodiscard]] BitOperation bitOperation() const noexcept;

    /// Bits by which the operation shifts.
    [[nodiscard]] std::int32_t shiftCount() const noexcept;

    /// Whether a shift to the right fills up with the sign.
    [[nodiscard]] bool signExtend() const noexcept;

    /// Elements of an array in each dimension, the fastest index first; the first 0 ends them,
    /// three zeros are no array.
    [[nodiscard]] std::array<std::int32_t, 3> dimensions() const noexcept;
    [[nodiscard]] ArrayLayout layout() const noexcept;

    /// Of the physical value.
    [[nodiscard]] Number lowerLimit() const noexcept;
    [[nodiscard]] Number upperLimit() const noexcept;

    /// How many digits to show where it is not as the conversion says ("%8.3"); empty otherwise.
    [[nodiscard]] std::string_view displayFormat() const noexcept;

    /// Nothing where the description says NO_COMPU_METHOD.
    [[nodiscard]] std::optional<Conversion> conversion() const noexcept;

    /// Text of the unit that the include file gives it: that of its conversion. Empty for none.
    [[nodiscard]] std::string_view unitText() const noexcept;

    /// Of a characteristic.
    [[nodiscard]] std::optional<RecordLayout> recordLayout() const noexcept;

    /// The signals from which a virtual one is calculated.
    [[nodiscard]] List<Signal> virtualMembers() const noexcept;

    [[nodiscard]] List<EventReference> events() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Signal(const PhEntity* signal) noexcept : signal_(signal) {}

    const PhEntity* signal_;
};

/// A GROUP or FUNCTION: signals and further groups that belong together.
class QUILLMARK_API Group {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;
    [[nodiscard]] bool isDefined() const noexcept;

    /// Members of all kinds, in the order of the description.
    [[nodiscard]] List<Signal> signals() const noexcept;

    /// They may contain each other in circles.
    [[nodiscard]] List<Group> groups() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Group(const PhFunction* group) noexcept : group_(group) {}

    const PhFunction* group_;
};

/// A FRAME: signals that the control unit sends together.
class QUILLMARK_API Frame {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;

    /// Code of the scaling unit as the standard counts them, and how many of them lie between two
    /// transmissions.
    [[nodiscard]] std::int32_t scalingUnit() const noexcept;
    [[nodiscard]] std::int32_t rate() const noexcept;
    [[nodiscard]] List<Signal> signals() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Frame(const PhFrame* frame) noexcept : frame_(frame) {}

    const PhFrame* frame_;
};

/// A memory segment, or a page of one.
class QUILLMARK_API MemorySegment {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] MemoryUse use() const noexcept;
    [[nodiscard]] MemoryKind kind() const noexcept;
    [[nodiscard]] std::uint32_t address() const noexcept;
    [[nodiscard]] std::int32_t addressExtension() const noexcept;

    /// [bytes]
    [[nodiscard]] std::uint32_t size() const noexcept;

    /// Number of a CCP page; 0 otherwise.
    [[nodiscard]] std::int32_t number() const noexcept;

  private:
    friend struct ViewAccess;
    explicit MemorySegment(const PhMemoryPage* segment) noexcept : segment_(segment) {}

    const PhMemoryPage* segment_;
};

/// A MODULE: one control unit.
class QUILLMARK_API Module {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;

    [[nodiscard]] List<Signal> signals() const noexcept;

    /// Methods and tables, in the order of the description.
    [[nodiscard]] List<Conversion> conversions() const noexcept;

    /// Of UNIT blocks.
    [[nodiscard]] List<Unit> units() const noexcept;
    [[nodiscard]] List<RecordLayout> recordLayouts() const noexcept;

    /// Groups and functions.
    [[nodiscard]] List<Group> groups() const noexcept;
    [[nodiscard]] List<Frame> frames() const noexcept;
    [[nodiscard]] List<MemorySegment> memorySegments() const noexcept;

    /// How the control unit is reached.
    [[nodiscard]] List<Protocol> protocols() const noexcept;

    /// The protocol over which a converted station is measured, CCP or XCP; Undefined for a module
    /// that a logger cannot reach and that `convert` leaves out.
    [[nodiscard]] ProtocolKind stationProtocol() const noexcept;

    /// The settings of MOD_PAR; docs/library.md has their names.
    [[nodiscard]] List<Setting> settings() const noexcept;

    /// The identification of the program version (EPK) and where the control unit keeps it, without
    /// which a station cannot be converted.
    [[nodiscard]] std::optional<std::string_view> epk() const noexcept;
    [[nodiscard]] std::optional<std::uint32_t> epkAddress() const noexcept;

    /// The first one of a name. The first search takes as long as a walk, each further one takes no
    /// time to speak of; for one thread at a time.
    [[nodiscard]] std::optional<Signal> findSignal(std::string_view name) const;
    [[nodiscard]] std::optional<Conversion> findConversion(std::string_view name) const;
    [[nodiscard]] std::optional<Conversion> findTable(std::string_view name) const;
    [[nodiscard]] std::optional<Unit> findUnit(std::string_view name) const;
    [[nodiscard]] std::optional<Group> findGroup(std::string_view name) const;

  private:
    friend struct ViewAccess;
    explicit Module(const PhGroup* module) noexcept : module_(module) {}

    const PhGroup* module_;
};

/// A PROJECT.
class QUILLMARK_API Project {
  public:
    [[nodiscard]] std::string_view name() const noexcept;
    [[nodiscard]] std::string_view longIdentifier() const noexcept;
    [[nodiscard]] std::int32_t line() const noexcept;
    [[nodiscard]] List<Module> modules() const noexcept;

  private:
    friend struct ViewAccess;
    explicit Project(const PhGroup* project) noexcept : project_(project) {}

    const PhGroup* project_;
};

}  // namespace quillmark
