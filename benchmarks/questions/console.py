"""What many lines cost that are said on the console in one turn."""

from answers import Raw, Row, ratio
from workshop import Contestant

TITLE = "Many lines on the console in one turn"
ORDER = 50
BY_DEFAULT = True

ROUNDS = 3
#: By the number of lines: total and longest stall in milliseconds that must be reached.
LIMITS = {10_000: (None, None), 100_000: (800, 50), 1_000_000: (None, None)}
#: How many lines a plain text field is given as well.
COMPARED = 100_000


def answer(shop):
    counts = {full: shop.size(full, full // 1000) for full in LIMITS}
    names = {full: f"{count:,} lines" for full, count in counts.items()}
    plain = f"plain field, {names[COMPARED]}"
    medians = shop.contest(
        [Contestant(names[full], (shop.program("console_lines"), str(count)))
         for full, count in counts.items()]
        + [Contestant(plain, (shop.program("plain_lines"), str(counts[COMPARED])))],
        shop.rounds(ROUNDS))
    rows = []
    for full, (total_limit, stall_limit) in LIMITS.items():
        figures = medians[names[full]]
        rows += [
            Row(f"{names[full]}, all of them shown", figures["ms"], "ms", (), total_limit),
            Row(f"{names[full]}, longest stall from the first that is said", figures["stall_ms"],
                "ms", (), stall_limit),
            Row(f"{names[full]}, longest stall while they are shown",
                figures["shown_stall_ms"], "ms"),
            Row(f"{names[full]}, what saying them takes the caller", figures["said_ms"], "ms",
                (Raw("a line", figures["said_ms"] * 1000 / counts[full], "µs"),)),
        ]
    rows.append(ratio(f"{names[COMPARED]}, console, plain text field", "console",
                      medians[names[COMPARED]]["ms"], "plain", medians[plain]["ms"], "ms"))
    return rows
