#!/usr/bin/env python3
"""The English texts of the desktop window: all there, none left over, and the same as the sources say."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

SOURCE = Path(os.environ["KV_SOURCE_DIR"])
FILE = SOURCE / "host" / "desktop" / "kvdesign_en.ts"


def messages(file):
    """(context, source, translation, its state) of each text."""
    for context in ElementTree.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            yield (context.findtext("name"), message.findtext("source"), translation.text or "",
                   translation.get("type", "finished"))


class Translations(unittest.TestCase):
    def test_every_text_is_translated(self):
        all_of_them = list(messages(FILE))
        self.assertGreater(len(all_of_them), 150)
        for context, source, translation, state in all_of_them:
            with self.subTest(context=context, source=source):
                self.assertEqual(state, "finished")
                self.assertNotEqual(translation.strip(), "")

    def test_places_keys_and_ends_agree(self):
        for context, source, translation, _ in messages(FILE):
            with self.subTest(context=context, source=source):
                for what in (r"%\d", r"&(?! )", r"\[\*\]", r"\n", r"[.:?]+$", r"\(\*.*\)$"):
                    self.assertEqual(sorted(re.findall(what, source)), sorted(re.findall(what, translation)))

    def test_the_sources_say_the_same(self):
        with tempfile.TemporaryDirectory() as folder:
            fresh = Path(folder) / "fresh.ts"
            fresh.write_bytes(FILE.read_bytes())
            made = subprocess.run([SOURCE / "tools" / "translations.sh", fresh], capture_output=True, text=True)
            if made.returncode == 77:
                self.skipTest(made.stderr.strip())
            self.assertEqual(made.returncode, 0, made.stderr)
            changed = set(messages(fresh)) ^ set(messages(FILE))
            self.assertEqual(changed, set(), "tools/translations.sh has not been run since a text changed")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[1:]])
