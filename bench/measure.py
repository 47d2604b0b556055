"""Runs the programs of bench/ and reads their counts, for scripts/bench and tests/budgets."""

import json
import pathlib
import re
import subprocess

CALLGRIND = ["valgrind", "--tool=callgrind", "--collect-atstart=no", "--callgrind-out-file=/dev/null"]
TARGET_ROOT = "/usr/arm-linux-gnueabihf"


class Failure(Exception):
    pass


def run(*command):
    """Standard output and standard error of a command."""
    words = [str(word) for word in command]
    try:
        done = subprocess.run(words, capture_output=True, text=True)
    except FileNotFoundError:
        raise Failure(f"{words[0]} is missing: run scripts/setup bench") from None
    if done.returncode != 0:
        raise Failure(f"{' '.join(words)} ended with {done.returncode}:\n{done.stdout[-1000:]}{done.stderr[-2000:]}")
    return done.stdout, done.stderr


def json_lines(*command):
    return [json.loads(line) for line in run(*command)[0].splitlines()]


def collected(text):
    """The count that callgrind, or the plugin for the target, reports."""
    return int(re.search(r"Collected : (\d+)", text).group(1))


def instructions(folder, workload, objects=50, clients=1, hosted=False, counter=None):
    """Instructions of the driver per object, counted in the folder's bench-stack by the counter (default: callgrind)."""
    program = pathlib.Path(folder) / "bench-stack"
    words = [program] + (["--hosted"] if hosted else []) + [workload, 1, objects, clients]
    count = collected(run(*(counter or CALLGRIND), *words)[1])
    if count == 0:
        raise Failure(f"{program}: nothing was counted")
    return count / (objects * clients)


def target_counter(plugin):
    """The command for the target's emulator with the counter loaded."""
    return ["qemu-arm", "-L", TARGET_ROOT, "-E", f"LD_LIBRARY_PATH={TARGET_ROOT}/lib", "-plugin", plugin]
