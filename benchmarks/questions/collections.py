"""What a walk costs through the views that hide a container."""

from answers import ratio
from workshop import Contestant

TITLE = "Walks through collections"
ORDER = 50
BY_DEFAULT = True

VIEWS = ("handle", "subset", "from")


def answer(shop):
    return walk(shop, shop.size(1000 * 1000, 1000), 5) + walk(shop, 1000, shop.size(5000, 5))


def walk(shop, count, walks):
    # The elements count from nought, and each walk adds all of them up.
    total = walks * count * (count - 1) // 2
    medians = shop.contest([
        Contestant(kind, (shop.program("collections"), kind, str(count), str(walks)), one_core=True,
                   expected={"sum": total})
        for kind in ("plain", *VIEWS)
    ])
    return [ratio(f"{count:,} elements, {kind}, plain loop", kind, medians[kind]["ns"],
                  "plain loop", medians["plain"]["ns"], "ns", 15, 6) for kind in VIEWS]
