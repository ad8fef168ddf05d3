"""What a walk costs through the views that hide a container."""

from answers import ratio
from workshop import Contestant

TITLE = "Walks through collections"
ORDER = 50
BY_DEFAULT = True

VIEWS = ("handle", "subset", "from")


def answer(shop):
    count = shop.size(1000 * 1000, 1000)
    medians = shop.contest([
        Contestant(kind, (shop.program("collections"), kind, str(count)), one_core=True)
        for kind in ("plain", *VIEWS)
    ])
    return [ratio(f"{kind}, plain loop", kind, medians[kind]["ms"], "plain loop",
                  medians["plain"]["ms"], "ms", 15, 6) for kind in VIEWS]
