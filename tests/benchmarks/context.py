"""Puts the modules of the benchmarks on the search path of the tests."""

import pathlib
import sys

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(TREE / "benchmarks"))
