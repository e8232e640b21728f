"""Reads a DLL from outside: its resources, imports and exports."""

import struct


class Dll:
    """`resources` is {(type, id): [(language, bytes), ...]}; a type or id is a number or a text."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self.data = file.read()
        header, = struct.unpack_from("<I", self.data, 0x3C)
        if self.data[:2] != b"MZ" or self.data[header:header + 4] != b"PE\0\0":
            raise ValueError("no program for Windows")
        self.machine, count, self.time = struct.unpack_from("<HHI", self.data, header + 4)
        optional_size, self.characteristics = struct.unpack_from("<HH", self.data, header + 20)
        optional = header + 24
        magic, = struct.unpack_from("<H", self.data, optional)
        self.bits = {0x10B: 32, 0x20B: 64}[magic]
        self.dll_characteristics, = struct.unpack_from("<H", self.data, optional + 70)
        self.directories = optional + (96 if self.bits == 32 else 112)
        self.sections = [struct.unpack_from("<IIII", self.data, optional + optional_size + 40 * i + 8)
                         for i in range(count)]
        self.resources = {}
        self.read_resources()

    def offset(self, address):
        for size, start, stored, place in self.sections:
            if start <= address < start + max(size, stored):
                return address - start + place
        raise ValueError(f"address {address:#x} is in no section")

    def directory(self, index):
        return struct.unpack_from("<II", self.data, self.directories + 8 * index)

    def text(self, address):
        start = self.offset(address)
        return self.data[start:self.data.index(b"\0", start)].decode("ascii")

    def read_resources(self):
        root = self.offset(self.directory(2)[0])

        def entries(place):
            named, numbered = struct.unpack_from("<HH", self.data, root + place + 12)
            for i in range(named + numbered):
                name, below = struct.unpack_from("<II", self.data, root + place + 16 + 8 * i)
                if name & 0x80000000:
                    at = root + (name & 0x7FFFFFFF)
                    length, = struct.unpack_from("<H", self.data, at)
                    name = self.data[at + 2:at + 2 + 2 * length].decode("utf-16-le")
                yield name, below & 0x7FFFFFFF

        for kind, names in entries(0):
            for name, languages in entries(names):
                for language, place in entries(languages):
                    address, size = struct.unpack_from("<II", self.data, root + place)
                    start = self.offset(address)
                    self.resources.setdefault((kind, name), []).append((language, self.data[start:start + size]))

    def ids(self, kind):
        return sorted(name for other, name in self.resources if other == kind)

    def imports(self):
        """The names of the libraries."""
        place = self.offset(self.directory(1)[0])
        while True:
            name, = struct.unpack_from("<I", self.data, place + 12)
            if name == 0:
                return
            yield self.text(name)
            place += 20

    def exports(self):
        place = self.offset(self.directory(0)[0])
        count, _, names = struct.unpack_from("<III", self.data, place + 24)
        table = self.offset(names)
        return [self.text(address) for address in struct.unpack_from(f"<{count}I", self.data, table)]

    def strings(self):
        """{id: (language, text)} of the string tables."""
        found = {}
        for (kind, block), versions in self.resources.items():
            if kind != 6:
                continue
            for language, data in versions:
                place = 0
                for i in range(16):
                    length, = struct.unpack_from("<H", data, place)
                    place += 2
                    if length:
                        text = data[place:place + 2 * length].decode("utf-16-le")
                        found.setdefault(16 * (block - 1) + i, []).append((language, text))
                    place += 2 * length
        return found
