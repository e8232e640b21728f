#!/usr/bin/env python3
"""The commands that press a tool button: tags, constants. They never change the object."""

import os
import stat
import sys
import unittest

from kvcli import CliTest

NOT_SERVED = "Funzione non disponibile per questo oggetto."


class Tools(CliTest):
    def table(self, clsid, *fields):
        """An object A with these fields (name, tag)."""
        self.ok("new", clsid, "A")
        for place, (name, tag) in enumerate(fields, 1):
            self.ok("add", clsid, "A", "FIELDS")
            self.ok("--lax", "set", clsid, "A", "FIELDPARMS", place, input=f'NAME= "{name}"\nTAG= {tag}\n')

    def left_alone(self, *arguments):
        """Runs the command, which must leave the store as it is; answers how it ended."""
        before = self.store.read_bytes()
        done = self.kv(*arguments)
        self.assertEqual(self.store.read_bytes(), before)
        return done


class Tags(Tools):
    def test_runs_of_free_tags(self):
        for clsid in ("TABLE", "IMPORTPROC"):
            self.table(clsid, ("UNO", 1), ("DUE", 2), ("CINQUE", 5), ("SETTE", 7))
            done = self.left_alone("tags", clsid, "A")
            self.assertEqual((done.code, done.err), (0, ""), done)
            self.assertEqual(done.out, "3 - 4\n6\n8 - 32767\n")

    def test_runs_of_free_tags_of_a_profile(self):
        self.ok("new", "PROFILE", "A")
        for place, tag in enumerate((5, 1, 2, 7), 1):
            self.ok("add", "PROFILE", "A", "FIELDS")
            self.ok("set", "PROFILE", "A", "FIELDPARMS", place, input=f"TAG= {tag}\n")
        done = self.left_alone("tags", "PROFILE", "A")
        self.assertEqual((done.code, done.err), (0, ""), done)
        self.assertEqual(done.out, "3 - 4\n6\n8 - 32767\n")
        self.assertEqual(self.json("tags", "PROFILE", "A"), ["3 - 4", "6", "8 - 32767"])

    def test_an_object_without_fields(self):
        for clsid in ("TABLE", "PROFILE"):
            self.ok("new", clsid, "A")
            self.assertEqual(self.ok("tags", clsid, "A"), "1 - 32767\n")

    def test_as_json(self):
        self.table("TABLE", ("UNO", 1), ("TRE", 3))
        self.assertEqual(self.json("tags", "TABLE", "A"), ["2", "4 - 32767"])

    def test_the_greatest_tag(self):
        self.table("TABLE", ("UNO", 1), ("ULTIMO", 32767))
        self.assertEqual(self.ok("tags", "TABLE", "A"), "2 - 32766\n")

    def test_an_object_that_has_no_tags(self):
        for clsid in ("SORT", "STRINGTABLE", "VCLIENT", "WEBCLIENT", "RETRIEVAL"):
            self.ok("new", clsid, "A")
            self.refused(NOT_SERVED, "tags", clsid, "A")
            self.refused(NOT_SERVED, "--json", "tags", clsid, "A")

    def test_what_is_not_there(self):
        self.refused("Classe sconosciuta: PIPPO.", "tags", "PIPPO", "A")
        self.refused("Istanza sconosciuta: A.", "tags", "TABLE", "A")
        self.wrong("tags", "TABLE")


class Constants(Tools):
    def setUp(self):
        super().setUp()
        self.output = self.folder / "costanti.bas"

    def test_the_bytes_of_the_module(self):
        self.table("TABLE", ("NUMERO", 1), ("TITOLO PROPRIO", 12001), ("Responsabilità € 1", 7))
        before = self.revision("TABLE", "A")
        done = self.left_alone("constants", "TABLE", "A", "--output", self.output)
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))
        self.assertEqual(self.output.read_bytes(),
                         b"Public Const FTG_NUMERO=1\r\n"
                         b"Public Const FTG_TITOLO_PROPRIO=12001\r\n"
                         b"Public Const FTG_RESPONSABILIT\xc0_\x80_1=7\r\n")
        self.assertEqual(self.revision("TABLE", "A"), before)

    def test_a_table_without_fields_makes_an_empty_module(self):
        self.ok("new", "TABLE", "A")
        self.assertEqual(self.ok("constants", "TABLE", "A", "--output", self.output), "")
        self.assertEqual(self.output.read_bytes(), b"")

    def messages(self, *messages):
        """An application A with these system messages (name, texts by language)."""
        self.ok("new", "VCLIENT", "A")
        for place, (name, texts) in enumerate(messages, 1):
            self.ok("add", "VCLIENT", "A", "FIELDS")
            self.ok("set", "VCLIENT", "A", "FIELDPARMS", place, input=f'NAME= "{name}"\n')
            for at, (lang, text) in enumerate(texts, 1):
                self.ok("add", "VCLIENT", "A", "FIELDCAPTION", place)
                self.ok("set", "VCLIENT", "A", "FIELDCAPTION", place, at, input=f'TEXT= "{text}"\nLANG= {lang}\n')

    def test_the_bytes_of_the_module_of_an_application(self):
        self.messages(("UNO", [("eng", "One"), ("ita", "Città a 5 €")]), ("SENZA TESTI", []),
                      ("NON QUI", [("fre", "Pas ici")]))
        before = self.revision("VCLIENT", "A")
        done = self.left_alone("constants", "VCLIENT", "A", "--output", self.output)
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))
        self.assertEqual(self.output.read_bytes(),
                         b"'vdbApplication Messages\r\n"
                         b'Public Const MSG_UNO_ENG="One"\r\n'
                         b'Public Const MSG_UNO_ITA="Citt\xe0 a 5 \x80"\r\n'
                         b'Public Const MSG_NON_QUI_FRE="Pas ici"\r\n'
                         b'Public Const MSG_UNO_STR="UNO"\r\n'
                         b'Public Const MSG_SENZA_TESTI_STR="SENZA TESTI"\r\n'
                         b'Public Const MSG_NON_QUI_STR="NON QUI"\r\n'
                         b"Public Const MSG_UNO_COD=10000\r\n"
                         b"Public Const MSG_NON_QUI_COD=10002\r\n")
        self.assertEqual(self.revision("VCLIENT", "A"), before)

    def test_an_application_without_messages(self):
        self.messages()
        self.ok("constants", "VCLIENT", "A", "--output", self.output)
        self.assertEqual(self.output.read_bytes(), b"'vdbApplication Messages\r\n")

    def test_a_file_that_exists_is_replaced(self):
        self.table("TABLE", ("UNO", 1))
        self.output.write_bytes(b"' un modulo di prima\r\n" * 20)
        self.ok("constants", "TABLE", "A", "--output", self.output)
        self.assertEqual(self.output.read_bytes(), b"Public Const FTG_UNO=1\r\n")

    def test_a_path_of_any_name_and_one_from_here(self):
        self.table("TABLE", ("UNO", 1))
        self.ok("constants", "TABLE", "A", "--output", self.folder / "città € 1.bas")
        self.assertTrue((self.folder / "città € 1.bas").is_file())
        self.ok("constants", "TABLE", "A", "--output", "qui.bas", cwd=self.folder)
        self.assertTrue((self.folder / "qui.bas").is_file())

    def test_a_file_that_cannot_be_made(self):
        self.table("TABLE", ("UNO", 1))
        for output in (self.folder / "non-esiste" / "a.bas", self.folder, self.store / "a.bas"):
            self.refused(f"Impossibile creare il file {output}", "constants", "TABLE", "A", "--output", output)
        self.assertFalse((self.folder / "non-esiste").exists())

    @unittest.skipIf(os.geteuid() == 0, "nothing is read-only to root")
    def test_a_file_that_may_not_be_written(self):
        self.table("TABLE", ("UNO", 1))
        self.output.write_bytes(b"x")
        self.output.chmod(stat.S_IRUSR)
        self.refused(f"Impossibile creare il file {self.output}", "constants", "TABLE", "A", "--output", self.output)
        self.assertEqual(self.output.read_bytes(), b"x")

    def test_classes_without_the_tool_make_no_file(self):
        self.demo()
        for clsid, name in (("SORT", "ITALIANO"), ("IMPORTPROC", "NOTIZIE"), ("STRINGTABLE", "CATALOGO"),
                            ("PROFILE", "SCHEDA"), ("WEBCLIENT", "SALA"), ("RETRIEVAL", "BIBLIO"),
                            ("QUERY", "RICERCA"), ("BROWSE", "AUTORI"), ("WEBSERVER", "OPAC")):
            self.refused(NOT_SERVED, "constants", clsid, name, "--output", self.output)
        self.assertFalse(self.output.exists())

    def test_the_output_must_be_named(self):
        self.table("TABLE", ("UNO", 1))
        self.assertIn("--output", self.wrong("constants", "TABLE", "A"))
        self.assertIn("--output", self.wrong("constants", "TABLE", "A", "--output", ""))
        self.wrong("constants", "TABLE", "--output", self.output)
        self.assertFalse(self.output.exists())

    def test_the_store_is_not_written_over(self):
        self.table("TABLE", ("UNO", 1))
        before = self.store.read_bytes()
        self.assertIn("the store", self.wrong("constants", "TABLE", "A", "--output", self.store))
        self.assertEqual(self.store.read_bytes(), before)

    def test_the_demonstration(self):
        self.demo()
        self.ok("constants", "TABLE", "NOTIZIE", "--output", self.output)
        lines = self.output.read_bytes().decode("cp1252").split("\r\n")
        self.assertEqual(lines.pop(), "")
        self.assertEqual(lines[0], "Public Const FTG_NUMERO=1")
        self.assertIn("Public Const FTG_TITOLO_PROPRIO=12001", lines)
        self.assertEqual(len(lines), len(set(lines)))
        taken = {int(line.rsplit("=", 1)[1]) for line in lines}
        free = set()
        for run in self.ok("tags", "TABLE", "NOTIZIE").splitlines():
            first, _, last = run.partition(" - ")
            free |= set(range(int(first), int(last or first) + 1))
        self.assertEqual(taken | free, set(range(1, 32768)))
        self.assertFalse(taken & free)

    def test_the_application_of_the_demonstration(self):
        self.demo()
        self.ok("constants", "VCLIENT", "LETTORI", "--output", self.output)
        lines = self.output.read_bytes().decode("cp1252").split("\r\n")
        self.assertEqual(lines.pop(), "")
        self.assertEqual(len(lines), 1 + 12 * 5 + 12 + 12)
        self.assertEqual(lines[1], 'Public Const MSG_APERTURA_ITA="Apertura del catalogo in corso"')
        self.assertEqual(lines[-1], "Public Const MSG_RICHIESTA_INVIATA_COD=10011")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
