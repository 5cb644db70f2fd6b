#!/usr/bin/env python3
"""Holds every #include against the layers: includes go downward.

Below the line (base, VoxData, the two measure folders) neither FLTK nor OpenGL may appear, the
measures include base alone, and VoxData includes base and the VTK data model. Above it only a
.cpp file may include the interface, so that headers stay free of it.
"""
import pathlib
import re
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent / "src"
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]', re.MULTILINE)
BELOW = ("base", "VoxData", "views/slicemeasures", "view3d/volumemeasures", "batch")
ALLOWED_BELOW = {
    "base": ("base/",),
    "views/slicemeasures": ("base/", "views/slicemeasures/"),
    "view3d/volumemeasures": ("base/", "view3d/volumemeasures/"),
    "VoxData": ("base/", "VoxData/"),
    "batch": ("base/", "VoxData/", "view3d/volumemeasures/"),
}
TOOLKIT = re.compile(r"^(FL|GL|X11)/")


def folder_of(path):
    return path.relative_to(SOURCE).parent.as_posix()


def problems(path):
    folder = folder_of(path)
    for kind, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
        if folder in BELOW:
            if TOOLKIT.match(name):
                yield f"{name}: no toolkit below the line"
            if kind == '"' and not name.startswith(ALLOWED_BELOW[folder]):
                yield f"{name}: {folder} may include {', '.join(ALLOWED_BELOW[folder])} only"
            if kind == '"' and name == "VoxData/ImageLoader.h":
                yield f"{name}: the load flows stand above the line"
        elif path.suffix == ".h":
            above = name.startswith("ui/") and not folder.startswith("ui")
            if kind == '"' and (above or name == "app/Globals.h"):
                yield f"{name}: only a .cpp file may include the interface"


def main():
    found = [
        f"{path.relative_to(SOURCE)}: {problem}"
        for path in sorted(SOURCE.rglob("*"))
        if path.suffix in (".h", ".cpp")
        for problem in problems(path)
    ]
    print("\n".join(found) if found else "include directions: fine")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
