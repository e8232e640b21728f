#!/usr/bin/env python3
"""KvDesSvr.dll registered, used by scripts, and removed again, under Wine. Needs a build for 64 bits, or a Wine that runs
programs of 32."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = os.environ["KV_SOURCE_DIR"]
DLL = os.environ.get("KV_DLL", "")
WINE = os.environ.get("KV_WINE", "")
FOLDER = os.environ.get("KV_WINE_FOLDER", "")
CLASS = "{9FF03783-99CD-4405-8636-80AEDBE1E60E}"
LIBRARY = "{F844831A-261D-4EDC-9DCA-C7382FB253F2}"


def run(*command, timeout=120):
    """A program under Wine: its code and what it said."""
    with tempfile.TemporaryFile() as said:
        code = subprocess.run([WINE, "run", FOLDER, *command], stdout=said, stderr=subprocess.DEVNULL,
                              stdin=subprocess.DEVNULL, timeout=timeout, check=False).returncode
        said.seek(0)
        return code, said.read().decode("cp1252", "replace").replace("\r", "")


def windows(path):
    return "Z:" + path


def keys(*path):
    """The lines of a registry key with all below it; none where it is not there."""
    code, said = run("reg", "query", "\\".join(("HKCR",) + path), "/s")
    return [line.strip() for line in said.splitlines() if line.strip()] if code == 0 else []


def interfaces():
    """The interfaces of the library, by their identifiers in the description."""
    with open(os.path.join(SOURCE, "com", "KvDesSvr.idl"), encoding="ascii") as file:
        return re.findall(r"\[object, uuid\(([-0-9A-F]+)\)", file.read())


class Component(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.addClassCleanup(run, "regsvr32", "/s", "/u", windows(DLL))

    def register(self):
        self.assertEqual(run("regsvr32", "/s", windows(DLL))[0], 0)

    def remove(self):
        self.assertEqual(run("regsvr32", "/s", "/u", windows(DLL))[0], 0)

    def test_registration_writes_what_is_told_and_removal_leaves_nothing(self):
        self.remove()
        places = [("CLSID", CLASS), ("TypeLib", LIBRARY), ("vdbSvr.vdSvr",)]
        places += [("Interface", "{" + uuid + "}") for uuid in interfaces()]
        self.assertGreater(len(places), 12)
        for place in places:
            self.assertEqual(keys(*place), [], place)
        for _ in range(2):  # a second time is as good
            self.register()
        said = "\n".join(keys("CLSID", CLASS))
        self.assertRegex(said, r"ThreadingModel\s+REG_SZ\s+Apartment")
        self.assertRegex(said, r"\(Default\)\s+REG_SZ\s+vdbSvr\.vdSvr")
        self.assertIn(LIBRARY, said)
        self.assertIn("KvDesSvr.dll", said)
        self.assertIn(CLASS, "\n".join(keys("vdbSvr.vdSvr", "CLSID")))
        for place in places:
            self.assertNotEqual(keys(*place), [], place)
        for _ in range(2):  # what is not there needs no removing
            self.remove()
        for place in places:
            self.assertEqual(keys(*place), [], place)

    def script(self, *path):
        """A script in the form in which a script is kept: lines that end with CR LF, one byte a letter."""
        with open(os.path.join(SOURCE, *path), encoding="ascii") as file:
            text = file.read()
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        copy = os.path.join(folder, path[-1])
        with open(copy, "w", encoding="ascii", newline="\r\n") as file:
            file.write(text)
        return run("cscript", "//nologo", windows(copy))

    def test_a_script_lives_the_whole_life(self):
        self.register()
        # A script that fails does so silently and with code 0: only its last line tells.
        self.assertEqual(self.script("tests", "com", "client.vbs"), (0, "DONE 0\n"))

    def test_plain_objects_of_a_script_are_a_host(self):
        self.register()
        self.assertEqual(self.script("tests", "com", "client.js"),
                         (0, "DONE false 1 BIBLIO 20000 diMember.SaveParm: Parametro non riconosciuto: PIPPO=1\n"))

    def test_the_example_script_opens_edits_and_saves(self):
        self.register()
        code, said = self.script("examples", "windows", "host.vbs")
        self.assertEqual(code, 0)
        self.assertIn("refused: Parametro non riconosciuto: PIPPO=1\n", said)
        self.assertIn("PASSWORD= \"BIBLIO\"", said)
        self.assertTrue(said.endswith("saved 1\n"), said)

    def test_the_example_program_opens_edits_and_saves(self):
        program = os.path.join(os.environ.get("KV_BUILD_DIR", ""), "tests", "windows_example.exe")
        if not os.path.exists(program):
            self.skipTest("the example is not built")
        self.register()
        code, said = run(program)
        self.assertEqual(code, 0, said)
        self.assertIn("refused: Parametro non riconosciuto: PIPPO=1\n", said)
        self.assertIn("PASSWORD= \"BIBLIO\"", said)
        self.assertTrue(said.endswith("saved 1\n"), said)

    def test_a_file_that_cannot_be_loaded_is_told(self):
        self.assertNotEqual(run("regsvr32", "/s", windows("/nowhere/KvDesSvr.dll"))[0], 0)


if __name__ == "__main__":
    if not (DLL and WINE and shutil.which("wine")):
        print("no Wine here: the component's tests are left out")
        sys.exit(77)
    if run("regsvr32", "/s", windows(DLL))[0] == 3 and os.environ.get("KV_BITS") == "32":
        print("this Wine runs no program of 32 bits: the component's tests are left out")
        sys.exit(77)
    unittest.main()
