#!/usr/bin/env python3
"""The command check: every fault is one line, nothing stops it, nothing is saved."""

import json
import sqlite3
import sys
import unittest

from kvcli import CliTest


class Check(CliTest):
    def setUp(self):
        super().setUp()
        self.demo()

    def store_content(self, clsid, name, change):
        """Changes the stored content of an object behind the back of the program."""
        base = sqlite3.connect(self.store)
        [(text,)] = base.execute("SELECT Content FROM objects WHERE Clsid = ? AND Name = ?", (clsid, name)).fetchall()
        content = change(text)
        base.execute("UPDATE objects SET Content = ? WHERE Clsid = ? AND Name = ?", (content, clsid, name))
        base.commit()
        base.close()

    def store_value(self, clsid, name, value, word):
        def change(text):
            content = json.loads(text)
            content["Values"][value] = word
            return json.dumps(content)
        self.store_content(clsid, name, change)

    def faults(self, *arguments):
        done = self.kv("check", *arguments)
        self.assertEqual((done.code, done.err), (1, ""), done)
        return done.out.splitlines()

    def damage(self):
        # A line end in a value makes a line without "=" of what comes behind it.
        self.store_value("CATALOGUE", "GENERALE", "Path", "cataloghi\r\nresto")
        self.store_value("SORT", "CIFRE", "Table", "\0" * 0x41 + "!" + "\0" * 190)
        self.store_content("FILTER", "PUBBLICI", lambda text: "{")

    def test_sound_objects(self):
        before = self.store.read_bytes()
        self.assertEqual(self.ok("check"), "")
        self.assertEqual(self.ok("check", "SORT"), "")
        self.assertEqual(self.ok("check", "SORT", "CIFRE"), "")
        self.assertEqual(self.json("check"), [])
        self.assertEqual(self.store.read_bytes(), before)

    def test_every_fault_is_a_line_and_nothing_stops_it(self):
        self.damage()
        before = self.store.read_bytes()
        catalogue, filter_, sort = self.faults()
        self.assertEqual(catalogue, 'CATALOGUE/GENERALE PARMS[1]: Errore di sintassi: resto".')
        self.assertTrue(filter_.startswith("FILTER/PUBBLICI: "), filter_)
        self.assertEqual(sort, "SORT/CIFRE PARMS[2]: Il peso dev'essere equivalente al codice di un carattere "
                               "alfanumerico (30-39, 41-5A) o dello spazio (20) oppure nullo (00). (Carattere41.)")
        self.assertEqual(self.store.read_bytes(), before, "nothing is saved")

    def test_what_is_asked_for(self):
        self.damage()
        self.assertEqual(len(self.faults("SORT")), 1)
        self.assertEqual(len(self.faults("FILTER", "PUBBLICI")), 1)
        self.assertEqual(self.ok("check", "SORT", "ITALIANO"), "")
        self.assertEqual(self.ok("check", "MEMBER"), "")

    def test_as_json(self):
        self.damage()
        done = self.kv("--json", "check")
        self.assertEqual((done.code, done.err), (1, ""), done)
        catalogue, filter_, sort = json.loads(done.out)
        self.assertEqual(catalogue, {"Clsid": "CATALOGUE", "Name": "GENERALE", "Section": "PARMS", "Position": [1],
                                     "Number": 20018, "Source": "vDesignPar.GetFieldValue",
                                     "Message": 'Errore di sintassi: resto".', "Line": 7})
        self.assertEqual((filter_["Section"], filter_["Position"], filter_["Number"]), ("", [], 20000))
        self.assertEqual((sort["Position"], sort["Line"], sort["Source"]), ([2], 0x41 + 3, "diSort.SaveParm"))

    def test_an_object_of_a_class_that_this_program_does_not_have(self):
        base = sqlite3.connect(self.store)
        base.execute("UPDATE objects SET Clsid = 'PIPPO' WHERE Name = 'BANCO'")
        base.commit()
        base.close()
        self.assertEqual(self.faults(), ["PIPPO/BANCO: Metodo sconosciuto [PIPPO]"])
        self.assertEqual(self.faults("PIPPO"), ["PIPPO/BANCO: Metodo sconosciuto [PIPPO]"])
        self.refused("Metodo sconosciuto [PIPPO]", "show", "PIPPO", "BANCO")
        self.assertIn("PIPPO", self.ok("list", "PIPPO"))
        self.ok("delete", "PIPPO", "BANCO")

    def test_what_is_not_there(self):
        self.refused("Classe sconosciuta: PIPPO.", "check", "PIPPO")
        self.refused("Classe sconosciuta: PIPPO.", "check", "PIPPO", "A")
        self.refused("Istanza sconosciuta: A.", "check", "SORT", "A")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
