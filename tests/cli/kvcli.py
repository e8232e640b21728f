"""What the tests of the command share: one run of it, a session with its headless host, and a folder with a store for
each test."""

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
             if k not in ("KVDESIGN_STORE", "XDG_DATA_HOME", "VISUAL", "EDITOR", "DISPLAY", "WAYLAND_DISPLAY",
                          "QT_QPA_PLATFORM")}
    clean.update(env or {})
    process = subprocess.run([PROGRAM, *(a if isinstance(a, bytes) else str(a) for a in arguments)], input=input, env=clean, timeout=120,
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, **more)
    return Done(process)


class RpcSession:
    """A session with `kvdesign rpc` over one store; answers are read line by line. What the host asks on its way is
    answered by `answers`, a method word to a list of results that is used up from the front, and kept in `asked`."""

    def __init__(self, store, program_dir, temp):
        self.process = subprocess.Popen(
            [PROGRAM, "rpc", "--store", store, "--program-dir", program_dir, "--temp", temp],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")
        self.last_id = 0
        self.notices = []
        self.answers = {}
        self.asked = []

    def send(self, line):
        self.process.stdin.write(json.dumps(line) + "\n")
        self.process.stdin.flush()

    def call(self, method, **params):
        """The whole answer to a request."""
        self.last_id += 1
        self.send({"jsonrpc": "2.0", "id": self.last_id, "method": method, "params": params})
        while True:
            line = json.loads(self.process.stdout.readline())
            if "method" not in line:
                assert line["id"] == self.last_id, line
                return line
            if "id" not in line:
                self.notices.append((line["method"], line.get("params")))
                continue
            self.asked.append((line["method"], line["params"]))
            waiting = self.answers.get(line["method"])
            assert waiting, f"nobody expected {line}"
            self.send({"jsonrpc": "2.0", "id": line["id"], "result": waiting.pop(0)})

    def result(self, method, **params):
        """The result of a request, which must have one."""
        answer = self.call(method, **params)
        assert "result" in answer, answer
        return answer["result"]

    def error(self, method, **params):
        """The error of a request, which must have one."""
        answer = self.call(method, **params)
        assert "error" in answer, answer
        return answer["error"]

    def end(self):
        """Ends the session; answers the exit code and what was left to read."""
        out, err = self.process.communicate(timeout=20)
        return self.process.returncode, out, err


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

    def rpc(self):
        """A session on the store; it must be at its end, and have ended well, when the test is."""
        session = RpcSession(self.store, self.folder, self.temp)
        self.addCleanup(lambda: session.process.returncode is None and
                        self.assertEqual(session.end(), (0, "", "")))
        return session

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
