import os

import meshio

TYPES: str

def read(path: str | os.PathLike[str], step: int = -1, second_order: bool = False) -> meshio.Mesh: ...
def write(path: str | os.PathLike[str], mesh: meshio.Mesh, time: float = 0.0) -> None: ...
