#pragma once

#include <cstdint>
#include <optional>

#include "model/ph_object.h"
#include "model/protocol_model.h"

namespace quillmark {

class BlockReader;

/// A unit of time of XCP as the model keeps it.
struct XcpTimeUnit {
    std::int32_t code;    ///< 1 s, 2 ms, 3 us, 4 ns, 5 ps
    std::int32_t factor;  ///< 1, 10 or 100 of these make one of the described unit
};

/// The unit behind one of the codes 0 to 12 that event cycles use; nothing for another number.
std::optional<XcpTimeUnit> xcpTimeUnitOfCode(std::int32_t code);

/// The unit behind the last token, a word like UNIT_10MS; nothing for any other token.
std::optional<XcpTimeUnit> xcpTimeUnitOfWord(const BlockReader& reader, int kind);

/// Makes a time base of `ticks` described units. The product keeps its low 32 bits.
PhHandle<PhTimebase> makeTimebase(std::int32_t ticks, XcpTimeUnit unit);

/// Reads a count and the code of its unit. Both are read before they are judged: when either is no
/// number the error is "Could not read TIME_CYCLE or TIME_UNIT", for an unknown code "Could not
/// convert TIME_UNIT"; the handle is then empty.
PhHandle<PhTimebase> readTimeCycle(BlockReader& reader);

}  // namespace quillmark
