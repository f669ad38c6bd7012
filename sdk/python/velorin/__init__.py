"""Results of two-dimensional finite element calculations: read into NumPy arrays, drawn, and written as .vrf.

    import velorin

    with velorin.read("plate.vrf") as result:
        print(result.items, result.times)
        stress = result.values(-1, "ミーゼス応力")
        result.render("plate.png", step=-1, item="ミーゼス応力")
"""
from ._result import Elements, Item, Result, Step, read, render
from ._write import write

__all__ = ["Elements", "Item", "Result", "Step", "read", "render", "write"]
