#pragma once

#include <optional>
#include <string>

#include "quillmark/model.h"

namespace quillmark {

/// An address with its extension, "0x70001a40" or "0x70001a40:1"; nothing for a signal without one.
std::optional<std::string> shownAddress(const Signal& signal);

/// Whether the bytes of two signals are read alike: size, byte order, mask, shift, dimensions.
bool sameType(const Signal& a, const Signal& b);

/// How the bytes of a signal are read, such as "MEASUREMENT[4], unsigned, 16 bits, little".
std::string shownType(const Signal& signal);

}  // namespace quillmark
