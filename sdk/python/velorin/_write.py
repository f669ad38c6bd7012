"""Writing results as .vrf."""
import ctypes
import os

import numpy as np

from . import _native
from ._native import Calling, library
from ._result import _DISPLACEMENTS, Elements, Item


def _array(values, kind):
    return np.ascontiguousarray(values, kind)


def _connectivity(elements):
    """Offsets and nodes of anything that lists the nodes of each element."""
    if isinstance(elements, Elements):
        return _array(elements.offsets, np.int32), _array(elements.nodes, np.int32)
    if isinstance(elements, np.ndarray) and elements.ndim == 2:
        return (np.arange(len(elements) + 1, dtype=np.int32) * elements.shape[1]), _array(elements, np.int32).ravel()
    rows = [_array(row, np.int32) for row in elements]
    offsets = np.concatenate([[0], np.cumsum([len(row) for row in rows])]).astype(np.int32)
    return offsets, np.concatenate(rows) if rows else np.empty(0, np.int32)


def _items(values, node_count, element_count, step_count):
    """The items of `values`, and for each an array with a row per step."""
    items, columns = [], []
    for key, given in values.items():
        array = np.asarray(given)
        array = array.reshape(1, -1) if array.ndim == 1 else array
        item = key if isinstance(key, Item) else Item(key, None if array.shape[-1] == node_count else 0)
        expected = (step_count, node_count if item.element_type is None else element_count)
        if array.shape != expected:
            raise ValueError(f"{item.name!r}: the values have the shape {array.shape}, not {expected}")
        items.append(item)
        columns.append(array)
    return items, columns


def write(path, nodes, elements, values, *, times=None, step_names=None, types=None, title="", progress=None):
    """Writes a result file (.vrf), wholly or not at all.

    nodes     X and Y of each node, an array of two columns
    elements  the nodes of each element: an array with a row per element, a list of lists, or Result.elements
    values    for each item, by its name or as an Item, an array with a row per step; one row may stand without a list.
              As long as there are nodes the item is one of nodes, else one of elements
    times     of the steps; without them 0, 1, 2 and so on
    types     of the elements, which are there if it is not negative: one each, or a row per step; 0 without them

    Numbers become those of single precision. `progress(step, steps)` may return False to stop."""
    nodes = np.asarray(nodes)
    if nodes.ndim != 2 or nodes.shape[1] != 2:
        raise ValueError(f"nodes have two columns, X and Y, and not the shape {nodes.shape}")
    x, y = _array(nodes[:, 0], np.float32), _array(nodes[:, 1], np.float32)
    offsets, corners = _connectivity(elements)
    element_count = len(offsets) - 1
    if times is None:
        first = np.asarray(next(iter(values.values()), ()))
        times = np.arange(1 if first.ndim < 2 else len(first))
    names = ["" for _ in times] if step_names is None else list(step_names)
    if len(names) != len(times):
        raise ValueError(f"{len(names)} names of {len(times)} steps")
    items, columns = _items(values, len(nodes), element_count, len(times))
    if types is not None:
        types = np.broadcast_to(np.asarray(types, np.int32), (len(times), element_count))

    def fill_types(step, target):
        np.ctypeslib.as_array(target, (element_count,))[:] = types[step]

    def fill_values(step, item, target):
        row = columns[item][step]
        np.ctypeslib.as_array(target, (len(row),))[:] = row
        return progress(step, len(times)) if progress and item == 0 else True

    calling = Calling()
    pointer = lambda array, kind: array.ctypes.data_as(kind)  # noqa: E731
    item_records = (_native.Item * len(items))(*[
        _native.Item(item.name.encode(), -1 if item.element_type is None else item.element_type,
                     _DISPLACEMENTS.index(item.displacement)) for item in items])
    step_records = (_native.Step * len(names))(*[_native.Step(name.encode(), time)
                                                 for name, time in zip(names, times)])
    content = _native.Content(
        ctypes.sizeof(_native.Content), title.encode(), len(nodes), element_count, len(items), len(names),
        pointer(x, _native.floats), pointer(y, _native.floats), pointer(offsets, _native.ints),
        pointer(corners, _native.ints), item_records, step_records,
        calling.wrap(_native.FillTypes, fill_types if types is not None else None),
        calling.wrap(_native.FillValues, fill_values), None)
    calling.check(library.velorin_write(os.fsencode(path), content), os.fsdecode(path))
