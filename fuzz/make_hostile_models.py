#!/usr/bin/env python3
"""Writes model files of less than a megabyte that each ask for as much work as they can in one way.

    fuzz/make_hostile_models.py FOLDER
"""
import math
import pathlib
import random
import sys

from make_model_seeds import byte, corner, floats, header, integer, materials, setting, short, string, view

MOST = 1_000_000
TRIANGLE = [(0, 0, 0), (1, 0, 0), (0, 1, 0)]


def vertices(points):
    return byte(26) + integer(len(points)) + b"".join(floats(*point) for point in points)


def open_polygon(corners):
    return byte(30, 31) + short(0) + b"".join(corner(i) for i in corners)


def polygon(corners):
    return open_polygon(corners) + byte(0)


def group(polygons, name="s"):
    return byte(41) + string(name) + byte(45) + integer(0) + polygons + byte(0)


def level(members=1):
    return byte(42) + string("l") + (byte(45) + integer(0)) * members + byte(0)


def house(points, polygons, levels=level()):
    return byte(40) + string("o") + byte(44) + integer(0) + vertices(points) + group(polygons) + levels + byte(0)


def model(*items):
    return header("3.05") + materials("3.05", 0) + b"".join(items) + byte(0)


def flat(points):
    return [(x, y, 0) for x, y in points]


def circle(n, radius):
    return flat((radius(i) * math.cos(2 * math.pi * i / n), radius(i) * math.sin(2 * math.pi * i / n))
                for i in range(n))


def nested(depth, corners):
    return b"".join(open_polygon(corners(i)) for i in range(depth)) + byte(0) * depth


def shrinking(depth):
    return [(s * x, s * y, 0) for s in (1 - i / depth / 2 for i in range(depth)) for x, y, _ in TRIANGLE]


def outline(points):
    return model(house(points, polygon(range(len(points)))))


def tree(start, end, depth):
    return (byte(50) + string("b") + (byte(50) + string("b")) * depth + (end + byte(51)) * (depth + 1))


def files():
    rng = random.Random(1)
    scattered = flat((rng.random(), rng.random()) for _ in range(50_000))
    one = house(TRIANGLE, polygon(range(3)))
    placed = byte(53) + integer(0)
    yield "viewports", model(one, b"".join(setting(8, integer(1 + 2 * (i & 1))) for i in range(100_000)))
    yield "crossing", outline(scattered[:5_000])
    yield "crossing-more", outline(scattered[:20_000])
    yield "crossing-most", outline(scattered)
    yield "crossing-again", model(house(scattered[:1000], polygon(rng.randrange(1000) for _ in range(130_000))))
    yield "star", outline(circle(50_000, lambda i: 1 - i % 2 / 2))
    yield "noise", outline(circle(50_000, lambda i: 1 + rng.random()))
    yield "nested", model(house(TRIANGLE, nested(10_000, lambda i: range(3))))
    yield "nested-more", model(house(TRIANGLE, nested(38_000, lambda i: range(3))))
    yield "nested-shrinking", model(house(shrinking(12_000), nested(12_000, lambda i: range(3 * i, 3 * i + 3))))
    yield "nested-empty", model(house(TRIANGLE, byte(30) * 450_000 + byte(0) * 450_000))
    yield "decals", model(house(TRIANGLE, open_polygon(range(3)) + polygon(range(3)) * 38_000 + byte(0)))
    yield "one-vertex", model(house([(0, 0, 0)] * 80_000, polygon(range(3))))
    yield "fan", model(house(circle(20_000, lambda i: 1), b"".join(polygon((0, i, i + 1)) for i in range(1, 19_999))))
    yield "no-numbers", model(house([(math.nan, math.inf, 1e38)] * 30_000,
                                    b"".join(polygon(range(i, i + 3)) for i in range(0, 30_000, 3))))
    yield "tree", model(one, tree(b"", b"", 5_000))
    yield "tree-deep", model(one, tree(b"", b"", 190_000))
    yield "tree-placed", model(one, tree(b"", placed, 100_000))
    yield "tree-wide", model(one, byte(50) + (string("b") + placed + byte(52)) * 110_000 + string("b") + byte(51))
    yield "groups", model(byte(40) + string("o") + b"".join(group(b"", f"s{i}") for i in range(65_000)) + byte(0))
    yield "levels", model(house(TRIANGLE, polygon(range(3)), level() * 80_000))
    yield "members", model(house(TRIANGLE, polygon(range(3)), level(190_000)))
    yield "materials", header("3.05") + materials("3.05", *range(9_000)) + byte(0)
    yield "textures", model(b"".join(byte(80) + integer(i) + string(f"t{i}") + byte(0) for i in range(70_000)))
    yield "views", model(one, view(512) * 3_800)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, contents in files():
        assert len(contents) < MOST, f"{name}: {len(contents)} bytes"
        (folder / f"{name}.kirvo").write_bytes(contents)


if __name__ == "__main__":
    main()
