#!/usr/bin/env python3
"""kvdesign without a command: the overview, or the desktop window where there is one and a display."""

import shutil
import stat
import subprocess
import sys
import unittest
from pathlib import Path

import kvcli
from kvcli import CliTest, run

OVERVIEW = "kvdesign designs the configuration objects of a library installation"


class WithoutCommand(CliTest):
    def setUp(self):
        super().setUp()
        # A program of its own folder, so that what stands beside it is known.
        self.beside = self.folder / "bin"
        self.beside.mkdir()
        self.addCleanup(setattr, kvcli, "PROGRAM", kvcli.PROGRAM)
        kvcli.PROGRAM = shutil.copy(kvcli.PROGRAM, self.beside / "kvdesign")

    def desktop(self, text="#!/bin/sh\nprintf '%s\\n' desktop \"$@\"\n"):
        program = self.beside / "kvdesign-desktop"
        program.write_text(text)
        program.chmod(program.stat().st_mode | stat.S_IXUSR)

    def overview(self, *arguments, **more):
        done = run(*arguments, **more)
        self.assertEqual((done.code, done.out), (2, ""), done)
        self.assertTrue(done.err.startswith(OVERVIEW), done)
        self.assertNotIn("no desktop", done.err)
        self.assertIn("kvdesign --help", done.err)

    def test_without_a_display_the_overview_is_printed(self):
        self.desktop()
        self.overview()

    def test_options_alone_ask_for_the_window(self):
        self.desktop()
        self.assertIn("there is no command, and no desktop window to open\n", self.wrong())
        self.assertFalse(self.store.exists())

    def test_without_the_window_the_overview_is_printed(self):
        self.overview(env={"DISPLAY": ":0"})

    def test_with_a_display_the_window_is_opened_on_the_same_places(self):
        self.desktop()
        for variable in ("DISPLAY", "WAYLAND_DISPLAY"):
            done = run("--store", "a b.db", "--temp", "tmp", env={variable: "x"})
            self.assertEqual((done.code, done.out, done.err), (0, "desktop\n--store\na b.db\n--temp\ntmp\n", ""))
        self.assertEqual(run(env={"DISPLAY": ":0"}).out, "desktop\n")

    def test_a_window_that_cannot_be_started_is_told(self):
        self.desktop("#!/there/is/no/such/interpreter\n")
        done = run(env={"DISPLAY": ":0"})
        self.assertEqual((done.code, done.out), (3, ""), done)
        self.assertRegex(done.err, r"\Akvdesign: \S*kvdesign-desktop: [^\n]+\n\Z")

    def test_a_command_opens_no_window(self):
        self.desktop()
        self.assertEqual(self.ok("list", env={"DISPLAY": ":0"}), "")


class DesktopProgram(unittest.TestCase):
    """The program of the window, as far as it needs no display."""

    PROGRAM = Path(kvcli.PROGRAM).with_name("kvdesign-desktop")

    def setUp(self):
        if not self.PROGRAM.exists():
            self.skipTest("built without the desktop window")

    def run_it(self, *arguments):
        return subprocess.run([self.PROGRAM, *arguments], capture_output=True, text=True, timeout=60)

    def test_it_takes_the_options_of_the_places(self):
        told = self.run_it("--help")
        self.assertEqual((told.returncode, told.stderr), (0, ""))
        for option in ("--store", "--program-dir", "--temp"):
            self.assertIn(option, told.stdout)
        self.assertRegex(self.run_it("--version").stdout, r"\Akvdesign-desktop [0-9.]+\n\Z")

    def test_wrong_usage(self):
        told = self.run_it("--json")
        self.assertEqual((told.returncode, told.stdout), (2, ""))
        self.assertRegex(told.stderr, r"\Akvdesign: [^\n]+--json\n\Z")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
