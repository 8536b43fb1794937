"""Tells whether a logger that was set up for an old release can measure the new one, and which
signals moved. Ends with status 1 if something is in the way.

    compare_releases.py OLD NEW
"""

from __future__ import annotations

import sys

import quillmark


def addresses(description: quillmark.Description) -> dict[str, int | None]:
    return {
        signal.name: signal.address for module in description.modules for signal in module.signals
    }


def main() -> int:
    old, new = (quillmark.read(path, texts=False) for path in sys.argv[1:3])
    differences = quillmark.compare(old, new)
    for difference in differences:
        values = f" ({difference.old} -> {difference.new})" if difference.what else ""
        print(f"{difference.level.value}: {difference.text}{values}")
    before, after = addresses(old), addresses(new)
    for name in before.keys() - after.keys():
        print(f"gone: {name}")
    moved = [name for name in before.keys() & after.keys() if before[name] != after[name]]
    print(f"{len(moved)} signals moved")
    return any(d.level is quillmark.DifferenceLevel.ERROR for d in differences)


if __name__ == "__main__":
    sys.exit(main())
