"""How long the panel takes until its window is painted, and what memory it has then."""

import contextlib
import os
import subprocess

from answers import ratio, to_megabytes
from workshop import Contestant, ContestantFailed

TITLE = "Start"
ORDER = 60
BY_DEFAULT = True


def answer(shop):
    rows = []
    offscreen = contest(shop, {})
    rows.append(compare("first paint without a display", offscreen))
    with run_display() as display:
        shown = contest(shop, {"QT_QPA_PLATFORM": "xcb", "DISPLAY": display})
    rows.append(compare("first paint under Xvfb", shown))
    for what, medians in (("without a display", offscreen), ("under Xvfb", shown)):
        panel, window = (to_megabytes(medians[name]["resident_kb"])
                         for name in ("panel", "window"))
        rows.append(ratio(f"resident memory {what}", "panel", panel, "window", window,
                          "MB", 1.6, 1.3))
    return rows


def contest(shop, environment):
    return shop.contest([
        Contestant(name, (*shop.script("start_clock.py"), shop.program(program)),
                   environment=environment)
        for name, program in (("panel", "panel_start"), ("window", "window_start"))])


def compare(what, medians):
    return ratio(what, "panel", medians["panel"]["ms"], "window", medians["window"]["ms"],
                 "ms", 2, 1.5)


@contextlib.contextmanager
def run_display():
    """A display of its own, by the name that DISPLAY takes."""
    reading, writing = os.pipe()
    try:
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=(writing,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    except OSError as failure:
        os.close(reading)
        raise ContestantFailed(f"Xvfb: {failure}") from failure
    finally:
        os.close(writing)
    try:
        with os.fdopen(reading) as told:
            number = told.readline().strip()
        if not number:
            raise ContestantFailed("Xvfb has ended.")
        yield f":{number}"
    finally:
        server.terminate()
        server.wait()
