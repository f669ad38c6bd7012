#!/usr/bin/env python3
"""Writes seeds for the result file's fuzz target: small files that reach every part of the reader."""
import pathlib
import struct

SEEDS = pathlib.Path(__file__).parent / "seeds"


def integer(number):
    return struct.pack("<i", number)


def text(words):
    data = words.encode("cp932")
    return integer(len(data)) + data


def step(time, name, types, values_of_items):
    data = struct.pack("<d", time) + text(name) + b"".join(map(integer, types))
    for values in values_of_items:
        data += integer(len(values)) + struct.pack(f"<{len(values)}d", *values)
    return data


def result_file(title, items, nodes, elements, steps):
    data = b"VRF10" + integer(100) + text(title) + integer(len(items))
    for name, element_type, flags in items:
        data += text(name) + integer(element_type) + integer(flags)
    data += integer(len(nodes)) + integer(len(elements))
    data += b"".join(struct.pack("<2d", *node) for node in nodes)
    for element in elements:
        data += integer(len(element)) + b"".join(map(integer, element))
    return data + bytes(16) + b"".join(step(*each) for each in steps)


SQUARES = [(0, 0), (1, 0), (2, 0), (0, 1), (1, 1), (2, 1)]
FILES = {
    "twoSquares": result_file(
        "二つの四角形", [("変位", -1, 3), ("応力", 2, 0)], SQUARES, [[1, 2, 5, 4], [2, 3, 6, 5]],
        [(0, "初期", [1, 2], [[1, 2, 3, 4, 5, 6], [10]]), (1.25, "", [1, -1], [[2, 4, 6, 8, 10, 12], []])]),
    "lines": result_file(
        "", [("", 1, 1), ("N", 1, 2)], SQUARES, [[1, 2], [2, 3], [3, 3]], [(0, "", [1, 1, 1], [[1, 2, 3], [4, 5, 6]])]),
    # Nodes that are missing or not in the mesh, an element without nodes, one edge of three elements, a fan of many.
    "oddElements": result_file(
        "odd", [("a", -1, 0)], SQUARES,
        [[1, 2, 0], [1, 2, 99], [2, 1, 6], [], [5], [-7, 3, 3, 4]] + [[4, 1 + i % 3, 5 + i % 2] for i in range(14)],
        [(-1e300, "x", [1] * 20, [[float("nan"), float("inf"), -0.0, 1e-40, 1e39, 2]])]),
    "noSteps": result_file("none", [("a", 0, 4)], SQUARES[:3], [[1, 2, 3]], []),
}
FILES["cutInStep"] = FILES["twoSquares"][:-61]

if __name__ == "__main__":
    SEEDS.mkdir(exist_ok=True)
    for name, data in FILES.items():
        (SEEDS / f"{name}.vrf").write_bytes(data)
