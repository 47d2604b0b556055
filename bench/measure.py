"""Runs the programs of bench/ and reads their counts, for scripts/bench and tests/budgets."""

import json
import pathlib
import re
import subprocess

CALLGRIND = ["valgrind", "--tool=callgrind", "--collect-atstart=no", "--callgrind-out-file=/dev/null"]
# A cache that a poll of many objects exceeds and their code does not: 32 KB for code and for data, 256 KB for both.
CACHE = ["--cache-sim=yes", "--I1=32768,8,64", "--D1=32768,8,64", "--LL=262144,8,64"]
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
    count = re.search(r"Collected : (\d+)", text)
    if not count:
        raise Failure(f"the counter reported nothing:\n{text[-2000:]}")
    return int(count.group(1))


def stack(folder, *words, counter=None):
    """What the counter (default: callgrind) reports of the folder's bench-stack with these arguments."""
    program = pathlib.Path(folder) / "bench-stack"
    text = run(*(counter or CALLGRIND), program, *words)[1]
    if collected(text) == 0:
        raise Failure(f"{program} {' '.join(map(str, words))}: nothing was counted")
    return text


def poll(workload, objects, clients=1, hosted=False):
    return (["--hosted"] if hosted else []) + [workload, 1, objects, clients]


def instructions(folder, workload, objects=50, clients=1, hosted=False, counter=None):
    """Instructions of a poll per object."""
    return collected(stack(folder, *poll(workload, objects, clients, hosted), counter=counter)) / (objects * clients)


def loading(folder, phase, variables=1000, counter=None):
    """Instructions of a phase of loading a block, per variable."""
    return collected(stack(folder, "--load", phase, variables, counter=counter)) / variables


def cache_misses(folder, workload, objects=2000, hosted=False):
    """Lines of data per object that a poll does not find in the simulated cache."""
    text = stack(folder, *poll(workload, objects, hosted=hosted), counter=CALLGRIND + CACHE)
    return int(re.search(r"LLd misses: +([\d,]+)", text).group(1).replace(",", "")) / objects


def target_counter(plugin):
    """The command for the target's emulator with the counter loaded."""
    return ["qemu-arm", "-L", TARGET_ROOT, "-E", f"LD_LIBRARY_PATH={TARGET_ROOT}/lib", "-plugin", plugin]
