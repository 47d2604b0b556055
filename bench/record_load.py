"""What recording costs the cycles of a large plant, for scripts/bench.

The plant and its rounds are those of mqtt_load.py: 10,000 variables, each of which has another value at each poll. Runs
without and with recording take turns.
"""

import pathlib
import sqlite3
import statistics
import tempfile

import measure
from plant import Plant, every_one_rises

FIRST_ROUNDS = 3  # in which everything is recorded for the first time


def recorded(path):
    """How many values the recording has, and from how many seconds."""
    with sqlite3.connect(f"file:{path}?mode=ro", uri=True) as recording:
        count, first, last = recording.execute("SELECT count(*), min(time), max(time) FROM samples").fetchone()
    return count, (last - first) / 1000


def measure_run(plant, path, rounds, result):
    """One run; with a path it records."""
    kind = "with" if path else "without"
    plant.run(*Plant.SPARSE, *(["--record", path] if path else []))
    for _ in range(FIRST_ROUNDS):
        plant.round()
    result[kind] += [plant.round() for _ in range(rounds)]
    result[f"{kind}_memory"] = max(result[f"{kind}_memory"], plant.workbench.memory("VmHWM"))
    plant.end_run()


def record_load(bin_folder, objects, period, turns, rounds):
    result = {"without": [], "with": [], "without_memory": 0, "with_memory": 0, "values": 0, "octets": 0, "seconds": 0}
    with tempfile.TemporaryDirectory(prefix="dorvel-bench-") as folder:
        plant = Plant(folder, bin_folder, objects, period, every_one_rises, has_clock=True)
        try:
            for turn in range(2 * turns):
                path = pathlib.Path(folder, f"{turn}.sqlite") if turn % 2 else None
                measure_run(plant, path, rounds, result)
                if path:
                    values, seconds = recorded(path)
                    result["values"] += values
                    result["seconds"] += seconds + period / 1000
                    result["octets"] += path.stat().st_size
        finally:
            plant.end()
    for kind in ("without", "with"):
        result[f"{kind}_median"] = statistics.median(result[kind])
        result[f"{kind}_most"] = max(result[kind])
    result["ratio"] = result["with_median"] / result["without_median"]
    result["rate"] = result["values"] / result["seconds"]
    result["each"] = result["octets"] / result["values"]
    if result["rate"] < 0.9 * objects * 1000 / max(period, 1000):
        raise measure.Failure(f"{result['rate']:.0f} values a second are recorded: not what {objects} values a second make")
    return result
