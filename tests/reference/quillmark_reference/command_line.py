"""The commands and their options."""

from dataclasses import dataclass, field
from pathlib import Path

from . import codec, compare, core_blocks, module_out, package, resolution
from .console import Refusal

_BANNER = b"VELTRA Quillmark 1.43"

# As recorded: it tells nothing that could be read in two ways.
_USAGE = (Path(__file__).parents[2] / "cli" / "usage").read_bytes()


class UsageError(Exception):
    """The command line is wrong: the message goes before the usage text."""


def main(arguments, console, environment):
    """Runs the command that the arguments (bytes, without the program's name) ask for."""
    console.line(_BANNER)
    commands = {b"convert": _convert, b"decompress": _decompress, b"compare": _compare}
    if not arguments or arguments[0] not in commands:
        console.write(_USAGE)
        return 1
    try:
        status = commands[arguments[0]](arguments[1:], console, environment)
    except UsageError as error:
        console.line(error.args[0])
        console.write(_USAGE)
        status = 1
    except Refusal as refusal:
        for line in refusal.lines:
            console.error_line(line)
        return 1
    console.line()
    console.line(b"Error." if status else b"Done.")
    console.line(b"-" * 82)
    console.line()
    return status


@dataclass
class Request:
    """What convert was asked for; an empty text means that the option was not given."""

    input_file: bytes = b""
    station_name: bytes = b""
    zpki_file: bytes = b""
    name_prefix: bytes = b""
    output_file: bytes = b""
    compress: bool = False
    indent: bool = False
    library: bytes = b""
    epk_file_prefix: bool = False
    raw_user_files: bytes = b""
    user_files: list = field(default_factory=list)


# Options with a value: the field, and the two messages. None: the last one counts.
_VALUE_OPTIONS = {
    b"-n": ("station_name",
            b"Error: Option -n cannot be used more than once.",
            b"Error: Option -n has to be followed by another argument."),
    b"-p": ("name_prefix",
            b"Error: Option -p cannot be used more than once.",
            b"Error: Option -p has to be followed by another argument."),
    b"-l": ("library",
            None,
            b"Error: Option -l has to be followed by another argument."),
    b"-zpki": ("zpki_file",
               b"Error: Option -zpki cannot be used more than once",
               b"Error: Option -zpki has to followed by another argument."),
    b"-userfiles": ("raw_user_files",
                    b"Error: Option -userfiles cannot be used more than once",
                    b"Error: Option -userfiles has to be followed by another argument."),
}

_FLAGS = {b"-z": "compress", b"-epk-file-prefix": "epk_file_prefix", b"-i": "indent"}


def _parse_convert(arguments, console):
    request = Request()
    rest = iter(arguments)
    for argument in rest:
        if argument in _VALUE_OPTIONS:
            name, given_twice, value_missing = _VALUE_OPTIONS[argument]
            if given_twice and getattr(request, name):
                raise UsageError(given_twice)
            value = next(rest, None)
            if value is None:
                raise UsageError(value_missing)
            setattr(request, name, value)
        elif argument in _FLAGS:
            if getattr(request, _FLAGS[argument]):
                console.line(
                    b"Warning: Using option %s more than once has no effect." % argument)
            setattr(request, _FLAGS[argument], True)
        elif not request.input_file:
            request.input_file = argument
        elif not request.output_file:
            request.output_file = argument
    _check_convert(request)
    request.user_files = _split_list(request.raw_user_files)
    return request


def _check_convert(request):
    if not request.input_file:
        raise UsageError(b"Error: no valid input file specified.")
    if not request.output_file:
        raise UsageError(b"Error: no valid output file specified.")
    if not request.zpki_file and request.raw_user_files:
        request.zpki_file = zpki_name_for(request.output_file)
        if not request.zpki_file:
            raise UsageError(b"Error: can not create zpki without proper file name")
    if request.epk_file_prefix and not request.raw_user_files:
        raise UsageError(
            b"Error: EPK prefix for user files can only be used with userfiles option")


def zpki_name_for(output_file):
    """The name with its suffix replaced, or an empty one if it has no suffix."""
    directory, slash, name = output_file.rpartition(b"/")
    stem, _, suffix = name.rpartition(b".")
    return directory + slash + stem + b".zpki" if suffix and b"." in name else b""


def _split_list(text):
    """The items between commas; empty ones count, save one behind a last comma."""
    items = text.split(b",")
    return items[:-1] if items[-1] == b"" else items


def _convert(arguments, console, environment):
    request = _parse_convert(arguments, console)
    root = core_blocks.read_description(request.input_file, console)
    if root is None:
        console.line(b"Error reading file.")
        return 1
    resolution.resolve(root)
    document = module_out.build_document(request, root, console, environment)
    if document is None:
        return 1
    content = document.write(request.indent)
    if request.user_files or request.zpki_file:
        return package.build_package(request, root, content, console, environment)
    try:
        output = open(request.output_file, "wb", buffering=0)
    except (OSError, ValueError):
        console.line(b"ERROR: Cannot open output file: " + request.output_file)
        return 1
    codec.write_all(output, content)  # a document that stays short is not reported
    return 0


def _decompress(arguments, console, _environment):
    if not arguments:
        raise UsageError(b"Error: no valid input file specified.")
    if len(arguments) < 2:
        raise UsageError(b"Error: no valid output file specified.")
    return codec.decompress(arguments, console)


def _compare(arguments, console, _environment):
    verbose = False
    files = []
    for argument in arguments:
        if argument != b"-v":
            files.append(argument)
        elif verbose:
            raise UsageError(b"Warning: Option -v cannot be used more than once.")
        else:
            verbose = True
    old_file, new_file = (files + [b"", b""])[:2]
    if not old_file:
        raise UsageError(b"Error: no valid file 1 specified.")
    if not new_file:
        raise UsageError(b"Error: no valid file 2 specified.")
    return 1 if compare.compare_files(old_file, new_file, verbose, console) else 0
