"""What `prepare` made of a description, held against what its instances stand for."""

import dataclasses
import re

from structures.blocks import modules, number, parse
from structures.expansion import CannotExpand, Expansion
from structures.objects import bytes_of, lists_of, objects_of, values_of


@dataclasses.dataclass
class Prepared:
    """One run: its exit status, what it wrote, and its findings."""

    status: int
    text: str
    findings: str


def differences(text, prepared):
    """What is wrong with the preparation of a description, line by line."""
    try:
        expansion = Expansion(modules(parse(text))[0])
    except CannotExpand as reason:
        found = [] if prepared.status == 2 else [f"status {prepared.status}, but {reason}"]
        return found + (["something was written"] if prepared.text else [])
    expected = 1 if expansion.losses else 0
    if prepared.status != expected:
        return [f"status {prepared.status} instead of {expected}; lost: {expansion.losses}"]
    module = modules(parse(prepared.text))[0]
    return [
        *_different_values(expansion.objects, objects_of(module)),
        *_different_lists(expansion.lists, lists_of(module)),
        *_untold_losses(expansion.losses, prepared.findings),
    ]


def _different_values(expected, made):
    wanted = {value[0]: value[1:] for one in expected for value in values_of(one)}
    there = {value[0]: value[1:] for one in made for value in values_of(one)}
    found = [f"{name} is missing" for name in wanted if name not in there]
    found += [f"{name} is there" for name in there if name not in wanted]
    found += [
        f"{name}: {difference}"
        for name in wanted
        if name in there and (difference := _difference(there[name], wanted[name]))
    ]
    if not found and {one.name for one in expected} != {one.name for one in made}:
        found.append("arrays are not those that stay together")
    return found


def _difference(made, expected):
    """The innermost parts of two nested tuples that differ; empty if none does."""
    if isinstance(made, tuple) and isinstance(expected, tuple) and len(made) == len(expected):
        pairs = zip(made, expected, strict=True)
        return ", ".join(filter(None, (_difference(one, other) for one, other in pairs)))
    # Nobody knows what a THIS means that no component has.
    if made == expected or (isinstance(expected, str) and "THIS." in expected):
        return ""
    return f"{made} instead of {expected}"


def _different_lists(expected, made):
    if expected == made:
        return []
    return [f"lists of names are {made} instead of {expected}"]


def _untold_losses(losses, findings):
    """Losses that no finding names; that of an array tells those of its elements."""
    told = [line for line in findings.splitlines() if ": lost: " in line]
    return [
        f"the loss of {name} is not told"
        for name in losses
        if not any(name.split()[-1].partition("[")[0] in line for line in told)
    ]


def signals_of(include_file):
    """{name: (address, bytes, extension, conversion)} of the signals in an include file."""
    signals = {}
    for text in re.findall(r"<signal>\s(.*?)\s</signal>", include_file, re.DOTALL):
        values = dict(line.split("=", 1) for line in text.splitlines())
        signals[values["name"]] = (
            int(values["mta"], 16) if "mta" in values else None,
            int(values["num_bytes"]),
            int(values.get("mta_ext", "0"), 16),
            values.get("compumethod", ""),
        )
    return signals


def expected_signals(text):
    """The same, of the measurements that `convert` is to write for a description."""
    module = modules(parse(text))[0]
    signals = {}
    for one in Expansion(module).objects:
        if one.kind != "MEASUREMENT":
            continue
        size = bytes_of(one.fixed["datatype"])
        conversion = one.fixed["conversion"].replace("NO_COMPU_METHOD", "")
        extension = number(one.options.get("ECU_ADDRESS_EXTENSION", ("0",))[0])
        for name, address, _ in values_of(one):
            signals[name] = (address, size, extension, conversion)
    return signals
