"""Expands layouts of blocks into tokens.

A layout is written as text, one word per item:

    int num str id     a parameter of that kind; str may be NULL and the like when odd
    raw                a format or unit, which may stand without quotes
    small addr         a number that tells things apart; an address
    name:KIND          a name of that kind, from a small stock, so that references meet definitions
    names:KIND         a list of up to four of them
    A|B|C              one of these words
    WORD               the word itself
    WORD?              the word, or nothing
    begin:BLOCK        a whole block; what stands before a last "/" in BLOCK only tells the layout
    @maker             tokens made by the function of that name in `MAKERS`

Options end in "*" where they may occur any number of times.
"""

import functools
import typing


class Layout(typing.NamedTuple):
    fixed: str
    options: tuple = ()


def layout(fixed, *options):
    return Layout(fixed, options)


@functools.lru_cache(maxsize=None)
def _items(text):
    return tuple(text.split())


class Grammar:
    """Makes blocks out of a table of layouts.

    `fullness`: how often (0 to 1) an option of a block is there.
    """

    def __init__(self, words, layouts, makers, fullness):
        self.words = words
        self.dice = words.dice
        self._layouts = layouts
        self._makers = makers
        self.fullness = fullness
        self._slots = {
            "int": words.integer,
            "num": words.number,
            "str": words.text,
            "id": words.name,
            "raw": words.unquoted,
            "small": words.small,
            "addr": words.address,
        }

    def block(self, name):
        """The tokens of a block as its layout tells."""
        return self.enclosed(name.rpartition("/")[2], self.body(name))

    def enclosed(self, keyword, body):
        """The tokens of a block with that content; the closing keyword may be another when odd."""
        closing = self.words.one_of([keyword]) if self.dice.chance(0.2) else keyword
        return ["/begin", keyword, *body, "/end", closing]

    def body(self, name):
        fixed, options = self._layouts[name]
        return self.items(fixed) + self.options(options)

    def options(self, options):
        """Some of the options in random order, now and then one too often."""
        wanted = []
        for option in options:
            if not self.dice.chance(self.fullness):
                continue
            times = 1 + self.dice.few(3) if option.endswith("*") else 1
            if self.dice.odd():
                times += 1
            wanted += [option.rstrip("*")] * times
        order = self.dice.shuffled(wanted) if self.dice.chance(0.6) else wanted
        return [token for option in order for token in self.items(option)]

    def items(self, text):
        tokens = []
        for item in _items(text):
            tokens += self._item(item)
        return tokens

    def _item(self, item):
        if item in self._slots:
            return [self._slots[item]()]
        kind, colon, argument = item.partition(":")
        if kind == "begin" and colon:
            return self.block(argument)
        if kind == "name" and colon:
            return [self.words.name(argument)]
        if kind == "names" and colon:
            return [self.words.name(argument) for _ in range(self.dice.few(4))]
        if item.startswith("@"):
            return self._makers[item[1:]](self)
        if item.endswith("?"):
            return [item[:-1]] if self.dice.chance(0.5) else []
        if "|" in item:
            return [self.words.one_of(item.split("|"))]
        return [item]
