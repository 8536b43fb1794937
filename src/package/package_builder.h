#pragma once

#include <string>
#include <string_view>

#include "edges/package_order.h"
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

    /// Stages the user files, their names behind the prefix, and the include file, packs them and
    /// removes what was staged and the include file. An include file that is not complete cannot be
    /// staged. The first step that fails ends the work and is reported; staging tree and include
    /// file are left then. Returns 0, or 1 after a failure.
    int generate(const PackageOrder& order);

  private:
    int runSteps(const PackageOrder& order);
    int stageIncludeFile(const PackageOrder& order);
    void announce(int step);

    PackageEnvironment environment_;
    Console& console_;
    cZpkcCommon staging_;
};

/// The same in the environment of this process.
int generatePackage(const PackageOrder& order, Console& console);

}  // namespace quillmark
