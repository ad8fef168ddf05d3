"""What a command costs in the engine, in bare pipes and in a script with pexpect."""

from answers import Raw, Row, ratio
from workshop import Contestant

TITLE = "Round trip of a command"
ORDER = 10
BY_DEFAULT = True

COMMAND = "board get mode"


def answer(shop):
    costs = Contestant("costs", (shop.program("worker_costs"), str(shop.size(5000, 20))),
                       one_core=True)
    one = shop.contest([*make_contestants(shop, one_core=True), costs])
    free = shop.contest(make_contestants(shop, one_core=False))
    patient = shop.run(Contestant("pexpect as it comes", (
        *shop.script("pexpect_exchange.py"), str(shop.size(20, 1)), COMMAND, "as-it-comes")))
    bare, engine, pexpect = one["bare pipes"]["us"], one["engine"]["us"], one["pexpect"]["us"]
    return [
        ratio("engine, bare pipes, one core", "engine", engine, "bare pipes", bare, "µs", 20, 15),
        ratio("engine, pexpect, one core", "engine", engine, "pexpect", pexpect, "µs", 0.4, 0.25),
        ratio("engine, pexpect, free", "engine", free["engine"]["us"],
              "pexpect", free["pexpect"]["us"], "µs", 0.8, 0.5),
        ratio("engine, bare pipes, free", "engine", free["engine"]["us"],
              "bare pipes", free["bare pipes"]["us"], "µs"),
        ratio("QProcess in a nested loop, bare pipes, one core", "QProcess", one["QProcess"]["us"],
              "bare pipes", bare, "µs"),
        ratio("pexpect, bare pipes, one core", "pexpect", pexpect, "bare pipes", bare, "µs"),
        Row("pexpect as it comes, bare pipes", patient["us"] / bare, "x",
            (Raw("pexpect", patient["us"], "µs"), Raw("bare pipes", bare, "µs"))),
        *make_design_rows(one["costs"], bare),
    ]


def make_design_rows(costs, bare):
    """What the engine cannot do without: a thread for each command, and three hops."""
    def against_bare(what, name, cost):
        return ratio(f"{what}, bare pipes, one core", name, cost, "bare pipes", bare, "µs")

    return [
        against_bare("start and end of the worker", "thread", costs["thread_us"]),
        against_bare("the same with the toolkit's dispatcher", "thread",
                     costs["toolkit_thread_us"]),
        against_bare("three hops", "hops", 3 * costs["hop_us"]),
    ]


def make_contestants(shop, one_core):
    def make(name, program, full):
        count = str(shop.size(full, 20))
        return Contestant(name, (*program, count, COMMAND), one_core)

    return [
        make("bare pipes", (shop.program("bare_pipes"),), 20000),
        make("QProcess", (shop.program("qprocess_exchange"),), 20000),
        make("engine", (shop.program("engine_exchange"),), 5000),
        make("pexpect", shop.script("pexpect_exchange.py"), 2000),
    ]
