#!/usr/bin/env python3
"""Counts and measures the overlap of two atlases straight from their NIfTI files.

check_brain.py BRAIN_FOLDER LABEL_IDS_1 LABEL_IDS_2 --values VALUES --table TABLE

The ids are comma-separated region numbers of aal.nii and AICHAmc.nii. VALUES holds what the window
showed, a name and a value a line; the counts are made for the slices that it names, and for the
whole volume, and have to be the same. TABLE is that of all pairs, whose one row has the same counts.
Distances are held against a plain search for the nearest voxel (of 1 mm): vectors that are handed
from voxel to voxel may miss it, but never by much.
"""
import math
import pathlib
import struct
import sys


def read_nifti(path):
    data = path.read_bytes()
    dims = struct.unpack("<3h", data[42:48])
    start = int(struct.unpack("<f", data[108:112])[0])
    return dims, data[start:]


REACH = 30  # millimetres: farther than any two voxels of the structure
STRIDE = 512  # between places of neighbours along y, and its square along z: axes do not meet


def place(x, y, z):
    return x + STRIDE * (y + STRIDE * z)


NEIGHBOURS = [place(*step) for step in
              ((1, 0, 0), (-1, 0, 0), (0, 1, 0), (0, -1, 0), (0, 0, 1), (0, 0, -1))]
STEPS = sorted((x * x + y * y + z * z, place(x, y, z)) for x in range(-REACH, REACH + 1)
               for y in range(-REACH, REACH + 1) for z in range(-REACH, REACH + 1)
               if x * x + y * y + z * z <= REACH * REACH)


def nearest(voxel, targets):
    return math.sqrt(next(square for square, step in STEPS if voxel + step in targets))


def distances(first, second, labelled):
    """What the measures on distances show, of two sets of places; `labelled` is all that is not 0
    in the second image."""
    shell = {voxel for voxel in first if any(voxel + step not in first for step in NEIGHBOURS)}
    inside, outside = [], []
    for voxel in second:
        if any(voxel + step not in labelled for step in NEIGHBOURS):
            (inside if voxel in first else outside).append(nearest(voxel, shell))
    return {
        "haussdorfAB": max(nearest(voxel, second) for voxel in first - second),
        "haussdorfBA": max(nearest(voxel, first) for voxel in second - first),
        "sumInside": sum(inside),
        "sumOutside": sum(outside),
        "averageInside": sum(inside) / len(inside),
        "averageOutside": sum(outside) / len(outside),
    }, {"pixelsInside": len(inside), "pixelsOutside": len(outside)}


def main():
    folder = pathlib.Path(sys.argv[1])
    ids1, ids2 = ({int(i) for i in text.split(",")} for text in sys.argv[2:4])
    values = {}
    for line in pathlib.Path(sys.argv[5]).read_text().splitlines():
        name, _, value = line.partition(" ")
        values[name] = value

    (nx, ny, nz), fine = read_nifti(folder / "aal.nii")
    (cx, cy, _), coarse = read_nifti(folder / "AICHAmc.nii")
    shown = {name: int(values["slice" + name].split()[0]) - 1 for name in ("XY", "YZ", "XZ")}
    # In memory y and z run backwards.
    places = {"YZ": shown["YZ"], "XZ": ny - 1 - shown["XZ"], "XY": nz - 1 - shown["XY"]}
    union = dict.fromkeys(places, 0)
    common = dict.fromkeys(places, 0)
    only1 = only2 = both = 0
    first, second, labelled = set(), set(), set()
    for z in range(nz):
        for y in range(ny):
            row = fine[(z * ny + y) * nx:(z * ny + y + 1) * nx]
            for x in range(nx):
                i, j, k = (180 - x) // 2, (y + 1) // 2, (z + 1) // 2
                a = row[x] in ids1
                region = coarse[(k * cy + j) * cx + i]
                b = region in ids2
                if region:
                    labelled.add(place(x, y, z))
                if not (a or b):
                    continue
                if a:
                    first.add(place(x, y, z))
                if b:
                    second.add(place(x, y, z))
                only1 += a and not b
                only2 += b and not a
                both += a and b
                for name, number in (("YZ", x), ("XZ", y), ("XY", z)):
                    if places[name] == number:
                        union[name] += 1
                        common[name] += a and b
    expected = {"nbPixelA": only1, "nbPixelB": only2, "intersect3D": both}
    for name in places:
        expected["union" + name] = union[name]
        expected["intersect" + name] = common[name]
    lengths, counts = distances(first, second, labelled)
    expected.update(counts)
    wrong = [f"{name}: the window shows {values.get(name)!r}, the files say {value}"
             for name, value in expected.items() if values.get(name) != str(value)]
    wrong += [f"{name}: the window shows {values.get(name)!r}, the files say {value:.6f}"
              for name, value in lengths.items()
              if not 0.99999 * value < float(values.get(name) or 0) < 1.01 * value]
    heading, *rows = pathlib.Path(sys.argv[7]).read_text().splitlines()
    if len(rows) != 1:
        wrong.append(f"the table has {len(rows)} rows, not that of the one pair")
    row = dict(zip(heading.split("\t"), rows[0].split("\t")))
    counted = {"Number of Pixel 1": only1, "Number of Pixel 2": only2, "Intersection": both,
               "Union": only1 + only2}
    wrong += [f"{name}: the table shows {row.get(name)!r}, the files say {value}"
              for name, value in counted.items() if row.get(name) != str(value)]
    wrong += [f"{name}: the slice misses the structure" for name in places if not common[name]]
    for name, value in sorted(values.items()):
        print(name, value)
    for name, value in lengths.items():
        print(f"{name} by the nearest voxel {value:.6f}")
    print("\n".join(wrong) or f"all {len(expected) + len(counted)} counts and {len(lengths)} lengths "
          "agree with the NIfTI files")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
