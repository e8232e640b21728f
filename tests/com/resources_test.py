#!/usr/bin/env python3
"""What KvDesSvr.dll carries, read from the file itself: resources, imports, exports; and that making it once more, in
another place, gives the same bytes."""

import os
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
import uuid
from xml.etree import ElementTree

from pefile import Dll

SOURCE = os.environ["KV_SOURCE_DIR"]
BUILD = os.environ["KV_BUILD_DIR"]
DLL_PATH = os.environ["KV_DLL"]
BITS = int(os.environ["KV_BITS"])
CURSOR, BITMAP, ICON, STRING, GROUP_CURSOR, GROUP_ICON, VERSION, MANIFEST = 1, 2, 3, 6, 12, 14, 16, 24
ITALIAN = 0x410
SYSTEM_LIBRARIES = {"ADVAPI32", "COMCTL32", "COMDLG32", "GDI32", "KERNEL32", "MSVCRT", "OLE32", "OLEAUT32", "SHELL32",
                    "USER32", "UXTHEME"}
COMMAND_WORDS = """AND CAPTURE CHILDREN CLIPBOARD CLOSE CLOSEALL EXTRACT FILTER FIND FORMAT HELP HIERARCHY HISTORY MAIL
    MEMORY MEMORYFOLDER LABRYS NEXTREC OTHER OPEN OPTIONS OR OWNED PGDOWN PGUP PARENT PASSWORD PREVREC EXPORT ROWDOWN
    ROWUP SELECT SELECTMODE SETOPS UNSELECT UNSELECTALL FONT TOP BOTTOM COPY CUT PASTE QUERY BACK QUIT UNDO ADMIN
    SELECTALL CLOSEWIN FORWARD STOP REFRESH SAVE XOR EXCL LOAD""".split()


def read(*path):
    with open(os.path.join(SOURCE, *path), encoding="utf-8") as file:
        return file.read()


def drawing(*path):
    """The rows of an XPM picture: colours as 0xRRGGBB, None where it is transparent."""
    lines = re.findall(r'^"(.*)"', read("resources", *path), re.MULTILINE)
    count = int(lines[0].split()[2])
    named = {line[0]: None if line.endswith("None") else int(line[-6:], 16) for line in lines[1:1 + count]}
    return [[named[key] for key in line] for line in lines[1 + count:]]


def pixels(data, width, height, depth):
    """The rows of a stored bitmap whose palette follows its 40 bytes of header; and where its bytes end."""
    colours = [int.from_bytes(data[40 + 4 * i:43 + 4 * i], "little") for i in range(1 << depth)]
    start = 40 + 4 * len(colours)
    stride = (width * depth + 31) // 32 * 4
    rows = []
    for y in reversed(range(height)):
        row = int.from_bytes(data[start + y * stride:start + (y + 1) * stride], "big")
        rows.append([colours[row >> (stride * 8 - depth * (x + 1)) & ((1 << depth) - 1)] for x in range(width)])
    return rows, start + stride * height


def masked(data, start, width, height):
    """The mask behind a cursor's or icon's colours: True where it is transparent."""
    stride = (width + 31) // 32 * 4
    assert len(data) == start + stride * height
    return [[bool(data[start + (height - 1 - y) * stride + x // 8] >> (7 - x % 8) & 1) for x in range(width)]
            for y in range(height)]


class Resources(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dll = Dll(DLL_PATH)

    def only(self, kind, name):
        """The bytes of a resource that is there in one language; the language."""
        versions = self.dll.resources[kind, name]
        self.assertEqual(1, len(versions))
        return versions[0][1], versions[0][0]

    def test_the_type_library_is_number_one(self):
        self.assertEqual([1], self.dll.ids("TYPELIB"))
        self.assertEqual(b"MSFT", self.only("TYPELIB", 1)[0][:4])

    def test_the_interface_identifier_has_twenty_bytes(self):
        self.assertEqual([1], self.dll.ids("_IID_VDSVR"))
        data, _ = self.only("_IID_VDSVR", 1)
        idl = read("com", "KvDesSvr.idl")
        head = idl[:re.search(r"interface\s+_vdSvr\s*:", idl).start()]
        told = uuid.UUID(re.findall(r"uuid\(\s*([0-9A-Fa-f-]{36})", head)[-1])
        self.assertEqual(20, len(data))
        self.assertEqual(1, struct.unpack_from("<I", data)[0])
        self.assertEqual(told, uuid.UUID(bytes_le=data[4:]))

    def test_the_bitmaps_are_the_tool_buttons(self):
        self.assertEqual([1000, 1001, 1002, 1003], self.dll.ids(BITMAP))
        for number, name in zip(range(1000, 1004), ["findtag", "renumtag", "maptable", "constants"]):
            with self.subTest(name):
                data, _ = self.only(BITMAP, number)
                self.assertEqual(232, len(data))
                self.assertEqual((40, 16, 16, 1, 4, 0), struct.unpack_from("<IiiHHI", data))
                rows, end = pixels(data, 16, 16, 4)
                self.assertEqual(232, end)
                wanted = [[0xC0C0C0 if pixel is None else pixel for pixel in row]
                          for row in drawing("pictures", name + ".xpm")]
                self.assertEqual(wanted, rows)

    def test_the_cursors_stand_in_groups_of_one(self):
        self.assertEqual([1, 2, 3], self.dll.ids(CURSOR))
        self.assertEqual([32101, 32102, 32103], self.dll.ids(GROUP_CURSOR))
        for number, name, spot in [(1, "wait", (15, 16)), (2, "drag", (0, 0)), (3, "nodrop", (15, 15))]:
            with self.subTest(name):
                group, _ = self.only(GROUP_CURSOR, 32100 + number)
                data, _ = self.only(CURSOR, number)
                self.assertEqual((0, 2, 1), struct.unpack_from("<HHH", group))
                self.assertEqual((len(data), number), struct.unpack_from("<IH", group, 14))
                self.assertEqual(spot, struct.unpack_from("<HH", data))
                self.assertEqual((40, 32, 64, 1, 1, 0), struct.unpack_from("<IiiHHI", data, 4))
                self.see_picture(data[4:], drawing("windows", name + ".xpm"), 1)

    def test_the_icon_stands_in_a_group_of_one(self):
        self.assertEqual([1], self.dll.ids(ICON))
        self.assertEqual([32001], self.dll.ids(GROUP_ICON))
        group, _ = self.only(GROUP_ICON, 32001)
        data, _ = self.only(ICON, 1)
        self.assertEqual((0, 1, 1), struct.unpack_from("<HHH", group))
        self.assertEqual((32, 32), struct.unpack_from("<BB", group, 6))
        self.assertEqual((len(data), 1), struct.unpack_from("<IH", group, 14))
        self.assertEqual((40, 32, 64, 1, 4, 0), struct.unpack_from("<IiiHHI", data))
        self.see_picture(data, drawing("pictures", "kvdesign32.xpm"), 4)

    def see_picture(self, data, wanted, depth):
        rows, end = pixels(data, 32, 32, depth)
        mask = masked(data, end, 32, 32)
        self.assertEqual([[pixel is None for pixel in row] for row in wanted], mask)
        # A colour other than black where it is transparent would turn what lies below over.
        self.assertEqual([[pixel or 0 for pixel in row] for row in wanted], rows)

    def test_the_strings_are_the_messages_and_the_command_words(self):
        wanted = dict(enumerate(COMMAND_WORDS, 10000))
        table = re.findall(r'\{(\d+),\s*((?:L"[^"]*"\s*)+)\}', read("resources", "Messages.h"))
        wanted.update({int(number): "".join(re.findall(r'"([^"]*)"', text)) for number, text in table})
        self.assertEqual(56 + 31, len(wanted))
        self.assertEqual({number: [(ITALIAN, text)] for number, text in wanted.items()}, self.dll.strings())

    def test_the_manifest_asks_for_the_newer_controls(self):
        self.assertEqual([2], self.dll.ids(MANIFEST))
        data, _ = self.only(MANIFEST, 2)
        wanted = ElementTree.fromstring(data).find(".//{urn:schemas-microsoft-com:asm.v1}dependentAssembly/*")
        self.assertEqual(("Microsoft.Windows.Common-Controls", "6.0.0.0"), (wanted.get("name"), wanted.get("version")))

    def test_nothing_else_is_carried_along(self):
        kinds = {kind for kind, _ in self.dll.resources}
        self.assertEqual({"TYPELIB", "_IID_VDSVR", CURSOR, BITMAP, ICON, STRING, GROUP_CURSOR, GROUP_ICON, VERSION,
                          MANIFEST}, kinds)

    def test_accents_come_through(self):
        strings = self.dll.strings()
        self.assertEqual("La classe %% esiste gi\u00e0.", strings[20002][0][1])
        self.assertEqual("Si \u00e8 verificato un errore critico. L'applicazione dev'essere terminata.",
                         strings[20001][0][1])
        self.assertTrue(strings[20000][0][1].endswith("non pu\u00f2 essere avviato."))
        self.assertIn("si dovr\u00e0 chiudere", strings[20029][0][1])

    def test_the_version_is_that_of_the_project(self):
        version = re.search(r"\bVERSION (\d+(?:\.\d+)*)", read("CMakeLists.txt").partition("project(")[2]).group(1)
        numbers = ([int(part) for part in version.split(".")] + [0] * 4)[:4]
        data, language = self.only(VERSION, 1)
        self.assertEqual(ITALIAN, language)
        fixed = data.index(struct.pack("<I", 0xFEEF04BD))
        high, low, product_high, product_low = struct.unpack_from("<IIII", data, fixed + 8)
        self.assertEqual(numbers, [high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF])
        self.assertEqual((high, low), (product_high, product_low))
        texts = data.decode("utf-16-le")
        for text in ["041004B0", "OriginalFilename\0KvDesSvr.dll\0", "ProductVersion"]:
            self.assertIn(text, texts.replace("\0\0", "\0"))
        self.assertIn(version + "\0", texts)


class Shape(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dll = Dll(DLL_PATH)

    def test_it_is_a_library_of_the_width_asked_for(self):
        self.assertEqual(BITS, self.dll.bits)
        self.assertEqual({64: 0x8664, 32: 0x14C}[BITS], self.dll.machine)
        self.assertTrue(self.dll.characteristics & 0x2000)

    def test_it_may_be_moved_and_its_data_not_run(self):
        self.assertEqual(0x140, self.dll.dll_characteristics & 0x140)

    def test_it_holds_no_time(self):
        self.assertEqual(0, self.dll.time)

    def test_it_exports_the_four_entry_points_undecorated(self):
        self.assertEqual(["DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"],
                         sorted(self.dll.exports()))

    def test_it_needs_libraries_of_the_system_alone(self):
        needed = {name.upper().removesuffix(".DLL") for name in self.dll.imports()}
        self.assertEqual(set(), needed - SYSTEM_LIBRARIES)
        self.assertIn("KERNEL32", needed)

    def test_it_names_no_folder_of_the_machine_that_made_it(self):
        for folder in {SOURCE, BUILD}:
            self.assertNotIn(folder.encode("utf-8"), self.dll.data)
            self.assertNotIn(folder.encode("utf-16-le"), self.dll.data)


class SecondMaking(unittest.TestCase):
    """The type library, the resources and the linking, by the build's own commands, in another folder."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="kvdll")
        self.addCleanup(shutil.rmtree, self.folder)

    def test_it_gives_the_same_bytes(self):
        ninja = shutil.which("ninja")
        if ninja is None or not os.path.exists(os.path.join(BUILD, "build.ninja")):
            self.skipTest("not built by ninja")
        commands = subprocess.run([ninja, "-C", BUILD, "-t", "commands", "KvDesSvr"], check=True, capture_output=True,
                                  text=True).stdout.splitlines()
        own = [line for line in commands
               if re.search(r"typelib_times\.py|make_resources\.py|KvDesSvr\.rc\b|KvDesSvr_i\.c\b", line)]
        link = commands[-1]
        self.assertIn("-shared", link)
        os.mkdir(os.path.join(self.folder, "com"))
        for command in own + [link]:
            command = self.elsewhere(command)
            done = subprocess.run(command, shell=True, cwd=BUILD, capture_output=True, text=True)
            self.assertEqual(0, done.returncode, f"{command}\n{done.stdout}{done.stderr}")
        for name in ["KvDesSvr.tlb", "strings.rc", "version.rc", "kvdesign.ico"]:
            with open(os.path.join(BUILD, "com", name), "rb") as first, \
                    open(os.path.join(self.folder, "com", name), "rb") as second:
                self.assertEqual(first.read(), second.read(), name)
        with open(DLL_PATH, "rb") as first, open(os.path.join(self.folder, "KvDesSvr.dll"), "rb") as second:
            self.assertEqual(first.read(), second.read())

    def elsewhere(self, command):
        """The command with the folder of what is made, the objects of it and the DLL put into our own folder."""
        command = command.replace(BUILD + "/com", self.folder + "/com")
        command = re.sub(r"(?<![\w/.])CMakeFiles/\w+\.dir/\S*?(KvDesSvr\.rc\.res|KvDesSvr_i\.c\.obj)(?!\.)",
                         lambda found: f"{self.folder}/{found.group(1)}", command)
        return re.sub(r"(?<![\w/.])(?=(lib)?KvDesSvr\.dll(\.a)?\b)", self.folder + "/", command)


if __name__ == "__main__":
    unittest.main()
