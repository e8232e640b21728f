#!/usr/bin/env python3
"""The command uses, and the deletion of an object that others name."""

import sqlite3
import sys
import unittest

from kvcli import CliTest


class Uses(CliTest):
    def setUp(self):
        super().setUp()
        self.demo()

    def uses(self, *arguments):
        return self.ok("uses", *arguments).splitlines()

    def test_who_names_an_object(self):
        before = self.store.read_bytes()
        self.assertEqual(self.uses("MATER", "PAGINE"), ["PROFILE/SCHEDA PARMS[1]: MASTER= PAGINE"])
        self.assertEqual(self.uses("SORT", "RECENTI"), ["TABLE/DAT PARMS[1]: SORT= RECENTI"])
        self.assertEqual(self.uses("PROFILE", "SCHEDARAGAZZI"), ["BROWSE/COPERTINE PARMS[1]: PROFILE= SCHEDARAGAZZI",
                                                                 "CATALOGUE/RAGAZZI PARMS[1]: PROFILE= SCHEDARAGAZZI"])
        self.assertEqual(self.uses("TABLE", "STATO"), ["BROWSE/COPERTINE FILTER[1]: TABLE= STATO",
                                                       "BROWSE/TITOLI FILTER[1]: TABLE= STATO",
                                                       "FILTER/DISPONIBILI PARMS[1]: TABLE= STATO",
                                                       "TABLE/NOTIZIE FIELDPARMS[71]: VALIDATIONTABLE= STATO"])
        self.assertEqual(self.uses("MENU", "PRINCIPALE"), ["MENU/MENURAGAZZI PARMS[1]: MIRROROF= PRINCIPALE",
                                                           "VCLIENT/LETTORI PARMS[1]: STARTOBJECT= PRINCIPALE"])
        self.assertEqual(self.store.read_bytes(), before, "nothing is saved")

    def test_an_object_that_nobody_names(self):
        self.assertEqual(self.uses("MEMBER", "BANCO"), [])
        self.assertEqual(self.uses("CATALOGUE", "EMEROTECA"), [])
        self.assertEqual(self.json("uses", "MEMBER", "BANCO"), [])

    def test_as_json(self):
        self.assertEqual(self.json("uses", "STOPWORD", "SIGLE"), [
            {"Clsid": "QUERY", "Name": "AVANZATA", "Section": "FIELDPARMS", "Position": [4], "Line": 2,
             "Keyword": "STOPWORD=", "Reference": "SIGLE"},
            {"Clsid": "STEM", "Name": "TITOLO", "Section": "FIELDPARMS", "Position": [3], "Line": 3,
             "Keyword": "STOPWORD=", "Reference": "SIGLE"}])

    def test_what_is_not_there(self):
        self.refused("Classe sconosciuta: PIPPO.", "uses", "PIPPO", "A")
        self.refused("Istanza sconosciuta: recenti.", "uses", "SORT", "recenti")
        for arguments in (["uses"], ["uses", "SORT"], ["uses", "SORT", "RECENTI", "A"]):
            self.wrong(*arguments)

    def test_an_object_that_cannot_be_read_is_passed_over_and_can_be_asked_for(self):
        base = sqlite3.connect(self.store)
        base.execute("UPDATE objects SET Content = '{' WHERE Name IN ('COPERTINE', 'SCHEDARAGAZZI')")
        base.commit()
        base.close()
        self.assertEqual(self.uses("PROFILE", "SCHEDARAGAZZI"),
                         ["CATALOGUE/RAGAZZI PARMS[1]: PROFILE= SCHEDARAGAZZI"])

    def test_what_is_named_is_deleted_by_force_only(self):
        before = self.store.read_bytes()
        self.refused("L'istanza RECENTI è in uso; si elimina con --force.\nTABLE/DAT PARMS[1]: SORT= RECENTI",
                     "delete", "SORT", "RECENTI")
        self.assertEqual(self.store.read_bytes(), before)
        self.ok("delete", "SORT", "RECENTI", "--force")
        self.refused("Istanza sconosciuta: RECENTI.", "uses", "SORT", "RECENTI")
        self.refused("Istanza sconosciuta: RECENTI.", "delete", "SORT", "RECENTI")
        self.refused("Istanza sconosciuta: RECENTI.", "delete", "--force", "SORT", "RECENTI")

    def test_what_nobody_else_names_needs_no_force(self):
        self.ok("delete", "MEMBER", "BANCO")
        self.ok("delete", "CATALOGUE", "EMEROTECA")
        self.ok("new", "WEBCLIENT", "A")
        self.ok("set", "WEBCLIENT", "A", "PARMS", input='MIRROROF= "A"\n')
        self.assertEqual(self.uses("WEBCLIENT", "A"), ["WEBCLIENT/A PARMS[1]: MIRROROF= A"])
        self.ok("delete", "WEBCLIENT", "A")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
