"""The blob: sections of the include document, compressed and encoded."""

import base64
import os
import re
import zlib

from .document import LINE_BREAK
from .reader import read_until_failure

_LINE_LENGTH = 76


def fill_blob(blob, content):
    """Makes an element hold the compressed form of a text."""
    characters = base64.b64encode(zlib.compress(content))
    blob.add_int(b"size", len(characters))
    blob.add_child(b"blobdata").texts.append(_wrap(characters))


def _wrap(characters):
    """Breaks after every 76th character, but not directly after padding."""
    wrapped = bytearray()
    for start in range(0, len(characters), _LINE_LENGTH):
        line = characters[start:start + _LINE_LENGTH]
        wrapped += line
        if len(line) == _LINE_LENGTH and not line.endswith(b"="):
            wrapped += LINE_BREAK
    return bytes(wrapped)


def expand_blob(text):
    """The document with its first blob replaced by what it holds, or None if it has no proper one.

    Padding is dropped with everything that is no base64 character, and an incomplete last group is
    ignored: so the end of the checksum may be lost, which damages nothing. A damaged stream yields
    what comes before the damage.
    """
    places = [text.find(tag) for tag in (b"<blob>", b"<blobdata>", b"</blobdata>", b"</blob>")]
    if -1 in places or places != sorted(places):
        return None
    start, data_start, data_end, end = places
    characters = re.sub(rb"[^A-Za-z0-9+/]", b"",
                        text[data_start + len(b"<blobdata>"):data_end])
    stream = base64.b64decode(characters[:len(characters) // 4 * 4])
    suffix = text[end + len(b"</blob>"):].lstrip(b"\r\n")
    return text[:start] + _inflate(stream) + suffix


def _inflate(stream):
    try:
        return zlib.decompressobj().decompress(stream)
    except zlib.error:
        return _inflate_up_to_damage(stream)


def _inflate_up_to_damage(stream):
    """zlib drops the output of the call that meets the damage, so it is called for single bytes."""
    inflated = bytearray()
    inflater = zlib.decompressobj()
    try:
        for position in range(len(stream)):
            pending = stream[position:position + 1]
            while output := inflater.decompress(pending, 1):
                inflated += output
                pending = inflater.unconsumed_tail
    except zlib.error:
        pass
    return bytes(inflated)


def decompress(arguments, console):
    """The decompress command behind the checks of its arguments. Returns the exit status."""
    input_name, output_name = arguments[:2]
    try:
        descriptor = os.open(input_name, os.O_RDONLY)
    except (OSError, ValueError):
        console.line(b"ERROR: Cannot open input file: " + input_name)
        return 1
    text, is_complete = read_until_failure(descriptor)
    expanded = expand_blob(text) if is_complete else None
    if expanded is None:
        console.line(b"Error: File is corrupt or not a compressed file.")
        return -1
    try:
        output = open(output_name, "wb", buffering=0)
    except (OSError, ValueError):
        console.line(b"Error: Cannot open output file: " + output_name)
        return 1
    if not write_all(output, expanded):
        console.line(b"Error: File writing failed.")
        return -1
    console.line(b"Decompressing was successful.")
    return 0


def write_all(stream, content):
    """Writes and closes. Returns whether all of it could be written."""
    rest = memoryview(content)
    try:
        with stream:
            while rest:
                rest = rest[stream.write(rest):]
    except OSError:
        return False
    return True
