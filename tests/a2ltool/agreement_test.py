#!/usr/bin/env python3
"""Compares what quillmark-a2l says about descriptions with what quillmark makes of them.

    agreement_test.py --program QUILLMARK --tool QUILLMARK_A2L --source DIRECTORY [FILE...]

Without files: all descriptions of the examples, the recorded runs and the fuzz targets, and *.a2l
in the directories that the variable QUILLMARK_DESCRIPTIONS names, separated by colons. For each,

- `check` and `convert` agree: whether it converts, and the first finding's kind, line and text;
- where it converts, `json` fits its schema, as a document and line by line, and its signals are
  those of the include file: as many, in the same order, with the same names, addresses and units;
- where it converts, `diff` finds no signal or conversion in which it differs from itself.

What `check` writes as JSON and as SARIF fits the schemas, too, and what `diff` writes of it and the
one before. Exit status 77 where Python lacks the module jsonschema.
"""

import argparse
import json
import os
import re
import resource
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import jsonschema
except ImportError:
    print("Skipped: Python has no module jsonschema.")
    sys.exit(77)

HERE = Path(__file__).resolve().parent
FINDING = re.compile(rb"^-: (Error|Warning) \(.*?:(\d+)\): (.*)", re.S)
FAILURE = re.compile(rb"^ERROR: (.*)")
LARGEST_FILE = 200_000_000
LONGEST_RUN = 60
MOST_ELEMENTS = 200_000
CUT = 300


def text_of(data):
    """Bytes of a description as the tool writes them: UTF-8 as it is, all else as Latin-1."""
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("latin-1")


def run(*command, **options):
    def limit_files():
        resource.setrlimit(resource.RLIMIT_FSIZE, (LARGEST_FILE, LARGEST_FILE))

    return subprocess.run(
        command, stdin=subprocess.DEVNULL, capture_output=True, timeout=LONGEST_RUN,
        preexec_fn=limit_files, check=False, **options,
    )


def first_finding(console):
    """Kind, line and text of the first finding that `convert` has printed, or None."""
    for line in console.split(b"\n"):
        match = FINDING.match(line)
        if match:
            return match[1].decode().lower(), int(match[2]), text_of(match[3])
        match = FAILURE.match(line)
        if match:
            return "error", 0, text_of(match[1])
    return None


def same_finding(found, expected):
    """Whether they are the same; the console's line is cut where it gets too long."""
    if found is None or expected is None:
        return found is expected
    return found[:2] == expected[:2] and (
        found[2] == expected[2] or len(found[2]) > CUT and found[2][:CUT] == expected[2][:CUT]
    )


def signals_of_include_file(path):
    """(name, address, unit) of each signal, for each station."""
    stations = []
    signal = None
    for line in path.read_bytes().split(b"\r\n"):
        if line == b"<signals>":
            stations.append([])
        elif line == b"<signal>":
            signal = {}
        elif line == b"</signal>":
            address = signal.get(b"mta")
            stations[-1].append((
                text_of(signal[b"name"]),
                None if address is None else int(address, 16),
                text_of(signal.get(b"unit", b"")),
            ))
            signal = None
        elif signal is not None:
            key, equals, value = line.partition(b"=")
            if equals:
                signal.setdefault(key, value)
    return stations


def elements_of(signal):
    """The elements of a signal as the include file has them: its name's ending, and how far behind
    the signal's address each lies, in elements. The first index runs fastest."""
    sizes = [size % 2**32 for size in signal.get("dimensions", [])]
    padded = sizes + [1] * (3 - len(sizes))
    for k in range(padded[2]):
        for j in range(padded[1]):
            for i in range(padded[0]):
                suffix = "".join(f"[{index}]" for index in (i, j, k)[: len(sizes)])
                plane = padded[0] * padded[1]
                if len(sizes) < 2:
                    offset = i
                elif signal.get("layout") == "ROW_DIR":
                    offset = i + j * padded[0] + k * plane
                else:
                    offset = j + i * padded[1] + k * plane
                yield suffix, offset


def signals_of_json(document):
    """The same as signals_of_include_file, from the document that the tool has written. The include
    file has all stations of CCP before those of XCP."""
    stations = []
    for project in document["projects"]:
        for module in project["modules"]:
            if "stationProtocol" not in module:
                continue
            found = []
            for signal in module["signals"]:
                if signal.get("kind") not in ("MEASUREMENT", "VALUE"):
                    continue
                size = int(signal["sizeBits"] / 8)
                for suffix, offset in elements_of(signal):
                    address = signal.get("address")
                    if address is not None:
                        address = (address + size * offset) % 2**32
                    found.append((signal["name"] + suffix, address, signal.get("unit", "")))
            stations.append((module["stationProtocol"], found))
    stations.sort(key=lambda station: station[0])
    return [found for _, found in stations]


def element_count(document):
    count = 0
    for project in document["projects"]:
        for module in project["modules"]:
            for signal in module["signals"]:
                product = 1
                for size in signal.get("dimensions", []):
                    product *= size % 2**32
                count += product
    return count


def object_of(members):
    """A JSON object, in which no name may stand twice."""
    result = dict(members)
    if len(result) != len(members):
        raise ValueError(f"a name stands twice among {[name for name, _ in members]}")
    return result


def validator_of(schema):
    return jsonschema.validators.validator_for(schema)(schema)


class Agreement:
    def __init__(self, program, tool, source, place):
        self.program, self.tool, self.place = program, tool, place
        self.versions = source / "examples/sigtrakVersions.xml"
        self.validators = {
            name: validator_of(json.loads(path.read_text(encoding="utf-8")))
            for name, path in {
                "description": source / "docs/description.schema.json",
                "check": source / "docs/check.schema.json",
                "diff": source / "docs/diff.schema.json",
                "sarif": HERE / "sarif-2.1.0-rtm.5.schema.json",
            }.items()
        }
        self.last = None
        self.problems = 0
        self.converted = 0

    def fail(self, path, message):
        self.problems += 1
        print(f"{path}: {message}")

    def validate(self, path, schema, text):
        """The document, if it fits its schema."""
        document = json.loads(text.decode("utf-8"), object_pairs_hook=object_of)
        for error in self.validators[schema].iter_errors(document):
            self.fail(path, f"{schema}: {error.message[:200]} at {list(error.absolute_path)}")
            break
        return document

    def look_at(self, path):
        (self.place / "sigtrakVersions.xml").write_bytes(self.versions.read_bytes())
        include_file = self.place / "out.cfginclude"
        include_file.unlink(missing_ok=True)
        listed = run(self.tool, "json", path)
        document = None
        if listed.returncode == 0:
            document = self.validate(path, "description", listed.stdout)
            if element_count(document) > MOST_ELEMENTS:
                print(f"{path}: passed over, its arrays are too large")
                return
        converted = run(self.program, "convert", path, include_file, cwd=self.place)
        self.compare_check(path, converted)
        if converted.returncode == 0:
            self.converted += 1
            self.compare_json(path, document, include_file)
            self.compare_diff(path)

    def compare_check(self, path, converted):
        checked = run(self.tool, "check", "--format=json", path)
        report = self.validate(path, "check", checked.stdout)["files"][0]
        if report["convertible"] != (converted.returncode == 0):
            self.fail(path, f"convert ends with {converted.returncode}, check says {report}")
        expected_status = 1 if report["findings"] else 0
        if checked.returncode != expected_status:
            self.fail(path, f"check ends with {checked.returncode}, not {expected_status}")
        strict = run(self.tool, "check", "--errors-only", path)
        if strict.returncode != converted.returncode:
            self.fail(path, f"check --errors-only ends with {strict.returncode}")
        found = None
        if report["findings"]:
            first = report["findings"][0]
            found = first["severity"], first.get("line", 0), first["text"]
        expected = first_finding(converted.stdout)
        if not same_finding(found, expected):
            self.fail(path, f"convert finds {expected}, check {found}")
        sarif = run(self.tool, "check", "--format=sarif", path)
        log = self.validate(path, "sarif", sarif.stdout)
        if len(log["runs"][0]["results"]) != len(report["findings"]):
            self.fail(path, "SARIF has another number of results")
        self.check_sarif(path, log["runs"][0])

    def check_sarif(self, path, log):
        """What the schema cannot say: rules by index, references of RFC 3986."""
        rules = log["tool"]["driver"]["rules"]
        for result in log["results"]:
            if "ruleIndex" in result and rules[result["ruleIndex"]]["id"] != result["ruleId"]:
                self.fail(path, f"SARIF has the rule {result['ruleId']} at another index")
            uri = result["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
            if not re.fullmatch(r"(file://)?([\w/.~!$&'()*+,;=:@-]|%[0-9A-F]{2})*", uri, re.ASCII):
                self.fail(path, f"SARIF has a place that is no URI: {uri}")

    def compare_json(self, path, document, include_file):
        if document is None:
            self.fail(path, "convert makes an include file, json nothing")
            return
        expected = signals_of_include_file(include_file)
        found = signals_of_json(document)
        if found != expected:
            self.fail(path, "json has other signals than the include file")
            for station, other in zip(expected, found):
                for pair in zip(station, other):
                    if pair[0] != pair[1]:
                        print("   ", *pair)
                        break
        lines = run(self.tool, "json", "--lines", path).stdout.splitlines()
        signals = 0
        for line in lines:
            signals += self.validate(path, "description", line)["type"] == "signal"
        if signals != sum(len(m["signals"]) for p in document["projects"] for m in p["modules"]):
            self.fail(path, "json --lines has another number of signals than the document")


    def compare_diff(self, path):
        itself = run(self.tool, "diff", "--ignore=incomparable,setting", path, path)
        if itself.returncode != 0:
            self.fail(path, f"diff finds that it differs from itself: {itself.stdout[:200]}")
        if self.last is not None:
            differences = run(self.tool, "diff", "--format=json", self.last, path)
            document = self.validate(path, "diff", differences.stdout)
            if differences.returncode != (1 if document["differences"] else 0):
                self.fail(path, f"diff ends with {differences.returncode}")
        self.last = path


def descriptions_of(source):
    """Each content once."""
    places = [(source, "examples/**/*.a2l"), (source, "tests/cli/**/*.a2l"),
              (source, "fuzz/corpus/reader/*")]
    for directory in os.environ.get("QUILLMARK_DESCRIPTIONS", "").split(":"):
        if directory:
            places.append((Path(directory), "**/*.a2l"))
    known = {}
    for directory, pattern in places:
        for path in sorted(directory.glob(pattern)):
            if path.is_file():
                known.setdefault(path.read_bytes(), path)
    return list(known.values())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--tool", type=Path, required=True)
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("files", nargs="*", type=Path)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as place:
        agreement = Agreement(arguments.program.resolve(), arguments.tool.resolve(),
                              arguments.source.resolve(), Path(place))
        files = arguments.files or descriptions_of(arguments.source)
        for path in files:
            try:
                agreement.look_at(path.resolve())
            except subprocess.TimeoutExpired:
                print(f"{path}: passed over, it takes too long")
    print(f"{len(files)} descriptions, {agreement.converted} of them convert,"
          f" {agreement.problems} problems")
    sys.exit(agreement.problems != 0 or not files)


if __name__ == "__main__":
    main()
