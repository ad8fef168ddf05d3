"""What a large reply costs in time, memory and stalls of the window."""

from answers import Raw, Row, ratio
from workshop import Contestant

TITLE = "One large reply"
ORDER = 20
BY_DEFAULT = True

MEGABYTE = 1000 * 1000
KILOBYTES_PER_MEGABYTE = MEGABYTE / 1024
ROUNDS = 5


def answer(shop):
    large = shop.size(100, 1) * MEGABYTE
    sizes = [large // 100, large // 10, large]
    medians = shop.contest(
        [make_contestant(shop, "engine_exchange", size) for size in sizes]
        + [make_contestant(shop, "bare_pipes", sizes[-1])], shop.rounds(ROUNDS))
    engine = [medians[f"engine_exchange {size}"] for size in sizes]
    bare = medians[f"bare_pipes {sizes[-1]}"]
    times = [figures["us"] / 1000 for figures in engine]
    names = [f"{size / MEGABYTE:g} MB" for size in sizes]
    peak = engine[-1]["peak_kb"] / KILOBYTES_PER_MEGABYTE
    small_peak = engine[0]["peak_kb"] / KILOBYTES_PER_MEGABYTE
    return [
        ratio(f"{names[2]}, engine, bare pipes", "engine", times[2], "bare pipes",
              bare["us"] / 1000, "ms", 9, 6),
        ratio(f"{names[2]}, {names[1]}, engine", names[2], times[2], names[1], times[1], "ms", 11),
        ratio(f"{names[1]}, {names[0]}, engine", names[1], times[1], names[0], times[0], "ms", 11),
        Row(f"most memory for {names[2]}", peak, "MB",
            (Raw(f"for {names[0]}", small_peak, "MB"),
             Raw("bare pipes", bare["peak_kb"] / KILOBYTES_PER_MEGABYTE, "MB")), 450, 300),
        Row(f"longest stall of the window while {names[2]} arrive", engine[-1]["stall_ms"], "ms",
            (), 80, 20),
    ]


def make_contestant(shop, program, size):
    # The first command of bare pipes is not measured: it has the tool make the reply.
    command = (shop.program(program), "1", f"large {size}")
    return Contestant(f"{program} {size}", command)
