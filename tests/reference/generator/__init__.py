"""Makes random cases: descriptions, version files, include files and command lines.

Texts of description files travel as `str` in which each character is one byte (Latin-1), so that
any byte can stand anywhere.
"""
