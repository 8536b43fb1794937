#pragma once

#include <cstdint>
#include <string_view>

#include "cfginclude/cfg_element.h"
#include "cfginclude/library_versions.h"
#include "model/enumerations.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// What all modules of one run are written with.
struct ModuleOutputSettings {
    std::string_view inputFile;    ///< as given by the user
    std::string_view stationName;  ///< empty: made from project, module and number
    std::string_view namePrefix;
    bool compress = false;
    LibraryFeatures features;
};

/// Which group of stations a module belongs to: that of its last communication parameters.
/// Undefined for a module that the logger cannot reach over CCP or XCP; it is not written.
PhProtocolType stationProtocol(const PhGroup& module);

/// Adds the station element of a module to `parent`: who it is, which program version it was made
/// for, where the description came from, and its conversions and signals, as elements that are made
/// from the model while they are written, or packed into a blob.
///
/// `number` counts the modules of the run from 1. A module without version or without the address
/// of it is reported on the console and still written; the result is false then. The model and what
/// `settings` views have to outlive the document.
bool writeModule(CfgElement& parent, const PhGroup& project, const PhGroup& module,
                 std::int32_t number, const ModuleOutputSettings& settings, Console& console);

}  // namespace quillmark
