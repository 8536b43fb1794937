#pragma once

#include <string>
#include <vector>

namespace quillmark {

/// What the version file says about a version range given by the user.
struct VersionRestriction {
    std::string check;  ///< a range, as cfginclude/library_versions.h has it
    bool hasWarning = false;
    std::string warning;

    friend bool operator==(const VersionRestriction&, const VersionRestriction&) = default;
};

/// Content of the version file, all texts in UTF-8.
struct VersionInfo {
    std::string topVersion;  ///< the latest version; empty if the file names none
    std::vector<std::string> versions;
    std::vector<VersionRestriction> restrictions;

    friend bool operator==(const VersionInfo&, const VersionInfo&) = default;
};

}  // namespace quillmark
