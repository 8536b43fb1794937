"""Descriptions as trees of blocks.

Only for descriptions that are in order: words and texts between white space, comments, and blocks
that are closed under their own name.
"""

import dataclasses
import re

_TOKEN = re.compile(
    r"""
    (?P<comment> /\*.*?\*/ | //[^\n]* ) |
    (?P<text> "(?: "" | \\. | [^"\\] )*" ) |
    (?P<word> [^\s"]+ )
    """,
    re.VERBOSE | re.DOTALL,
)


@dataclasses.dataclass
class Block:
    """`/begin KEYWORD ... /end KEYWORD`: words and texts as they are written, and its blocks."""

    keyword: str
    items: list
    line: int = 0

    def blocks(self, *keywords):
        return [
            item
            for item in self.items
            if isinstance(item, Block) and (not keywords or item.keyword in keywords)
        ]

    def words(self):
        """What stands in the block itself."""
        return [item for item in self.items if not isinstance(item, Block)]

    def written(self):
        """The tokens of the whole block, from `/begin` to its name behind `/end`."""
        tokens = ["/begin", self.keyword]
        for item in self.items:
            tokens += item.written() if isinstance(item, Block) else [item]
        return tokens + ["/end", self.keyword]


def tokens_of(text):
    """(token, line) for each word and text."""
    line, counted = 1, 0
    for match in _TOKEN.finditer(text):
        line += text.count("\n", counted, match.start())
        counted = match.start()
        if match.lastgroup != "comment":
            yield match.group(), line


def parse(text):
    """The file as a block without a keyword."""
    stack = [Block("", [])]
    tokens = tokens_of(text)
    for token, line in tokens:
        if token == "/begin":
            block = Block(next(tokens)[0], [], line)
            stack[-1].items.append(block)
            stack.append(block)
        elif token == "/end":
            keyword = next(tokens)[0]
            if stack.pop().keyword != keyword or not stack:
                raise ValueError(f"line {line}: /end {keyword} closes another block")
        else:
            stack[-1].items.append(token)
    if len(stack) > 1:
        raise ValueError(f"the {stack[-1].keyword} of line {stack[-1].line} is not closed")
    return stack[0]


def modules(tree):
    return [module for project in tree.blocks("PROJECT") for module in project.blocks("MODULE")]


def number(token):
    """An integer as a description writes it: decimal or with 0x, and perhaps a sign."""
    return int(token, 16) if "0x" in token.lower() else int(token)
