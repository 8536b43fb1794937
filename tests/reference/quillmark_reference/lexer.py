"""From bytes to tokens.

A token has a kind, a 32-bit integer value, a real value and a text. Its kind is the number of a
keyword, one of the kinds of `keywords`, the value of a lone character (as a signed byte), or -1 for
something that only began like a number. Lone characters and keywords share their numbers, and
nothing keeps them apart: a stray '#' reads like the keyword with the number 35.
"""

import re

from . import keywords

MALFORMED = -1

_LATIN_LETTERS = rb"\xc4\xd6\xdc\xe4\xf6\xfc\xdf"
_BLANKS = re.compile(rb"[ \t\n\r\0]*")
_IDENTIFIER = re.compile(rb"[A-Za-z_/*][A-Za-z0-9_()*\-./+\[\]|" + _LATIN_LETTERS + rb"]*")
_WORD = re.compile(rb"[A-Za-z0-9_\-%][A-Za-z0-9%\-*_.\[\]|" + _LATIN_LETTERS + rb"]*")
_REST_OF_NUMBERED_IDENTIFIER = re.compile(rb"[A-Za-z0-9_\-.\[\]|" + _LATIN_LETTERS + rb"]*")
_DIGITS = re.compile(rb"[0-9]*")
_HEX_DIGITS = re.compile(rb"[0-9A-Fa-f]*")
_REAL = re.compile(rb"-?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?")

_LETTERS = b"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_"
_ESCAPES = {b"n": b"\n", b"r": b"\r", b"t": b"\t"}


def to_int32(value):
    """The low 32 bits of a number, read as a signed one."""
    value &= 0xFFFFFFFF
    return value - (1 << 32) if value & 0x80000000 else value


def clamp_to_int32(real):
    """A real cut to an integer; beyond the range it becomes the nearest limit, no number is 0."""
    if real != real:
        return 0
    if real >= 2147483647.0:
        return 2147483647
    if real <= -2147483648.0:
        return -2147483648
    return int(real)


class UnclosedComment(Exception):
    """The file ends inside a comment. Nothing can be read after that."""

    def __init__(self, line):
        super().__init__(line)
        self.line = line


class Lexer:
    """Reads one description. After each `next`: `int_value`, `float_value` and `text`."""

    def __init__(self, data, on_unclosed_string):
        self.line = 1
        self.table = keywords.CORE
        self._on_unclosed_string = on_unclosed_string
        # 0xFF bytes never count, but the mark at the start is looked for before they are dropped.
        self._data = data[self._length_of_mark(data):].replace(b"\xff", b"")
        self._position = 0
        self._clear()

    def _clear(self):
        self.int_value = 0
        self.float_value = 0.0
        self.text = b""

    def _length_of_mark(self, data):
        """How many bytes the search for the UTF-8 mark eats. A half mark is eaten, too."""
        if data[:1] != b"\xef":
            return 0
        length = min(len(data), 3 if data[1:2] == b"\xbb" else 2)
        self.line += data.count(b"\n", 0, length)
        return length

    def _peek(self):
        """The next byte (as bytes), empty at the end of the file."""
        return self._data[self._position:self._position + 1]

    def _take(self, pattern):
        """Everything that `pattern` matches here, with its line feeds counted."""
        match = pattern.match(self._data, self._position)
        self._position = match.end()
        self.line += match.group().count(b"\n")
        return match.group()

    def next(self, word_mode=False):
        """Reads one token and returns its kind.

        In word mode a unit or format may stand without quotes, so whatever looks like a word is
        taken as a text.
        """
        self._clear()
        self._skip_blanks_and_comments()
        first = self._peek()
        if not first:
            return keywords.END_OF_FILE
        if first == b'"':
            return self._string()
        if word_mode and _WORD.match(first):
            self.text = self._take(_WORD)
            return keywords.STRING
        if _IDENTIFIER.match(first):
            return self._identifier()
        if first in b"0123456789-.":
            return self._number()
        self._position += 1
        return int.from_bytes(first, "big", signed=True)

    def _skip_blanks_and_comments(self):
        while True:
            self._take(_BLANKS)
            opening = self._data[self._position:self._position + 2]
            if opening == b"/*":
                self._skip_comment(b"*/")
            elif opening == b"//":
                self._skip_comment(b"\n")
            else:
                return

    def _skip_comment(self, closing):
        first_line = self.line
        end = self._data.find(closing, self._position + 2)
        after = len(self._data) if end < 0 else end + len(closing)
        self.line += self._data.count(b"\n", self._position, after)
        self._position = after
        if end < 0:
            raise UnclosedComment(first_line)

    def _identifier(self):
        self.text = self._take(_IDENTIFIER)
        number = self.table.number(self.text)
        return keywords.IDENTIFIER if number is None else number

    def _string(self):
        self._position += 1
        content = bytearray()
        while True:
            char = self._string_char()
            if char == b'"':
                if self._peek() != b'"':
                    break
                char = self._string_char()
            elif char == b"\\":
                char = self._string_char()
                char = _ESCAPES.get(char, char)
            if not char:
                self._on_unclosed_string()
                return MALFORMED
            content += char
        # Texts travel as C strings, so a NUL byte ends them.
        self.text = bytes(content).split(b"\0")[0]
        return keywords.STRING

    def _string_char(self):
        char = self._peek()
        self._position += len(char)
        self.line += char == b"\n"
        return char

    def _number(self):
        start = self._position
        if self._peek() in b"-.":
            self._position += 1
            if not self._peek().isdigit():
                return MALFORMED
        self._take(_DIGITS)
        digits = self._data[start:self._position]
        if self._peek() in (b"x", b"X"):
            if digits not in (b"0", b"-0"):
                return MALFORMED
            self._position += 1
            kind, value = keywords.INTEGER, self._hexadecimal(negative=digits[:1] == b"-")
        else:
            is_real = self._fraction()
            if is_real is None:
                return MALFORMED
            text = self._data[start:self._position]
            if is_real:
                kind, value = keywords.FLOAT, _real(text)
            else:
                kind, value = keywords.INTEGER, _decimal(text)
        following = self._peek()
        if following and following in _LETTERS:
            self._take(_REST_OF_NUMBERED_IDENTIFIER)
            self.text = self._data[start:self._position]
            return keywords.IDENTIFIER
        self.text = self._data[start:self._position]
        if kind == keywords.FLOAT:
            self.float_value = value
        else:
            self.int_value = value
        return kind

    def _hexadecimal(self, negative):
        digits = self._take(_HEX_DIGITS)
        value = int(digits, 16) if digits else 0
        if value >= 1 << 64:
            return to_int32((1 << 64) - 1)
        return to_int32(-value if negative else value)

    def _fraction(self):
        """Reads what makes a number a real. Returns whether there is such, None for half of it."""
        is_real = False
        if self._peek() == b".":
            self._position += 1
            self._take(_DIGITS)
            is_real = True
        if self._peek() in (b"e", b"E"):
            self._position += 1
            if self._peek() in (b"+", b"-"):
                self._position += 1
            if not self._peek().isdigit():
                return None
            self._take(_DIGITS)
            is_real = True
        return is_real


def _decimal(text):
    """As atol reads it: 64 bits wide, saturated, 0 for a text that starts with a point."""
    if text.startswith(b"."):
        return 0
    negative = text.startswith(b"-")
    digits = text.lstrip(b"-").lstrip(b"0") or b"0"
    if len(digits) > 19:  # more than 64 bits, and possibly more than int() takes
        digits = b"9" * 19
    value = -int(digits) if negative else int(digits)
    return to_int32(max(-(1 << 63), min((1 << 63) - 1, value)))


def _real(text):
    """As scanf reads it: the longest start that is a number (".5.3" is 0.5)."""
    return float(_REAL.match(text).group())
