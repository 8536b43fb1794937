#include "a2ltool/difference_kinds.h"

namespace quillmark::a2ltool {

std::span<const DifferenceKindRow> differenceKinds() {
    static constexpr DifferenceKindRow kKinds[] = {
        {DiffKind::Incomparable, "the acquisition settings can't be compared"},
        {DiffKind::Setting, "an acquisition setting, as `compare` finds it"},
        {DiffKind::Name, "the name of the project or module"},
        {DiffKind::Removed, "a signal or module that only the old one has"},
        {DiffKind::Added, "a signal or module that only the new one has"},
        {DiffKind::Address, "a signal's address or its extension"},
        {DiffKind::Type, "how a signal's bytes are read"},
        {DiffKind::Conversion, "which conversion a signal has, or what a conversion does"},
        {DiffKind::Unit, "a signal's unit"},
    };
    return kKinds;
}

}  // namespace quillmark::a2ltool
