#!/usr/bin/env python3
"""The terminal tour goes through, and leaves the demonstration as it was."""

import os
import subprocess
import sys
import unittest

from kvcli import PROGRAM, SOURCE, CliTest


class Tour(CliTest):
    def tour(self, *arguments):
        return subprocess.run([SOURCE / "tools/tour.sh", *arguments], env={**os.environ, "TMPDIR": str(self.temp)},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def test_tour(self):
        self.demo()
        before = {f: f.read_bytes() for f in self.folder.iterdir() if f.is_file()}
        done = self.tour(PROGRAM, str(self.folder))
        self.assertEqual(done.returncode, 0, done.stdout)
        for command in ("list", "tree", "show", "set", "export", "tags", "constants", "check", "rpc"):
            self.assertRegex(done.stdout, rf"(?m)^\$ .*kvdesign (--lax )?{command}")
        self.assertIn("riga 2: Valore sconosciuto per il parametro AUTOMATIC=(FORSE)\n(exit code 1)\n", done.stdout)
        self.assertIn("\nEND IMPORT\n", done.stdout)
        self.assertEqual({f: f.read_bytes() for f in self.folder.iterdir() if f.is_file()}, before)
        self.assertEqual(list(self.temp.iterdir()), [])

    def test_wrong_arguments(self):
        for arguments in ((), (PROGRAM,), (PROGRAM, str(self.folder)), ("/there/is/none", str(self.folder))):
            self.assertEqual(self.tour(*arguments).returncode, 2)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
