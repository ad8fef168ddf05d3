"""What listings of many boards cost: boards that are known already, and boards that come."""

from answers import Raw, Row, ratio
from tool_replies import PLAIN_BYTES
from workshop import Contestant

TITLE = "Many boards"
ORDER = 30
BY_DEFAULT = True

COUNTS = (1, 100, 1000)
#: Ten times as many boards may take so many times as long.
FACTOR_LIMIT = 11
SLOW_TOOL_US = 5000
COMMAND = "board get mode"


def answer(shop):
    return listing(shop) + bring_up(shop)


def listing(shop):
    """Boards that are known, and what a command of their bring-up cost when they came."""
    passes = str(shop.size(50, 1))
    contestants = [Contestant("exchange", (shop.program("engine_exchange"),
                                           str(shop.size(5000, 20)), COMMAND),
                              one_core=True, expected={"bytes": PLAIN_BYTES})]
    for count in COUNTS:
        contestants += [
            make_engine(shop, f"engine {count}", count, passes),
            Contestant(f"bare {count}",
                       (shop.program("bare_pipes"), passes, "board list", f"boards {count}"),
                       one_core=True),
        ]
    medians = shop.contest(contestants, shop.rounds(5))
    engine = {count: medians[f"engine {count}"] for count in COUNTS}
    most = COUNTS[-1]
    return [
        compare_with_tool(most, engine[most], medians[f"bare {most}"]),
        *compare_growth(engine),
        ratio(f"a command while {most:,} boards come, one exchanged alone, one core",
              "while they come", engine[most]["connect_us"] / count_commands(most),
              "alone", medians["exchange"]["us"], "µs"),
    ]


def make_engine(shop, name, count, passes, *more, one_core=True):
    return Contestant(name, (shop.program("engine_boards"), str(count), passes, *more), one_core,
                      expected={"boards": count})


def compare_with_tool(count, engine, bare):
    return Row(f"{count:,} boards listed again, beside the tool's own time",
               (engine["pass_us"] - bare["us"]) / 1000, "ms",
               (Raw("engine", engine["pass_us"] / 1000, "ms"),
                Raw("bare pipes", bare["us"] / 1000, "ms"),
                Raw("of it the membership idiom", engine["membership_us"] / 1000, "ms")), 20)


def compare_growth(engine):
    linear = {count: engine[count]["pass_us"] - engine[count]["membership_us"] for count in COUNTS}
    few, some, many = COUNTS
    return [
        ratio(f"{many:,} boards, {some} boards, without the membership idiom",
              f"{many:,}", linear[many], f"{some}", linear[some], "µs", FACTOR_LIMIT),
        ratio(f"{some} boards, {few} board, without the membership idiom",
              f"{some}", linear[some], f"{few}", linear[few], "µs", 100),
    ]


def count_commands(boards):
    """The listing, and for each board six of the bring-up; the selected one needs no way back."""
    return 1 + 6 * boards - 1


def bring_up(shop):
    many = shop.size(1000, 20)
    return [measure_bring_up(shop, many, "one core", one_core=True),
            measure_bring_up(shop, max(many // 10, 1), "free", one_core=False)]


def measure_bring_up(shop, count, where, one_core):
    # A few rounds: the commands of each board are many rounds in themselves.
    medians = shop.contest([
        Contestant("bare pipes",
                   (shop.program("bare_pipes"), str(shop.size(400, 20)), COMMAND,
                    f"delay {SLOW_TOOL_US}"), one_core, expected={"bytes": PLAIN_BYTES}),
        make_engine(shop, "engine", count, "1", str(SLOW_TOOL_US), one_core=one_core),
    ], shop.rounds(3))
    engine = medians["engine"]["connect_us"] / count_commands(count)
    bare = medians["bare pipes"]["us"]
    # Of what the tool takes, not of the sum: the harder way to read "share".
    return Row(f"{count:,} boards come, what the engine adds to the tool's 5 ms a command, {where}",
               (engine - bare) / SLOW_TOOL_US * 100, "%",
               (Raw("engine", engine / 1000, "ms a command"),
                Raw("bare pipes", bare / 1000, "ms a command")), 10)
