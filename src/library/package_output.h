#pragma once

#include <string>

#include "cfginclude/cfg_element.h"
#include "cfginclude/convert_request.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// What `-epk-file-prefix` puts before the names of user files: the EPK of the first module of the
/// first project, each byte but ASCII letters, digits, "_" and "-" replaced by "_". Empty if there
/// is none.
std::string userFilePrefix(const PhRoot& model);

/// Writes the include file to `request.outputFile` and makes the package that the request asks for.
/// Returns 0 on success and 1 after a failure, which has been reported.
int buildPackage(const ConvertRequest& request, const CfgElement& root, const PhRoot& model,
                 Console& console);

}  // namespace quillmark
