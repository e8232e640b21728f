#!/usr/bin/env python3
"""The build is installed into an empty prefix; a second project finds it there, links it and runs."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["KV_SOURCE_DIR"])
BUILD = Path(os.environ["KV_BUILD_DIR"])


def cached(name):
    """A value of this build's own CMake cache."""
    text = (BUILD / "CMakeCache.txt").read_text()
    return re.search(rf"^{name}:\w+=(.*)$", text, re.MULTILINE).group(1)


CMAKE = cached("CMAKE_COMMAND")


class Package(unittest.TestCase):
    def must_run(self, *command):
        done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, errors="replace")
        self.assertEqual(done.returncode, 0, f"{command}\n{done.stdout}")
        return done.stdout

    def configure(self, folder, prefix, *options):
        return [CMAKE, "-S", str(SOURCE / "tests/package"), "-B", str(folder), "-G", cached("CMAKE_GENERATOR"),
                "-DCMAKE_PREFIX_PATH=" + str(prefix), "-DCMAKE_CXX_COMPILER=" + cached("CMAKE_CXX_COMPILER"),
                "-DCMAKE_CXX_FLAGS=" + cached("CMAKE_CXX_FLAGS"), "-DCMAKE_BUILD_TYPE=" + cached("CMAKE_BUILD_TYPE"),
                "-DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF", *options]

    def test_a_second_project_builds_against_the_installation(self):
        version = cached("CMAKE_PROJECT_VERSION")
        with tempfile.TemporaryDirectory() as folder:
            prefix, build = Path(folder) / "prefix", Path(folder) / "build"

            self.must_run(CMAKE, "--install", str(BUILD), "--prefix", str(prefix))
            # The headers that are installed are those of the core, all of them and no others.
            headers = prefix / "include" / "kvdesign"
            installed = {p.relative_to(headers).as_posix() for p in headers.rglob("*") if p.is_file()}
            core = ["resources", "frame", "records", "editor", "server", "window", "items/definitions",
                    "items/client", "items/navigation", "items/services"]
            stated = {f"{storey}/{p.name}" for storey in core for pattern in ("*.h", "*.inc")
                      for p in (SOURCE / storey).glob(pattern)}
            self.assertTrue(stated)
            self.assertEqual(installed, stated)

            # Nothing in the package leads back to this source or this build.
            for file in prefix.rglob("*.cmake"):
                text = file.read_text()
                self.assertNotIn(str(SOURCE), text, file)
                self.assertNotIn(str(BUILD), text, file)

            self.must_run(*self.configure(build, prefix))
            self.assertIn(str(prefix), re.search(r"^KvDesign_DIR:\w+=(.*)$", (build / "CMakeCache.txt").read_text(),
                                                 re.MULTILINE).group(1))
            self.must_run(CMAKE, "--build", str(build))
            self.assertIn(version, self.must_run(str(build / "package_test")))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
