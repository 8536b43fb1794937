#pragma once

#include <string>
#include <vector>

namespace quillmark {

/// What goes into a package. Names are bytes, see platform/file_name.h.
struct PackageOrder {
    std::string packageFile;  ///< to be written
    std::string includeFile;  ///< is written already
    /// Whether all of the include file could be written. A logger would take what is missing in it
    /// for what was never asked for.
    bool includeFileIsComplete = true;
    std::vector<std::string> userFiles;
    std::string userFilePrefix;  ///< put before their names in the package
};

}  // namespace quillmark
