"""Runs a command a number of times by a script that drives the tool with pexpect.

Usage: pexpect_exchange.py COUNT COMMAND [as-it-comes | without-either-delay]

pexpect has two delays on the way of a command: "delaybeforesend", 50 ms before it sends anything, and
"delayafterread", a sleep of 0.1 ms after each piece that it has read. Without a third argument the
first is taken out and the second is left, as in a script whose writer has looked why it is slow;
"as-it-comes" leaves both, and "without-either-delay" none.
"""

import json
import sys
import time

import pexpect

#: What is taken out of pexpect.
DELAYS = {
    "without-the-first-delay": ("delaybeforesend",),
    "as-it-comes": (),
    "without-either-delay": ("delaybeforesend", "delayafterread"),
}
MARKS = [b"COMMAND SUCCEEDED\r\n", b"COMMAND FAILED\r\n"]


def main(count, command, delays="without-the-first-delay"):
    with open("ksbase.log", "wb") as transcript:
        tool = pexpect.spawn("ksbase2_cli", ["-s", "-x"], echo=False, timeout=None)
        tool.logfile = transcript
        for delay in DELAYS[delays]:
            setattr(tool, delay, None)
        exchange(tool, command)
        began = time.perf_counter()
        for _ in range(count):
            exchange(tool, command)
        seconds = time.perf_counter() - began
        size = count_bytes(tool)
        tool.sendeof()
        tool.wait()
    print(json.dumps({"us": seconds / count * 1e6, "bytes": size}))


def exchange(tool, command):
    tool.sendline(command)
    tool.expect_exact(MARKS)


def count_bytes(tool):
    """The size of the last reply as the tool wrote it: the terminal in between adds to each line."""
    return len((tool.before + tool.after).replace(b"\r\n", b"\n"))


if __name__ == "__main__":
    main(int(sys.argv[1]), *sys.argv[2:])
