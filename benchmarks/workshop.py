"""Where contestants are run: in turn, each in an empty directory, with the benchmarks' own tool."""

import dataclasses
import json
import math
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile

FULL_ROUNDS = 9
#: Only ends a run that hangs; far above what the slowest one needs.
HANG_GUARD_SECONDS = 600


class ContestantFailed(Exception):
    """A contestant did not end well, so its question has no answer."""


@dataclasses.dataclass(frozen=True)
class Contestant:
    """A program that measures something about itself and prints it as one line of JSON.

    The line is the last one of its standard output: an object of numbers.
    """

    name: str
    command: tuple
    #: Keep it, and all that it starts, on one core.
    one_core: bool = False
    environment: dict = dataclasses.field(default_factory=dict)
    #: Figures that must be just so in every run, such as the size of a reply: else it did not do
    #: what it is compared for.
    expected: dict = dataclasses.field(default_factory=dict)


class Figures(dict):
    """Figures by their names. A name that the contestant has not printed is its failure."""

    def __init__(self, contestant, values):
        super().__init__(values)
        self._contestant = contestant

    def __missing__(self, name):
        raise ContestantFailed(f"{self._contestant} printed no '{name}'.")


class Workshop:
    """The surroundings of the contestants of a run: build tree, sizes, and a place to work in."""

    def __init__(self, tree, build, rounds=None, quick=False):
        self.tree = pathlib.Path(tree).resolve()
        # Contestants run in directories of their own, where a relative path means something else.
        self.build = pathlib.Path(build).resolve()
        self.quick = quick
        self._rounds = rounds
        self._place = None
        self._rounds_taken = set()

    def __enter__(self):
        self._place = pathlib.Path(tempfile.mkdtemp(prefix="kestoboard-bench-"))
        return self

    def __exit__(self, *_):
        shutil.rmtree(self._place)

    def size(self, full, quick):
        """How much to do: the first in a measurement, the second when it is only tried."""
        return quick if self.quick else full

    def rounds(self, full=FULL_ROUNDS):
        """How often to measure; `full` is for contestants that take long."""
        if self._rounds is not None:
            return self._rounds
        return 1 if self.quick else full

    def program(self, name):
        """The path of a compiled contestant."""
        return str(self.build / "benchmarks" / name)

    def script(self, name):
        """The beginning of the command line of a contestant in Python."""
        return (sys.executable, str(self.tree / "benchmarks" / "contestants" / name))

    def contest(self, contestants, rounds=None):
        """The medians of all that the contestants print: {contestant: {figure: median}}.

        They take turns, and every second round goes the other way round, so that whatever the
        machine does besides meets all of them alike.
        """
        rounds = rounds or self.rounds()
        self.note_rounds(rounds)
        figures = {contestant.name: [] for contestant in contestants}
        for number in range(rounds):
            for contestant in contestants[::-1] if number % 2 else contestants:
                figures[contestant.name].append(self.run(contestant))
        return {name: get_medians(name, runs) for name, runs in figures.items()}

    def note_rounds(self, rounds):
        """For a question that has its contestants run in a way of its own."""
        self._rounds_taken.add(rounds)

    def take_rounds(self):
        """The numbers of rounds since this was asked last, in order."""
        taken, self._rounds_taken = sorted(self._rounds_taken), set()
        return taken

    def run(self, contestant):
        """What one run of the contestant prints."""
        place = pathlib.Path(tempfile.mkdtemp(dir=self._place))
        try:
            return self._run_in(place, contestant)
        finally:
            shutil.rmtree(place)

    def _run_in(self, place, contestant):
        work = place / "work"
        work.mkdir()
        try:
            ended = subprocess.run(
                contestant.command, cwd=work, env=self._get_environment(place, contestant),
                stdin=subprocess.DEVNULL, capture_output=True, text=True,
                timeout=HANG_GUARD_SECONDS, check=False,
                preexec_fn=_stay_on_one_core if contestant.one_core else None)
        except (OSError, subprocess.TimeoutExpired) as failure:
            raise ContestantFailed(f"{contestant.name}: {failure}") from failure
        lines = ended.stdout.strip().splitlines()
        if ended.returncode != 0 or not lines:
            raise ContestantFailed(
                f"{contestant.name} ended with status {ended.returncode}:\n{ended.stdout}{ended.stderr}")
        figures = _read_figures(contestant.name, lines[-1])
        for name, value in contestant.expected.items():
            if figures[name] != value:
                raise ContestantFailed(
                    f"{contestant.name} printed {figures[name]:g} for '{name}' instead of {value:g}.")
        return figures

    def _get_environment(self, place, contestant):
        environment = {
            "HOME": str(place),
            "LC_ALL": "C.UTF-8",
            "PATH": f"{self.build / 'benchmarks' / 'tool'}:{os.environ['PATH']}",
            "QT_QPA_PLATFORM": "offscreen",
            "TMPDIR": str(place),
            "XDG_CONFIG_HOME": str(place / "config"),
            "XDG_RUNTIME_DIR": str(place),
            "XDG_STATE_HOME": str(place / "state"),
        }
        environment.update(contestant.environment)
        return environment


def _stay_on_one_core():
    os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})


def _read_figures(name, line):
    try:
        values = json.loads(line)
    except ValueError:
        values = None
    if not isinstance(values, dict) or not all(_is_number(value) for value in values.values()):
        raise ContestantFailed(f"{name} ended with a line that is no object of numbers:\n{line}")
    return Figures(name, values)


def _is_number(value):
    return isinstance(value, (int, float)) and not isinstance(value, bool) and math.isfinite(value)


def get_medians(name, runs):
    """The medians of what a contestant printed in its runs."""
    return Figures(name, {figure: statistics.median(run[figure] for run in runs)
                          for figure in runs[0]})
