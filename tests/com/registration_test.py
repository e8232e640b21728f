#!/usr/bin/env python3
"""Registration of KvDesSvr.dll beside that of the file of the other width, under Wine. Needs a build for 64 bits, or a
Wine that runs programs of 32."""

import os
import shutil
import subprocess
import sys
import unittest

DLL = os.environ.get("KV_DLL", "")
WINE = os.environ.get("KV_WINE", "")
FOLDER = os.environ.get("KV_WINE_FOLDER", "")
CLASS = "{9FF03783-99CD-4405-8636-80AEDBE1E60E}"
OTHER = "/reg:32" if os.environ.get("KV_BITS", "64") == "64" else "/reg:64"


def run(*command):
    return subprocess.run([WINE, "run", FOLDER, *command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          stdin=subprocess.DEVNULL, timeout=120, check=False).returncode


def there(key, *flags):
    return run("reg", "query", "HKCR\\" + key, *flags) == 0


class Registration(unittest.TestCase):
    def setUp(self):
        self.addCleanup(run, "regsvr32", "/s", "/u", "Z:" + DLL)
        self.addCleanup(run, "reg", "delete", "HKCR\\CLSID\\" + CLASS, "/f", OTHER)

    def test_removal_leaves_what_the_other_width_needs(self):
        self.assertEqual(run("regsvr32", "/s", "Z:" + DLL), 0)
        # The file of the other width, so to speak: its class, and the program identifier that both have.
        self.assertEqual(run("reg", "add", "HKCR\\CLSID\\" + CLASS + "\\InprocServer32", "/ve", "/d", "X.dll", "/f",
                             OTHER), 0)
        self.assertEqual(run("regsvr32", "/s", "/u", "Z:" + DLL), 0)
        self.assertFalse(there("CLSID\\" + CLASS))
        self.assertTrue(there("CLSID\\" + CLASS, OTHER))
        self.assertTrue(there("vdbSvr.vdSvr\\CLSID"))
        # The last to go takes it away.
        self.assertEqual(run("reg", "delete", "HKCR\\CLSID\\" + CLASS, "/f", OTHER), 0)
        self.assertEqual(run("regsvr32", "/s", "/u", "Z:" + DLL), 0)
        self.assertFalse(there("vdbSvr.vdSvr"))


if __name__ == "__main__":
    if not (DLL and WINE and shutil.which("wine")):
        print("no Wine here: registration is left out")
        sys.exit(77)
    if run("regsvr32", "/s", "Z:" + DLL) == 3 and os.environ.get("KV_BITS") == "32":
        print("this Wine runs no program of 32 bits: registration is left out")
        sys.exit(77)
    unittest.main()
