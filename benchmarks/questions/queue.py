"""What many commands cost that are alive at once."""

from answers import Raw, Row, ratio
from workshop import Contestant

TITLE = "Many commands at once"
ORDER = 40
BY_DEFAULT = True

#: After each command the queue is looked at twice: whether to start the worker, and what is first.
WALKS_PER_COMMAND = 2


def answer(shop):
    many = shop.size(10000, 100)
    few = many // 10
    medians = shop.contest([
        Contestant(str(count), (shop.program("engine_queue"), str(count)), one_core=True)
        for count in (few, many)
    ], shop.rounds(5))
    small, large = medians[str(few)], medians[str(many)]
    # A walk comes by half of the commands on the average: as many have finished by then.
    walking = WALKS_PER_COMMAND * large["walk_us"] / 2
    designed = large["single_us"] + walking
    names = (f"{many:,}", f"{few:,}")
    return [
        ratio(f"creating one of {names[0]}, of {names[1]}", names[0], large["create_us"], names[1],
              small["create_us"], "µs", 2),
        ratio(f"destroying one of {names[0]}, of {names[1]}", names[0], large["destroy_us"],
              names[1], small["destroy_us"], "µs", 2),
        Row(f"running one of {names[0]}, against one alone and its two walks",
            large["run_us"] / designed, "x",
            (Raw("running one", large["run_us"], "µs"), Raw("one alone", large["single_us"], "µs"),
             Raw("its walks", walking, "µs")), 1.25),
        ratio(f"running one of {names[0]}, of {names[1]}", names[0], large["run_us"], names[1],
              small["run_us"], "µs"),
    ]
