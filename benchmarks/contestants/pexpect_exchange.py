"""Runs a command a number of times by a script that drives the tool with pexpect.

Usage: pexpect_exchange.py COUNT COMMAND [as-it-comes]

pexpect waits 50 ms before it sends anything; "as-it-comes" leaves it at that.
"""

import json
import sys
import time

import pexpect

MARKS = ["COMMAND SUCCEEDED\r\n", "COMMAND FAILED\r\n"]


def main(count, command, delay=""):
    with open("ksbase.log", "wb") as transcript:
        tool = pexpect.spawn("ksbase2_cli", ["-s", "-x"], echo=False, timeout=None)
        tool.logfile = transcript
        if delay != "as-it-comes":
            tool.delaybeforesend = None
        exchange(tool, command)
        began = time.perf_counter()
        for _ in range(count):
            exchange(tool, command)
        seconds = time.perf_counter() - began
        tool.sendeof()
        tool.wait()
    print(json.dumps({"us": seconds / count * 1e6}))


def exchange(tool, command):
    tool.sendline(command)
    tool.expect_exact(MARKS)


if __name__ == "__main__":
    main(int(sys.argv[1]), *sys.argv[2:])
