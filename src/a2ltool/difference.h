#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillmark::a2ltool {

/// In what descriptions differ. The order is that of the table of kinds.
enum class DifferenceKind : std::uint8_t {
    Incomparable,
    Setting,
    Name,
    Removed,
    Added,
    Address,
    Type,
    Conversion,
    Unit,
};

/// A kind's word, in the output and behind --ignore, and what it means.
struct DifferenceKindRow {
    DifferenceKind kind;
    const char* word;
    const char* help;
};

/// All kinds, in the order of the enumeration.
std::span<const DifferenceKindRow> differenceKinds();

/// One difference. What it looks at is valid only while it is told.
struct ModelDifference {
    DifferenceKind kind;
    std::string_view of;  ///< what differs: "signal", "conversion", "table", "module", "setting"
    std::string_view module;  ///< the old description's, or the new one's of what was added
    std::string_view name;    ///< empty where `text` tells all
    std::optional<std::string> oldValue = {};  ///< nothing where there is none
    std::optional<std::string> newValue = {};
    std::string_view text = {};  ///< a sentence; empty where kind and name tell all
};

/// Is told each difference at once.
using DifferenceHandler = std::function<void(const ModelDifference& difference)>;

}  // namespace quillmark::a2ltool
