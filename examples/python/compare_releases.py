"""Tells whether a logger that was set up for an old release can measure the new one, and which
signals and conversions changed. Ends with status 1 if something is in the way.

    compare_releases.py OLD NEW
"""

from __future__ import annotations

import sys

import quillmark


def main() -> int:
    old, new = (quillmark.read(path, texts=False) for path in sys.argv[1:3])
    differences = quillmark.compare(old, new)
    for difference in differences:
        values = f" ({difference.old} -> {difference.new})" if difference.what else ""
        print(f"{difference.level.value}: {difference.text}{values}")
    for change in quillmark.diff(old, new, ignore=["setting", "name"]):
        print(change)
    return any(d.level is quillmark.DifferenceLevel.ERROR for d in differences)


if __name__ == "__main__":
    sys.exit(main())
