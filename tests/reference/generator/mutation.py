"""Breaks descriptions, and makes the second of a pair from the first."""

from generator import keywords
from generator.words import Words

_JUNK = [
    '"', "/*", "//", "*/", "\x00", "\xff", "\xff\xff", "\n", "\r", "\\", "'", "#", "\x01", "\x02",
    "0x", "-", ".", "\x80", "\xe4", "/end ", "/begin ", " ", "\x1a",
]


def spans_of_blocks(tokens):
    """(first, last + 1) of every closed block, `/begin` and closing keyword included."""
    spans, open_blocks = [], []
    for index, token in enumerate(tokens):
        if token == "/begin":
            open_blocks.append(index)
        elif token == "/end" and open_blocks:
            spans.append((open_blocks.pop(), min(index + 2, len(tokens))))
    return spans


class Mutation:
    """Changes a list of tokens in place; each operation does nothing to an empty list."""

    def __init__(self, dice):
        self.dice = dice
        self._words = Words(dice)

    def break_tokens(self, tokens, times):
        """Changes that make the text malformed as often as not."""
        operations = [
            self._drop,
            self._drop,
            self._repeat,
            self._swap,
            self._replace,
            self._replace,
            self._insert,
            self._move_block,
            self._repeat_block,
            self._drop_block,
            self._wrap_block,
            self._cut,
            self._number,
            self._number,
        ]
        for _ in range(times):
            if tokens:
                self.dice.pick(operations)(tokens)

    def tweak(self, tokens, times):
        """Changes that mostly keep the text well-formed but tell something else."""
        operations = [
            self._plain_number,
            self._plain_number,
            self._plain_number,
            self._related_word,
            self._related_word,
            self._drop_block,
            self._repeat_block,
            self._drop_option,
            self._drop_option,
            self._text,
        ]
        for _ in range(times):
            if tokens:
                self.dice.pick(operations)(tokens)

    def break_text(self, text):
        """Puts a byte in, takes some out, or cuts the end off."""
        if not text:
            return text
        place = self.dice.below(len(text))
        what = self.dice.below(6)
        if what == 0:
            return text[:place]
        if what == 1:
            return text[:place] + text[place + self.dice.between(1, 20) :]
        if what == 2:
            return text[:place] + chr(self.dice.below(256)) + text[place + 1 :]
        if what == 3:
            return text[:place] + text[place:].replace(
                " ", self.dice.pick(["\xff ", "\x00", "\t", "\r"])
            )
        return text[:place] + self.dice.pick(_JUNK) + text[place:]

    def _drop(self, tokens):
        del tokens[self.dice.below(len(tokens))]

    def _repeat(self, tokens):
        place = self.dice.below(len(tokens))
        tokens.insert(place, tokens[place])

    def _swap(self, tokens):
        first, second = self.dice.below(len(tokens)), self.dice.below(len(tokens))
        tokens[first], tokens[second] = tokens[second], tokens[first]

    def _replace(self, tokens):
        tokens[self.dice.below(len(tokens))] = self._words.anything()

    def _insert(self, tokens):
        tokens.insert(self.dice.below(len(tokens) + 1), self._words.anything())

    def _cut(self, tokens):
        del tokens[self.dice.below(len(tokens)) :]

    def _number(self, tokens):
        numbers = [
            index
            for index, token in enumerate(tokens)
            if token[:1].isdigit() or token[:2] in ("-1", "-4")
        ]
        if not numbers:
            return
        place = self.dice.pick(numbers)
        tokens[place] = self.dice.pick(
            [
                self._words.integer(),
                self._words.number(),
                tokens[place] + ".0",
                str(self.dice.below(6)),
                "0",
                self._words.address(),
                "-" + tokens[place],
            ]
        )

    def _plain_number(self, tokens):
        numbers = [index for index, token in enumerate(tokens) if token.isdigit()]
        if numbers:
            place = self.dice.pick(numbers)
            tokens[place] = self.dice.pick(
                [str(self.dice.below(6)), str(self.dice.below(70000)), tokens[place] + ".0", "0x1F"]
            )

    def _text(self, tokens):
        texts = [index for index, token in enumerate(tokens) if token[:1] == '"']
        if texts:
            tokens[self.dice.pick(texts)] = self._words.text()

    def _related_word(self, tokens):
        """Puts another word of the same beginning in, which is mostly one of the same parameter."""
        places = [index for index, token in enumerate(tokens) if len(token) > 6 and token.isupper()]
        if places:
            place = self.dice.pick(places)
            beginning = tokens[place][: max(6, tokens[place].rfind("_"))]
            related = [word for word in keywords.ALL if word.startswith(beginning)]
            tokens[place] = self.dice.pick(related or ["OTHER"])

    def _drop_option(self, tokens):
        """Leaves out a word without parameters or a command of a list."""
        places = [
            index
            for index, token in enumerate(tokens)
            if token in ("OPTIONAL_CMD", "BYTES_ONLY", "MAX_DLC_REQUIRED")
            or token.endswith(("R_SUPPORTED", "E_SUPPORTED", "F_SUPPORTED"))
        ]
        if places:
            place = self.dice.pick(places)
            del tokens[place : place + (2 if tokens[place] == "OPTIONAL_CMD" else 1)]

    def _block(self, tokens):
        """A block, inner ones more often than whole modules."""
        spans = spans_of_blocks(tokens)
        if not spans:
            return None
        first, second = self.dice.pick(spans), self.dice.pick(spans)
        return min(first, second, key=lambda span: span[1] - span[0])

    def _drop_block(self, tokens):
        span = self._block(tokens)
        if span:
            del tokens[span[0] : span[1]]

    def _repeat_block(self, tokens):
        span = self._block(tokens)
        if span:
            tokens[span[1] : span[1]] = tokens[span[0] : span[1]]

    def _move_block(self, tokens):
        """Moves a block to where another one begins."""
        span = self._block(tokens)
        if not span:
            return
        block = tokens[span[0] : span[1]]
        del tokens[span[0] : span[1]]
        others = spans_of_blocks(tokens)
        if others:
            place = self.dice.pick(others)[0]
            tokens[place:place] = block

    def _wrap_block(self, tokens):
        """Puts an unknown block around or in front of another."""
        span = self._block(tokens)
        if not span:
            return
        keyword = self.dice.pick(["FOREIGN", "DAQ", "SOURCE", "ODT", "UNKNOWN", "IF_DATA"])
        block = tokens[span[0] : span[1]] if self.dice.chance(0.5) else ["1", '"x"']
        place = span[0]
        tokens[place : span[1] if self.dice.chance(0.5) else place] = [
            "/begin",
            keyword,
            *block, "/end",
            keyword,
        ]
