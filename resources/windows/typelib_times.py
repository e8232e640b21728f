#!/usr/bin/env python3
"""typelib_times.py FILE.tlb: blanks the two times of making that the type library compiler writes into a type
library as custom data (a number of seconds, and a line of text), so that the same source gives the same bytes."""

import struct
import sys
import uuid

SEGMENT_GUIDS, SEGMENT_CUSTOM_DATA, SEGMENT_CUSTOM_GUIDS = 5, 11, 12
MADE_AT = uuid.UUID("de77ba63-517c-11d1-a2da-0000f8773ce9")
MADE_BY = uuid.UUID("de77ba65-517c-11d1-a2da-0000f8773ce9")
HAS_HELP_DLL = 0x100
VT_UI4, VT_BSTR = 19, 8


def blank(data):
    """The library `data` without its two times; ValueError where it is no library or has other custom data."""
    if data[:4] != b"MSFT":
        raise ValueError("no type library")
    data = bytearray(data)
    flags, = struct.unpack_from("<I", data, 0x14)
    types, = struct.unpack_from("<I", data, 0x20)
    directory = 0x54 + (4 if flags & HAS_HELP_DLL else 0) + 4 * types

    def segment(index):
        return struct.unpack_from("<ii", data, directory + 16 * index)

    guids, _ = segment(SEGMENT_GUIDS)
    values, _ = segment(SEGMENT_CUSTOM_DATA)
    entries, length = segment(SEGMENT_CUSTOM_GUIDS)
    for entry in range(entries, entries + max(length, 0), 12):
        guid, value = struct.unpack_from("<ii", data, entry)
        name = uuid.UUID(bytes_le=bytes(data[guids + guid:guids + guid + 16]))
        kind, = struct.unpack_from("<H", data, values + value)
        place = values + value + 2
        if name == MADE_AT and kind == VT_UI4:
            struct.pack_into("<I", data, place, 0)
        elif name == MADE_BY and kind == VT_BSTR:
            count, = struct.unpack_from("<I", data, place)
            line = bytes(data[place + 4:place + 4 + count])
            at = line.find(b" at ")
            if at >= 0:
                data[place + 4 + at:place + 4 + count] = b" " * (count - at)
        elif name in (MADE_AT, MADE_BY):
            raise ValueError(f"custom data of the unknown kind {kind}")
    return bytes(data)


def main():
    path = sys.argv[1]
    with open(path, "rb") as file:
        data = file.read()
    with open(path, "wb") as file:
        file.write(blank(data))


if __name__ == "__main__":
    main()
