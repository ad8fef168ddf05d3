"""What the panel takes of the processor while nobody touches it."""

import os

from answers import Row
from workshop import Contestant

TITLE = "Left alone"
ORDER = 70
BY_DEFAULT = True

ROUNDS = 1


def answer(shop):
    simulator = shop.build / "libexec" / "kestoboard"
    scenario = shop.build / "share" / "kestoboard" / "scenarios" / "three-boards.toml"
    medians = shop.contest([
        Contestant("panel", (shop.program("panel_idle"), str(shop.size(60, 1))), environment={
            "PATH": f"{simulator}:{os.environ['PATH']}",
            "KESTOBOARD_SCENARIO": str(scenario),
        })], shop.rounds(ROUNDS))
    return [Row("processor time a minute, three boards, Monitoring page shown",
                medians["panel"]["ms_per_minute"], "ms", (), 60, 20)]
