#pragma once

#include "prepare/block_walk.h"
#include "prepare/expansion.h"
#include "prepare/part_writer.h"

namespace quillmark::preparing {

/// What became of the sizes of a measurement.
enum class Sizes : std::uint8_t {
    Kept,     ///< the reader takes them
    Mended,   ///< it does after the edits
    Written,  ///< the measurement has been written or taken out for them
    Refused,  ///< an error was told
};

/// Brings the array of a MEASUREMENT, which has been taken apart, into a form that the reader
/// knows: it knows three sizes.
Sizes mendSizes(BlockWalk& walk, const Part& part, const ExpansionOptions& options,
                PartWriter& writer, Report& report);

}  // namespace quillmark::preparing
