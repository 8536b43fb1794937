"""The keyword tables of the program: the only thing that is read from its sources."""

import pathlib
import re

_SOURCES = pathlib.Path(__file__).resolve().parents[3] / "src" / "a2l" / "tokens"
_ROW = re.compile(r'^QM_KEYWORD\(\w+, "([^"]*)", -?\d+\)', re.MULTILINE)


def _table(name):
    return _ROW.findall((_SOURCES / f"{name}_keywords.inc").read_text(encoding="ascii"))


CORE = _table("core")
WORDS = _table("word")
XCP = _table("xcp")
CCP = _table("ccp")
GMLAN = _table("gmlan")
KWP = _table("kwp")
ALL = CORE + WORDS + XCP + CCP + GMLAN + KWP
