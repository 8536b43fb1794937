#pragma once

namespace quillmark {

struct InterfaceBlock;

/// Reads an interface block of GMLAN (ASAP1B_GMLAN: diagnostic services on CAN with periodic
/// identifiers). A module's blocks fill its communication parameters "GMLAN".
int parseGmlan(InterfaceBlock& block);

}  // namespace quillmark
