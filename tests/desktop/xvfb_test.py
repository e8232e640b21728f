#!/usr/bin/env python3
"""The tests of the desktop window on a real screen server, where the windows are those that an operator gets."""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

program = Path(os.environ["KV_BUILD_DIR"]) / "tests" / "desktop_tests"
if not program.exists():
    print("skipped: the desktop window is not built")
    sys.exit(77)
for tool, package in (("xvfb-run", "xvfb"), ("xauth", "xauth")):
    if not shutil.which(tool):
        print(f"skipped: {tool} is not there (Debian: {package})")
        sys.exit(77)

environment = {**os.environ, "QT_QPA_PLATFORM": "xcb"}
# The keyboard's library copies letters that no NUL ends, with a bound; the strict checks of strings want the NUL.
environment["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":strict_string_checks=0"
with tempfile.TemporaryDirectory() as runtime:
    os.chmod(runtime, 0o700)
    environment["XDG_RUNTIME_DIR"] = runtime
    sys.exit(subprocess.run(["xvfb-run", "-a", "-s", "-screen 0 1600x1200x24", program, "--gtest_brief=1"],
                            env=environment).returncode)
