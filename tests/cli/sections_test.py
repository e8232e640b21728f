#!/usr/bin/env python3
"""The commands on the tree and the sections of an object: tree, show, set, edit, add, move, remove."""

import os
import re
import sqlite3
import sys
import unittest

from kvcli import CliTest

HEADER = "'[ID= 1]\n'[NAME= A]\n'[VERSION= 1]\n"
FILTER = ('TABLE= ""\nEXPRESSION= ""\nAUTOMATIC= FALSE\nMERGEWITH= AND\nHELP= ""\nFLAGS= NONE\nMIRROROF= ""\n'
          + HEADER)


class Tree(CliTest):
    def test_tree(self):
        self.ok("new", "SORT", "Città")
        self.assertEqual(self.ok("tree", "SORT", "Città"),
                         "Città  [ROOT]\n"
                         "    Parametri  [PARMS]\n"
                         "        Parametri  [PARMS 1]\n"
                         "        Tabella  [PARMS 0]\n")

    def test_tree_as_json(self):
        self.ok("new", "SORT", "A")
        self.assertEqual(self.json("tree", "SORT", "A"), [
            {"Key": "ROOT", "Parent": "", "Text": "A", "Kind": "", "Image": 12, "SelectedImage": 11},
            {"Key": "PARMS", "Parent": "ROOT", "Text": "Parametri", "Kind": "", "Image": 12, "SelectedImage": 11,
             "Section": "PARMS", "Position": []},
            {"Key": "PARMS 1", "Parent": "PARMS", "Text": "Parametri", "Kind": "", "Image": 9, "SelectedImage": 9,
             "Section": "PARMS", "Position": [1]},
            {"Key": "PARMS 0", "Parent": "PARMS", "Text": "Tabella", "Kind": "", "Image": 9, "SelectedImage": 9,
             "Section": "PARMS", "Position": [2]}])


class Show(CliTest):
    def test_a_section(self):
        self.ok("new", "FILTER", "A")
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS"), FILTER)
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS", "1"), FILTER)

    def test_by_position(self):
        self.demo()
        first = self.ok("show", "SORT", "CIFRE", "PARMS", "1")
        self.assertTrue(first.startswith("NONUMERIC= FALSE\n"))
        self.assertEqual(self.ok("show", "SORT", "CIFRE", "PARMS"), first)
        table = self.ok("show", "SORT", "CIFRE", "PARMS", "2")
        self.assertIn("\n39 = 39  [9] [9]\n3A = 00  [:] [ ]\n", table)
        self.assertEqual(len(table.splitlines()), 2 + 256 + 4)

    def test_every_section_below_a_heading(self):
        self.demo()
        text = self.ok("show", "SORT", "CIFRE")
        self.assertEqual(text, "== PARMS 1: Parametri ==\n" + self.ok("show", "SORT", "CIFRE", "PARMS") +
                         "\n== PARMS 2: Tabella ==\n" + self.ok("show", "SORT", "CIFRE", "PARMS", "2"))

    def test_as_json(self):
        self.ok("new", "FILTER", "A")
        one = {"Section": "PARMS", "Position": [1], "Key": "PARMS 1", "Text": "Parametri",
               "Buffer": FILTER.replace("\n", "\r\n")}
        self.assertEqual(self.json("show", "FILTER", "A", "PARMS"), one)
        self.assertEqual(self.json("show", "FILTER", "A"), [one])

    def test_what_is_not_in_the_tree_is_refused(self):
        self.ok("new", "SORT", "A")
        told = "Argomento sconosciuto o errato nella linea di comando: "
        self.refused(told + "PIPPO", "show", "SORT", "A", "PIPPO")
        self.refused(told + "parms", "show", "SORT", "A", "parms")
        self.refused(told + "ROOT", "show", "SORT", "A", "ROOT")
        self.refused(told + "PARMS 3", "show", "SORT", "A", "PARMS", "3")
        self.refused(told + "PARMS 1 1 1", "show", "SORT", "A", "PARMS", "1", "1", "1")
        self.refused(told + "PIPPO 2", "set", "SORT", "A", "PIPPO", "2", input="FLAGS= NONE\n")
        self.refused(told + "PIPPO", "edit", "SORT", "A", "PIPPO", env={"EDITOR": "true"})
        self.refused(told + "PIPPO", "add", "SORT", "A", "PIPPO")
        self.refused(told + "PARMS 7", "move", "SORT", "A", "PARMS", "7", "--up")
        self.refused(told + "PARMS 7", "remove", "SORT", "A", "PARMS", "7")
        self.assertEqual(self.revision("SORT", "A"), 1)


class Set(CliTest):
    def test_lf_and_cr_lf_are_the_same(self):
        for number, end in enumerate(["\n", "\r\n"]):
            name = f"A{number}"
            self.ok("new", "FILTER", name)
            self.ok("set", "FILTER", name, "PARMS", input=end.join(['TABLE= "autori"', "AUTOMATIC= VERO", "' nota",
                                                                     'EXPRESSION= "città"', ""]))
            shown = self.ok("show", "FILTER", name, "PARMS")
            self.assertTrue(shown.startswith('TABLE= "AUTORI"\nEXPRESSION= "città"\nAUTOMATIC= TRUE\n'), shown)
            self.assertEqual(self.revision("FILTER", name), 2)

    def test_what_is_shown_can_be_set(self):
        self.demo()
        for clsid, name in (("CATALOGUE", "GENERALE"), ("FILTER", "CITTÀ"), ("IMPORT", "SPOGLI"), ("MEMBER", "BANCO"),
                            ("REPOSITORY", "FOTOGRAFIE"), ("SORT", "SEGNATURE")):
            for at in (["1"], ["2"]) if clsid == "SORT" else (["1"],):
                text = self.ok("show", clsid, name, "PARMS", *at)
                self.ok("set", clsid, name, "PARMS", *at, input=text)
                self.assertEqual(self.ok("show", clsid, name, "PARMS", *at), text)

    def test_what_is_shown_of_a_whole_object_can_be_set(self):
        self.demo()
        for clsid, name in (("VCLIENT", "BANCO"), ("PROFILE", "PRESTITO"), ("WEBCLIENT", "SALA"),
                            ("QUERY", "RICPERIODICI"), ("BROWSE", "COPERTINE"), ("MENU", "MENURAGAZZI"),
                            ("HELP", "REGOLE"), ("SETOPS", "INSIEMISALA"), ("WEBSERVER", "OPACPROVE")):
            before = self.json("show", clsid, name)
            self.assertGreater(len(before), 3)
            for section in before:
                self.ok("set", clsid, name, section["Section"], *section["Position"], input=section["Buffer"])
            after = self.json("show", clsid, name)
            self.assertEqual(after, before)

    def test_a_line_without_an_end_and_a_byte_order_mark(self):
        self.ok("new", "MEMBER", "A")
        self.ok("set", "MEMBER", "A", "PARMS", input=b"\xef\xbb\xbfPASSWORD= x")
        self.assertEqual(self.ok("show", "MEMBER", "A", "PARMS"), 'PASSWORD= "X"\n' + HEADER)

    def test_the_second_leaf(self):
        self.ok("new", "SORT", "A")
        self.ok("set", "SORT", "A", "PARMS", "2", input="41 = 41\n61 = 41\n")
        self.assertIn("\n60 = 00  [`] [ ]\n61 = 41  [a] [A]\n62 = 00  [b] [ ]\n",
                      self.ok("show", "SORT", "A", "PARMS", "2"))

    def test_what_a_new_record_lacks_is_filled_in_as_when_it_is_shown(self):
        self.ok("new", "STOPWORD", "A")
        self.ok("set", "STOPWORD", "A", "PARMS", input="IFFIRST= TRUE\n")
        self.ok("set", "STOPWORD", "A", "MESSAGE", input='"il"=""\n')
        self.assertIn('IFFIRST= TRUE\nIFNOTONLY= FALSE\nIGNORECASE= FALSE\nSEPARATOR= "="\n',
                      self.ok("show", "STOPWORD", "A", "PARMS"))

    def test_a_refused_text_leaves_the_object_as_it_was(self):
        self.ok("new", "FILTER", "A")
        self.ok("set", "FILTER", "A", "PARMS", input='TABLE= "AUTORI"\n')
        before = self.ok("show", "FILTER", "A", "PARMS")
        for message, text in (
                ("riga 2: Parametro non riconosciuto: PIPPO=1", "HELP= x\nPIPPO=1\n"),
                ("riga 3: Ripetizone del parametro HELP=.", "HELP= x\r\n' nota\r\nHELP= y\r\n"),
                ("riga 1: Errore di sintassi: PIPPO.", "PIPPO\n"),
                ("riga 1: Valore sconosciuto per il parametro AUTOMATIC=(FORSE)", "AUTOMATIC= forse\n")):
            self.refused(message, "set", "FILTER", "A", "PARMS", input=text)
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS"), before)
        self.assertEqual(self.revision("FILTER", "A"), 2)

    def test_lax(self):
        self.ok("new", "FILTER", "A")
        self.ok("set", "--lax", "FILTER", "A", "PARMS", input="AUTOMATIC= forse\nMERGEWITH= XOR\nHELP= x\n")
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS"), FILTER.replace('HELP= ""', 'HELP= "X"'))
        self.refused("riga 1: Parametro non riconosciuto: PIPPO=1", "--lax", "set", "FILTER", "A", "PARMS",
                     input="PIPPO=1")

    def test_input_that_is_no_text(self):
        self.ok("new", "MEMBER", "A")
        self.assertIn("UTF-8", self.failed("set", "MEMBER", "A", "PARMS", input=b"PASSWORD= per\xf2\n"))
        self.assertEqual(self.revision("MEMBER", "A"), 1)


class Edit(CliTest):
    def setUp(self):
        super().setUp()
        self.ok("new", "FILTER", "A")

    def edit(self, script, **more):
        """Runs edit with a shell script as the editor, $1 being the file; $SEEN gathers what it was given."""
        self.seen = self.folder / "seen"
        editor = self.script(f'cat "$1" >> "{self.seen}"\necho ---- >> "{self.seen}"\n' + script)
        return self.kv("edit", "FILTER", "A", "PARMS", env={"EDITOR": str(editor)}, **more)

    def left(self):
        """The files that are left in the temporary folder."""
        return sorted(f for f in self.temp.rglob("*") if not f.is_dir())

    def test_unchanged(self):
        done = self.edit("true")
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))
        self.assertEqual(self.seen.read_text(), FILTER + "----\n")
        self.assertEqual(self.revision("FILTER", "A"), 1)
        self.assertEqual(list(self.temp.iterdir()), [])

    def test_what_the_editor_leaves_beside_the_file_goes_too(self):
        done = self.edit("""cp "$1" "$1~"; printf 'HELP= x\\n' > "$1" """)
        self.assertEqual((done.code, done.err), (0, ""), done)
        self.assertEqual(list(self.temp.iterdir()), [])

    def test_changed(self):
        done = self.edit("""sed -i 's/HELP= ""/HELP= "città"/' "$1" """)
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))
        self.assertIn('HELP= "CITTÀ"', self.ok("show", "FILTER", "A", "PARMS"))
        self.assertEqual(self.revision("FILTER", "A"), 2)
        self.assertEqual(self.left(), [])

    def test_an_editor_that_writes_cr_lf(self):
        done = self.edit("""printf 'HELP= x\\r\\nTABLE= y\\r\\n' > "$1" """)
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))
        self.assertTrue(self.ok("show", "FILTER", "A", "PARMS").startswith('TABLE= "Y"\n'))

    def test_refused_then_corrected(self):
        done = self.edit("""if grep -q "^' riga" "$1"; then sed -i 's/PIPPO=1/HELP= x/' "$1"
                            else printf 'TABLE= y\\nPIPPO=1\\n' > "$1"; fi""")
        self.assertEqual((done.code, done.out, done.err), (0, "", ""))
        self.assertEqual(self.seen.read_text().split("----\n")[1],
                         "' riga 3: Parametro non riconosciuto: PIPPO=1\nTABLE= y\nPIPPO=1\n",
                         "the message names the line as it stands in the file that came back")
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS"),
                         FILTER.replace('TABLE= ""', 'TABLE= "Y"').replace('HELP= ""', 'HELP= "X"'))
        self.assertEqual(self.revision("FILTER", "A"), 2)
        self.assertEqual(self.left(), [])

    def test_the_message_is_that_of_the_last_text(self):
        done = self.edit("""case $(grep -c "^----" "$(dirname "$0")/seen") in
                            1) printf 'PIPPO=1\\n' > "$1";;
                            2) sed -i 's/^PIPPO.*/HELP= x\\nHELP= y/' "$1";;
                            3) printf 'HELP= z\\n' > "$1";; esac""")
        self.assertEqual((done.code, done.err), (0, ""), done)
        self.assertEqual(self.seen.read_text().split("----\n")[2],
                         "' riga 3: Ripetizone del parametro HELP=.\nHELP= x\nHELP= y\n")
        self.assertIn('HELP= "Z"', self.ok("show", "FILTER", "A", "PARMS"))

    def test_refused_then_left_as_it_is(self):
        done = self.edit("""printf 'PIPPO=1\\n' > "$1" """)
        self.assertEqual((done.code, done.out), (1, ""))
        lines = done.err.splitlines()
        self.assertEqual(lines[1:], ["riga 1: Parametro non riconosciuto: PIPPO=1"])
        kept = re.fullmatch(r"kvdesign: nothing was saved; the text is in (.*)", lines[0]).group(1)
        self.assertEqual([str(f) for f in self.left()], [kept])
        self.assertEqual(self.left()[0].read_text(), "PIPPO=1\n")
        self.assertEqual(self.left()[0].parent.stat().st_mode & 0o777, 0o700)
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS"), FILTER)
        self.assertEqual(self.revision("FILTER", "A"), 1)

    def test_a_text_that_is_no_utf_8_comes_back_too(self):
        done = self.edit("""if grep -q "^' Errore nei dati" "$1"; then printf 'HELP= x\\n' > "$1"
                            else printf 'HELP= \\340\\n' > "$1"; fi""")
        self.assertEqual((done.code, done.err), (0, ""), done)
        self.assertIn('HELP= "X"', self.ok("show", "FILTER", "A", "PARMS"))

    def test_an_editor_that_fails(self):
        for script, how in (("exit 4", "exit code 4"), ("kill -9 $$", "signal 9|exit code 137")):
            done = self.edit("echo HELP= x > $1\n" + script)
            self.assertEqual((done.code, done.out), (3, ""), done)
            self.assertRegex(done.err, rf"kvdesign: the editor .* failed \(({how})\), nothing was saved")
        done = self.kv("edit", "FILTER", "A", "PARMS", env={"EDITOR": "/there/is/no/editor"})
        self.assertEqual(done.code, 3)
        self.assertIn("the editor `/there/is/no/editor` failed", done.err)
        self.assertEqual(self.ok("show", "FILTER", "A", "PARMS"), FILTER)
        self.assertEqual(self.left(), [])

    def test_the_editor_is_a_command_line_and_visual_comes_first(self):
        done = self.kv("edit", "FILTER", "A", "PARMS",
                       env={"VISUAL": """sed -i -e 's/HELP= ""/HELP= x/'""", "EDITOR": "false"})
        self.assertEqual((done.code, done.err), (0, ""), done)
        self.assertIn('HELP= "X"', self.ok("show", "FILTER", "A", "PARMS"))

    def test_a_save_that_comes_too_late_keeps_the_text(self):
        other = f'"{os.environ["KVDESIGN"]}" --store "{self.store}" set FILTER A PARMS'
        done = self.edit(f"""echo 'HELP= altro' | {other}
                             printf 'HELP= mio\\n' > "$1" """)
        self.assertEqual((done.code, done.out), (1, ""), done)
        self.assertIn("è stato modificato da un altro programma", done.err)
        self.assertEqual([f.read_text() for f in self.left()], ["HELP= mio\n"])
        self.assertIn(str(self.left()[0]), done.err)
        self.assertIn('HELP= "ALTRO"', self.ok("show", "FILTER", "A", "PARMS"))

    def test_a_store_that_fails_keeps_the_text(self):
        lock = f"""python3 -c 'import os, sqlite3
open("{self.store}", "r+b").write(b"x" * 4096)'"""
        done = self.edit(f"""printf 'HELP= mio\\n' > "$1"\n{lock}""")
        self.assertEqual((done.code, done.out), (3, ""), done)
        self.assertIn(str(self.store), done.err)
        self.assertEqual([f.read_text() for f in self.left()], ["HELP= mio\n"])

    def test_a_temporary_folder_that_is_not_there(self):
        self.temp.rmdir()
        self.assertIn(str(self.temp), self.failed("edit", "FILTER", "A", "PARMS", env={"EDITOR": "true"}))


class Structure(CliTest):
    def test_add_to_a_plain_section(self):
        for clsid in ("CATALOGUE", "IMPORT"):
            self.ok("new", clsid, "A")
            self.assertRegex(self.ok("add", clsid, "A", "PARMS"), r"\APARMS \d+\n\Z")
            self.assertEqual(self.revision(clsid, "A"), 2)

    def test_what_changes_nothing_is_told_and_not_saved(self):
        self.ok("new", "SORT", "A")
        for command in (["add", "SORT", "A", "PARMS"], ["remove", "SORT", "A", "PARMS", "1"],
                        ["remove", "SORT", "A", "PARMS", "--all"]):
            done = self.kv(*command)
            self.assertEqual((done.code, done.out), (0, ""), done)
            self.assertTrue(done.err.startswith("kvdesign: nothing has changed"), done)
        self.assertEqual(self.revision("SORT", "A"), 1)

    def test_move_in_a_section_that_is_no_list(self):
        self.ok("new", "SORT", "A")
        for way in ("--up", "--down"):
            done = self.kv("move", "SORT", "A", "PARMS", "2", way)
            self.assertEqual((done.code, done.out), (1, ""))
            self.assertEqual(done.err, "kvdesign: the server has refused, without a message\n")
        self.assertEqual(self.revision("SORT", "A"), 1)


class Lists(CliTest):
    """A list whose elements are folders, and lists inside them."""

    def setUp(self):
        super().setUp()
        self.ok("new", "STRINGTABLE", "A")

    def do(self, command, *where, **more):
        return self.ok(command, "STRINGTABLE", "A", *where, **more)

    def captions(self, section, depth):
        """What the tree calls the elements of the lists `section`, in order."""
        return [node["Text"] for node in self.json("tree", "STRINGTABLE", "A")
                if node.get("Section") == section and len(node["Position"]) == depth]

    def names(self):
        return self.captions("FIELDS", 1)

    def texts(self):
        return self.captions("FIELDCAPTION", 2)

    def add(self, *names):
        for name in names:
            self.assertRegex(self.do("add", "FIELDS"), r"\AFIELDS-\d+\n\Z")
            self.do("set", "FIELDPARMS", str(len(self.names())), input=f"NAME= {name}\n")

    def test_elements_are_added_named_moved_and_removed(self):
        self.add("UNO", "DUE", "TRE")
        self.assertEqual(self.names(), ["UNO", "DUE", "TRE"])
        self.assertRegex(self.do("move", "FIELDS", "3", "--up"), r"\AFIELDS-\d+\n\Z")
        self.assertEqual(self.names(), ["UNO", "TRE", "DUE"])
        self.do("move", "FIELDS", "1", "--down")
        self.assertEqual(self.names(), ["TRE", "UNO", "DUE"])
        self.do("remove", "FIELDS", "2")
        self.assertEqual(self.names(), ["TRE", "DUE"])
        self.assertIn('NAME= "DUE"\n', self.do("show", "FIELDPARMS", "2"))
        self.do("remove", "FIELDS", "--all")
        self.assertEqual(self.names(), [])

    def test_a_move_that_has_nowhere_to_go(self):
        self.add("UNO", "DUE")
        revision = self.revision("STRINGTABLE", "A")
        for where, way in (("1", "--up"), ("2", "--down")):
            self.assertEqual(self.kv("move", "STRINGTABLE", "A", "FIELDS", where, way).code, 1)
        self.assertEqual(self.revision("STRINGTABLE", "A"), revision)

    def test_lists_inside_an_element(self):
        self.add("UNO", "DUE")
        self.do("remove", "FIELDCAPTION", "1", "--all")
        self.do("remove", "FIELDCAPTION", "2", "--all")
        self.assertEqual(self.texts(), [])
        for place, text in enumerate(("prima", "seconda"), 1):
            self.do("add", "FIELDCAPTION", "2")
            self.do("set", "FIELDCAPTION", "2", str(place), input=f"TEXT= {text}\nLANG= ita\n")
        self.assertEqual(self.texts(), ["Messaggio: [ITA] prima", "Messaggio: [ITA] seconda"])
        self.do("move", "FIELDCAPTION", "2", "2", "--up")
        self.assertIn('TEXT= "seconda"\n', self.do("show", "FIELDCAPTION", "2", "1"))
        self.assertIn('TEXT= "seconda"\n', self.do("show", "FIELDCAPTION"))
        self.do("remove", "FIELDCAPTION", "2", "1")
        self.assertEqual(self.texts(), ["Messaggio: [ITA] prima"])
        self.refused("Argomento sconosciuto o errato nella linea di comando: FIELDCAPTION 1 1",
                     "show", "STRINGTABLE", "A", "FIELDCAPTION", "1", "1")
        self.assertEqual(self.ok("check"), "")


class Application(CliTest):
    """Lists that bear no kind in the tree."""

    def setUp(self):
        super().setUp()
        self.ok("new", "VCLIENT", "A")

    def do(self, command, *where, **more):
        return self.ok(command, "VCLIENT", "A", *where, **more)

    def named(self, section, depth):
        """Position and text of the nodes with this section word that stand so deep in lists, in order."""
        return [(node["Position"], node["Text"]) for node in self.json("tree", "VCLIENT", "A")
                if node.get("Section") == section and len(node["Position"]) == depth]

    def messages(self):
        return [text for _, text in self.named("FIELDS", 1)]

    def add(self, *names):
        for name in names:
            self.assertRegex(self.do("add", "FIELDS"), r"\AFIELDS-\d+\n\Z")
            self.do("set", "FIELDPARMS", len(self.messages()), input=f"NAME= {name}\n")

    def unknown(self, *where):
        self.refused("Argomento sconosciuto o errato nella linea di comando: " + " ".join(map(str, where)),
                     "show", "VCLIENT", "A", *where)

    def test_fonts(self):
        for section in ("FORMFONTS", "MESSAGEFONTS", "TITLEFONTS"):
            self.unknown(section, 1)
            for place, font in enumerate(("Sans", "Serif", "Mono"), 1):
                self.assertRegex(self.do("add", section), rf"\A{section} \d+\n\Z")
                self.do("set", section, place, input=f'NAME= "{font}"\nSIZE= {place + 8}\n')
                self.assertEqual(self.named(section, 1)[-1], ([place], f"Font: {font}, {place + 8}"))
            self.assertTrue(self.do("show", section, 1).startswith('NAME= "Sans"\nSIZE= 9\n'))
            self.assertEqual(self.do("show", section), self.do("show", section, 1))
            self.assertRegex(self.do("move", section, 3, "--up"), rf"\A{section} \d+\n\Z")
            self.assertTrue(self.do("show", section, 2).startswith('NAME= "Mono"\n'))
            self.do("remove", section, 1)
            self.assertEqual([text for _, text in self.named(section, 1)], ["Font: Mono, 11", "Font: Serif, 10"])
            self.unknown(section, 3)
            self.do("remove", section, "--all")
            self.unknown(section, 1)
        self.assertEqual(self.ok("check"), "")

    def test_messages(self):
        self.add("UNO", "DUE", "TRE")
        self.assertEqual(self.named("FIELDS", 1), [([1], "UNO"), ([2], "DUE"), ([3], "TRE")])
        self.assertTrue(self.do("show", "FIELDPARMS", 2).startswith('NAME= "DUE"\n'))
        self.assertEqual(self.do("show", "FIELDPARMS", 2, 1), self.do("show", "FIELDPARMS", 2))
        self.unknown("FIELDPARMS", 4)
        self.refused("Il nome del messaggio non è univoco.", "set", "VCLIENT", "A", "FIELDPARMS", "1",
                     input="NAME= tre\n")
        self.do("move", "FIELDS", 3, "--up")
        self.assertEqual(self.messages(), ["UNO", "TRE", "DUE"])
        self.do("move", "FIELDS", 1, "--down")
        self.assertEqual(self.messages(), ["TRE", "UNO", "DUE"])
        revision = self.revision("VCLIENT", "A")
        for where, way in ((1, "--up"), (3, "--down")):
            self.assertEqual(self.kv("move", "VCLIENT", "A", "FIELDS", where, way).code, 1)
        self.assertEqual(self.revision("VCLIENT", "A"), revision)
        self.do("remove", "FIELDS", 2)
        self.assertEqual(self.messages(), ["TRE", "DUE"])
        self.do("remove", "FIELDS", "--all")
        self.assertEqual(self.messages(), [])
        self.unknown("FIELDS", 1)

    def test_texts_of_a_message(self):
        self.add("UNO", "DUE")
        self.unknown("FIELDCAPTION", 2, 1)
        for place, (text, lang) in enumerate((("prima", "ita"), ("first", "eng"), ("erste", "ger")), 1):
            self.assertRegex(self.do("add", "FIELDCAPTION", 2), r"\AFIELDCAPTION \d+\n\Z")
            self.do("set", "FIELDCAPTION", 2, place, input=f"TEXT= {text}\nLANG= {lang}\n")
        self.assertEqual(self.named("FIELDCAPTION", 2), [([2, 1], "Messaggio: [ITA] prima"),
                                                         ([2, 2], "Messaggio: [ENG] first"),
                                                         ([2, 3], "Messaggio: [GER] erste")])
        self.unknown("FIELDCAPTION", 1, 1)
        self.do("move", "FIELDCAPTION", 2, 3, "--up")
        self.assertTrue(self.do("show", "FIELDCAPTION", 2, 2).startswith('TEXT= "erste"\n'))
        self.do("remove", "FIELDCAPTION", 2, 1)
        self.do("remove", "FIELDCAPTION", 2, 2)
        self.assertEqual(self.named("FIELDCAPTION", 2), [([2, 1], "Messaggio: [GER] erste")], "one alone")
        self.assertTrue(self.do("show", "FIELDCAPTION", 2, 1).startswith('TEXT= "erste"\n'))
        self.assertEqual(self.do("show", "FIELDCAPTION"), self.do("show", "FIELDCAPTION", 2, 1))
        self.do("remove", "FIELDCAPTION", 2, "--all")
        self.assertEqual(self.named("FIELDCAPTION", 2), [])
        self.assertEqual(self.messages(), ["UNO", "DUE"])

    def test_every_section_is_checked(self):
        self.add("UNO")
        self.do("add", "FIELDCAPTION", 1)
        self.do("add", "FORMFONTS")
        self.assertEqual([(s["Section"], s["Position"]) for s in self.json("show", "VCLIENT", "A")],
                         [("PARMS", [1]), ("FORMFONTS", [1]), ("FIELDPARMS", [1]), ("FIELDCAPTION", [1, 1])])
        done = self.kv("check", "VCLIENT")
        self.assertEqual((done.code, done.out), (1, "VCLIENT/A FIELDCAPTION[1 1]: Non è stato specificato un codice "
                                                    "LANG valido.\n"))


class Profile(CliTest):
    """Sections in the elements of five lists, and a list that has no nodes."""

    def setUp(self):
        super().setUp()
        self.ok("new", "PROFILE", "A")

    def do(self, command, *where, **more):
        return self.ok(command, "PROFILE", "A", *where, **more)

    def texts(self, section, depth):
        return [node["Text"] for node in self.json("tree", "PROFILE", "A")
                if node.get("Section") == section and len(node["Position"]) == depth]

    def test_lists_inside_elements(self):
        for element, parms, captions, text in (
                ("COMMANDS", "COMMANDPARMS", "COMMANDTIPS", "CODE= B{0}\n"),
                ("FORMATS", "FORMATPARMS", "FORMATCAPTION", "NAME= F{0}\nSTYLE= BANNER\nDISPTYPE= DISPLAY\n"),
                ("LOANTABLES", "LOANTABLEPARMS", "LOANTABLECAPTION", "NATURE= N{0}\nLEVEL= {0}\n"),
                ("FIELDS", "FIELDPARMS", "FIELDCAPTION", "TAG= 10{0}\n")):
            for place in (1, 2):
                self.assertRegex(self.do("add", element), rf"\A{element}-\d+\n\Z")
                self.do("set", parms, place, input=text.format(place))
                for at, label in enumerate(("uno", "due"), 1):
                    self.assertRegex(self.do("add", captions, place), rf"\A{captions} \d+\n\Z")
                    self.do("set", captions, place, at, input=f"TEXT= {label}{place}\nLANG= ita\n")
            self.assertTrue(self.do("show", captions, 1, 2).startswith('TEXT= "due1"\n'))
            self.do("move", captions, 1, 2, "--up")
            self.assertTrue(self.do("show", captions, 1, 1).startswith('TEXT= "due1"\n'))
            first = self.do("show", parms, 1)
            self.assertRegex(self.do("move", element, 2, "--up"), rf"\A{element}-\d+\n\Z")
            self.assertEqual(self.do("show", parms, 2), first)
            self.assertTrue(self.do("show", captions, 2, 1).startswith('TEXT= "due1"\n'))
            self.do("remove", captions, 2, 1)
            self.assertTrue(self.do("show", captions, 2, 1).startswith('TEXT= "uno1"\n'))
            self.do("remove", captions, 1, "--all")
            self.assertEqual(len(self.texts(captions, 2)), 1)
            self.do("remove", element, 1)
            self.assertEqual(self.do("show", parms, 1), first)
            self.do("remove", element, "--all")
            self.assertEqual(self.texts(element, 1), [])

    def test_plain_lists(self):
        for section, text in (("POPUPS", "TEXT= t{0}\nLANG= ita\n"), ("TITLES", "TEXT= t{0}\nLANG= ita\n"),
                              ("RECHTML", "FILENAME= t{0}\nLANG= ita\n"),
                              ("LOANHTML", "FILENAME= t{0}\nLANG= ita\n"), ("HTML", "FILENAME= t{0}\nLANG= ita\n")):
            for place in (1, 2):
                self.do("add", section)
                self.do("set", section, place, input=text.format(place))
            self.do("move", section, 1, "--down")
            self.assertIn('= "t2"\n', self.do("show", section, 1))
            self.assertEqual(self.kv("remove", "PROFILE", "A", section, 1).code, 0)
            self.assertIn('= "t1"\n', self.do("show", section, 1))

    def test_the_text_fonts_have_no_node(self):
        told = "Argomento sconosciuto o errato nella linea di comando: TEXTFONTS"
        self.refused(told, "show", "PROFILE", "A", "TEXTFONTS")
        self.refused(told, "add", "PROFILE", "A", "TEXTFONTS")

    def test_a_heading_without_a_text(self):
        self.do("add", "POPUPS")
        self.assertIn("\n== POPUPS 1 ==\nTEXT= ", self.do("show"))

    def test_a_double_tag_is_refused_by_the_save(self):
        for place, tag in ((1, 7), (2, 8), (3, 9)):
            self.do("add", "FIELDS")
            self.do("set", "FIELDPARMS", place, input=f"TAG= {tag}\n")
        self.refused("Tag duplicato: 7\n#1 e #3", "set", "PROFILE", "A", "FIELDPARMS", "3", input="TAG= 7\n")
        self.assertIn("TAG= 9\n", self.do("show", "FIELDPARMS", 3))


class Query(CliTest):
    def setUp(self):
        super().setUp()
        self.demo()

    def do(self, command, section, *at, **more):
        return self.ok(command, "QUERY", "AVANZATA", section, *at, **more)

    def values(self):
        return [node["Text"] for node in self.json("tree", "QUERY", "AVANZATA")
                if node.get("Section") == "CONSTANTS" and len(node["Position"]) == 2 and node["Position"][0] == 5]

    def test_the_values_of_a_field_move_with_their_texts(self):
        self.assertEqual(self.values(), ["Valore: ITA", "Valore: ENG", "Valore: FRE", "Valore: GER"])
        self.do("add", "CONSTANTS", 5)
        self.do("set", "CONSTANTPARMS", 5, 5, input='NAME= spa\nDESC= "Spagnolo"\n')
        self.do("set", "CONSTANTCAPTION", 5, 5, 1, input='TEXT= "spagnolo"\nLANG= ita\n')
        self.assertEqual(self.values()[-1], "Valore: SPA")
        self.assertEqual(self.ok("check"), "")
        before = self.do("show", "CONSTANTCAPTION", 5, 1, 2)
        self.assertTrue(before.startswith('TEXT= "Italian"\nLANG= "ENG"\n'), before)
        self.do("move", "CONSTANTCAPTION", 5, 1, 2, "--up")
        self.assertEqual(self.do("show", "CONSTANTCAPTION", 5, 1, 1), before)
        self.do("move", "CONSTANTS", 5, 1, "--down")
        self.assertEqual(self.values()[:2], ["Valore: ENG", "Valore: ITA"])
        self.assertEqual(self.do("show", "CONSTANTCAPTION", 5, 2, 1), before)

    def test_the_name_of_a_value_is_borne_once(self):
        before = self.do("show", "CONSTANTPARMS", 5, 2)
        self.refused("Il nome del messaggio non è univoco.",
                     "set", "QUERY", "AVANZATA", "CONSTANTPARMS", 5, 2, input="NAME= ita\n")
        self.assertEqual(self.do("show", "CONSTANTPARMS", 5, 2), before)

    def test_what_a_text_of_the_parameters_leaves_out_stays(self):
        self.do("set", "PARMS", input="ROWS= 9\n")
        shown = self.do("show", "PARMS")
        self.assertIn("ROWS= 9\n", shown)
        self.assertIn('BROWSE= "TITOLI"\n', shown)
        self.assertIn("TIMEOUT= 180\n", shown)


class WebClient(CliTest):
    def test_a_popup_stays(self):
        self.ok("new", "WEBCLIENT", "A")
        self.ok("add", "WEBCLIENT", "A", "POPUPS")
        text = self.ok("show", "WEBCLIENT", "A", "POPUPS", "1")
        for where in (["1"], ["--all"]):
            done = self.kv("remove", "WEBCLIENT", "A", "POPUPS", *where)
            self.assertEqual((done.code, done.out), (0, ""), done)
            self.assertTrue(done.err.startswith("kvdesign: nothing has changed"), done)
        self.assertEqual(self.ok("show", "WEBCLIENT", "A", "POPUPS", "1"), text)


class Damaged(CliTest):
    def test_an_object_whose_content_is_damaged(self):
        self.ok("new", "FILTER", "A")
        self.ok("new", "FILTER", "B")
        base = sqlite3.connect(self.store)
        base.execute("UPDATE objects SET Content = '{' WHERE Name = 'A'")
        base.commit()
        base.close()
        for command in (["tree"], ["show"], ["export"]):
            done = self.kv(*command, "FILTER", "A")
            self.assertEqual((done.code, done.out), (1, ""), done)
            self.assertIn("FILTER/A", done.err)
        self.assertEqual(self.ok("list"), "FILTER  A\nFILTER  B\n")
        self.ok("delete", "FILTER", "A")
        self.assertEqual(self.ok("list"), "FILTER  B\n")
        self.assertTrue(self.ok("show", "FILTER", "B", "PARMS").startswith("TABLE="))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
