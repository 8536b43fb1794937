"""The exception of the package."""

from __future__ import annotations

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from ._quillmark import Finding


class Error(Exception):
    """What was asked for cannot be done, or not completely."""

    #: What was found until then, in the order in which it was found.
    findings: tuple[Finding, ...]

    def __init__(self, message: str, findings: tuple[Finding, ...] = ()) -> None:
        super().__init__(message)
        self.findings = findings
