#!/usr/bin/env python3
"""A storey uses only what lies below it: what breaks the rule does not build.

The cases run on a small tree of their own, built by this project's own CMakeLists.txt and cmake/. The
tree as it stands must pass; then each case adds one include to one file of it and must fail with its
own message, so that no case can pass because something else went wrong.
"""

import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["KV_SOURCE_DIR"])
BUILD = Path(os.environ["KV_BUILD_DIR"])

# The correct tree: every storey, includes of the standard library, of the storey itself, of what lies
# below, and of a design item's own headers.
SAMPLE = {
    "resources/Words.h": "#pragma once\n#include <string_view>\ninline constexpr std::wstring_view kWord = L\"W\";\n",
    "frame/Base.h": "#pragma once\n#include <string>\n#include \"resources/Words.h\"\nstd::wstring Base();\n",
    "frame/Base.cpp": "#include \"frame/Base.h\"\nstd::wstring Base() { return std::wstring(kWord); }\n",
    "records/OneRecord.h": "#pragma once\n#include \"frame/Base.h\"\nstruct OneRecord {\n    std::wstring Name;\n};\n",
    "editor/Table.h": "#pragma once\n#include \"records/OneRecord.h\"\nOneRecord Read();\n",
    "editor/Table.cpp": "#include \"editor/Table.h\"\nOneRecord Read() { return {Base()}; }\n",
    "items/client/diMenu.h": "#pragma once\nclass diMenu final {\n  public:\n    int Value() const;\n};\n",
    "items/client/diMenu.cpp":
        "#include \"items/client/diMenu.h\"\n\n#include \"editor/Table.h\"\n"
        "int diMenu::Value() const { return static_cast<int>(Read().Name.size()); }\n",
    "items/services/diImport.h": "#pragma once\nclass diImport final {\n  public:\n    int Value() const;\n};\n",
    "items/services/diImport.cpp":
        "#include \"items/services/diImport.h\"\nint diImport::Value() const { return 1; }\n",
    "items/services/diImportParts.h": "#pragma once\nint Parts();\n",
    "items/services/diImportParts.cpp":
        "#include \"items/services/diImport.h\"\n#include \"items/services/diImportParts.h\"\n"
        "int Parts() { return diImport().Value(); }\n",
    "items/services/diImportProc.h": "#pragma once\nclass diImportProc final {\n  public:\n    int Value() const;\n};\n",
    "items/services/diImportProc.cpp":
        "#include \"items/services/diImportProc.h\"\nint diImportProc::Value() const { return 2; }\n",
    "server/vdSvr.h": "#pragma once\nint Serve();\n",
    "server/vdSvr.cpp":
        "#include \"server/vdSvr.h\"\n\n#include \"items/client/diMenu.h\"\n"
        "#include \"items/services/diImportProc.h\"\n"
        "int Serve() { return diMenu().Value() + diImportProc().Value(); }\n",
    "window/Window.h": "#pragma once\n#include \"server/vdSvr.h\"\ninline int Show() { return Serve(); }\n",
}

ABOVE = "lies above {}/; a storey uses only what lies below it"
FOREIGN = "is no header of the C++20 standard library; the core uses no other"
SIBLING = "is another folder of design items; they never include one another"
OUTSIDE = "is in no storey of the core"

# (file that gets the include, the include's operand, what the check must say)
MUST_FAIL = [
    ("resources/Words.h", '"frame/Base.h"', '"frame/Base.h" ' + ABOVE.format("resources")),
    ("frame/Base.cpp", '"records/OneRecord.h"', '"records/OneRecord.h" ' + ABOVE.format("frame")),
    ("frame/Base.h", '"server/vdSvr.h"', '"server/vdSvr.h" ' + ABOVE.format("frame")),
    ("records/OneRecord.h", '"editor/Table.h"', '"editor/Table.h" ' + ABOVE.format("records")),
    ("editor/Table.cpp", '"items/client/diMenu.h"', '"items/client/diMenu.h" ' + ABOVE.format("editor")),
    ("items/client/diMenu.cpp", '"server/vdSvr.h"', '"server/vdSvr.h" ' + ABOVE.format("items/client")),
    ("server/vdSvr.cpp", '"window/Window.h"', '"window/Window.h" ' + ABOVE.format("server")),
    ("frame/Base.cpp", "<sqlite3.h>", "<sqlite3.h> " + FOREIGN),
    ("window/Window.h", "<nlohmann/json.hpp>", "<nlohmann/json.hpp> " + FOREIGN),
    ("frame/Base.cpp", "<unistd.h>", "<unistd.h> " + FOREIGN),
    ("frame/Base.cpp", "<windows.h>", "<windows.h> " + FOREIGN),
    ("frame/Base.cpp", "<string.h>", "<string.h> " + FOREIGN),
    ("frame/Base.cpp", "<sys/stat.h>", "<sys/stat.h> " + FOREIGN),
    ("frame/Base.cpp", '"sqlite3.h"', '"sqlite3.h" is not written from the root ("frame/...")'),
    ("frame/Base.cpp", '"Base.h"', '"Base.h" is not written from the root ("frame/...")'),
    ("frame/Base.cpp", "<frame/Base.h>", "<frame/Base.h> belongs to this project; write it in quotes"),
    ("frame/Base.cpp", '"../server/vdSvr.h"',
     "\"../server/vdSvr.h\" leads out of its folder with '..'; includes are written from the root"),
    ("frame/Base.cpp", "<../server/vdSvr.h>",
     "\"../server/vdSvr.h\" leads out of its folder with '..'; includes are written from the root"),
    ("frame/Base.cpp", '"frame/../server/vdSvr.h"',
     "\"frame/../server/vdSvr.h\" leads out of its folder with '..'; includes are written from the root"),
    ("window/Window.h", '"host/Store.h"', '"host/Store.h" ' + OUTSIDE),
    ("server/vdSvr.cpp", '"com/Class.h"', '"com/Class.h" ' + OUTSIDE),
    ("frame/Base.cpp", '"frame/Base.cpp"', '"frame/Base.cpp" is not a header'),
    ("frame/Base.cpp", "HEADER", "an include names its header plainly"),
    ("items/services/diImport.cpp", '"items/client/diMenu.h"', '"items/client/diMenu.h" ' + SIBLING),
    ("items/services/diImport.cpp", '"items/services/diImportProc.h"',
     '"items/services/diImportProc.h" belongs to the design item diImportProc; diImport includes no other item'),
    ("items/services/diImportProc.cpp", '"items/services/diImport.h"',
     '"items/services/diImport.h" belongs to the design item diImport; diImportProc includes no other item'),
    ("items/services/diImportParts.h", '"items/services/diImportProc.h"',
     '"items/services/diImportProc.h" belongs to the design item diImportProc; diImport includes no other item'),
]

# Forms of the directive that hide nothing: (line, what is said of it or None)
FORMS = [
    ("  #  include   <sqlite3.h>", True),
    ("#include<sqlite3.h>", True),
    ("\t#\tinclude\t<sqlite3.h>  // why", True),
    ("/* why */ #include <sqlite3.h>", True),
    ("# /* why */ include /* why */ <sqlite3.h>", True),
    ("#include_next <sqlite3.h>", True),
    ("%:include <sqlite3.h>", True),
    ("#include <sqlite3.h>\r", True),
    ("// #include <sqlite3.h>", False),
    ("/// Write #include <sqlite3.h> in the host.", False),
    ('inline const char* kText[] = {"[;\\\\", "#include <sqlite3.h>"};', False),
    ("#include <vector> // not <sqlite3.h>", False),
]


def write_tree(root, files):
    for name, text in files.items():
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text.encode())


def with_line(text, line):
    """The file with one more line at the end, and the number of that line."""
    return text + line + "\n", text.count("\n") + 1


def storey_of(name):
    return name.rsplit("/", 1)[0]


def run(command, **options):
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, errors="replace", **options)
    return done.returncode, done.stdout


def cached(name):
    """A value of this build's own CMake cache."""
    text = (BUILD / "CMakeCache.txt").read_text()
    return re.search(rf"^{name}:\w+=(.*)$", text, re.MULTILINE).group(1)


CMAKE = cached("CMAKE_COMMAND")


class Check(unittest.TestCase):
    """The check by itself."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        write_tree(self.root, SAMPLE)

    def check(self, storey):
        return run([CMAKE, f"-DROOT={self.root}", f"-DSTOREY={storey}", "-P",
                    str(SOURCE / "cmake/StoreyCheck.cmake")])

    def must_fail(self, name, line, message):
        text, number = with_line(SAMPLE[name], line)
        write_tree(self.root, {name: text})
        code, output = self.check(storey_of(name))
        self.assertNotEqual(code, 0, output)
        self.assertEqual([l for l in output.splitlines() if ": error: " in l],
                         [f"{self.root / name}:{number}: error: {message}"], output)

    def test_the_correct_tree_passes(self):
        storeys = {storey_of(name) for name in SAMPLE}
        self.assertEqual(len(storeys), 8)
        for storey in sorted(storeys):
            with self.subTest(storey):
                self.assertEqual(self.check(storey), (0, ""))

    def test_a_forbidden_include_is_named_with_its_place(self):
        for name, operand, message in MUST_FAIL:
            with self.subTest(f"{name} includes {operand}"):
                self.must_fail(name, f"#include {operand}", message)
                write_tree(self.root, {name: SAMPLE[name]})
                self.assertEqual(self.check(storey_of(name)), (0, ""))

    def test_every_form_of_the_directive_is_seen(self):
        for line, seen in FORMS:
            with self.subTest(line):
                if seen:
                    self.must_fail("frame/Base.h", line, "<sqlite3.h> " + FOREIGN)
                else:
                    write_tree(self.root, {"frame/Base.h": with_line(SAMPLE["frame/Base.h"], line)[0]})
                    self.assertEqual(self.check("frame"), (0, ""))

    def test_every_fault_is_told(self):
        text = SAMPLE["frame/Base.cpp"] + "#include <sqlite3.h>\n\n#include <unistd.h>\n"
        write_tree(self.root, {"frame/Base.cpp": text})
        code, output = self.check("frame")
        self.assertNotEqual(code, 0)
        self.assertEqual(re.findall(r"Base\.cpp:(\d+): error: (<\S+>)", output),
                         [("3", "<sqlite3.h>"), ("5", "<unistd.h>")])
        self.assertIn("Forbidden includes in frame/: 2", output)

    def test_every_header_of_the_standard_library_passes(self):
        text = (SOURCE / "cmake/StoreyCheck.cmake").read_text()
        headers = re.search(r"set\(standard_headers\s([^)]*)\)", text).group(1).split()
        self.assertEqual(len(headers), len(set(headers)))
        for header in ("algorithm", "cmath", "span", "source_location", "stop_token", "version", "numbers"):
            self.assertIn(header, headers)
        write_tree(self.root, {"frame/Base.h": "".join(f"#include <{header}>\n" for header in headers)})
        self.assertEqual(self.check("frame"), (0, ""))

    def test_an_unknown_storey_is_refused(self):
        code, output = self.check("attic")
        self.assertNotEqual(code, 0)
        self.assertIn("STOREY=attic is no storey of the core", output)


class Build(unittest.TestCase):
    """The check and the include folders in the build itself."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = Path(folder.name) / "tree"
        cls.build = Path(folder.name) / "build"
        write_tree(cls.root, SAMPLE)
        shutil.copy(SOURCE / "CMakeLists.txt", cls.root)
        shutil.copytree(SOURCE / "cmake", cls.root / "cmake")
        code, output = run([
            CMAKE, "-S", str(cls.root), "-B", str(cls.build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
            "-DKVDESIGN_TESTS=OFF", "-DCMAKE_CXX_COMPILER=" + cached("CMAKE_CXX_COMPILER"),
        ])
        if code != 0:
            raise AssertionError(output)

    def make(self, target="all"):
        return run([CMAKE, "--build", str(self.build), "--target", target])

    def compile(self, name):
        """Compiles one source with the very command of the build, past the check."""
        commands = json.loads((self.build / "compile_commands.json").read_text())
        entry = next(e for e in commands if e["file"].endswith(name))
        return run(shlex.split(entry["command"]) + ["-fsyntax-only"], cwd=entry["directory"])

    def test_the_correct_tree_builds_with_a_library(self):
        code, output = self.make()
        self.assertEqual(code, 0, output)
        self.assertTrue((self.build / "libkvdesign.a").is_file())

    def test_a_forbidden_include_stops_the_build(self):
        # A header that the compiler would find by itself, and one that lies above.
        for operand, message in (("<string.h>", "<string.h> " + FOREIGN),
                                 ('"server/vdSvr.h"', '"server/vdSvr.h" ' + ABOVE.format("frame"))):
            with self.subTest(operand):
                self.assertEqual(self.make("kvdesign_frame")[0], 0)
                text, number = with_line(SAMPLE["frame/Base.cpp"], f"#include {operand}")
                write_tree(self.root, {"frame/Base.cpp": text})
                self.addCleanup(write_tree, self.root, SAMPLE)
                code, output = self.make("kvdesign_frame")
                self.assertNotEqual(code, 0, output)
                self.assertIn(f"frame/Base.cpp:{number}: error: {message}", output)
                write_tree(self.root, SAMPLE)

    def test_a_storey_of_headers_alone_is_checked_and_compiled(self):
        for line, message in (("#include <string.h>", "<string.h> " + FOREIGN),
                              ("static_assert(sizeof(OneRecord) == 1);", "failed")):
            with self.subTest(line):
                self.assertEqual(self.make("kvdesign_records")[0], 0)
                write_tree(self.root, {"records/OneRecord.h": with_line(SAMPLE["records/OneRecord.h"], line)[0]})
                self.addCleanup(write_tree, self.root, SAMPLE)
                code, output = self.make("kvdesign_records")
                self.assertNotEqual(code, 0, output)
                self.assertIn(message, output)
                write_tree(self.root, SAMPLE)

    def test_an_include_upwards_or_sideways_finds_no_file(self):
        self.addCleanup(write_tree, self.root, SAMPLE)
        for name, header in (("frame/Base.cpp", "server/vdSvr.h"), ("frame/Base.cpp", "records/OneRecord.h"),
                             ("editor/Table.cpp", "items/client/diMenu.h"),
                             ("items/client/diMenu.cpp", "items/services/diImport.h"),
                             ("items/services/diImport.cpp", "server/vdSvr.h"),
                             ("server/vdSvr.cpp", "window/Window.h")):
            with self.subTest(f"{name} includes {header}"):
                code, output = self.compile(name)
                self.assertEqual(code, 0, output)
                write_tree(self.root, {name: with_line(SAMPLE[name], f'#include "{header}"')[0]})
                code, output = self.compile(name)
                self.assertNotEqual(code, 0)
                self.assertRegex(output, rf"{re.escape(header)}['\"]?:? (No such file|file not found)")
                write_tree(self.root, SAMPLE)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
