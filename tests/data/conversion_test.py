"""What cannot stand in a section's text is treated as told: on rows made up for it, so without the data folder."""

import unittest
from collections import Counter

import realdata


class Conversion(unittest.TestCase):
    def setUp(self):
        self.counts = Counter()

    def pairs(self, *pairs):
        return realdata.word_pairs(pairs, self.counts)

    def test_the_separator_is_one_that_no_word_holds(self):
        self.assertEqual(self.pairs(("a", "b=c")), ("=", [("a", "b=c")]))
        self.assertEqual(self.pairs(("a=", "b"))[0], "->")
        self.assertEqual(self.pairs(("a=", "b"), ("->", "b"))[0], "=>")
        with self.assertRaises(ValueError):
            self.pairs(*((word, "") for word in realdata.SEPARATORS))

    def test_quotes_inside_stay(self):
        self.assertEqual(self.pairs(('il "lo"', '"'))[1], [('il "lo"', '"')])
        self.assertEqual(self.counts["pairs with quotes inside, kept"], 1)

    def test_what_parts_words_or_lines_is_dropped_or_adapted(self):
        self.assertEqual(self.pairs(("", "a"), ("a\tb", "c"), ("a\r\nb", "c"), ("d", "e\tf\r\ng\0h"))[1],
                         [("d", "e f g h")])
        self.assertEqual(self.counts, {"empty words dropped": 1,
                                       "words with a tab, a line end or code 0 dropped": 2,
                                       "replacements with a tab, a line end or code 0 adapted": 1})

    def test_a_word_told_twice_keeps_both_replacements(self):
        self.assertEqual(self.pairs(("a", "b"), ("A", "x"), ("a", "c"))[1], [("a", "b;c"), ("A", "x")])
        self.assertEqual(self.counts["replacements joined to an earlier one of the same word"], 1)

    def test_names_are_folded_and_unique(self):
        taken = set()
        names = [realdata.unique(name, taken, self.counts) for name in ("più", "PIÙ", "Più", "ß\u00b5ÿ\u0101")]
        self.assertEqual(names, ["PIÙ", "PIÙ (2)", "PIÙ (3)", "ß\u00b5\u0178\u0101"])
        self.assertEqual(self.counts["names numbered to be unique"], 2)

    def test_messages(self):
        row = {"domain": "d", "name": "n", "it": "a\nb", "en": "c\r\nd\re", "fr": "", "de": 'x "y"', "es": ""}
        empty = dict.fromkeys(row, "")
        self.assertEqual(realdata.messages([row, empty], self.counts),
                         [("D.N", [("a\nb", "ITA"), ("c\nd e", "ENG"), ('x "y"', "DEU")])])
        self.assertEqual(self.counts["messages without a text dropped"], 1)
        self.assertEqual(self.counts["languages without a text left out"], 2)

    def test_fields_stand_in_groups(self):
        tags = [{"tag": "010", "name": "uno", "repeatable": "1", "mandatory": "0"},
                {"tag": "020", "name": "due", "repeatable": "0", "mandatory": "1"}]
        subs = [{"tag": "020", "subfield": c, "name": "x", "repeatable": "0", "mandatory": "0", "hidden": "-5"}
                for c in "aA"] + [{"tag": "030", "subfield": "a", "name": "y", "repeatable": "0", "mandatory": "0"}]
        fields = realdata.table_fields(tags, subs, self.counts)
        self.assertEqual([(f["TAG"], f["NAME"], f["LEVEL"], f["GROUPTAG"], f["FLAGS"]) for f in fields], [
            (1, "010 UNO", 1, 1, ["REPEATABLE"]), (2, "020 DUE", 1, 2, ["MANDATORY"]),
            (3, "020$A X", 2, 2, ["HIDDEN"]), (4, "020$A X (2)", 2, 2, ["HIDDEN"])])
        self.assertEqual(self.counts["subfields without a tag, dropped"], 1)

    def test_cells(self):
        self.assertEqual(realdata.cell(r"a\nb\tc\\nd"), "a\nb\tc\\nd")


if __name__ == "__main__":
    unittest.main()
