"""Objects made from data that others wrote, and a session of `kvdesign rpc` that carries them.

The data lies in the folder `../shared/data` beside the project or where KV_DATA says. It is read at test time and copied
nowhere. Each file is a table: TAB between cells, the first line holds the names of the columns, and a cell writes `\\n`, `\\t`
and `\\\\` for a line feed, a tab and a backslash.

What the text language cannot hold is treated in one place, by the functions here; they count what they had to adapt or
drop, and the tests print it.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import time
import unittest
from collections import Counter
from pathlib import Path

SKIPPED = 77
SOURCE = Path(os.environ["KV_SOURCE_DIR"])
FOLDER = Path(os.environ.get("KV_DATA") or SOURCE.parent / "shared" / "data")


def main():
    """Runs the tests of the calling program, or tells that the data is not there."""
    if not FOLDER.is_dir():
        print("SKIPPED: the data folder ../shared/data (or KV_DATA) is not there")
        sys.exit(SKIPPED)
    unittest.main()


# The data.

_MARKS = {"\\n": "\n", "\\t": "\t", "\\\\": "\\"}


def cell(text):
    return re.sub(r"\\[nt\\]", lambda mark: _MARKS[mark[0]], text)


def rows(name):
    """The rows of a file, each a dictionary by column."""
    with open(FOLDER / name, encoding="utf-8", newline="\n") as file:
        columns = file.readline().rstrip("\n").split("\t")
        return [dict(zip(columns, map(cell, line.rstrip("\n").split("\t")), strict=True)) for line in file]


# What the text language does with text.

def fold(text):
    """Upper case, character for character, of the letters of Windows-1252 that have a capital in it."""
    def one(c):
        big = c.upper()
        return big if len(big) == 1 and (ord(c) < 0x100 and c != "\u00b5" or c in "\u0161\u0153\u017e") else c
    return "".join(map(one, text))


def one_line(text, counts):
    """A value as it can stand on one line. Only CR LF ends a line, so that a line feed alone stays as it is; a CR LF becomes
    a line feed. Code 0 and a lone CR have no use in a text and become blanks."""
    fit = text.replace("\r\n", "\n").replace("\r", " ").replace("\0", " ")
    if fit != text:
        counts["texts with CR or code 0 adapted"] += 1
    if "\n" in fit:
        counts["texts with a line feed inside, kept"] += 1
    if '"' in fit:
        counts["texts with quotes inside, kept"] += 1
    return fit


def unique(name, taken, counts):
    """The folded name, numbered where it is taken; `taken` is the set of the names so far."""
    made = fold(name)
    for number in range(2, 1000):
        if made not in taken:
            break
        if number == 2:
            counts["names numbered to be unique"] += 1
        made = f"{fold(name)} ({number})"
    taken.add(made)
    return made


# Tables: a field for each tag, heading a group, and one for each of its subfields.

def field(tag, name, level, group, caption, counts, *, visible=True, link="", values="", flags=(), default=""):
    return {"TAG": tag, "NAME": name, "LEVEL": level, "GROUPTAG": group, "CAPTION": one_line(caption, counts),
            "VISIBLE": visible, "LINKTABLE": fold(link), "VALIDATIONTABLE": fold(values), "FLAGS": flags,
            "DEFAULT": one_line(default, counts)}


def table_fields(tags, subfields, counts):
    """The fields of one framework, tags and subfields in the order of the files."""
    below = {}
    for row in subfields:
        below.setdefault(row["tag"], []).append(row)
    made, taken, seen = [], set(), set()

    def flags_of(row):
        # In the order in which the section shows them.
        return [word for word, on in (("MANDATORY", row["mandatory"] not in ("", "0")),
                                      ("REPEATABLE", row["repeatable"] == "1"),
                                      ("HIDDEN", row.get("hidden", "0") not in ("", "0"))) if on]

    for row in tags:
        if row["tag"] in seen:
            # The same tag again: its subfields stand below the first one.
            counts["tags told twice, kept without subfields"] += 1
        head = len(made) + 1
        made.append(field(head, unique(f"{row['tag']} {row['name']}", taken, counts), 1, head,
                          row.get("name_opac") or row["name"], counts, values=row.get("value_list", ""),
                          flags=flags_of(row)))
        if row["tag"] not in seen:
            for sub in below.get(row["tag"], []):
                made.append(field(len(made) + 1,
                                  unique(f"{row['tag']}${sub['subfield']} {sub['name']}", taken, counts), 2, head,
                                  sub.get("name_opac") or sub["name"], counts,
                                  visible=sub.get("hidden", "0") in ("", "0"), link=sub.get("authority_type", ""),
                                  values=sub.get("value_list", ""), flags=flags_of(sub),
                                  default=sub.get("default", "")))
        seen.add(row["tag"])
    orphans = sum(len(rest) for tag, rest in below.items() if tag not in seen)
    if orphans:
        counts["subfields without a tag, dropped"] += orphans
    return made


def field_lines(f):
    """The section of a field, in its fixed order."""
    return [f"TAG= {f['TAG']}", f"NAME= \"{f['NAME']}\"", "DATATYPE= TEXT", f"LEVEL= {f['LEVEL']}",
            f"GROUPTAG= {f['GROUPTAG']}", "SEMANTIC= NONE", f"VISIBLE= {'TRUE' if f['VISIBLE'] else 'FALSE'}",
            f"LINKTABLE= \"{f['LINKTABLE']}\"", f"LINKMODE= {'LINKOWNER' if f['LINKTABLE'] else 'LINKNONE'}",
            "LINKTYPE= 0", "LINKTYPERECPR= 0", f"VALIDATIONTABLE= \"{f['VALIDATIONTABLE']}\"",
            f"CAPTION= \"{f['CAPTION']}\"", "FLAGS=" + ("|".join(f["FLAGS"]) or "NONE"),
            f"DEFAULT= \"{f['DEFAULT']}\"", "SIZE= 0"]


# Words.

SEPARATORS = ("=", "->", "=>", "::", "|=|")


def word_pairs(pairs, counts):
    """(separator, pairs) as the word section can hold them. The separator is the first that no word holds (a replacement
    may hold it, a word is parted at its first). Quotes inside a word may stand: only the outer ones are taken off. A word
    that stands more than once is told once, its replacements joined by ";". Tab and code 0 part the packed words, and a
    CR LF the lines: in a replacement they become blanks, a word that holds one is dropped."""
    joined = {}
    for word, replacement in pairs:
        if not word:
            counts["empty words dropped"] += 1
        elif re.search("[\t\0]|\r\n", word):
            counts["words with a tab, a line end or code 0 dropped"] += 1
        else:
            joined.setdefault(word, []).append(replacement)
    made = []
    for word, replacements in joined.items():
        if len(replacements) > 1:
            counts["replacements joined to an earlier one of the same word"] += len(replacements) - 1
        replacement = ";".join(replacements)
        fit = re.sub("[\t\0]|\r\n", " ", replacement)
        if fit != replacement:
            counts["replacements with a tab, a line end or code 0 adapted"] += 1
        if '"' in word + fit:
            counts["pairs with quotes inside, kept"] += 1
        made.append((word, fit))
    for separator in SEPARATORS:
        if not any(separator in word for word, _ in made):
            return separator, made
        counts[f"separator {separator} passed over, a word holds it"] += 1
    raise ValueError("no separator is free")


def word_lines(pairs, separator):
    return [f'"{word}"{separator}"{replacement}"' for word, replacement in pairs]


# Messages.

LANGUAGES = {"it": "ITA", "en": "ENG", "fr": "FRA", "de": "DEU", "es": "ESP"}


def messages(data, counts):
    """(name, [(text, language)...]) for each row; a language without a text is left out, a row without any dropped."""
    made, taken = [], set()
    for row in data:
        texts = [(one_line(row[column], counts), language) for column, language in LANGUAGES.items() if row[column]]
        if not texts:
            counts["messages without a text dropped"] += 1
            continue
        counts["languages without a text left out"] += len(LANGUAGES) - len(texts)
        name = f"{row['domain']}.{row['name']}" if row.get("domain") else row["name"]
        made.append((unique(one_line(name, counts), taken, counts), texts))
    return made


# Text of an export.

def block(indent, word, lines):
    tabs = "\t" * indent
    return f"{tabs}BEGIN {word}\r\n{''.join(lines)}{tabs}END {word}\r\n"


def told(indent, lines, name, version):
    """The lines of a section and its identity; ids are the program's own and stand as #."""
    return ["\t" * indent + line + "\r\n"
            for line in [*lines, "'[ID= #]", f"'[NAME= {name}]", f"'[VERSION= {version}]"]]


def without_ids(text):
    return re.sub(r"'\[ID= \d+\]\r\n", "'[ID= #]\r\n", text)


def entries(text, word):
    """What stands before the first list entry, and the entries."""
    first = text.find(f"\tBEGIN {word}\r\n")
    if first < 0:
        return text, []
    begin = f"\tBEGIN {word}\r\n"
    return text[:first], [begin + part for part in text[first:].split(begin)[1:]]


# The session.

class Session:
    """`kvdesign rpc` over the store of a folder."""

    BATCH = 1000

    def __init__(self, folder):
        self.errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [os.environ["KVDESIGN"], "rpc", "--store", f"{folder}/store.kv", "--program-dir", folder, "--temp", folder],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.errors)
        self.asked = 0

    def _send(self, message):
        self.process.stdin.write(json.dumps(message, ensure_ascii=False).encode("utf-8") + b"\n")
        self.process.stdin.flush()
        while True:
            line = self.process.stdout.readline()
            assert line, "the session ended: " + self._told()
            answer = json.loads(line)
            if isinstance(answer, list) or "method" not in answer:
                return answer

    def _told(self):
        self.errors.seek(0)
        return self.errors.read().decode("utf-8", "replace")

    def each(self, method, calls):
        """The results of many calls of one method, sent as batches."""
        results = []
        for start in range(0, len(calls), self.BATCH):
            batch = []
            for params in calls[start:start + self.BATCH]:
                self.asked += 1
                batch.append({"jsonrpc": "2.0", "id": self.asked, "method": method, "params": params})
            answers = self._send(batch)
            assert [a["id"] for a in answers] == [b["id"] for b in batch], "answers in another order"
            for request, answer in zip(batch, answers):
                assert "result" in answer, (request, answer)
                results.append(answer["result"])
        return results

    def result(self, method, **params):
        return self.each(method, [params])[0]

    def leaves(self, section):
        return [n["Key"] for n in self.result("tree") if re.match(section + r"(-\d+)? ", n["Key"])]

    def end(self):
        self.process.stdin.close()
        rest = self.process.stdout.read()
        code = self.process.wait(timeout=60)
        self.process.stdout.close()
        told = self._told()
        self.errors.close()
        return code, rest, told


class RealData(unittest.TestCase):
    """A test with a store of its own."""

    def setUp(self):
        holder = tempfile.TemporaryDirectory(prefix="kvdata-")
        self.addCleanup(holder.cleanup)
        self.folder = holder.name
        self.counts = Counter()
        self.start = time.perf_counter()

    def session(self):
        s = Session(self.folder)

        def stop():
            if s.process.poll() is None:
                s.process.kill()
                s.process.wait()
                s.process.stdin.close()
                s.process.stdout.close()
                s.errors.close()
        self.addCleanup(stop)
        return s

    def ended(self, s):
        self.assertEqual(s.end(), (0, b"", ""))

    def assert_export(self, text, head, expected, word):
        """The exported text is this head and these entries; the first that differs is told."""
        got_head, got = entries(without_ids(text), word)
        self.assertEqual(got_head, head)
        self.assertEqual(len(got), len(expected), "number of entries")
        for number, (one, other) in enumerate(zip(got, expected), 1):
            if one != other:
                self.assertEqual(one, other, f"entry {number}")

    def goes_through(self, clsid, name, build, head, expected, word):
        """The object is made by `build`, saved, opened again by another process, and comes back equal; then each of its
        sections is saved from what it shows and changes nothing."""
        s = self.session()
        s.result("registry/create", Clsid=clsid, Name=name)
        s.result("open", Clsid=clsid, Name=name)
        build(s)
        self.assertEqual(s.result("Save"), {"Revision": 2})
        first = s.result("registry/export", Clsid=clsid, Name=name)["Buffer"]
        s.result("close")
        self.ended(s)
        self.assert_export(first, head, expected, word)

        s = self.session()
        nodes = s.result("open", Clsid=clsid, Name=name)["Nodes"]
        self.assertEqual(s.result("registry/export", Clsid=clsid, Name=name)["Buffer"], first)
        leaves = [n["Key"] for n in nodes if " " in n["Key"]]
        shown = s.each("DispData", [{"CurrItem": key} for key in leaves])
        s.each("SaveData", [{"CurrItem": key, "Buffer": section["Buffer"]} for key, section in zip(leaves, shown)])
        self.assertEqual(s.result("Save"), {"Revision": 3})
        self.assertEqual(s.result("registry/export", Clsid=clsid, Name=name)["Buffer"], first)
        s.result("close")
        self.ended(s)

    def tell(self, what):
        rest = "; ".join(f"{count} {text}" for text, count in self.counts.items() if count) or "nothing adapted"
        print(f"{what}; {rest}; {time.perf_counter() - self.start:.1f} s", flush=True)
