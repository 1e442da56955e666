#!/usr/bin/env python3
"""make_housing.py: makes samples/housing.stl, a small cast housing that lacks a patch of its wall.

The housing is a pan with draft, fillets and a flange, 120 x 80 x 46 mm, with a hub in the middle and
a bore through it: a closed solid. Then some triangles of one corner are left out, as a surface is
that was lost on its way between two systems. Binary STL, in millimetres.

Run without arguments to write it beside this file; the same bytes come out every time.
"""

import math
import pathlib
import struct

STEPS_OF_CORNER = 10  # points of a quarter of each ring
POINTS = 4 * STEPS_OF_CORNER


def rounded_rectangle(half_width, half_depth, radius, z):
    """A ring of points, counter-clockwise seen from above."""
    ring = []
    for quarter, (x, y) in enumerate(((1, 1), (-1, 1), (-1, -1), (1, -1))):
        for step in range(STEPS_OF_CORNER):
            angle = math.pi / 2 * (quarter + step / (STEPS_OF_CORNER - 1))
            ring.append((x * (half_width - radius) + radius * math.cos(angle),
                         y * (half_depth - radius) + radius * math.sin(angle), z))
    return ring


def circle(radius, z):
    return [(radius * math.cos(math.pi / 2 * (k + 0.5) / STEPS_OF_CORNER),
             radius * math.sin(math.pi / 2 * (k + 0.5) / STEPS_OF_CORNER), z)
            for k in range(POINTS)]


def wall(offset, z):
    """A ring of the outer wall, so far outside its foot, with the draft of its height."""
    grown = offset + 0.04 * z
    return rounded_rectangle(50 + grown, 30 + grown, 14 + grown, z)


def fillet(offset, z, radius, first, last):
    """Rings along an arc from angle to angle, in degrees; the arc's middle is at offset and z."""
    rings = []
    for step in range(5):
        angle = math.radians(first + (last - first) * step / 4)
        rings.append(wall(offset + radius * math.cos(angle), z + radius * math.sin(angle)))
    return rings


def rings():
    """The rings of the closed surface, from the bore along the outside and back on the inside."""
    outside = [circle(9, 0)] + fillet(-5, 5, 5, -90, 0)
    outside += [wall(0, z) for z in (11, 17, 23, 29)]
    outside += fillet(4, 34, 4, 180, 90)
    flange = [wall(8, 38), wall(8, 46), wall(-4, 46)]
    inside = [wall(-4, 30)] + fillet(-8, 10, 4, 0, -90)
    hub = [circle(20, 6), circle(17, 9), circle(16, 28), circle(14.5, 30), circle(9, 30)]
    return outside + flange + inside + hub


def triangles():
    """Triangles with the number of their ring and of their point; outwards is counter-clockwise."""
    all_rings = rings()
    for i, ring in enumerate(all_rings):
        following = all_rings[(i + 1) % len(all_rings)]
        for k in range(POINTS):
            n = (k + 1) % POINTS
            yield i, k, (ring[k], ring[n], following[n])
            yield i, k, (ring[k], following[n], following[k])


def is_missing(ring, point):
    """The patch: some squares of the wall in the corner to the right and in front."""
    patch = {5: range(32, 35), 6: range(31, 37), 7: range(31, 37), 8: range(32, 37),
             9: range(33, 35)}
    return point in patch.get(ring, ())


def normal(corners):
    (ax, ay, az), (bx, by, bz), (cx, cy, cz) = corners
    ux, uy, uz, vx, vy, vz = bx - ax, by - ay, bz - az, cx - ax, cy - ay, cz - az
    x, y, z = uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx
    length = math.sqrt(x * x + y * y + z * z) or 1.0
    return [round(value / length, 4) for value in (x, y, z)]


def housing():
    facets = []
    for ring, point, corners in triangles():
        if is_missing(ring, point):
            continue
        corners = [tuple(round(value, 3) for value in corner) for corner in corners]
        values = normal(corners) + [value for corner in corners for value in corner]
        facets.append(struct.pack("<12fH", *(value + 0.0 for value in values), 0))
    header = b"a cast housing with a missing patch, in millimetres".ljust(80, b"\0")
    return header + struct.pack("<I", len(facets)) + b"".join(facets)


if __name__ == "__main__":
    folder = pathlib.Path(__file__).resolve().parent
    (folder / "housing.stl").write_bytes(housing())
