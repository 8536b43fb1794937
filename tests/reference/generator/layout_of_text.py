"""Turns tokens into the bytes of a file: blanks, comments, line ends, encoding mark."""

_LINE_ENDS = {"\n": 6, "\r\n": 4, "\r": 1, " ": 1}
_MARKS = {
    "": 500,
    "\xef\xbb\xbf": 4,
    "\xef": 1,
    "\xef\xbb": 1,
    "\xef\n": 1,
    "\xff\xef\xbb\xbf": 1,
    "\xef\xff\xbb\xbf": 1,
    "\xff": 1,
    "\x00": 1,
    "\xfe\xff": 1,
    "\n": 1,
}
_COMMENTS = [
    "/* remark */", "/**/", "// line\n", "//\n", "/* two\nlines */", "/* /begin x */", "/*/ */",
    "/* // */", '/* " */', '// "\n', "/***/", "/* * / */", "/*\xff*/", "//\xff*/\n",
    "/* unclosed * /*/",
]
# The program reads this much at a time; what lies across its end must come out the same.
_BLOCK_SIZE = 64 * 1024
_OTHER_BLANKS = ["\t", "  ", "\n\n", "\r", "\x00", "\xff ", " \xff", "\r\n", "\x00 ", "\t\n\t"]


def text_of(tokens, dice, tidy=False):
    """The text of the tokens, in one of the ways in which tools write it.

    If it need not be tidy, it may also be in one in which they don't.
    """
    line_end = dice.weighted(_LINE_ENDS)
    remarks = 0 if tidy else dice.pick([0, 0, 0.02, 0.2])
    parts = [] if tidy else [dice.weighted(_MARKS)]
    depth = 0
    for token in tokens:
        parts += [token, _gap(token, depth, line_end, remarks, dice)]
        depth += {"/begin": 1, "/end": -1}.get(token, 0)
    if tidy:
        return "".join(parts)
    if dice.chance(0.01):
        _fill_block(parts, dice)
    if dice.chance(0.03):
        parts.append(dice.pick(["// end", "/* open", '"open', "x", "/", "\x00", "\xff", "-"]))
    return "".join(parts)


def _fill_block(parts, dice):
    """Puts in a comment so that the end of a block lies in one of the next parts."""
    place = dice.below(len(parts))
    length = _BLOCK_SIZE - sum(len(part) for part in parts[:place]) - dice.between(-3, 40)
    if length > 0:
        parts.insert(place, "/*" + dice.pick(["x", "* ", "\n", "/"]) * length)
        parts[place] = parts[place][: length - 3] + "*/ "


def _gap(token, depth, line_end, remarks, dice):
    """What follows a token: nothing but a few tokens may do without it."""
    if remarks and dice.chance(remarks):
        comment = dice.pick(_COMMENTS)
        return ("" if dice.chance(0.01) else " ") + comment + dice.pick(["", " ", line_end])
    if remarks and dice.chance(remarks):
        return dice.pick(_OTHER_BLANKS)
    if dice.chance(0.0001):
        return ""
    if dice.chance(0.3) and token not in ("/begin", "/end"):
        return line_end + " " * (2 * max(depth, 0)) if dice.chance(0.5) else line_end
    return " "
