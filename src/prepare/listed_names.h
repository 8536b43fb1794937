#pragma once

#include <cstddef>
#include <string_view>

#include "prepare/block_walk.h"
#include "prepare/expansion.h"

namespace quillmark::preparing {

/// In the lists of a block, the names of instances become those of their signals, and what is lost
/// goes out. Returns how many names that changes.
std::size_t editListedNames(BlockWalk& walk, const ModuleSurvey& module,
                            const ExpansionOptions& options);

/// The instance one of whose signals has this name, or nullptr.
const Member* findInstanceOf(std::string_view signal, const ModuleSurvey& module,
                             const ExpansionOptions& options);

}  // namespace quillmark::preparing
