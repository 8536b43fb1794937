#pragma once

#include <string_view>

#include "a2l/reader/block_reader.h"
#include "model/enumerations.h"
#include "model/module_model.h"
#include "model/ph_object.h"
#include "model/protocol_model.h"

namespace quillmark {

/// What the parser of a protocol's interface block is given. It is called after the protocol's name
/// (and, where there is one, its version) has been read, sets its own keyword table, sets the core
/// table back as soon as its block is closed, and returns the kind of the first token after
/// `/end IF_DATA`.
struct InterfaceBlock {
    BlockReader& reader;
    PhObject& owner;  ///< the module, or whatever else holds the block
    PhByteOrder defaultByteOrder;

    /// The module that holds the block; nullptr when something else does.
    PhGroup* module() const;
};

/// The settings of a protocol on the module that holds the block: those of that name, or new ones
/// that begin with the module's default byte order. nullptr for a block that stands elsewhere: its
/// contents are judged alike and kept nowhere.
PhCommParam* obtainCommParam(const InterfaceBlock& block, std::string_view name,
                             PhProtocolType type);

/// A new transport, named after what it runs on and added to `commParam` unless that is nullptr.
PhHandle<PhTransportParam> addTransport(PhCommParam* commParam, std::string_view name,
                                        PhTransportType type);

/// Sets the encoding of a protocol. When it had another one, a verbose reader warns that it changed
/// in `place`, as in "XCP/PROTOCOL_LAYER".
void changeEncoding(BlockReader& reader, PhProtocolParam& protocol, PhByteOrder encoding,
                    std::string_view place);

/// Ends an interface block whose contents ended with a token of that kind, which should be `/end`:
/// sets the core table back and expects IF_DATA. Returns whether all of this was there; what
/// follows is still to be read.
bool closeInterface(BlockReader& reader, int kind);

}  // namespace quillmark
