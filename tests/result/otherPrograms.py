#!/usr/bin/python3
"""Files that CalculiX, Gmsh and meshio write of one bent beam, read by velorin-batch: values and pictures are the same in
each, and what these programs say. Skipped (77) where one of them is missing.

Usage: otherPrograms.py VELORIN-BATCH
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile

try:
    import meshio
    import numpy as np
except ImportError:
    sys.exit(77)
if not all(map(shutil.which, ("ccx", "gmsh"))):
    sys.exit(77)

COMPONENTS = {"DISP": "XYZ", "STRESS": ["XX", "YY", "ZZ", "XY", "YZ", "XZ"]}


def beam_input(binary):
    """Quadratic quadrilaterals under two loads, for CalculiX; the nodes of each element."""
    across, up = 12, 4
    number = lambda i, j: j * (2 * across + 1) + i + 1
    ring = ((0, 0), (2, 0), (2, 2), (0, 2), (1, 0), (2, 1), (1, 2), (0, 1))
    elements = [[number(2 * i + a, 2 * j + b) for a, b in ring] for j in range(up) for i in range(across)]
    places = {number(i, j): (i * 0.5, j * 0.5) for i in range(2 * across + 1) for j in range(2 * up + 1)}
    used = sorted({node for element in elements for node in element})
    text = "*NODE, NSET=NALL\n" + "".join("%d,%g,%g,0\n" % (node, *places[node]) for node in used)
    text += "*ELEMENT, TYPE=CPS8, ELSET=EALL\n"
    text += "".join(",".join(map(str, [e + 1] + nodes)) + "\n" for e, nodes in enumerate(elements))
    text += "*MATERIAL,NAME=M\n*ELASTIC\n210000,0.3\n*SOLID SECTION,ELSET=EALL,MATERIAL=M\n1.\n*BOUNDARY\n"
    text += "".join("%d,1,3\n" % node for node in used if places[node][0] == 0)
    kind = "OUTPUT" if binary else "FILE"
    for force in (-10, -25):
        text += f"*STEP\n*STATIC\n*CLOAD\n{max(used)},2,{force}\n*NODE {kind},OUTPUT=2D\nU\n*EL {kind}\nS\n*END STEP\n"
    return text.replace("*EL OUTPUT", "*ELEMENT OUTPUT"), used, places, elements


def read_frd(path):
    """The arrays of the last step, read here by columns."""
    arrays, name = {}, None
    for line in path.read_text().splitlines():
        if line.startswith(" -4"):
            name = line[5:13].strip()
            arrays[name] = []
        elif line.startswith(" -1") and name:
            arrays[name].append([float(line[13 + 12 * c:25 + 12 * c]) for c in range((len(line) - 13) // 12)])
        elif line.startswith(" -3"):
            name = None
    return {name: np.array(values) for name, values in arrays.items()}


def main(batch, folder):
    run = lambda *words: subprocess.run(words, cwd=folder, check=True, capture_output=True, text=True).stdout
    failures = []

    def expect(name, path, arrays, step, tolerance=0):
        for array, values in arrays.items():
            for c, component in enumerate(COMPONENTS[array]):
                item = f"{array} {component}"
                lines = run(batch, "values", path, "--step", str(step), "--item", item).splitlines()[1:]
                given = np.array([line.split(",")[1] for line in lines], dtype=np.float32)
                wanted = values[:, c].astype(np.float32)
                if given.shape != wanted.shape or not np.all(abs(given - wanted) <= tolerance * abs(wanted).max()):
                    failures.append(f"{name}: {item} differs")

    for name, binary in (("beam", False), ("packed", True)):
        text, used, places, elements = beam_input(binary)
        (folder / f"{name}.inp").write_text(text)
        run("ccx", name)
    arrays = {name: values for name, values in read_frd(folder / "beam.frd").items() if name in COMPONENTS}
    expect("text", "beam.frd", arrays, 2)
    expect("binary", "packed.frd", arrays, 2, 1e-4)  # text has six digits

    index = {node: i for i, node in enumerate(used)}
    mesh = meshio.Mesh([(*places[node], 0) for node in used],
                       [("quad8", [[index[node] for node in element] for element in elements])], point_data=arrays)
    mesh.write(folder / "zlib.vtu", compression="zlib")
    mesh.write(folder / "plain.vtu", compression=None)
    mesh.write(folder / "text.vtu", binary=False)
    for binary in (True, False):
        mesh.write(folder / f"new{binary}.vtk", "vtk", binary=binary)
        mesh.write(folder / f"old{binary}.vtk", "vtk42", binary=binary)
    # Gmsh knows whole tensors alone.
    mesh.point_data = dict(arrays, STRESS=arrays["STRESS"][:, [0, 3, 5, 3, 1, 4, 5, 4, 2]])
    for binary in (True, False):
        meshio.gmsh.write(folder / f"two{binary}.msh", mesh, "2.2", binary)
    run(batch, "convert", "beam.frd", "beam.vrf")
    draw = lambda path, step: run(batch, "render", path, "-o", path + ".png", "--step", str(step), "--item", "STRESS XX",
                                  "--set", "displacement/fid=2") or (folder / (path + ".png")).read_bytes()
    picture = draw("beam.frd", 2)
    if picture != draw("beam.vrf", 2) or picture == draw("beam.vrf", 1):
        failures.append("beam.vrf: another picture")
    for path in sorted(folder.glob("*.vt[uk]")) + sorted(folder.glob("*.msh")):
        expect(path.name, path.name, arrays, 1)
        if draw(path.name, 1) != picture:
            failures.append(f"{path.name}: another picture")

    # As Gmsh itself writes a view.
    for version, binary in (("4.1", 0), ("4.1", 1), ("2.2", 1)):
        (folder / "save.geo").write_text(f'Merge "twoFalse.msh"; Mesh.MshFileVersion={version}; Mesh.Binary={binary};\n'
                                         'Mesh.SaveAll=1; Save View[0] "view.msh";\n')
        run("gmsh", "-", "save.geo")
        expect(f"Gmsh {version} {binary}", "view.msh", {"DISP": arrays["DISP"]}, 1)
    print("\n".join(failures))
    return bool(failures)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as name:
        sys.exit(main(str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(name)))
