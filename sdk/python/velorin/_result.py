"""Open results: mesh, values and pictures."""
import collections
import collections.abc
import ctypes
import operator
import os

import numpy as np

from ._native import Calling, Picture, Progress, handle, library

Item = collections.namedtuple("Item", "name element_type displacement", defaults=(None, ""))
Item.__doc__ = """A quantity with values in every step.

element_type is None for one value per node, else the type of the elements that have one each; displacement is "x" or
"y" for those that move the mesh, "" for all others."""
Step = collections.namedtuple("Step", "name time")

_DISPLACEMENTS = ("", "x", "y", "xy")


class _Handle:
    """An open result of the library, which lives as long as anything that shows its memory."""

    def __init__(self, pointer):
        self.pointer = pointer

    def __del__(self, close=library.velorin_close):  # at the end of the program the name may be gone
        close(self.pointer)

    def array(self, address, count, kind):
        """`count` numbers of the library's memory, to read only, without a copy."""
        if count == 0:
            return np.empty(0, kind)
        memory = (kind * count).from_address(address)
        memory._owner = self  # the array keeps the memory, and the memory keeps the result
        array = np.frombuffer(memory, np.dtype(kind))
        array.flags.writeable = False
        return array


class Elements(collections.abc.Sequence):
    """The nodes of each element, in order around it.

    Those of element e are nodes[offsets[e]:offsets[e + 1]], which elements[e] gives; -1 is a missing node."""

    def __init__(self, offsets, nodes):
        self.offsets, self.nodes = offsets, nodes

    def __len__(self):
        return len(self.offsets) - 1

    def __getitem__(self, index):
        if isinstance(index, slice):
            return [self[i] for i in range(*index.indices(len(self)))]
        index = range(len(self))[index]
        return self.nodes[self.offsets[index]:self.offsets[index + 1]]

    def __repr__(self):
        return f"<Elements: {len(self)}>"


class Result:
    """An open result file. Values are read from the file when they are asked for.

    Steps, items, nodes and elements count from 0, and negative numbers from the end."""

    def __init__(self, path, progress=None):
        name = os.fspath(path)
        with open(name, "rb", opener=_without_waiting):  # says in Python's own words what stands in the way
            pass
        self.path = os.path.abspath(os.fsdecode(name))
        pointer, calling = handle(), Calling()
        calling.check(library.velorin_open(os.fsencode(name), calling.wrap(Progress, progress), None,
                                           ctypes.byref(pointer)), self.path)
        self._handle = _Handle(pointer)
        self._nodes = None

    @property
    def _open(self):
        if self._handle is None:
            raise ValueError("the result is closed")
        return self._handle.pointer

    def close(self):
        """Gives the file up. Arrays that it has given stay what they are."""
        self._handle = self._nodes = None

    @property
    def closed(self):
        return self._handle is None

    def __enter__(self):
        self._open
        return self

    def __exit__(self, *problem):
        self.close()

    def __repr__(self):
        if self.closed:
            return f"<velorin.Result {self.path!r}, closed>"
        return (f"<velorin.Result {self.path!r}: {library.velorin_node_count(self._open)} nodes, {len(self.elements)} "
                f"elements, {len(self.items)} items, {len(self.times)} steps>")

    @property
    def title(self):
        return library.velorin_title(self._open).decode()

    @property
    def nodes(self):
        """X and Y of each node, an array of two columns."""
        if self._nodes is None:
            count = library.velorin_node_count(self._open)
            self._nodes = np.stack([self._handle.array(address(self._open), count, ctypes.c_float)
                                    for address in (library.velorin_node_x, library.velorin_node_y)], axis=1)
            self._nodes.flags.writeable = False
        return self._nodes

    @property
    def elements(self):
        count = library.velorin_element_count(self._open)
        offsets = self._handle.array(library.velorin_element_starts(self._open), count + 1, ctypes.c_int32)
        nodes = self._handle.array(library.velorin_element_nodes(self._open), int(offsets[-1]), ctypes.c_int32)
        return Elements(offsets, nodes)

    @property
    def items(self):
        items = []
        for index in range(library.velorin_item_count(self._open)):
            kind = library.velorin_item_type(self._open, index)
            flags = library.velorin_item_flags(self._open, index) & 3
            name = library.velorin_item_name(self._open, index).decode()
            items.append(Item(name, None if kind < 0 else kind, _DISPLACEMENTS[flags]))
        return tuple(items)

    @property
    def steps(self):
        return tuple(Step(library.velorin_step_name(self._open, index).decode(),
                          library.velorin_step_time(self._open, index))
                     for index in range(library.velorin_step_count(self._open)))

    @property
    def times(self):
        """The time of each step."""
        return np.array([library.velorin_step_time(self._open, index)
                         for index in range(library.velorin_step_count(self._open))], np.float32)

    def _step(self, step):
        return _position(step, library.velorin_step_count(self._open), "step")

    def _item(self, item):
        if not isinstance(item, str):
            return _position(item, library.velorin_item_count(self._open), "item")
        for index, known in enumerate(self.items):
            if known.name == item:
                return index
        raise ValueError(f"there is no item {item!r} among {', '.join(known.name for known in self.items)}")

    def _object_count(self, item):
        on_nodes = library.velorin_item_type(self._open, item) < 0
        return (library.velorin_node_count if on_nodes else library.velorin_element_count)(self._open)

    def types(self, step):
        """The type of each element in a step; a negative one does not exist there."""
        types = np.empty(library.velorin_element_count(self._open), np.int32)
        Calling().check(library.velorin_types(self._open, self._step(step), types.ctypes.data))
        return types

    def values(self, step, item):
        """The values of an item, by number or name, in a step: one for each node or each element, whichever the item
        has them for, and nan where there is none."""
        item = self._item(item)
        values = np.empty(self._object_count(item), np.float32)
        Calling().check(library.velorin_values(self._open, self._step(step), item, values.ctypes.data))
        return values

    def history(self, item, nodes, progress=None):
        """The values of some nodes, or of some elements for an item of elements, in all steps: an array with a row per
        step. No more of the file is read than it takes."""
        item = self._item(item)
        places = np.atleast_1d(np.asarray(nodes))
        if places.ndim != 1 or places.dtype.kind not in "iu" and places.size:
            raise TypeError("nodes are whole numbers in one row")
        count = self._object_count(item)
        if places.size and (places.min() < -count or places.max() >= count):
            raise IndexError(f"nodes or elements are below {count}")
        places = np.ascontiguousarray(np.where(places < 0, places + count, places), np.int32)
        values = np.empty((library.velorin_step_count(self._open), len(places)), np.float32)
        calling = Calling()
        calling.check(library.velorin_history(self._open, item, len(places), places.ctypes.data,
                                              calling.wrap(Progress, progress), None, values.ctypes.data))
        return values

    def render(self, path, step=0, item=0, *, size=(1280, 1024), dpi=None, zoom=0, fixed_scale=False, mesh=True,
               property_file=True, settings=None):
        """Draws a step to a file, whose ending names the format: .png, .svg, .pdf or .trace.

        `settings` are drawing settings by their paths, such as {"contour/colors/index": 3}; `velorin-batch render
        --help` lists them. With `property_file` those beside the result file come first, as in the window."""
        pairs = [f"{key}={value}".encode() for key, value in (settings or {}).items()]
        texts = (ctypes.c_char_p * (len(pairs) + 1))(*pairs, None)
        picture = Picture(ctypes.sizeof(Picture), self._step(step) if len(self.times) or step else 0, self._item(item),
                          *size, 0 if dpi is None else dpi, zoom, fixed_scale, not mesh, not property_file, texts)
        Calling().check(library.velorin_render(self._open, picture, os.fsencode(path)), os.fsdecode(path))


def _without_waiting(path, flags):
    """Opens a pipe at once, be there someone who writes to it or not."""
    return os.open(path, flags | os.O_NONBLOCK)


def _position(index, count, what):
    index = operator.index(index)
    if not -count <= index < count:
        raise IndexError(f"{what} {index} is not one of {count}")
    return index % count


def read(path, progress=None):
    """Opens a result file. `progress(done, total)` is called from time to time; False stops with InterruptedError."""
    return Result(path, progress)


def render(source, path, step=0, item=0, **options):
    """Draws a step of the result file `source` to `path`; the options are those of Result.render."""
    with read(source) as result:
        result.render(path, step, item, **options)
