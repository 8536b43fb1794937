#pragma once

#include <string>
#include <string_view>

#include "edges/version_info.h"

namespace quillmark {

class Console;

// Which include document the logger library of a chosen version understands.
//
// Texts that name versions:
//   version     "2017.06.1": up to three numbers. A number is the leading digits of its part, so
//               "2017.6rc1" is 2017.6.0; one that does not fit counts as the largest.
//   selection   "sigTrak=2017.06.1;other=1": names with one version each. Blanks and tabs around
//               both are removed; entries without exactly one "=" are ignored; of several entries
//               of one name the first counts.
//   range spec  "sigTrak+2017.10.23-2017.10.99+2018.10.10-": names with sub-ranges, each from a
//               first version up to, but not including, a last one, or without end. Blanks and tabs
//               around versions are removed in a range that the user gives, nowhere else.

/// The library whose versions the include document depends on.
inline constexpr std::string_view kLibraryName = "sigTrak";

/// What the chosen library version understands.
struct LibraryFeatures {
    bool writeJsonSource = false;
    bool writeValueTables = false;
    bool writeShiftAttributes = false;
    bool includeAsciiCharacteristics = false;
};

/// Which parts of two versions are compared.
enum class RangeMode {
    Strict,   ///< all three numbers
    Lenient,  ///< all three with the first bound, two with the others
};

/// Where a version lies; the numbers are those of the rules' own tables.
enum class RangeResult {
    Inside = 0,
    Below = 1,    ///< below the first bound
    Between = 2,  ///< in a gap between two sub-ranges
    Above = 3,    ///< at or above the last bound
    Unknown = 4,  ///< the selection or the range does not name the library
};

enum class SelectionStatus {
    Ok,
    NoVersionFile,  ///< missing or malformed; reported on standard output
    Refused,        ///< reported on standard error
};

struct LibrarySelection {
    SelectionStatus status = SelectionStatus::Ok;
    LibraryFeatures features;
    std::string compatibleVersions;  ///< range spec that the document declares
};

/// Name of the version file, which is looked for in the current directory.
inline constexpr std::string_view kVersionFileName = "sigtrakVersions.xml";

/// Finds where the library version of a selection lies in a range spec.
[[nodiscard]] RangeResult checkRange(std::string_view selection, std::string_view spec,
                                     RangeMode mode);

/// Decides what the library that the user has selected with `libraryText` (empty: none)
/// understands, and reports what it reads and why it refuses.
[[nodiscard]] LibrarySelection selectLibrary(std::string_view libraryText, const VersionInfo& info,
                                             Console& console);

/// The same for the content of a version file. What is no such content counts as no file at all.
[[nodiscard]] LibrarySelection selectLibraryOf(std::string_view libraryText,
                                               std::string_view versions, Console& console);

/// Reads the version file first.
[[nodiscard]] LibrarySelection selectLibrary(std::string_view libraryText,
                                             const std::string& versionFile, Console& console);

}  // namespace quillmark
