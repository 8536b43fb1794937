#pragma once

#include "a2l/reader/block_reader.h"
#include "model/enumerations.h"
#include "model/ph_object.h"

namespace quillmark {

/// Reads an IF_DATA block, whose keyword has just been read, with the parser of the protocol that
/// it names, or reads over it when no parser knows the protocol. `owner` is what holds the block,
/// `defaultByteOrder` that of its module. Returns the kind of the first token after `/end IF_DATA`.
int readIfData(BlockReader& reader, PhObject& owner, PhByteOrder defaultByteOrder);

}  // namespace quillmark
