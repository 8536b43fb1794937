#pragma once

#include "a2l/reader/block_reader.h"
#include "model/module_model.h"
#include "model/ph_object.h"
#include "model/protocol_model.h"

namespace quillmark {

/// What the blocks of a CCP interface block fill.
struct CcpSettings {
    PhCommParam& commParam;
    PhGroup* module;  ///< nullptr when the interface block is no module's

    PhStationParam& station() const { return *commParam.stationParam; }
};

/// `TP_BLOB`: how the station is reached. Called like every block's parser.
int parseCcpTransport(BlockReader& reader, CcpSettings& settings);

}  // namespace quillmark
