"""What the panel takes of the processor while nobody touches it."""

import concurrent.futures
import os
import time

from answers import Raw, Row
from workshop import Contestant, get_medians

TITLE = "Left alone"
ORDER = 70
BY_DEFAULT = True

ROUNDS = 3
#: The panel does something every five seconds: rounds that begin so far apart do it in turn.
SECONDS_APART = 1.7


def answer(shop):
    """The rounds run at the same time, since each takes a minute and nearly none of a core."""
    simulator = shop.build / "libexec" / "kestoboard"
    scenario = shop.build / "share" / "kestoboard" / "scenarios" / "three-boards.toml"
    panel = Contestant("panel", (shop.program("panel_idle"), str(shop.size(60, 1))), environment={
        "PATH": f"{simulator}:{os.environ['PATH']}",
        "KESTOBOARD_SCENARIO": str(scenario),
    })
    rounds = shop.rounds(ROUNDS)
    shop.note_rounds(rounds)

    def run(number):
        time.sleep(number * SECONDS_APART)
        return shop.run(panel)

    with concurrent.futures.ThreadPoolExecutor(rounds) as pool:
        runs = list(pool.map(run, range(rounds)))
    used = sorted(one["ms_per_minute"] for one in runs)
    return [Row("processor time a minute, three boards, Monitoring page shown",
                get_medians("panel", runs)["ms_per_minute"], "ms",
                (Raw("least of the rounds", used[0], "ms"), Raw("most", used[-1], "ms")), 60, 20)]
