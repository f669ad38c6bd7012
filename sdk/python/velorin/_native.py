"""The C interface as ctypes sees it. Not for users of the package."""
import ctypes
import errno
import os
import pathlib

from . import _where

INTERFACE = 1
UNREADABLE, OTHER, WRONG, NOT_WRITTEN, STOPPED, NO_MEMORY, FAILED = range(1, 8)

int32, text, handle = ctypes.c_int32, ctypes.c_char_p, ctypes.c_void_p
ints, floats = ctypes.POINTER(ctypes.c_int32), ctypes.POINTER(ctypes.c_float)
Progress = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_int64, ctypes.c_int64)
FillTypes = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, int32, ints)
FillValues = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, int32, int32, floats)


class Picture(ctypes.Structure):
    _fields_ = [("size", ctypes.c_size_t)] + [(name, int32) for name in (
        "step", "item", "width", "height", "dots_per_inch", "zoom", "fixed_scale", "no_mesh", "no_property_file"
    )] + [("settings", ctypes.POINTER(text))]


class Item(ctypes.Structure):
    _fields_ = [("name", text), ("type", int32), ("flags", int32)]


class Step(ctypes.Structure):
    _fields_ = [("name", text), ("time", ctypes.c_double)]


class Content(ctypes.Structure):
    _fields_ = [("size", ctypes.c_size_t), ("title", text), ("node_count", int32), ("element_count", int32),
                ("item_count", int32), ("step_count", int32), ("x", floats), ("y", floats), ("starts", ints),
                ("nodes", ints), ("items", ctypes.POINTER(Item)), ("steps", ctypes.POINTER(Step)),
                ("types", FillTypes), ("values", FillValues), ("context", ctypes.c_void_p)]


FUNCTIONS = {
    "interface": (int32,),
    "error": (text,),
    "open": (ctypes.c_int, text, Progress, ctypes.c_void_p, ctypes.POINTER(handle)),
    "close": (None, handle),
    "title": (text, handle),
    "node_count": (int32, handle),
    "element_count": (int32, handle),
    "item_count": (int32, handle),
    "step_count": (int32, handle),
    "node_x": (ctypes.c_void_p, handle),
    "node_y": (ctypes.c_void_p, handle),
    "element_starts": (ctypes.c_void_p, handle),
    "element_nodes": (ctypes.c_void_p, handle),
    "item_name": (text, handle, int32),
    "item_type": (int32, handle, int32),
    "item_flags": (int32, handle, int32),
    "step_name": (text, handle, int32),
    "step_time": (ctypes.c_float, handle, int32),
    "types": (ctypes.c_int, handle, int32, ctypes.c_void_p),
    "values": (ctypes.c_int, handle, int32, int32, ctypes.c_void_p),
    "history": (ctypes.c_int, handle, int32, int32, ctypes.c_void_p, Progress, ctypes.c_void_p, ctypes.c_void_p),
    "render": (ctypes.c_int, handle, ctypes.POINTER(Picture), text),
    "write": (ctypes.c_int, text, ctypes.POINTER(Content)),
}


def _load():
    named = os.environ.get("VELORIN_LIBRARY")
    path = named or str(pathlib.Path(_where.__file__).absolute().parent / _where.LIBRARY)
    library = ctypes.CDLL(path)
    for name, (result, *arguments) in FUNCTIONS.items():
        function = getattr(library, "velorin_" + name)
        function.restype, function.argtypes = result, arguments
    if library.velorin_interface() != INTERFACE:
        raise ImportError(f"{path} has interface {library.velorin_interface()}, not {INTERFACE}")
    return library


library = _load()


class Calling:
    """Functions of the caller that the library calls: what they raise goes on from where the library was called."""

    def __init__(self):
        self.raised = None

    def wrap(self, kind, function):
        def safely(*arguments):
            try:
                return 1 if function(*arguments[1:]) is not False else 0
            except BaseException as problem:  # noqa: B902 - KeyboardInterrupt as well has to get through
                self.raised = problem
                return 0
        return kind(safely) if function is not None else kind()

    def check(self, problem, path=None):
        """Turns a function's answer into an exception."""
        if self.raised is not None:
            raise self.raised
        if problem == 0:
            return
        words = library.velorin_error().decode()
        if problem in (UNREADABLE, NOT_WRITTEN):
            number = next((number for number in errno.errorcode if os.strerror(number) == words), None)
            raise OSError(number, words, path) if number else OSError(f"{words}: {path!r}")
        if problem == NO_MEMORY:
            raise MemoryError(words)
        if problem == STOPPED:
            raise InterruptedError(words)
        raise (ValueError if problem in (OTHER, WRONG) else RuntimeError)(f"{path!r}: {words}" if path else words)
