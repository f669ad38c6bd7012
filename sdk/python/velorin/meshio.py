"""Result files for meshio: once this is imported, meshio.read("a.vrf") and meshio.write("b.vrf", mesh) work.

    import meshio
    import velorin.meshio

    meshio.write("plate.vrf", meshio.read("plate.vtu"))

meshio knows no steps: reading takes the last one, and velorin.meshio.read(path, step) any other. The array "velorin:type"
of the cells has the type of each element, by which it exists in the step or not; where all are 0 it is left out."""
import itertools
import os

import meshio
import numpy as np

from ._result import Item, read as _read
from ._write import write as _write

TYPES = "velorin:type"
_CELLS = {1: "vertex", 2: "line", 3: "triangle", 4: "quad"}
#: In a result file the middle of an edge stands between its ends.
_ORDERS = {"line3": (0, 2, 1), "triangle6": (0, 3, 1, 4, 2, 5), "quad8": (0, 4, 1, 5, 2, 6, 3, 7)}
_ORDERS["quad9"] = _ORDERS["quad8"]
_CURVED = {6: "triangle6", 8: "quad8"}
_COMPONENTS = {1: ("",), 2: (" X", " Y"), 3: (" X", " Y", " Z"), 6: (" XX", " YY", " ZZ", " XY", " YZ", " XZ")}
_DISPLACEMENTS = ("u", "disp", "displacement", "変位")


def read(path, step=-1, second_order=False):
    """A step of a result file as a mesh. Components of an item of nodes come as one array, and the displacement as one
    that its name tells. A result file does not tell second-order elements from polygons, which they come as; with
    `second_order` those of six and eight nodes are triangles and quadrilaterals with nodes on their edges."""
    with _read(path) as result:
        elements = [nodes[nodes >= 0] for nodes in result.elements]
        blocks = [(len(elements[run[0]]), run) for run in
                  (list(group) for _, group in itertools.groupby(range(len(elements)), lambda e: len(elements[e])))]
        blocks = [(count, run) for count, run in blocks if count > 0]
        cells = [_cells(np.array([elements[e] for e in run]), second_order) for _, run in blocks]
        has_steps = len(result.times) > 0
        types = result.types(step) if has_steps else np.zeros(0)
        cell_values = {TYPES: types} if types.any() else {}
        point_data = {}
        for item in result.items if has_steps else ():
            place = point_data if item.element_type is None else cell_values
            place[item.name] = result.values(step, item.name)
        point_data = _joined(point_data, {item.displacement: item.name for item in result.items})
        cell_data = {name: [values[run] for _, run in blocks] for name, values in cell_values.items()}
        points = np.pad(result.nodes, ((0, 0), (0, 1)))  # most formats want them in space
        return meshio.Mesh(points, cells, point_data, cell_data)


def _cells(nodes, second_order):
    """Elements of one number of nodes as cells."""
    count = nodes.shape[1]
    if second_order and count in _CURVED:
        return _CURVED[count], nodes[:, np.argsort(_ORDERS[_CURVED[count]])]
    return _CELLS.get(count, "polygon"), nodes


def _joined(values, displacement):
    """Arrays of the components that `_components` makes of them; `displacement` names its items of X and Y."""
    groups = {}
    for ends in sorted(_COMPONENTS.values(), key=len, reverse=True)[:-1]:
        for name in values:
            base = name.removesuffix(ends[0])
            parts = [base + end for end in ends]
            if base not in ("", name, *values, *groups) and all(part in values for part in parts):
                groups[base] = parts
    moves = [displacement.get("x"), displacement.get("y")]
    if all(name in values for name in moves) and not any(name in parts for name in moves for parts in groups.values()):
        base = os.path.commonprefix(moves).strip()
        base = base if base.lower() in _DISPLACEMENTS else "U"
        if base not in (*values, *groups):
            groups[base] = moves
    firsts = {parts[0]: base for base, parts in groups.items()}
    joined = {part for parts in groups.values() for part in parts}
    return {firsts.get(name, name): np.stack([values[part] for part in groups[firsts[name]]], 1) if name in firsts else data
            for name, data in values.items() if name in firsts or name not in joined}


def write(path, mesh, time=0.0):
    """Writes a mesh with its data as a result file of one step. Points in space have to lie in a plane of two axes;
    cells with a volume are refused."""
    axes = _plane(np.asarray(mesh.points))
    elements = [row for block in mesh.cells for row in _corners(block)]
    values = {}
    for name, data in mesh.point_data.items():
        values |= _components(name, np.asarray(data), None, axes)
    cell_data = {name: np.concatenate([np.asarray(block) for block in blocks])
                 for name, blocks in mesh.cell_data.items()}
    types = cell_data.pop(TYPES, None)
    for name, data in cell_data.items():
        values |= _components(name, data, _element_type(name, data, types), axes)
    _write(path, np.asarray(mesh.points)[:, axes], elements, {item: [row] for item, row in values.items()},
           times=[time], types=types)


def _plane(points):
    """The two axes that the points lie along."""
    if points.shape[1] == 2:
        return [0, 1]
    extents = np.ptp(points, axis=0) if len(points) else np.zeros(3)
    across = int(np.argmin(extents[::-1]))  # of equal ones the last
    axis = 2 - across
    if extents[axis] > 1e-6 * extents.max():
        farthest = points[np.argmax(np.abs(points[:, axis] - points[0, axis])), axis]
        raise ValueError(f"the points lie in no plane: {'XYZ'[axis]} is up to {farthest:g}")
    return [other for other in range(3) if other != axis]


def _corners(block):
    if meshio._mesh.topological_dimension.get(block.type, 2) > 2:
        raise ValueError(f"cells of the kind {block.type!r} have a volume")
    order = _ORDERS.get(block.type)
    return block.data if order is None else np.asarray(block.data)[:, order]


def _components(name, data, element_type, axes):
    """An item for each component of an array."""
    data = data.reshape(len(data), -1)
    count = data.shape[1]
    names = _COMPONENTS.get(count) or [f" {i + 1}" for i in range(count)]
    moves = ["", "", ""]
    if element_type is None and count in (2, 3) and name.lower() in _DISPLACEMENTS:
        for direction, axis in zip("xy", axes if count == 3 else (0, 1)):
            moves[axis] = direction
    return {Item(name + names[i], element_type, moves[i] if count in (2, 3) else ""): data[:, i] for i in range(count)}


def _element_type(name, data, types):
    """The type of those elements that have a value."""
    if types is None:
        return 0
    found = np.unique(types[~np.isnan(data.reshape(len(data), -1)[:, 0].astype(float))])
    if len(found) > 1:
        raise ValueError(f"{name!r} has values for elements of the types {found.tolist()}, not of one")
    return int(found[0]) if len(found) else 0


meshio.register_format("vrf", [".vrf"], read, {"vrf": write})
