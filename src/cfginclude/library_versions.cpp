#include "cfginclude/library_versions.h"

#include <QString>
#include <QStringList>
#include <QXmlStreamReader>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <system_error>
#include <tuple>

#include "platform/console.h"
#include "platform/input_file.h"

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

enum class BoundKind { kStart, kEnd };

struct Bound {
    Version version;
    BoundKind kind;
};

using Bounds = std::vector<Bound>;

constexpr std::string_view kFirstRange = "sigTrak+1.4.4-1.5.5";
constexpr std::string_view kSecondRange = "sigTrak+1.5.5-2017.06.0";
constexpr std::string_view kThirdRange = "sigTrak+2017.06.0-2021.10.0";
constexpr std::string_view kShiftRanges =
    "sigTrak+2017.10.23-2017.10.99+2018.10.10-2018.10.99+2019.02.6-2019.02.99+2019.06.2-2021.10.0";
constexpr std::string_view kThirdRangeToTop = "sigTrak+2017.06.0-";
constexpr std::string_view kNewestRangeToTop = "sigTrak+2021.10.0-";

// Takes the text up to the next separator off the front of `rest`; everything if there is none.
std::string_view takePart(std::string_view& rest, char separator) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string join(std::string_view first, std::string_view second) {
    std::string text(first);
    text += second;
    return text;
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

// A version of the command line, where blanks and tabs may stand around it.
Version parseGivenVersion(std::string_view text) {
    return parseVersion(trimmed(text));
}

// The version that a selection names for the library.
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

// The bounds that a range spec names for the library.
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
            bounds.push_back({parseVersion(takePart(last, '-')), BoundKind::kStart});
            if (!last.empty()) {
                bounds.push_back({parseVersion(last), BoundKind::kEnd});
            }
        }
        return bounds;
    }
    return std::nullopt;
}

bool isBelow(const Version& version, const Bounds& bounds, std::size_t bound, RangeMode mode) {
    const Version& limit = bounds[bound].version;
    if (mode == RangeMode::kStrict || bound == 0) {
        return version < limit;
    }
    return version.major != limit.major ? version.major < limit.major : version.minor < limit.minor;
}

RangeResult checkVersion(const std::optional<Version>& version, std::string_view spec,
                         RangeMode mode) {
    const std::optional<Bounds> found = specBounds(spec);
    if (!version || !found) {
        return RangeResult::kUnknown;
    }
    const Bounds& bounds = *found;
    if (bounds.empty()) {
        return RangeResult::kInside;
    }
    if (isBelow(*version, bounds, 0, mode) && bounds.front().kind == BoundKind::kStart) {
        return RangeResult::kBelow;
    }
    if (!isBelow(*version, bounds, bounds.size() - 1, mode) &&
        bounds.back().kind == BoundKind::kEnd) {
        return RangeResult::kAbove;
    }
    for (std::size_t i = 1; i < bounds.size(); ++i) {
        if (isBelow(*version, bounds, i, mode)) {
            return bounds[i - 1].kind == BoundKind::kEnd ? RangeResult::kBetween
                                                         : RangeResult::kInside;
        }
    }
    return RangeResult::kInside;
}

std::string utf8(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

// The text of the element just started, with that of elements inside; ends at its end tag. Qt's own
// way of reading it recurses, and a damaged file can nest more deeply than the stack goes.
QString elementText(QXmlStreamReader& xml) {
    QString text;
    int depth = 1;
    while (depth > 0 && !xml.atEnd()) {
        switch (xml.readNext()) {
            case QXmlStreamReader::StartElement:
                ++depth;
                break;
            case QXmlStreamReader::EndElement:
                --depth;
                break;
            case QXmlStreamReader::Characters:
            case QXmlStreamReader::EntityReference:
                text += xml.text();
                break;
            default:
                break;
        }
    }
    return text;
}

QString foldedText(QXmlStreamReader& xml) {
    return elementText(xml).simplified();
}

bool readToNextStart(QXmlStreamReader& xml) {
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement) {
            return true;
        }
    }
    return false;
}

VersionRestriction readRestriction(QXmlStreamReader& xml, const QString& topVersion) {
    VersionRestriction restriction;
    // The elements inside the restriction that are open.
    int depth = 0;
    while (!xml.atEnd() && depth >= 0) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            if (xml.name() == u"Check") {
                restriction.check =
                    utf8(foldedText(xml).replace(QStringLiteral("$TopVersion$"), topVersion));
            } else if (xml.name() == u"MessageWarning") {
                restriction.hasWarning = true;
                restriction.warning = utf8(foldedText(xml));
            } else {
                ++depth;
            }
        }
    }
    return restriction;
}

// The three elements stand in this order, each the next to start after the one before; whatever
// else starts there takes its place.
void readVersionElements(QXmlStreamReader& xml, VersionInfo& info) {
    while (readToNextStart(xml) && xml.name() != u"TopVersion") {
    }
    if (xml.atEnd()) {
        return;
    }
    const QString topVersion = elementText(xml);
    info.topVersion = utf8(topVersion);

    if (readToNextStart(xml) && xml.name() == u"VersionList") {
        for (const QString& version : foldedText(xml).split(u' ', Qt::SkipEmptyParts)) {
            info.versions.push_back(utf8(version));
        }
    }
    if (readToNextStart(xml) && xml.name() == u"Restrictions") {
        while (xml.readNextStartElement()) {
            if (xml.name() == u"VersionRestriction") {
                info.restrictions.push_back(readRestriction(xml, topVersion));
            } else {
                xml.skipCurrentElement();
            }
        }
    }
}

// The range that a user has given: "sigTrak+1.4.4-1.5.5" is the selection "sigTrak=1.4.4" with the
// last version "1.5.5".
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

// Carries what the steps of one selection share.
class Selector {
  public:
    Selector(std::string_view libraryText, const VersionInfo& info, Console& console)
        : libraryText_(libraryText),
          info_(info),
          console_(console),
          toTop_(join(kThirdRangeToTop, info.topVersion)),
          newestToTop_(join(kNewestRangeToTop, info.topVersion)) {}

    LibrarySelection select();

  private:
    LibrarySelection refuse(std::string_view message);
    bool isUserRangeValid(const UserRange& range);
    void warnOfRestrictions(const Version& last, const std::optional<Version>& first);
    std::optional<LibrarySelection> chooseFeatures(std::string_view selection,
                                                   LibraryFeatures& features);
    std::optional<LibrarySelection> chooseNewFeatures(std::string_view selection,
                                                      LibraryFeatures& features);
    std::string compatibleVersions(const LibraryFeatures& features) const;

    std::string_view libraryText_;
    const VersionInfo& info_;
    Console& console_;
    std::string toTop_;
    std::string newestToTop_;
};

LibrarySelection Selector::refuse(std::string_view message) {
    console_.printError(message);
    return {SelectionStatus::kRefused, {}, {}};
}

LibrarySelection Selector::select() {
    if (!info_.topVersion.empty()) {
        console_.printLine("Latest sigTrak version: " + info_.topVersion);
    }
    if (libraryText_.empty()) {
        return {SelectionStatus::kOk, {}, std::string(kFirstRange)};
    }
    if (contains(libraryText_, "sigTrak=") && contains(libraryText_, "-")) {
        return refuse("Two library versions detected. Please use sigTrak+ instead of sigTrak=");
    }

    LibrarySelection result;
    std::string selection(libraryText_);
    if (contains(libraryText_, "sigTrak+")) {
        const UserRange range = splitUserRange(libraryText_);
        if (!isUserRangeValid(range)) {
            result.status = SelectionStatus::kRefused;
            return result;
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

    if (const auto refused = chooseFeatures(selection, result.features)) {
        return *refused;
    }
    if (!selectedVersion(selection)) {
        return refuse("Library software name not recognized (2).");
    }
    if (result.compatibleVersions.empty()) {
        result.compatibleVersions = compatibleVersions(result.features);
    }
    return result;
}

// Returns the refusal if there is one.
std::optional<LibrarySelection> Selector::chooseFeatures(std::string_view selection,
                                                         LibraryFeatures& features) {
    switch (checkRange(selection, kFirstRange, RangeMode::kStrict)) {
        case RangeResult::kInside:
            return std::nullopt;
        case RangeResult::kBelow:
        case RangeResult::kBetween:
            return refuse("Library version not supported. Only supporting sigTrak+1.4.4!");
        case RangeResult::kAbove:
            return chooseNewFeatures(selection, features);
        case RangeResult::kUnknown:
            break;
    }
    return refuse("Library software name not recognized.");
}

// The features of the versions from 1.5.5 on.
std::optional<LibrarySelection> Selector::chooseNewFeatures(std::string_view selection,
                                                            LibraryFeatures& features) {
    const auto liesIn = [selection](std::string_view spec, RangeMode mode) {
        return checkRange(selection, spec, mode) == RangeResult::kInside;
    };
    if (liesIn(kSecondRange, RangeMode::kLenient)) {
        features.writeJsonSource = true;
        return std::nullopt;
    }
    if (liesIn(kThirdRange, RangeMode::kLenient)) {
        features.writeJsonSource = true;
        features.writeValueTables = true;
        features.writeShiftAttributes = liesIn(kShiftRanges, RangeMode::kStrict);
        return std::nullopt;
    }
    const RangeResult newest = checkRange(selection, newestToTop_, RangeMode::kLenient);
    const bool isTop = newest == RangeResult::kAbove && contains(selection, info_.topVersion);
    if (newest == RangeResult::kInside || isTop) {
        features = {true, true, true, true};
        return std::nullopt;
    }
    if (newest == RangeResult::kAbove) {
        console_.printError("Library version not supported yet. Only supporting until: " +
                            info_.topVersion);
        return refuse(join("Selected library version: ", libraryText_));
    }
    return std::nullopt;
}

std::string Selector::compatibleVersions(const LibraryFeatures& features) const {
    if (!features.writeJsonSource) {
        return std::string(kFirstRange);
    }
    if (features.includeAsciiCharacteristics) {
        return newestToTop_;
    }
    return features.writeValueTables ? toTop_ : std::string(kSecondRange);
}

// Judges a range given by the user, all comparisons being strict.
bool Selector::isUserRangeValid(const UserRange& range) {
    const std::string& top = info_.topVersion;
    struct Row {
        std::string_view spec;
        std::string lastVersionMessage;
    };
    const std::array<Row, 3> rows = {
        Row{kFirstRange, "Invalid second library version. Please select between 1.4.4 - 1.5.4"},
        Row{kSecondRange,
            "Invalid second library version. Please select between 1.5.5 - 2017.06.0"},
        Row{toTop_, "Invalid second library version. Please select between 2017.06.0 - " + top},
    };

    const std::optional<Version> first = selectedVersion(range.first);
    const Version last = parseGivenVersion(range.last);
    warnOfRestrictions(last, first);
    for (const Row& row : rows) {
        if (checkVersion(first, row.spec, RangeMode::kStrict) != RangeResult::kInside) {
            continue;
        }
        if (checkVersion(last, row.spec, RangeMode::kStrict) == RangeResult::kInside) {
            return true;
        }
        console_.printError(row.lastVersionMessage);
        return false;
    }
    console_.printError("Invalid first libary version. Please select between 1.4.4 - " + top);
    return false;
}

// Reports each restriction whose range the user's range leaves or enters. That refuses nothing.
void Selector::warnOfRestrictions(const Version& last, const std::optional<Version>& first) {
    for (const VersionRestriction& restriction : info_.restrictions) {
        const RangeResult f = checkVersion(first, restriction.check, RangeMode::kStrict);
        const RangeResult s = checkVersion(last, restriction.check, RangeMode::kStrict);
        const bool leaves = f == RangeResult::kInside && s == RangeResult::kAbove;
        const bool enters =
            f == RangeResult::kBelow && (s == RangeResult::kInside || s == RangeResult::kAbove);
        if (!leaves && !enters) {
            continue;
        }
        console_.printError("Invalid second library version. Please select between " +
                            restriction.check);
        if (restriction.hasWarning) {
            console_.printError(restriction.warning);
        }
    }
}

}  // namespace

bool readVersionFile(const std::string& name, VersionInfo& info) {
    std::string bytes;
    return readWholeFile(name, bytes) && parseVersionFile(bytes, info);
}

bool parseVersionFile(std::string_view bytes, VersionInfo& info) {
    info = {};
    // cppcheck-suppress invalidLifetime ; the reader gets a copy of the bytes
    QXmlStreamReader xml(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())));
    readVersionElements(xml, info);
    // What follows means nothing to us, but a damaged file is not to be trusted.
    while (!xml.atEnd()) {
        xml.readNext();
    }
    return !xml.hasError();
}

RangeResult checkRange(std::string_view selection, std::string_view spec, RangeMode mode) {
    return checkVersion(selectedVersion(selection), spec, mode);
}

LibrarySelection selectLibrary(std::string_view libraryText, const VersionInfo& info,
                               Console& console) {
    return Selector(libraryText, info, console).select();
}

LibrarySelection selectLibrary(std::string_view libraryText, const std::string& versionFile,
                               Console& console) {
    VersionInfo info;
    if (!readVersionFile(versionFile, info)) {
        console.printLine("Error: Configuration file not found!");
        return {SelectionStatus::kNoVersionFile, {}, {}};
    }
    return selectLibrary(libraryText, info, console);
}

}  // namespace quillmark
