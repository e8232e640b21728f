"""A short session with `kvdesign rpc`, as a client would hold it."""

import json
import os
import pathlib
import subprocess
import tempfile
import time
import unittest


class Session:
    """The program over one store; answers are read line by line."""

    def __init__(self, folder):
        self.process = subprocess.Popen(
            [os.environ["KVDESIGN"], "rpc", "--store", f"{folder}/store.kv", "--program-dir", folder, "--temp", folder],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")
        self.last_id = 0
        self.notices = []

    def call(self, method, **params):
        self.last_id += 1
        request = {"jsonrpc": "2.0", "id": self.last_id, "method": method, "params": params}
        self.process.stdin.write(json.dumps(request) + "\n")
        self.process.stdin.flush()
        while True:
            line = json.loads(self.process.stdout.readline())
            if "method" not in line:
                assert line["id"] == self.last_id, line
                return line
            self.notices.append((line["method"], line.get("params")))

    def result(self, method, **params):
        answer = self.call(method, **params)
        assert "result" in answer, answer
        return answer["result"]

    def end(self):
        out, err = self.process.communicate(timeout=20)
        return self.process.returncode, out, err


class RpcSession(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory(prefix="kvdesign-rpc-")
        self.addCleanup(holder.cleanup)
        self.folder = holder.name

    def test_open_edit_save_close(self):
        s = Session(self.folder)
        self.assertEqual(s.result("server/version"), {"CurrVersion": 256})
        self.assertEqual(s.result("registry/create", Clsid="MEMBER", Name="Niccolò"), {"Id": 1})
        nodes = s.result("open", Clsid="MEMBER", Name="Niccolò")["Nodes"]
        self.assertEqual([n["Text"] for n in nodes], ["Niccolò", "Parametri", "Parametri"])
        leaf = nodes[-1]["Key"]
        self.assertEqual(s.call("SaveData", CurrItem=leaf, Buffer="PASSWORD= x\r\nPIPPO=1")["error"], {
            "code": 20000, "message": "Parametro non riconosciuto: PIPPO=1",
            "data": {"Source": "diMember.SaveParm", "Number": 20000, "Line": 2}})
        self.assertEqual(s.result("SaveData", CurrItem=leaf, Buffer='PASSWORD= "però"'), {"NewItemKey": ""})
        shown = s.result("DispData", CurrItem=leaf)["Buffer"]
        self.assertTrue(shown.startswith('PASSWORD= "PERÒ"\r\n'), shown)
        self.assertEqual(s.result("Save"), {"Revision": 2})
        self.assertEqual(s.result("close"), {})
        self.assertEqual(s.notices, [("window/modified", {"Value": True}), ("window/modified", {"Value": False})])
        self.assertEqual(s.end(), (0, "", ""))

        s = Session(self.folder)
        leaf = s.result("open", Clsid="MEMBER", Name="Niccolò")["Nodes"][-1]["Key"]
        self.assertEqual(s.result("DispData", CurrItem=leaf)["Buffer"], shown)
        self.assertEqual(s.end(), (0, "", ""))

    def test_a_store_that_cannot_be_opened(self):
        store = pathlib.Path(self.folder, "store.kv")
        store.write_text("no store at all, but long enough to be looked at\n" * 100)
        s = Session(self.folder)
        code, out, err = s.end()
        self.assertEqual((code, out), (3, ""))
        self.assertEqual(err.count("\n"), 1, err)

    def test_a_round_takes_milliseconds(self):
        s = Session(self.folder)
        s.result("registry/create", Clsid="MEMBER", Name="A")
        best = 1.0
        for _ in range(5):
            start = time.perf_counter()
            leaf = s.result("open", Clsid="MEMBER", Name="A")["Nodes"][-1]["Key"]
            s.result("SaveData", CurrItem=leaf, Buffer="PASSWORD= x")
            s.result("Save")
            s.result("close")
            best = min(best, time.perf_counter() - start)
        self.assertEqual(s.end()[0], 0)
        self.assertLess(best, 0.1)


if __name__ == "__main__":
    unittest.main()
