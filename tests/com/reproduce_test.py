#!/usr/bin/env python3
"""KvDesSvr.dll made anew from a copy of the sources, whole: in another folder for the sources and another for what is
made, by one compiler at a time and without a cache. The same bytes must come. It takes as long as the first making, so
it runs where the option KVDESIGN_REPRODUCE is on; what is quick of it resources_test.py does always."""

import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = os.environ["KV_SOURCE_DIR"]
BUILD = os.environ["KV_BUILD_DIR"]
DLL_PATH = os.environ["KV_DLL"]
PARTS = ("CMakeLists.txt", "cmake", "com", "editor", "frame", "items", "records", "resources", "server", "window")
# What the first making was told, and the second must be.
TOLD = ("CMAKE_BUILD_TYPE", "CMAKE_TOOLCHAIN_FILE", "CMAKE_CXX_FLAGS", "CMAKE_CXX_FLAGS_DEBUG", "CMAKE_CXX_FLAGS_RELEASE",
        "CMAKE_CXX_FLAGS_RELWITHDEBINFO", "CMAKE_CXX_FLAGS_MINSIZEREL", "KVDESIGN_WERROR")


def told():
    """Those settings of the first making, as arguments of CMake."""
    with open(os.path.join(BUILD, "CMakeCache.txt"), encoding="utf-8") as file:
        cache = dict(re.findall(r"^([A-Za-z_]+):\w+=(.*)$", file.read(), re.MULTILINE))
    return [f"-D{name}={cache[name]}" for name in TOLD if name in cache]


def digest(path):
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()


class WholeMaking(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="another-place-of-the-sources-")
        self.addCleanup(shutil.rmtree, self.folder)

    def run_quietly(self, *command):
        environment = dict(os.environ, CCACHE_DISABLE="1")
        done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        self.assertEqual(0, done.returncode, f"{command}\n{done.stdout[-4000:]}{done.stderr[-4000:]}")

    def test_it_gives_the_same_bytes(self):
        sources = os.path.join(self.folder, "s")
        made = os.path.join(self.folder, "what", "is", "made")
        os.mkdir(sources)
        for part in PARTS:
            copy = shutil.copytree if os.path.isdir(os.path.join(SOURCE, part)) else shutil.copy
            copy(os.path.join(SOURCE, part), os.path.join(sources, part))
        self.run_quietly("cmake", "-S", sources, "-B", made, "-G", "Ninja", "-DKVDESIGN_TESTS=OFF",
                         "-DKVDESIGN_INSTALL=OFF", "-DCMAKE_CXX_COMPILER_LAUNCHER=", *told())
        self.run_quietly("cmake", "--build", made, "-j1", "--target", "KvDesSvr")
        self.assertEqual(digest(DLL_PATH), digest(os.path.join(made, "KvDesSvr.dll")))


if __name__ == "__main__":
    if os.environ.get("KV_REPRODUCE") != "1":
        print("KVDESIGN_REPRODUCE is off: the component is not made whole a second time")
        sys.exit(77)
    unittest.main()
