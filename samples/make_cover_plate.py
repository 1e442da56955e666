#!/usr/bin/env python3
"""make_cover_plate.py: draws samples/cover_plate.drl, the drill file of an equipment cover plate.

A plate of 320 x 200 mm, its origin at the lower left corner. The features stand in the order in
which a designer drew them and a CAD system exported them: pattern after pattern, every row from left
to right, every mirrored feature beside its mirror image. Nothing is arranged for the cutter.

Run without arguments to write cover_plate.drl beside this file; the same bytes come out every time.
"""

import math
import pathlib

TOOLS = [("T1", 3.2), ("T2", 4.3), ("T3", 6.6), ("T4", 5.0)]
WIDTH, HEIGHT = 320.0, 200.0


def number(value):
    """A coordinate as the export has it: three decimals, no negative zero."""
    return f"{round(value, 3) + 0.0:.3f}"


def hole(x, y):
    return f"X{number(x)}Y{number(y)}"


def slot(x, y, x2, y2):
    return f"{hole(x, y)}G85{hole(x2, y2)}"


def vent_grid(left, bottom, columns, rows, pitch):
    """Rows from left to right, every second row half a pitch further, as a pattern tool makes them."""
    for row in range(rows):
        shift = pitch / 2 if row % 2 else 0.0
        for column in range(columns):
            yield hole(left + shift + column * pitch, bottom + row * pitch * 0.866)


def bolt_circle(x, y, radius, count, first_angle=0.0):
    for i in range(count):
        angle = math.radians(first_angle + 360.0 * i / count)
        yield hole(x + radius * math.cos(angle), y + radius * math.sin(angle))


def mirrored(points):
    """Each hole, then its image on the other half of the plate: how a mirrored feature exports."""
    for x, y in points:
        yield hole(x, y)
        yield hole(WIDTH - x, y)


def louvres(left, bottom, columns, rows, length, pitch_x, pitch_y):
    for row in range(rows):
        for column in range(columns):
            x, y = left + column * pitch_x, bottom + row * pitch_y
            yield slot(x, y, x + length, y)


def adjusting_slots(x, y, radius, count, length):
    """Slots that point at the middle of a circle, all drawn from inside to outside."""
    for i in range(count):
        angle = 2 * math.pi * i / count + math.pi / count
        c, s = math.cos(angle), math.sin(angle)
        yield slot(x + radius * c, y + radius * s, x + (radius + length) * c, y + (radius + length) * s)


def features():
    """(tool, comment, lines) in the order of the drawing."""
    yield "T1", "vent grid, left", vent_grid(28, 122, 13, 9, 6.5)
    yield "T1", "vent grid, right", vent_grid(210, 122, 13, 9, 6.5)
    yield "T1", "pilot holes of the terminal rail", [hole(112 + 8 * i, 24) for i in range(13)]
    yield "T1", "pilot holes of the upper rail", [hole(112 + 8 * i, 178) for i in range(13)]
    yield "T2", "bolt circle of the motor flange", bolt_circle(160, 100, 42, 16)
    yield "T2", "bolt circle of the left gland", bolt_circle(62, 62, 24, 10, 18)
    yield "T2", "bolt circle of the right gland", bolt_circle(258, 62, 24, 10, 18)
    yield "T2", "inner bolt circle of the motor flange", bolt_circle(160, 100, 27, 12, 15)
    yield "T2", "feet of the left gland", bolt_circle(62, 62, 12, 6)
    yield "T2", "feet of the right gland", bolt_circle(258, 62, 12, 6)
    lower = [(10.0 + 25.0 * i, 10.0) for i in range(6)]
    upper = [(10.0 + 25.0 * i, 190.0) for i in range(6)]
    side = [(10.0, 40.0 + 30.0 * i) for i in range(5)]
    yield "T3", "edge, lower", mirrored(lower)
    yield "T3", "edge, upper", mirrored(upper)
    yield "T3", "edge, sides", mirrored(side)
    yield "T4", "louvres below the vents, left", louvres(22, 96, 4, 3, 12, 18, 7)
    yield "T4", "louvres below the vents, right", louvres(232, 96, 4, 3, 12, 18, 7)
    yield "T4", "adjusting slots of the motor flange", adjusting_slots(160, 100, 50, 12, 9)
    yield "T4", "handle recess", [slot(130, 163 + 7.5 * i, 190, 163 + 7.5 * i) for i in range(2)]
    yield "T1", "label rivets", mirrored([(100.0, 30.0), (100.0, 44.0), (124.0, 30.0), (124.0, 44.0)])
    yield "T1", "earth strap", [hole(16, 100), hole(304, 100), hole(160, 100)]


def drill_file():
    lines = ["M48", ";cover plate, 320 x 200, sheet 2 mm", ";FORMAT={-:-/ absolute / metric / decimal}",
             "FMAT,2", "METRIC,TZ"]
    lines += [f"{name}C{diameter:.3f}" for name, diameter in TOOLS]
    lines += ["%", "G90", "G05", "M71"]
    current = None
    for tool, comment, cuts in features():
        if tool != current:
            lines.append(tool)
            current = tool
        lines.append(f";{comment}")
        lines += cuts
    lines += ["T0", "M30"]
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    target = pathlib.Path(__file__).resolve().parent / "cover_plate.drl"
    target.write_bytes(drill_file().encode("ascii"))
