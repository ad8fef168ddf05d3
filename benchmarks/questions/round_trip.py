"""What a command costs in the engine, in bare pipes and in a script with pexpect."""

from answers import ratio
from tool_replies import PLAIN_BYTES
from workshop import Contestant

TITLE = "Round trip of a command"
ORDER = 10
BY_DEFAULT = True

COMMAND = "board get mode"


def answer(shop):
    costs = Contestant("costs", (shop.program("worker_costs"), str(shop.size(5000, 20))),
                       one_core=True)
    patient = make(shop, "pexpect as it comes", shop.script("pexpect_exchange.py"), 20, True,
                   "as-it-comes")
    one = shop.contest([*make_contestants(shop, one_core=True), patient, costs])
    free = shop.contest(make_contestants(shop, one_core=False))
    bare, engine, pexpect = one["bare pipes"]["us"], one["engine"]["us"], one["pexpect"]["us"]
    swift = "pexpect without either delay"
    return [
        ratio("engine, bare pipes, one core", "engine", engine, "bare pipes", bare, "µs", 20, 15),
        ratio("engine, pexpect, one core", "engine", engine, "pexpect", pexpect, "µs", 0.4, 0.25),
        ratio("engine, pexpect, free", "engine", free["engine"]["us"],
              "pexpect", free["pexpect"]["us"], "µs", 0.8, 0.5),
        ratio(f"engine, {swift}, one core", "engine", engine, "pexpect", one[swift]["us"], "µs"),
        ratio(f"engine, {swift}, free", "engine", free["engine"]["us"],
              "pexpect", free[swift]["us"], "µs"),
        ratio("engine, bare pipes, free", "engine", free["engine"]["us"],
              "bare pipes", free["bare pipes"]["us"], "µs"),
        ratio("QProcess in a nested loop, bare pipes, one core", "QProcess", one["QProcess"]["us"],
              "bare pipes", bare, "µs"),
        ratio("pexpect, bare pipes, one core", "pexpect", pexpect, "bare pipes", bare, "µs"),
        ratio("pexpect as it comes, bare pipes, one core", "pexpect",
              one["pexpect as it comes"]["us"], "bare pipes", bare, "µs"),
        *make_design_rows(one["costs"], bare),
    ]


def make_design_rows(costs, bare):
    """What the engine cannot do without: a thread for each command, and two hops."""
    def against_bare(what, name, cost):
        return ratio(f"{what}, bare pipes, one core", name, cost, "bare pipes", bare, "µs")

    return [
        against_bare("start and end of the worker", "thread", costs["thread_us"]),
        against_bare("the same with the toolkit's dispatcher", "thread",
                     costs["toolkit_thread_us"]),
        against_bare("two hops", "hops", 2 * costs["hop_us"]),
    ]


def make_contestants(shop, one_core):
    pexpect = shop.script("pexpect_exchange.py")
    return [
        make(shop, "bare pipes", (shop.program("bare_pipes"),), 20000, one_core),
        make(shop, "QProcess", (shop.program("qprocess_exchange"),), 20000, one_core),
        make(shop, "engine", (shop.program("engine_exchange"),), 5000, one_core),
        make(shop, "pexpect", pexpect, 2000, one_core),
        make(shop, "pexpect without either delay", pexpect, 2000, one_core,
             "without-either-delay"),
    ]


def make(shop, name, program, full, one_core, *more):
    count = str(shop.size(full, min(full, 20)))
    return Contestant(name, (*program, count, COMMAND, *more), one_core,
                      expected={"bytes": PLAIN_BYTES})
