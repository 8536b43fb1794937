#pragma once

#include <string>

#include "cfginclude/convert_request.h"
#include "cfginclude/include_document.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// What `-epk-file-prefix` puts before the names of user files: the EPK of the first module of the
/// first project, each byte but ASCII letters, digits, "_" and "-" replaced by "_". Empty if there
/// is none.
std::string userFilePrefix(const PhRoot& model);

/// Makes the package that the request asks for, of the include file `request.outputFile` that has
/// been opened and written, if not all of it. Returns 0 on success and 1 after a failure, which has
/// been reported.
int buildPackage(const ConvertRequest& request, IncludeFileState includeFile, const PhRoot& model,
                 Console& console);

}  // namespace quillmark
