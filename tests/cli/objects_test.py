#!/usr/bin/env python3
"""The commands on whole objects: list, new, delete, export, import, demo; the store that they work on."""

import json
import os
import sqlite3
import stat
import subprocess
import sys
import unittest

from kvcli import CliTest, run

CLASSES = ["ALIAS", "BROWSE", "CATALOGUE", "CATPROC", "COMMAND", "FILTER", "HELP", "IMPORT", "IMPORTPROC", "LOAN",
           "LOANCLIENT", "LOANMENU", "MAIL", "MAILGROUP", "MATER", "MEMBER", "MENU", "PROFILE", "QUERY", "REPOSITORY",
           "RETRIEVAL", "SETOPS", "SORT", "STEM", "STOPWORD", "STRINGTABLE", "TABLE", "VCLIENT", "WEBCLIENT",
           "WEBSERVER"]
# What a new object of a class lacks, in the words of its check.
LACKING = {
    "MAIL": "MAIL/X PARMS[1]: Non è stato specificato un PATH per la creazione della centrale postale.\n",
    "PROFILE": "PROFILE/X PARMS[1]: Non è stato specificato il nome di una TABLE.\n",
    "QUERY": "QUERY/X PARMS[1]: Non è stata specificata la tabella di destinazione.\n",
    "RETRIEVAL": "RETRIEVAL/X PARMS[1]: Non è stato specificato un PATH per la base di retrieval.\n",
    "WEBSERVER": "WEBSERVER/X PARMS[1]: BROWSEROWS= dev'essere un numero positivo.\n",
}


class Objects(CliTest):
    def test_a_new_object_is_listed_and_deleted(self):
        self.assertEqual(self.ok("list"), "")
        self.ok("new", "MEMBER", "ANNA", "--desc", "Prestito")
        self.ok("new", "MEMBER", "Niccolò Però")
        self.ok("new", "CATALOGUE", "ANNA")
        self.assertEqual(self.ok("list"),
                         "CATALOGUE  ANNA\n"
                         "MEMBER     ANNA          Prestito\n"
                         "MEMBER     Niccolò Però\n")
        self.assertEqual(self.ok("list", "MEMBER"), "MEMBER  ANNA          Prestito\nMEMBER  Niccolò Però\n")
        self.assertEqual(self.ok("list", "SORT"), "")
        self.ok("delete", "MEMBER", "ANNA")
        self.assertEqual(self.ok("list"), "CATALOGUE  ANNA\nMEMBER     Niccolò Però\n")

    def test_list_as_json(self):
        self.assertEqual(self.json("list"), [])
        self.ok("new", "SORT", "B", "--desc", "Città")
        self.ok("new", "FILTER", "A")
        self.assertEqual(self.json("list"), [
            {"Clsid": "FILTER", "Name": "A", "Id": 2, "Desc": "", "Version": 1, "UserList": "", "Revision": 1},
            {"Clsid": "SORT", "Name": "B", "Id": 1, "Desc": "Città", "Version": 1, "UserList": "", "Revision": 1}])
        self.assertEqual([e["Name"] for e in self.json("list", "SORT")], ["B"])

    def test_every_class_can_be_made_shown_and_exported(self):
        for word in CLASSES:
            self.ok("new", word, "X")
            self.assertTrue(self.ok("tree", word, "X").startswith("X  [ROOT]\n"))
            if word not in ("ALIAS", "STRINGTABLE"):  # they have no parameters
                self.assertIn("PARMS", self.ok("export", word, "X"))
            if word == "TABLE":  # a new one is an index without sort rules
                continue
            done = self.kv("check", word)
            self.assertEqual((done.out, done.err), (LACKING.get(word, ""), ""))
            self.assertEqual(done.code, 1 if done.out else 0)

    def test_what_is_not_there_is_refused(self):
        self.ok("new", "SORT", "A")
        for command in (["new"], ["delete"], ["tree"], ["show"], ["export"]):
            self.refused("Classe sconosciuta: PIPPO.", *command, "PIPPO", "A")
        self.refused("Classe sconosciuta: sort.", "new", "sort", "B")
        self.refused("Classe sconosciuta: PIPPO.", "list", "PIPPO")
        for command in (["delete"], ["tree"], ["show"], ["export"]):
            self.refused("Istanza sconosciuta: B.", *command, "SORT", "B")
        self.refused("Istanza sconosciuta: B.", "import", "SORT", "B", input="BEGIN SORT\r\n")
        self.refused("Istanza sconosciuta: a.", "delete", "SORT", "a")

    def test_a_name_that_is_taken_or_empty_is_refused(self):
        self.ok("new", "SORT", "A", "--desc", "la prima")
        self.refused("L'istanza esiste già.", "new", "SORT", "A", "--desc", "la seconda")
        self.assertEqual(self.ok("list"), "SORT  A  la prima\n")
        self.refused("Parametri errati.", "new", "SORT", "")

    def test_names_that_are_command_words_or_begin_with_a_dash(self):
        for name in ("list", "show", "-x", "--json"):
            self.ok("new", "SORT", "--", name)
        self.assertEqual([e["Name"] for e in self.json("list")], ["--json", "-x", "list", "show"])
        self.assertIn("NOMASK= FALSE", self.ok("show", "SORT", "show", "PARMS"))
        self.ok("delete", "SORT", "--", "-x")

    def test_what_a_list_shows_stays_on_its_line(self):
        self.ok("new", "SORT", "A", "--desc", "una\nriga\x1b[31m")
        self.assertEqual(self.ok("list"), "SORT  A  una riga [31m\n")
        self.assertEqual(self.json("list")[0]["Desc"], "una\nriga\x1b[31m")

    def test_export_keeps_its_line_ends(self):
        self.ok("new", "MEMBER", "ANNA")
        self.ok("set", "MEMBER", "ANNA", "PARMS", input='PASSWORD= "però"\n')
        done = self.kv("export", "MEMBER", "ANNA")
        self.assertEqual((done.code, done.err), (0, ""))
        self.assertEqual(done.bytes.decode("utf-8"),
                         '\tBEGIN PARMS\r\n\t\tPASSWORD= "PERÒ"\r\n\t\t\'[ID= 1]\r\n\t\t\'[NAME= ANNA]\r\n'
                         "\t\t'[VERSION= 1]\r\n\tEND PARMS\r\n")

    def test_import_into_a_class_that_takes_no_text_changes_nothing(self):
        self.ok("new", "CATALOGUE", "A")
        done = self.kv("import", "CATALOGUE", "A", input=self.kv("export", "CATALOGUE", "A").bytes)
        self.assertEqual((done.code, done.out), (0, ""), done)
        self.assertEqual(done.err, "kvdesign: nothing has changed: this class takes no exported text\n")
        self.assertEqual(self.revision("CATALOGUE", "A"), 1)


    def test_import_into_a_class_that_takes_text_saves_it(self):
        self.ok("new", "IMPORTPROC", "A")
        self.ok("new", "IMPORTPROC", "B")
        self.ok("add", "IMPORTPROC", "A", "FIELDS")
        self.ok("set", "IMPORTPROC", "A", "FIELDPARMS", "1", input="NAME= titolo\nTAG= 200\n")
        exported = self.kv("export", "IMPORTPROC", "A").bytes
        for end in (b"\r\n", b"\n"):
            self.ok("import", "IMPORTPROC", "B", input=exported.replace(b"\r\n", end))
        self.assertEqual(self.revision("IMPORTPROC", "B"), 3)
        self.assertIn('NAME= "TITOLO"\n', self.ok("show", "IMPORTPROC", "B", "FIELDPARMS", "1"))
        self.refused("Errore nei dati di import.", "import", "IMPORTPROC", "B", input="BEGIN TABLE\n")
        self.assertEqual(self.revision("IMPORTPROC", "B"), 3)


class Demo(CliTest):
    def test_demo_makes_an_installation_once(self):
        folder = self.folder / "demo"
        self.assertEqual(run("demo", folder).code, 0)
        self.assertEqual(sorted(f.name for f in folder.iterdir()), ["KVDSRT.TAB", "VELMIRA.INI", "kvdesign.db"])
        listed = json.loads(run("--store", folder / "kvdesign.db", "list", "--json").out)
        for word in CLASSES:
            self.assertIn(word, [e["Clsid"] for e in listed])
        done = run("--store", folder / "kvdesign.db", "check")
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))

        before = (folder / "kvdesign.db").read_bytes()
        again = run("demo", folder)
        self.assertEqual((again.code, again.out), (1, ""))
        self.assertIn("holds an installation already", again.err)
        self.assertEqual((folder / "kvdesign.db").read_bytes(), before)

    def test_folders_of_any_name(self):
        for locale in ("C", "C.UTF-8"):
            folder = self.folder / f"città € {locale}"
            done = run("demo", folder, env={"LC_ALL": locale})
            self.assertEqual((done.code, done.err), (0, ""), done)
            store = folder / "kvdesign.db"
            done = run("--store", store, "show", "SORT", "ITALIANO", "PARMS", "2", env={"LC_ALL": locale})
            self.assertEqual((done.code, done.err), (0, ""), done)
            done = run("--store", store, "clipboard", "--file", folder / "è.tmp", env={"LC_ALL": locale})
            self.assertEqual((done.code, done.err),
                             (3, f"Impossibile aprire il file temporaneo {folder / 'è.tmp'}\n"), done)

    def test_demo_that_fails_leaves_nothing(self):
        (self.folder / "file").write_text("x")
        before = sorted(self.folder.iterdir())
        self.failed("demo", self.folder / "file")
        self.failed("demo", self.folder / "file" / "demo")
        self.assertEqual(sorted(self.folder.iterdir()), before)


class Store(CliTest):
    def test_the_store_is_found(self):
        def listed(*arguments, **env):
            done = run(*arguments, "list", env=env)
            self.assertEqual((done.code, done.err), (0, ""), done)
            return done.out

        a, b, data = self.folder / "a.db", self.folder / "b.db", self.folder / "data"
        for store, name in ((a, "A"), (b, "B")):
            self.assertEqual(run("--store", store, "new", "SORT", name).code, 0)
        self.assertEqual(listed(KVDESIGN_STORE=str(a)), "SORT  A\n")
        self.assertEqual(listed("--store", b, KVDESIGN_STORE=str(a)), "SORT  B\n")
        self.assertEqual(listed(KVDESIGN_STORE="", XDG_DATA_HOME=str(data)), "")
        self.assertTrue((data / "kvdesign" / "kvdesign.db").is_file(), "its folder is made")
        self.assertEqual(listed(HOME=str(self.folder)), "")
        self.assertTrue((self.folder / ".local/share/kvdesign/kvdesign.db").is_file())

    def test_the_folder_of_a_store_that_was_named_is_not_made(self):
        done = run("--store", self.folder / "no" / "x.db", "list")
        self.assertEqual((done.code, done.out), (3, ""), done)
        self.assertFalse((self.folder / "no").exists())

    def test_the_sort_table_goes_into_the_program_folder(self):
        self.ok("new", "SORT", "A")
        self.ok("show", "SORT", "A", "PARMS", "2")
        self.assertTrue((self.folder / "KVDSRT.TAB").is_file(), "the folder of the store")
        other = self.folder / "programma"
        other.mkdir()
        (other / "KVDSRT.TAB").write_bytes(bytes(65 if c == 0x21 else 0 for c in range(256)))
        self.assertIn("\n21 = 41  [!] [A]\n", self.ok("show", "SORT", "A", "PARMS", "2", "--program-dir", other))

    def test_a_temporary_folder_that_is_not_there_troubles_those_who_need_it(self):
        self.ok("new", "SORT", "A")
        done = run("--store", self.store, "list", env={"TMPDIR": "/there/is/none"})
        self.assertEqual((done.code, done.out, done.err), (0, "SORT  A\n", ""))
        done = run("--store", self.store, "clipboard", env={"TMPDIR": "/there/is/none"})
        self.assertEqual((done.code, done.out), (3, ""))
        self.assertIn("/there/is/none", done.err)

    def test_a_file_that_is_no_store(self):
        self.store.write_bytes(b"non un registro, ma un testo lungo abbastanza per non essere vuoto" * 100)
        before = self.store.read_bytes()
        for command in (["list"], ["new", "SORT", "A"], ["show", "SORT", "A"], ["check"]):
            self.assertIn(str(self.store), self.failed(*command))
        self.assertEqual(self.store.read_bytes(), before)
        self.failed("--store", self.folder, "list")

    def test_a_damaged_store(self):
        self.demo()
        data = bytearray(self.store.read_bytes())
        for page in range(1, len(data) // 4096):
            data[page * 4096:page * 4096 + 512] = b"\xA5" * 512
        self.store.write_bytes(data)
        self.failed("list")
        self.failed("show", "SORT", "ITALIANO")
        self.store.write_bytes(data[:5000])
        self.failed("list")

    def test_a_newer_store(self):
        self.ok("new", "SORT", "A")
        with sqlite3.connect(self.store) as base:
            base.execute("PRAGMA user_version = 99")
        base.close()
        self.failed("list")

    def test_a_locked_store_is_told(self):
        self.ok("new", "SORT", "A")
        base = sqlite3.connect(self.store, isolation_level=None)
        self.addCleanup(base.close)
        base.execute("BEGIN EXCLUSIVE")
        self.failed("list")
        base.execute("ROLLBACK")
        self.assertEqual(self.ok("list"), "SORT  A\n")

    def test_a_read_only_store_can_be_read(self):
        self.demo()
        self.store.chmod(stat.S_IRUSR | stat.S_IRGRP | stat.S_IROTH)
        reader = {}
        if os.geteuid() == 0:  # nothing is read-only to root
            reader = {"user": 65534}
            self.folder.chmod(0o755)
            self.temp.chmod(0o777)
            try:
                can_run = self.kv("--version", **reader).code == 0
            except PermissionError:
                can_run = False
            if not can_run:
                self.skipTest("the program can't be run by another user from where it lies")
        else:
            self.folder.chmod(0o555)
            self.addCleanup(self.folder.chmod, 0o755)
        before = self.store.read_bytes()
        self.assertIn("SORT         ITALIANO", self.ok("list", **reader))
        self.assertIn("PASSWORD=", self.ok("show", "MEMBER", "BANCO", "PARMS", **reader))
        self.assertEqual(self.ok("check", **reader), "")
        for command in (["new", "SORT", "A"], ["delete", "MEMBER", "BANCO"], ["set", "MEMBER", "BANCO", "PARMS"],
                        ["add", "CATALOGUE", "GENERALE", "PARMS"]):
            self.failed(*command, input="PASSWORD= X\n", **reader)
        self.assertEqual(self.store.read_bytes(), before)


class Usage(CliTest):
    def test_without_arguments_it_tells_how_to_go_on(self):
        done = run()
        self.assertEqual((done.code, done.out), (2, ""))
        for word in ("kvdesign demo", "kvdesign --help"):
            self.assertIn(word, done.err)

    def test_help_teaches_every_command(self):
        done = run("--help")
        self.assertEqual((done.code, done.err), (0, ""))
        commands = ("list new delete uses tree show set edit add move remove export import check tags constants "
                    "clipboard demo rpc"
                    .split())
        for command in commands:
            self.assertRegex(done.out, rf"(?m)^  {command} ")
            page = run(command, "--help")
            self.assertEqual((page.code, page.err), (0, ""), page)
            self.assertRegex(page.out, rf"Example:\n  .*kvdesign {command}")
        for word in ("SECTION", "POS", "--store", "--program-dir", "--temp", "--lax", "--json", "--version",
                     "Exit codes"):
            self.assertIn(word, done.out)

    def test_version(self):
        for arguments in (["--version"], ["list", "--version"]):
            done = run(*arguments)
            self.assertEqual((done.code, done.err), (0, ""))
            self.assertRegex(done.out, r"\Akvdesign \d+\.\d+\.\d+\n\Z")

    def test_options_stand_before_or_behind_the_command(self):
        self.ok("new", "SORT", "A")
        before = run("--json", "--store", self.store, "list")
        behind = run("list", "--store", self.store, "--json")
        self.assertEqual(before.code, 0)
        self.assertEqual(before.out, behind.out)
        self.assertEqual(json.loads(before.out)[0]["Name"], "A")

    def test_wrong_usage(self):
        self.ok("new", "SORT", "A")
        self.assertIn("pippo", self.wrong("pippo"))
        for arguments in (["list", "SORT", "A", "B"], ["list", "--pippo"], ["new", "SORT"], ["new"], ["delete", "SORT"],
                          ["tree"], ["set", "SORT", "A"], ["show", "SORT", "A", "PARMS", "0"],
                          ["show", "SORT", "A", "PARMS", "-1"], ["show", "SORT", "A", "PARMS", "x"],
                          ["show", "SORT", "A", "PARMS", "99999999999"], ["move", "SORT", "A", "PARMS", "1"],
                          ["move", "SORT", "A", "PARMS", "1", "--up", "--down"], ["move", "SORT", "A", "PARMS", "--up"],
                          ["remove", "SORT", "A", "PARMS"], ["clipboard", "--index", "-1"],
                          ["clipboard", "--index", "x"], ["demo"], ["--store"], []):
            self.wrong(*arguments)
        self.assertEqual(self.ok("list"), "SORT  A\n")

    def test_arguments_must_be_utf_8(self):
        self.assertIn("UTF-8", self.wrong("new", "SORT", b"\xe0"))

    def test_an_output_that_takes_no_more(self):
        self.demo()
        with open("/dev/full", "wb") as full:
            done = subprocess.run([os.environ["KVDESIGN"], "--store", str(self.store), "list"], stdout=full,
                                  stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 3)
        self.assertIn(b"kvdesign: the output could not be written\n", done.stderr)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
