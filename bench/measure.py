"""How the programs of bench/ are run and what they count: for scripts/bench and the budgets of the tests."""

import json
import pathlib
import re
import subprocess

CALLGRIND = ["valgrind", "--tool=callgrind", "--collect-atstart=no", "--callgrind-out-file=/dev/null"]
TARGET_ROOT = "/usr/arm-linux-gnueabihf"


class Failure(Exception):
    pass


def run(*command):
    """The output of a command and what it says beside it."""
    words = [str(word) for word in command]
    try:
        done = subprocess.run(words, capture_output=True, text=True)
    except FileNotFoundError:
        raise Failure(f"there is no {words[0]}; scripts/setup bench installs it") from None
    if done.returncode != 0:
        raise Failure(f"{' '.join(words)} ended with {done.returncode}:\n{done.stdout[-1000:]}{done.stderr[-2000:]}")
    return done.stdout, done.stderr


def json_lines(*command):
    return [json.loads(line) for line in run(*command)[0].splitlines()]


def collected(text):
    """What callgrind, or the plugin for the target, says that it has counted."""
    return int(re.search(r"Collected : (\d+)", text).group(1))


def instructions(folder, workload, objects=50, clients=1, hosted=False, counter=None):
    """Instructions of the driver per object, by the bench-stack of the folder; counter runs it, callgrind if None."""
    program = pathlib.Path(folder) / "bench-stack"
    words = [program] + (["--hosted"] if hosted else []) + [workload, 1, objects, clients]
    count = collected(run(*(counter or CALLGRIND), *words)[1])
    if count == 0:
        raise Failure(f"{program}: nothing was counted")
    return count / (objects * clients)


def target_counter(plugin):
    """The emulator of the target with the counter in it."""
    return ["qemu-arm", "-L", TARGET_ROOT, "-E", f"LD_LIBRARY_PATH={TARGET_ROOT}/lib", "-plugin", plugin]
