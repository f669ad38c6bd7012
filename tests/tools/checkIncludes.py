#!/usr/bin/env python3
"""Checks that every file of src/ includes only its own and lower floors, and that windows stay where they belong.

Usage: checkIncludes.py ROOT FOLDER_OF_QTWIDGETS_HEADERS | checkIncludes.py --self-test
"""
import pathlib
import re
import sys
import tempfile

# From the ground up; floors of one line stand side by side and don't include each other.
FLOORS = [
    ["platform"],
    ["app"],
    ["result"],
    ["property"],
    ["view"],
    ["plot"],
    ["output", "extensions"],
    ["mainwin", "batch"],
]
LEVEL = {floor: level for level, floors in enumerate(FLOORS) for floor in floors}

# Files that may take headers of QtWidgets, by floor or by name.
WIDGET_FLOORS = {"platform"}
WIDGET_FILES = re.compile(r"(frm|ctl)[A-Z]\w*|ListPanel\w*|main")

# Programs stand beside the floors; each may take what its own floor may.
ENTRIES = {"main": "mainwin", "batchMain": "batch"}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def may_include(floor, other):
    return floor == other or LEVEL[other] < LEVEL[floor]


def complaints_about(path, src, widget_headers):
    """One text per include of `path` that breaks a rule."""
    parts = path.relative_to(src).parts
    floor = parts[0] if len(parts) > 1 else ENTRIES.get(path.stem)
    if len(parts) > 1 and floor not in LEVEL:
        yield f"{path}: the folder {floor} is no floor"
        return
    widgets_allowed = floor in WIDGET_FLOORS or WIDGET_FILES.fullmatch(path.stem)
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        bracket, name = match.groups()
        where = f"{path}:{number}: {name}"
        if bracket == '"':
            target = name.split("/")[0]
            if "/" not in name or target not in LEVEL:
                yield f'{where}: own headers are included as "floor/File.h"'
            elif floor is None or not may_include(floor, target):
                yield f"{where}: {target} is no lower floor than {floor or path.name}"
        elif name.split("/")[-1] in widget_headers and not widgets_allowed:
            yield f"{where}: only windows and the platform take headers of QtWidgets"


def complaints(root, widget_headers):
    src = root / "src"
    for path in sorted(src.rglob("*")):
        if path.suffix in (".h", ".cpp"):
            yield from complaints_about(path, src, widget_headers)


def self_test():
    """Each file with the number of complaints that it must bring."""
    cases = {
        "platform/Good.h": ("#include <QWidget>\n", 0),
        "view/good.cpp": ('#include "view/a.h"\n#include "app/b.h"\n#include <QImage>\n#include <vector>\n', 0),
        "view/frmGood.cpp": ("#include <QDialog>\n", 0),
        "mainwin/ListPanelModel.h": ("#include <QtWidgets/QListView>\n", 0),
        "main.cpp": ('#include "mainwin/frmMain.h"\n#include <QApplication>\n', 0),
        "batchMain.cpp": ('#include "mainwin/frmMain.h"\n#include <QApplication>\n', 2),
        "app/upwards.h": ('// text\n#  include "result/ResultModel.h"\n', 1),
        "output/sideways.cpp": ('#include "extensions/a.h"\n', 1),
        "batch/window.cpp": ('#include "mainwin/frmMain.h"\n', 1),
        "result/beside.cpp": ('#include "ResultModel.h"\n', 1),
        "result/unknown.cpp": ('#include "elsewhere/File.h"\n', 1),
        "view/from.cpp": ("#include <QtWidgets/QWidget>\n", 1),
        "mainwin/commandTable.cpp": ("#include <QWidget>\n", 1),
        "precompiled.h": ('#include <QString>\n#include "app/a.h"\n', 1),
        "newfloor/a.h": ("", 1),
    }
    widget_headers = {"QWidget", "QDialog", "QListView", "QApplication"}
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        src = pathlib.Path(folder) / "src"
        for name, (text, expected) in cases.items():
            path = src / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
            found = list(complaints_about(path, src, widget_headers))
            if len(found) != expected:
                print(f"{name}: {expected} complaints expected, {len(found)} found: {found}")
                failures += 1
        if len(list(complaints(src.parent, widget_headers))) != sum(expected for _, expected in cases.values()):
            print("the walk over all files misses some")
            failures += 1
    return failures


def main():
    if sys.argv[1:] == ["--self-test"]:
        return 1 if self_test() else 0
    root, widgets = map(pathlib.Path, sys.argv[1:])
    widget_headers = {header.name for header in widgets.iterdir()}
    if "QWidget" not in widget_headers:
        print(f"{widgets} holds no headers of QtWidgets")
        return 1
    found = list(complaints(root, widget_headers))
    for text in found:
        print(text)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
