#!/usr/bin/python3
"""The package for Python: what it writes it reads, and what it draws is what the companion draws. Usage:
pythonPackage.py ROOT BATCH; 77 means skipped."""
import contextlib
import html
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77
try:
    import numpy as np
except ImportError:
    sys.exit(SKIPPED)
try:
    import meshio
except ImportError:
    meshio = None
import velorin

BATCH, ROOT = sys.argv.pop(), pathlib.Path(sys.argv.pop())
DEMO = ROOT / "demo/plate.vrf"
NODES = np.array([[0, 0], [1, 0], [1, 1], [0, 1], [2, 0.5]])
ELEMENTS = [[0, 1, 2, 3], [1, 4, 2], [3, 2]]
VALUES = {
    velorin.Item("変位", None, "y"): np.arange(10).reshape(2, 5) / 4,
    "温度": np.arange(10.0, 20).reshape(2, 5),
    velorin.Item("stress", 3): [[1, 2, 3], [4, 5, 6]],
}
TYPES = [[3, 3, 1], [3, -1, 3]]


class Package(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.path = self.folder / "ファイル.vrf"

    def write(self, **changes):
        given = {"nodes": NODES, "elements": ELEMENTS, "values": VALUES, "times": [0.5, 1.5], "types": TYPES} | changes
        velorin.write(self.path, **given)
        return self.path

    def test_what_is_written_is_read(self):
        with velorin.read(self.write(title="題", step_names=["初", ""])) as result:
            self.assertEqual((result.title, result.steps[0].name, result.times.tolist()), ("題", "初", [0.5, 1.5]))
            self.assertEqual(result.items, (*list(VALUES)[:1], velorin.Item("温度"), *list(VALUES)[2:]))
            self.assertEqual([list(nodes) for nodes in result.elements], ELEMENTS)
            np.testing.assert_array_equal(result.nodes, NODES)
            np.testing.assert_array_equal(result.types(-1), TYPES[1])
            np.testing.assert_array_equal(result.values(1, "温度"), VALUES["温度"][1])
            np.testing.assert_array_equal(result.values(0, 2), [1, 2, np.nan])
            np.testing.assert_array_equal(result.history("stress", [1, 2, 0]), [[2, np.nan, 1], [np.nan, 6, 4]])
            np.testing.assert_array_equal(result.history(0, -1), [[1], [2.25]])
            elements = result.elements
            copy = self.folder / "copy.vrf"
            velorin.write(copy, result.nodes, elements,
                          {item: [result.values(step, item.name) for step in (0, 1)] for item in result.items},
                          times=result.times, types=TYPES, title="題", step_names=["初", ""])
            self.assertEqual(copy.read_bytes(), self.path.read_bytes())
        # The arrays outlive the result that they show.
        self.path.unlink()
        self.assertEqual(list(elements[-1]), [3, 2])
        self.assertFalse(elements.nodes.flags.writeable)
        with self.assertRaisesRegex(ValueError, "closed"):
            result.values(0, 0)

    def test_mistakes_are_exceptions(self):
        result = velorin.read(self.write())
        (self.folder / "text.vrf").write_text("no result")
        os.mkfifo(self.folder / "pipe.vrf")
        for kind, what in (
            (FileNotFoundError, lambda: velorin.read("none.vrf")),
            (IsADirectoryError, lambda: velorin.read(self.folder)),
            (ValueError, lambda: velorin.read(self.folder / "text.vrf")),
            (OSError, lambda: velorin.read(self.folder / "pipe.vrf")),
            (ValueError, lambda: result.values(0, "none")),
            (IndexError, lambda: result.values(2, 0)),
            (IndexError, lambda: result.history(0, [5])),
            (TypeError, lambda: result.history(0, [0.5])),
            (TypeError, lambda: result.values(0.5, 0)),
            (ValueError, lambda: result.render("a.bmp")),
            (ValueError, lambda: result.render("a.png", settings={"none": 1})),
            (ValueError, lambda: result.render("a.png", size=(0, 5))),
            (FileNotFoundError, lambda: result.render(self.folder / "none/a.trace")),
            (ValueError, lambda: self.write(elements=[[0, 1, 5]] * 3)),
            (ValueError, lambda: self.write(nodes=NODES * np.nan)),
            (ValueError, lambda: self.write(values={"a": [1, 2]})),
            (ValueError, lambda: self.write(values={})),
            (FileNotFoundError, lambda: velorin.write("none/a.vrf", NODES, ELEMENTS, {"a": [1] * 5})),
        ):
            before = self.path.read_bytes()
            self.assertRaises(kind, what)
            self.assertEqual(self.path.read_bytes(), before)

    def test_progress_stops_and_raises(self):
        told = []
        velorin.read(DEMO, lambda done, total: told.append(done <= total)).history(0, [0], lambda *at: told.append(at))
        self.assertIn((1, len(velorin.read(DEMO).times)), told)
        with self.assertRaises(InterruptedError):
            velorin.read(DEMO).history(0, [0], lambda *_: False)
        with self.assertRaises(ZeroDivisionError):
            self.write(progress=lambda step, steps: 1 / step)
        self.assertFalse(self.path.exists())

    def test_pictures_are_those_of_the_companion(self):
        ours, theirs = self.folder / "a.png", self.folder / "b.png"
        velorin.render(DEMO, ours, 2, "ミーゼス応力", size=(300, 200), zoom=1, settings={"displacement/fid": 0},
                       property_file=False)
        subprocess.run([BATCH, "render", DEMO, "-o", theirs, "--step", "3", "--item", "ミーゼス応力", "--size", "300x200",
                        "--zoom", "1", "--set", "displacement/fid=0", "--no-property"], check=True)
        self.assertEqual(ours.read_bytes(), theirs.read_bytes())

    @unittest.skipUnless(meshio, "no meshio")
    def test_the_manual_s_examples_run(self):
        self.enterContext(contextlib.chdir(self.folder))
        for name in ("plate.vrf", "model.vrf"):
            shutil.copy(DEMO, name)
        for language in ("ja", "en"):
            page = (ROOT / f"help/{language}/python.html").read_text(encoding="utf-8")
            meshio.write("case.msh", meshio.Mesh(np.eye(3) * [1.0, 1, 0], {"triangle": [[0, 1, 2]]},
                                                 {"a": [1.0, 2, 3]}), file_format="gmsh")
            names = {"print": lambda *_: None}
            for code in re.findall(r"<pre><code>(.*?)</code></pre>", page, re.DOTALL):
                exec(html.unescape(code), names)
            for made in ("plate.png", "history.csv", "step-0010.png", "own.vrf", "case.vrf", "last.vtu", "first.vtu"):
                pathlib.Path(made).unlink()

    @unittest.skipUnless(meshio, "no meshio")
    def test_meshio_takes_and_gives(self):
        import velorin.meshio
        first = meshio.read(self.write())
        self.assertEqual([block.type for block in first.cells], ["quad", "triangle", "line"])
        np.testing.assert_array_equal(first.point_data["温度"], VALUES["温度"][1])
        np.testing.assert_array_equal(np.concatenate(first.cell_data["stress"]), [4, np.nan, 6])
        meshio.write(self.folder / "again.vrf", first)
        again = meshio.read(self.folder / "again.vrf")
        np.testing.assert_array_equal(np.concatenate(again.cell_data["stress"]), [4, np.nan, 6])
        np.testing.assert_array_equal(np.concatenate(again.cell_data[velorin.meshio.TYPES]), TYPES[1])
        meshio.write(self.folder / "other.vtu", first)
        with velorin.read(self.folder / "other.vtu") as result:
            np.testing.assert_array_equal(result.values(0, "温度"), VALUES["温度"][1])
        meshio.write(self.folder / "moved.vtu", meshio.read(DEMO))
        with velorin.read(self.folder / "moved.vtu") as result, velorin.read(DEMO) as given:
            self.assertEqual([item.displacement for item in result.items[:3]], ["x", "y", ""])
            np.testing.assert_array_equal(result.values(0, 1), given.values(-1, "変位Y"))
        points = np.array([[0, 5, 0], [2, 5, 0], [0, 5, 2], [1, 5, 0], [1, 5, 1], [0, 5, 1]])
        curved = meshio.Mesh(points, {"triangle6": [range(6)]}, {"Disp": points})
        meshio.write(self.path, curved)
        with velorin.read(self.path) as result:
            self.assertEqual(list(result.elements[0]), [0, 3, 1, 4, 2, 5])
            self.assertEqual([item.displacement for item in result.items], ["x", "", "y"])
            self.assertEqual(meshio.read(self.path).point_data["Disp"].shape, (6, 3))
            np.testing.assert_array_equal(result.nodes, points[:, [0, 2]])
        cells, = velorin.meshio.read(self.path, second_order=True).cells
        self.assertEqual((cells.type, cells.data.tolist()), ("triangle6", [list(range(6))]))
        points[3, 1] = 7
        for wrong in (curved, meshio.Mesh(points * 0.0, {"tetra": [range(4)]})):
            self.assertRaises(ValueError, meshio.write, self.path, wrong)


if __name__ == "__main__":
    os.environ.setdefault("XDG_RUNTIME_DIR", tempfile.gettempdir())
    unittest.main()
