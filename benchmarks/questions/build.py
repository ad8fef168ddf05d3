"""How long a full build and the tests take."""

import os
import pathlib
import subprocess
import tempfile
import time

from answers import Row
from workshop import ContestantFailed

TITLE = "Building and testing"
ORDER = 90
BY_DEFAULT = False

LIMIT_SECONDS = 180


def answer(shop):
    with tempfile.TemporaryDirectory(prefix="kestoboard-bench-") as place:
        return build_and_test(shop, pathlib.Path(place))


def build_and_test(shop, build):
    # Compiled anew, whatever a cache may have.
    environment = {**os.environ, "CCACHE_DISABLE": "1"}
    run(environment, "cmake", "-S", str(shop.tree), "--preset", "dev", "-B", str(build))
    targets = ("--target", "Orvex") if shop.quick else ()
    built = run(environment, "cmake", "--build", str(build), "-j2", *targets)
    rows = [Row("a full build with the tests, two jobs", built, "s", (), LIMIT_SECONDS)]
    if not shop.quick:
        tested = run(environment, "ctest", "--test-dir", str(build), "-j2")
        rows.append(Row("the tests of a built tree, two jobs", tested, "s", (), LIMIT_SECONDS))
    return rows


def run(environment, *command):
    """The seconds that it took."""
    began = time.monotonic()
    ended = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    if ended.returncode != 0:
        raise ContestantFailed(f"{command[0]} failed:\n{ended.stdout[-4000:]}{ended.stderr[-4000:]}")
    return time.monotonic() - began
