"""The keyword tables: which words of a description are keywords, and by which number.

The tables are the only thing shared with the C++ program. They are read at run time from the rows

    QM_KEYWORD(CONSTANT, "text", id)

so that a word added there is known here, too. Everything that is done with a keyword is written
anew in this package.
"""

import re
from pathlib import Path

BEGIN = 1
END = 2
INTEGER = 300
FLOAT = 301
STRING = 302
IDENTIFIER = 303
END_OF_FILE = 304

_TABLES = Path(__file__).resolve().parents[3] / "src" / "a2l" / "tokens"
_ROW = re.compile(rb'^QM_KEYWORD\(\s*\w+\s*,\s*"([^"]*)"\s*,\s*(\d+)\s*\)', re.MULTILINE)


class KeywordTable:
    """One table: texts to numbers for the lexer, numbers to texts for messages and parsers."""

    def __init__(self, rows):
        self._numbers = {}
        self._texts = {}
        for text, number in rows:
            # Two words may share a number and a word may stand twice: the first row counts.
            self._numbers.setdefault(text, number)
            self._texts.setdefault(number, text)

    @classmethod
    def load(cls, file_name):
        rows = _ROW.findall((_TABLES / file_name).read_bytes())
        return cls((text, int(number)) for text, number in rows)

    def number(self, text):
        """The number of the keyword `text` (bytes), or None for a plain word."""
        return self._numbers.get(text)

    def word(self, kind):
        """The keyword of a token kind as str, or None when the kind is no keyword's number."""
        text = self._texts.get(kind)
        return None if text is None else text.decode("ascii")

    def display_name(self, kind):
        """How messages name a token kind."""
        return self._texts.get(kind, b"token=%d" % kind)


CORE = KeywordTable.load("core_keywords.inc")
WORDS = KeywordTable.load("word_keywords.inc")
CCP = KeywordTable.load("ccp_keywords.inc")
XCP = KeywordTable.load("xcp_keywords.inc")
GMLAN = KeywordTable.load("gmlan_keywords.inc")
