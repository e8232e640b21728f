"""What the tests of the command share: one run of it, and a folder with a store for each test."""

import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["KVDESIGN"]
SOURCE = Path(os.environ["KV_SOURCE_DIR"])


class Done:
    """How a run ended."""

    def __init__(self, process):
        self.code = process.returncode
        self.bytes = process.stdout
        self.out = process.stdout.decode("utf-8")
        self.err = process.stderr.decode("utf-8")

    def __repr__(self):
        return f"exit {self.code}\n--- out\n{self.out}--- err\n{self.err}"


def run(*arguments, input=b"", env=None, **more):
    """Runs the command with exactly these arguments. Text for the input goes in as UTF-8."""
    if isinstance(input, str):
        input = input.encode("utf-8")
    clean = {k: v for k, v in os.environ.items()
             if k not in ("KVDESIGN_STORE", "XDG_DATA_HOME", "VISUAL", "EDITOR")}
    clean.update(env or {})
    process = subprocess.run([PROGRAM, *(a if isinstance(a, bytes) else str(a) for a in arguments)], input=input, env=clean, timeout=120,
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, **more)
    return Done(process)


class CliTest(unittest.TestCase):
    """A test with a folder of its own: the store `kvdesign.db`, and `tmp` for temporary files."""

    def setUp(self):
        holder = tempfile.TemporaryDirectory(prefix="kvcli-")
        self.addCleanup(holder.cleanup)
        self.folder = Path(holder.name)
        self.store = self.folder / "kvdesign.db"
        self.temp = self.folder / "tmp"
        self.temp.mkdir()

    def kv(self, *arguments, **more):
        return run("--store", self.store, "--temp", self.temp, *arguments, **more)

    def ok(self, *arguments, **more):
        """A run that must end well, without a word on stderr; answers its output."""
        done = self.kv(*arguments, **more)
        self.assertEqual((done.code, done.err), (0, ""), done)
        return done.out

    def refused(self, message, *arguments, **more):
        """A run that must be refused with exactly this message."""
        done = self.kv(*arguments, **more)
        self.assertEqual((done.code, done.err, done.out), (1, message + "\n", ""), done)

    def wrong(self, *arguments, **more):
        """A run that must be told to be wrong usage; answers what is told."""
        done = self.kv(*arguments, **more)
        self.assertEqual((done.code, done.out), (2, ""), done)
        self.assertTrue(done.err.startswith("kvdesign: "), done)
        return done.err

    def failed(self, *arguments, **more):
        """A run whose store or file must fail, with one sentence; answers it."""
        done = self.kv(*arguments, **more)
        self.assertEqual((done.code, done.out), (3, ""), done)
        self.assertRegex(done.err, r"\Akvdesign: [^\n]+\n\Z")
        return done.err[len("kvdesign: "):-1]

    def json(self, *arguments, **more):
        return json.loads(self.ok(*arguments, "--json", **more))

    def revision(self, clsid, name):
        return next(e["Revision"] for e in self.json("list", clsid) if e["Name"] == name)

    def demo(self):
        """The store becomes that of the demonstration, made once for all tests of a program."""
        global _demo
        if _demo is None:
            _demo = tempfile.TemporaryDirectory(prefix="kvcli-demo-")
            done = run("demo", Path(_demo.name) / "demo")
            self.assertEqual(done.code, 0, done)
        for file in (Path(_demo.name) / "demo").iterdir():
            shutil.copy(file, self.folder)

    def script(self, text):
        """A shell script; answers its path."""
        path = self.folder / f"script{len(list(self.folder.glob('script*')))}.sh"
        path.write_text("#!/bin/sh\n" + text)
        path.chmod(0o755)
        return path


_demo = None
