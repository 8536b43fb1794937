#pragma once

#include "a2l/block_reader.h"
#include "model/module_model.h"

namespace quillmark {

/// What the parser of a protocol's interface block is given. It is called after the protocol's name
/// (and, where there is one, its version) has been read, sets its own keyword table, sets the core
/// table back as soon as its block is closed, and returns the kind of the first token after
/// `/end IF_DATA`.
struct InterfaceBlock {
    BlockReader& reader;
    PhObject& owner;  ///< the module, or whatever else holds the block
    PhByteOrder defaultByteOrder;
};

}  // namespace quillmark
