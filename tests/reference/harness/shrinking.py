"""Makes a case that differs as small as can be."""

import dataclasses
import re
import time

_TOKENS = re.compile(rb'\s*(?:"(?:[^"\\]|\\.|"")*"|[^\s"]+|")|\s+', re.DOTALL)


def shrunk(case, differs, seconds):
    """A smaller case for which differs(case) still holds; looks for it for so many seconds."""
    deadline = time.monotonic() + seconds
    case = _without_words(case, differs, deadline)
    for name in list(case.files):
        case = _without_file(case, name, differs)
    for pieces in (_lines, _tokens):
        for name in case.files:
            case = _smaller_file(case, name, pieces, differs, deadline)
    return case


def _without_words(case, differs, deadline):
    """Leaves out arguments from the end on; the command itself and its files stay if they must."""
    for number, command in enumerate(case.commands):
        place = len(command) - 1
        while place > 0 and time.monotonic() < deadline:
            shorter = case.commands[number][:place] + case.commands[number][place + 1 :]
            candidate = dataclasses.replace(
                case, commands=[*case.commands[:number], shorter, *case.commands[number + 1 :]]
            )
            if differs(candidate):
                case = candidate
            place -= 1
    return case


def _without_file(case, name, differs):
    candidate = dataclasses.replace(
        case, files={key: file for key, file in case.files.items() if key != name}
    )
    return candidate if differs(candidate) else case


def _smaller_file(case, name, pieces, differs, deadline):
    """Leaves out halves, quarters ... of a file's pieces as long as it still differs."""

    def with_pieces(parts):
        file = dataclasses.replace(case.files[name], data=b"".join(parts))
        return dataclasses.replace(case, files={**case.files, name: file})

    parts = pieces(case.files[name].data)
    size = max(len(parts) // 2, 1)
    while parts and time.monotonic() < deadline:
        place, before = 0, len(parts)
        while place < len(parts) and time.monotonic() < deadline:
            candidate = parts[:place] + parts[place + size :]
            if differs(with_pieces(candidate)):
                parts = candidate
            else:
                place += size
        if size == 1 and len(parts) == before:
            break
        size = max(size // 2, 1)
    return with_pieces(parts)


def _lines(data):
    return data.splitlines(keepends=True)


def _tokens(data):
    return _TOKENS.findall(data)
