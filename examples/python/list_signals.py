"""Lists the signals of a description: name, address, type, unit.

    list_signals.py DESCRIPTION
"""

import sys

import quillmark


def type_of(signal: quillmark.Signal) -> str:
    if signal.base_type is None:
        return "?"
    sizes = "".join(f"[{size}]" for size in signal.dimensions)
    return f"{signal.base_type.value} {signal.size_bits}{sizes}"


def main() -> None:
    description = quillmark.read(sys.argv[1])
    for module in description.modules:
        print(f"{module.name}: {len(module.signals)} signals")
        for signal in module.signals:
            address = "-" if signal.address is None else f"0x{signal.address:08X}"
            print(f"  {signal.name:24} {address:10}  {type_of(signal):16} {signal.unit_text}")


if __name__ == "__main__":
    main()
