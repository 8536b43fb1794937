#include <string>

#include "cfginclude/module_output.h"
#include "cfginclude/signal_output.h"
#include "library/view_access.h"
#include "model/module_model.h"
#include "model/setting_names.h"
#include "model/signal_model.h"
#include "quillmark/model.h"
#include "quillmark/protocol.h"

namespace quillmark {
namespace {

/// The name under which a description says that there is no conversion.
constexpr std::string_view kNoConversion = "NO_COMPU_METHOD";

std::vector<Number> numbersOf(const std::vector<PhNumber>& numbers) {
    std::vector<Number> result;
    result.reserve(numbers.size());
    for (const PhNumber& number : numbers) {
        result.push_back(numberOf(number));
    }
    return result;
}

BaseType baseTypeOf(const PhTypeData& type) {
    switch (type.baseType) {
        case PhBaseType::Integer:
            return BaseType::Integer;
        case PhBaseType::UInteger:
            return BaseType::UnsignedInteger;
        case PhBaseType::Ieee32:
            return BaseType::Float32;
        case PhBaseType::Ieee64:
            return BaseType::Float64;
        case PhBaseType::StringAscii:
            return BaseType::Ascii;
        default:  // no type that an A2L file has
            return BaseType::Undefined;
    }
}

/// A characteristic is stored as its layout says, but for a text.
const PhTypeData& storedType(const PhEntity& signal) {
    const bool hasLayoutType = signal.signalKind != PhSignalKind::Measurement &&
                               signal.signalKind != PhSignalKind::Ascii && signal.recordLayout &&
                               signal.recordLayout->dataType;
    return hasLayoutType ? *signal.recordLayout->dataType : signal.datatype;
}

std::optional<std::uint32_t> unsignedIfAny(const PhOptionalInteger& value) {
    return value ? std::optional(static_cast<std::uint32_t>(*value)) : std::nullopt;
}

/// Empty where there is none.
std::string_view textOf(const PhConversion& conversion, PhString PhConversion::Texts::*text) {
    const PhConversion::Texts* const texts = conversion.textsIfAny();
    return texts == nullptr ? std::string_view() : (texts->*text).view();
}

const PhValue* propertyOf(const PhGroup& module, std::string_view name) {
    return module.properties ? module.properties->find(name) : nullptr;
}

}  // namespace

// Setting

std::string_view Setting::name() const noexcept {
    return value_->name().view();
}

Setting::Type Setting::type() const noexcept {
    return static_cast<Type>(value_->type());
}

Number Setting::number() const noexcept {
    return numberOf(value_->number());
}

std::string_view Setting::text() const noexcept {
    return value_->text().view();
}

std::string_view Setting::bytes() const noexcept {
    const std::vector<unsigned char>& bytes = value_->bytes();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

List<Setting> Setting::elements() const noexcept {
    const PhValue::List* const elements = value_->listIfAny();
    return elements == nullptr ? List<Setting>() : ViewAccess::list<Setting>(elements);
}

// Unit

std::string_view Unit::name() const noexcept {
    return unit_->name().view();
}

std::string_view Unit::longIdentifier() const noexcept {
    return unit_->longIdentifier().view();
}

std::int32_t Unit::line() const noexcept {
    return unit_->line;
}

std::string_view Unit::displayText() const noexcept {
    return unit_->displayText().view();
}

bool Unit::isDefined() const noexcept {
    return !unit_->isPlaceholder();
}

// TableRow

Number TableRow::lower() const noexcept {
    return numberOf(row_->lower());
}

Number TableRow::upper() const noexcept {
    return numberOf(row_->upper());
}

Number TableRow::output() const noexcept {
    return numberOf(row_->output());
}

std::optional<std::string_view> TableRow::text() const noexcept {
    return textIfAny(row_->text());
}

// Conversion

std::string_view Conversion::name() const noexcept {
    const std::string_view name = conversion_->name().view();
    return isTable() ? name.substr(PhConversion::kTablePrefix.size()) : name;
}

std::string_view Conversion::longIdentifier() const noexcept {
    return conversion_->longIdentifier().view();
}

std::int32_t Conversion::line() const noexcept {
    return conversion_->line;
}

ConversionKind Conversion::kind() const noexcept {
    switch (conversion_->conversionType) {
        case PhConversionType::Identity:
            return ConversionKind::Identity;
        case PhConversionType::Rational:
            return ConversionKind::Rational;
        case PhConversionType::Linear:
            return ConversionKind::Linear;
        case PhConversionType::Table:
            return ConversionKind::Table;
        case PhConversionType::Formula:
            return ConversionKind::Formula;
        case PhConversionType::Interpolation:
            return ConversionKind::InterpolatedTable;
        case PhConversionType::Undefined:
        case PhConversionType::Code:
        case PhConversionType::Scale:
            break;
    }
    return ConversionKind::Undefined;
}

bool Conversion::isTable() const noexcept {
    return conversion_->name().view().starts_with(PhConversion::kTablePrefix);
}

bool Conversion::isDefined() const noexcept {
    return !conversion_->isPlaceholder();
}

std::optional<Unit> Conversion::unit() const noexcept {
    return ViewAccess::viewIfAny<Unit>(conversion_->unit);
}

std::vector<Number> Conversion::coefficients() const {
    return numbersOf(conversion_->coeffs);
}

std::vector<Number> Conversion::denominatorCoefficients() const {
    return numbersOf(conversion_->denominatorCoeffs);
}

std::optional<Conversion> Conversion::table() const noexcept {
    return ViewAccess::viewIfAny<Conversion>(conversion_->tableRef);
}

List<TableRow> Conversion::rows() const noexcept {
    return ViewAccess::list<TableRow>(&conversion_->tableEntries);
}

std::string_view Conversion::formula() const noexcept {
    return textOf(*conversion_, &PhConversion::Texts::formula);
}

std::string_view Conversion::inverseFormula() const noexcept {
    return textOf(*conversion_, &PhConversion::Texts::inverseFormula);
}

std::string_view Conversion::displayFormat() const noexcept {
    return textOf(*conversion_, &PhConversion::Texts::displayFormat);
}

std::optional<std::string_view> Conversion::defaultText() const noexcept {
    return textIfAny(conversion_->defaultText);
}

// RecordLayout

std::string_view RecordLayout::name() const noexcept {
    return layout_->name().view();
}

std::int32_t RecordLayout::line() const noexcept {
    return layout_->line;
}

bool RecordLayout::isDefined() const noexcept {
    return !layout_->isPlaceholder();
}

BaseType RecordLayout::baseType() const noexcept {
    return layout_->dataType ? baseTypeOf(*layout_->dataType) : BaseType::Undefined;
}

std::int64_t RecordLayout::sizeBits() const noexcept {
    return layout_->dataType ? layout_->dataType->sizeBits : 0;
}

// Signal

std::string_view Signal::name() const noexcept {
    return signal_->name().view();
}

std::string_view Signal::longIdentifier() const noexcept {
    return signal_->longIdentifier().view();
}

std::int32_t Signal::line() const noexcept {
    return signal_->line;
}

SignalKind Signal::kind() const noexcept {
    return static_cast<SignalKind>(signal_->signalKind);
}

bool Signal::isDefined() const noexcept {
    return !signal_->isPlaceholder();
}

std::optional<std::uint32_t> Signal::address() const noexcept {
    return unsignedIfAny(signal_->address);
}

std::optional<std::int32_t> Signal::addressExtension() const noexcept {
    return signal_->addressExtension;
}

BaseType Signal::baseType() const noexcept {
    return baseTypeOf(storedType(*signal_));
}

std::int64_t Signal::sizeBits() const noexcept {
    return storedType(*signal_).sizeBits;
}

ByteOrder Signal::byteOrder() const noexcept {
    return static_cast<ByteOrder>(signal_->byteOrder);
}

std::optional<std::uint32_t> Signal::bitMask() const noexcept {
    return unsignedIfAny(signal_->datatype.bitMask);
}

BitOperation Signal::bitOperation() const noexcept {
    return static_cast<BitOperation>(signal_->bitOperation);
}

std::int32_t Signal::shiftCount() const noexcept {
    return signal_->shiftCount();
}

bool Signal::signExtend() const noexcept {
    return signal_->signExtend;
}

std::array<std::int32_t, 3> Signal::dimensions() const noexcept {
    return signal_->matrixDims();
}

ArrayLayout Signal::layout() const noexcept {
    return static_cast<ArrayLayout>(signal_->layout);
}

Number Signal::lowerLimit() const noexcept {
    return numberOf(signal_->lowerLimit());
}

Number Signal::upperLimit() const noexcept {
    return numberOf(signal_->upperLimit());
}

std::string_view Signal::displayFormat() const noexcept {
    return signal_->displayFormat().view();
}

std::optional<Conversion> Signal::conversion() const noexcept {
    const PhConversion* const conversion = signal_->datatype.conversion.get();
    if (conversion == nullptr || conversion->name().view() == kNoConversion) {
        return std::nullopt;
    }
    return ViewAccess::viewIfAny<Conversion>(conversion);
}

std::string_view Signal::unitText() const noexcept {
    return writtenUnit(*signal_);
}

std::optional<RecordLayout> Signal::recordLayout() const noexcept {
    return ViewAccess::viewIfAny<RecordLayout>(signal_->recordLayout);
}

List<Signal> Signal::virtualMembers() const noexcept {
    const PhEntity::Extras* const extras = signal_->extrasIfAny();
    return extras == nullptr ? List<Signal>() : ViewAccess::list<Signal>(&extras->virtualMembers);
}

List<EventReference> Signal::events() const noexcept {
    const PhEntity::Extras* const extras = signal_->extrasIfAny();
    return extras == nullptr ? List<EventReference>()
                             : ViewAccess::list<EventReference>(&extras->events);
}

// Group

std::string_view Group::name() const noexcept {
    return group_->name().view();
}

std::string_view Group::longIdentifier() const noexcept {
    return group_->longIdentifier().view();
}

std::int32_t Group::line() const noexcept {
    return group_->line;
}

bool Group::isDefined() const noexcept {
    return !group_->isPlaceholder();
}

List<Signal> Group::signals() const noexcept {
    return ViewAccess::list<Signal>(&group_->signals);
}

List<Group> Group::groups() const noexcept {
    return ViewAccess::list<Group>(&group_->functions);
}

// Frame

std::string_view Frame::name() const noexcept {
    return frame_->name().view();
}

std::string_view Frame::longIdentifier() const noexcept {
    return frame_->longIdentifier().view();
}

std::int32_t Frame::line() const noexcept {
    return frame_->line;
}

std::int32_t Frame::scalingUnit() const noexcept {
    return frame_->scalingUnit;
}

std::int32_t Frame::rate() const noexcept {
    return frame_->rate;
}

List<Signal> Frame::signals() const noexcept {
    return ViewAccess::list<Signal>(&frame_->signals);
}

// MemorySegment

std::string_view MemorySegment::name() const noexcept {
    return segment_->name().view();
}

std::string_view MemorySegment::longIdentifier() const noexcept {
    return segment_->longIdentifier().view();
}

MemoryUse MemorySegment::use() const noexcept {
    return static_cast<MemoryUse>(segment_->use);
}

MemoryKind MemorySegment::kind() const noexcept {
    return static_cast<MemoryKind>(segment_->memoryType);
}

std::uint32_t MemorySegment::address() const noexcept {
    return static_cast<std::uint32_t>(segment_->address);
}

std::int32_t MemorySegment::addressExtension() const noexcept {
    return segment_->addressExtension;
}

std::uint32_t MemorySegment::size() const noexcept {
    return static_cast<std::uint32_t>(segment_->size);
}

std::int32_t MemorySegment::number() const noexcept {
    return segment_->number;
}

// Module

std::string_view Module::name() const noexcept {
    return module_->name().view();
}

std::string_view Module::longIdentifier() const noexcept {
    return module_->longIdentifier().view();
}

std::int32_t Module::line() const noexcept {
    return module_->line;
}

List<Signal> Module::signals() const noexcept {
    return ViewAccess::list<Signal>(&module_->signals);
}

List<Conversion> Module::conversions() const noexcept {
    return ViewAccess::list<Conversion>(&module_->conversions);
}

List<Unit> Module::units() const noexcept {
    return ViewAccess::list<Unit>(&module_->units);
}

List<RecordLayout> Module::recordLayouts() const noexcept {
    return ViewAccess::list<RecordLayout>(&module_->recordLayouts);
}

List<Group> Module::groups() const noexcept {
    return ViewAccess::list<Group>(&module_->functions);
}

List<Frame> Module::frames() const noexcept {
    return ViewAccess::list<Frame>(&module_->frames);
}

List<MemorySegment> Module::memorySegments() const noexcept {
    return ViewAccess::list<MemorySegment>(&module_->memoryPages);
}

List<Protocol> Module::protocols() const noexcept {
    return ViewAccess::list<Protocol>(&module_->commParams);
}

ProtocolKind Module::stationProtocol() const noexcept {
    return static_cast<ProtocolKind>(quillmark::stationProtocol(*module_));
}

List<Setting> Module::settings() const noexcept {
    return settingsOf(module_->properties);
}

std::optional<std::string_view> Module::epk() const noexcept {
    const PhValue* const epk = propertyOf(*module_, setting::kEpk);
    return epk == nullptr ? std::nullopt : std::optional(epk->text().view());
}

std::optional<std::uint32_t> Module::epkAddress() const noexcept {
    const PhValue* const address = propertyOf(*module_, setting::kEpkAddress);
    return address == nullptr ? std::nullopt
                              : std::optional(static_cast<std::uint32_t>(address->toInteger()));
}

std::optional<Signal> Module::findSignal(std::string_view name) const {
    return ViewAccess::viewIfAny<Signal>(module_->signals.find(name));
}

std::optional<Conversion> Module::findConversion(std::string_view name) const {
    return ViewAccess::viewIfAny<Conversion>(module_->conversions.find(name));
}

std::optional<Conversion> Module::findTable(std::string_view name) const {
    const std::string tableName = std::string(PhConversion::kTablePrefix).append(name);
    return ViewAccess::viewIfAny<Conversion>(module_->conversions.find(tableName));
}

std::optional<Unit> Module::findUnit(std::string_view name) const {
    return ViewAccess::viewIfAny<Unit>(module_->units.find(name));
}

std::optional<Group> Module::findGroup(std::string_view name) const {
    return ViewAccess::viewIfAny<Group>(module_->functions.find(name));
}

// Project

std::string_view Project::name() const noexcept {
    return project_->name().view();
}

std::string_view Project::longIdentifier() const noexcept {
    return project_->longIdentifier().view();
}

std::int32_t Project::line() const noexcept {
    return project_->line;
}

List<Module> Project::modules() const noexcept {
    return ViewAccess::list<Module>(&project_->documents);
}

}  // namespace quillmark
