#include "cfginclude/library_versions.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <system_error>
#include <tuple>
#include <vector>

#include "cfginclude/version_file.h"
#include "platform/console.h"
#include "platform/input_file.h"
#include "platform/text.h"

namespace quillmark {

namespace {

struct Version {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t patch = 0;
};

bool operator<(const Version& left, const Version& right) {
    return std::tie(left.major, left.minor, left.patch) <
           std::tie(right.major, right.minor, right.patch);
}

enum class BoundKind { Start, End };

struct Bound {
    Version version;
    BoundKind kind;
};

using Bounds = std::vector<Bound>;

/// One generation of the library: versions that understand the same. A range that ends in "-"
/// goes on to the top version.
struct Generation {
    std::string_view versions;
    RangeMode mode;
    LibraryFeatures features;
    std::string_view shiftVersions;  // those that also understand shift attributes
    std::string_view declared;       // what the document declares, and where user ranges may lie
    std::string_view lastVersions;   // the last versions that a user range may have; empty for a
                                     // generation that another one declares as well
};

constexpr Generation kGenerations[] = {
    {"sigTrak+1.4.4-1.5.5", RangeMode::Strict, {}, "", "sigTrak+1.4.4-1.5.5", "1.4.4 - 1.5.4"},
    {"sigTrak+1.5.5-2017.06.0",
     RangeMode::Lenient,
     {.writeJsonSource = true},
     "",
     "sigTrak+1.5.5-2017.06.0",
     "1.5.5 - 2017.06.0"},
    {"sigTrak+2017.06.0-2021.10.0",
     RangeMode::Lenient,
     {.writeJsonSource = true, .writeValueTables = true},
     "sigTrak+2017.10.23-2017.10.99+2018.10.10-2018.10.99+2019.02.6-2019.02.99"
     "+2019.06.2-2021.10.0",
     "sigTrak+2017.06.0-",
     "2017.06.0 - "},
    {"sigTrak+2021.10.0-",
     RangeMode::Lenient,
     {.writeJsonSource = true,
      .writeValueTables = true,
      .writeShiftAttributes = true,
      .includeAsciiCharacteristics = true},
     "",
     "sigTrak+2021.10.0-",
     ""},
};

constexpr const Generation& kOldestGeneration = kGenerations[0];
constexpr const Generation& kNewestGeneration = kGenerations[std::size(kGenerations) - 1];

/// Takes the text up to the next separator off the front of `rest`; everything if there is none.
std::string_view takePart(std::string_view& rest, char separator) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::uint32_t leadingNumber(std::string_view text) {
    std::uint32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint32_t>::max()
                                                       : number;
}

Version parseVersion(std::string_view text) {
    Version version;
    version.major = leadingNumber(takePart(text, '.'));
    version.minor = leadingNumber(takePart(text, '.'));
    version.patch = leadingNumber(takePart(text, '.'));
    return version;
}

/// A version of the command line, where blanks and tabs may stand around it.
Version parseGivenVersion(std::string_view text) {
    return parseVersion(trimmed(text));
}

/// The version that a selection names for the library.
std::optional<Version> selectedVersion(std::string_view selection) {
    while (!selection.empty()) {
        std::string_view version = takePart(selection, ';');
        if (std::count(version.begin(), version.end(), '=') != 1) {
            continue;
        }
        const std::string_view name = takePart(version, '=');
        if (trimmed(name) == kLibraryName) {
            return parseGivenVersion(version);
        }
    }
    return std::nullopt;
}

/// The bounds that a range names for the library.
std::optional<Bounds> specBounds(std::string_view spec) {
    while (!spec.empty()) {
        std::string_view parts = takePart(spec, ';');
        auto partsLeft = std::count(parts.begin(), parts.end(), '+');
        if (takePart(parts, '+') != kLibraryName) {
            continue;
        }
        Bounds bounds;
        for (; partsLeft > 0; --partsLeft) {
            std::string_view last = takePart(parts, '+');
            bounds.push_back({parseVersion(takePart(last, '-')), BoundKind::Start});
            if (!last.empty()) {
                bounds.push_back({parseVersion(last), BoundKind::End});
            }
        }
        return bounds;
    }
    return std::nullopt;
}

bool isBelow(const Version& version, const Bounds& bounds, std::size_t bound, RangeMode mode) {
    const Version& limit = bounds[bound].version;
    if (mode == RangeMode::Strict || bound == 0) {
        return version < limit;
    }
    return version.major != limit.major ? version.major < limit.major : version.minor < limit.minor;
}

RangeResult checkVersion(const std::optional<Version>& version, std::string_view spec,
                         RangeMode mode) {
    const std::optional<Bounds> found = specBounds(spec);
    if (!version || !found) {
        return RangeResult::Unknown;
    }
    const Bounds& bounds = *found;
    if (bounds.empty()) {
        return RangeResult::Inside;
    }
    if (isBelow(*version, bounds, 0, mode) && bounds.front().kind == BoundKind::Start) {
        return RangeResult::Below;
    }
    if (!isBelow(*version, bounds, bounds.size() - 1, mode) &&
        bounds.back().kind == BoundKind::End) {
        return RangeResult::Above;
    }
    for (std::size_t i = 1; i < bounds.size(); ++i) {
        if (isBelow(*version, bounds, i, mode)) {
            return bounds[i - 1].kind == BoundKind::End ? RangeResult::Between
                                                        : RangeResult::Inside;
        }
    }
    return RangeResult::Inside;
}

/// The range that a user has given: "sigTrak+1.4.4-1.5.5" is the selection "sigTrak=1.4.4" with the
/// last version "1.5.5".
struct UserRange {
    std::string first;
    std::string last;
};

UserRange splitUserRange(std::string_view libraryText) {
    UserRange range{std::string(libraryText), {}};
    range.first[range.first.find('+')] = '=';
    const std::size_t hyphen = range.first.find('-');
    if (hyphen != std::string::npos) {
        range.last = range.first.substr(hyphen + 1);
        range.first.resize(hyphen);
    }
    return range;
}

/// What is left of a selection once the reason has been reported.
LibrarySelection refusal() {
    return {SelectionStatus::Refused, {}, {}};
}

/// Carries what the steps of one selection share.
class Selector {
  public:
    Selector(std::string_view libraryText, const VersionInfo& info, Console& console)
        : libraryText_(libraryText), info_(info), console_(console) {}

    LibrarySelection select();

  private:
    LibrarySelection refuse(std::string_view message);
    bool isUserRangeValid(const UserRange& range);
    void warnOfRestrictions(const Version& last, const std::optional<Version>& first);
    const Generation* chooseGeneration(std::string_view selection);
    std::string toTop(std::string_view text) const;

    std::string_view libraryText_;
    const VersionInfo& info_;
    Console& console_;
};

/// A text that is left open ("2017.06.0-") with the top version behind it; any other as it stands.
std::string Selector::toTop(std::string_view text) const {
    return joined({text, trimmed(text).ends_with('-') ? info_.topVersion : std::string()});
}

LibrarySelection Selector::refuse(std::string_view message) {
    console_.printError(message);
    return refusal();
}

LibrarySelection Selector::select() {
    if (!info_.topVersion.empty()) {
        console_.printLine("Latest sigTrak version: " + info_.topVersion);
    }
    if (libraryText_.empty()) {
        return {SelectionStatus::Ok, kOldestGeneration.features, toTop(kOldestGeneration.declared)};
    }
    if (contains(libraryText_, "sigTrak=") && contains(libraryText_, "-")) {
        return refuse("Two library versions detected. Please use sigTrak+ instead of sigTrak=");
    }

    LibrarySelection result;
    std::string selection(libraryText_);
    if (contains(libraryText_, "sigTrak+")) {
        const UserRange range = splitUserRange(libraryText_);
        if (!isUserRangeValid(range)) {
            return refusal();
        }
        result.compatibleVersions = libraryText_;
        selection = range.first;
    }

    console_.printLine("libraryVersion: " + selection);
    if (!selection.starts_with(kLibraryName)) {
        console_.printLine(
            "Warning: The version string should be formatted the following way: -l "
            "sigTrak=2017.02.01");
        selection.insert(0, "sigTrak=");
    }

    const Generation* const generation = chooseGeneration(selection);
    if (generation == nullptr) {
        return refusal();
    }
    if (!selectedVersion(selection)) {
        return refuse("Library software name not recognized (2).");
    }
    result.features = generation->features;
    if (checkRange(selection, generation->shiftVersions, RangeMode::Strict) ==
        RangeResult::Inside) {
        result.features.writeShiftAttributes = true;
    }
    if (result.compatibleVersions.empty()) {
        result.compatibleVersions = toTop(generation->declared);
    }
    return result;
}

/// The generation that the selected version belongs to; nullptr after reporting why it is refused.
const Generation* Selector::chooseGeneration(std::string_view selection) {
    RangeResult result = checkRange(selection, kOldestGeneration.versions, kOldestGeneration.mode);
    if (result == RangeResult::Unknown) {
        console_.printError("Library software name not recognized.");
        return nullptr;
    }
    if (result == RangeResult::Below || result == RangeResult::Between) {
        console_.printError("Library version not supported. Only supporting sigTrak+1.4.4!");
        return nullptr;
    }
    for (const Generation& generation : kGenerations) {
        result = checkRange(selection, toTop(generation.versions), generation.mode);
        if (result == RangeResult::Inside) {
            return &generation;
        }
    }
    if (result != RangeResult::Above) {
        return &kOldestGeneration;  // a top version can hold a gap, of which nothing is known
    }
    if (contains(selection, info_.topVersion)) {
        return &kNewestGeneration;
    }
    console_.printError("Library version not supported yet. Only supporting until: " +
                        info_.topVersion);
    console_.printError(joined({"Selected library version: ", libraryText_}));
    return nullptr;
}

/// Judges a range given by the user, all comparisons being strict.
bool Selector::isUserRangeValid(const UserRange& range) {
    const std::optional<Version> first = selectedVersion(range.first);
    const Version last = parseGivenVersion(range.last);
    warnOfRestrictions(last, first);
    for (const Generation& generation : kGenerations) {
        const std::string declared = toTop(generation.declared);
        if (generation.lastVersions.empty() ||
            checkVersion(first, declared, RangeMode::Strict) != RangeResult::Inside) {
            continue;
        }
        if (checkVersion(last, declared, RangeMode::Strict) == RangeResult::Inside) {
            return true;
        }
        console_.printError("Invalid second library version. Please select between " +
                            toTop(generation.lastVersions));
        return false;
    }
    console_.printError("Invalid first libary version. Please select between 1.4.4 - " +
                        info_.topVersion);
    return false;
}

/// Reports each restriction whose range the user's range leaves or enters. That refuses nothing.
void Selector::warnOfRestrictions(const Version& last, const std::optional<Version>& first) {
    for (const VersionRestriction& restriction : info_.restrictions) {
        const RangeResult f = checkVersion(first, restriction.check, RangeMode::Strict);
        const RangeResult s = checkVersion(last, restriction.check, RangeMode::Strict);
        const bool leaves = f == RangeResult::Inside && s == RangeResult::Above;
        const bool enters =
            f == RangeResult::Below && (s == RangeResult::Inside || s == RangeResult::Above);
        if (!leaves && !enters) {
            continue;
        }
        console_.printCaution("Invalid second library version. Please select between " +
                              restriction.check);
        if (restriction.hasWarning) {
            console_.printCaution(restriction.warning);
        }
    }
}

LibrarySelection noVersionFile(Console& console) {
    console.printLine("Error: Configuration file not found!");
    return {SelectionStatus::NoVersionFile, {}, {}};
}

}  // namespace

RangeResult checkRange(std::string_view selection, std::string_view spec, RangeMode mode) {
    return checkVersion(selectedVersion(selection), spec, mode);
}

LibrarySelection selectLibrary(std::string_view libraryText, const VersionInfo& info,
                               Console& console) {
    return Selector(libraryText, info, console).select();
}

LibrarySelection selectLibraryOf(std::string_view libraryText, std::string_view versions,
                                 Console& console) {
    VersionInfo info;
    if (!parseVersionFile(versions, info, console)) {
        return noVersionFile(console);
    }
    return selectLibrary(libraryText, info, console);
}

LibrarySelection selectLibrary(std::string_view libraryText, const std::string& versionFile,
                               Console& console) {
    std::string versions;
    return readWholeFile(versionFile, versions) ? selectLibraryOf(libraryText, versions, console)
                                                : noVersionFile(console);
}

}  // namespace quillmark
