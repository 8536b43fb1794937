"""Include files with a blob, and what may be wrong with them."""

import base64
import zlib


def compressed_document(dice):
    """The bytes of an include file with a blob, mostly as the program writes it."""
    packed = _packed(dice, _sections(dice))
    line_end = dice.pick([b"\r\n", b"\r\n", b"\r\n", b"\n", b""])
    indent = dice.pick([b"", b"", b"    "])
    encoded = base64.b64encode(packed)
    lines = line_end.join(encoded[start : start + 76] for start in range(0, len(encoded), 76))
    if len(encoded) % 76 == 0 and encoded:
        lines += line_end
    blob = [
        indent + b"<blob>",
        indent * 2 + b"size=%d" % len(encoded),
        indent * 2 + b"<blobdata>",
        _damaged(dice, lines),
        indent * 2 + b"</blobdata>",
        indent + b"</blob>",
    ]
    document = [b"#remark", b"<sigtrak_include>", *_order(dice, blob), b"</sigtrak_include>"]
    if dice.chance(0.05):
        document[2:2] = blob
    text = line_end.join(document) + dice.pick([line_end, b"", line_end * 3])
    if dice.chance(0.3):
        text = text.replace(
            b"</blob>", b"</blob>" + dice.pick([b"\r", b"\n\n\r", b"\r\n\r\n", b" \r\n", b"\x00\n"])
        )
    if dice.chance(0.08):
        place = dice.below(len(text) + 1)
        text = text[:place] + dice.pick([b"", dice.bytes(3), text[place + dice.below(40) :]])
    return text


def _sections(dice):
    line = dice.pick(
        [b"<compumethods>\r\n", b"name=x\r\n", b"a", b"<blob>\r\n</blob>\r\n", dice.bytes(50)]
    )
    size = dice.pick([0, 1, 5, 100, 1000, 16383, 16384, 16385, 32768, 40000, dice.below(5000)])
    text = (line * (size // len(line) + 1))[:size]
    if dice.chance(0.3):
        text += dice.bytes(dice.below(400))
    return text


def _packed(dice, sections):
    what = dice.below(30)
    if what == 0:
        return b""
    if what == 1:
        return dice.bytes(dice.below(300))
    if what == 2:
        return sections[:400]
    packed = zlib.compress(sections, dice.pick([-1, -1, -1, 0, 1, 9]))
    if what == 3:
        return packed + packed
    if what == 4:
        return packed[2:-4]
    if what == 5:
        return packed[: dice.below(len(packed) + 1)]
    if what in (6, 7, 8):
        place = dice.below(len(packed))
        return packed[:place] + dice.bytes(1) + packed[place + 1 :]
    if what == 9:
        compressor = zlib.compressobj(6, zlib.DEFLATED, dice.pick([31, -15, 9, 15]))
        return compressor.compress(sections) + compressor.flush()
    return packed


def _damaged(dice, lines):
    if not lines or dice.chance(0.75):
        return lines
    place = dice.below(len(lines))
    return dice.pick(
        [
            lines[:place],
            lines[:place]
            + dice.pick([b"=", b"==", b"-", b" ", b"\x00", b"<", b"AAAA", b"A"])
            + lines[place:],
            lines[:place] + lines[place + 1 :],
            lines.rstrip(b"=\r\n"),
            lines + b"=",
            b"",
            lines.swapcase(),
            lines.replace(b"\r\n", b" "),
        ]
    )


def _order(dice, blob):
    """The lines of the blob as they belong, or with a tag missing, twice or misplaced."""
    if dice.chance(0.85):
        return blob
    lines = list(blob)
    first, second = dice.below(len(lines)), dice.below(len(lines))
    what = dice.below(4)
    if what == 0:
        del lines[first]
    elif what == 1:
        lines[first], lines[second] = lines[second], lines[first]
    elif what == 2:
        lines.insert(first, lines[second])
    else:
        lines[first] = lines[first].replace(b"b", b"B", 1)
    return lines
