"""What listings of many boards cost: boards that are known already, and boards that come."""

from answers import Raw, Row, ratio
from workshop import Contestant

TITLE = "Many boards"
ORDER = 30
BY_DEFAULT = True

COUNTS = (1, 100, 1000)
SLOW_TOOL_US = 5000
FACTOR_LIMIT = 11


def answer(shop):
    return listing(shop) + bring_up(shop)


def listing(shop):
    passes = str(shop.size(50, 1))
    contestants = []
    for count in COUNTS:
        contestants += [
            Contestant(f"engine {count}", (shop.program("engine_boards"), str(count), passes), one_core=True),
            Contestant(f"bare {count}",
                       (shop.program("bare_pipes"), passes, "board list", f"boards {count}"),
                       one_core=True),
        ]
    medians = shop.contest(contestants, shop.rounds(5))
    engine = {count: medians[f"engine {count}"] for count in COUNTS}
    own = {count: engine[count]["pass_us"] - medians[f"bare {count}"]["us"] for count in COUNTS}
    linear = {count: engine[count]["pass_us"] - engine[count]["membership_us"] for count in COUNTS}
    most = COUNTS[-1]
    rows = [Row(
        f"{most:,} boards listed again, beside the tool's own time", own[most] / 1000, "ms",
        (Raw("engine", engine[most]["pass_us"] / 1000, "ms"),
         Raw("bare pipes", medians[f"bare {most}"]["us"] / 1000, "ms"),
         Raw("of it the membership idiom", engine[most]["membership_us"] / 1000, "ms")), 20)]
    rows.append(ratio(f"{most:,} boards, 100 boards, without the membership idiom",
                      f"{most:,}", linear[most], "100", linear[100], "µs", FACTOR_LIMIT))
    rows.append(ratio("100 boards, 1 board, without the membership idiom",
                      "100", linear[100], "1", linear[1], "µs", 100))
    return rows


def bring_up(shop):
    many = shop.size(1000, 5)
    return [measure_bring_up(shop, many, "one core", one_core=True),
            measure_bring_up(shop, max(many // 10, 1), "free", one_core=False)]


def measure_bring_up(shop, count, where, one_core):
    # Once: the commands of each board are many rounds in themselves. Bare pipes before and after.
    engine = Contestant(
        "engine", (shop.program("engine_boards"), str(count), "1", str(SLOW_TOOL_US)), one_core)
    bare = Contestant(
        "bare pipes", (shop.program("bare_pipes"), str(shop.size(400, 20)), "board get mode",
                       f"delay {SLOW_TOOL_US}"), one_core)
    before, connected, after = (shop.run(one) for one in (bare, engine, bare))
    # The listing, and for each board six of the bring-up; the selected one needs no way back.
    commands = 1 + 6 * count - 1
    each = connected["connect_us"] / commands
    own = (before["us"] + after["us"]) / 2
    return Row(f"{count:,} boards come, the engine's share beside a tool of 5 ms a command, {where}",
               (each - own) / each * 100, "%",
               (Raw("engine", each / 1000, "ms a command"),
                Raw("bare pipes", own / 1000, "ms a command")), 10)
