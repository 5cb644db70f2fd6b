#!/usr/bin/env python3
"""Holds tables that went through a spreadsheet against what was written.

check_tables.py write FOLDER EXPECTED    puts a known matrix and a known histogram into FOLDER
check_tables.py compare FOLDER           FOLDER/csv/NAME.csv against FOLDER/NAME.xls
"""
import csv
import json
import pathlib
import sys

OPERATIONS = {"matrix": "ComputeConfusionMatrix", "histogram": "ComputeSurfaceHistogram"}
FEWEST_ROWS = {"pairs": 29, "matrix": 12, "histogram": 2}


def write(folder, expected):
    operations = json.loads(pathlib.Path(expected).read_text())["operations"]
    for name, operation in OPERATIONS.items():
        (folder / f"{name}.xls").write_text(operations[operation][0]["fields"]["(file)"])


def same(a, b):
    try:
        return a == b or float(a) == float(b)
    except ValueError:
        return False


def trimmed(row):
    """Without the empty cells at its end: a trailing tab, or room up to the longest row."""
    while row and row[-1] == "":
        row = row[:-1]
    return row


def compare(folder):
    for name, fewest in FEWEST_ROWS.items():
        lines = (folder / f"{name}.xls").read_text().splitlines()
        written = [trimmed(line.split("\t")) for line in lines]
        with open(folder / "csv" / f"{name}.csv", newline="") as stream:
            opened = [trimmed(row) for row in csv.reader(stream)]
        assert len(written) == len(opened) >= fewest, (name, len(written), len(opened))
        for number, (ours, theirs) in enumerate(zip(written, opened)):
            assert len(ours) == len(theirs), (name, number, ours, theirs)
            for column, (a, b) in enumerate(zip(ours, theirs)):
                assert same(a, b), (name, number, column, a, b)
        print(f"{name}: {len(written)} rows came back as they were written")


if __name__ == "__main__":
    if sys.argv[1] == "write":
        write(pathlib.Path(sys.argv[2]), sys.argv[3])
    else:
        compare(pathlib.Path(sys.argv[2]))
