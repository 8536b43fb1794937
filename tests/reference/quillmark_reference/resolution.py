"""Binds the names of a description to what they stand for.

A name is looked for in the module that uses it. Where it is defined twice, the first definition
counts; where it is defined nowhere, the reference keeps its name and no target. That is no error
and nothing is told of it.
"""

from . import model


def resolve(root):
    for _, module in root.modules():
        _resolve_module(module)


def _resolve_module(module):
    conversions = _first_by_name(module.conversions)
    units = _first_by_name(module.units)
    layouts = _first_by_name(module.record_layouts)
    signals = _first_by_name(module.signals)
    functions = _first_by_name(module.functions)

    for conversion in module.conversions:
        _bind(conversion.table, conversions)
        if isinstance(conversion.unit, model.Reference):
            _bind(conversion.unit, units)
    for signal in module.signals:
        _bind(signal.record_layout, layouts)
        _bind(signal.conversion, conversions)
        signal.virtual_members = [signals.get(name) for name in signal.virtual_members]
    for group in module.functions + module.frames:
        group.members = [signals.get(name) or functions.get(name) for name in group.members]


def _first_by_name(objects):
    found = {}
    for candidate in objects:
        found.setdefault(candidate.name, candidate)
    return found


def _bind(reference, found):
    if reference is not None:
        reference.target = found.get(reference.name)
