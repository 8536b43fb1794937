#!/usr/bin/env python3
"""Pages that tell the truth pass check_page.py, and each kind of mistake makes it fail.

check_page_test.py PROGRAM SOURCE_DIRECTORY
"""

import contextlib
import io
import sys
import tempfile
import unittest
from pathlib import Path

from check_page import Page, matches, sections_of

PROGRAM, SOURCE = (Path(argument).resolve() for argument in sys.argv[1:3])

TRUE_PAGE = """
# Title

With `examples/first` the command

    $ quillmark convert fan.a2l fan.cfginclude
    VELTRA Quillmark 1.43
    ...
    Done.
    ...

writes `fan.cfginclude`:

    #fan.a2l created by: VELTRA Quillmark 1.43
    ...
    </sigtrak_include>

## Own files

[Above](#title) is something else; `docs/design.md` is a file. A description, `own.a2l`:

```
ASAP2_VERSION 1 60
```

    $ quillmark convert own.a2l \\
    >     own.cfginclude | sed -n 2p
    Latest sigTrak version: 2023.4.2
    $ value=3; (exit 4)
    $ echo $? $value
    4 3

| Message | Smallest input | |
|---|---|---|
| `Unexpected token '%s' found` | `M(x)` | |
| `Error: no valid output file specified.` | `convert a` | |
| `libraryVersion: %s` | `-l sigTrak=1.5.4` | |

| Message | Meaning |
|---|---|
| `ERROR: Cannot open input file: %s` | The file is missing. |

    scripts/test
"""


def passes(text):
    """Whether a page with this text passes."""
    with tempfile.TemporaryDirectory() as directory:
        path = Path(directory) / "page.md"
        path.write_text(text, encoding="utf-8")
        with contextlib.redirect_stdout(io.StringIO()):
            return Page(path, PROGRAM, SOURCE, limits=True).check()


class CheckPage(unittest.TestCase):
    def test_a_true_page_passes(self):
        self.assertTrue(passes(TRUE_PAGE))

    def test_each_mistake_is_found(self):
        mistakes = {
            "an output line": ("    Done.", "    Error."),
            "the file that was written": ("#fan.a2l", "#fun.a2l"),
            "the last line of it": ("</sigtrak_include>", "</sigtrak>"),
            "a line too much": ("    Done.\n    ...\n", "    Done.\n"),
            "an option": ("convert fan.a2l fan.cfginclude", "convert fan.a2l --out fan.cfginclude"),
            "a file of its own": ("ASAP2_VERSION 1 60", "A2ML_VERSION 1 60"),
            "an exit status": ("    4 3", "    1 3"),
            "the input of a message": ("`M(x)`", '`M(/begin MOD_PAR "" /end MOD_PAR)`'),
            "a message": ("no valid output file", "no valid input file"),
            "a message without an input": ("Cannot open input", "Cannot read input"),
            "a link": ("#title", "#tilte"),
            "the name of a file": ("docs/design.md", "docs/designs.md"),
            "a command that nothing runs": ("    scripts/test", "    scripts/no-such-script"),
        }
        for what, (true, false) in mistakes.items():
            with self.subTest(what):
                self.assertIn(true, TRUE_PAGE)
                self.assertFalse(passes(TRUE_PAGE.replace(true, false, 1)))

    def test_an_omission_stands_for_any_number_of_lines(self):
        for expected, actual in [
            (["..."], []),
            (["a", "..."], ["a"]),
            (["...", "b", "..."], ["a", "b", "c"]),
            (["a", "...", "a"], ["a", "a"]),
        ]:
            self.assertTrue(matches(expected, actual), (expected, actual))
        for expected, actual in [
            (["a"], ["a", "b"]),
            (["a", "...", "a"], ["a"]),
            (["...", "b", "..."], ["a", "c"]),
            (["...", "b", "...", "b"], ["a", "b"]),
        ]:
            self.assertFalse(matches(expected, actual), (expected, actual))

    def test_text_below_a_list_is_no_block(self):
        sections = sections_of("- a\n    b\n\n    c\n")
        self.assertEqual([block.lines for block in sections[0].blocks], [["c"]])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
