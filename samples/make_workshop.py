#!/usr/bin/env python3
"""make_workshop.py: draws samples/workshop.map and samples/clamps.csv, planes to search routes in.

workshop.map is the floor of a small workshop as a grid in the octile text format: outer walls, a
store and an office with doors, machines, racks, and crates that stand where people left them.
clamps.csv is the top of a machine table, 24 x 10 units in steps of half a unit, and the places that
clamps and the vice take up.

Run without arguments to write both beside this file; the same bytes come out every time.
"""

import pathlib

WIDTH, HEIGHT = 96, 40


def filled(grid, left, top, width, height, letter):
    for y in range(top, top + height):
        for x in range(left, left + width):
            grid[y][x] = letter


def walls(grid):
    filled(grid, 0, 0, WIDTH, 1, "@")
    filled(grid, 0, HEIGHT - 1, WIDTH, 1, "@")
    filled(grid, 0, 0, 1, HEIGHT, "@")
    filled(grid, WIDTH - 1, 0, 1, HEIGHT, "@")
    filled(grid, 24, 1, 1, 16, "@")  # the store, its door below
    filled(grid, 1, 16, 18, 1, "@")
    filled(grid, 72, 18, 1, 21, "@")  # the office, its door above
    filled(grid, 77, 18, 18, 1, "@")
    filled(grid, 48, 12, 1, 27, "@")  # the wall across the hall
    filled(grid, 48, 22, 1, 3, ".")


def machines(grid):
    for left, top, width, height in [(5, 22, 8, 5), (5, 30, 8, 5), (20, 25, 10, 6), (36, 20, 7, 9),
                                     (30, 4, 12, 5), (54, 4, 9, 6), (68, 3, 11, 5), (84, 4, 6, 9),
                                     (54, 26, 12, 4), (54, 33, 12, 4)]:
        filled(grid, left, top, width, height, "T")


def racks(grid):
    for top in (3, 6, 9, 12):
        filled(grid, 3, top, 17, 1, "O")
    for left in (78, 83, 88):
        filled(grid, left, 22, 2, 12, "O")


def crates(grid):
    """A fixed scatter: a small generator of our own, so that every Python draws the same."""
    state = 12345
    for _ in range(60):
        state = (state * 1103515245 + 12345) % 2**31
        x = 1 + state // 65536 % (WIDTH - 2)
        state = (state * 1103515245 + 12345) % 2**31
        y = 1 + state // 65536 % (HEIGHT - 2)
        if (x, y) not in ((3, 36), (92, 36)):
            grid[y][x] = "T" if grid[y][x] == "." else grid[y][x]


def workshop():
    grid = [["."] * WIDTH for _ in range(HEIGHT)]
    filled(grid, 60, 13, 9, 4, "S")  # wet floor, which may be walked
    filled(grid, 14, 33, 7, 4, "W")  # the coolant pit, which may not
    walls(grid)
    machines(grid)
    racks(grid)
    crates(grid)
    rows = ["".join(row) for row in grid]
    return "\n".join(["type octile", f"height {HEIGHT}", f"width {WIDTH}", "map"] + rows) + "\n"


def clamps():
    lines = ["# The top of a machine table: its box, the steps of the lattice, then blocked places.",
             "box,0,0,24,10", "steps,0.5,0.5"]
    def rectangle(left, bottom, width, height):
        for i in range(int(width * 2) + 1):
            for j in range(int(height * 2) + 1):
                yield f"{left + i / 2:g},{bottom + j / 2:g}"
    for place in ((4, 3, 2, 4.5), (9, 0, 1.5, 6), (13.5, 4.5, 4, 1), (13.5, 8, 2.5, 2), (19, 2, 1, 5)):
        lines += rectangle(*place)
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    folder = pathlib.Path(__file__).resolve().parent
    (folder / "workshop.map").write_bytes(workshop().encode("ascii"))
    (folder / "clamps.csv").write_bytes(clamps().encode("ascii"))
