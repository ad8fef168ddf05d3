"""Becomes a program, which is told the moment of that as its last argument.

Usage: start_clock.py PROGRAM [ARGUMENT...]

The moment is one of the system's monotonic clock, in nanoseconds.
"""

import os
import sys
import time

command = sys.argv[1:]
os.execv(command[0], [*command, str(time.clock_gettime_ns(time.CLOCK_MONOTONIC))])
