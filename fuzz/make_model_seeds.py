#!/usr/bin/env python3
"""Writes the seed corpus of fuzz_model: small model files of every version and with every kind of item.

    fuzz/make_model_seeds.py fuzz/seeds/fuzz_model
"""
import pathlib
import struct
import sys


def byte(*values):
    return bytes(values)


def short(value):
    return struct.pack(">H", value)


def integer(value):
    return struct.pack(">i", value)


def floats(*values):
    return struct.pack(f">{len(values)}f", *values)


def string(text):
    return text.encode() + b"\n"


def count(n):
    return byte(n) if 1 <= n <= 255 else byte(0) + integer(n)


def header(version):
    return f"Compatibility: {version}\n".encode() + byte(1)


def materials(version, *numbers):
    number = integer if version >= "3.02" else byte
    colours = b"".join(byte(tag) + floats(0.5, 0.25, 1) for tag in (12, 13, 14, 15))
    fields = byte(18) + string("stone") + colours + byte(16) + floats(30) + byte(17) + floats(0.5)
    return byte(10) + b"".join(byte(11) + number(n) + fields + byte(0) for n in numbers) + byte(0)


def vertices(*coordinates):
    return byte(26) + integer(len(coordinates) // 3) + floats(*coordinates)


def corner(vertex, fields=b""):
    return byte(20, 27) + integer(vertex) + fields + byte(0)


def polygon(version, fields, children=b""):
    number = short if version >= "3.00" else byte
    return byte(30, 31) + number(0) + fields + children + byte(0)


def matrix():
    return floats(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 3, 4, 5, 1)


def view(identifier):
    return (byte(70) + integer(identifier) + byte(71, 1, 72, 4, 73) + matrix() + byte(74) + matrix() + byte(75) +
            matrix() + byte(76) + floats(1.5) + byte(77) + floats(1, 2, 3) + byte(0))


def setting(number, value):
    return byte(60, number) + count(len(value)) + value


SQUARE = vertices(0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 9, 9, 9)
FACETED = byte(32, 1, 33) + floats(0, 0, 1) + b"".join(corner(i) for i in range(4))
SMOOTH = byte(32, 2) + b"".join(corner(i, byte(24) + floats(0, 0, 1)) for i in range(4))
TEXTURED = (byte(34) + integer(1) + byte(37) + integer(5) + byte(38, 1) +
            b"".join(corner(i, byte(23) + floats(i & 1, i >> 1)) for i in range(4)))


def textures(version):
    old = count(4) if version < "3.00" else b""
    return (byte(62) + string("/images") + byte(61) + integer(0) + string("./a.rgb") + byte(80) + integer(1) +
            string("a.rgb") + byte(81) + old + floats(291) + byte(82) + old + floats(544) + byte(83) + old +
            integer(1) + byte(84) + count(4) + integer(1) + byte(85) + integer(1) + byte(86) + integer(0) + byte(0))


def whole(version):
    walls = (byte(41) + string("walls") + byte(45) + integer(3) +
             polygon(version, FACETED, polygon(version, SMOOTH, polygon(version, TEXTURED))) +
             polygon(version, TEXTURED) + byte(0))
    roof = byte(41) + string("roof") + byte(45) + integer(4) + SQUARE + polygon(version, SMOOTH) + byte(0)
    lods = (byte(42) + string("near") + byte(43) + floats(10) + byte(45) + integer(3) + byte(49) + integer(0) +
            byte(41) + string("roof") + byte(0) + byte(42) + string("far") + byte(45) + integer(4) + byte(0))
    house = (byte(40) + string("house") + byte(44) + integer(7) + byte(48) + integer(1) + view(61) + view(3) +
             view(257) + byte(46) + integer(9) + byte(47) + integer(4) + SQUARE + walls + roof + lods + byte(0))
    tree = (byte(50) + string("street") + byte(56) + integer(0) + byte(57) + integer(1) + byte(50) + string("lamp") +
            byte(53) + integer(7) + byte(55) + matrix() + byte(51) + byte(52) + string("square") + byte(51))
    settings = (setting(3, integer(7)) + setting(6, integer(2)) + setting(8, integer(3)) + setting(9, integer(0)) +
                setting(12, string("Title")) + setting(20, string("/models")) + setting(99, b"later"))
    return (header(version) + materials(version, 0, 2) + textures(version) + house + tree + view(573) + view(512) +
            view(770) + settings + byte(0))


def unknown(tag=99, size=3):
    return byte(tag) + count(size) + b"x" * size


def main():
    seeds = {f"version-{v}": whole(v) for v in ("2.00", "2.50", "3.00", "3.01", "3.02", "3.05")}
    seeds["empty"] = header("3.05") + byte(0)
    seeds["unknown-tags"] = (
        header("3.05") + unknown() + materials("3.05", 0) + byte(40) + string("o") + unknown(size=300) + SQUARE +
        byte(41) + string("s") + unknown() + byte(30) + unknown() + byte(20) + unknown() + byte(27) + integer(0) +
        unknown() + byte(0, 0, 0) + byte(42) + string("l") + unknown() + byte(0, 0) + byte(50) + string("b") +
        unknown() + byte(51, 0))
    seeds["corner-positions"] = (
        header("2.00") + materials("2.00", 0) + byte(40) + string("o") + byte(41) + string("s") +
        polygon("2.00", b"".join(byte(20, 22) + floats(i, i * i, 1) + byte(25) + integer(i) + byte(0)
                                 for i in range(3))) + byte(0, 0, 0))
    seeds["nested-polygons"] = (header("3.05") + materials("3.05", 0) + byte(40) + string("o") + byte(41) +
                                string("s") + byte(30) * 50 + byte(0) * 53)
    seeds["nested-branches"] = header("3.05") + byte(50, 10) * 50 + byte(51) * 50 + byte(0)
    seeds["several-objects"] = header("3.05") + materials("3.05", 0) + b"".join(
        byte(40) + string(name) + byte(44) + integer(i) + SQUARE + byte(41) + string("s") +
        polygon("3.05", FACETED) + byte(0, 0) for i, name in enumerate(("b", "A", "a"))) + byte(0)
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, contents in seeds.items():
        (folder / name).write_bytes(contents)


if __name__ == "__main__":
    main()
