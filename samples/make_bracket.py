#!/usr/bin/env python3
"""make_bracket.py: writes samples/bracket.dxf, the drawing of a bracket, in millimetres.

The outline is a polyline with rounded corners, given by bulges. In it are a slot of two lines and
two arcs, two holes, a spline, and an arc in a plane that is seen from below. A note is left out by
the reader.

Run without arguments to write the file beside this one; the same bytes come out every time.
"""

import math
import pathlib

QUARTER = math.tan(math.radians(90.0) / 4)  # the bulge of a quarter of a circle


def group(code, value):
    return f"{code:>3}\n{value}\n"


def entity(name, layer, *groups):
    text = group(0, name) + group(8, layer)
    return text + "".join(group(code, value) for code, value in groups)


def outline():
    width, height, radius = 120, 80, 12
    vertices = [(radius, 0, 0), (width - radius, 0, QUARTER), (width, radius, 0),
                (width, height - radius, QUARTER), (width - radius, height, 0),
                (radius, height, QUARTER), (0, height - radius, 0), (0, radius, QUARTER)]
    groups = [(90, len(vertices)), (70, 1)]
    for x, y, bulge in vertices:
        groups += [(10, x), (20, y), (42, f"{bulge:.15g}")]
    return entity("LWPOLYLINE", "OUTLINE", *groups)


def line(start, end):
    return entity("LINE", "SLOT", (10, start[0]), (20, start[1]), (11, end[0]), (21, end[1]))


def arc(centre, radius, start, end):
    return entity("ARC", "SLOT", (10, centre[0]), (20, centre[1]), (40, radius), (50, start),
                  (51, end))


def spline():
    points = [(20, 30), (32, 48), (44, 12), (56, 48), (68, 12), (80, 30)]
    knots = [0, 0, 0, 0, 1, 2, 3, 3, 3, 3]
    groups = [(70, 12), (71, 3), (72, len(knots)), (73, len(points))]
    groups += [(40, knot) for knot in knots]
    groups += [(41, weight) for weight in (1, 1, 2, 2, 1, 1)]
    for x, y in points:
        groups += [(10, x), (20, y), (30, 0)]
    return entity("SPLINE", "GROOVE", *groups)


def drawing():
    text = group(999, "A bracket")
    text += group(0, "SECTION") + group(2, "HEADER") + group(9, "$INSUNITS") + group(70, 4)
    text += group(0, "ENDSEC") + group(0, "SECTION") + group(2, "ENTITIES")
    text += outline()
    text += line((30, 55), (70, 55)) + arc((70, 61), 6, 270, 90)
    text += line((70, 67), (30, 67)) + arc((30, 61), 6, 90, 270)
    for y in (20, 60):
        text += entity("CIRCLE", "HOLES", (10, 100), (20, y), (40, 7))
    text += spline()
    text += entity("ARC", "MARK", (10, -100), (20, 40), (40, 10), (50, 20), (51, 160), (210, 0),
                   (220, 0), (230, -1))
    text += entity("TEXT", "NOTE", (10, 10), (20, 90), (40, 5), (1, "Bracket"))
    return text + group(0, "ENDSEC") + group(0, "EOF")


if __name__ == "__main__":
    target = pathlib.Path(__file__).with_name("bracket.dxf")
    target.write_text(drawing(), encoding="ascii", newline="\r\n")
