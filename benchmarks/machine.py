"""What the figures were taken on, in words that name no machine."""

import os
import pathlib
import platform
import re
import subprocess


def describe(tree, build):
    return {
        "commit": _run("git", "-C", str(tree), "describe", "--always", "--dirty") or "none",
        "processor": f"{os.cpu_count()} cores, {_get_processor()}",
        "memory": f"{os.sysconf('SC_PAGE_SIZE') * os.sysconf('SC_PHYS_PAGES') / 2**30:.0f} GiB",
        "system": f"{_get_system()}, Linux {_get_kernel()}",
        "Qt": _run("pkg-config", "--modversion", "Qt5Core") or "unknown",
        "compiler": _get_compiler(build),
        "load before": ", ".join(f"{load:.1f}" for load in os.getloadavg())
        + " (averages of 1, 5 and 15 minutes)",
    }


def _run(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return ""


def _find(path, pattern):
    try:
        found = re.search(pattern, pathlib.Path(path).read_text(encoding="utf-8", errors="replace"),
                          re.MULTILINE)
    except OSError:
        return "unknown"
    return found[1] if found else "unknown"


def _get_processor():
    return _find("/proc/cpuinfo", r"^model name\s*: (.*)$")


def _get_system():
    return _find("/etc/os-release", r'^PRETTY_NAME="?([^"\n]*)')


def _get_kernel():
    # Without what a distribution or a host adds to the version.
    return platform.release().split("-")[0]


def _get_compiler(build):
    compiler = _find(build / "CMakeCache.txt", r"^CMAKE_CXX_COMPILER:[A-Z]+=(.*)$")
    kind = _find(build / "CMakeCache.txt", r"^CMAKE_BUILD_TYPE:[A-Z]+=(.*)$")
    version = _run(compiler, "-dumpfullversion") or _run(compiler, "-dumpversion")
    return f"{pathlib.Path(compiler).name} {version}, {kind}"
