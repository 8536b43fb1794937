"""Which version of the logger's library the output is for, and what that version understands."""

import re
from dataclasses import dataclass, field
from xml.parsers import expat

from .console import Refusal

VERSION_FILE = b"sigtrakVersions.xml"
LIBRARY = b"sigTrak"
OLDEST_VERSIONS = b"sigTrak+1.4.4-1.5.5"

# Where a version lies in relation to a range.
INSIDE = 0
BELOW = 1
IN_A_GAP = 2
ABOVE = 3
UNKNOWN_LIBRARY = 4


@dataclass
class Features:
    """What the output may use."""

    json_source: bool = False
    value_tables: bool = False
    shift_attributes: bool = False
    ascii_characteristics: bool = False


@dataclass
class Restriction:
    check: bytes = b""
    warning: bytes | None = None


@dataclass
class VersionInfo:
    top: bytes = b""
    restrictions: list = field(default_factory=list)


# The version file


def read_version_file():
    """The version file of the current directory, or None if it is missing or not well-formed."""
    try:
        with open(VERSION_FILE, "rb") as stream:
            content = stream.read()
    except OSError:
        return None
    events = _xml_events(content)
    if events is None:
        return None
    info = VersionInfo()
    if not _skip_to_start(events, "TopVersion"):
        return info
    info.top = _read_text(events)
    if _next_start(events) == "VersionList":
        _read_text(events)
    if _next_start(events) == "Restrictions":
        info.restrictions = _read_restrictions(events)
    for restriction in info.restrictions:
        restriction.check = restriction.check.replace(b"$TopVersion$", info.top)
    return info


def _xml_events(content):
    """A list of ("start", name), ("end", name) and ("text", text), last event first, or None."""
    events = []
    # The text is taken for UTF-8, whatever its declaration says.
    parser = expat.ParserCreate("utf-8", namespace_separator=" ")
    parser.StartElementHandler = lambda name, _: events.append(("start", name.split(" ")[-1]))
    parser.EndElementHandler = lambda name: events.append(("end", name))
    parser.CharacterDataHandler = lambda text: events.append(("text", text))
    try:
        parser.Parse(content.decode("utf-8-sig", "replace").encode("utf-8"), True)
    except expat.ExpatError:
        return None
    events.reverse()
    return events


def _next_start(events):
    """Goes behind the next start of an element. Returns its name, or None at the end."""
    while events:
        kind, name = events.pop()
        if kind == "start":
            return name
    return None


def _skip_to_start(events, name):
    while events:
        if _next_start(events) == name:
            return True
    return False


def _read_text(events):
    """The text up to the end of the element that has just started."""
    parts = []
    depth = 1
    while depth > 0:
        kind, content = events.pop()
        if kind == "text":
            parts.append(content)
        else:
            depth += 1 if kind == "start" else -1
    return "".join(parts).encode("utf-8")


def _fold(text):
    return b" ".join(text.split())


def _read_restrictions(events):
    restrictions = []
    while events:
        kind, name = events.pop()
        if kind == "end":
            break
        if kind == "start" and name == "VersionRestriction":
            restrictions.append(_read_restriction(events))
        elif kind == "start":
            _read_text(events)
    return restrictions


def _read_restriction(events):
    restriction = Restriction()
    while True:
        kind, name = events.pop()
        if kind == "end":
            return restriction
        if kind == "start":
            text = _fold(_read_text(events))
            if name == "Check":
                restriction.check = text
            elif name == "MessageWarning":
                restriction.warning = text


# Versions and ranges


def parse_version(text):
    """Three numbers; of each part the leading digits count, and what is missing is 0."""
    parts = (text.split(b".") + [b"", b""])[:3]
    return tuple(_leading_number(part) for part in parts)


def _leading_number(text):
    digits = re.match(rb"[0-9]*", text).group().lstrip(b"0")
    if len(digits) > 10:
        return 2147483647
    return min(int(digits or b"0"), 2147483647)


def version_of_library(selection):
    """The version that a selection names for the library, or None."""
    for entry in selection.split(b";"):
        if entry.count(b"=") == 1:
            name, version = entry.split(b"=")
            if name.strip(b" \t") == LIBRARY:
                return parse_version(version.strip(b" \t"))
    return None


def _bounds_of_library(ranges):
    """The bounds of a text of ranges as (is_end, version), or None if it is of another library."""
    for entry in ranges.split(b";"):
        name, *parts = entry.split(b"+")
        if name == LIBRARY:
            bounds = []
            for part in parts:
                start, _, end = part.partition(b"-")
                bounds.append((False, parse_version(start)))
                if end:
                    bounds.append((True, parse_version(end)))
            return bounds
    return None


def check_range(version, ranges, lenient=False):
    """Where a version lies in relation to a range. Ends are exclusive.

    The first bound is always compared in full, the others of a lenient check in major and minor.
    """
    bounds = _bounds_of_library(ranges)
    if version is None or bounds is None:
        return UNKNOWN_LIBRARY
    if not bounds:
        return INSIDE

    def is_below(index):
        length = 2 if lenient and index > 0 else 3
        return version[:length] < bounds[index][1][:length]

    first_is_end, last_is_end = bounds[0][0], bounds[-1][0]
    if is_below(0) and not first_is_end:
        return BELOW
    if not is_below(len(bounds) - 1) and last_is_end:
        return ABOVE
    for index in range(len(bounds)):
        if is_below(index):
            return IN_A_GAP if index > 0 and bounds[index - 1][0] else INSIDE
    return INSIDE


# The selection


def select_library(option, info, console):
    """What the option -l (empty if absent) stands for: the features and the compatible versions.

    Refuses what can't be served by ending the run.
    """
    if not option:
        return Features(), OLDEST_VERSIONS
    if b"sigTrak=" in option and b"-" in option:
        raise Refusal(
            b"Two library versions detected. Please use sigTrak+ instead of sigTrak=")
    selection, compatible = option, None
    if b"sigTrak+" in option:
        selection = _check_user_range(option, info, console)
        compatible = option
    console.line(b"libraryVersion: " + selection)
    if not selection.startswith(LIBRARY):
        console.line(b"Warning: The version string should be formatted the following way: "
                     b"-l sigTrak=2017.02.01")
        selection = b"sigTrak=" + selection
    version = version_of_library(selection)
    features = _features_of(version, selection, option, info.top)
    return features, compatible or _compatible_versions(features, info.top)


def _features_of(version, selection, option, top):
    oldest = check_range(version, OLDEST_VERSIONS)
    if oldest == INSIDE:
        return Features()
    if oldest in (BELOW, IN_A_GAP):
        raise Refusal(b"Library version not supported. Only supporting sigTrak+1.4.4!")
    if oldest == UNKNOWN_LIBRARY:
        raise Refusal(b"Library software name not recognized.")
    if check_range(version, b"sigTrak+1.5.5-2017.06.0", lenient=True) == INSIDE:
        return Features(True)
    if check_range(version, b"sigTrak+2017.06.0-2021.10.0", lenient=True) == INSIDE:
        with_shift = check_range(
            version, b"sigTrak+2017.10.23-2017.10.99+2018.10.10-2018.10.99"
                     b"+2019.02.6-2019.02.99+2019.06.2-2021.10.0")
        return Features(True, True, with_shift == INSIDE)
    newest = check_range(version, b"sigTrak+2021.10.0-" + top, lenient=True)
    if newest == INSIDE or newest == ABOVE and top in selection:
        return Features(True, True, True, True)
    if newest == ABOVE:
        raise Refusal(b"Library version not supported yet. Only supporting until: " + top,
                      b"Selected library version: " + option)
    return Features()


def _compatible_versions(features, top):
    if not features.json_source:
        return OLDEST_VERSIONS
    if features.ascii_characteristics:
        return b"sigTrak+2021.10.0-" + top
    if features.value_tables:
        return b"sigTrak+2017.06.0-" + top
    return b"sigTrak+1.5.5-2017.06.0"


def _check_user_range(option, info, console):
    """Judges a range given by the user. Returns the selection of its first version."""
    first_part, _, second_part = option.replace(b"+", b"=", 1).partition(b"-")
    first = version_of_library(first_part)
    second = parse_version(second_part.strip(b" \t"))
    for restriction in info.restrictions:
        places = check_range(first, restriction.check), check_range(second, restriction.check)
        if places in ((INSIDE, ABOVE), (BELOW, INSIDE), (BELOW, ABOVE)):
            console.error_line(b"Invalid second library version. Please select between "
                               + restriction.check)
            if restriction.warning is not None:
                console.error_line(restriction.warning)
    top = info.top
    for ranges, limits in (
            (OLDEST_VERSIONS, b"1.4.4 - 1.5.4"),
            (b"sigTrak+1.5.5-2017.6.0", b"1.5.5 - 2017.06.0"),
            (b"sigTrak+2017.06.0-" + top, b"2017.06.0 - " + top)):
        if check_range(first, ranges) == INSIDE:
            if check_range(second, ranges) != INSIDE:
                raise Refusal(
                    b"Invalid second library version. Please select between " + limits)
            return first_part
    raise Refusal(b"Invalid first libary version. Please select between 1.4.4 - " + top)
