"""The frame of every block parser.

A parser is called with its block's keyword as the current token, and leaves with the last token
that belongs to the block as the current one. Its first error is raised as `ReadError` and ends the
reading of the file; warnings are only told.
"""

import os
from contextlib import contextmanager

from . import keywords
from .lexer import Lexer, UnclosedComment, clamp_to_int32

# A message, and the line that tells it, must each fit into a buffer of this size with a NUL.
_MESSAGE_BUFFER = 500


class ReadError(Exception):
    """An error of the description. It has been told when this is raised."""


class Reader:
    """Reads the tokens of one description and tells what is wrong with it."""

    def __init__(self, file_name, console):
        self._file_name = file_name
        self._console = console
        self.module_byte_order = 0
        self.kind = keywords.END_OF_FILE
        self._is_pushed_back = False
        self._lexer = None

    def open(self):
        """Loads the file. Returns whether it could be opened."""
        try:
            descriptor = os.open(self._file_name, os.O_RDONLY)
        except (OSError, ValueError):
            return False
        content, _ = read_until_failure(descriptor)
        self._lexer = Lexer(
            content,
            lambda: self._tell(b"Error", b"Unexpected EOF in string"))
        return True

    # Messages

    def _tell(self, label, message):
        message = message[:_MESSAGE_BUFFER - 1]
        line = b"%s (%s:%d): %s\n" % (label, self._file_name, self._lexer.line, message)
        self._console.write(b"-: " + line[:_MESSAGE_BUFFER - 1])

    def warning(self, message):
        self._tell(b"Warning", message)

    def error(self, message):
        """Tells an error and gives up."""
        self._tell(b"Error", message)
        raise ReadError

    def _unexpected_message(self):
        return b"Unexpected token '%s' found" % self.table.display_name(self.kind)

    def unexpected_warning(self):
        self.warning(self._unexpected_message())

    def unexpected(self):
        self.error(self._unexpected_message())

    # Tokens

    @property
    def table(self):
        return self._lexer.table

    @contextmanager
    def using(self, table):
        """Reads with another keyword table for a while."""
        outer = self._lexer.table
        self._lexer.table = table
        try:
            yield
        finally:
            self._lexer.table = outer

    def next(self, word_mode=False):
        """Reads the next token and returns its kind."""
        if self._is_pushed_back:
            self._is_pushed_back = False
            return self.kind
        try:
            self.kind = self._lexer.next(word_mode)
        except UnclosedComment as comment:
            self.error(b"Error: Unexpected EOF in Comment (Line %d)" % comment.line)
        return self.kind

    def push_back(self):
        """The current token belongs to what follows: the next `next` delivers it again."""
        self._is_pushed_back = True

    @property
    def word(self):
        """The keyword that the current token is, or None."""
        return self.table.word(self.kind)

    @property
    def plain_word(self):
        """The text of the current token if it is an identifier that no table knows, else None."""
        return self.text if self.kind == keywords.IDENTIFIER else None

    @property
    def text(self):
        return self._lexer.text

    @property
    def int_value(self):
        return self._lexer.int_value

    @property
    def is_number(self):
        return self.kind in (keywords.INTEGER, keywords.FLOAT)

    @property
    def number(self):
        """The current token as int or float, or None if it is no number."""
        if self.kind == keywords.INTEGER:
            return self._lexer.int_value
        if self.kind == keywords.FLOAT:
            return self._lexer.float_value
        return None

    # Parameters. Each operation reads one token (or as many as it says).

    def drop(self, count=1):
        for _ in range(count):
            self.next()

    def read_identifier(self):
        if self.next() != keywords.IDENTIFIER:
            self.error(b"Identifier expected")
        return self.text

    def read_string(self):
        """A text of a core block; the bare word NULL stands for the empty one."""
        self.next()
        if self.plain_word == b"NULL":
            return b""
        if self.kind != keywords.STRING:
            self.error(b"String expected")
        return self.text

    def read_plain_string(self):
        """A text of an interface block."""
        if self.next() != keywords.STRING:
            self.error(b"String expected")
        return self.text

    def read_int(self):
        """A number of an interface block as an integer; anything else counts as 0."""
        self.next()
        return self.number_as_int()

    def number_as_int(self):
        """The current token as an integer; a real is cut, anything else counts as 0."""
        value = self.number
        if value is None:
            return 0
        return clamp_to_int32(value) if isinstance(value, float) else value

    def read_number(self):
        """An int or a float; anything else is warned of and gives None."""
        self.next()
        if not self.is_number:
            self.unexpected_warning()
        return self.number

    def read_choice(self, choices):
        """A word and what it stands for in `choices`; any other token is warned of, giving None."""
        self.next()
        return self.choose(choices)

    def choose(self, choices):
        """`read_choice` for the current token. Words that no table knows are told by their text."""
        word = self.word
        if word is None and self.plain_word is not None:
            word = self.plain_word.decode("latin-1")
        if word in choices:
            return choices[word]
        self.unexpected_warning()
        return None

    def read_identifiers(self):
        """Names up to the first other token, which is left for what follows."""
        names = []
        while self.next() == keywords.IDENTIFIER:
            names.append(self.text)
        self.push_back()
        return names

    # Blocks

    def parts(self, block, complaint=None):
        """Goes through the optional parts of a block up to its end.

        Yields (is_block, word) for each with its keyword as the current token; the word is None
        where no keyword stands. The taker reads what belongs to the part before it goes on.
        `complaint` is the name that the message about a wrong closing keyword gives, if not
        the block's own.
        """
        while self.next() != keywords.END:
            if self.kind == keywords.BEGIN:
                self.next()
                yield True, self.word
            else:
                yield False, self.word
        self.close(block, complaint)

    def words(self, block):
        """`parts` for a block that holds no other block: there /begin is a word like others."""
        while self.next() != keywords.END:
            yield self.word
        self.close(block)

    def close(self, block, complaint=None):
        """After /end: the block's own keyword must follow."""
        self.next()
        if self.word != block:
            name = (complaint or block).encode("ascii")
            self.error(b"Keyword '%s' expected after /end" % name)

    def skip_block(self):
        """Skips a block that nobody reads, its keyword being the current token."""
        opening = self.kind
        depth = 0
        while self.next() != keywords.END or depth > 0:
            if self.kind == keywords.BEGIN:
                depth += 1
            elif self.kind == keywords.END:
                depth -= 1
            elif self.kind == keywords.END_OF_FILE:
                return
        if self.next() != opening:
            name = self.table.display_name(opening)
            self.error(b"Keyword '%s' expected after /end (IGN)" % name)


def read_until_failure(descriptor):
    """What can be read of an open file, which is closed, and whether that is all of it."""
    content = bytearray()
    try:
        while piece := os.read(descriptor, 1 << 20):
            content += piece
    except OSError:
        return bytes(content), False
    finally:
        os.close(descriptor)
    return bytes(content), True
