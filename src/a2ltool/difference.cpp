#include "a2ltool/difference.h"

namespace quillmark::a2ltool {

std::span<const DifferenceKindRow> differenceKinds() {
    static constexpr DifferenceKindRow kKinds[] = {
        {DifferenceKind::Incomparable, "incomparable",
         "the acquisition settings can't be compared"},
        {DifferenceKind::Setting, "setting", "an acquisition setting, as `compare` finds it"},
        {DifferenceKind::Name, "name", "the name of the project or module"},
        {DifferenceKind::Removed, "removed", "a signal or module that only the old one has"},
        {DifferenceKind::Added, "added", "a signal or module that only the new one has"},
        {DifferenceKind::Address, "address", "a signal's address or its extension"},
        {DifferenceKind::Type, "type", "how a signal's bytes are read"},
        {DifferenceKind::Conversion, "conversion",
         "which conversion a signal has, or what a conversion does"},
        {DifferenceKind::Unit, "unit", "a signal's unit"},
    };
    return kKinds;
}

}  // namespace quillmark::a2ltool
