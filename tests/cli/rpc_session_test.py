#!/usr/bin/env python3
"""A short session with `kvdesign rpc`, as a client would hold it."""

import sys
import time
import unittest

from kvcli import CliTest


class Sessions(CliTest):
    def test_open_edit_save_close(self):
        s = self.rpc()
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

        s = self.rpc()
        leaf = s.result("open", Clsid="MEMBER", Name="Niccolò")["Nodes"][-1]["Key"]
        self.assertEqual(s.result("DispData", CurrItem=leaf)["Buffer"], shown)
        self.assertEqual(s.end(), (0, "", ""))

    def test_a_store_that_cannot_be_opened(self):
        self.store.write_text("no store at all, but long enough to be looked at\n" * 100)
        s = self.rpc()
        code, out, err = s.end()
        self.assertEqual((code, out), (3, ""))
        self.assertEqual(err.count("\n"), 1, err)

    def test_a_round_takes_milliseconds(self):
        s = self.rpc()
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
    sys.exit(unittest.main(verbosity=2))
