#pragma once

namespace quillmark {

struct InterfaceBlock;

/// Reads an interface block of CCP (CAN calibration protocol, ASAP1B_CCP). A module's blocks
/// fill its communication parameters "CCP"; in a signal's block `KP_BLOB` tells the signal's
/// address.
int parseCcp(InterfaceBlock& block);

}  // namespace quillmark
