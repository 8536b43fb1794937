#!/usr/bin/env python3
"""Compares the remedies that quillmark-a2l knows with what docs/messages.md says: each message about a
description stands in both, with the same words.

    remedies_test.py QUILLMARK_A2L PAGE
"""

import json
import re
import subprocess
import sys
from pathlib import Path

SECTIONS = (
    "Reading a description: errors",
    "Reading a description: warnings",
    "Interface blocks",
    "Writing the include file",
)
# Messages of the page that are no findings in a description, and a finding of the tool's own.
NO_FINDINGS = {"No output file generated.", "ERROR: Cannot open output file: %s"}
ONLY_OF_THE_TOOL = {"cannot be opened"}


def remedies_of_tool(program):
    """The rules of a SARIF log: level, message and remedy."""
    run = subprocess.run(
        [program, "check", "--format=sarif", "-"], stdin=subprocess.DEVNULL, capture_output=True, check=False
    )
    rules = json.loads(run.stdout)["runs"][0]["tool"]["driver"]["rules"]
    return {
        (rule["defaultConfiguration"]["level"], rule["shortDescription"]["text"], rule["help"]["text"])
        for rule in rules
        if rule["shortDescription"]["text"] not in ONLY_OF_THE_TOOL
    }


def remedies_of_page(page):
    remedies = set()
    section = ""
    for line in page.read_text(encoding="utf-8").split("\n"):
        if line.startswith("## "):
            section = line[3:]
        row = re.match(r"\| `(.*?)` \| (.*?) \|", line)
        if section in SECTIONS and row and row[1] not in NO_FINDINGS:
            level = "warning" if "warnings" in section or section == "Interface blocks" else "error"
            remedies.add((level, row[1].removeprefix("ERROR: "), row[2]))
    return remedies


def main():
    tool = remedies_of_tool(sys.argv[1])
    page = remedies_of_page(Path(sys.argv[2]))
    for each in sorted(page - tool):
        print("only in the page:", *each, sep="\n    ")
    for each in sorted(tool - page):
        print("only in the program:", *each, sep="\n    ")
    sys.exit(tool != page or not tool)


if __name__ == "__main__":
    main()
