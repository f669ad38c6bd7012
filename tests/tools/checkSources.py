#!/usr/bin/env python3
"""Checks what no compiler does: each file of src/ includes only what its room may link, takes headers of QtWidgets only
where they are linked, and a source file begins with the name of a header beside it.

Usage: checkSources.py ROOT FOLDER_OF_QTWIDGETS_HEADERS
"""
import pathlib
import re
import sys

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


def complaints(src, rooms, widget_headers):
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


def main():
    root, widgets = map(pathlib.Path, sys.argv[1:])
    widget_headers = {header.name for header in widgets.iterdir()}
    rooms = rooms_of((root / "src/CMakeLists.txt").read_text(encoding="utf-8"))
    found = list(complaints(root / "src", rooms, widget_headers))
    # Were no room allowed any other, the same sources would have to bring both complaints about what they include.
    alone = " ".join(complaints(root / "src", {room: {room} for room in rooms}, widget_headers))
    if " is not beneath " not in alone or " is for windows alone" not in alone:
        found.append("the check sees nothing")
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
