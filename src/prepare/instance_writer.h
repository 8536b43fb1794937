#pragma once

#include "prepare/block_walk.h"
#include "prepare/expansion.h"
#include "prepare/part_writer.h"

namespace quillmark::preparing {

/// Writes the signals that an INSTANCE becomes, whose block has been taken apart, in its place.
void writeInstance(BlockWalk& walk, const Part& part, const Member& instance,
                   const ModuleSurvey& module, const ExpansionOptions& options, PartWriter& writer,
                   Report& report);

/// The same for a BLOB, if that may become an array.
void writeBlob(BlockWalk& walk, const Part& part, const ExpansionOptions& options,
               PartWriter& writer, Report& report);

}  // namespace quillmark::preparing
