#!/usr/bin/env python3
"""Writes a study of 256 x 256 x 256 voxels: grey.gipl, and two segmentations with label 2.

Usage: bench/make_large_study.py FOLDER
"""
import math
import pathlib
import struct
import sys

SIDE = 256
SPACING = 0.9
LABEL = b"\2"
BYTES, SHORTS = 8, 15


def header(kind):
    """The 256 bytes ahead of the voxels."""
    head = bytearray(256)
    struct.pack_into(">5H3f", head, 0, SIDE, SIDE, SIDE, 1, kind, *[SPACING] * 3)
    struct.pack_into(">I", head, 252, 0xEFFFE9B0)
    return bytes(head)


def body_row(y, z, radius, shift):
    """A row of labels along x through a ball with waves on it."""
    b, c = ((at - SIDE / 2) / (0.3 * SIDE) for at in (y, z))
    rest = 1 - b * b - c * c
    if rest <= 0:
        return bytes(SIDE)
    wave = 1 + 0.1 * math.sin(12 * b) * math.cos(9 * c)
    half = math.sqrt(rest) * radius * SIDE * wave
    first, last = int(0.48 * SIDE + shift - half), int(0.48 * SIDE + shift + half)
    return bytes(first) + LABEL * (last - first) + bytes(SIDE - last)


def write_body(path, radius, shift):
    with open(path, "wb") as file:
        file.write(header(BYTES))
        for z in range(SIDE):
            for y in range(SIDE):
                file.write(body_row(y, z, radius, shift))


def main():
    folder = pathlib.Path(sys.argv[1])
    row = b"".join(struct.pack(">H", 7 * x % 1024) for x in range(SIDE))
    (folder / "grey.gipl").write_bytes(header(SHORTS) + row * SIDE * SIDE)
    write_body(folder / "one.gipl", 0.30, 0)
    write_body(folder / "two.gipl", 0.28, 4)


if __name__ == "__main__":
    main()
