#!/usr/bin/env python3
"""Counts the overlap of two atlases straight from their NIfTI files, for three slices.

check_brain.py BRAIN_FOLDER LABEL_IDS_1 LABEL_IDS_2 X Y Z

The ids are comma-separated region numbers of aal.nii and AICHAmc.nii. X, Y, Z are the 1-based
slice numbers that the window shows. Prints, for the whole volume and for each slice, the voxels of
each atlas, the union and the intersection.
"""
import pathlib
import struct
import sys


def read_nifti(path):
    data = path.read_bytes()
    dims = struct.unpack("<3h", data[42:48])
    start = int(struct.unpack("<f", data[108:112])[0])
    return dims, data[start:]


def main():
    folder = pathlib.Path(sys.argv[1])
    ids1, ids2 = ({int(i) for i in text.split(",")} for text in sys.argv[2:4])
    shown = [int(text) - 1 for text in sys.argv[4:7]]
    (nx, ny, nz), fine = read_nifti(folder / "aal.nii")
    (cx, cy, cz), coarse = read_nifti(folder / "AICHAmc.nii")
    # In memory y and z run backwards.
    wanted = {"volume": None, "x": shown[0], "y": ny - 1 - shown[1], "z": nz - 1 - shown[2]}
    counts = {name: [0, 0, 0, 0] for name in wanted}
    for z in range(nz):
        for y in range(ny):
            row = fine[(z * ny + y) * nx:(z * ny + y + 1) * nx]
            for x in range(nx):
                i, j, k = (180 - x) // 2, (y + 1) // 2, (z + 1) // 2
                a = row[x] in ids1
                b = coarse[(k * cy + j) * cx + i] in ids2
                if not (a or b):
                    continue
                for name, place in (("volume", None), ("x", x), ("y", y), ("z", z)):
                    if wanted[name] == place:
                        count = counts[name]
                        count[0] += a
                        count[1] += b
                        count[2] += 1
                        count[3] += a and b
    for name, (first, second, union, common) in counts.items():
        print(f"{name}: first {first} second {second} union {union} intersection {common}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
