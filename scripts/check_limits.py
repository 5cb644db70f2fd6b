#!/usr/bin/env python3
"""Holds docs/limits.md against the sources.

Every row names a test that exists in the sources of its program, every text in quotes is one of
the program, and every text that the program refuses with stands in the table.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = {"voxdata_tests": "VoxData", "slicemeasures_tests": "slicemeasures",
           "volumemeasures_tests": "volumemeasures", "views_tests": "views",
           "view3d_tests": "view3d", "sample_tests": "samples"}
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
TEST = re.compile(r"\bTEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)")
NAMED = re.compile(r"`(\w+)` `(\w+\.\w+)`")


def joined(text):
    """The source with adjacent literals joined, as the compiler joins them."""
    return re.sub(r'"\s*\n\s*"', "", text)


def sources():
    return [joined(path.read_text()) for path in sorted((ROOT / "src").rglob("*.cpp"))]


def tests_of(program):
    if program == "e2e":
        scripts = (ROOT / "tests/e2e/CMakeLists.txt").read_text()
        found = re.findall(r"foreach\(script ([^)]*)\)", scripts)
        return {f"e2e.{name}" for names in found for name in names.split()}
    if program.startswith("gui_"):
        files = [ROOT / "tests/gui" / f"{program[4:]}.cpp"]
    else:
        files = sorted((ROOT / "tests" / FOLDERS[program]).glob("*.cpp"))
    return {f"{suite}.{name}" for path in files if path.exists()
            for suite, name in TEST.findall(path.read_text())}


def rows(document):
    for number, line in enumerate(document.splitlines(), 1):
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if line.startswith("|") and cells[0] not in ("What", "---"):
            yield number, cells


def pieces(text):
    """The fixed parts of a text with numbers or names in it."""
    return [piece.strip() for piece in text.replace('"', "\u2026").split("\u2026") if piece.strip()]


def check_row(number, cells, known, all_literals):
    if len(cells) != 4:
        return [f"line {number}: {len(cells)} cells in place of 4"]
    named = NAMED.fullmatch(cells[3])
    if not named:
        return [f"line {number}: no test: {cells[3]}"]
    program, name = named.groups()
    known.setdefault(program, tests_of(program) if program in FOLDERS or program == "e2e"
                     or program.startswith("gui_") else set())
    problems = []
    if name not in known[program]:
        problems.append(f"line {number}: {program} has no test {name}")
    for text in re.findall(r'"(.*?)"(?=[,;]|$|\s*$)', cells[2]):
        for piece in pieces(text):
            if piece not in all_literals:
                problems.append(f"line {number}: the program never says: {piece}")
    return problems


def unnamed_refusals(texts, document):
    """Texts of Refuse(...) that no row holds."""
    plain = document.replace("\\", "").replace('"', "")
    for text in texts:
        for call in re.findall(r"\bRefuse\((.*?)\);", text, re.DOTALL):
            for literal in LITERAL.findall(call):
                words = literal.replace('\\"', "").strip()
                if len(words) > 3 and words not in plain:
                    yield f"no row for the refusal: {words}"


def main():
    document = (ROOT / "docs/limits.md").read_text()
    texts = sources()
    literals = "\n".join(literal.replace('\\"', "\n").replace("\\n", "\n")
                         for text in texts for literal in LITERAL.findall(text))
    problems, known, count = [], {}, 0
    for number, cells in rows(document):
        count += 1
        problems += check_row(number, cells, known, literals)
    problems += unnamed_refusals(texts, document)
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"{count} limits, {len(problems)} problems")
    return 1 if problems or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
