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
        base.execute("UPDATE objects SET Clsid = 'PIPPO' WHERE Clsid = 'MEMBER' AND Name = 'BANCO'")
        base.commit()
        base.close()
        self.assertEqual(self.faults(), ["PIPPO/BANCO: Metodo sconosciuto [PIPPO]"])
        self.assertEqual(self.faults("PIPPO"), ["PIPPO/BANCO: Metodo sconosciuto [PIPPO]"])
        self.refused("Metodo sconosciuto [PIPPO]", "show", "PIPPO", "BANCO")
        self.assertIn("PIPPO", self.ok("list", "PIPPO"))
        self.ok("delete", "PIPPO", "BANCO")

    def test_every_section_of_lists_and_of_their_elements(self):
        self.ok("new", "PROFILE", "A")
        self.ok("new", "WEBCLIENT", "A")
        for section in "COMMANDS POPUPS TITLES RECHTML LOANHTML FORMATS LOANTABLES FIELDS HTML".split():
            self.ok("add", "PROFILE", "A", section)
        for section in "COMMANDTIPS FORMATCAPTION LOANTABLECAPTION FIELDCAPTION".split():
            self.ok("add", "PROFILE", "A", section, "1")
        self.ok("add", "WEBCLIENT", "A", "COMMANDS")
        self.ok("add", "WEBCLIENT", "A", "COMMANDTIPS", "1")
        self.ok("add", "WEBCLIENT", "A", "POPUPS")
        no_language = "Non è stato specificato un codice LANG valido."
        self.assertEqual(self.faults("PROFILE", "A"), [f"PROFILE/A {section}: {told}" for section, told in (
            ("PARMS[1]", "Non è stato specificato il nome di una TABLE."),
            ("COMMANDTIPS[1 1]", no_language), ("POPUPS[1]", no_language), ("TITLES[1]", no_language),
            ("RECHTML[1]", no_language), ("LOANHTML[1]", no_language),
            ("FORMATPARMS[1]", "Non è stato specificato il tipo di display."), ("FORMATCAPTION[1 1]", no_language),
            ("LOANTABLEPARMS[1]", "Non è stata specificata la natura."), ("LOANTABLECAPTION[1 1]", no_language),
            ("FIELDCAPTION[1 1]", no_language), ("HTML[1]", no_language))])
        self.assertEqual(self.faults("WEBCLIENT", "A"), [f"WEBCLIENT/A {section}: {no_language}"
                                                         for section in ("COMMANDTIPS[1 1]", "POPUPS[1]")])

    def test_every_section_of_forms_and_web_servers(self):
        no_language = "Non è stato specificato un codice LANG valido."
        not_alone = "Il nome del messaggio non è univoco."

        def faults(clsid, sections):
            self.ok("new", clsid, "A")
            for section in sections:
                self.ok("add", clsid, "A", *section.split())
            told = [line.removeprefix(f"{clsid}/A ").split(": ", 1) for line in self.faults(clsid, "A")]
            return [(place, message) for place, message in told if message != no_language], \
                [place for place, message in told if message == no_language]

        pages = ["TITLES", "HTML", "COMMANDS", "POPUPS"]
        for clsid in ("MENU", "HELP", "SETOPS"):
            self.assertEqual(faults(clsid, pages), ([], ["TITLES[1]", "HTML[1]", "COMMANDTIPS[1 1]", "POPUPS[1]"]))
        # The popups of a browse are buttons: they have no language. Neither has a filter.
        self.assertEqual(faults("BROWSE", [*pages, "FILTTITLES", "FILTMESSAGES", "FILTER"]),
                         ([], ["TITLES[1]", "COMMANDTIPS[1 1]", "FILTTITLES[1]", "FILTMESSAGES[1]", "HTML[1]"]))
        self.assertEqual(
            faults("QUERY", [*pages, "MESSAGE", "OPTIONMSG1", "OPTIONMSG2", "HTMLRES", "HTMLTEMPL", "HTMLRESTEMPL",
                             "FIELDS", "FIELDCAPTION 1", "CONSTANTS 1", "CONSTANTS 1", "CONSTANTCAPTION 1 1"]),
            ([("PARMS[1]", "Non è stata specificata la tabella di destinazione."),
              ("CONSTANTPARMS[1 1]", not_alone), ("CONSTANTPARMS[1 2]", not_alone)],
             ["TITLES[1]", "MESSAGE[1]", "OPTIONMSG1[1]", "OPTIONMSG2[1]", "HTML[1]", "HTMLRES[1]",
              "FIELDCAPTION[1 1]", "CONSTANTCAPTION[1 1 1]", "CONSTANTCAPTION[1 1 2]", "CONSTANTCAPTION[1 2 1]",
              "COMMANDTIPS[1 1]", "POPUPS[1]", "HTMLTEMPL[1]", "HTMLRESTEMPL[1]"]))
        templates = ["BROWSE", "ERRORS", "HISTORY", "HOME", "LOAN", "LOANREPORT", "QUERY", "QUERYRESULT", "RECORD"]
        self.assertEqual(
            faults("WEBSERVER", [*templates, "CONSTANTS", "MESSAGE", "MESSAGE"]),
            ([("PARMS[1]", "BROWSEROWS= dev'essere un numero positivo."),
              ("MESSAGEPARMS[1]", not_alone), ("MESSAGEPARMS[2]", not_alone)],
             ["BROWSE[1]", "CONSTANTCAPTION[1 1]", "ERRORS[1]", "HISTORY[1]", "HOME[1]", "LOAN[1]", "LOANREPORT[1]",
              "MESSAGECAPTION[1 1]", "MESSAGECAPTION[2 1]", "QUERY[1]", "QUERYRESULT[1]", "RECORD[1]"]))

    def set_parm(self, clsid, name, keyword, value, *section):
        """Gives one line of a section another value."""
        where = [clsid, name, *(section or ["PARMS"])]
        text = "".join(f'{keyword}= {value}\n' if line.startswith(f"{keyword}=") else f"{line}\n"
                       for line in self.ok("show", *where).splitlines())
        self.ok("set", *where, input=text)

    def test_a_dropped_object_is_missed(self):
        self.ok("delete", "--force", "HELP", "REGOLE")
        self.assertEqual(self.faults(), ["PROFILE/PRESTITO PARMS[1]: LOANTIPS= nomina un'istanza sconosciuta della "
                                         "classe HELP: REGOLE."])
        self.assertEqual(self.faults("PROFILE", "PRESTITO"), self.faults())
        self.assertEqual(self.ok("check", "PROFILE", "SCHEDA"), "")
        self.assertEqual(self.ok("check", "HELP"), "")
        self.ok("new", "HELP", "REGOLE")
        self.assertEqual(self.ok("check"), "")

    def test_a_misspelt_name(self):
        self.set_parm("QUERY", "RICERCA", "STOPWORD", '"ARTICOLO"', "FIELDPARMS", "2")
        self.set_parm("TABLE", "AUT", "SORT", '"ITALIANO","ITALIAN0"')
        self.set_parm("WEBCLIENT", "SALA", "MIRROROF", '"Internet"')
        self.set_parm("REPOSITORY", "FOTOGRAFIE", "KEYFIELD", '"INVENTARI"')
        self.assertEqual(self.faults(), [
            "QUERY/RICERCA FIELDPARMS[2]: STOPWORD= nomina un'istanza sconosciuta della classe STOPWORD: ARTICOLO.",
            "REPOSITORY/FOTOGRAFIE PARMS[1]: KEYFIELD= nomina un campo sconosciuto della tabella FOTOGRAFIE: "
            "INVENTARI.",
            "TABLE/AUT PARMS[1]: SORT= nomina un'istanza sconosciuta della classe SORT: ITALIAN0.",
            "WEBCLIENT/SALA PARMS[1]: MIRROROF= nomina un'istanza sconosciuta della classe WEBCLIENT: Internet."])

    def test_a_name_of_another_class(self):
        self.set_parm("CATALOGUE", "GENERALE", "QUERY", '"SCHEDA"')
        self.set_parm("TABLE", "NOTIZIE", "INDEX", '"LINGUE"')
        fault = ("CATALOGUE/GENERALE PARMS[1]: QUERY= nomina un'istanza della classe PROFILE e non della classe QUERY: "
                 "SCHEDA.")
        self.assertEqual(self.faults(), [
            fault, "TABLE/NOTIZIE PARMS[1]: INDEX= nomina una tabella che non è un indice: LINGUE."])
        self.assertEqual(self.faults("--lax", "CATALOGUE"), [fault])

    def test_references_as_json(self):
        self.set_parm("CATALOGUE", "GENERALE", "QUERY", '"SCHEDA"')
        self.set_parm("REPOSITORY", "FOTOGRAFIE", "KEYFIELD", '"INVENTARI"')
        done = self.kv("--json", "check")
        self.assertEqual((done.code, done.err), (1, ""), done)
        query, field = json.loads(done.out)
        self.assertEqual(query, {
            "Clsid": "CATALOGUE", "Name": "GENERALE", "Section": "PARMS", "Position": [1], "Number": 20000,
            "Source": "References.FaultOf",
            "Message": "QUERY= nomina un'istanza della classe PROFILE e non della classe QUERY: SCHEDA.", "Line": 4,
            "Keyword": "QUERY=", "Reference": "SCHEDA", "Wanted": "QUERY"})
        self.assertEqual((field["Keyword"], field["Reference"], field["Wanted"], field["Holder"]),
                         ("KEYFIELD=", "INVENTARI", "TABLE", "FOTOGRAFIE"))

    def test_references_of_a_text_with_a_fault(self):
        self.damage()
        self.ok("delete", "--force", "HELP", "AIUTOFILTRI")
        self.assertEqual([line for line in self.faults("CATALOGUE") + self.faults("FILTER") if "AIUTOFILTRI" in line],
                         [f"FILTER/{name} PARMS[1]: HELP= nomina un'istanza sconosciuta della classe HELP: "
                          "AIUTOFILTRI." for name in ("CITTÀ", "DISPONIBILI")])
        self.ok("delete", "--force", "HELP", "AIUTO")
        self.assertEqual(self.faults("CATALOGUE", "GENERALE"), [
            'CATALOGUE/GENERALE PARMS[1]: Errore di sintassi: resto".',
            "CATALOGUE/GENERALE PARMS[1]: HELP= nomina un'istanza sconosciuta della classe HELP: AIUTO."])

    def test_what_is_not_there(self):
        self.refused("Classe sconosciuta: PIPPO.", "check", "PIPPO")
        self.refused("Classe sconosciuta: PIPPO.", "check", "PIPPO", "A")
        self.refused("Istanza sconosciuta: A.", "check", "SORT", "A")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
