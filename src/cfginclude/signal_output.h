#pragma once

#include <string_view>

#include "cfginclude/cfg_children.h"
#include "cfginclude/compu_method_output.h"
#include "cfginclude/library_versions.h"
#include "model/signal_model.h"

namespace quillmark {

/// Whether the logger records signals of this kind: measurements and single values, and texts where
/// the library knows them.
bool isWrittenSignal(const PhEntity& signal, const LibraryFeatures& features);

/// The unit that the `signal` element of a signal tells; empty for none.
std::string_view writtenUnit(const PhEntity& signal);

/// Adds the `signal` element that tells the logger name, unit, conversion, address, size, sign, bit
/// mask, shift and byte order of a value, or one element for each element of an array. Full names
/// are `namePrefix` followed directly by the model's name.
void writeSignal(CfgChildren& parent, const PhEntity& signal, std::string_view namePrefix,
                 const LibraryFeatures& features,
                 const IdentityFallbackNames& identityFallbackNames);

}  // namespace quillmark
