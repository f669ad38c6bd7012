import os
from collections.abc import Callable, Iterable, Mapping, Sequence
from typing import NamedTuple

import numpy as np
import numpy.typing as npt

_Path = str | bytes | os.PathLike[str] | os.PathLike[bytes]
_Progress = Callable[[int, int], object] | None
_Floats = npt.NDArray[np.float32]
_Ints = npt.NDArray[np.int32]

class Item(NamedTuple):
    name: str
    element_type: int | None = None
    displacement: str = ""

class Step(NamedTuple):
    name: str
    time: float

class Elements(Sequence[_Ints]):
    offsets: _Ints
    nodes: _Ints
    def __init__(self, offsets: _Ints, nodes: _Ints) -> None: ...
    def __len__(self) -> int: ...
    def __getitem__(self, index: int | slice) -> _Ints: ...  # type: ignore[override]

class Result:
    path: str
    def __init__(self, path: _Path, progress: _Progress = None) -> None: ...
    def close(self) -> None: ...
    def __enter__(self) -> Result: ...
    def __exit__(self, *problem: object) -> None: ...
    @property
    def closed(self) -> bool: ...
    @property
    def title(self) -> str: ...
    @property
    def nodes(self) -> _Floats: ...
    @property
    def elements(self) -> Elements: ...
    @property
    def items(self) -> tuple[Item, ...]: ...
    @property
    def steps(self) -> tuple[Step, ...]: ...
    @property
    def times(self) -> _Floats: ...
    def types(self, step: int) -> _Ints: ...
    def values(self, step: int, item: int | str) -> _Floats: ...
    def history(self, item: int | str, nodes: npt.ArrayLike, progress: _Progress = None) -> _Floats: ...
    def render(
        self,
        path: _Path,
        step: int = 0,
        item: int | str = 0,
        *,
        size: tuple[int, int] = (1280, 1024),
        dpi: int | None = None,
        zoom: int = 0,
        fixed_scale: bool = False,
        mesh: bool = True,
        property_file: bool = True,
        settings: Mapping[str, object] | None = None,
    ) -> None: ...

def read(path: _Path, progress: _Progress = None) -> Result: ...
def render(
    source: _Path,
    path: _Path,
    step: int = 0,
    item: int | str = 0,
    *,
    size: tuple[int, int] = (1280, 1024),
    dpi: int | None = None,
    zoom: int = 0,
    fixed_scale: bool = False,
    mesh: bool = True,
    property_file: bool = True,
    settings: Mapping[str, object] | None = None,
) -> None: ...
def write(
    path: _Path,
    nodes: npt.ArrayLike,
    elements: Elements | npt.ArrayLike | Iterable[Sequence[int]],
    values: Mapping[str | Item, npt.ArrayLike],
    *,
    times: Sequence[float] | _Floats | None = None,
    step_names: Iterable[str] | None = None,
    types: npt.ArrayLike | None = None,
    title: str = "",
    progress: _Progress = None,
) -> None: ...
