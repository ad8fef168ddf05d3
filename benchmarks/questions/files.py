"""How long directories with many files keep the window."""

from answers import Raw, Row
from workshop import Contestant

TITLE = "Many files"
ORDER = 80
BY_DEFAULT = True

ROUNDS = 3
STALL_MILLISECONDS = 50


def answer(shop):
    files, command_files = shop.size(50_000, 100), shop.size(10_000, 100)
    medians = shop.contest([
        Contestant("browser", (shop.program("browse_files"), str(files))),
        Contestant("command files", (shop.program("command_files"), str(command_files))),
    ], shop.rounds(ROUNDS))
    browser, commands = medians["browser"], medians["command files"]

    def stall(what, value, *raw):
        return Row(what, value, "ms", raw, STALL_MILLISECONDS)

    return [
        stall(f"{files:,} files in the browser, longest stall while they are listed",
              browser["stall_ms"], Raw("until all are shown", browser["ms"], "ms")),
        stall(f"{files:,} files in the browser, longest stall when one comes",
              browser["change_stall_ms"]),
        stall(f"{command_files:,} command files, listed for the first time", commands["first_ms"]),
        stall(f"{command_files:,} command files, listed again", commands["again_ms"]),
        stall(f"{command_files:,} command files, listed with one more", commands["changed_ms"]),
    ]
