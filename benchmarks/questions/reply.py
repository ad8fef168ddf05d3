"""What a large reply costs in time, memory and stalls of the window."""

from answers import Raw, Row, ratio, to_megabytes
from tool_replies import count_large
from workshop import Contestant

TITLE = "One large reply"
ORDER = 20
BY_DEFAULT = True

MEGABYTE = 1000 * 1000
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
    peak = to_megabytes(engine[-1]["peak_kb"])
    small_peak = to_megabytes(engine[0]["peak_kb"])
    return [
        ratio(f"{names[2]}, engine, bare pipes", "engine", times[2], "bare pipes",
              bare["us"] / 1000, "ms", 9, 6),
        ratio(f"{names[2]}, {names[1]}, engine", names[2], times[2], names[1], times[1], "ms", 11),
        ratio(f"{names[1]}, {names[0]}, engine", names[1], times[1], names[0], times[0], "ms", 11),
        Row(f"most memory for {names[2]}", peak, "MB",
            (Raw(f"for {names[0]}", small_peak, "MB"),
             Raw("bare pipes", to_megabytes(bare["peak_kb"]), "MB")), 450, 300),
        Row(f"longest stall of the window while {names[2]} arrive", engine[-1]["stall_ms"], "ms",
            (), 80, 20),
    ]


def make_contestant(shop, program, size):
    # The tool has made the reply before it is asked for: how long that takes is nobody's question.
    command = (shop.program(program), "1", f"large {size}", f"prepare {size}")
    return Contestant(f"{program} {size}", command, expected={"bytes": count_large(size)})
