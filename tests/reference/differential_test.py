"""The differential itself: that it sees every difference but the time, and makes cases small."""

import dataclasses
import io
import tarfile
import unittest

from generator.cases import Case, File, make_case
from harness.observation import Observation, differences
from harness.shrinking import shrunk

_NOW = 1_600_000_000


def _observed(**left):
    return Observation(_NOW, _NOW + 1, **left)


def _file(data, mode=0o644):
    return {"out": (mode, data)}


def _archive(modified, data=b"x", name="notes.txt", **form):
    stream = io.BytesIO()
    with tarfile.open(fileobj=stream, mode="w", **form) as archive:
        entry = tarfile.TarInfo(name)
        entry.mtime, entry.size = modified, len(data)
        archive.addfile(entry, io.BytesIO(data))
    return stream.getvalue()


class MakeCase(unittest.TestCase):
    def test_is_always_the_same(self):
        for number in range(1, 40):
            self.assertEqual(make_case("7", number), make_case("7", number))

    def test_is_another_for_another_number_or_seed(self):
        self.assertNotEqual(make_case("7", 1), make_case("7", 2))
        self.assertNotEqual(make_case("7", 1), make_case("8", 1))


class Differences(unittest.TestCase):
    def test_none(self):
        left = {"stdout": b"Done.\n", "statuses": (0,), "files": _file(b"a\r\n")}
        self.assertEqual(differences(_observed(**left), _observed(**left)), {})

    def test_each_aspect(self):
        nothing = _observed()
        for left, name in (
            ({"stdout": b"x"}, "stdout"),
            ({"stderr": b"x"}, "stderr"),
            ({"statuses": (1,)}, "status"),
            ({"files": {"made": (None, None)}}, "directory made"),
        ):
            self.assertEqual(list(differences(_observed(**left), nothing)), [name])
        self.assertEqual(
            list(differences(_observed(files=_file(b"")), nothing)), ["file out", "mode of out"]
        )

    def test_bytes_and_permissions_of_files(self):
        old = _observed(files=_file(b"a\r\n"))
        self.assertEqual(list(differences(old, _observed(files=_file(b"a\n")))), ["file out"])
        self.assertEqual(
            list(differences(old, _observed(files=_file(b"a\r\n", 0o600)))), ["mode of out"]
        )

    def test_the_time_of_the_run_is_none(self):
        for first, second in (
            (b"cfg_generated_on=%d" % _NOW, b"cfg_generated_on=%d" % (_NOW + 1)),
            (
                b"#generated on 2020-09-13T12:26:40-00:00",
                b"#generated on 2020-09-13T12:26:41-00:00",
            ),
            (_archive(_NOW), _archive(_NOW + 1)),
        ):
            self.assertEqual(
                differences(_observed(files=_file(first)), _observed(files=_file(second))), {}
            )

    def test_another_time_is_one(self):
        for first, second in (
            (b"cfg_generated_on=%d" % _NOW, b"cfg_generated_on=%d" % (_NOW + 100)),
            (
                b"#generated on 2020-09-13T12:26:40-00:00",
                b"#generated on 2020-09-13T12:26:40+00:00",
            ),
            (_archive(_NOW - 1000), _archive(_NOW - 1001)),
            (_archive(_NOW, b"x"), _archive(_NOW, b"y")),
        ):
            self.assertNotEqual(
                differences(_observed(files=_file(first)), _observed(files=_file(second))), {}
            )


    def test_a_name_may_stand_in_either_header_of_an_entry(self):
        short = _archive(0, name="\xc3\xa4", format=tarfile.USTAR_FORMAT, encoding="latin-1")
        extended = _archive(0, name="\xe4", format=tarfile.PAX_FORMAT)
        self.assertEqual(
            differences(_observed(files=_file(short)), _observed(files=_file(extended))), {}
        )


class Shrunk(unittest.TestCase):
    def test_leaves_what_makes_the_difference(self):
        case = Case(
            "plain",
            {"ecu.a2l": File(b"a b\nc NEEDED d\ne f\n"), "notes.txt": File(b"x")},
            [],
            [["convert", "ecu.a2l", "-z"]],
        )

        def differs(candidate):
            file = candidate.files.get("ecu.a2l")
            return (
                file is not None and b"NEEDED" in file.data and "ecu.a2l" in candidate.commands[0]
            )

        small = shrunk(case, differs, 10)
        self.assertEqual(
            small,
            dataclasses.replace(
                case, files={"ecu.a2l": File(b" NEEDED")}, commands=[["convert", "ecu.a2l"]]
            ),
        )


if __name__ == "__main__":
    unittest.main()
