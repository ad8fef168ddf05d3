"""What the panel takes of the processor while nobody touches it."""

import os

from answers import Row
from workshop import Contestant

TITLE = "Left alone"
ORDER = 70
BY_DEFAULT = True

ROUNDS = 3
#: A whole number of what the panel does by itself, every five and every ten seconds. Rounds do not
#: run at the same time: together they take less of the processor than one alone.
SECONDS = 30


def answer(shop):
    simulator = shop.build / "libexec" / "kestoboard"
    scenario = shop.build / "share" / "kestoboard" / "scenarios" / "three-boards.toml"
    seconds = str(shop.size(SECONDS, 1))
    medians = shop.contest([
        Contestant("panel", (shop.program("panel_idle"), seconds), environment={
            "PATH": f"{simulator}:{os.environ['PATH']}",
            "KESTOBOARD_SCENARIO": str(scenario),
        })], shop.rounds(ROUNDS))
    return [Row("processor time a minute, three boards, Monitoring page shown",
                medians["panel"]["ms_per_minute"], "ms", (), 60, 20)]
