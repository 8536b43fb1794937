"""The second expansion itself, where the cases worked out on paper do not reach."""

import unittest

from structures.blocks import modules, parse
from structures.cases import make_text
from structures.comparison import Prepared, differences, signals_of
from structures.expansion import CannotExpand, Expansion
from structures.objects import sizes_of, values_of

TEXT = '''ASAP2_VERSION 1 71 /* one */ /begin PROJECT P "" /begin MODULE M ""
/begin TYPEDEF_MEASUREMENT V "a ""text""" UWORD NO_COMPU_METHOD 0 0 0 1 /end TYPEDEF_MEASUREMENT
/begin TYPEDEF_STRUCTURE T "" 4 /begin STRUCTURE_COMPONENT v V 2 MATRIX_DIM 2 1
  /end STRUCTURE_COMPONENT /end TYPEDEF_STRUCTURE // the end
/begin INSTANCE t "" T 0x10 /end INSTANCE
/end MODULE /end PROJECT
'''
EXPANDED = '''/begin PROJECT P "" /begin MODULE M ""
/begin MEASUREMENT t.v "a ""text""" UWORD NO_COMPU_METHOD 0 0 0 1.0 ECU_ADDRESS 18 MATRIX_DIM 2
/end MEASUREMENT /end MODULE /end PROJECT
'''


class ReadingTest(unittest.TestCase):
    def test_sizes(self):
        self.assertEqual(sizes_of(("2", "0x1", "1")), [2])
        self.assertEqual(sizes_of(("1", "3")), [1, 3])
        self.assertEqual(sizes_of(("4", "-1", "2")), [4])
        self.assertEqual(sizes_of(()), [])

    def test_a_block_that_is_not_closed(self):
        with self.assertRaises(ValueError):
            parse("/begin A /begin B /end B")
        with self.assertRaises(ValueError):
            parse("/begin A /end B")

    def test_single_values(self):
        one = Expansion(modules(parse(TEXT))[0]).objects[0]
        self.assertEqual(
            [value[:2] for value in values_of(one)], [("t.v[0]", 0x12), ("t.v[1]", 0x14)]
        )


class ComparisonTest(unittest.TestCase):
    def test_another_way_to_write_it_is_the_same(self):
        self.assertEqual(differences(TEXT, Prepared(0, EXPANDED, "")), [])

    def test_each_difference(self):
        for old, new in (
            ("18", "20"),
            ("t.v", "t.w"),
            ("MATRIX_DIM 2", ""),
            ("UWORD", "SWORD"),
            ("1.0", "1.5"),
            ('"a ', '"b '),
            ("/end MODULE", '/begin GROUP G "" /begin REF_MEASUREMENT x /end REF_MEASUREMENT'
             " /end GROUP /end MODULE"),
        ):  # fmt: skip
            changed = EXPANDED.replace(old, new, 1)
            self.assertNotEqual(differences(TEXT, Prepared(0, changed, "")), [], (old, new))
        self.assertNotEqual(differences(TEXT, Prepared(1, EXPANDED, "")), [])

    def test_losses_have_to_be_told(self):
        text = TEXT.replace("v V 2", "v V 2 ADDRESS_TYPE PLONG")
        nothing = '/begin PROJECT P "" /begin MODULE M "" /end MODULE /end PROJECT'
        self.assertEqual(differences(text, Prepared(1, nothing, "x:4: lost: t.v is a pointer")), [])
        self.assertNotEqual(differences(text, Prepared(1, nothing, "")), [])
        self.assertNotEqual(differences(text, Prepared(0, nothing, "")), [])

    def test_what_cannot_be_expanded_writes_nothing(self):
        text = TEXT.replace("V 2", "W 2")
        with self.assertRaises(CannotExpand):
            Expansion(modules(parse(text))[0])
        self.assertEqual(differences(text, Prepared(2, "", "")), [])
        self.assertNotEqual(differences(text, Prepared(2, EXPANDED, "")), [])
        self.assertNotEqual(differences(text, Prepared(0, "", "")), [])

    def test_signals_of_an_include_file(self):
        text = "<signal>\nname=a\nmta=0x10\nnum_bytes=2\n</signal>\n<signal>\nname=b\n"
        text += "num_bytes=1\nmta_ext=0x3\ncompumethod=c\n</signal>\n"
        self.assertEqual(signals_of(text), {"a": (16, 2, 0, ""), "b": (None, 1, 3, "c")})


class CasesTest(unittest.TestCase):
    def test_are_always_the_same(self):
        for number in range(1, 20):
            self.assertEqual(make_text("7", number), make_text("7", number))
        self.assertNotEqual(make_text("7", 1), make_text("8", 1))


if __name__ == "__main__":
    unittest.main()
