#!/usr/bin/env python3
"""Holds what the guided tour read from the window against counts made from the files.

check_tour.py STUDY_FOLDER TOUR_FOLDER

The files hold voxels with x fastest behind 256 bytes; in memory y and z run backwards, as the
origin "left", "top", "front" asks for.
"""
import math
import pathlib
import struct
import sys

LABEL = 2


def read_volume(path):
    data = path.read_bytes()
    dims = struct.unpack(">3H", data[:6])
    return dims, data[256:]


def overlap(pairs):
    only_a = only_b = common = 0
    for a, b in pairs:
        if a == LABEL and b == LABEL:
            common += 1
        elif a == LABEL:
            only_a += 1
        elif b == LABEL:
            only_b += 1
    return only_a, only_b, common


def ratio(only_a, only_b, common):
    average = (only_a + 2 * common + only_b) // 2
    return f"{common / average:.6f}"


def farthest(points, targets):
    """The largest distance in pixels from one set of pixels to another."""
    return math.sqrt(max(min((i - k) ** 2 + (j - l) ** 2 for k, l in targets) if (i, j) not in targets
                         else 0 for i, j in points))


def pixels(plane, width):
    return {(at % width, at // width) for at, label in enumerate(plane) if label == LABEL}


def probabilities(study, number, expected):
    """Two users with three repeats on a slice."""
    counts = []
    for user in (1, 2):
        volumes = [read_volume(study / f"user{user}_repeat{repeat}.gipl") for repeat in (1, 2, 3)]
        dims = volumes[0][0]
        plane = dims[0] * dims[1]
        begin = (dims[2] - number) * plane
        counts.append([sum(label == LABEL for label in labels)
                       for labels in zip(*(voxels[begin:begin + plane] for _, voxels in volumes))])
    marked = [count for count in counts[0] if count]
    expected["probaIntra"] = f"{sum(marked) / 3 / len(marked):.6f}"
    differences = sum(abs(a - b) / 3 for a, b in zip(*counts))
    sums = sum((a + b) / 6 for a, b in zip(*counts))
    expected["probaInter"] = f"{1 - differences / sums * 0.5:.6f}"


def main():
    study, tour = (pathlib.Path(argument) for argument in sys.argv[1:3])
    values = {}
    for line in (tour / "values.txt").read_text().splitlines():
        name, _, value = line.partition(" ")
        values[name] = value
    dims, first = read_volume(study / "user1_repeat1.gipl")
    _, second = read_volume(study / "user2_repeat1.gipl")

    number, of, count = values["slice"].split()
    assert of == "of" and int(count) == dims[2], values["slice"]
    plane = dims[0] * dims[1]
    file_z = dims[2] - int(number)
    cut = slice(file_z * plane, (file_z + 1) * plane)
    only_a, only_b, common = overlap(zip(first[cut], second[cut]))
    expected = {
        "union2D": str(only_a + only_b + common),
        "intersect2D": str(common),
        "overlapRatio": ratio(only_a, only_b, common),
    }
    assert common > 0, "the tour stopped on a slice without the label"
    inA, inB = pixels(first[cut], dims[0]), pixels(second[cut], dims[0])
    expected["haussdorfAB"] = f"{farthest(inB, inA):.6f}"
    expected["haussdorfBA"] = f"{farthest(inA, inB):.6f}"
    probabilities(study, int(values["probaSlice"].split()[0]), expected)

    only_a, only_b, common = overlap(zip(first, second))
    expected.update(
        nbPixelA=str(only_a),
        nbPixelB=str(only_b),
        intersect3D=str(common),
        overlapRatio3D=ratio(only_a, only_b, common),
    )

    wrong = [
        f"{name}: the window shows {values.get(name)!r}, the files say {value!r}"
        for name, value in expected.items()
        if values.get(name) != value
    ]
    for name in ("perimeter", "haussdorf3DAB", "sumInside", "average", "probaVolume"):
        if not float(values.get(name) or "nan") > 0:
            wrong.append(f"{name}: the window shows {values.get(name)!r}")
    rows = (tour / "pairs.xls").read_text().splitlines()
    if len(rows) != 29:  # six segmentations and two averages
        wrong.append(f"pairs.xls: {len(rows)} lines, not a heading and 28 pairs")
    shots = len(list(tour.glob("*.png")))
    if shots < 31:
        wrong.append(f"{shots} screenshots")
    print("\n".join(wrong) or f"the tour's {len(expected)} numbers agree with the files")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
