#!/usr/bin/env python3
"""make_base_plate.py: writes samples/base_plate.drl, a small part that shows what options do.

Three drills: T1 for a field of holes and a circle of holes, T2 for the corners and two slots, and
T3, which has the diameter of T1, for a row along the lower edge. They are in the order in which a
drawing program might have listed them.

Run without arguments to write the file beside this one; the same bytes come out every time.
"""

import pathlib

# On a circle of 18 mm about (88, 44), every 36 degrees, rounded to tenths.
CIRCLE = [(106, 44), (102.6, 54.6), (93.6, 61.1), (82.4, 61.1), (73.4, 54.6),
          (70, 44), (73.4, 33.4), (82.4, 26.9), (93.6, 26.9), (102.6, 33.4)]


def word(letter, millimetres):
    return f"{letter}{round(millimetres * 1000)}"


def hole(x, y):
    return word("X", x) + word("Y", y)


def scattered(places, step):
    return [places[i * step % len(places)] for i in range(len(places))]


def program():
    field = [(14 + 8 * column, 28 + 9 * row) for row in range(5) for column in range(5)]
    row = [(12 + 12 * column, 12) for column in range(9)]
    lines = ["M48", "METRIC,TZ,000.000", "T1C3.300", "T2C6.000", "T3C3.300", "%", "T1"]
    lines += [hole(*place) for place in scattered(field, 7)]
    lines += [hole(*place) for place in scattered(CIRCLE, 3)]
    lines += ["T2"] + [hole(*place) for place in ((5, 5), (115, 75), (5, 75), (115, 5))]
    lines += [hole(56, 20) + "G85" + hole(56, 34), hole(60, 70) + "G85" + hole(60, 56)]
    lines += ["T3"] + [hole(*place) for place in scattered(row, 4)]
    return "\n".join(lines + ["M30"]) + "\n"


if __name__ == "__main__":
    (pathlib.Path(__file__).parent / "base_plate.drl").write_text(program(), newline="\n")
