#!/usr/bin/env python3
"""The command uses, and the deletion of an object that others name."""

import json
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

    def damage(self, *names):
        base = sqlite3.connect(self.store)
        for name in names:
            base.execute("UPDATE objects SET Content = '{' WHERE Name = ?", (name,))
        base.commit()
        base.close()

    def test_an_object_that_cannot_be_read_is_passed_over_told_and_can_be_asked_for(self):
        self.damage("COPERTINE", "SCHEDARAGAZZI")
        trouble = "".join(f"kvdesign: {name} can't be read: what it names is not known\n"
                          for name in ("BROWSE/COPERTINE", "PROFILE/SCHEDARAGAZZI"))
        done = self.kv("uses", "PROFILE", "SCHEDARAGAZZI")
        self.assertEqual((done.code, done.out, done.err),
                         (0, "CATALOGUE/RAGAZZI PARMS[1]: PROFILE= SCHEDARAGAZZI\n", trouble), done)
        done = self.kv("--json", "uses", "PROFILE", "SCHEDARAGAZZI")
        self.assertEqual((done.code, len(json.loads(done.out)), done.err), (0, 1, trouble), done)
        self.assertEqual(self.uses("STOPWORD", "SIGLE"), [
            "QUERY/AVANZATA FIELDPARMS[4]: STOPWORD= SIGLE", "STEM/TITOLO FIELDPARMS[3]: STOPWORD= SIGLE"])

    def test_an_object_that_one_may_name_that_cannot_be_read_is_deleted_by_force_only(self):
        self.damage("COPERTINE")
        self.refused("L'istanza SCHEDARAGAZZI è in uso; si elimina con --force.\n"
                     "CATALOGUE/RAGAZZI PARMS[1]: PROFILE= SCHEDARAGAZZI\n"
                     "BROWSE/COPERTINE: istanza illeggibile", "delete", "PROFILE", "SCHEDARAGAZZI")
        self.ok("delete", "--force", "CATALOGUE", "RAGAZZI")
        self.refused("L'istanza SCHEDARAGAZZI potrebbe essere in uso; si elimina con --force.\n"
                     "BROWSE/COPERTINE: istanza illeggibile", "delete", "PROFILE", "SCHEDARAGAZZI")
        self.ok("delete", "--force", "PROFILE", "SCHEDARAGAZZI")

    def test_one_that_cannot_be_read_itself_and_those_that_cannot_name_it_hinder_nothing(self):
        self.damage("EMEROTECA", "COPERTINE")
        self.ok("delete", "CATALOGUE", "EMEROTECA")
        self.ok("delete", "MEMBER", "BANCO")

    def test_names_in_small_letters(self):
        self.ok("new", "HELP", "Guida")
        self.ok("new", "COMMAND", "ANNULLA")
        self.ok("--lax", "set", "COMMAND", "ANNULLA", "PARMS", input='HELP= "Guida"\n')
        self.assertEqual(self.ok("check", "HELP") + self.ok("check", "COMMAND"), "")
        self.assertEqual(self.uses("HELP", "Guida"), ["COMMAND/ANNULLA PARMS[1]: HELP= GUIDA"])
        self.refused("L'istanza Guida è in uso; si elimina con --force.\nCOMMAND/ANNULLA PARMS[1]: HELP= GUIDA",
                     "delete", "HELP", "Guida")

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
