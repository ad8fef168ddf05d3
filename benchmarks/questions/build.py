"""How long a full build and the tests take."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

from answers import Row
from workshop import ContestantFailed

TITLE = "Building and testing"
ORDER = 90
BY_DEFAULT = False

LIMIT_SECONDS = 180
JOBS = "2"


def answer(shop):
    shop.note_rounds(1)
    with tempfile.TemporaryDirectory(prefix="kestoboard-bench-") as place:
        tree = pathlib.Path(place) / "tree"
        # Another tree than this one, in which nothing is built.
        shutil.copytree(shop.tree, tree, symlinks=True,
                        ignore=shutil.ignore_patterns("build", ".git"))
        return try_to_build(tree) if shop.quick else build_and_test(tree)


def build_and_test(tree):
    # As whoever has just fetched it: with the command for it, which only lists the tests at first.
    built = run(tree, "./test", "-N")
    tested = run(tree, "./test")
    return [
        Row("a full build with the tests, two jobs, without a cache", built, "s", (), LIMIT_SECONDS),
        Row("./test from a built tree", tested, "s", (), LIMIT_SECONDS),
    ]


def try_to_build(tree):
    run(tree, "cmake", "--preset", "dev")
    built = run(tree, "cmake", "--build", "--preset", "dev", "--target", "Orvex")
    return [Row("the foundation alone, two jobs, without a cache", built, "s")]


def run(tree, *command):
    """The seconds that it took, compiled anew whatever a cache may have."""
    environment = {**os.environ, "CCACHE_DISABLE": "1", "CMAKE_BUILD_PARALLEL_LEVEL": JOBS}
    began = time.monotonic()
    ended = subprocess.run(command, cwd=tree, env=environment, stdin=subprocess.DEVNULL,
                           capture_output=True, text=True, check=False)
    if ended.returncode != 0:
        raise ContestantFailed(f"{' '.join(command)} failed:\n{ended.stdout[-4000:]}{ended.stderr[-4000:]}")
    return time.monotonic() - began
