#!/usr/bin/env python3
"""The tool that makes the fields of a profile from a table that was copied in another window."""

import sys
import unittest

from kvcli import CliTest

REMOVE = "Si vogliono rimuovere i campi già presenti  nell'oggetto?"
CONFIRM = "Confermi la generazione automatica dei campi dalla TABLE della Clipboard?"
DONE = "Operazione completata: salvare l'oggetto e riaprirlo per visualizzare le modifiche."
NO_FIELDS = "L'oggetto nella clipboard non ha campi o non è una TABLE."

ASKS_TO_REMOVE = {"Text": REMOVE, "Buttons": "YesNoCancel", "Default": 3, "Icon": "question", "Style": 66083}
ASKS_TO_CONFIRM = {"Text": CONFIRM, "Buttons": "YesNo", "Default": 2, "Icon": "question", "Style": 65828}
TELLS = {"Text": DONE, "Buttons": "Ok", "Default": 1, "Icon": "", "Style": 0}

TABLE = [(1, "NUMERO"), (200, "TITOLO"), (7, "RESPONSABILITÀ")]
OWN = [(5, "Vecchio"), (200, "Titolo")]


class Mapping(CliTest):
    def setUp(self):
        super().setUp()
        self.ok("new", "TABLE", "NOTIZIE")
        for place, (tag, name) in enumerate(TABLE, 1):
            self.ok("add", "TABLE", "NOTIZIE", "FIELDS")
            self.ok("--lax", "set", "TABLE", "NOTIZIE", "FIELDPARMS", place, input=f'NAME= "{name}"\nTAG= {tag}\n')
        self.ok("new", "PROFILE", "SCHEDA")

    def give_fields(self):
        """The profile gets the fields OWN, each with one label."""
        for place, (tag, text) in enumerate(OWN, 1):
            self.ok("add", "PROFILE", "SCHEDA", "FIELDS")
            self.ok("set", "PROFILE", "SCHEDA", "FIELDPARMS", place, input=f"TAG= {tag}\n")
            self.ok("add", "PROFILE", "SCHEDA", "FIELDCAPTION", place)
            self.ok("set", "PROFILE", "SCHEDA", "FIELDCAPTION", place, 1, input=f'TEXT= "{text}"\nLANG= ita\n')

    def copied(self, clsid="TABLE", name="NOTIZIE"):
        """A session in which the object was copied in a window that is closed again."""
        session = self.rpc()
        session.result("open", Clsid=clsid, Name=name)
        self.assertEqual(session.result("CopyData", CurrItem="ROOT"), {"ClassWord": clsid})
        session.result("close")
        session.notices.clear()
        return session

    def fields(self, session):
        """What the open profile shows of its fields: nodes and their labels."""
        nodes = session.result("tree")
        parents = {node["Key"]: node["Parent"] for node in nodes}
        labels = {node["Key"]: [] for node in nodes if node["Parent"] == "FIELDS"}
        for node in nodes:
            if node["Key"].startswith("FIELDCAPTION "):
                labels[parents[node["Parent"]]].append(node["Text"])
        return [(node["Text"], labels[node["Key"]]) for node in nodes if node["Key"] in labels]

    def stored(self, session):
        """Tag, name and label of the stored fields of the profile."""
        def elements(stored, name):
            return next((child["Children"] for child in stored["Children"] if child["Name"] == name), [])

        return [(field["Values"]["Tag"], field["Name"],
                 [(label["Values"]["Language"], label["Values"]["Text"]) for label in elements(field, "Captions")])
                for field in elements(session.result("registry/object", Clsid="PROFILE", Name="SCHEDA"), "Fields")]

    def click(self, session, *answers):
        """Opens the profile and presses the button; answers what was asked."""
        session.result("open", Clsid="PROFILE", Name="SCHEDA")
        session.asked.clear()
        session.answers = {"window/messageBox": list(answers)}
        self.assertEqual(session.result("TlbrButtonClick", Method="MAPTABLE"), {})
        self.assertEqual(session.answers["window/messageBox"], [], "all that was to be asked was asked")
        self.assertEqual({method for method, _ in session.asked} - {"window/messageBox"}, set())
        return [params for _, params in session.asked]

    def changed_nothing(self, session):
        self.assertEqual(session.result("modified"), {"Value": False})
        self.assertNotIn(("window/modified", {"Value": True}), session.notices)

    def reopened(self, session):
        """Saves, closes, opens again; answers what the tree then shows of the fields."""
        session.result("Save")
        session.result("close")
        session.result("open", Clsid="PROFILE", Name="SCHEDA")
        return self.fields(session)

    MAPPED_NODES = [("Campo: 00001", ["Etichetta: [ITA] NUMERO: "]), ("Campo: 00200", ["Etichetta: [ITA] TITOLO: "]),
                    ("Campo: 00007", ["Etichetta: [ITA] RESPONSABILITÀ: "])]
    MAPPED = [(tag, name, [("ITA", name + ": ")]) for tag, name in TABLE]
    OWN_NODES = [(f"Campo: {tag:05}", [f"Etichetta: [ITA] {text}"]) for tag, text in OWN]

    def test_yes_where_there_are_no_fields(self):
        session = self.copied()
        self.assertEqual(self.click(session, "Yes", "Ok"), [ASKS_TO_CONFIRM, TELLS])
        self.assertEqual(self.fields(session), [], "the tree is not built again")
        self.assertEqual(session.result("modified"), {"Value": True})
        self.assertEqual(self.stored(session), [], "nothing is stored before the save")
        self.assertEqual(self.reopened(session), self.MAPPED_NODES)
        self.assertEqual(self.stored(session), self.MAPPED)
        tagged = next(n["Key"] for n in session.result("tree") if n["Key"].startswith("FIELDPARMS "))
        self.assertTrue(session.result("DispData", CurrItem=tagged)["Buffer"].startswith(
            'TAG= 1\r\nBROWSE= ""\r\nPROFILE= ""\r\nFLAGS= NONE\r\n'))

    def test_no_where_there_are_no_fields(self):
        session = self.copied()
        self.assertEqual(self.click(session, "No"), [ASKS_TO_CONFIRM])
        self.changed_nothing(session)
        self.assertEqual(self.reopened(session), [])

    def test_yes_takes_the_fields_that_are_there_away(self):
        self.give_fields()
        session = self.copied()
        self.assertEqual(self.click(session, "Yes", "Ok"), [ASKS_TO_REMOVE, TELLS])
        self.assertEqual(self.fields(session), self.OWN_NODES, "the tree shows the old ones")
        self.assertEqual(session.result("modified"), {"Value": True})
        self.assertEqual(self.reopened(session), self.MAPPED_NODES)
        self.assertEqual(self.stored(session), self.MAPPED)

    def test_no_puts_the_new_ones_behind_and_the_save_tells_what_is_double(self):
        self.give_fields()
        session = self.copied()
        self.assertEqual(self.click(session, "No", "Ok"), [ASKS_TO_REMOVE, TELLS])
        error = session.error("Save")
        self.assertEqual((error["code"], error["message"], error["data"]["Source"]),
                         (20000, "Tag duplicato: 200\r\n#2 e #4", "diProfile.Save"))
        self.assertEqual([tag for tag, _, _ in self.stored(session)], [5, 200])

        # With the double one taken out before, all is saved.
        session.result("close")
        session.result("open", Clsid="PROFILE", Name="SCHEDA")
        second = [node["Key"] for node in session.result("tree") if node["Parent"] == "FIELDS"][1]
        session.result("DeleteData", CurrItem=second)
        session.result("Save")
        session.result("close")
        self.assertEqual(self.click(session, "No", "Ok"), [ASKS_TO_REMOVE, TELLS])
        self.assertEqual(self.reopened(session), self.OWN_NODES[:1] + self.MAPPED_NODES)

    def test_cancel_changes_nothing(self):
        self.give_fields()
        session = self.copied()
        self.assertEqual(self.click(session, "Cancel"), [ASKS_TO_REMOVE])
        self.changed_nothing(session)
        self.assertEqual(self.reopened(session), self.OWN_NODES)

    def test_fields_that_are_mapped_but_not_saved_are_fields(self):
        session = self.copied()
        self.click(session, "Yes", "Ok")
        session.asked.clear()
        session.answers = {"window/messageBox": ["Yes", "Ok"]}
        session.result("TlbrButtonClick", Method="MAPTABLE")
        self.assertEqual([params for _, params in session.asked], [ASKS_TO_REMOVE, TELLS])
        self.assertEqual(self.reopened(session), self.MAPPED_NODES)

    def test_a_window_that_is_closed_without_a_save_forgets(self):
        session = self.copied()
        self.click(session, "Yes", "Ok")
        session.result("close")
        session.result("open", Clsid="PROFILE", Name="SCHEDA")
        self.assertEqual(self.fields(session), [])

    def test_an_empty_clipboard_asks_nothing(self):
        self.give_fields()
        session = self.rpc()
        self.assertEqual(self.click(session), [])
        self.changed_nothing(session)
        self.assertEqual(self.reopened(session), self.OWN_NODES)

    def test_a_damaged_clipboard_asks_nothing(self):
        (self.temp / "KVDSCLP.TMP").write_bytes(b"\x01\0\0\0\xff")
        session = self.rpc()
        self.assertEqual(self.click(session), [])
        self.changed_nothing(session)

    def test_an_object_without_fields_is_told(self):
        self.ok("new", "TABLE", "VUOTA")
        self.ok("new", "MEMBER", "ANNA")
        self.give_fields()
        for clsid, name in (("TABLE", "VUOTA"), ("MEMBER", "ANNA")):
            session = self.copied(clsid, name)
            session.result("open", Clsid="PROFILE", Name="SCHEDA")
            self.assertEqual(session.error("TlbrButtonClick", Method="MAPTABLE"), {
                "code": 20000, "message": NO_FIELDS, "data": {"Source": "diProfile.MapTable", "Number": 20000}})
            self.assertEqual(session.asked, [])
            self.changed_nothing(session)
            self.assertEqual(self.fields(session), self.OWN_NODES)

    def test_what_another_process_has_copied(self):
        self.assertEqual(self.copied().end(), (0, "", ""))
        session = self.rpc()
        self.assertEqual(self.click(session, "Yes", "Ok"), [ASKS_TO_CONFIRM, TELLS])
        self.assertEqual(self.reopened(session), self.MAPPED_NODES)

    def test_the_profile_of_the_demonstration_is_what_the_tool_makes(self):
        self.demo()
        session = self.copied()
        session.result("registry/create", Clsid="PROFILE", Name="PROVA")
        session.result("open", Clsid="PROFILE", Name="PROVA")
        session.answers = {"window/messageBox": ["Yes", "Ok"]}
        session.result("TlbrButtonClick", Method="MAPTABLE")
        session.result("Save")
        session.result("close")

        def labels(name):
            session.result("open", Clsid="PROFILE", Name=name)
            shown = [(text, leaves[:1]) for text, leaves in self.fields(session)]
            session.result("close")
            return shown

        self.assertGreater(len(labels("PROVA")), 60)
        self.assertEqual(labels("SCHEDA"), labels("PROVA"))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
