"""The dispatcher of IF_DATA blocks, and what the parsers of all protocols share."""

from . import ccp, gmlan, keywords, xcp


def parse_if_data(reader, owner):
    """Reads an interface block; `owner` is the model object in whose block it stands."""
    reader.next()
    if reader.kind == keywords.END:
        reader.push_back()
    name = reader.plain_word
    if name == b"ASAP1B_CCP":
        ccp.parse(reader, owner)
    elif name == b"ASAP1B_GMLAN":
        gmlan.parse(reader, owner)
    elif name == b"XCP":
        xcp.parse(reader, owner)
    elif name == b"XCPplus":
        reader.drop()
        xcp.parse(reader, owner)
    else:
        _skip_unknown(reader)


def _skip_unknown(reader):
    """Skips to an /end that IF_DATA follows directly, or to the end of the file."""
    previous = None
    while True:
        reader.next()
        if reader.kind == keywords.END_OF_FILE:
            return
        if previous == keywords.END and reader.word == "IF_DATA":
            return
        previous = reader.kind
