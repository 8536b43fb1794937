#pragma once

#include <string>
#include <string_view>

#include "cfginclude/cfg_element.h"
#include "cfginclude/convert_request.h"
#include "cfginclude/include_document.h"
#include "model/module_model.h"
#include "package/staging.h"
#include "platform/console.h"

namespace quillmark {

/// What the surroundings of a run decide about its staging tree.
struct PackageEnvironment {
    std::string tempDirectory;  ///< empty if the system's one does not exist
    std::string stagingName;    ///< local time as "20240307_140509"
};

/// The environment of this process, now.
PackageEnvironment currentPackageEnvironment();

/// Makes one package out of files that are already written, step by step, and says on the console
/// what it is doing.
class cGenerator {
  public:
    cGenerator(PackageEnvironment environment, Console& console);

    /// Stages the user files, their names behind the prefix, and the include file
    /// `request.outputFile`, packs them into `request.zpkiFile` and removes what was staged and the
    /// include file. An include file that is not complete cannot be staged. The first step that
    /// fails ends the work and is reported; staging tree and include file are left then. Returns 0,
    /// or 1 after a failure.
    int generate(const ConvertRequest& request, std::string_view userFilePrefix,
                 IncludeFileState includeFile);

  private:
    int runSteps(const ConvertRequest& request, std::string_view userFilePrefix,
                 IncludeFileState includeFile);
    int stageIncludeFile(const std::string& file, IncludeFileState state);
    void announce(int step);

    PackageEnvironment environment_;
    Console& console_;
    cZpkcCommon staging_;
};

/// What `-epk-file-prefix` puts before the names of user files: the EPK of the first module of the
/// first project, each byte but ASCII letters, digits, "_" and "-" replaced by "_". Empty if there
/// is none.
std::string userFilePrefix(const PhRoot& model);

/// Writes the include file to `request.outputFile` and makes the package that the request asks for.
/// Returns 0 on success and 1 after a failure, which has been reported.
int buildPackage(const ConvertRequest& request, const CfgElement& root, const PhRoot& model,
                 Console& console);

}  // namespace quillmark
