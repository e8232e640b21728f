#!/usr/bin/env python3
"""make_resources.py RESOURCES IDL VERSION OUT: makes in the folder OUT what KvDesSvr.rc takes in.

From the pictures (XPM) of RESOURCES/pictures and RESOURCES/windows: the bitmaps of the tool buttons, the icon, the
cursors. From RESOURCES/Messages.h and RESOURCES/CommandWords.h: strings.rc. From the interface identifier of _vdSvr
in IDL: iid.bin. From VERSION (as 1.2.3): version.rc. The same input gives the same bytes."""

import os
import re
import struct
import sys
import uuid

TOOL_BUTTONS = ["findtag", "renumtag", "maptable", "constants"]
CURSORS = ["wait", "drag", "nodrop"]
# The ground of the tool buttons: the classic grey of a button's face, which LoadImage with LR_LOADMAP3DCOLORS turns
# into that of the operator's colours.
BUTTON_FACE = (0xC0, 0xC0, 0xC0)
BLACK = (0, 0, 0)
WHITE = (255, 255, 255)


class Picture:
    """An XPM picture with one character a pixel; `rows` holds (r, g, b), or None where it is transparent."""

    def __init__(self, path):
        with open(path, encoding="ascii") as file:
            lines = re.findall(r'^"(.*)"', file.read(), re.MULTILINE)
        header = [int(word) for word in lines[0].split()]
        self.width, self.height, count, characters = header[:4]
        self.hotspot = tuple(header[4:6])
        if characters != 1:
            raise ValueError(f"{path}: {characters} characters a pixel")
        self.colours = []
        named = {}
        for line in lines[1:1 + count]:
            key, colour = re.fullmatch(r"(.) c (None|#[0-9A-Fa-f]{6})", line).groups()
            named[key] = None if colour == "None" else tuple(bytes.fromhex(colour[1:]))
            if named[key] is not None:
                self.colours.append(named[key])
        self.rows = [[named[key] for key in line] for line in lines[1 + count:]]
        if len(self.rows) != self.height or any(len(row) != self.width for row in self.rows):
            raise ValueError(f"{path}: not {self.width} by {self.height}")


def bits(rows, depth):
    """Palette indexes as the bytes of a bitmap: bottom row first, each row filled up to four bytes."""
    out = bytearray()
    for row in reversed(rows):
        value = 0
        for index in row:
            value = value << depth | index
        length = len(row) * depth
        padded = (length + 31) // 32 * 32
        out += (value << (padded - length)).to_bytes(padded // 8, "big")
    return bytes(out)


def bitmap_header(width, height, depth, image_size):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, depth, 0, image_size, 0, 0, 0, 0)


def palette(colours, size):
    colours = colours + [BLACK] * (size - len(colours))
    return b"".join(struct.pack("BBBB", blue, green, red, 0) for red, green, blue in colours)


def indexed(picture, ground, size):
    """The palette (ground first) and the rows as indexes into it."""
    colours = [ground] + [colour for colour in picture.colours if colour != ground]
    if len(colours) > size:
        raise ValueError(f"{len(colours)} colours, at most {size}")
    return colours, [[0 if pixel is None else colours.index(pixel) for pixel in row] for row in picture.rows]


def bitmap(picture):
    """A bitmap file of 16 colours: what is stored as the resource is what follows its 14 bytes of file header."""
    colours, rows = indexed(picture, BUTTON_FACE, 16)
    image = bits(rows, 4)
    body = bitmap_header(picture.width, picture.height, 4, len(image)) + palette(colours, 16) + image
    return struct.pack("<2sIHHI", b"BM", 14 + len(body), 0, 0, 14 + 40 + 64) + body


def mask(picture):
    return bits([[1 if pixel is None else 0 for pixel in row] for row in picture.rows], 1)


def group_file(kind, picture, colour_count, first, second, image):
    """An icon (kind 1) or cursor (kind 2) file with one picture."""
    header = struct.pack("<HHH", 0, kind, 1)
    entry = struct.pack("<BBBBHHII", picture.width, picture.height, colour_count, 0, first, second, len(image), 22)
    return header + entry + image


def icon(picture):
    colours, rows = indexed(picture, BLACK, 16)
    image = bits(rows, 4) + mask(picture)
    body = bitmap_header(picture.width, 2 * picture.height, 4, len(image)) + palette(colours, 16) + image
    return group_file(1, picture, 16, 1, 4, body)


def cursor(picture):
    if set(picture.colours) != {BLACK, WHITE} or len(picture.hotspot) != 2:
        raise ValueError("a cursor is black and white and has a hot spot")
    rows = [[1 if pixel == WHITE else 0 for pixel in row] for row in picture.rows]
    image = bits(rows, 1) + mask(picture)
    body = bitmap_header(picture.width, 2 * picture.height, 1, len(image)) + palette([BLACK, WHITE], 2) + image
    return group_file(2, picture, 0, *picture.hotspot, body)


LITERALS = r'((?:L"(?:[^"\\]|\\.)*"\s*)+)'


def text_of(literals):
    text = "".join(re.findall(r'L"((?:[^"\\]|\\.)*)"', literals))
    if "\\" in text:
        raise ValueError(f"an escape in the text {text!r}")
    return text


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def messages(source):
    """(id, text) of Messages.h, which must be 20000 to 20030."""
    found = [(int(number), text_of(literals)) for number, literals in
             re.findall(r"\{\s*(\d+),\s*" + LITERALS + r"\}", source)]
    if [number for number, _ in found] != list(range(20000, 20031)):
        raise ValueError("the messages are not 20000 to 20030")
    return found


def command_words(source):
    """(id, word) of CommandWords.h: 56 words from 10000 upward."""
    table = source[source.index("kCommandWords{{"):]
    words = re.findall(r'L"([A-Z]+)"', table)
    if len(words) != 56:
        raise ValueError(f"{len(words)} command words")
    return list(enumerate(words, 10000))


def string_tables(strings):
    lines = ["LANGUAGE LANG_ITALIAN, SUBLANG_ITALIAN", "STRINGTABLE", "BEGIN"]
    for number, text in strings:
        quoted = text.replace('"', '""')
        lines.append(f'    {number} "{quoted}"')
    return "\n".join(lines + ["END", ""])


def interface_id(source):
    """Version word 1, then the identifier of _vdSvr as it lies in memory."""
    match = re.search(r"uuid\(\s*([0-9A-Fa-f-]{36})\s*\)[^{};]*?\]\s*(?:interface|dispinterface)\s+_vdSvr\b", source)
    if not match:
        raise ValueError("no interface _vdSvr with a uuid")
    return struct.pack("<I", 1) + uuid.UUID(match.group(1)).bytes_le


def version_information(version):
    numbers = [int(part) for part in version.split(".")]
    numbers = (numbers + [0, 0, 0, 0])[:4]
    commas = ",".join(str(number) for number in numbers)
    dots = ".".join(str(number) for number in numbers)
    return f"""LANGUAGE LANG_ITALIAN, SUBLANG_ITALIAN
1 VERSIONINFO
FILEVERSION {commas}
PRODUCTVERSION {commas}
FILEFLAGSMASK VS_FFI_FILEFLAGSMASK
FILEFLAGS 0
FILEOS VOS_NT_WINDOWS32
FILETYPE VFT_DLL
FILESUBTYPE 0
BEGIN
    BLOCK "StringFileInfo"
    BEGIN
        BLOCK "041004B0"
        BEGIN
            VALUE "FileDescription", "KvDesign: server di progettazione"
            VALUE "FileVersion", "{dots}"
            VALUE "InternalName", "KvDesSvr"
            VALUE "OriginalFilename", "KvDesSvr.dll"
            VALUE "ProductName", "KvDesign"
            VALUE "ProductVersion", "{version}"
        END
    END
    BLOCK "VarFileInfo"
    BEGIN
        VALUE "Translation", 0x410, 1200
    END
END
"""


def main():
    resources, idl, version, out = sys.argv[1:]

    def picture(*path):
        return Picture(os.path.join(resources, *path) + ".xpm")

    made = {}
    for name in TOOL_BUTTONS:
        made[name + ".bmp"] = bitmap(picture("pictures", name))
    for name in CURSORS:
        made[name + ".cur"] = cursor(picture("windows", name))
    made["kvdesign.ico"] = icon(picture("pictures", "kvdesign32"))
    made["iid.bin"] = interface_id(read(idl))
    strings = command_words(read(os.path.join(resources, "CommandWords.h")))
    strings += messages(read(os.path.join(resources, "Messages.h")))
    made["strings.rc"] = string_tables(strings).encode("utf-8")
    made["version.rc"] = version_information(version).encode("utf-8")
    for name, data in made.items():
        with open(os.path.join(out, name), "wb") as file:
            file.write(data)


if __name__ == "__main__":
    main()
