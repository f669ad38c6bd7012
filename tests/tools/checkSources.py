#!/usr/bin/env python3
"""Checks what no compiler does: each file of src/ includes only what its room may link, takes headers of QtWidgets only
where they are linked, and a source file begins with the name of a header beside it.

Usage: checkSources.py ROOT FOLDER_OF_QTWIDGETS_HEADERS | checkSources.py --self-test
"""
import pathlib
import re
import sys
import tempfile

# Programs stand beside the rooms; each may take what the room that it starts may.
ENTRIES = {"main": "mainwin", "batchMain": "batch", "precompiled": "platform/base"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def rooms_of(cmake_lists):
    """For each room the rooms and libraries that it may use, itself among them; the build's own table is the rule."""
    rooms = {}
    for room, uses in re.findall(r"^velorin_room\((\S+) ([^)]*)\)", cmake_lists, re.MULTILINE):
        rooms[room] = {room}
        for used in uses.split():
            known = [other for other in rooms if used == "velorin_" + other.replace("/", "_")]
            rooms[room] |= rooms[known[0]] if known else {used}
    return rooms


def complaints(root, widget_headers):
    src = root / "src"
    rooms = rooms_of((src / "CMakeLists.txt").read_text(encoding="utf-8"))
    for path in sorted(src.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        folder = path.parent.relative_to(src).as_posix()
        room = ENTRIES.get(path.stem) if folder == "." else folder
        if room not in rooms:
            yield f"{path}: the folder is no room"
            continue
        if path.suffix == ".cpp" and folder != ".":
            if not any(path.stem.startswith(header.stem) for header in path.parent.glob("*.h")):
                yield f"{path}: begins with no header's name"
        for bracket, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            if bracket == '"' and pathlib.PurePosixPath(name).parent.as_posix() not in rooms[room]:
                yield f"{path}: {name} is not beneath {room}"
            if bracket == "<" and name.split("/")[-1] in widget_headers and "Qt6::Widgets" not in rooms[room]:
                yield f"{path}: {name} is for windows alone"


def self_test():
    """A tree in which each file but the good ones must bring one complaint."""
    files = {
        "CMakeLists.txt": "velorin_room(low Qt6::Core)\nvelorin_room(mid/core velorin_low)\n"
                          "velorin_room(mid/windows velorin_low Qt6::Widgets)\nvelorin_room(batch velorin_mid_core)\n",
        "low/good.h": "#include <QString>\n",
        "mid/core/good.h": "",
        "mid/core/goodMore.cpp": '#include "low/good.h"\n#include "mid/core/good.h"\n#include <vector>\n',
        "mid/windows/frmGood.h": "#include <QtWidgets/QDialog>\n",
        "batchMain.cpp": '#include "mid/core/good.h"\n',
        "low/goodUpwards.cpp": '// text\n#  include "mid/core/good.h"\n',
        "low/goodBeside.cpp": '#include "good.h"\n',
        "mid/core/goodSideways.cpp": '#include "mid/windows/frmGood.h"\n',
        "mid/core/goodWindow.cpp": "#include <QDialog>\n",
        "mid/core/nameless.cpp": "",
        "elsewhere/a.h": "",
    }
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder) / "src" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        found = list(complaints(pathlib.Path(folder), {"QDialog"}))
    print("\n".join(found))
    return len(found) == 6 and len({text.split(":")[0] for text in found}) == 6


def main():
    if sys.argv[1:] == ["--self-test"]:
        return 0 if self_test() else 1
    root, widgets = map(pathlib.Path, sys.argv[1:])
    widget_headers = {header.name for header in widgets.iterdir()}
    found = list(complaints(root, widget_headers))
    print("\n".join(found))
    return 1 if found or "QWidget" not in widget_headers else 0


if __name__ == "__main__":
    sys.exit(main())
