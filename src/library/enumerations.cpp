#include "quillmark/enumerations.h"

#include <array>

#include "library/text_at.h"
#include "model/enumerations.h"
#include "model/signal_model.h"

namespace quillmark {
namespace {

// The views take these codes from the model as they are.
template <typename Public, typename Own>
constexpr bool isSame(Public theirs, Own own) {
    return static_cast<int>(theirs) == static_cast<int>(own);
}
static_assert(isSame(SignalKind::Cube5, PhSignalKind::Cube5));
static_assert(isSame(ByteOrder::LittleEndian, PhByteOrder::LittleEndian));
static_assert(isSame(BitOperation::RightShift, PhBitOperation::RightShift));
static_assert(isSame(ArrayLayout::ColumnDirection, PhLayout::ColumnDirection));
static_assert(isSame(ProtocolKind::Gmlan, PhProtocolType::Gmlan));
static_assert(isSame(MemoryKind::Register, PhMemoryType::Register));
static_assert(isSame(MemoryUse::Parameters, PhSegmentUse::Parameters));
static_assert(isSame(EventUse::Consistency, PhSignalEvent::Use::Consistency));

}  // namespace

std::string_view textOf(SignalKind kind) noexcept {
    static constexpr std::array<std::string_view, 10> kTexts = {
        "",       "MEASUREMENT", "VALUE", "CURVE",  "MAP",
        "CUBOID", "VAL_BLK",     "ASCII", "CUBE_4", "CUBE_5"};
    return textAt(kTexts, kind);
}

std::string_view textOf(ByteOrder order) noexcept {
    static constexpr std::array<std::string_view, 3> kTexts = {"", "big", "little"};
    return textAt(kTexts, order);
}

std::string_view textOf(BaseType type) noexcept {
    static constexpr std::array<std::string_view, 6> kTexts = {"",        "integer", "unsigned",
                                                               "float32", "float64", "ascii"};
    return textAt(kTexts, type);
}

std::string_view textOf(BitOperation operation) noexcept {
    static constexpr std::array<std::string_view, 3> kTexts = {"", "left", "right"};
    return textAt(kTexts, operation);
}

std::string_view textOf(ArrayLayout layout) noexcept {
    static constexpr std::array<std::string_view, 3> kTexts = {"", "ROW_DIR", "COLUMN_DIR"};
    return textAt(kTexts, layout);
}

std::string_view textOf(ConversionKind kind) noexcept {
    static constexpr std::array<std::string_view, 7> kTexts = {
        "", "IDENTICAL", "RAT_FUNC", "LINEAR", "TAB_NOINTP", "FORM", "TAB_INTP"};
    return textAt(kTexts, kind);
}

std::string_view textOf(ProtocolKind kind) noexcept {
    static constexpr std::array<std::string_view, 5> kTexts = {"", "KWP", "CCP", "XCP", "GMLAN"};
    return textAt(kTexts, kind);
}

std::string_view textOf(TransportKind kind) noexcept {
    static constexpr std::array<std::string_view, 5> kTexts = {"", "CAN", "UDP", "TCP", "FLEXRAY"};
    return textAt(kTexts, kind);
}

std::string_view textOf(MemoryKind kind) noexcept {
    static constexpr std::array<std::string_view, 7> kTexts = {
        "", "RAM", "ROM", "EPROM", "EEPROM", "FLASH", "REGISTER"};
    return textAt(kTexts, kind);
}

std::string_view textOf(MemoryUse use) noexcept {
    static constexpr std::array<std::string_view, 6> kTexts = {
        "", "RESERVED", "CODE", "VARIABLES", "DATA", "CALIBRATION_VARIABLES"};
    return textAt(kTexts, use);
}

std::string_view textOf(EventUse use) noexcept {
    static constexpr std::array<std::string_view, 4> kTexts = {"fixed", "available", "default",
                                                               "consistency"};
    return textAt(kTexts, use);
}

}  // namespace quillmark
