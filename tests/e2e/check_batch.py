#!/usr/bin/env python3
"""Holds tolvex-batch against known tables and against the window.

check_batch.py PROGRAM KNOWN_STUDIES TOUR WORK

TOUR holds the sample study and the table of all its pairs that the guided tour's window wrote.
"""
import json
import pathlib
import subprocess
import sys

PROGRAM, KNOWN, TOUR, WORK = (pathlib.Path(argument).resolve() for argument in sys.argv[1:5])
BOXES = {
    "compareOverlayCheck": "--overlay",
    "compareHaussdorfCheck": "--haussdorf",
    "compareSurfaceDistCheck": "--surface-dist",
}


def run(*arguments, folder=WORK):
    return subprocess.run([PROGRAM, *map(str, arguments)], cwd=folder, capture_output=True,
                          text=True, timeout=120, check=False)


def without_nan_signs(text):
    return text.replace("-nan", "nan")


def check_help():
    done = run("--help")
    assert done.returncode == 0 and done.stderr == "", done
    for word in ("LIST", "LABEL", "TABLE", *BOXES.values()):
        assert word in done.stdout, word


def check_errors():
    study = TOUR / "study/study.tlx"
    first, second = [str(TOUR / f"study/user1_repeat{r}.gipl") for r in (1, 2)]
    grey = str(TOUR / "study/grey.gipl")
    lists = {
        "empty": "",
        "one": f"1\n1\n{grey}\n{first}\n\n",
        "lost": f"1\n3\n{grey}\n{first}\n{second}\n{WORK}/lost.gipl\n\n",
        "no_grey": f"1\n2\n{WORK}/lost.gipl\n{first}\n{second}\n\n",
        "long_line": f"1\n2\n{grey}\n{'x' * 400}.gipl\n\n",
        "too_many": f"1\n61\n{grey}\n" + f"{first}\n" * 61 + "\n",
    }
    for name, text in lists.items():
        (WORK / f"{name}.tlx").write_text(text)
    (WORK / "folder.xls").mkdir()
    refused = [
        ([], "Usage"),
        ([study, "2"], "Usage"),
        ([study, "2", "t", "more"], "Usage"),
        (["--surface", study, "2", "t"], "Unknown option --surface"),
        ([study, "256", "t"], "not 256"),
        ([study, "-1", "t"], "not -1"),
        ([study, "two", "t"], "not two"),
        ([study, "", "t"], "0 to 255"),
        ([study, "99999999999999999999", "t"], "0 to 255"),
        (["missing.tlx", "2", "t"], "cannot be opened: missing.tlx"),
        ([WORK, "2", "t"], "cannot be opened"),
        (["empty.tlx", "2", "t"], "No sizes could be read"),
        (["one.tlx", "2", "t"], "at least 2 segmentations"),
        (["lost.tlx", "2", "t"], f"cannot be read: {WORK}/lost.gipl"),
        (["no_grey.tlx", "2", "t"], "No sizes could be read"),
        (["long_line.tlx", "2", "t"], "300 characters: line 4"),
        (["too_many.tlx", "2", "t"], "names 61 segmentations"),
    ]
    for arguments, word in refused:
        done = run(*arguments)
        assert done.returncode == 1, (arguments, done)
        assert word in done.stderr, (arguments, done.stderr)
        assert done.stdout == "" or "nb compare" not in done.stdout, (arguments, done.stdout)
        assert not (WORK / "t.xls").exists(), arguments
    done = run("--overlay", study, "2", "folder.xls")
    assert done.returncode == 1 and "cannot be written: folder.xls" in done.stderr, done
    done = run("--overlay", study, "77", "absent")
    assert done.returncode == 0, done
    assert "Label 77 does not occur in user1_repeat1.gipl" in done.stderr, done.stderr
    return len(refused)


def check_window():
    """The rows of the six segmentations; the tour's table has two averages besides."""
    run(TOUR / "study/study.tlx", "2", "sample")
    ours = (WORK / "sample.xls").read_text().splitlines()
    shown = (TOUR / "tour/pairs.xls").read_text().splitlines()
    shown = [row for row in shown if "average " not in row]
    assert len(ours) == 16 and ours == shown, (len(ours), len(shown))
    # A second run goes behind the first.
    run(TOUR / "study/study.tlx", "2", "sample.xls")
    assert (WORK / "sample.xls").read_text().splitlines() == ours + ours


def check_most_images():
    """All 1770 pairs of 60 segmentations, of which the window queues 200 at a time."""
    files = [TOUR / f"study/user{u}_repeat{r}.gipl" for u in (1, 2) for r in (1, 2, 3)]
    paths = [WORK / f"image{i}.gipl" for i in range(60)]
    for i, path in enumerate(paths):
        path.symlink_to(files[i % 6])
    (WORK / "most.tlx").write_text(
        "\n".join(["6", "10", str(TOUR / "study/grey.gipl"), *map(str, paths), ""]))
    done = run("--overlay", "most.tlx", "2", "most")
    assert done.returncode == 0 and done.stdout.startswith("nb compare1770\n"), done
    rows = [row.split("\t") for row in (WORK / "most.xls").read_text().splitlines()[1:]]
    pairs = [(i, j) for i in range(60) for j in range(i + 1, 60)]
    assert len(rows) == len(pairs) == 1770, len(rows)
    numbers = {}
    for (i, j), row in zip(pairs, rows):
        assert row[:2] == [paths[i].name, paths[j].name], (i, j, row)
        assert numbers.setdefault((i % 6, j % 6), row[2:]) == row[2:], (i, j, row)
        if i % 6 == j % 6:
            assert row[2:4] == ["0", "0"] and row[7] == "1.000000", (i, j, row)


def check_known_study(folder):
    expected = json.loads((folder / "expected.json").read_text())
    study = expected["study"]
    if [study["origin"][f"greyOrigin{axis}Choice"] for axis in "XYZ"] != [0, 1, 1]:
        return 0  # the origin that the window starts with is the program's only one
    if study["dims"][2] < 2:
        return 0  # the header of a single slice gives no sizes, in the window neither
    count = study["imageCount"]
    pairs = [[i, j] for i in range(count) for j in range(i + 1, count)]
    cases = 0
    for number, case in enumerate(expected["operations"].get("CompareData", [])):
        boxes = case["inputs"]["boxes"]
        measures = [option for box, option in BOXES.items() if boxes[box]]
        if (case["inputs"]["comparePairs"] != pairs or boxes["compareSurfaceHistoCheck"]
                or not boxes["compareAlwaysWriteButton"] or not measures):
            continue
        table = WORK / f"{folder.name}.{number}.xls"
        done = run(*measures, "study.tlx", case["inputs"]["currentLabel"], table, folder=folder)
        where = (folder.name, number, measures, done.stderr)
        assert done.returncode == 0, where
        assert done.stdout == case["fields"]["(out)"], (where, done.stdout)
        text = without_nan_signs(table.read_text())
        assert text == without_nan_signs(case["fields"]["(file)"]), (where, text)
        cases += 1
    return cases


def main():
    check_help()
    errors = check_errors()
    check_window()
    check_most_images()
    cases = sum(check_known_study(path.parent) for path in sorted(KNOWN.glob("*/expected.json")))
    assert cases > 100, cases
    print(f"{errors} errors are told, {cases} known tables and the window's rows are equal, "
          "1770 pairs are measured")


if __name__ == "__main__":
    main()
