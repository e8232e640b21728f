#!/usr/bin/env python3
"""The command clipboard, on files written from the layout: int32 and strings, little-endian, Windows-1252."""

import struct
import sys
import unittest

from kvcli import CliTest


def long(value):
    return struct.pack("<i", value)


def string(text):
    data = text.encode("cp1252")
    return long(len(data)) + data


def stored(name, text="", id=0, version=0, desc="", number2=0, number3=0, string3="", string4="", users="",
           string5="", children=()):
    """A stored object; `children` are objects made the same way."""
    return (string(name) + string(text) + long(id) + long(version) + string(desc) + long(number2) + long(number3) +
            string(string3) + string(string4) + string(users) + string(string5) + long(len(children)) +
            b"".join(children))


def clipboard(*entries):
    """A file of (name, object) entries, each holding the 1-based place of the next."""
    data = long(len(entries))
    for name, content in entries:
        entry = string(name) + content
        data += long(len(data) + 4 + len(entry) + 1) + entry
    return data


MEMBER = stored("ANNA", id=7, version=2, desc="Prestito", users="BANCO",
                children=[stored("Text", "PERÒ €"), stored("Language")])
NESTED = stored("NOTIZIE", number2=4, number3=-1, string3="a", string4="b", string5="c", text="t", children=[
    stored("Fields", children=[stored("TITOLO", id=1, children=[stored("Tag", "200")]), stored("AUTORE", id=2)])])
FILE = clipboard(("ANNA", MEMBER), ("VUOTO", stored("")), ("NOTIZIE", NESTED))


class Clipboard(CliTest):
    def setUp(self):
        super().setUp()
        self.file = self.temp / "KVDSCLP.TMP"
        self.file.write_bytes(FILE)

    def test_the_first_entry_of_the_file_in_the_temporary_folder(self):
        self.assertEqual(self.ok("clipboard"),
                         'ANNA, Id 7, Version 2, Desc "Prestito", UserList "BANCO"\n'
                         '    Text = "PERÒ €"\n'
                         "    Language\n")
        self.assertFalse(self.store.exists(), "the store is not needed")

    def test_an_entry_by_its_index(self):
        self.assertEqual(self.ok("clipboard", "--index", "1"), self.ok("clipboard"))
        self.assertEqual(self.ok("clipboard", "--index", "2"), "(senza nome)\n")
        self.assertEqual(self.ok("clipboard", "--index", "3"),
                         'NOTIZIE = "t", Number2 4, Number3 -1, String3 "a", String4 "b", String5 "c"\n'
                         "    Fields\n"
                         "        TITOLO, Id 1\n"
                         '            Tag = "200"\n'
                         "        AUTORE, Id 2\n")
        self.refused("Elemento non presente nella clipboard.", "clipboard", "--index", "4")
        self.assertEqual(self.ok("clipboard", "--index", "0"), "")

    def test_as_json(self):
        self.assertEqual(self.json("clipboard"), {
            "Name": "ANNA", "Desc": "Prestito", "Version": 2, "Id": 7, "UserList": "BANCO", "Values": {},
            "Children": [
                {"Name": "Text", "Desc": "", "Version": 0, "Id": 0, "UserList": "", "Text": "PERÒ €", "Values": {},
                 "Children": []},
                {"Name": "Language", "Desc": "", "Version": 0, "Id": 0, "UserList": "", "Values": {},
                 "Children": []}]})
        self.assertIsNone(self.json("clipboard", "--index", "0"))

    def test_a_file_that_is_named(self):
        other = self.folder / "altro.tmp"
        other.write_bytes(clipboard(("X", stored("X"))))
        self.assertEqual(self.ok("clipboard", "--file", other), "X\n")

    def test_a_copy_made_in_a_window_can_be_read(self):
        self.ok("new", "MEMBER", "BEA")
        requests = ('{"jsonrpc":"2.0","id":1,"method":"open","params":{"Clsid":"MEMBER","Name":"BEA"}}\n'
                    '{"jsonrpc":"2.0","id":2,"method":"CopyData","params":{"CurrItem":"ROOT","Group":false}}\n')
        self.kv("rpc", input=requests)
        self.assertTrue(self.ok("clipboard").startswith("BEA, Id 1, Version 1\n    Text\n"))

    def test_a_file_that_is_missing(self):
        self.file.unlink()
        done = self.kv("clipboard")
        self.assertEqual((done.code, done.out), (3, ""), done)
        self.assertEqual(done.err, f"Impossibile aprire il file temporaneo {self.file}\n")

    def test_a_file_cut_off_at_every_byte(self):
        whole = clipboard(("ANNA", MEMBER))
        for length in range(len(whole)):
            self.file.write_bytes(whole[:length])
            done = self.kv("clipboard")
            self.assertEqual((done.code, done.out), (3, ""), (length, done))
            self.assertEqual(done.err, "Lettura oltre la fine del file\n")

    def test_lengths_and_counts_that_make_no_sense(self):
        for bad in (-1, 2**31 - 1, -2**31):
            for content in (long(1) + long(1) + long(bad), long(1) + long(bad),
                            clipboard(("A", stored("A")[:-4] + long(bad)))):
                self.file.write_bytes(content)
                done = self.kv("clipboard")
                self.assertEqual((done.code, done.out), (3, ""), (bad, content, done))

    def test_an_object_that_is_nested_too_deep(self):
        content = stored("A")
        for _ in range(64):
            content = stored("A", children=[content])
        self.file.write_bytes(clipboard(("A", content)))
        done = self.kv("clipboard")
        self.assertEqual((done.code, done.out), (1, ""), done)
        self.assertIn("troppi livelli", done.err)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
