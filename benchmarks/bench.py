"""The command line of the benchmarks: chooses questions, runs them, and says and keeps the answers."""

import argparse
import dataclasses
import datetime
import os
import pathlib
import sys
import time

import history
import machine
import report
import workshop
from questions import load_questions

TREE = pathlib.Path(__file__).resolve().parent.parent
DOCUMENT = TREE / "docs" / "performance.md"
HISTORY = TREE / "benchmarks" / "history"

DESCRIPTION = """\
Installs what Debian 12 lacks, builds the panel with its benchmarks and measures it. Every figure is
held against something else that is measured in turn with it, in the same run.

Without a QUESTION all are asked that do not take too long, the tables of docs/performance.md are
written anew and the answers are kept in benchmarks/history. With one or more, the answers are only
printed, unless --write says otherwise."""


def parse_command_line(arguments, questions):
    parser = argparse.ArgumentParser(
        prog="./bench",
        description=DESCRIPTION,
        epilog="Questions:\n" + describe_questions(questions),
        formatter_class=argparse.RawDescriptionHelpFormatter,
        allow_abbrev=False,
    )
    parser.add_argument("question", nargs="*", metavar="QUESTION", help="ask this one, see below")
    parser.add_argument("--rounds", type=int, metavar="N", help="measure N times in turn (9)")
    parser.add_argument("--quick", action="store_true",
                        help="the smallest sizes, once: shows that the questions work; keeps nothing")
    parser.add_argument("--write", action="store_true",
                        help="keep the answers also when questions are named")
    parser.add_argument("--against", type=pathlib.Path, metavar="FILE",
                        help="hold the answers against a file of benchmarks/history")
    parser.add_argument("--list", action="store_true", help="name the questions, and ask none")
    parser.add_argument("--build", type=pathlib.Path, default=TREE / "build" / "bench",
                        metavar="DIR", help="measure what is built there (build/bench)")
    parser.add_argument("--check", action="store_true", help=argparse.SUPPRESS)
    options = parser.parse_args(arguments)
    check(options, questions, parser)
    options.former = read_former(options.against, parser)
    return options


def check(options, questions, parser):
    unknown = sorted(set(options.question) - set(questions))
    if unknown:
        parser.error(f"There is no question '{unknown[0]}', so name one of: {' '.join(questions)}.")
    if options.rounds is not None and options.rounds < 1:
        parser.error("At least one round is needed.")
    if options.quick and (options.against is not None or options.write):
        parser.error("A trial (--quick) has no figures to keep or to compare.")


def read_former(path, parser):
    """The record that the answers are held against, or None. A bad file ends the program."""
    try:
        return None if path is None else history.read(path)
    except history.UnreadableRecord as failure:
        return parser.exit(2, f"./bench: {failure} Name one of {HISTORY}.\n")


def describe_questions(questions):
    width = max(map(len, questions))
    return "\n".join(
        f"  {name:{width}}  {question.TITLE}" + ("" if question.BY_DEFAULT else " (when named)")
        for name, question in questions.items()
    )


def ask(chosen, shop):
    """Answers and circumstances by the names of the questions, and the names of those that failed.

    What fails is told, and the others go on.
    """
    answers, circumstances, failed = {}, {}, []
    for name, question in chosen.items():
        began, load = time.monotonic(), os.getloadavg()[0]
        shop.take_rounds()
        print(f"\n## {question.TITLE}", flush=True)
        try:
            rows = question.answer(shop)
        except workshop.ContestantFailed as failure:
            print(f"{name}: {failure}", file=sys.stderr, flush=True)
            failed.append(name)
            continue
        answers[name] = [without_bounds(row) for row in rows] if shop.quick else rows
        circumstances[name] = history.Circumstances(shop.take_rounds(), load)
        print(report.make_table(answers[name]))
        print(f"({time.monotonic() - began:.0f} s)", flush=True)
    return answers, circumstances, failed


def without_bounds(row):
    """The bounds are for the full sizes: in a trial they would say nothing."""
    return dataclasses.replace(row, limit=None, better=None)


def main(arguments):
    questions = load_questions()
    options = parse_command_line(arguments, questions)
    if options.list:
        print(describe_questions(questions))
    if options.list or options.check:
        return 0

    by_default = [name for name, asked in questions.items() if asked.BY_DEFAULT]
    names = options.question or by_default
    now = datetime.datetime.now()
    surroundings = machine.describe(TREE, options.build)
    with workshop.Workshop(TREE, options.build, options.rounds, options.quick) as shop:
        answers, circumstances, failed = ask({name: questions[name] for name in names}, shop)

    if options.former is not None:
        print("\n## Against " + options.against.name)
        print(report.make_comparison(options.former, answers, names))
    if answers and not options.quick and (options.write or not options.question):
        record = history.Record(now.strftime("%Y-%m-%d %H:%M"), surroundings, answers,
                                circumstances)
        kept = history.write(HISTORY, record)
        report.rewrite(DOCUMENT, questions, record,
                       is_complete=all(name in answers for name in by_default))
        print(f"\nKept in {kept.relative_to(TREE)} and {DOCUMENT.relative_to(TREE)}.")
    if failed:
        print(f"These questions failed: {' '.join(failed)}.", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
