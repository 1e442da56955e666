#!/usr/bin/env python3
"""make_tool_list.py: writes samples/tool_list.ids, a stream of objects that are identifiers.

Four tools, each the owner of an identity, and the operations of a job, which refer to them: as an
archive of the library stores them by pointer. One reference is stored twice, one operation has no
tool, one refers to a tool that is gone, and one is an old record without a serial.

Run without arguments to write the file beside this one; the same bytes come out every time.
"""

import pathlib
import struct

MORNING = 1763798400  # 2025-11-22, 08:00 UTC
INVALID = 1  # the stamp of an invalid identifier


def record(address, stamp, serial):
    return struct.pack("<IIHII", address, stamp, 2, serial, 0)


def old_record(address, stamp):
    return struct.pack("<IIH", address, stamp, 1)


class Stream:
    def __init__(self):
        self.bytes = b""
        self.numbers = {}  # of classes
        self.last = 0  # classes and objects share one sequence

    def add(self, class_name, data):
        """Appends an object and returns its number."""
        if class_name in self.numbers:
            self.bytes += struct.pack("<H", 0x8000 | self.numbers[class_name])
        else:
            name = class_name.encode("ascii")
            self.bytes += struct.pack("<HHH", 0xFFFF, 1, len(name)) + name
            self.last += 1
            self.numbers[class_name] = self.last
        self.bytes += data
        self.last += 1
        return self.last

    def repeat(self, number):
        self.bytes += struct.pack("<H", number)


def main():
    stream = Stream()
    tools = [record(0x6C1F0D9A + 0x1357 * i, MORNING + 90 * i, 7 + i) for i in range(4)]
    for tool in tools:
        stream.add("nmkObjectId", tool)
    first = stream.add("nmkRefToObjectId", tools[2])
    stream.add("nmkRefToObjectId", tools[0])
    stream.repeat(first)
    stream.repeat(0)
    stream.add("nmkRefToObjectId", record(0x2B7E1516, INVALID, 23))
    stream.add("nmkUniqueIdPtr", old_record(0x28AED2A6, MORNING - 86400))
    pathlib.Path(__file__).with_name("tool_list.ids").write_bytes(stream.bytes)


if __name__ == "__main__":
    main()
